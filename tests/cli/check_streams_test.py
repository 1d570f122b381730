#!/usr/bin/env python3
"""A long file needs no more memory than a short one."""
import os
import subprocess
import sys
import tempfile

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


def peak_of_files(*arguments):
    """Peak memory in KiB, and the exit status."""
    tool = subprocess.Popen([os.environ["TAVO"], "check", "-q", *arguments],
                            stdout=subprocess.DEVNULL)
    _, status, usage = os.wait4(tool.pid, 0)
    return usage.ru_maxrss, os.waitstatus_to_exitcode(status)


# Neither does a folder of many files, nor do threads need more than a few statements each.
with tempfile.TemporaryDirectory() as folder:
    for i in range(4000):
        below = os.path.join(folder, "%02d" % (i // 400))
        if i % 400 == 0:
            os.mkdir(below)
        with open(os.path.join(below, "%d.tavo" % i), "w", encoding="utf-8") as file:
            file.write(LINES[i % 3] + "\n")
    for threads in ("1", "3"):
        (few, _), (many, status) = (peak_of_files("-j", threads, place)
                                    for place in (os.path.join(folder, "00"), folder))
        print("-j %s: %d KiB for 400 files, %d KiB for 4000" % (threads, few, many))
        if status != 1 or many > few * 1.2 + 2048:
            sys.exit("FAILED: memory grows with the number of files")

# A long line costs a few times its length, on several threads as well, and hides nothing after it.
with tempfile.TemporaryDirectory() as folder:
    peaks = []
    for megabytes in (1, 8):
        path = os.path.join(folder, "%d.tavo" % megabytes)
        with open(path, "w", encoding="utf-8") as file:
            file.write("PRO=HASH, DSTFLD=X /*" + " comment" * (megabytes * 125000) + " */\n")
            file.write("PRO=NOPE\n")
        used, status = peak_of_files("-j", "2", path)
        peaks.append(used)
        if status != 1:
            sys.exit("FAILED: a mistake after a long line is not told")
    print("a line of 1 MB: %d KiB, of 8 MB: %d KiB" % tuple(peaks))
    if peaks[1] - peaks[0] > 7 * 1024 * 40:
        sys.exit("FAILED: a long line costs more than 40 times its length")
