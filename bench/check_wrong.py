#!/usr/bin/env python3
"""Times `tavo check` on invalid statements compared with as many valid ones.

    check_wrong.py TAVO [COUNT]

Prints the best of five alternating runs each, and their ratio.
"""
import subprocess
import sys
import tempfile
import time

RIGHT = [
    'PRO=HASH, DSTFLD=CUSTNO, SEED=HMAC, ALGO=SHA256',
    'PRO=EML, MTD=HASH, SEP=DOT, SEED="4711"',
    'PRO=LKP, SEARCH="ID", DEST="NAME,STREET", REPLACE="N,S", LIB=ORACLE, ID=DB1',
    'LIB=mylib, FLDDEF1=(NAME=A, DT=CHAR, LEN=10), key=value',
]
WRONG = [
    'PRO=HASH, DSTFLD=CUSTNO, SEED=HMAC, AGLO=SHA256',
    'PRO=EML, MTD=HSAH; SEP=DOT, SEED="4711"',
    'PRO=LKP, SEARCH="ID", DEST="NAME,STREET, REPLACE="N,S", LIB=ORACLE, ID=DB1',
    'LIB=mylib, FLDDEF1=(NAME=A, DT=CHAR, LEN=10, key=value',
]


def seconds(tool, path):
    start = time.monotonic()
    subprocess.run([tool, "check", path], stdout=subprocess.DEVNULL, check=False)
    return time.monotonic() - start


def main():
    tool = sys.argv[1]
    count = int(sys.argv[2]) if len(sys.argv) > 2 else 100000
    with tempfile.TemporaryDirectory() as folder:
        paths = []
        for name, statements in (("right", RIGHT), ("wrong", WRONG)):
            paths.append("%s/%s.txt" % (folder, name))
            with open(paths[-1], "w", encoding="utf-8") as file:
                for i in range(count):
                    file.write(statements[i % len(statements)] + "\n\n")
        times = [[seconds(tool, path) for path in paths] for _ in range(5)]
    right, wrong = (min(run[i] for run in times) for i in (0, 1))
    print("%d statements: right %.2f s, wrong %.2f s, ratio %.2f" % (count, right, wrong,
                                                                    wrong / right))


main()
