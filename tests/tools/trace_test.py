"""tolvmsg plot and export, and the bar of long files."""

import math
import os
import pty
import re
import struct
import subprocess
import unittest
import xml.etree.ElementTree

from tool import CONNECT, TOLVMSG, Case, attribute, encoded, run

TRACE, COMPLEX_TRACE, PAIRS, BITS, SEGMENTED = 6, 7, 8, 9, 35
BATCH = 1 << 32


def trace(number, samples, name=None, unit=None, **others):
    about = {key: value for key, value in (("Name", name), ("CurrentBroadcastUnit", unit)) if value}
    return attribute(number, {"trace": samples, "AttributeMetaData": about, **others})


class Export(Case):
    def test_samples(self):
        log = b"\n".join((
            CONNECT, b"no message", trace(TRACE, encoded(3, [1, -0.1, 1e300])),
            trace(COMPLEX_TRACE, [[1, 2], ["NaN", "-Infinity"]]), trace(PAIRS, [[True, False]]),
            trace(TRACE, [1, "x"]),
            b'{"MessageID":%d,"Data":{"Messages":[%b,%b]}}' % (
                (4 << 48) + TRACE + BATCH, trace(TRACE, [7]), trace(TRACE, [8])),
            attribute(56, {"iv": [5, 6]}, Sender=["scope"])))
        table = (
            # options, status, output
            ((), 0, "index,value\n0,1\n1,-0.1\n2,1e300\n"),
            (("--line", "4"), 0, "index,real,imag\n0,1,2\n1,NaN,-Infinity\n"),
            (("--id", "ComplexBoolTraceMessage", "--x", "-1", ".5"), 0, "x,real,imag\n-1,1,0\n"),
            (("--line", "3", "--x", "-1", ".5"), 0, "x,value\n-1,1\n-0.5,-0.1\n0,1e300\n"),
            (("--line", "7"), 0, "index,value\n0,7\n"),
            (("--path", "Data.Messages[1].Data.trace"), 0, "index,value\n0,8\n"),
            (("--from", "scope", "--path", "Data.iv"), 0, "index,value\n0,5\n1,6\n"),
            (("--line", "1"), 1, ""),     # no trace
            (("--line", "2"), 1, ""),     # no message
            (("--line", "6"), 1, ""),     # a trace that does not read
            (("--line", "99"), 1, ""),
            (("--line", "0"), 2, ""),
            (("--format", "x"), 2, ""),
            (("--format", "raw", "--x", "0", "1"), 2, ""),
        )
        for options, status, out in table:
            with self.subTest(options):
                done = run("export", *options, text=log)
                self.assertEqual((status, out), (done.status, done.out.decode()))
                self.assertEqual(status != 0, bool(done.err))
        for line, values in (("3", (1, -0.1, 1e300)), ("5", (1, 0))):
            done = run("export", "--format", "raw", "--line", line, text=log)
            self.assertEqual(struct.pack(f"<{len(values)}d", *values), done.out)

    def test_output(self):
        file = self.folder / "t.csv"
        done = run("export", "--output", file, text=trace(TRACE, [1]))
        self.assertEqual((0, b"", "index,value\n0,1\n"), (done.status, done.out, file.read_text()))
        for target in ("/dev/full", "/nowhere/t.csv"):
            done = run("export", "--output", target, text=trace(TRACE, [1]))
            self.assertEqual(3, done.status)
            self.assertRegex(done.err, f'cannot write to "?{target}"?: ')


