#!/usr/bin/env python3
"""Every read, write, fsync and rename of every verb fails in turn, and is interrupted in turn: the
exit status and a message report it, and either the old or the new text of a file is complete."""
import errno
import os
import signal
import subprocess
import sys
import tempfile

TOOL, SHIM = os.path.abspath(os.environ["TAVO"]), os.path.abspath(sys.argv[1])
OLD = b"".join(b"pro=hash,dstfld=X%d\n" % i for i in range(6000))
NEW = b"".join(b"PRO=hash, DSTFLD=X%d\n" % i for i in range(6000))
LIMIT = 60
FIXED = b"".join(b"PRO=HASH, DSTFLD=X%d\n" % i for i in range(2000))
# Verbs that write files: the old text, the new one, other names of the file.
WRITING = [(["fmt", "-w"], OLD, NEW, ()), (["fmt", "-w"], OLD, NEW, ("other",)),
           (["check", "-q", "--fix"], FIXED.replace(b", ", b",, "), FIXED, ()),
           (["check", "-q", "--fix"], FIXED.replace(b", ", b",, "), FIXED, ("other",)),
           (["check", "-q", "--fix=suggested"], FIXED.replace(b"DST", b"DTS"), FIXED, ())]
failures = 0
tried = 0


def expect(condition, *what):
    global failures
    if not condition:
        failures += 1
        if failures < 20:
            print("FAILED:", *what)


def run(folder, arguments, call, at, stdin=b"", **shim):
    mark = os.path.join(folder, "..", os.path.basename(folder) + ".mark")
    if os.path.exists(mark):
        os.unlink(mark)
    environment = dict(os.environ, LD_PRELOAD=SHIM, FAIL_CALL=call, FAIL_AT=str(at), FAIL_MARK=mark,
                       FAIL_ERRNO=str(errno.ENOSPC if call == "write" else errno.EIO))
    environment.update({"FAIL_" + key.upper(): str(value) for key, value in shim.items()})
    done = subprocess.run([TOOL, *arguments], input=stdin, capture_output=True, env=environment,
                          cwd=folder, timeout=60)
    if not os.path.exists(mark):
        return done, None
    with open(mark, encoding="utf-8") as file:
        return done, int(file.read())


def put(folder, name, content, links=()):
    for left in os.listdir(folder):
        os.unlink(os.path.join(folder, left))
    with open(os.path.join(folder, name), "wb") as file:
        file.write(content)
    for link in links:
        os.link(os.path.join(folder, name), os.path.join(folder, link))


def content(folder, name):
    with open(os.path.join(folder, name), "rb") as file:
        return file.read()


STATEMENT = b"PRO=HASH, DSTFLD=X\n"
READING = [(["parse", "-"], STATEMENT), (["parse", "--format", "json", "-f", "masks.txt"], b""),
           (["tokens", "-"], STATEMENT), (["check", "masks.txt"], b""),
           (["check", "--format", "json", "-"], OLD), (["check", "--format", "sarif", "masks.txt"], b""),
           (["fmt", "-f", "masks.txt"], b""), (["fmt", "-"], STATEMENT), (["fmt", "-f", "-"], OLD),
           (["fmt", "--diff", "masks.txt"], b""), (["explain", "EML"], b""),
           (["completion", "bash"], b""), (["list", "masks.txt"], b""),
           (["list", "--format", "jsonl", "-"], OLD), (["grep", "PRO=HASH", "masks.txt"], b""),
           (["diff", "masks.txt", "masks.txt"], b""), (["diff", "--format", "json", "masks.txt", "-"], STATEMENT),
           (["check", "--fix", "--diff", "masks.txt"], b"")]

