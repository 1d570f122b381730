#!/usr/bin/env python3
"""What `tavo fmt -w` keeps of a file, and what it refuses to do."""
import errno
import os
import subprocess
import sys
import tempfile

TOOL = os.path.abspath(os.environ["TAVO"])
LOOSE, TIDY = b"pro=hash,dstfld=X", b"PRO=hash, DSTFLD=X"
failures = 0


def expect(condition, *what):
    global failures
    if not condition:
        failures += 1
        print("FAILED:", *what)


def fmt(*arguments, **how):
    return subprocess.run([TOOL, "fmt", *arguments], capture_output=True, cwd=folder, **how)


def put(name, content):
    with open(name, "wb") as file:
        file.write(content)


def get(name):
    with open(name, "rb") as file:
        return file.read()


def both(before, after, *arguments, says=b""):
    """-w makes `after` of `before`; --check agrees with it, before and after."""
    put("a.txt", before)
    checked = fmt("--check", *arguments, "a.txt").returncode
    expect(checked == (1 if before != after else 0), "--check of", before, checked)
    expect(get("a.txt") == before, "--check wrote")
    inode = os.stat("a.txt")
    done = fmt("-w", *arguments, "a.txt")
    expect(done.returncode == 0 and get("a.txt") == after, before, "became", get("a.txt"), done)
    expect(says in done.stderr, says, done.stderr)
    expect(bool(done.stderr) == bool(says), done.stderr)
    if before == after:
        now = os.stat("a.txt")
        expect((now.st_ino, now.st_mtime_ns, now.st_ctime_ns) ==
               (inode.st_ino, inode.st_mtime_ns, inode.st_ctime_ns), "a tidy file was touched")
    expect(fmt("--check", *arguments, "a.txt").returncode == 0, "not tidy after -w", after)
    expect(os.listdir(".") == ["a.txt"], os.listdir("."))


