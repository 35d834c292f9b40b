"""Runs tolvmsg, whose path is in the environment (TOLVMSG), and makes messages for it.

PRELOAD, NAME=VALUE, is what makes it load a library with a message class that no catalogue knows.
"""

import base64
import fcntl
import json
import os
import pathlib
import pty
import struct
import subprocess
import tempfile
import termios
import unittest

TOLVMSG = os.environ["TOLVMSG"]
WITH_CLASS_OF_A_USER = {**os.environ, **dict([os.environ["PRELOAD"].split("=", 1)])}

CONNECT = (b'{"MessageID":844424930131969,"Data":{"MaxVersion":1,"MinVersion":1,'
           b'"BinaryTransmission":true}}')


class Result:
    def __init__(self, done):
        self.status = done.returncode
        self.out = done.stdout
        self.err = done.stderr.decode()

    def rows(self):
        """The lines of the output, each of which must be JSON."""
        lines = self.out.decode().split("\n")
        assert lines.pop() == "", "the last line has no end"
        return [json.loads(line) for line in lines]


def run(*arguments, text=b"", **options):
    return Result(subprocess.run([TOLVMSG, *arguments], input=text, capture_output=True,
                                 timeout=120, **options))


def decode(text, *arguments):
    return run("decode", "--json", *arguments, text=text)


def message(number, data=None, family=3, **others):
    tree = {"MessageID": (family << 48) + number, **others}
    if data is not None:
        tree["Data"] = data
    return json.dumps(tree).encode()


def attribute(number, data=None, **others):
    return message(number, data, family=4, **others)


def encoded(kind, values):
    data = b"".join(struct.pack("<d", value) for value in values)
    return {"type": kind, "len": len(values), "base64": base64.b64encode(data).decode()}


def classes():
    return json.loads(run("list", "--json").out)


def on_terminal(words, until=b"", **options):
    """What a command prints on a terminal of 24 lines; it is ended once that holds `until`."""
    ours, theirs = pty.openpty()
    fcntl.ioctl(theirs, termios.TIOCSWINSZ, struct.pack("4H", 24, 80, 0, 0))
    process = subprocess.Popen(words, stdout=theirs, **options)
    os.close(theirs)
    text = b""
    try:
        while part := os.read(ours, 65536):
            text += part
            if until and until in text:
                process.terminate()
    except OSError:  # the end
        pass
    os.close(ours)
    return process.wait(60), text.replace(b"\r\n", b"\n").decode()


class Case(unittest.TestCase):
    """A test with a folder of its own."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def file(self, name, content):
        path = os.path.join(self.folder, name)
        with open(path, "wb") as out:
            out.write(content)
        return path

    def check_refusals(self, *table, text=b""):
        """Each row: arguments, and what the error message must contain."""
        for arguments, complaint in table:
            with self.subTest(arguments):
                done = run(*arguments, text=text)
                self.assertEqual((2, b""), (done.status, done.out))
                self.assertTrue(done.err.startswith("tolvmsg: "), done.err)
                self.assertIn(str(complaint), done.err)
