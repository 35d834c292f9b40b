"""What people and scripts rely on when they run tolvmsg."""

import json
import os
import pty
import re
import resource
import select
import subprocess
import tempfile
import unittest

from tool import (CONNECT, TOLVMSG, WITH_CLASS_OF_A_USER, Case, attribute, classes, decode, encoded,
                  message, on_terminal, run)

CORRUPT_SENDER = "Exception MetaDat::ReflectorArray MetaData Array corrupt for Sender"

VALIDATED = re.compile(r"Attrs::(AttrWithMetaData|Trace\w*Payload)<|Attrs::(Bool|Enum\w*)Data$")


class List(unittest.TestCase):
    def test_rows_agree_with_each_other_and_with_the_text(self):
        rows = classes()
        self.assertIn("0x0003000000000001", [row["id"] for row in rows])
        self.assertEqual(sorted(row["id"] for row in rows), [row["id"] for row in rows])
        self.assertEqual(len(rows), len({row["alias"] for row in rows}))
        lines = run("list").out.decode().splitlines()
        self.assertEqual(len(rows), len(lines))
        for row, line in zip(rows, lines):
            fields = [row[key] for key in ("family", "sub1", "sub2", "type")]
            self.assertRegex(row["id"], "^0x[0-9a-f]{16}$")
            self.assertEqual("0x" + "".join(f"{field:04x}" for field in fields), row["id"])
            columns = line.split(None, 3)
            self.assertEqual([row["id"], ".".join(map(str, fields)), row["alias"],
                              row["payload"] or "-"], columns)
            self.assertEqual(row["payload"] is None, "SimpleMessageHelper<" in row["class"], row)
            if row["payload"]:
                self.assertIn(", " + row["payload"] + ", ", row["class"])
            self.assertTrue(row["role"])

    def test_one_class_in_full(self):
        row = next(row for row in classes() if row["id"] == "0x0003000000000001")
        row.pop("role")
        self.assertEqual({"id": "0x0003000000000001", "family": 3, "sub1": 0, "sub2": 0, "type": 1,
                          "class": "PayloadMessageHelper<App::AppMessage, App::Connect, 1>",
                          "alias": "App::ConnectMessage", "payload": "App::Connect"}, row)

    def test_class_of_a_user(self):
        rows = json.loads(run("list", "--json", env=WITH_CLASS_OF_A_USER).out)
        self.assertEqual(len(classes()) + 1, len(rows))
        row = next(row for row in rows if row["id"] == "0x000300000000eeee")
        self.assertEqual([None, None, None], [row["alias"], row["payload"], row["role"]])
        self.assertRegex(row["class"], r"PayloadMessageHelper<.*Gauge.*>")

        self.assertEqual(2, run("example", "3.0.0.61166", env=WITH_CLASS_OF_A_USER).status)
        done = run("decode", "--json", text=message(0xEEEE, {"level": 2.5}),
                   env=WITH_CLASS_OF_A_USER)
        self.assertEqual((0, {"level": 2.5}), (done.status, done.rows()[0]["message"]["Data"]))
        self.assertNotIn("problems", done.rows()[0])
        self.assertIn(row["class"], run("decode", text=message(0xEEEE),
                                        env=WITH_CLASS_OF_A_USER).out.decode())


class Example(unittest.TestCase):
    def test_notations(self):
        for notation in ("0x0003000000000001", "0X3000000000001", "844424930131969", "3.0.0.1",
                         "App::ConnectMessage", "ConnectMessage"):
            with self.subTest(notation):
                done = run("example", notation)
                self.assertEqual((0, CONNECT + b"\n", ""), (done.status, done.out, done.err))

    def test_every_class_reads_its_own_example(self):
        rows = classes()
        examples = [run("example", row["alias"]).out for row in rows]
        done = decode(b"".join(examples))
        self.assertEqual(0, done.status)
        lines = done.out.splitlines()
        self.assertEqual(len(rows), len(lines))
        for row, example, line in zip(rows, examples, lines):
            with self.subTest(row["alias"]):
                self.assertEqual(row["id"], f'0x{json.loads(example)["MessageID"]:016x}')
                shown = json.loads(line)
                self.assertEqual({"line", "id", "class", "alias", "message"} |
                                 ({"valid"} if VALIDATED.match(row["payload"] or "") else set()),
                                 set(shown))
                self.assertEqual([row[key] for key in ("id", "class", "alias")],
                                 [shown[key] for key in ("id", "class", "alias")])
                self.assertIn(b'"message":' + example.rstrip(b"\n"), line)
        self.assertEqual(0, run("decode", text=b"".join(examples)).status)


