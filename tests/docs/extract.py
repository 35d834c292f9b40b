"""Takes the C++ of the documentation out, to be compiled, and checks that what stands twice is the
same. Usage: extract.py SOURCE_DIR OUTPUT_DIR"""
import pathlib
import re
import sys
import textwrap


def blocks(page):
    """The C++ blocks of a page, without the indentation of the list that they stand in."""
    found = re.findall(r"^( *)```cpp\n(.*?)^ *```", page.read_text(), re.M | re.S)
    return [textwrap.dedent(code) for _, code in found]


def main():
    source, output = map(pathlib.Path, sys.argv[1:])
    output.mkdir(parents=True, exist_ok=True)
    record, row, own = blocks(source / "docs" / "adding-a-message.md")
    (output / "record.h").write_text(record)
    (output / "own_message.inc").write_text(own)

    (program,) = blocks(source / "README.md")
    if program != (source / "examples" / "first_message.cpp").read_text():
        sys.exit("README.md and examples/first_message.cpp differ")
    if not re.fullmatch(r"TOLV_PAYLOAD_MESSAGE\(\w+, \d+, \"[^\"]+\", App::LicenseData\)\n", row):
        sys.exit("docs/adding-a-message.md: this is no row of a table: " + row)


main()
