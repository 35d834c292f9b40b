"""Runs every example of --help, the man page and the README as it is printed, on a terminal, in a folder
that holds the files which the examples name, and looks at what comes out. (tests/docs/console.py does so
for the guide.)"""

import base64
import hashlib
import hmac
import json
import os
import re
import tempfile
import unittest

from shell_test import ALL, HERE, MAN, help_of
from tool import Case, TOLVMSG, attribute, encoded, message, on_terminal, run

README = HERE.parents[1] / "README.md"
TRACE, COMPLEX_TRACE, TRACE_BATCH = 6, 7, (1 << 32) + 10

SESSION = (
    message(1, {"MaxVersion": 3, "MinVersion": 1, "BinaryTransmission": True}, Sender=["panel"]),
    attribute(2, {"d": 7, "AttributeMetaData": {"Maximum": 5}}),
    attribute(1, {"i": 2**53 + 1}),
    attribute(TRACE_BATCH, {"Messages": [json.loads(attribute(TRACE, {"trace": [i, 2, 4]}))
                                               for i in range(3)]}),
    attribute(COMPLEX_TRACE, {"trace": [[1, 2], [3, 4]]}, Sender=["scope"]),
    b"no message",
    attribute(TRACE, {"trace": encoded(3, [0.5, 1.5])}))
AFTER = (attribute(2, {"d": 9.5, "Timestamp": "2"}), attribute(TRACE, {"trace": [1, 2.0000001]}))
BEFORE = (attribute(2, {"d": 7, "Timestamp": "1"}), attribute(TRACE, {"trace": [1, 2]}))
KEY = b"correct horse battery"


def token():
    data = b".".join(base64.b64encode(json.dumps(tree).encode()) for tree in (
        {"alg": "HS256", "typ": "JWT"}, {"sub": "me", "msg": json.loads(SESSION[0])}))
    return data + b"." + base64.b64encode(hmac.new(KEY, data, hashlib.sha256).digest())


FILES = {
    **dict.fromkeys(("session.ndjson", "live.ndjson", "log.jsonl"), b"\n".join(SESSION) + b"\n"),
    **dict.fromkeys(("a.ndjson", "before.ndjson", "before.jsonl"), b"\n".join(BEFORE)),
    **dict.fromkeys(("b.ndjson", "after.ndjson", "after.jsonl"), b"\n".join(AFTER)),
    "mine.json": json.dumps({**json.loads(SESSION[0]), "Extra": 1}, indent=2).encode(),
    **dict.fromkeys(("shared.key", "K"), KEY), **dict.fromkeys(("login.jwt", "token.jwt"), token()),
    # The programs at the other end, which a test has no socket and no desktop for.
    "bin/nc": b'#!/bin/sh\n[ "$*" = "-U /run/instrument" ] && exec cat session.ndjson',
    "bin/xdg-open": b'#!/bin/sh\nexec cat "$1"',
}

SVG, CSV = r"<svg", r"^index,value\n0,0\n1,2\n2,4\n$"
CONNECT = r'^\{"MessageID":844424930131969,"Data":\{"MaxVersion":1,.*\}\n$'
DECODED = r"^line 1  App::ConnectMessage: (?s:.*)line 6  no message: (?s:.*)line 7  Attrs::DoubleTrace"
LINTED = r"json\w*\":3: rounded: Data.i: JavaScript rounds it: 9007199254740993\n(?s:.*)7 lines, 3 with"
DIFFED = r"Data.d +7 -> 9.5  \(by 2.5\)\n +Data.Timestamp .*\n(?s:.*)2 messages and 2: 2 changed"
PLOTTED = r"DoubleTraceBatchMessage, line 4, 3 samples"

