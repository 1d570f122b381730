#!/usr/bin/env python3
"""The grammars of the editors are what the tool writes from its tables.

usage: grammars_test.py TAVO EDITORS [--write]
"""
import pathlib
import subprocess
import sys

FILES = {
    "vscode/syntaxes/tavo.tmLanguage.json": "textmate",
    "vscode/syntaxes/tavo.injection.tmLanguage.json": "textmate-injection",
    "vscode/syntaxes/tavo.double-injection.tmLanguage.json": "textmate-double-injection",
    "vim/syntax/tavo.vim": "vim",
}

failed = False
for name, form in FILES.items():
    path = pathlib.Path(sys.argv[2]) / name
    wanted = subprocess.run([sys.argv[1], "explain", "--format", form], capture_output=True,
                            check=True).stdout
    if "--write" in sys.argv:
        path.write_bytes(wanted)
    elif not path.exists() or path.read_bytes() != wanted:
        failed = True
        print("editors/%s is out of date; write it anew with:\n  tavo explain --format %s > "
              "editors/%s" % (name, form, name))
sys.exit(1 if failed else 0)
