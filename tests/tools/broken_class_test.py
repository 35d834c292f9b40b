"""Classes whose creators return null or throw do not keep tolvmsg from the others.

BROKEN_PRELOAD, NAME=VALUE, makes tolvmsg load a library with two such classes.
"""

import json
import os
import pathlib
import re
import tempfile
import unittest

from tool import CONNECT, message, run

WITH_BROKEN_CLASSES = {**os.environ, **dict([os.environ["BROKEN_PRELOAD"].split("=", 1)])}

# id, what is told of it
BROKEN = (("0x000300000000fffe", "its creator returns null"),
          ("0x000300000000ffff", r"its creator throws: no \u001b[31mhardware"))


def run_broken(*arguments, **options):
    return run(*arguments, env=WITH_BROKEN_CLASSES, **options)


class BrokenClass(unittest.TestCase):
    def expect_left_out(self, done):
        self.assertEqual(0, done.status, done.err)
        self.assertEqual([f"tolvmsg: left out: no message of class {id} (broken) can be built: {why}"
                          for id, why in BROKEN], done.err.splitlines())

    def test_list_names_it(self):
        done = run_broken("list", "--json")
        self.assertEqual((0, ""), (done.status, done.err))
        ids = [row["id"] for row in json.loads(done.out)]
        self.assertEqual([True, True], [id in ids for id, _ in BROKEN])

    def test_commands_about_all_classes_leave_it_out(self):
        done = run_broken("schema", "--all")
        self.expect_left_out(done)
        self.assertEqual(run("schema", "--all").out, done.out)
        for command in (("schema", "--all", "-o"), ("catalogue",)):
            with tempfile.TemporaryDirectory() as folder, self.subTest(command):
                self.expect_left_out(run_broken(*command, folder + "/broken"))
                self.assertEqual(0, run(*command, folder + "/sound").status)
                self.assertEqual(*({path.name: path.read_bytes() for path in
                                    pathlib.Path(folder, name).iterdir()}
                                   for name in ("broken", "sound")))

    def test_commands_about_one_class_name_it(self):
        for id, why in BROKEN:
            with self.subTest(id):
                done = run_broken("schema", id)
                self.assertEqual((2, b"", f"tolvmsg: no message of class {id} (broken) can be built: "
                                          f"{why}\n"), (done.status, done.out, done.err))
                done = run_broken("example", id)
                self.assertEqual((2, b""), (done.status, done.out))
                self.assertRegex(done.err, "^tolvmsg: broken is not in the catalogue.*\n$")

    def test_its_messages_are_told_of(self):
        for number, why in ((0xFFFE, r"the class of id 0x000300000000fffe (3.0.0.65534) built no message"),
                            (0xFFFF, r"no \u001b[31mhardware")):
            text = CONNECT + b"\n" + message(number) + b"\n"
            done = run_broken("decode", text=text)
            self.assertEqual(1, done.status)
            self.assertIn("no message: " + why, done.out.decode())
            done = run_broken("lint", text=text)
            self.assertEqual(1, done.status)
            self.assertRegex(done.out.decode(), ":2: no-message: " + re.escape(why))


if __name__ == "__main__":
    unittest.main()