with tempfile.TemporaryDirectory() as base:
    folder = os.path.join(base, "f")
    os.mkdir(folder)

    for arguments, stdin in READING:
        happened = 0
        for call in ("read", "write"):
            for at in range(1, LIMIT):
                put(folder, "masks.txt", STATEMENT if "parse" in arguments else OLD)
                before = content(folder, "masks.txt")
                done, descriptor = run(folder, arguments, call, at, stdin)
                if descriptor is None:
                    break
                happened += 1
                expect(done.returncode == 2, arguments, call, at, done.returncode, done.stderr)
                expect(done.stderr or descriptor == 2, arguments, call, at, "no message")
                expect(content(folder, "masks.txt") == before, arguments, "changed its file")
        tried += happened
        expect(happened > 0, arguments, "was never disturbed")

    def whole(names, arguments, old, new, *what):
        """The old or the new text is whole, in the file or in the copy that the next run names."""
        text = content(folder, "masks.txt")
        if "masks.txt.tavo-new" in names:
            expect(content(folder, "masks.txt.tavo-new") == new, arguments, *what, "copy broken")
            again = subprocess.run([TOOL, "check", "masks.txt"], capture_output=True, cwd=folder)
            expect(again.returncode == 2 and b"masks.txt.tavo-new" in again.stderr, again)
        else:
            expect(text in (old, new), arguments, *what, "neither old nor new", len(text))
        return text

    for verb, old, new, links in WRITING:
        arguments = [*verb, "masks.txt"]
        calls = {}
        for call in ("read", "write", "fsync", "rename"):
            for shim in ({}, {"forever": 1}, {"half": 1, "forever": 1}):
                for at in range(1, LIMIT):
                    put(folder, "masks.txt", old, links)
                    done, descriptor = run(folder, arguments, call, at, **shim)
                    if descriptor is None:
                        break
                    calls[call] = at
                    tried += 1
                    what = (verb, links, call, at, shim)
                    # When every write fails, the message cannot be written either.
                    silent = call == "write" and "forever" in shim
                    expect(done.returncode == 2 and (done.stderr or silent), what, done)
                    names = sorted(os.listdir(folder))
                    text = whole(names, arguments, old, new, *what)
                    if not shim:
                        # Only the last syncs come after the new text is in place.
                        expect(names == sorted(["masks.txt", *links]), what, names)
                        expect(text == old or call == "fsync", what, "the new text after a failure")
            # A signal that is handled leaves nothing behind; a kill leaves a whole text.
            for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP, signal.SIGKILL):
                for at in range(1, LIMIT):
                    put(folder, "masks.txt", old, links)
                    done, descriptor = run(folder, arguments, call, at, signal=int(number))
                    if descriptor is None:
                        break
                    tried += 1
                    names = sorted(os.listdir(folder))
                    expect(done.returncode == -number, verb, links, call, at, number, done.returncode)
                    whole(names, arguments, old, new, links, call, at, number)
                    if number != signal.SIGKILL:
                        expect(names == sorted(["masks.txt", *links]), call, at, number, names)
                    elif "masks.txt.tavo-new" not in names:
                        # A draft left by a kill does not stop the next run.
                        again = subprocess.run([TOOL, *arguments], capture_output=True, cwd=folder)
                        expect(again.returncode == 0, links, call, at, again)
                        expect(content(folder, "masks.txt") == new, arguments, "not written after a kill")
                        expect(sorted(os.listdir(folder)) == sorted(["masks.txt", *links]), names)
        expect(set(calls) == {"read", "write", "fsync", "rename"}, "calls", calls)
        print("%s, %d names: %s" % (" ".join(verb), 1 + len(links), calls))

    for at in range(1, LIMIT):
        put(folder, "script", b"old\n")
        done, descriptor = run(folder, ["completion", "bash", "--output", "script"], "write", at)
        if descriptor is None:
            break
        tried += 1
        expect(done.returncode == 2 and done.stderr and content(folder, "script") == b"old\n", done)
        expect(os.listdir(folder) == ["script"], os.listdir(folder))

print("%d disturbed runs, %d failures" % (tried, failures))
sys.exit(1 if failures or tried < 50 else 0)
