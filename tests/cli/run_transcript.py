#!/usr/bin/env python3
"""Runs a transcript: commands and their exact output.

    $ command       run by a shell, with tavo in its path; `> ` lines continue it
    | line          of standard output
    ! line          of standard error
    ? 1             the exit status, when it is not 0
    # line          a comment

--update replaces the expected lines; review them before you commit.
"""
import os
import subprocess
import sys


def run(command):
    environment = dict(os.environ)
    tool = environment["TAVO"]
    environment["PATH"] = os.path.dirname(tool) + os.pathsep + environment["PATH"]
    done = subprocess.run(["bash", "-c", command], env=environment, capture_output=True,
                          stdin=subprocess.DEVNULL, timeout=60)
    lines = []
    for mark, stream in (("|", done.stdout), ("!", done.stderr)):
        text = stream.decode("utf-8")
        if text and not text.endswith("\n"):
            text += "(no line end)\n"
        lines += [(mark + " " + line).rstrip() for line in text.split("\n")[:-1]]
    if done.returncode != 0:
        lines.append("? %d" % done.returncode)
    return lines


def main():
    path = sys.argv[1]
    update = "--update" in sys.argv
    with open(path, encoding="utf-8") as file:
        lines = file.read().split("\n")
    output, failures, i, commands = [], 0, 0, 0
    while i < len(lines):
        line = lines[i]
        i += 1
        if not line.startswith("$ "):
            output.append(line)
            continue
        command, source = line[2:], [line]
        while i < len(lines) and lines[i].startswith("> "):
            command += "\n" + lines[i][2:]
            source.append(lines[i])
            i += 1
        expected = []
        while i < len(lines) and lines[i][:1] in ("|", "!", "?"):
            expected.append(lines[i].rstrip())
            i += 1
        commands += 1
        got = run(command)
        output += source + got
        if got != expected and not update:
            failures += 1
            print("FAILED: %s\n-- expected\n%s\n-- got\n%s\n" %
                  (command, "\n".join(expected), "\n".join(got)))
    if update:
        with open(path, "w", encoding="utf-8") as file:
            file.write("\n".join(output))
    print("%d commands, %d failed" % (commands, failures))
    return 1 if failures or commands == 0 else 0


sys.exit(main())
