#!/usr/bin/env python3
"""Lists what no test covers: coverage_gaps.py COVERAGE.JSON [FOLDER]

One line for each line of our own code below FOLDER (Src) that never runs or has branches that are
never taken, with its text.
"""

import json
import pathlib
import sys


def main() -> int:
    if len(sys.argv) < 2:
        print(__doc__, file=sys.stderr)
        return 2
    folder = sys.argv[2] if len(sys.argv) > 2 else "Src"
    for file in json.loads(pathlib.Path(sys.argv[1]).read_text())["files"]:
        name = file["file"]
        if not name.startswith(folder + "/"):
            continue
        text = pathlib.Path(name).read_text().split("\n")
        for line in file["lines"]:
            if line.get("gcovr/noncode"):
                continue
            branches = [branch for branch in line["branches"] if not branch.get("throw")]
            missed = sum(branch["count"] == 0 for branch in branches)
            number = line["line_number"]
            if line["count"] == 0:
                print(f"{name}:{number}: never runs: {text[number - 1].strip()}")
            elif missed:
                print(f"{name}:{number}: {missed} of {len(branches)} branches: {text[number - 1].strip()}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