class Decode(unittest.TestCase):
    def test_bad_lines_between_good_ones(self):
        bad = (
            # line, whether the id is known, what the error must hold
            (b"{oops", False, "byte 1"),
            (b'{"MessageID":844424930131969', False, "unexpected end"),
            (b"[1]", False, "an array"),
            (b"7", False, "a number"),
            (b"null", False, "null"),
            (b"{}", False, "MessageID"),
            (b'{"MessageID":"844424930131969"}', False, "MessageID"),
            (b'{"MessageID":-1}', False, "MessageID"),
            (b'{"MessageID":1.5}', False, "MessageID"),
            (b'{"MessageID":5}', True, "0.0.0.5"),
            (b'{"MessageID":18446744073709551615}', True, "0xffffffffffffffff"),
            (b'{"MessageID":844424930131972,"MessageID":844424930131972}', False, "duplicate key"),
            (CONNECT + CONNECT, False, "after the value"),
            (b"\x00", False, "0x00"),
            (CONNECT[:20] + b"\x00" + CONNECT[20:], False, "0x00"),
            (b'{"\xff\xfe":1}', False, "UTF-8"),
            (b'{"\xed\xa0\x80":1,"\xed\xa0\x80":2}', False, "UTF-8"),
            (b"\xef\xbb\xbf" + CONNECT, False, "byte order mark"),
            (b"[" * 100000, False, "nested arrays"),
            (b'{"a":' * 300 + b"1" + b"}" * 300, False, "nested arrays"),
        )
        text = b"".join(CONNECT + b"\n" + line + b"\n" for line, _, _ in bad)
        done = decode(text + CONNECT + b"\n")
        self.assertEqual((1, ""), (done.status, done.err))
        rows = done.rows()
        self.assertEqual(list(range(1, 2 * len(bad) + 2)), [row["line"] for row in rows])
        for row in rows[::2]:
            self.assertEqual(json.loads(CONNECT), row["message"])
        for row, (line, known, error) in zip(rows[1::2], bad):
            with self.subTest(line[:40]):
                self.assertIn(error, row["error"])
                self.assertEqual({"line", "error"} | ({"id"} if known else set()), set(row))

        for_people = run("decode", text=text)
        self.assertEqual(1, for_people.status)
        self.assertEqual(len(bad), for_people.out.count(b"no message: "))

    def test_ends_of_lines(self):
        table = (
            (CONNECT, [1]),                                   # the last line needs no end
            (CONNECT + b"\n", [1]),
            (CONNECT + b"\r\n" + CONNECT + b"\r\n", [1, 2]),
            (b"\n \t\n\r\n" + CONNECT + b"\n\n", [4]),        # blank lines count
            (b"", []),
            (b"\n", []),
            (b" " + CONNECT + b" \n", [1]),
        )
        for text, lines in table:
            with self.subTest(text[:20]):
                done = decode(text)
                self.assertEqual((0, lines), (done.status, [row["line"] for row in done.rows()]))

    def test_lines_of_all_lengths_across_the_buffer(self):
        """Lines that end anywhere near the end of a buffer, including lines larger than the buffer.
        They differ from their first bytes on, so that no part can pass for that of another."""
        lengths = [*range(3000), 131000, 65536, 131072, 131071, 5, 400000, 1, 262144, *range(3000)]
        names = [f"{number}:" + "x" * length for number, length in enumerate(lengths)]
        done = decode(b"\n".join(b'{"Sender":["%b"],"MessageID":844424930131972}' % name.encode()
                                 for name in names))
        self.assertEqual(names, [row["message"]["Sender"][0] for row in done.rows()])

    def test_bound_on_a_line(self):
        bound = str(len(CONNECT))
        long = CONNECT[:-1] + b" }"
        text = b"\r\n".join((CONNECT, long, CONNECT, b"x" * 1000000, CONNECT, long))
        rows = decode(text, "--max-line", bound).rows()
        self.assertEqual([False, True, False, True, False, True], ["error" in row for row in rows])
        self.assertEqual(list(range(1, 7)), [row["line"] for row in rows])
        self.assertIn(f"longer than {bound} bytes", rows[1]["error"])

    def test_problems(self):
        """The library decides what is a problem; this checks how problems are shown."""
        good = {"MaxVersion": 3, "MinVersion": 1, "BinaryTransmission": False}
        trace = encoded(3, [1, 2])
        table = (
            # line, the paths with a problem and what was found there
            (message(1, good), {}),
            (message(1, {**good, "MaxVersion": 3.0}), {}),    # the same number
            (message(1, {**good, "MaxVersion": "3"}), {"Data.MaxVersion": '"3"'}),
            (message(1, {**good, "MaxVersion": None}), {"Data.MaxVersion": "null"}),
            (message(1, {**good, "More": {"a": [1]}}), {"Data.More": "{a: [1]}"}),
            (message(1, {**good, "a b\n": 1}), {r'Data."a b\n"': "1"}),
            (message(1), {"Data": None}),
            (message(4, Destination=["a", 1]),
             {"Destination": '["a", 1]', "Destination[1]": "1"}),
            (attribute(6, {"trace": [1, "x"]}), {"Data.trace": '[1, "x"]', "Data.trace[1]": '"x"'}),
            (attribute(6, {"trace": {**trace, "type": 4}}),
             {"Data.trace": '1 x complex double ("len" says 2): [1.0, 2.0]'}),
            (attribute(6, {"trace": {**trace, "len": 3}}), {"Data.trace.len": "3"}),
            (attribute(6, {"trace": {"type": 3, "len": 1}}),
             {"Data": '{trace: 1 x double, without matching data}', "Data.trace.base64": None}),
            (attribute(6, {"trace": {**trace, "base64": "!" * 12}}),
             {"Data": '{trace: 1 x double ("len" says 2), not base64}',
              "Data.trace.base64": None}),
        )
        done = decode(b"\n".join(line for line, _ in table))
        self.assertEqual(0, done.status)
        for row, (line, expected) in zip(done.rows(), table):
            with self.subTest(line):
                problems = row.get("problems", ())
                self.assertEqual(expected, {one["path"]: one["found"] for one in problems})
                self.assertEqual(len(expected), len(problems))
                self.assertTrue(all(one["problem"] for one in problems))

    def test_diagnostics_of_the_library(self):
        """What the library prints is shown with its message, not in between."""
        corrupt = message(4, Sender=["a", 1])
        rows = decode(b"\n".join((corrupt, CONNECT, corrupt))).rows()
        self.assertEqual([[CORRUPT_SENDER], None, [CORRUPT_SENDER]],
                         [row.get("notes") for row in rows])
        text = run("decode", text=corrupt).out.decode()
        self.assertIn(f"  note    {CORRUPT_SENDER}\n", text)

    def test_for_people(self):
        text = message(1, {"MaxVersion": 3, "MinVersion": "one", "BinaryTransmission": True},
                       Sender=["client", "a b\x1b"])
        self.assertEqual("""\
line 1  App::ConnectMessage: opens a connection
  class   PayloadMessageHelper<App::AppMessage, App::Connect, 1>
  id      0x0003000000000001  3.0.0.1
  from    client / "a b\\u001b"
  to      -
  data    App::Connect
    MaxVersion          3
    BinaryTransmission  true
  problems
    Data.MinVersion  expected an integer from -2147483648 to 2147483647, found a string  "one"

""", run("decode", text=text).out.decode())

    def test_long_values_for_people(self):
        samples = encoded(3, [0.5 * i for i in range(1000)])
        extra = {"trace": samples, "cut": {**samples, "len": 7}, "few": encoded(3, [1.5]),
                 "bits": {"type": 1, "len": 10, "base64": "BQI="},
                 "complex bits": {"type": 2, "len": 2, "base64": "CQ=="},
                 "ints": {"type": 9, "len": 1, "base64": "/////w=="},
                 "not base64": {"type": 3, "len": 1, "base64": "!" * 12},
                 "text": "é" * 500, "list": list(range(100))}
        shown = {u["path"]: u["found"]
                 for u in decode(message(4, None, **extra)).rows()[0]["problems"]}
        self.assertEqual({
            "trace": "1000 x double, first 0.0, 0.5, 1.0, 1.5, 2.0, 2.5, 3.0, 3.5",
            "cut": '1000 x double ("len" says 7), first 0.0, 0.5, 1.0, 1.5, 2.0, 2.5, 3.0, 3.5',
            "few": "1 x double: 1.5",
            "bits": "10 x bool, first true, false, true, false, false, false, false, false",
            '"complex bits"': "2 x complex bool: [true, false], [false, true]",
            "ints": "1 x int: -1",
            '"not base64"': '1 x double, not base64',
            "text": '"' + "é" * 36 + '..." (1000 bytes)',
            "list": "[0, 1, 2, 3, 4, 5, 6, 7, ...] (100 entries)",
        }, {path: found for path, found in shown.items() if not path.endswith(".base64")})

    def test_deep_but_allowed(self):
        levels = 250
        text = message(4, Extra=json.loads("[" * levels + "]" * levels))
        self.assertEqual(0, decode(text).status)
        self.assertEqual(0, run("decode", text=text).status)


