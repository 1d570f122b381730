#!/usr/bin/env python3
"""Checks the relative links of the documents: each names a file of the tree, and a heading of it if it says so.

    docs_links.py [FILE...]    without files: every Markdown file that git knows
"""

import pathlib
import re
import subprocess
import sys
from urllib.parse import unquote

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
CODE = re.compile(r"^(```|~~~).*?^\1\s*$|`[^`\n]*`", re.MULTILINE | re.DOTALL)
LINK = re.compile(r"!?\[(?:[^\]\[]|\[[^\]]*\])*\]\(\s*<?([^)\s>]+)>?(?:\s+\"[^\"]*\")?\s*\)|^\[[^\]]+\]:\s+(\S+)|(?:src|href|srcset)=\"([^\"]+)\"",
                  re.MULTILINE)
HEADING = re.compile(r"^#{1,6}\s+(.*?)\s*#*\s*$", re.MULTILINE)
ANCHOR = re.compile(r"<a\s+(?:name|id)=\"([^\"]+)\"")


def without_code(text: str) -> str:
    """The text with code blanked out, lines kept."""
    return CODE.sub(lambda found: re.sub(r"[^\n]", " ", found[0]), text)


def anchors(text: str) -> set[str]:
    """The names that a link can use after #: headings as GitHub names them, and anchors."""
    found: set[str] = set(ANCHOR.findall(text))
    fenced = re.sub(r"^(```|~~~).*?^\1\s*$", "", text, flags=re.MULTILINE | re.DOTALL)
    for heading in HEADING.findall(fenced):
        heading = re.sub(r"!?\[([^\]]*)\]\([^)]*\)", r"\1", heading)
        name = re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")
        unique, count = name, 0
        while unique in found:
            count += 1
            unique = f"{name}-{count}"
        found.add(unique)
    return found


def problems(page: pathlib.Path) -> list[str]:
    text = page.read_text(encoding="utf-8")
    found = []
    visible = without_code(text)
    for match in LINK.finditer(visible):
        target = next(group for group in match.groups() if group)
        if re.match(r"[a-z][a-z0-9+.-]*:", target):
            continue
        path, _, anchor = target.partition("#")
        line = visible.count("\n", 0, match.start()) + 1
        file = page if not path else (page.parent / unquote(path))
        if not file.exists():
            found.append(f"{page}:{line}: no such file: {target}")
        elif anchor and file.suffix == ".md" and anchor not in anchors(file.read_text(encoding="utf-8")):
            found.append(f"{page}:{line}: no such heading: {target}")
    return found


def main() -> int:
    names = sys.argv[1:]
    if not names:
        names = subprocess.run(["git", "ls-files", "*.md"], cwd=ROOT, check=True, capture_output=True,
                               text=True).stdout.split()
        names = [str(ROOT / name) for name in names]
    found = [problem for name in names for problem in problems(pathlib.Path(name))]
    print("\n".join(found) if found else f"{len(names)} documents: every link leads somewhere")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
