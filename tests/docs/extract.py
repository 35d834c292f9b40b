"""Extracts the C++ of the documentation, to be compiled and run, and checks that code that appears
twice is the same. Usage: extract.py SOURCE_DIR OUTPUT_DIR"""
import pathlib
import re
import sys
import textwrap

PROMISE = "\n\nIt prints\n\n```text\n"  # between an example and its output
# Such a block is a declaration outside any function.
DECLARATION = re.compile(r"(class|struct|template|std::string \w+\(|std::shared_ptr<\w+> \w+\()")


def blocks(page):
    """The C++ blocks of a page, without the indentation of a list."""
    found = re.findall(r"^( *)```cpp\n(.*?)^ *```", page.read_text(), re.M | re.S)
    return [textwrap.dedent(code) for _, code in found]


def examples(text):
    """(line, code, output or None) of each C++ block of a page of the guide."""
    for found in re.finditer(r"^```cpp\n(.*?)^```", text, re.M | re.S):
        behind = text[found.end():]
        output = None
        if behind.startswith(PROMISE):
            output = behind[len(PROMISE):].split("```", 1)[0]
        yield text.count("\n", 0, found.start(1)) + 1, found[1], output


def add_page(page, program, declarations, tests):
    """The test of a page of the guide: its blocks in order, in a common scope."""
    body = []
    for line, code, output in examples(page.read_text()):
        place = f'#line {line} "{page.as_posix()}"\n'
        if "int main(" in code:
            if (code, output) != program:
                sys.exit(f"{page}: differs from examples/first_message.cpp, or from its output")
        elif DECLARATION.match(code):
            declarations.append(place + code)
        else:
            body.append(place + code)
            if output is not None:
                body.append(f'printed.expect(R"out({output})out");\n')
    name = "".join(word.capitalize() for word in page.stem.split("-"))
    tests.append(f"TEST(Guide, {name}) {{\nPrinted printed;\n{''.join(body)}}}\n")


def main():
    source, output = map(pathlib.Path, sys.argv[1:])
    output.mkdir(parents=True, exist_ok=True)
    record, row, own = blocks(source / "docs" / "adding-a-message.md")
    (output / "record.h").write_text(record)
    (output / "own_message.inc").write_text(own)
    if not re.fullmatch(r"TOLV_PAYLOAD_MESSAGE\(\w+, \d+, \"[^\"]+\", App::LicenseData\)\n", row):
        sys.exit("docs/adding-a-message.md: this is no row of a table: " + row)

    (readme,) = blocks(source / "README.md")
    if readme != (source / "examples" / "first_message.cpp").read_text():
        sys.exit("README.md and examples/first_message.cpp differ")

    declarations, tests = [], []
    pages = sorted((source / "docs" / "guide").glob("*.md"))
    for page in sorted(pages, key=lambda page: page.stem != "first-message"):
        if "```cpp" in page.read_text():
            add_page(page, (readme, "highest version: 3\n"), declarations, tests)
    (output / "guide.inc").write_text("\n".join(declarations + tests))


main()
