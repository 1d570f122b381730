#!/usr/bin/env python3
"""Colours and the progress bar are for terminals only, colours never with NO_COLOR."""
import fcntl
import os
import pty
import select
import struct
import subprocess
import sys
import termios
import time

TOOL = os.environ["TAVO"]


def expect(condition, what):
    if not condition:
        print("FAILED:", what)
        sys.exit(1)


def on_terminal(arguments, environment=None, feed=None, columns=80):
    """Runs the tool with all its output on a terminal."""
    master, slave = pty.openpty()
    fcntl.ioctl(slave, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
    env = {key: value for key, value in os.environ.items() if key != "NO_COLOR"}
    env.update({"TERM": "xterm"}, **(environment or {}))
    tool = subprocess.Popen([TOOL, *arguments], stdin=subprocess.PIPE, stdout=slave, stderr=slave,
                            env=env)
    os.close(slave)
    if feed:
        feed(tool.stdin)
    tool.stdin.close()
    output = b""
    while True:
        if not select.select([master], [], [], 30)[0]:
            break
        try:
            part = os.read(master, 65536)
        except OSError:
            break
        if not part:
            break
        output += part
    tool.wait()
    os.close(master)
    return output.decode("utf-8")


wrong = ["parse", "PRO=HASH, DSTFLD=X, ALG=SHA256"]
expect("\033[31merror" in on_terminal(wrong), "colours on a terminal")
expect("\033[" not in on_terminal(wrong, {"NO_COLOR": "1"}), "colours with NO_COLOR")
expect("\033[" not in on_terminal(["--color", "never"] + wrong), "colours with --color never")
piped = subprocess.run([TOOL, *wrong], capture_output=True, encoding="utf-8",
                       env={k: v for k, v in os.environ.items() if k != "NO_COLOR"})
expect("\033[" not in piped.stderr and "error[7139]" in piped.stderr, "colours in a pipe")
forced = subprocess.run([TOOL, "--color", "always", *wrong], capture_output=True, encoding="utf-8")
expect("\033[31m" in forced.stderr, "--color always")


expect("\033" not in on_terminal(wrong, {"TERM": "dumb"}), "escapes with TERM=dumb")


def slowly(stream):
    for _ in range(15):
        stream.write(b"PRO=HASH, DSTFLD=X\n" * 300)
        stream.flush()
        time.sleep(0.1)


def at_once(stream):
    stream.write(b"PRO=HASH, DSTFLD=X\n")


shown = on_terminal(["check", "-"], feed=slowly)
expect("statements, stdin" in shown and "\r\033[K" in shown, "no progress after a second")
expect(shown.rstrip().endswith("1 file, 4500 statements: no errors"), shown[-200:])
expect("\r\033[K" not in on_terminal(["check", "-"], feed=at_once), "progress within a second")

narrow = on_terminal(["check", "-"], feed=slowly, columns=24)
bars = [part.split("\r")[0] for part in narrow.split("\r\033[K")[1:]]
expect(any("statements" in bar for bar in bars), "no progress on a narrow terminal")
expect(all(len(bar.split("\n")[0]) < 24 for bar in bars if "no errors" not in bar), bars)
dumb = on_terminal(["check", "-"], {"TERM": "dumb"}, feed=slowly)
expect(dumb.replace("\r\n", "\n") == "1 file, 4500 statements: no errors\n", dumb)