class Plot(Case):
    def draw(self, name, line, *arguments):
        done = run("plot", "--output", name, *arguments, text=line, cwd=self.folder)
        self.assertEqual((0, "", b""), (done.status, done.err, done.out))
        return (self.folder / name).read_bytes()

    def texts(self, line):
        picture = xml.etree.ElementTree.fromstring(self.draw("t.svg", line))
        return ["".join(text.itertext()).strip()
                for text in picture.iter("{http://www.w3.org/2000/svg}text")]

    def test_labels(self):
        wave = [[math.cos(i / 9), math.sin(i / 9)] for i in range(99)]
        title = "Attrs::DoubleTraceMessage, line 1, 3 samples"
        table = (
            (trace(TRACE, [1, 2, 4], "Level", "dBm"), ["Level (dBm)", "sample", title]),
            (trace(TRACE, [1, 2, 4]), ["value", "sample"]),
            (trace(COMPLEX_TRACE, wave, "Z", "Ω"), ["|Z| (Ω)", "phase (°)", "sample"]),
            (trace(BITS, [True, False], "gate"), ["gate", "0", "1"]),
            (trace(PAIRS, [[True, False]] * 2, "gate"), ["gate, first", "gate, second"]),
            # what gnuplot cannot choose a range for
            (trace(TRACE, ["NaN", "Infinity"], "a"), ["a"]),
            (trace(TRACE, [5], "a"), ["a"]),
            (trace(TRACE, [5, 5, 5], "a"), ["a"]),
            (trace(COMPLEX_TRACE, [[1e308, 1e308]] * 2, "a"), ["|a|"]),
        )
        for line, expected in table:
            with self.subTest(expected):
                self.assertLessEqual(set(expected), set(self.texts(line)))

    def test_hostile_names(self):
        """A name is only text, whatever it contains: it runs no command of gnuplot or a shell."""
        commands = ("`touch pwned`", '"; system("touch pwned") #', "'\n!touch pwned\n'",
                    '\\"\n!touch pwned\n"', "$(touch pwned)", "@pwned", "EOD\n!touch pwned\n",
                    "\\140touch pwned\\140", "|touch pwned", "{/Symbol a}_b^c", "%d%s%n", "<&>")
        for text in commands:
            with self.subTest(text):
                labels = "\n".join(self.texts(trace(TRACE, [1, 2], text, text)))
                self.assertIn((re.findall(r"\w+", text) or [text])[0], labels)
                self.assertEqual(["t.svg"], os.listdir(self.folder))
        self.draw("|touch pwned;.svg", trace(TRACE, [1, 2]))
        self.assertEqual({"t.svg", "|touch pwned;.svg"}, set(os.listdir(self.folder)))

    def test_pictures(self):
        runs = [{"offset": 10, "length": 5}, {"offset": 2**63, "length": 2**64 - 1}]
        line = trace(SEGMENTED, list(range(100)), segments=runs)
        picture = self.draw("t.png", line, "--size", "640", "480")
        self.assertEqual((b"\x89PNG", (640, 480)),
                         (picture[:4], struct.unpack(">2I", picture[16:24])))
        fills = self.draw("s.svg", line).count(b"fill-opacity")
        self.assertGreater(fills, self.draw("n.svg", trace(TRACE, list(range(100)))).count(
            b"fill-opacity"))
        # for a long trace, the extremes are drawn instead of every sample
        peak = [0] * 300000
        peak[123456] = 7777
        long = self.draw("l.svg", trace(TRACE, peak))
        self.assertIn(b"8000<", long)
        self.assertLess(len(long), 200000)

    def test_terminal(self):
        shown = run("plot", "--terminal", "--size", "60", "20",
                    text=trace(TRACE, [1, 9], "Level", "dBm")).out.decode()
        self.assertIn("Level (dBm)", shown)
        self.assertLessEqual(max(map(len, shown.splitlines())), 60)

    def test_refusals(self):
        line = trace(TRACE, [1])
        for arguments, text, status, reason in (
                ((), line, 2, "--output"), (("--output", "t.pdf"), line, 2, "must end with"),
                (("--terminal",), trace(TRACE, []), 2, "empty"),
                (("--terminal",), CONNECT, 1, "no such trace"),
                (("--output", "/nowhere/t.svg"), line, 3, 'cannot write to "/nowhere/t.svg"'),
                (("--terminal", "--output", "t.svg"), line, 2, "exclude each other")):
            with self.subTest(arguments):
                done = run("plot", *arguments, text=text)
                self.assertEqual(status, done.status)
                self.assertIn(reason, done.err)

    def test_gnuplot_that_is_not_there_or_fails(self):
        for script, reason in ((None, "gnuplot-nox"), ("#!/bin/sh\necho no >&2\nexit 1\n", '"no')):
            if script:
                (self.folder / "gnuplot").write_text(script)
                (self.folder / "gnuplot").chmod(0o755)
            done = run("plot", "--terminal", text=trace(TRACE, [1]),
                       env={**os.environ, "PATH": str(self.folder)})
            self.assertEqual((2, b""), (done.status, done.out))
            self.assertIn(reason, done.err)


class Bar(Case):
    def test_progress(self):
        bar = b"\r[" + b" " * 40
        long, short = self.file("long", (CONNECT + b"\n") * 60000), self.file("short", CONNECT)
        for words, shown in ((("lint", long), True), (("decode", "--json", long), True),
                             (("diff", long, long), True), (("decode", short), False)):
            with self.subTest(words):
                ours, theirs = pty.openpty()
                process = subprocess.Popen([TOLVMSG, *words], stdout=subprocess.DEVNULL,
                                           stderr=theirs)
                os.close(theirs)
                text = b""
                try:
                    while part := os.read(ours, 65536):
                        text += part
                except OSError:  # the end
                    pass
                os.close(ours)
                process.wait()
                self.assertEqual(shown, text.startswith(bar), text[:80])
                self.assertTrue(text.endswith(b"\r\x1b[K") if shown else not text, text[-80:])
        self.assertEqual("", run("lint", long).err)  # no terminal


if __name__ == "__main__":
    unittest.main()