# What an example prints, or {file: what that then holds}; and its status where it is not 0.
EXPECTED = {
    "tolvmsg list": r"0x0003000000000001 +3\.0\.0\.1 +App::ConnectMessage +App::Connect\n",
    "tolvmsg list | grep Connect": r"^(.*Connect.*\n)+$",
    "tolvmsg example 3.0.0.1": CONNECT,
    "tolvmsg example 0x0003000000000001": CONNECT,
    "tolvmsg example App::ConnectMessage": CONNECT,
    "tolvmsg example ConnectMessage": CONNECT,
    "tolvmsg decode session.ndjson": (DECODED, 1),
    "tolvmsg decode log.jsonl": (DECODED, 1),
    "tolvmsg decode --invalid-only session.ndjson": (r"^line 2  (?s:.*)valid   no: value 7(?s:.*)\n"
                                                     r"line 6  no message: .*\n\n$", 1),
    "tolvmsg decode --id ConnectMessage --from panel session.ndjson":
        r"^line 1  App::ConnectMessage: .*\n(  .*\n)+\n$",
    "tolvmsg decode --family Attrs --follow live.ndjson": (r"^line 2 (?s:.*)\nline 7  ", -15),
    "tolvmsg example 3.0.0.1 | tolvmsg decode": r"^line 1  App::ConnectMessage: ",
    "tolvmsg decode --json *.ndjson | jq 'select(.error or .problems)'":
        r'"file": "live.ndjson",\n +"line": 6,\n +"error": ',
    "tolvmsg decode --json *.ndjson | jq 'select(.valid == false) | .invalid'":
        r'^("value 7 is above Maximum 5"\n){2}$',
    "nc -U /run/instrument | tolvmsg decode --json":
        (r'^\{"line":1,"id":"0x0003000000000001",.*\n(?s:.*)\{"line":6,"error":', 1),
    "tolvmsg lint session.ndjson": (LINTED, 1),
    "tolvmsg lint log.jsonl": (LINTED, 1),
    "tolvmsg lint --quiet --family App *.ndjson": r"^2 lines, no findings\n$",
    "tolvmsg lint --json session.ndjson | jq -r 'select(.rule == \"rounded\") | .path'": r"^Data\.i\n$",
    "tolvmsg diff a.ndjson b.ndjson": (DIFFED, 1),
    "tolvmsg diff before.ndjson after.ndjson": (DIFFED, 1),
    "tolvmsg diff before.jsonl after.jsonl": (DIFFED, 1),
    "tolvmsg diff --relative 1e-9 --ignore Timestamp before.ndjson after.ndjson":
        (r"^line 1 .*\n  Data\.d .*\nline 2 .*\n  Data\.trace  1 sample at 1, (?s:.*)2 changed", 1),
    "tolvmsg diff --relative 1e-6 --ignore Timestamp before.ndjson after.ndjson":
        (r"^line 1 .*\n  Data\.d  7 -> 9.5 .*\n.* 1 changed, 0 only", 1),
    "tolvmsg diff --family Attrs --tolerance 0.01 before.ndjson after.ndjson":
        (r"^line 1 .*\n  Data\.d .*\n  Data\.Timestamp .*\n.* 1 changed, 0 only", 1),
    "tolvmsg example ConnectMessage | tolvmsg diff - mine.json":
        (r"^line 1  App::ConnectMessage\n(?s:.*)Data\.MaxVersion .*1 -> 3  \(by 2\)", 1),
    "tolvmsg diff --json a.ndjson b.ndjson | jq -r 'select(.by > 1) | .path'": r"^Data\.d\n$",
    "tolvmsg plot session.ndjson": PLOTTED,
    "tolvmsg plot --path 'Data.Messages[2].Data.trace' session.ndjson": PLOTTED,
    "tolvmsg plot --line 7 --output trace.png session.ndjson": {"trace.png": r"^\x89PNG"},
    "tolvmsg plot --id ComplexTraceMessage --from scope --output t.svg session.ndjson":
        {"t.svg": r"ComplexTraceMessage, line 5"},
    "tolvmsg plot --output t.svg session.ndjson": {"t.svg": SVG},
    "tolvmsg plot --output t.svg log.jsonl": {"t.svg": SVG},
    "tolvmsg export session.ndjson >trace.csv": {"trace.csv": CSV},
    "tolvmsg export log.jsonl": CSV,
    "tolvmsg export --id ComplexTraceMessage --from scope session.ndjson":
        r"^index,real,imag\n0,1,2\n1,3,4\n$",
    "tolvmsg export --line 7 --x -1e-3 2e-6 --output t.csv session.ndjson":
        {"t.csv": r"^x,value\n-0\.001,0\.5\n-0\.000998,1\.5\n$"},
    "tolvmsg export --format raw --output t.f64 session.ndjson": {"t.f64": r"^\x00{15}@\x00{6}\x10@$"},
    "python3 -c 'import array; print(array.array(\"d\", open(\"t.f64\", \"rb\").read()))'":
        r"^array\('d', \[0\.0, 2\.0, 4\.0\]\)\n$",
    "tolvmsg token login.jwt": r"^token  not verified: no --key-file\n(?s:.*)message  App::ConnectMessage",
    "tolvmsg token --key-file shared.key login.jwt": r"^token  authentic\n",
    "tolvmsg token --key-file shared.key - < login.jwt": r"^token  authentic\n",
    "tolvmsg token --key-file K token.jwt": r"^token  authentic\n",
    "tolvmsg schema App::ConnectMessage": r'"title": "App::ConnectMessage"',
    "tolvmsg schema ConnectMessage > connect.schema.json":
        {"connect.schema.json": r'"title": "App::ConnectMessage"'},
    "tolvmsg schema --all -o schemas": {"schemas/App.PingMessage.schema.json": r"App::PingMessage"},
    "tolvmsg catalogue site": r'^"?site/index.html"?\n$',
    "tolvmsg catalogue pages": {"pages/index.html": r"ConnectMessage"},
    'xdg-open "$(tolvmsg catalogue site)"': r"^<!DOCTYPE html>(?s:.*)ConnectMessage",
}


