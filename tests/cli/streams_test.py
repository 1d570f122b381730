#!/usr/bin/env python3
"""Output that cannot be written and input that cannot be read are errors, in every verb and format;
after its reader has closed a pipe, the tool ends silently."""
import os
import signal
import subprocess
import sys
import tempfile

TOOL = os.environ["TAVO"]
STATEMENT = "PRO=HASH, DSTFLD=X"
SHOWN = [["parse", STATEMENT], ["parse", "--format", "json", STATEMENT],
         ["parse", "--format", "tsv", STATEMENT], ["tokens", STATEMENT],
         ["tokens", "--format", "json", STATEMENT], ["tokens", "--format", "tsv", STATEMENT],
         ["explain"], ["explain", "EML"], ["explain", "7139"], ["explain", "--errors"],
         ["explain", "--format", "markdown"], ["explain", "--format", "json"],
         ["explain", "--errors", "--format", "markdown"], ["fmt", STATEMENT],
         ["fmt", "--diff", "pro=hash, dstfld=X"], ["fmt", "--check", "pro=hash, dstfld=X"],
         ["completion", "bash"], ["completion", "zsh"], ["completion", "fish"],
         ["complete-statement", "PRO=EM"], ["--help"], ["--version"], ["check", "--help"]]
failures = 0


def expect(condition, *what):
    global failures
    if not condition:
        failures += 1
        print("FAILED:", *what)


def run(arguments, **streams):
    streams.setdefault("stderr", subprocess.PIPE)
    return subprocess.run([TOOL, *arguments], timeout=60, **streams)


def closing(descriptor, arguments, **streams):
    return run(arguments, preexec_fn=lambda: os.close(descriptor), **streams)


def refused(done, what, *arguments):
    told = done.stderr.decode("utf-8")
    expect(done.returncode == 2 and what in told and told.count("\n") == 1, arguments, done)


with tempfile.TemporaryDirectory() as folder:
    path = os.path.join(folder, "masks.txt")
    with open(path, "w", encoding="utf-8") as file:
        file.write("PRO=HASH, DSTFLD=X\nPRO=HASH, ALG=SHA256\n")
    written = SHOWN + [["check", path], ["check", "--format", "json", path],
                       ["check", "--format", "sarif", path], ["fmt", "--check", "-f", path],
                       ["fmt", "--diff", "--option-a-line", "-f", path]]
    good = os.path.join(folder, "good.txt")
    with open(good, "w", encoding="utf-8") as file:
        file.write("pro=HASH, DSTFLD=X\n")
    written.append(["fmt", "-f", good])
    wrong = os.path.join(folder, "wrong.txt")
    with open(wrong, "w", encoding="utf-8") as file:
        file.write("PRO=HASH,, DSTFLD=X\n")
    written += [["list", good], ["list", "--format", "jsonl", good], ["list", "--format", "csv", good],
                ["list", "--format", "tsv", good], ["list", "--stats", good],
                ["list", "--stats", "--format", "jsonl", good], ["grep", "PRO=HASH", good],
                ["grep", "-c", "PRO=HASH", good], ["grep", "-l", "PRO=HASH", good],
                ["grep", "--format", "jsonl", "PRO=HASH", good], ["diff", good, wrong],
                ["diff", "--format", "json", good, good], ["diff", "--textconv", good],
                ["check", "-q", "--fix", "--diff", wrong], ["config", good],
                ["config", "--format", "json", good], ["help", "check"]]
    for form in ("github", "gitlab", "junit", "checkstyle"):
        written.append(["check", "--format", form, wrong])
    for arguments in written:
        if arguments[:3] == ["fmt", "--check", "-f"]:
            arguments = arguments[:3] + [good]
        if arguments[:2] == ["fmt", "--diff"] and "-f" in arguments:
            arguments = arguments[:-1] + [good]
        with open("/dev/full", "wb") as full:
            refused(run(arguments, stdout=full), "standard output: No space left", arguments)
        refused(closing(1, arguments), "standard output: Bad file descriptor", arguments)

    # Output for a closed standard stream never goes into a file that gets its descriptor.
    before = open(good, "rb").read()
    closing(1, ["fmt", "--check", "-f", good])
    closing(2, ["fmt", "--check", "-f", path], stdout=subprocess.DEVNULL, stderr=None)
    expect(open(good, "rb").read() == before, "a closed stream wrote into a file")

    # An error that cannot be reported is still an error.
    for stream in ({"preexec_fn": lambda: os.close(2)}, {"stderr": open("/dev/full", "wb")}):
        done = subprocess.run([TOOL, "parse", "PRO=X"], stdout=subprocess.DEVNULL, **stream)
        expect(done.returncode == 2, "standard error cannot be written", done)

    # Input that cannot be read.
    for verb in (["check"], ["parse"], ["tokens"], ["fmt"], ["fmt", "-w", "-f"], ["list"],
                 ["grep", "PRO"], ["diff", good]):
        arguments = verb + ["-"]
        with_folder = os.open(folder, os.O_RDONLY)
        done = run(arguments, stdin=with_folder, stdout=subprocess.PIPE)
        os.close(with_folder)
        told = done.stderr.decode("utf-8")
        expect(done.returncode == 2 and "Is a directory" in told, arguments, done)
        expect(b"no errors" not in done.stdout, arguments, done)
        done = closing(0, arguments, stdout=subprocess.PIPE)
        told = done.stderr.decode("utf-8")
        expect(done.returncode == 2 and "Bad file descriptor" in told, arguments, done)
        expect(b"no errors" not in done.stdout, arguments, done)

    # Unreadable files are named and counted.
    missing = [path + ".1", path + ".2", folder]
    done = run(["check", *missing, good], stdout=subprocess.PIPE)
    told = done.stderr.decode("utf-8")
    expect(done.returncode == 2 and all("tavo: %s: " % name in told for name in missing), told)
    expect(b"1 file, 1 statement: no errors in what was read, 3 files not read" in done.stdout, done.stdout)

    # A pipe without a reader.
    with open(path, "w", encoding="utf-8") as file:
        file.write("PRO=HASH, ALG=SHA256\n" * 3000)
    for arguments in (["check", path], ["check", "--format", "json", path], ["fmt", "-f", good],
                      ["parse", STATEMENT], ["explain", "--format", "json"], ["--help"],
                      ["list", good], ["grep", "PRO=HASH", good], ["diff", good, wrong]):
        read_end, write_end = os.pipe()
        os.close(read_end)
        done = run(arguments, stdout=write_end)
        os.close(write_end)
        expect(done.returncode == -signal.SIGPIPE and done.stderr == b"", arguments, done)
    shown = subprocess.run(["bash", "-c", "\"$0\" check \"$1\" | head -n 1", TOOL, path],
                           capture_output=True)
    expect(shown.stderr == b"" and shown.stdout.count(b"\n") == 1, shown)

sys.exit(1 if failures else 0)
