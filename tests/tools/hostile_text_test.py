"""That no text from outside reaches a terminal as it is: what moves the cursor, turns text around or
does not show is escaped, in all that the commands print, on both streams."""

import base64
import json
import os
import shutil
import subprocess
import unittest

from tool import TOLVMSG, Case, attribute, message, on_terminal, run

RANGES = ((0x01, 0x1F), (0x7F, 0x9F), (0x200B, 0x200F), (0x2028, 0x202E), (0x2066, 0x2069),
          (0xFEFF, 0xFEFF))
HARMFUL = "".join(chr(code) for first, last in RANGES for code in range(first, last + 1))
INVALID = b"\xff\xc0\xe2\x80"  # no UTF-8
NAME = os.fsdecode(HARMFUL.encode() + INVALID)  # of a file


def raw(line):
    """The line with all that JSON allows unescaped."""
    return json.dumps(json.loads(line), ensure_ascii=False).encode()


def segment(tree):
    return base64.b64encode(json.dumps(tree).encode()).decode()


ABOUT = {"Name": HARMFUL, "CurrentBroadcastUnit": HARMFUL}
LOG = b"\n".join([
    *map(raw, (
        message(1, {"MaxVersion": HARMFUL, HARMFUL: HARMFUL}, Sender=[HARMFUL], Destination=[HARMFUL]),
        message(4, Sender=HARMFUL, Extra={HARMFUL: [{HARMFUL: 2**53 + 1}]}),
        message(77, Sender=[HARMFUL]),
        b'{"MessageID":"%b"}' % HARMFUL[32:].encode(),
        attribute(2, {"d": 7, "AttributeMetaData": {**ABOUT, "Maximum": 5}}),
        attribute(4, {"s": HARMFUL, "AttributeMetaData": {**ABOUT, "ValidCharacters": "[" + HARMFUL}}),
        attribute(5, {"val": {"value": 1, "literal": HARMFUL}, "enums": []}),
        attribute(48, {"slot": HARMFUL, "deviceId": 1, "isRoot": False}),
        attribute(6, {"trace": [1, 2, 3], "AttributeMetaData": ABOUT}))),
    HARMFUL.encode().replace(b"\n", b""), b'{"' + INVALID + b'":1}', b'{"a":"' + INVALID])
TOKEN = ".".join((segment({"alg": HARMFUL}), segment({HARMFUL: HARMFUL,
                                                      "msg": json.loads(LOG.split(b"\n")[0])}), ""))


class HostileText(Case):
    def check(self, arguments, *texts):
        for text in texts:
            if arguments[0] == "plot":
                text = text.replace(b"\f", b"")  # gnuplot's own
            found = set(text.decode("utf-8")) & set(HARMFUL) - {"\n"}
            self.assertEqual(set(), found, arguments)

    def test_all_commands(self):
        log, other = self.file(NAME, LOG), self.file("2" + NAME, LOG.replace(b"1", b"3"))
        token, key = self.file("t" + NAME, TOKEN.encode()), self.file("k" + NAME, b"key")
        missing = f"{self.folder}/missing{NAME}"
        table = (
            *(words for command in ("decode", "lint") for words in (
                (command, log, other), (command, "--json", log, other), (command, missing))),
            *(("diff", *words) for words in ((log, other), ("--json", log, other), (log, missing),
                                             ("--ignore", NAME, log, other))),
            *(("token", *words) for words in ((token,), ("--json", token), (log,), (missing,),
                                              ("--key-file", key, token),
                                              ("--key-file", missing, token))),
            ("export", log), ("export", "--path", NAME, log), ("export", missing),
            ("export", "--output", f"/nowhere{NAME}/t", log),
            *([("plot", "--terminal", log), ("plot", "--output", missing + "/t.svg", log)]
              if shutil.which("gnuplot") else []),
            ("plot", "--output", NAME, log),
            ("schema", "--all", "-o", "/dev/null/" + NAME), ("catalogue", "/dev/null/" + NAME),
            *((command, NAME) for command in ("example", "schema")),
            *(("decode", option, NAME) for option in ("--id", "--family", "--max-line")),
            ("export", "--line", NAME), ("export", "--format", NAME),
            ("decode", "--" + NAME), (NAME,), ("list", NAME))
        for arguments in table:
            with self.subTest(arguments):
                done = subprocess.run([TOLVMSG, *arguments], stdin=subprocess.DEVNULL,
                                      capture_output=True, timeout=60)
                self.assertTrue(done.stdout or done.stderr)
                self.check(arguments, done.stdout, done.stderr)
                if "--json" in arguments:
                    for row in done.stdout.decode().splitlines():
                        json.loads(row)

    def test_json_keeps_the_value(self):
        rows = run("decode", "--json", text=LOG).rows()
        self.assertEqual([HARMFUL], rows[0]["message"]["Sender"])
        self.assertEqual(HARMFUL, rows[5]["message"]["Data"]["s"])
        name = self.file("\u202e", LOG)
        self.assertEqual({name}, {row["file"] for row in run("lint", "--json", name).rows()[:-9]})

    @unittest.skipUnless(shutil.which("gnuplot"), "needs gnuplot")
    def test_picture(self):
        run("plot", "--output", "t.svg", text=LOG, cwd=self.folder)
        self.check(("picture",), (self.folder / "t.svg").read_bytes().replace(b"\t", b""))

    def test_name_of_the_catalogue(self):
        """A program that reads it gets it as it is, a terminal does not."""
        folder = self.folder / "a\u202eb"
        self.assertEqual(f"{folder}/index.html\n", run("catalogue", folder).out.decode())
        self.assertIn("a\\u202eb/index.html", on_terminal([TOLVMSG, "catalogue", folder])[1])


if __name__ == "__main__":
    unittest.main()
