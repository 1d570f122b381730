#!/usr/bin/env python3
"""A long file needs no more memory than a short one."""
import os
import subprocess
import sys

LINES = ['PRO=HASH, DSTFLD=X', 'PRO=EML, MTD=HASH, DOM=x', 'PRO=HASH, DSTFLD=X, ALG=SHA256']


def peak(lines, form):
    """Peak memory of the tool in KiB, and the end of its output."""
    tool = subprocess.Popen([os.environ["TAVO"], "check", "--format", form, "-"],
                            stdin=subprocess.PIPE, stdout=subprocess.DEVNULL)
    for start in range(0, lines, 1000):
        block = "\n".join(LINES[i % 3] for i in range(start, start + 1000)) + "\n"
        tool.stdin.write(block.encode())
    tool.stdin.close()
    _, status, usage = os.wait4(tool.pid, 0)
    if os.waitstatus_to_exitcode(status) != 1:
        print("FAILED: exit status", os.waitstatus_to_exitcode(status))
        sys.exit(1)
    return usage.ru_maxrss


for form in ("text", "json", "sarif"):
    short, long = peak(2000, form), peak(60000, form)
    print("%s: %d KiB for 2000 lines, %d KiB for 60000" % (form, short, long))
    if long > short * 1.2 + 1024:
        print("FAILED: memory grows with the file")
        sys.exit(1)
