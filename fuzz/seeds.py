#!/usr/bin/env python3
"""Creates seeds from the corpus of statements: one file per text.

    seeds.py CORPUS OUT

CORPUS is tests/corpus; OUT gets one folder for each target that reads text.
"""

import hashlib
import pathlib
import re
import sys

RULE = re.compile(r"={10,}")
ESCAPE = re.compile(r"\\(?:u\{([0-9A-Fa-f]+)\}|([nrtf\\]))")
CHARACTERS = {"n": "\n", "r": "\r", "t": "\t", "f": "\f", "\\": "\\"}


def unescaped(text: str) -> str:
    return ESCAPE.sub(lambda m: chr(int(m[1], 16)) if m[1] else CHARACTERS[m[2]], text)


def texts(file: pathlib.Path):
    """The text of each case of a file: the lines between its second rule and the line ---."""
    lines = file.read_text(encoding="utf-8", errors="surrogateescape").split("\n")
    header = False
    for at, line in enumerate(lines):
        if not RULE.fullmatch(line):
            continue
        header = not header
        if header:
            start = at
            continue
        attributes = lines[start + 2:at]
        text = "\n".join(lines[at + 1:lines.index("---", at + 1)])
        yield unescaped(text) if ":escaped" in attributes else text


def write(folder: pathlib.Path, content: bytes) -> None:
    folder.mkdir(parents=True, exist_ok=True)
    (folder / hashlib.sha1(content).hexdigest()[:16]).write_bytes(content)


def conversation(text: str, count: int) -> bytes:
    """A document, three edits in it, and three questions to the language server after each."""
    steps = [text.replace(", ", ",\n  ") if count % 3 == 0 else text]
    for edit in range(3):
        at = (count * 7 + edit * 11) % max(len(text), 1)
        insert = ("", ",", "\n", "PRO=", "\"", "# c\n")[(count + edit) % 6]
        steps.append("".join(map(chr, (14, 0, at % 128, 0, at % 128 + edit))) + insert)
        for ask in range(3):
            method = (count + edit * 3 + ask) % 14
            steps.append("".join(map(chr, (method, 0, at % 128 + ask % 2, 1, 0))))
    return bytes([0x40 + count % 4]) + "\x1e".join(steps).encode("utf-8", errors="replace")


def main() -> int:
    if len(sys.argv) != 3:
        print(__doc__, file=sys.stderr)
        return 2
    corpus, out = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    count = 0
    for file in sorted(corpus.rglob("*.txt")):
        for text in texts(file):
            content = text.encode("utf-8", errors="surrogatepass")
            if not content:
                continue
            count += 1
            if file.parent.name == "lexer":
                write(out / "tokens", content)
            else:
                write(out / "statement", content)
                write(out / "diagnose", content)
                write(out / "format", content)
                write(out / "lsp", conversation(text, count))
            # A wide request with an array of 15 entries of 64 and 128 bytes, or for 8-bit text.
            write(out / "request", bytes([0, count % 3, 0, 0, 0, 0, 0xFF, 0xF1, 64, 128, 0]) + content)
            # A letter selects the function, two bytes are its numbers.
            write(out / "utilities", bytes([ord("a") + count % 12, 0, 9]) + content[:64])
    print(f"{count} texts")
    return 0


if __name__ == "__main__":
    sys.exit(main())