class Streams(Case):
    def test_files(self):
        one = self.file("one", CONNECT + b"\n")
        two = self.file("list", b"{\n" + CONNECT)  # no end: the next file starts a line of its own
        missing = os.path.join(self.folder, "missing")
        done = decode(CONNECT, one, "-", two)
        self.assertEqual(1, done.status)
        self.assertEqual([(one, 1), ("-", 1), (two, 1), (two, 2)],
                         [(row["file"], row["line"]) for row in done.rows()])
        self.assertNotIn("file", decode(b"", one).rows()[0])
        for problemsable in (missing, str(self.folder)):
            with self.subTest(problemsable):
                done = decode(b"", one, problemsable, two)
                self.assertEqual((2, 3), (done.status, len(done.rows())))
                self.assertIn(problemsable, done.err)
        name = self.file(b"\xff".decode(errors="surrogateescape"), CONNECT)
        self.assertEqual(2, len(decode(b"", name, one).rows()))

    def test_wrong_usage(self):
        self.check_refusals(
            *((words, "") for words in (
                ("nothing",), ("decode", "--nothing"), ("example",),
                ("example", "3.0.0.1", "3.0.0.2"), ("list", "more"), ("decode", "--max-line", "-1"),
                ("decode", "--id", "Nothing"), ("lint", "--family", "Nothing"), ("example", "-1"),
                ("decode", "--follow", "a", "b"), ("diff", "-", "-"),
                ("diff", os.devnull), ("diff", os.devnull, "/nowhere"),
                ("diff", os.devnull, os.devnull, "--tolerance", "-1"))),
            (("example", "connectmessage"), "App::ConnectMessage"),  # case counts; suggested
            (("example", "App::ConectMessage"), "App::ConnectMessage"),
            (("example", "Conn"), "App::ConnectMessage"),             # a part
            (("schema", "Conn"), "App::ConnectMessage"),
            (("example", "3.0.0.999"), "0x00030000000003e7"),         # well formed, but no class
            *((("example", id), "tolvmsg list") for id in (
                "", "0x", "3.0.0", "3.0.0.1.1",                       # not four fields
                "3.0.0.65537", "18447588498639683585",                # would wrap around to 3.0.0.1
                "0x10003000000000001")),                              # 65 bits
            (("schema",), "ID or --all"),
            (("schema", "--all", "3.0.0.1"), "ID or --all"))

    def test_help(self):
        for arguments in (("--help",), ("list", "--help"), ("example", "--help"),
                          ("decode", "--help"), ("lint", "--help"), ("token", "--help")):
            with self.subTest(arguments):
                done = run(*arguments)
                self.assertEqual((0, ""), (done.status, done.err))
                self.assertIn(b"Example", done.out)
        self.assertRegex(run("--version").out.decode(), r"^tolvmsg \d+\.\d+\.\d+\n$")

    def test_memory_is_bounded(self):
        """100,000 lines, 100 MB in all, in far less memory than that."""
        path = self.file("log", (message(4, Sender=["x" * 1000]) + b"\n") * 100000)
        lines = 0
        peak = None
        with subprocess.Popen([TOLVMSG, "decode", "--json", path],
                              stdout=subprocess.PIPE) as process:
            for _ in process.stdout:
                lines += 1
                if lines == 99000:
                    # The pipe cannot hold the rest, so the process is still there. The peak that
                    # wait4() gives would be that of this process if it is the larger one.
                    with open(f"/proc/{process.pid}/status") as status:
                        peak = next(int(line.split()[1]) for line in status if "VmHWM" in line)
        self.assertEqual((0, 100000), (process.returncode, lines))
        self.assertLess(peak, 40 * 1024, "KiB")

    def test_reader_that_goes_away(self):
        path = self.file("log", (CONNECT + b"\n") * 20000)
        for arguments in (("decode", path), ("decode", "--json", path)):
            with self.subTest(arguments):
                process = subprocess.Popen([TOLVMSG, *arguments], stdout=subprocess.PIPE,
                                           stderr=subprocess.PIPE)
                self.assertTrue(process.stdout.readline())
                process.stdout.close()
                self.assertEqual(b"", process.stderr.read())
                process.stderr.close()
                self.assertEqual(3, process.wait(60))

    def test_full_disk(self):
        log = self.file("log", attribute(6, {"trace": [1]}))
        with open("/dev/full", "wb") as full:
            for words in (("list",), ("schema", "--all"), ("catalogue", f"{self.folder}/site"),
                          ("decode", log), ("lint", log), ("export", log), ()):
                done = subprocess.run([TOLVMSG, *words], stdout=full, stderr=subprocess.PIPE)
                self.assertEqual(3, done.returncode, words)

    def test_full_disk_and_files(self):
        """What cannot be written ends with 3, and leaves what was there, and nothing else."""
        old = {"log": attribute(6, {"trace": list(range(9999))}), "t.csv": b"old", "index.html": b"old",
               "App.ConnectMessage.schema.json": b"old"}
        for name, content in old.items():
            self.file(name, content)
        for words in (("schema", "--all", "-o", "."), ("schema", "3.0.0.1", "-o", "."),
                      ("catalogue", "."), ("export", "--output", "t.csv", "log")):
            with self.subTest(words):
                done = run(*words, cwd=self.folder, preexec_fn=lambda: resource.setrlimit(
                    resource.RLIMIT_FSIZE, (512, 512)))
                self.assertEqual((3, b""), (done.status, done.out))
                self.assertIn("cannot write to ", done.err)
                files = {file.name: file.read_bytes() for file in self.folder.iterdir()}
                self.assertEqual([], [name for name in old if files[name] != old[name]])
                self.assertFalse([name for name in files if name.startswith(".")])
        for words in (("schema", "--all", "-o", "/dev/null/x"), ("catalogue", "/dev/null/x")):
            done = run(*words)
            self.assertEqual(3, done.status)
            self.assertIn('cannot write to /dev/null/x', done.err)
        self.assertEqual(1, run("export", "--line", "2", "--output", "t.csv", "log",
                                cwd=self.folder).status)
        self.assertEqual("old", (self.folder / "t.csv").read_text())

    def test_files_and_links(self):
        """A file keeps its mode, a link is followed where it is named, and none leads out of a
        folder."""
        log = self.file("log", attribute(6, {"trace": [1]}))
        outside = self.folder / "outside"
        outside.write_text("old")
        outside.chmod(0o640)
        (self.folder / "link").symlink_to(outside)
        self.assertEqual(0, run("export", "--output", self.folder / "link", log).status)
        self.assertEqual(("index,value\n0,1\n", 0o100640, True),
                         (outside.read_text(), outside.stat().st_mode,
                          (self.folder / "link").is_symlink()))
        site = self.folder / "site"
        site.mkdir()
        for name in ("index.html", "App.ConnectMessage.schema.json"):
            (site / name).symlink_to(outside)
        for words in (("catalogue", site), ("schema", "--all", "-o", site)):
            self.assertEqual(0, run(*words).status)
            self.assertEqual("index,value\n0,1\n", outside.read_text(), words)
        self.assertFalse((site / "index.html").is_symlink())

    def test_help_of_one_screen(self):
        status, text = on_terminal([TOLVMSG])
        self.assertEqual(2, status)
        self.assertLessEqual(len(text.splitlines()), 24)
        self.assertLessEqual(max(map(len, text.splitlines())), 80)
        for word in re.findall(r"^  (\w+) ", run("--help").out.decode().split("commands:\n")[1]
                               .split("\n\n")[0], re.M):
            self.assertIn(f"  {word} ", text)

    def test_says_what_it_waits_for(self):
        ours, theirs = pty.openpty()
        os.write(ours, b"\x04")  # end of input
        for words in (("decode",), ("lint",), ("diff", "-", os.devnull), ("export",), ("token", "-")):
            with self.subTest(words):
                done = subprocess.run([TOLVMSG, *words], stdin=theirs, capture_output=True, timeout=60)
                self.assertRegex(done.stderr, b"^tolvmsg: waiting for (a signed token|messages)")
                os.write(ours, b"\x04")
        os.close(ours)
        os.close(theirs)

    def test_bound_on_a_line_in_all_commands(self):
        long = self.file("long", attribute(6, {"trace": [1] * 100}) + b"\n" + CONNECT)
        bound = ("--max-line", str(len(CONNECT)))
        for words, status, shown in (
                (("decode", long), 1, "no message: the line is longer"),
                (("lint", long), 1, "no-message: the line is longer"),
                (("diff", long, os.devnull), 1, "line 1 only in the first  no message"),
                (("export", long), 1, "1 line is longer than"),
                (("plot", "--terminal", long), 1, "1 line is longer than")):
            with self.subTest(words):
                done = run(words[0], *bound, *words[1:])
                self.assertEqual(status, done.status)
                self.assertIn(shown, done.out.decode() + done.err)
                self.assertNotIn("longer than", run(*words).err)

    def test_shows_a_message_before_the_next_comes(self):
        """A message on a pipe or a terminal is shown at once, while the input stays open."""
        pipe_out, pipe_in = os.pipe()
        for reading, writing in ((pipe_out, pipe_in), pty.openpty()[::-1]):
            with self.subTest(terminal=os.isatty(reading)), subprocess.Popen(
                    [TOLVMSG, "decode", "--json"], stdin=reading,
                    stdout=subprocess.PIPE) as process:
                for number in (1, 2):
                    os.write(writing, CONNECT + b"\n")
                    if not select.select([process.stdout], [], [], 30)[0]:
                        process.kill()
                        self.fail("nothing shown")
                    self.assertEqual(number, json.loads(os.read(process.stdout.fileno(),
                                                                65536))["line"])
                if os.isatty(reading):
                    os.write(writing, b"\x04")  # end of input
                else:
                    os.close(writing)
                self.assertEqual(0, process.wait(60))

    def test_follow(self):
        """Lines that arrive later, one of them in two parts, and those of a file that was replaced."""
        path = self.file("live", CONNECT + b"\n")
        with subprocess.Popen([TOLVMSG, "decode", "--json", "--follow", path],
                              stdout=subprocess.PIPE) as process:
            def shown():
                ready = select.select([process.stdout], [], [], 30)[0]
                return json.loads(os.read(process.stdout.fileno(), 65536))["id"] if ready else None
            first = shown()
            with open(path, "ab") as log:
                log.write(message(4)[:10])
                log.flush()
                waited = select.select([process.stdout], [], [], 0.5)[0]
                log.write(message(4)[10:] + b"\n")
            second = shown()
            self.file("live", message(9) + b"\n")
            third = shown()
            process.kill()
        self.assertEqual(["0x0003000000000001", [], "0x0003000000000004", "0x0003000000000009"],
                         [first, waited, second, third])

    def test_colour_is_for_terminals(self):
        for variables, coloured in (({}, True), ({"NO_COLOR": "1"}, False), ({"NO_COLOR": ""}, True),
                                    ({"TERM": "dumb"}, False)):
            with self.subTest(variables):
                ours, theirs = pty.openpty()
                environment = {**os.environ, "TERM": "xterm", **variables}
                if "NO_COLOR" not in variables:
                    environment.pop("NO_COLOR", None)
                subprocess.run([TOLVMSG, "decode"], input=message(4, 1), stdout=theirs,
                               env=environment, timeout=60)
                os.close(theirs)
                self.assertEqual(coloured, b"\x1b[" in os.read(ours, 65536))
                os.close(ours)
        self.assertNotIn(b"\x1b", run("decode", text=message(4, 1)).out)


