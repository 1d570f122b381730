#!/usr/bin/env python3
"""check --watch checks changed files again: written, replaced, new, removed, and after a change of
the configuration."""
import os
import select
import subprocess
import sys
import tempfile

TOOL = os.environ["TAVO"]
PATIENCE = 60  # seconds; a busy machine


class Watched:
    """The tool, and what it shows each time: the text up to the summary."""

    def __init__(self, folder, *arguments):
        self.folder = folder
        self.tool = subprocess.Popen([TOOL, "check", "--watch", *arguments], cwd=folder,
                                     stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.text = b""

    def shown(self):
        """The next time that everything is shown."""
        while True:
            lines = self.text.split(b"\n")
            for i, line in enumerate(lines[:-1]):
                if b" statement" in line and b" file" in line:
                    self.text = b"\n".join(lines[i + 1:])
                    return b"\n".join(lines[:i + 1]).decode()
            if not select.select([self.tool.stdout], [], [], PATIENCE)[0]:
                sys.exit("FAILED: nothing is shown; so far: %r" % self.text)
            part = os.read(self.tool.stdout.fileno(), 65536)
            if not part:
                sys.exit("FAILED: it ended: %r" % self.tool.stderr.read())
            self.text += part

    def until(self, what):
        """Shown once or, when it looked in the middle of a change, again."""
        for _ in range(5):
            text = self.shown()
            if what(text):
                return text
        sys.exit("FAILED: shown was %r" % text)

    def is_quiet(self):
        return not self.text and not select.select([self.tool.stdout], [], [], 1)[0]

    def end(self):
        self.tool.kill()
        self.tool.communicate()


def write(folder, name, text):
    with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
        file.write(text)


with tempfile.TemporaryDirectory() as top:
    place = os.path.join(top, "jobs")
    os.mkdir(place)
    write(place, "a.tavo", "PRO=HASH, DSTFLD=X\n")
    write(place, "b.tavo", "PRO=EML, MTD=HASH, DOM=x\n")
    watched = Watched(place, ".")
    first = watched.shown()
    assert "b.tavo:1:10: error[7112]" in first and "2 files, 2 statements: 1 error" in first, first

    write(place, "a.tavo", "PRO=HASH, ALG=DEF\n")
    both = watched.until(lambda text: "2 errors" in text)
    assert "a.tavo:1:11: error[7139]" in both and "b.tavo:1:10: error[7112]" in both, both

    # As an editor replaces a file.
    write(place, "b.new", "PRO=CCN\n")
    os.rename(os.path.join(place, "b.new"), os.path.join(place, "b.tavo"))
    assert "b.tavo" not in watched.until(lambda text: "1 error in 1" in text)

    os.mkdir(os.path.join(place, "new"))
    write(place, "new/c.masks", "PRO=NOPE\n")
    watched.until(lambda text: "new/c.masks:1:5" in text and "3 files" in text)
    os.remove(os.path.join(place, "new/c.masks"))
    watched.until(lambda text: "2 files" in text)

    # A configuration above comes, is wrong, and goes.
    write(top, "tavo.toml", "[[rule]]\nname = \"seeded\"\nforbid = \"PRO=CCN\"\n")
    watched.until(lambda text: "b.tavo:1:1: error house/seeded" in text)
    write(top, "tavo.toml", "strikt = true\n")
    watched.until(lambda text: "2 files not read" in text)
    os.remove(os.path.join(top, "tavo.toml"))
    watched.until(lambda text: "house" not in text and "2 files, 2 statements" in text)

    # A file with another suffix changes nothing, and neither does an unchanged text.
    write(place, "notes.txt", "PRO=NOPE\n")
    assert watched.is_quiet(), watched.text
    watched.end()

    for wrong in (["-"], ["--format", "json", "."], ["--fix", "."], ["--write-baseline", "x", "."]):
        done = subprocess.run([TOOL, "check", "--watch", *wrong], cwd=place, capture_output=True,
                              timeout=PATIENCE, stdin=subprocess.DEVNULL)
        assert done.returncode == 2 and b"--watch" in done.stderr, done
print("watched")