def printed():
    """The examples of each text, as they stand there."""
    texts = {" ".join(words) + " --help": help_of(*words) for words in ALL}
    texts["without arguments"] = run().out.decode()
    for name, text in texts.items():
        yield name, re.search(r"\nExamples?.*:\n((?:  .*\n)+)", text)[1].splitlines()
    page = MAN.read_text().replace("\\-", "-").split(".SH EXAMPLES")[1]
    yield "man page", re.findall(r"\.nf\n(.*)\n\.fi", page)
    yield "README", re.findall(r"^    (tolvmsg .*)", README.read_text(), re.M)


class Examples(Case):
    def setUp(self):
        super().setUp()
        (self.folder / "bin").mkdir()
        (self.folder / "bin" / "tolvmsg").symlink_to(TOLVMSG)
        for name, content in FILES.items():
            self.file(name, content)
        for name in ("nc", "xdg-open"):
            (self.folder / "bin" / name).chmod(0o755)
        self.environment = {**os.environ, "TERM": "dumb",
                            "PATH": f"{self.folder}/bin:{os.environ['PATH']}"}

    def test_examples(self):
        seen = set()
        for where, lines in printed():
            for line in lines:
                command = re.sub(r"\s+# .*", "", line).strip()
                with self.subTest(where=where, example=command):
                    seen.add(command)
                    self.check(line, EXPECTED[command])
        self.assertEqual(set(), set(EXPECTED) - seen)

    def check(self, line, expected):
        wanted, status = expected if isinstance(expected, tuple) else (expected, 0)
        until = b"line 7  " if "--follow" in line else b""
        with tempfile.TemporaryFile() as complaints:
            done, text = on_terminal(["bash", "-c", "exec " + line if until else line], until,
                                     cwd=self.folder, env=self.environment, stderr=complaints)
            text = re.sub(r"\x1b\[[0-9;]*m", "", text)  # the colours of jq
            complaints.seek(0)
            self.assertEqual((status, b""), (done, complaints.read()))
        for file, content in (wanted if isinstance(wanted, dict) else {None: wanted}).items():
            if file:
                self.assertEqual("", text.replace(f"{file}\n", ""))  # the catalogue tells its name
                text = (self.folder / file).read_bytes().decode("latin-1")
            self.assertRegex(text, content)


if __name__ == "__main__":
    unittest.main()
