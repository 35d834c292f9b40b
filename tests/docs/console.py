"""Runs the commands of the guide and compares what they print with what the guide shows.
Usage: console.py SOURCE_DIR FOLDER_OF_TOLVMSG [--write: updates the guide instead]"""
import os
import pathlib
import re
import subprocess
import sys


def main():
    source, folder = map(pathlib.Path, sys.argv[1:3])
    environment = dict(os.environ, PATH=f"{folder.resolve()}:{os.environ['PATH']}")
    commands = 0
    different = []

    def run(block):
        nonlocal commands
        commands += 1
        printed = subprocess.run(block[1], shell=True, cwd=source, env=environment, text=True,
                                 stdout=subprocess.PIPE, check=False).stdout
        if printed != block[2]:
            different.append(f"{page}: $ {block[1]}\n{printed}"
                             f"is what it prints, the page shows\n{block[2]}")
        return f"```console\n$ {block[1]}\n{printed}```"

    for page in sorted((source / "docs" / "guide").glob("*.md")):
        shown = page.read_text()
        printed = re.sub(r"^```console\n\$ ([^\n]*)\n(.*?)^```", run, shown, flags=re.M | re.S)
        if sys.argv[3:] == ["--write"] and printed != shown:
            page.write_text(printed)
    print("\n".join(different))
    if not commands or (different and sys.argv[3:] != ["--write"]):
        sys.exit(f"{len(different)} of {commands} commands print something else")


main()
