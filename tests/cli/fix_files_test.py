#!/usr/bin/env python3
"""`tavo check --fix` changes in files only what it may change."""
import os
import subprocess
import sys
import tempfile

TOOL = os.environ["TAVO"]
BEFORE = """\ufeff# a comment with ,, and ;
PRO=HASH,, DSTFLD=X\r
# PRO=HASH,, DSTFLD=X

PRO=EML,
# inside; the statement
  MTD==HASH /* ,, \u00e9 */;
PRO=HASH, DSTFLD=X SEED="1"
PRO=HASH, AGLO=SHA256, DSTFLD=X
PRO=HASH
PRO=HASH, SEED="a;; \U0001f600"; DSTFLD=\u00e9X"""
SAFE = BEFORE.replace("PRO=HASH,, DSTFLD=X\r", "PRO=HASH, DSTFLD=X\r").replace(
    "MTD==HASH /* ,, \u00e9 */;", "MTD=HASH /* ,, \u00e9 */").replace("\"; DSTFLD", "\", DSTFLD")
SUGGESTED = SAFE.replace("DSTFLD=X SEED", "DSTFLD=X, SEED").replace("AGLO", "ALGO").replace("DSTFLD=\u00e9X", "DSTFLD=\"\u00e9X\"")


def expect(condition, what):
    if not condition:
        print("FAILED:", what)
        sys.exit(1)


def run(*arguments):
    return subprocess.run([TOOL, "check", *arguments], capture_output=True, encoding="utf-8")


with tempfile.TemporaryDirectory() as folder:
    path = os.path.join(folder, "masks.txt")

    def content():
        with open(path, encoding="utf-8", newline="") as file:
            return file.read()

    def put(text):
        with open(path, "w", encoding="utf-8", newline="") as file:
            file.write(text)

    put(BEFORE)
    os.chmod(path, 0o640)
    run("--diff", path)
    expect(content() == BEFORE, "--diff changes nothing")
    run("--fix", "--diff", path)
    expect(content() == BEFORE, "--fix --diff changes nothing")
    run("--fix", path)
    expect(content() == SAFE, content())
    expect(os.stat(path).st_mode & 0o777 == 0o640, "the mode stays")
    again = run("--fix", path)
    expect(content() == SAFE, "a second time changes nothing")
    expect(again.returncode == 1, "what is left is an error")
    run("--fix=suggested", path)
    expect(content() == SUGGESTED, content())
    expect("..." not in content() and "NAME" not in content(), "a placeholder")
    expect(os.listdir(folder) == ["masks.txt"], os.listdir(folder))
    # --diff shows exactly what --fix does.
    for text in ("# a\nPRO=HASH,, DSTFLD=X\n\nPRO=EML,,\n# inside\n  MTD=HASH\nPRO=CCN",
                 "PRO=CCN\nPRO=CCN\nPRO=CCN\nPRO=CCN\nPRO=HASH,, DSTFLD=X\nPRO=CCN\n"):
        put(text)
        # A comment line inside a rejected statement may be part of a secret.
        inside = "# inside" in text
        expect(("masks" in run("--fix", "--diff", "-q", path).stderr) == inside, text)
        shown = run("--show-secrets", "--fix", "--diff", "-q", path)
        patched = subprocess.run(["patch", path], input=shown.stdout, capture_output=True,
                                 encoding="utf-8")
        expect(patched.returncode == 0, patched)
        after = content()
        put(text)
        run("--fix", path)
        expect(content() == after != text, (content(), after))
    expect(run("--fix", "--diff", "--format", "json", path).returncode == 2, "a diff in JSON")
    put("PRO=HASH,, DSTFLD=X\n")
    expect(run("--fix", path).returncode == 0, "nothing is left")
    expect(run("--fix", "--code-page", "850", path).returncode == 2, "8-bit text")
