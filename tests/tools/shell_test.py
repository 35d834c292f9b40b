"""The man page and the completions cover everything that --help lists."""

import os
import pathlib
import re
import subprocess
import unittest

from tool import TOLVMSG, run

HERE = pathlib.Path(__file__).resolve().parents[2] / "tools" / "tolvmsg"
MAN = HERE / "tolvmsg.1"


def help_of(*command):
    return run(*command, "--help").out.decode()


def commands():
    listed = help_of().split("Subcommands:\n")[1].split("\n\n")[0]
    return [line.split()[0] for line in listed.splitlines()]


def options(*command):
    return re.findall(r"^  (?:-\w,)?(--[a-z-]+)", help_of(*command), re.M)


ALL = [()] + [(command,) for command in commands()]


class Help(unittest.TestCase):
    def test_teaches(self):
        for command in ALL:
            with self.subTest(command):
                text = help_of(*command)
                self.assertRegex(text, r"\nExamples?.*:\n  .*tolvmsg")
                self.assertLessEqual(max(map(len, text.splitlines())), 110)


class ManPage(unittest.TestCase):
    def test_is_complete(self):
        page = MAN.read_text().replace("\\-", "-")
        sections = dict(re.findall(r"^\.SS (\w+).*\n((?:(?!\.S[SH]).*\n)*)", page, re.M))
        general = page.split(".SH COMMANDS")[0]
        for command in ALL:
            text = general + (sections[command[0]] if command else "")
            for option in options(*command):
                with self.subTest(command=command, option=option):
                    self.assertRegex(text, re.escape(option) + r"(?![\w-])")

    def test_has_no_warnings(self):
        done = subprocess.run(["mandoc", "-T", "lint", "-W", "warning", MAN],
                              capture_output=True, text=True, timeout=60)
        self.assertEqual((0, "", ""), (done.returncode, done.stdout, done.stderr))


class Bash(unittest.TestCase):
    SCRIPT = """source "$0"; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); complete -p tolvmsg >&2
    _tolvmsg "$1"; printf '%s\\n' "${COMPREPLY[@]}" """

    def complete(self, *words):
        """What bash offers for the last of the words."""
        done = subprocess.run(["bash", "-c", self.SCRIPT, HERE / "completion" / "tolvmsg.bash",
                               TOLVMSG, *words], capture_output=True, text=True, timeout=60)
        self.assertIn("-F _tolvmsg", done.stderr)
        return done.stdout.split()

    def test_offers_all(self):
        self.check_all()

    def check_all(self):
        self.assertEqual(set(commands()), set(self.complete("")))
        for command in ALL:
            with self.subTest(command):
                self.assertEqual(set(options(*command)), set(self.complete(*command, "--")))

    def test_values(self):
        self.assertIn("ConnectMessage", self.complete("decode", "--id", ""))
        self.assertIn("ConnectMessage", self.complete("example", "Conn"))
        self.assertIn("Attrs", self.complete("decode", "--json", "--family", ""))
        self.assertEqual(["plot"], self.complete("pl"))
        for words in (("decode", ""), ("plot", "--output", "")):  # files, which bash completes
            self.assertEqual([], self.complete(*words))


class Zsh(Bash):
    # Instead of compinit's functions, these print what would be offered.
    SCRIPT = """_describe() { print -rl -- ${(P)2} }; _files() { :; }; _message() { :; }
    words=("$@"); CURRENT=$#; . "$0"; _tolvmsg"""

    def complete(self, *words):
        done = subprocess.run(["zsh", "-f", "-c", self.SCRIPT, HERE / "completion" / "_tolvmsg",
                               TOLVMSG, *words], capture_output=True, text=True, timeout=60)
        self.assertEqual("", done.stderr)
        found = [re.split(r"(?<!\\):", line)[0] for line in done.stdout.splitlines()]
        return [word.split("\\:\\:")[-1] for word in found if word.startswith(words[-1]) or
                "\\:" in word and word.split("\\:\\:")[-1].startswith(words[-1])]


if __name__ == "__main__":
    unittest.main()
