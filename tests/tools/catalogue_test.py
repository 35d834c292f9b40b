"""The content of the pages of `tolvmsg catalogue`. The environment names a compiler (CXX) and the folder
of the headers (INCLUDES).
"""

import html.parser
import json
import os
import pathlib
import subprocess
import tempfile
import unittest

from tool import WITH_CLASS_OF_A_USER, classes, run


class Page(html.parser.HTMLParser):
    """The links of a page, the texts of its listings by id, and its tags, which must match."""

    EMPTY = {"meta", "link", "input"}

    def __init__(self, path):
        super().__init__()
        self.targets, self.ids, self.listings, self.words, self.open = [], set(), {}, [], []
        self.feed(path.read_text(encoding="utf-8"))
        self.close()
        assert not self.open, (path, self.open)

    def handle_starttag(self, tag, attrs):
        attrs = dict(attrs)
        if tag not in self.EMPTY:
            self.open.append((tag, attrs.get("id")))
        assert attrs.get("id") not in self.ids - {None}, attrs
        self.ids.add(attrs.get("id"))
        self.targets += [attrs[key] for key in ("href", "src", "action") if key in attrs]

    def handle_endtag(self, tag):
        assert self.open and self.open.pop()[0] == tag, (tag, self.getpos())

    def handle_data(self, data):
        self.words.append(data)
        for tag, name in self.open:
            if tag == "code" and name:
                self.listings[name] = self.listings.get(name, "") + data


def write_site(folder, **options):
    done = run("catalogue", folder, **options)
    assert (done.status, done.err) == (0, ""), done.err
    return {path.name: path for path in pathlib.Path(folder).iterdir()}


def page_of(row):
    return row["alias"].replace("::", ".") + ".html"


class Catalogue(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.files = write_site(folder.name + "/made/on/the/way")
        cls.pages = {name: Page(path) for name, path in cls.files.items()
                     if name.endswith(".html")}

    def test_each_message_has_its_page(self):
        self.assertEqual({"index.html"} | {page_of(row) for row in classes()}, set(self.pages))
        for row in classes():
            page = self.pages[page_of(row)]
            text = "".join(page.words)
            fields = ".".join(str(row[key]) for key in ("family", "sub1", "sub2", "type"))
            for told in (row["id"], str(int(row["id"], 16)), fields, row["role"], row["class"]):
                self.assertIn(told, text)
            self.assertEqual(run("example", row["id"]).out.decode(),
                             json.dumps(json.loads(page.listings["example-json"]),
                                        separators=(",", ":")) + "\n")
            schema = self.files[page_of(row).replace(".html", ".schema.json")].read_text()
            self.assertEqual(run("schema", row["id"]).out.decode(), schema)
            self.assertIn(page.listings.get("schema-json"), (None, schema))

    def test_links_lead_somewhere_and_not_to_the_network(self):
        for name, page in self.pages.items():
            for target in page.targets:
                path, _, anchor = target.partition("#")
                path = path.partition("?")[0]
                if path == "data:,":
                    continue
                self.assertIn(path or name, self.files, (name, target))
                if anchor:
                    self.assertIn(anchor, self.pages[path or name].ids, (name, target))
        for name in ("site.css", "site.js"):
            self.assertNotRegex(self.files[name].read_text(), "https?://|url\\(|@import|fetch\\(")

    def test_same_again(self):
        with tempfile.TemporaryDirectory() as folder:
            again = write_site(folder)
            self.assertEqual({name: path.read_bytes() for name, path in self.files.items()},
                             {name: path.read_bytes() for name, path in again.items()})

    def test_nested_records_are_unfolded(self):
        text = " ".join(self.pages["App.ChassisInformationResponseMessage.html"].words)
        at = [text.index(key) for key in ("ModuleList", "Configuration", "ComponentList",
                                          "ResourceID")]
        self.assertEqual(sorted(at), at)
        self.assertIn("3 control", " ".join(text.split()))

    def test_class_of_a_user(self):
        with tempfile.TemporaryDirectory() as folder:
            files = write_site(folder, env=WITH_CLASS_OF_A_USER)
            page = Page(files["3.0.0.61166.html"])
            self.assertIn("level", page.words)  # its payload describes itself
            self.assertIn("Gauge", "".join(page.words))  # its name holds angle brackets
            self.assertNotIn("cpp-build", page.listings)

    def test_code_compiles(self):
        lines = []
        code = []
        for row in classes():
            listings = self.pages[page_of(row)].listings
            for name, arguments in (("cpp-build", ""), ("cpp-read", "std::string const& text")):
                function = f"{row['alias'].replace('::', '_')}_{name[4:]}"
                code.append(f"static void {function}({arguments}) {{")
                for line in listings[name].splitlines():
                    (lines if line.startswith(("#include", "using namespace")) else code).append(line)
                code.append("}")
        with tempfile.TemporaryDirectory() as folder:
            source = pathlib.Path(folder, "pages.cpp")
            source.write_text("\n".join([*dict.fromkeys(lines), *code, ""]))
            done = subprocess.run(
                [os.environ["CXX"], "-std=c++20", "-fsyntax-only", "-Wall", "-Wextra", "-Wconversion",
                 "-Werror", "-Wno-unused", "-I" + os.environ["INCLUDES"], str(source)],
                capture_output=True, text=True)
            faults = [line for line in done.stderr.splitlines() if "error" in line]
            self.assertEqual((0, []), (done.returncode, faults[:20]))


if __name__ == "__main__":
    unittest.main()
