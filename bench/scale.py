#!/usr/bin/env python3
"""How tavo check, list, grep and diff do with a million statements, and with huge inputs.

    bench/scale.py [--tavo PROGRAM] [--before PROGRAM] [--statements N] [--repeat N]
    bench/scale.py --huge FOLDER [--gigabytes N] [--line-megabytes N] [--files N]

Each figure is the least of the repeats, which take turns, so that a busy machine disturbs all of them
alike. CPU is user and system time of all threads; memory is the peak of the process. --before is
another version of the tool, for the ratio to it. --huge needs room in FOLDER and time.
"""
import argparse
import os
import shutil
import subprocess
import sys
import tempfile

LENGTH = 60  # characters of a statement


def statement(i):
    """A right statement; each is another one."""
    head, tail = [("PRO=HASH, DSTFLD=", ', ALGO=SHA256, SEED="%d"' % (i % 1000000)),
                  ("PRO=EML, MTD=RAN, FLDDEF1=(NAME=", ", DT=WCHAR)"),
                  ("PRO=CCN, FLDDEF1=(NAME=", "), PAT=6C")][i % 3]
    name = "F%d" % i
    return head + name + "X" * (LENGTH - len(head) - len(name) - len(tail)) + tail


def write_statements(path, numbers):
    with open(path, "w", encoding="ascii") as file:
        for i in numbers:
            file.write(statement(i) + "\n")


class Figures:
    def __init__(self):
        self.wall = self.cpu = float("inf")
        self.memory = 0  # KiB

    def __str__(self):
        return "%7.2f s %7.2f s CPU %8d KiB" % (self.wall, self.cpu, self.memory)


# A process begins with the peak memory of the one that it was forked from: that has to be small.
RUN = """import os, sys, time
started = time.monotonic()
tool = os.posix_spawn(sys.argv[1], sys.argv[1:], os.environ,
                      file_actions=[(os.POSIX_SPAWN_OPEN, 1, "/dev/null", os.O_WRONLY, 0)])
_, status, usage = os.wait4(tool, 0)
print(os.waitstatus_to_exitcode(status), time.monotonic() - started,
      usage.ru_utime + usage.ru_stime, usage.ru_maxrss)"""


def measure(command, figures, expected):
    done = subprocess.run([sys.executable, "-I", "-S", "-c", RUN, *command], stdout=subprocess.PIPE,
                          env=dict(os.environ, TAVO_LANG="en"), check=True)
    code, wall, cpu, memory = done.stdout.split()
    if int(code) not in expected:
        sys.exit("%s: exit status %s" % (" ".join(command), code.decode()))
    figures.wall = min(figures.wall, float(wall))
    figures.cpu = min(figures.cpu, float(cpu))
    figures.memory = max(figures.memory, int(memory))


def compare(options, folder):
    path = os.path.join(folder, "statements.masks")
    other = os.path.join(folder, "other.masks")
    short = os.path.join(folder, "short.masks")
    count = options.statements
    write_statements(path, range(count))
    # As after a change: the second half first, and one statement is another one.
    write_statements(other, [*range(count // 2, count), count, *range(1, count // 2)])
    write_statements(short, range(max(count // 100, 1)))
    tavo = options.tavo
    runs = {
        "check": ([tavo, "check", path], [0]),
        "check -j 2": ([tavo, "check", "-j", "2", path], [0]),
        "check, a hundredth": ([tavo, "check", short], [0]),
        "list --format tsv": ([tavo, "list", "--format", "tsv", path], [0]),
        "list --stats": ([tavo, "list", "--stats", path], [0]),
        "grep -c": ([tavo, "grep", "-c", "ALGO=SHA256", path], [0]),
        "grep, a third found": ([tavo, "grep", "ALGO=SHA256", path], [0]),
        "diff": ([tavo, "diff", path, other], [1]),
    }
    if options.before:
        runs["check, before"] = ([options.before, "check", path], [0])
    figures = {name: Figures() for name in runs}
    for _ in range(options.repeat):
        for name, (command, expected) in runs.items():
            measure(command, figures[name], expected)
    print("%d statements of %d characters, %d repeats, %s cores" %
          (count, LENGTH, options.repeat, os.cpu_count()))
    for name, one in figures.items():
        print("%-22s %s" % (name, one))
    check = figures["check"]
    print()
    if options.before:
        before = figures["check, before"]
        print("check / before               %5.2f  (CPU %.2f)" %
              (check.wall / before.wall, check.cpu / before.cpu))
    print("one thread / two             %5.2f" % (check.wall / figures["check -j 2"].wall))
    print("memory, all / a hundredth    %5.2f" %
          (check.memory / figures["check, a hundredth"].memory))
    for name in ("list --format tsv", "list --stats", "grep -c", "grep, a third found", "diff"):
        one = figures[name]
        print("%-20s / check %5.2f  (CPU %.2f)" % (name, one.wall / check.wall,
                                                  one.cpu / check.cpu))


# ---- huge inputs --------------------------------------------------------------------------------

def run_huge(options, name, what):
    figures = Figures()
    measure([options.tavo, "check", "-j", str(os.cpu_count()), what], figures, [0])
    print("%-34s %s" % (name, figures), flush=True)


def huge(options, folder):
    path = os.path.join(folder, "large.masks")
    block = "".join(statement(i) + "\n" for i in range(100000)).encode()
    with open(path, "wb") as file:
        for _ in range(options.gigabytes * 10**9 // len(block) + 1):
            file.write(block)
    run_huge(options, "a file of %.1f GB" % (os.path.getsize(path) / 1e9), path)
    os.remove(path)

    path = os.path.join(folder, "line.masks")
    with open(path, "wb") as file:
        file.write(b"PRO=HASH, DSTFLD=X, ")
        file.write(b"/*" + b" comment" * (options.line_megabytes * 10**6 // 8) + b" */")
        file.write(b" ALGO=SHA256\nPRO=CCN\n")
    run_huge(options, "a line of %d MB" % options.line_megabytes, path)
    os.remove(path)

    tree = os.path.join(folder, "tree")
    for i in range(options.files):
        if i % 1000 == 0:
            below = os.path.join(tree, "%04d" % (i // 1000))
            os.makedirs(below)
        with open(os.path.join(below, "%03d.masks" % (i % 1000)), "w", encoding="ascii") as file:
            file.write(statement(i) + "\n")
    run_huge(options, "%d files of one statement" % options.files, tree)
    shutil.rmtree(tree)


def main():
    top = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--tavo", default=os.path.join(top, "build", "release", "bin", "tavo"))
    parser.add_argument("--before", help="another version of the tool")
    parser.add_argument("--statements", type=int, default=1000000)
    parser.add_argument("--repeat", type=int, default=3)
    parser.add_argument("--huge", metavar="FOLDER", help="a folder for the huge inputs")
    parser.add_argument("--gigabytes", type=int, default=5)
    parser.add_argument("--line-megabytes", type=int, default=100)
    parser.add_argument("--files", type=int, default=1000000)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(dir=options.huge) as folder:
        if options.huge:
            huge(options, folder)
        else:
            compare(options, folder)


if __name__ == "__main__":
    main()
