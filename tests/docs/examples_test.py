#!/usr/bin/env python3
"""Every example in the help of a verb and in the man page runs, and twice with the same result.

An example may find something wrong: it shows what that looks like. It may not be wrong usage, and
what it reads has to be there.

usage: examples_test.py MAN_PAGE
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile

import example_files

TOOL = os.path.abspath(os.environ["TAVO"])
# jq need not be there: any program that reads JSON to its end stands for it.
JQ = "#!/bin/sh\nexec python3 -c 'import json, sys; json.load(sys.stdin)'\n"


def examples_of_help():
    top = subprocess.run([TOOL, "--help"], capture_output=True, check=True, encoding="utf-8").stdout
    for verb in re.findall(r"^  ([a-z]+) ", top.split("Subcommands:")[1], re.M):
        text = subprocess.run([TOOL, verb, "--help"], capture_output=True, check=True, encoding="utf-8").stdout
        if "\nExamples:\n" in text:
            for line in re.findall(r"^  (\S.*)", text.split("\nExamples:\n")[1], re.M):
                yield verb, line


def examples_of_page(path):
    page = open(path, encoding="utf-8").read().replace("\\-", "-")
    for line in re.findall(r"^(tavo .*)", page[page.index(".SH EXAMPLES"):], re.M):
        yield "man page", line


def run(command):
    """Status and output, and what has become of the files, in a fresh folder."""
    with tempfile.TemporaryDirectory() as folder:
        work = os.path.join(folder, "work")
        os.mkdir(work)
        example_files.make(work)
        tools = os.path.join(folder, "bin")
        os.mkdir(tools)
        os.symlink(TOOL, os.path.join(tools, "tavo"))
        with open(os.path.join(tools, "jq"), "w", encoding="utf-8") as file:
            file.write(JQ)
        os.chmod(file.name, 0o755)
        os.makedirs(os.path.join(folder, ".config/fish/completions"))
        environment = dict(os.environ, PATH=tools + os.pathsep + os.environ["PATH"], HOME=folder)
        done = subprocess.run(["bash", "-o", "pipefail", "-c", command], cwd=work, env=environment,
                              stdin=subprocess.DEVNULL, capture_output=True, encoding="utf-8", timeout=120)
        files = {}
        for base, folders, names in os.walk(work):
            folders[:] = sorted(name for name in folders if name != ".git")
            for name in sorted(names):
                with open(os.path.join(base, name), "rb") as file:
                    files[os.path.relpath(file.name, work)] = file.read()
        return done.returncode, done.stdout.replace(folder, ""), done.stderr.replace(folder, ""), files


def main():
    failed = count = 0
    verbs = set()
    for source, command in [*examples_of_help(), *examples_of_page(sys.argv[1])]:
        if "patch" in command and shutil.which("patch") is None:
            continue
        count += 1
        verbs.add(source)
        status, out, err, files = run(command)
        wrong = status not in (0, 1) or "No such file" in err or "cannot" in err or "Run with --help" in err
        if wrong or not (out or err or files) or run(command) != (status, out, err, files):
            failed += 1
            print("FAILED: %s: %s\n%d\n%s%s" % (source, command, status, out, err))
    print("%d examples, %d failed" % (count, failed))
    return 1 if failed or count < 35 or len(verbs) < 11 else 0


sys.exit(main())
