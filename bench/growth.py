#!/usr/bin/env python3
"""Shows that the command line's time grows with its input and no faster.

    cmake --preset release && cmake --build --preset release --target tavo && bench/growth.py

Each line is one input in two sizes, the larger one four times the smaller one. The figure is the
ratio of their CPU times: each the minimum of several runs, minus the time of an empty run. A linear
verb has 4, a quadratic one 16.
"""
import argparse
import os
import resource
import subprocess
import sys
import tempfile

FACTOR = 4
MOST = 8  # between linear and quadratic: tolerates the noise of short times

# name -> (start, repeated part, end)
INPUTS = {
    "secrets without values": ("PRO=LKP, ", "PASS= ", ""),
    "keys as values": ("LIB=x, ", "KEYX=", ""),
    "right secrets": ("LIB=x", ", pw=\"abc\"", ""),
    "wrong secrets": ("PRO=LKP", ", PASS=\"abc\"", ", WRONG"),
    "unknown options": ("PRO=HASH", ", AGLO=DEF", ""),
    "open parentheses": ("PRO=AFF, COPY=", "(1,", ""),
    "open comments": ("PRO=AFF ", "/*", ""),
    "quotes": ("PRO=AFF, KEY=", "\"", ""),
    "comments": ("PRO=HASH, DSTFLD=X", " /* a=b */", ""),
    "ignored text": ("PRO=HASH, DSTFLD=X ", "a ", ""),
    "repeated options": ("PRO=HASH, DSTFLD=X", ", CASE=UP", ""),
    "statements in a quote": ("PRO=HASH, SEED=\"\n", "PRO=EML\n", "\"\n"),
    "statements after an open quote": ("PRO=HASH, SEED=\"\n", "PRO=EML\n", ""),
    "open quotes": ("", "PRO=HASH, SEED=\"x\n", ""),
    "open parentheses and lines": ("", "PRO=HASH, FLDDEF1=(NAME=x\n", ""),
}
VERBS = {
    "check": ["check", "-q"],
    "check json": ["check", "--format", "json"],
    "tokens": ["tokens"],
    "parse": ["parse"],
    "fmt --diff": ["fmt", "--diff"],
    "check --fix --diff": ["check", "-q", "--fix", "--diff"],
    "list": ["list"],
    "grep": ["grep", "!XYZ"],
    "diff": ["diff", "PRO=EML"],
}


def cpu_seconds(tool, arguments, text):
    with tempfile.TemporaryFile() as file:
        file.write(text)
        file.seek(0)
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        subprocess.run([tool, *arguments, "-"], stdin=file, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, timeout=600)
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def text_of(parts, size):
    begin, repeated, end = parts
    return (begin + repeated * (size // len(repeated)) + end).encode()


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--tool", default=os.path.join(os.path.dirname(__file__), "..", "build",
                                                       "release", "bin", "tavo"))
    parser.add_argument("--size", type=int, default=256 * 1024, help="bytes of the larger input")
    parser.add_argument("--runs", type=int, default=3)
    parser.add_argument("--verbs", nargs="*", default=list(VERBS))
    options = parser.parse_args()
    missed = 0
    print("| input, %d KB and %d KB | %s |" % (options.size // FACTOR // 1024, options.size // 1024,
                                             " | ".join(options.verbs)))
    print("|---" * (len(options.verbs) + 1) + "|")
    for name, parts in INPUTS.items():
        cells = []
        for verb in options.verbs:
            def least(size):
                text = text_of(parts, size)
                return min(cpu_seconds(options.tool, VERBS[verb], text)
                           for _ in range(options.runs))
            empty = least(1)
            small = max(least(options.size // FACTOR) - empty, 0.001)
            large = max(least(options.size) - empty, 0.001)
            ratio = large / small
            # A time of zero has no ratio.
            met = ratio <= MOST or large < 0.02
            missed += not met
            cells.append("%.1f (%.0f ms)%s" % (ratio, large * 1000, "" if met else " **no**"))
        print("| %s | %s |" % (name, " | ".join(cells)), flush=True)
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
