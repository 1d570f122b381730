#!/usr/bin/env python3
"""The reference documents and their diagrams agree with the library's tables."""
import difflib
import os
import subprocess
import sys

failed = False
for name, arguments in (("language.md", []), ("errors.md", ["--errors"])):
    command = [os.environ["TAVO"], "explain", "--format", "markdown"] + arguments
    wanted = subprocess.run(command, capture_output=True, check=True).stdout.decode("utf-8")
    with open(os.path.join(sys.argv[1], name), encoding="utf-8") as file:
        found = file.read()
    if wanted != found:
        failed = True
        print("docs/%s is out of date; update it with:\n  tavo explain %s --format markdown "
              "> docs/%s\n" % (name, " ".join(arguments), name))
        sys.stdout.writelines(difflib.unified_diff(
            found.splitlines(True), wanted.splitlines(True), "in the tree", "from the tables", n=1))
diagrams = os.path.join(sys.argv[1], "pictures", "railroad.py")
failed |= subprocess.run([sys.executable, diagrams, "--tavo", os.environ["TAVO"],
                          "--check"]).returncode != 0
sys.exit(1 if failed else 0)
