#!/usr/bin/env python3
"""The railroad diagrams that docs/language.md links, as `tavo explain NAME --format svg` draws them.

usage: railroad.py --tavo PROGRAM [--check | --write]

--check names the files that differ, are missing or have no link; the exit status is 1 then.
"""
import argparse
import pathlib
import re
import subprocess
import sys
import xml.dom.minidom

DOCS = pathlib.Path(__file__).resolve().parents[1]
FOLDER = DOCS / "pictures" / "railroad"


def drawn(tavo):
    """File name -> picture."""
    page = (DOCS / "language.md").read_text(encoding="utf-8")
    names = re.findall(r"\(pictures/railroad/([^)]+)\.svg\)", page)
    return {name + ".svg": subprocess.run([tavo, "explain", name.upper(), "--format", "svg"],
                                          capture_output=True, check=True).stdout
            for name in names}


def main():
    parser = argparse.ArgumentParser(description="Draw the diagrams of the language reference.")
    parser.add_argument("--tavo", required=True)
    parser.add_argument("--check", action="store_true")
    parser.add_argument("--write", action="store_true")
    arguments = parser.parse_args()
    wanted = drawn(arguments.tavo)
    if arguments.write:
        FOLDER.mkdir(exist_ok=True)
        for path in FOLDER.glob("*.svg"):
            if path.name not in wanted:
                path.unlink()
        for name, picture in wanted.items():
            (FOLDER / name).write_bytes(picture)
    for picture in wanted.values():
        xml.dom.minidom.parseString(picture)  # throws when it is not well-formed
    found = {path.name: path.read_bytes() for path in FOLDER.glob("*.svg")}
    wrong = sorted(name for name in found.keys() | wanted.keys()
                   if found.get(name) != wanted.get(name))
    for name in wrong:
        print("docs/pictures/railroad/%s is out of date. Run ./dev pictures." % name)
    if not wanted:
        print("docs/language.md links no diagrams")
    return 1 if wrong or not wanted else 0


if __name__ == "__main__":
    sys.exit(main())