class Filters(unittest.TestCase):
    LOG = b"\n".join((
        CONNECT,                                                                 # 1
        message(4, Sender=["panel", "2"], Destination=["instrument"]),           # 2
        message(4, Sender=["panel 2"], Unknown=1),                               # 3
        attribute(2, {"d": 7, "AttributeMetaData": {"Maximum": 5}}),             # 4
        message(77, Sender=["panel"]),                                           # 5: no class
        b"no message"))                                                          # 6

    def test_lines_shown(self):
        for arguments, lines in (
                (("--id", "3.0.0.4"), [2, 3]),
                (("--id", "PingMessage", "--id", "0x0003000000000001"), [1, 2, 3]),
                (("--id", "3.0.0.77"), [5]),
                (("--family", "App"), [1, 2, 3, 5]),
                (("--family", "4"), [4]),
                (("--family", "App", "--family", "Attrs"), [1, 2, 3, 4, 5]),
                (("--family", "3", "--family", "App"), [1, 2, 3, 5]),  # the same once more
                (("--family", "Attrs", "--family", "Attrs"), [4]),
                (("--from", "panel"), [2, 5]),
                (("--from", "panel", "--to", "instrument"), [2]),
                (("--invalid-only",), [3, 4, 5, 6]),
                (("--invalid-only", "--family", "Attrs"), [4])):
            with self.subTest(arguments):
                done = decode(self.LOG, *arguments)
                self.assertEqual(lines, [row["line"] for row in done.rows()])
                self.assertEqual(int(5 in lines or 6 in lines), done.status)

    def test_file_behind_an_option(self):
        """An option takes one value, and what follows is the file."""
        with tempfile.NamedTemporaryFile() as log:
            log.write(self.LOG)
            log.flush()
            for command in ("decode", "lint", "export", ("diff", "--ignore", "x", log.name)):
                words = (command,) if isinstance(command, str) else command
                for option, value in (("--id", "3.0.0.4"), ("--family", "App"), ("--from", "panel"),
                                      ("--to", "instrument")):
                    with self.subTest(words, option=option):
                        ahead = run(words[0], f"{option}={value}", *words[1:], log.name)
                        behind = run(*words, option, value, log.name)
                        self.assertNotEqual(2, behind.status, behind.err)
                        self.assertEqual((ahead.status, ahead.out), (behind.status, behind.out))


