"""`scripts/bench --check` refuses a performance page that lacks a figure or is outdated."""
import importlib.machinery
import importlib.util
import pathlib
import sys
import unittest

sys.dont_write_bytecode = True
SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "bench"
loader = importlib.machinery.SourceFileLoader("bench", str(SCRIPT))
bench = importlib.util.module_from_spec(importlib.util.spec_from_loader("bench", loader))
loader.exec_module(bench)

RELEASES = ["0.3.0", "0.2.0", "0.1.0"]
FIRST = bench.PARTS["times"][0]


def page(version="0.3.0", sources="new", empty=None):
    parts = []
    for name, titles in bench.PARTS.items():
        rows = [] if name == empty else [[title, "1 ns"] for title in titles]
        table = bench.markdown(["road", "ours"], rows)
        parts.append(f"<!-- {name}: version {version}, bench {sources} -->\n{table}\n"
                     f"<!-- end of {name} -->\n")
    return "\n".join(parts)


class Page(unittest.TestCase):
    def test_complaints(self):
        all_parts = len(bench.PARTS)
        threads = page().index("<!-- threads")
        memory = page().index("<!-- memory")
        for what, text, count in (
                ("complete", page(), 0),
                ("a part is gone", page()[:threads] + page()[memory:], 1),
                ("no end", page().replace("<!-- end of scales -->", ""), 1),
                ("a part is empty", page(empty="threads"), len(bench.THREADS)),
                ("one of two tables is gone", page().replace("| S read | 1 ns |\n", "", 1), 1),
                ("a row is gone", page().replace(f"| {FIRST} | 1 ns |\n", "", 1), 1),
                ("a row is empty", page().replace(f"| {FIRST} | 1 ns |", f"| {FIRST} |  |", 1), 1),
                ("no version", page().replace(": version 0.3.0, bench new", ""), all_parts),
                ("no such version", page("0.0.9"), all_parts),
                ("old, bench/ unchanged", page("0.1.0"), 0),
                ("bench/ changed since the last release", page("0.2.0", "old"), 0),
                ("bench/ changed, two releases old", page("0.1.0", "old"), all_parts)):
            with self.subTest(what):
                found = list(bench.complaints(text, RELEASES, "new"))
                self.assertEqual(count, len(found), found)


if __name__ == "__main__":
    unittest.main()
