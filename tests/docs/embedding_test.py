#!/usr/bin/env python3
"""Runs the programs of docs/embedding.md, one language at a time.

    embedding_test.py PAGE c COMPILER...     compiles each block of C and runs it
    embedding_test.py PAGE cpp COMPILER...   the same in C++
    embedding_test.py PAGE python PROGRAM    an interpreter that finds the package
    embedding_test.py PAGE js PROGRAM        in a folder where the package is installed

After each program the page says "prints" and has a block of what it prints. COMPILER is the command
without the output, with SOURCE for the source.
"""
import pathlib
import re
import subprocess
import sys
import tempfile

BLOCK = re.compile(r"(?P<before>[^\n]*)\n*^```(?P<language>\w*)\n(?P<text>.*?)^```$", re.M | re.S)
def programs_of(page: str, language: str) -> list[tuple[str, str]]:
    """Each program with what it prints."""
    found: list[tuple[str, str]] = []
    blocks = list(BLOCK.finditer(page))
    for at, block in enumerate(blocks):
        if block["language"] != language:
            continue
        after = blocks[at + 1] if at + 1 < len(blocks) else None
        if after is None or after["language"] or after["before"].strip() != "prints":
            sys.exit(f"the page does not say what this program prints:\n{block['text']}")
        found.append((block["text"], after["text"]))
    if not found:
        sys.exit(f"the page has no program in {language}")
    return found


def run(language: str, command: list[str], text: str, folder: str) -> str:
    suffix = {"c": ".c", "cpp": ".cpp", "python": ".py", "js": ".mjs"}[language]
    # A module is found from where the program lies.
    source = pathlib.Path("." if language == "js" else folder, "embedding-example" + suffix)
    source.write_text(text, encoding="utf-8")
    try:
        program = [*command, str(source)]
        if language in ("c", "cpp"):
            output = str(pathlib.Path(folder, "program"))
            at = command.index("SOURCE")
            subprocess.run([*command[:at], str(source), *command[at + 1:], "-o", output], check=True)
            program = [output]
        return subprocess.run(program, check=True, capture_output=True, text=True).stdout
    finally:
        source.unlink()


def main() -> int:
    page, language, *command = sys.argv[1:]
    failures = 0
    programs = programs_of(pathlib.Path(page).read_text(encoding="utf-8"), language)
    with tempfile.TemporaryDirectory() as folder:
        for text, expected in programs:
            actual = run(language, command, text, folder)
            if actual != expected:
                failures += 1
                print(f"--- program\n{text}--- expected\n{expected}--- printed\n{actual}")
    print(f"{len(programs)} programs in {language}, {failures} failed")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
