"""The statements of the library's own tests."""
from __future__ import annotations

import glob
import os
import re
from collections.abc import Iterator
from typing import NamedTuple

FOLDER = os.path.join(os.path.dirname(__file__), "..", "..", "..", "tests", "corpus")


class Case(NamedTuple):
    title: str
    text: str
    code_page: int | None
    status: int
    pairs: list[tuple[int, str, int, str]]
    errors: list[int]


def unescape(text: str) -> str:
    simple = {"\\": "\\", "n": "\n", "r": "\r", "t": "\t", "f": "\f"}
    return re.sub(r"\\(?:u\{([0-9A-Fa-f]+)\}|(.))",
                  lambda m: chr(int(m[1], 16)) if m[1] else simple[m[2]], text)


def read(path: str) -> Iterator[Case]:
    with open(path, encoding="utf-8", newline="\n") as file:
        content = file.read()
    cases = re.split(r"(?m)^={10,}\n", content)[1:]
    for head, body in zip(cases[0::2], cases[1::2]):
        title, *attributes = head.rstrip("\n").split("\n")
        text, expected = re.split(r"(?m)^---\n", body, maxsplit=1)
        text = text[:-1] if text.endswith("\n") else text
        if ":escaped" in attributes:
            text = unescape(text)
        page = [int(a.split()[1]) for a in attributes if a.startswith(":code-page")]
        status, pairs, errors = 0, [], []
        for line in expected.split("\n"):
            pair = re.match(r"(\d+) (\S+) = (\d+)(?: (.*))?$", line)
            if line.startswith("status "):
                status = int(line[7:])
            elif line.startswith("error "):
                errors.append(int(line.split()[1]))
            elif pair:
                pairs.append((int(pair[1]), unescape(pair[2]), int(pair[3]), unescape(pair[4] or "")))
        yield Case("%s: %s" % (os.path.basename(path), title), text, page[0] if page else None,
                   status, pairs, errors)


def all_cases() -> list[Case]:
    paths = sorted(glob.glob(os.path.join(FOLDER, "statements", "*.txt"))
                   + glob.glob(os.path.join(FOLDER, "validation", "*.txt")))
    return [case for path in paths for case in read(path)]
