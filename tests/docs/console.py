"""Runs the commands of the guide and compares what they print with what the guide shows.
Usage: console.py SOURCE_DIR FOLDER_OF_TOLVMSG"""
import os
import pathlib
import re
import subprocess
import sys


def main():
    source, folder = map(pathlib.Path, sys.argv[1:])
    environment = dict(os.environ, PATH=f"{folder}:{os.environ['PATH']}", LC_ALL="C.UTF-8")
    commands = failures = 0
    for page in sorted((source / "docs" / "guide").glob("*.md")):
        for command, shown in re.findall(r"^```console\n\$ (.*)\n(.*?)^```", page.read_text(),
                                         re.M | re.S):
            commands += 1
            printed = subprocess.run(command, shell=True, cwd=source, env=environment, text=True,
                                     stdout=subprocess.PIPE, check=False).stdout
            if printed != shown:
                failures += 1
                print(f"{page}: $ {command}\n{printed}is what it prints, the page shows\n{shown}")
    if failures or not commands:
        sys.exit(f"{failures} of {commands} commands print something else")


main()
