#!/usr/bin/env python3
"""`tavo fmt` on files: what it changes and what it keeps."""
import os
import subprocess
import sys
import tempfile

BEFORE = """# masks of the customer table

pro=eml, mtd=rep // names
pro=hash,
# inside
  dstfld=X

PRO=HSH,
# inside a wrong one
  dstfld=X
# the end
"""
AFTER = """# masks of the customer table

PRO=eml, MTD=rep // names
PRO=hash,
# inside
  DSTFLD=X

PRO=HSH,
# inside a wrong one
  dstfld=X
# the end
"""


def expect(condition, what):
    if not condition:
        print("FAILED:", what)
        sys.exit(1)


def fmt(*arguments):
    return subprocess.run([os.environ["TAVO"], "fmt", *arguments], capture_output=True,
                          encoding="utf-8")


def content(path):
    with open(path, encoding="utf-8", newline="") as file:
        return file.read()


with tempfile.TemporaryDirectory() as folder:
    path = os.path.join(folder, "masks.txt")
    with open(path, "w", encoding="utf-8") as file:
        file.write(BEFORE)
    os.chmod(path, 0o640)
    checked = fmt("--check", "-f", path)
    expect(checked.returncode == 1 and content(path) == BEFORE, "--check changes nothing")
    expect(checked.stdout == "%s:3: would change\n%s:4: would change\n" % (path, path),
           checked.stdout)
    printed = fmt("-f", path)
    expect(printed.stdout == AFTER, printed.stdout)
    expect(printed.returncode == 1 and "error[7139]" in printed.stderr, "the wrong one is told")
    written = fmt("--write", "-f", path)
    expect(content(path) == AFTER and written.stdout == "", "--write")
    expect(os.stat(path).st_mode & 0o777 == 0o640, "the file keeps its mode")
    expect(os.listdir(folder) == ["masks.txt"], "nothing is left behind")
    fmt("--write", "-f", path)
    expect(content(path) == AFTER, "twice is once")
    fmt("--write", "--option-a-line", "--spelling", "long", "-f", path)
    long = content(path)
    expect("PROVIDER=eml,\n  METHOD=rep // names\n" in long, long)
    fmt("--write", "--spelling", "short", "-f", path)
    expect(content(path) == AFTER, "and back")
    expect(fmt("-f", path + ".none").returncode == 2, "a file that is not there")