class Lint(unittest.TestCase):
    def test_findings(self):
        big = 2 ** 53 + 1
        table = (
            # line, the rules with the path and what was found there
            (CONNECT, []),
            (b"no message", [("no-message", "", None)]),
            (message(77), [("unknown-id", "MessageID", None)]),
            (message(1, {"MaxVersion": "1", "MinVersion": 1, "minVersion": 1}),
             [("wrong-value", "Data.MaxVersion", '"1"'),
              ("absent", "Data.BinaryTransmission", None),
              ("unknown-key", "Data.minVersion", "1")]),
            (attribute(48, {"slot": "slot9", "deviceId": 1, "isRoot": False}),
             [("literal", "Data.slot", '"slot9"')]),
            (attribute(32, {"source": "trig0", "output": "nowhere"}),
             [("literal", "Data.output", '"nowhere"')]),
            (message(1, {"ErrorLevel": 4, "ErrorCategory": 6, "ErrorNumber": 1,
                         "ErrorDescription": "", "Timestamp": ""}, family=5),
             [("literal", "Data.ErrorLevel", "4")]),
            (attribute(1, {"i": big}), [("rounded", "Data.i", str(big))]),
            (attribute(1, {"i": -2 ** 53}), []),
            (attribute(1, {"i": 2 ** 63 - 1}), [("rounded", "Data.i", str(2 ** 63 - 1))]),
            (attribute(1, {"i": 2 ** 62}), []),      # a double holds it
            (attribute(2, {"d": 7, "AttributeMetaData": {"Maximum": 5}}),
             [("invalid", "Data", None)]),
            (attribute(6, {"trace": [1, "x"]}), [("wrong-value", "Data.trace[1]", '"x"')]),
        )
        for line, findings in table:
            with self.subTest(line):
                done = run("lint", "--json", text=line)
                *rows, summary = done.rows()
                self.assertEqual(findings, [(r["rule"], r["path"], r["found"]) for r in rows])
                self.assertEqual((int(bool(findings)), len(findings)),
                                 (done.status, sum(summary["findings"].values())))

    def test_summary_for_people(self):
        log = b"\n".join((CONNECT, message(1), message(4), message(1, 5)))
        done = run("lint", text=log)
        self.assertEqual((1, """\
the standard input:2: absent: Data: required, but absent
the standard input:4: wrong-value: Data: expected an object, found a number: 5
3.0.0.1  App::ConnectMessage  2 of 3 messages:  absent 1  wrong-value 1
4 lines, 2 with findings
"""), (done.status, done.out.decode()))
        done = run("lint", "--quiet", "--id", "PingMessage", text=log)
        self.assertEqual((0, b"1 line, no findings\n"), (done.status, done.out))
        self.assertEqual(2, run("lint", "/nowhere").status)


if __name__ == "__main__":
    unittest.main()
