#!/usr/bin/env python3
"""The man page and the help of each verb name the same options, formats and verbs.

usage: manual_test.py MAN_PAGE
"""
import os
import re
import subprocess
import sys

TOOL = os.environ["TAVO"]
failures = 0


def expect(condition, *what):
    global failures
    if not condition:
        failures += 1
        print("FAILED:", *what)


def help_of(*verb):
    return subprocess.run([TOOL, *verb, "--help"], capture_output=True, check=True, encoding="utf-8").stdout


def options_of(text):
    """Long and short names at the beginnings of lines."""
    names = set()
    for line in re.findall(r"^  (-\S+)", text, re.M):
        names |= {re.sub(r"[{=].*", "", name) for name in line.split(",")}
    return names


def main():
    page = open(sys.argv[1], encoding="utf-8").read()
    plain = re.sub(r"\\f[BIRP]", "", page).replace("\\-", "-")
    sections = re.findall(r"^\.SS ([^\n]*)\n(.*?)(?=^\.S[SH] |\Z)", plain, re.M | re.S)
    common = plain[plain.index(".SH OPTIONS"):plain.index(".SH VERBS")]
    own = options_of(help_of())
    verbs = re.findall(r"^  ([a-z]+) ", help_of().split("Subcommands:")[1], re.M)
    expect(len(verbs) >= 12, verbs)
    named = re.compile(r"(?<![\w-])(--?[a-z][a-z-]*)")
    expect(own <= set(named.findall(common)), own, common)
    synopsis = plain[plain.index(".SH SYNOPSIS"):plain.index(".SH DESCRIPTION")]
    for verb in verbs:
        expect(re.search(r"\b%s\b" % verb, synopsis), verb, "is not in the synopsis")
        texts = [text for heading, text in sections if verb in heading.split(", ")]
        expect(any(heading == verb for heading, _ in sections), verb, "has no section")
        told = set()
        for text in texts:
            for block in re.split(r"^\.TP\n", text, flags=re.M)[1:]:
                told |= set(named.findall(block.split("\n", 1)[0]))
                told |= {name for name in named.findall(block) if name in ("--no-line-number", "--stdio")}
            told |= {name for name in named.findall(text) if name == "--stdio"}
        options = options_of(help_of(verb)) - {"-h", "--help"}
        expect(options == told, verb, "help only:", options - told, "man page only:", told - options)
        formats = re.search(r"^  --format \S+ +((?:.|\n {20,})*)", help_of(verb), re.M)
        for name in re.findall(r"[a-z-]+", formats.group(1).replace("\n", " ") if formats else ""):
            if name in ("or", "and"):
                continue
            expect(re.search(r"(?<![\w-])%s(?![\w-])" % name, "".join(texts)), verb, "format", name)
    print("%d verbs, %d failures" % (len(verbs), failures))
    return 1 if failures else 0


sys.exit(main())
