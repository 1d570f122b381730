#!/usr/bin/env python3
"""Runs the command blocks of Markdown pages and compares their output.

A block fenced as `console` holds commands after "$ " and, below each, everything that the command
prints, standard output and standard error together. `./dev run` and `./dev tavo` stand for the
program of the build that is being tested. Those of a page run in one folder with the files
of example_files.py. With --write the blocks are filled in instead.

usage: readme_test.py --tavo PROGRAM [--write] PAGE...
"""
import argparse
import os
import pathlib
import re
import subprocess
import sys
import tempfile

import example_files

BLOCK = re.compile(r"^```console\n(.*?)^```$", re.M | re.S)


def run(command: str, tavo: str, folder: str) -> str:
    actual = re.sub(r"^\./dev run\b", f"{tavo} parse", command)
    actual = re.sub(r"^(\./dev tavo|tavo)\b", tavo, actual)
    if actual == command:
        raise SystemExit(f"a command block may only call the program itself: {command}")
    result = subprocess.run(["bash", "-c", actual], stdout=subprocess.PIPE, cwd=folder,
                            stderr=subprocess.STDOUT, text=True, timeout=60, check=False)
    return result.stdout


def expected_of(block: str):
    """Pairs of command and expected output."""
    command, lines = None, []
    for line in block.splitlines():
        if line.startswith("$ "):
            if command is not None:
                yield command, "".join(lines)
            command, lines = line[2:], []
        else:
            lines.append(line + "\n")
    if command is not None:
        yield command, "".join(lines)


def main() -> int:
    parser = argparse.ArgumentParser()
    parser.add_argument("--tavo", required=True, type=os.path.abspath)
    parser.add_argument("--write", action="store_true")
    parser.add_argument("pages", nargs="+", type=pathlib.Path)
    arguments = parser.parse_args()
    commands = failures = 0
    for page in arguments.pages:
        text = page.read_text(encoding="utf-8")

        def checked(match: re.Match) -> str:
            nonlocal commands, failures
            body = ""
            for command, expected in expected_of(match.group(1)):
                commands += 1
                actual = run(command, arguments.tavo, folder)
                body += f"$ {command}\n{actual}"
                if actual != expected and not arguments.write:
                    failures += 1
                    print(f"{page}: $ {command}\n--- expected\n{expected}--- actual\n{actual}")
            return f"```console\n{body}```"

        with tempfile.TemporaryDirectory() as folder:
            example_files.make(folder)
            filled = BLOCK.sub(checked, text)
        if arguments.write:
            page.write_text(filled, encoding="utf-8")
    print(f"{commands} commands, {failures} failed")
    return 1 if failures or commands == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