with tempfile.TemporaryDirectory() as folder:
    os.chdir(folder)
    # Line ends, the last one, byte-order marks, encodings.
    both(LOOSE + b"\n", TIDY + b"\n")
    both(TIDY + b"\n", TIDY + b"\n")
    both(LOOSE, TIDY)
    both(b"# c\n\n" + LOOSE + b"\n# end", b"# c\n\n" + TIDY + b"\n# end")
    both(b"\n\n", b"\n\n")
    both(b"", b"")
    crlf = b"# c\r\n\r\n%s\r\n%s\r\n"
    both(crlf % (LOOSE, LOOSE), crlf % (TIDY, TIDY))
    both(crlf % (TIDY, TIDY), crlf % (TIDY, TIDY))
    both(b"pro=hash,\r\n  dstfld=X // c\r\n", b"PRO=hash, DSTFLD=X // c\r\n")
    both(b"pro=hash, dstfld=X\r\n", b"PRO=hash,\r\n  DSTFLD=X\r\n", "--option-a-line")
    both(b"# a\r\n%s\r\n%s\n" % (TIDY, LOOSE), b"# a\r\n%s\r\n%s\r\n" % (TIDY, TIDY),
         says=b"line ends are mixed")
    both(b"# a\n%s\n%s\r\n" % (TIDY, TIDY), b"# a\n%s\n%s\n" % (TIDY, TIDY),
         says=b"line ends are mixed")
    mark = b"\xef\xbb\xbf"
    both(mark + LOOSE + b"\n", mark + TIDY + b"\n")
    both(mark + TIDY, mark + TIDY)
    for name in ("utf-16-le", "utf-16-be"):
        wide = lambda text: ("\ufeff" + text).encode(name)
        both(wide('# \U0001f600\r\npro=hash,dstfld="\u00e9\u20ac"\r\n'),
             wide('# \U0001f600\r\nPRO=hash, DSTFLD="\u00e9\u20ac"\r\n'))
    both(b'pro=hash,dstfld="\xe9"\n', b'PRO=hash, DSTFLD="\xe9"\n', "--code-page", "1252")
    both(b'pro=hash,dstfld="\x82"\n', b'PRO=hash, DSTFLD="\x82"\n', "--code-page", "850")
    # Comment lines inside a statement keep their place.
    both(b"pro=hash,\n# inside\n  dstfld=X\n", b"PRO=hash,\n# inside\n  DSTFLD=X\n")
    both(b"pro=eml,mtd=rep,\n# one\n# two\n dom=x\n", b"PRO=eml, MTD=rep,\n# one\n# two\n  DOM=x\n")

    # Mode, attributes, symbolic links, hard links.
    put("a.txt", LOOSE + b"\n")
    os.chmod("a.txt", 0o640)
    attributes = True
    try:
        os.setxattr("a.txt", "user.note", b"kept")
    except OSError as error:
        expect(error.errno == errno.ENOTSUP, error)
        attributes = False
    expect(fmt("-w", "a.txt").returncode == 0 and get("a.txt") == TIDY + b"\n", "-w")
    expect(os.stat("a.txt").st_mode & 0o7777 == 0o640, "the mode is not kept")
    if attributes:
        expect(os.getxattr("a.txt", "user.note") == b"kept", "an attribute is not kept")
    os.symlink("a.txt", "link")
    put("a.txt", LOOSE + b"\n")
    expect(fmt("-w", "link").returncode == 0, "a symbolic link")
    expect(os.path.islink("link") and get("a.txt") == TIDY + b"\n", "the link is no link")
    put("a.txt", LOOSE + b"\n")
    os.link("a.txt", "hard")
    expect(fmt("-w", "a.txt").returncode == 0 and get("hard") == TIDY + b"\n", "hard links part")
    expect(os.stat("a.txt").st_ino == os.stat("hard").st_ino, "hard links part")
    expect(sorted(os.listdir(".")) == ["a.txt", "hard", "link"], os.listdir("."))
    os.unlink("hard")
    # A shorter text over a longer one, in place.
    put("a.txt", b"pro = hash ,   dstfld  =  X   \n" * 50)
    os.link("a.txt", "hard")
    expect(fmt("-w", "a.txt").returncode == 0 and get("hard") == (TIDY + b"\n") * 50, get("hard"))
    os.unlink("hard")

    # Planted names are neither followed nor overwritten.
    for suffix in (".tavo-draft", ".tavo-new", ".tavo-%d" % os.getpid()):
        put("a.txt", LOOSE + b"\n")
        put("victim", b"precious")
        os.symlink("victim", "a.txt" + suffix)
        done = fmt("-w", "a.txt")
        expect(get("victim") == b"precious" and os.path.islink("a.txt" + suffix), suffix)
        if suffix in (".tavo-draft", ".tavo-new"):
            expect(done.returncode == 2 and suffix.encode() in done.stderr, done)
            expect(get("a.txt") == LOOSE + b"\n", "written all the same")
        os.unlink("a.txt" + suffix)
    os.unlink("victim")

    # What is no file of its own, and what may not be written.
    os.mkfifo("pipe")
    writer = subprocess.Popen(["sh", "-c", "echo pro=hash,dstfld=X > pipe"])
    done = fmt("-w", "pipe")
    writer.wait()
    expect(done.returncode == 2 and b"no regular file" in done.stderr, done)
    os.unlink("pipe")
    if os.geteuid() == 0:
        nobody = 65534
        os.chmod(folder, 0o777)
        put("a.txt", LOOSE + b"\n")
        os.chmod("a.txt", 0o666)
        inode = os.stat("a.txt").st_ino
        done = fmt("-w", "a.txt", preexec_fn=lambda: os.setuid(nobody))
        expect(done.returncode == 0 and get("a.txt") == TIDY + b"\n", done)
        now = os.stat("a.txt")
        expect((now.st_ino, now.st_uid, now.st_mode & 0o777) == (inode, 0, 0o666), "owner changed")
        put("a.txt", LOOSE + b"\n")
        os.chown("a.txt", nobody, nobody)
        expect(fmt("-w", "a.txt").returncode == 0, "a file of somebody else")
        now = os.stat("a.txt")
        expect((now.st_uid, now.st_gid) == (nobody, nobody), "the owner is not kept")
        for mode, target in ((0o555, folder), (0o444, "a.txt")):
            put("a.txt", LOOSE + b"\n")
            os.chown("a.txt", nobody, nobody)
            os.chmod(target, mode)
            done = fmt("-w", "a.txt", preexec_fn=lambda: os.setuid(nobody))
            expect(done.returncode == 2 and b"Permission denied" in done.stderr, done)
            expect(get("a.txt") == LOOSE + b"\n", "written without permission")
            os.chmod(target, 0o777)
    expect(os.path.exists("a.txt") and sorted(os.listdir(".")) == ["a.txt", "link"],
           os.listdir("."))

    # All files are formatted, however they are named.
    for arguments in (["-w", "-f", "a.txt", "b.txt"], ["-w", "a.txt", "b.txt"],
                      ["-w", "-f", "a.txt", "-f", "b.txt"]):
        put("a.txt", LOOSE + b"\n")
        put("b.txt", LOOSE + b"\n")
        expect(fmt(*arguments).returncode == 0, arguments)
        expect(get("a.txt") == get("b.txt") == TIDY + b"\n", arguments)

    # A patch that patch applies.
    put("a.txt", b"# one\n\n" + LOOSE + b"\n" + TIDY + b"\n" * 9 + b"pro=eml,\n# c\n  mtd=rep // x\n" +
        TIDY + b"\nPRO=HSH\n" + LOOSE)
    patch = fmt("--diff", "a.txt").stdout
    wanted = fmt("a.txt").stdout
    done = subprocess.run(["patch", "-p0"], input=patch, capture_output=True)
    expect(done.returncode == 0 and get("a.txt") == wanted, done, patch)
    put("a.txt", b"pro=eml,pass=hunter2\r\n")
    put("a.txt", b"pro=lookup,pass=\"hunter2\"\n")
    done = fmt("--diff", "a.txt")
    if done.returncode == 0:
        expect(b"hunter2" not in done.stdout and b"--show-secrets" in done.stderr, done)

sys.exit(1 if failures else 0)
