#!/usr/bin/env python3
"""Encodings of files, bytes that are none, code pages, statements that need much memory."""
import json
import os
import resource
import subprocess
import sys
import tempfile

TOOL = os.path.abspath(os.environ["TAVO"])
failures = 0


def expect(condition, *what):
    global failures
    if not condition:
        failures += 1
        print("FAILED:", *what)


def tavo(*arguments, stdin=b"", **how):
    done = subprocess.run([TOOL, *arguments], input=stdin, capture_output=True, timeout=120, **how)
    return done.returncode, done.stdout.decode("utf-8"), done.stderr.decode("utf-8")


def put(name, content):
    with open(name, "wb") as file:
        file.write(content)


with tempfile.TemporaryDirectory() as folder:
    os.chdir(folder)
    text = 'PRO=HASH, DSTFLD="\u00e9\U0001f600"\nPRO=HASH, DSTFLD="\u00e9", ALG=SHA256\n'
    told = None
    for encoding in ("utf-8", "utf-8-sig", "utf-16-le", "utf-16-be"):
        mark = "\ufeff" if encoding.startswith("utf-16") else ""
        put("a.txt", (mark + text).encode(encoding))
        for arguments, stdin in ((["a.txt"], b""), (["-", "--stdin-filename", "a.txt"],
                                                   (mark + text).encode(encoding))):
            answer = tavo("check", *arguments, stdin=stdin)
            told = told or answer
            expect(answer == told and answer[0] == 1, encoding, answer)
            expect("a.txt:2:23: error[7139]" in answer[1], answer)
    # A long file, so that units of UTF-16 lie across the parts in which it is read.
    put("a.txt", ("\ufeff" + "PRO=HASH, DSTFLD=X\n" * 20000).encode("utf-16-le"))
    expect(tavo("check", "a.txt")[1] == "1 file, 20000 statements: no errors\n", "long UTF-16")
    put("a.txt", b"\xff\xfeP\0R\0O")
    expect(tavo("check", "a.txt")[0] == 2, "half a unit of UTF-16")
    put("a.txt", "\ufeff".encode("utf-16-le") + 'PRO=HASH, DSTFLD="'.encode("utf-16-le") +
        b"\x00\xd8" + '"\n'.encode("utf-16-le"))
    status, out, _ = tavo("check", "a.txt")
    expect(status == 1 and "a.txt:1:19: error[7095] not-read: The UTF-16 unit 0xD800" in out, out)

    # What is no text is refused as a whole.
    for content in (b"PRO=HASH, ALG=X\n" * 9000 + b"\0", "PRO=HASH".encode("utf-16-le"),
                    b"\xff\xfe\0\0P\0\0\0"):
        put("a.txt", content)
        for verb in (["check"], ["fmt"], ["fmt", "-w"], ["fmt", "--check"]):
            status, out, err = tavo(*verb, "a.txt")
            expect(status == 2 and err.count("\n") == 1 and "null character" in err, verb, err)
            expect("PRO" not in out and "error" not in out.replace("no errors", ""), verb, out)
        expect(tavo("check", "-", stdin=content)[0] == 2, "binary on standard input")

    # A byte that is no UTF-8 is told once for a file, in every statement that has one.
    put("a.txt", b'PRO=HASH, DSTFLD="\xe9"\nPRO=HASH, DSTFLD=X\nPRO=HASH, DSTFLD="\xe8"\nPRO=HSH\n')
    put("b.txt", b'PRO=HASH, DSTFLD="a\xc3\xa9\xfc"\n')
    status, out, err = tavo("check", "a.txt", "b.txt")
    expect(status == 1 and out.count("no UTF-8") == 2 and "8033" not in out, out)
    expect("a.txt:1:19: error[7095] not-read: The byte 0xE9 is no UTF-8." in out, out)
    expect("b.txt:1:21: error[7095] not-read: The byte 0xFC is no UTF-8." in out, out)
    expect("--code-page 1252" in out and "a.txt:4:5: error[7139]" in out, out)
    expect("4 errors in 4 statements" in out, out)
    status, out, err = tavo("fmt", "--check", "a.txt")
    expect(status == 1 and err.count("no UTF-8") == 1, err)
    expect(tavo("check", "--code-page", "1252", "-q", "b.txt") == (0, "", ""), "--code-page 1252")
    status, out, err = tavo("parse", b'PRO=HASH, DSTFLD="\xe9"')
    expect(status == 1 and "0xE9" in err and "--code-page" in err, err)
    put("a.txt", b'PRO=HASH, DSTFLD="\x81"\n')
    status, out, err = tavo("check", "--code-page", "874", "a.txt")
    expect(status == 0 or "is no character of code page 874" in out, out)

    # Code pages.
    for verb in ("check", "parse", "tokens", "fmt"):
        for page in ("99999", "-1", "x", "", "4294967296"):
            status, out, err = tavo(verb, "--code-page", page, "a.txt")
            expect(status == 2 and out == "" and "code-page" in err, verb, page, out, err)

    # One statement that needs much memory does not end the rest.
    big = "LIB=x" + "".join(",k%d=v" % i for i in range(60000)) + ',long="%s"' % ("a" * 500000)
    put("a.txt", ("PRO=HSH\n%s\nPRO=HASH, ALG=SHA256\n" % big).encode())
    limit = 2 << 30
    limited = lambda: resource.setrlimit(resource.RLIMIT_AS, (limit, limit))
    how = {} if os.environ.get("TAVO_SANITIZED") else {"preexec_fn": limited}
    status, out, err = tavo("check", "--format", "json", "a.txt", **how)
    expect(status == 1 and err == "", err)
    lines = [finding["line"] for finding in json.loads(out)["findings"] if finding["number"]]
    expect(lines == [1, 3], lines)

    # Warnings fail with --strict.
    put("a.txt", b"PRO=HASH, DSTFLD=X something\n")
    expect(tavo("check", "a.txt")[0] == 0, "a warning alone")
    expect(tavo("check", "--strict", "a.txt")[0] == 1, "--strict")
    _, out, _ = tavo("--color", "always", "check", "a.txt")
    expect("\033[33mwarning" in out, "warnings have their colour", out)

sys.exit(1 if failures else 0)
