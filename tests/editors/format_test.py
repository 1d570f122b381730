#!/usr/bin/env python3
"""What the server formats is what `tavo fmt` writes, in files made of every statement of the corpus:
whole files in a fixed number of layouts, and files whose layout is chosen at random.

usage: format_test.py TAVO CORPUS [SEED]
"""
import json
import os
import pathlib
import queue
import random
import subprocess
import sys
import tempfile
import threading

TAVO = sys.argv[1]


def statements():
    """The inputs of the corpus; those that mean characters by escapes are left out."""
    for path in sorted(pathlib.Path(sys.argv[2]).glob("statements/*.txt")):
        blocks = path.read_text(encoding="utf-8").split("=" * 18 + "\n")
        for block in blocks[2::2]:
            text = block.split("\n---\n")[0]
            if "\\u" not in text:
                yield text


def files():
    """Texts that try the reader of statements: one a line, paragraphs, comments, line ends."""
    every = list(statements())
    single = [text for text in every if "\n" not in text]
    yield "lines", "\n".join(single) + "\n"
    yield "no last line end", "\n".join(single[:40])
    yield "crlf", "\r\n".join(single) + "\r\n"
    yield "paragraphs", "\n\n".join(every) + "\n"
    broken = [text.replace(", ", ",\n  ") for text in single]
    yield "several lines", "".join(text + "\n# between\n\n" for text in broken)
    yield "comments after statements", "".join(text + "\n# after\n" for text in broken)
    yield "comment lines inside", "".join(
        text.replace(", ", ",\n# inside\n  ") + "\n\n" for text in single)
    yield "comment lines inside a text", 'pro=hash, src="A\n# inside\n", dstfld=X\npro=ccn\n'
    yield "one line end is another", "\n".join(single) + "\r\n# last\n"
    yield "most line ends are others", "\r\n".join(single) + "\n# last\r\n"
    yield "byte-order mark", "\ufeff" + "\n".join(single[:40]) + "\n"
    yield "byte-order mark before a comment", "\ufeff# c\r\n" + "\n".join(single[:40]) + "\n"
    yield "indented", "".join("  " + text + "\n" for text in broken)
    yield "empty", ""
    yield "one line end", "\n"
    yield "comments only", "# a\n\n# b"


def random_file(every, choose):
    """Statements with line ends, blanks and comments wherever a comma or a sign allows some."""
    line_ends = choose.choice((["\n"], ["\r\n"], ["\n", "\n", "\r\n"], ["\n", "\r"]))
    text = choose.choice(("", "", "", "\ufeff"))
    for _ in range(choose.randint(1, 12)):
        statement = choose.choice(every)
        for sign in (",", "=", "(", ")"):
            parts = statement.split(sign)
            statement = parts[0]
            for part in parts[1:]:
                end = choose.choice(line_ends)
                statement += choose.choice((
                    sign, sign, sign, sign + " ", " " + sign, sign + end + "  ",
                    end + sign if sign in ",)" else sign, sign + " /* c */ ", sign + " // c" + end,
                    sign + end + "# inner" + end + "  ", sign + "\t" + end + "\u00fc")) + part
        text += choose.choice(("", "", "", " ", "# c" + choose.choice(line_ends)))
        text += choose.choice((statement, statement, statement.lower()))
        text += choose.choice(("", " ", " // c")) + choose.choice(line_ends)
        text += choose.choice(("", "", choose.choice(line_ends), "# after" + choose.choice(line_ends)))
    return text if choose.random() < 0.8 else text.rstrip("\r\n")


STYLES = (({"spelling": "keep", "optionALine": False}, []),
          ({"spelling": "long", "optionALine": False}, ["--spelling", "long"]),
          ({"spelling": "short", "optionALine": True}, ["--spelling", "short", "--option-a-line"]),
          ({"spelling": "keep", "optionALine": True}, ["--option-a-line"]))


class Server:
    def __init__(self):
        self.process = subprocess.Popen([TAVO, "lsp"], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE)
        self.number = 0
        # Read all the time: the server may send something while it is being sent to.
        self.messages = queue.Queue()
        threading.Thread(target=self.listen, daemon=True).start()

    def listen(self):
        while (message := self.receive()) is not None:
            self.messages.put(message)
        self.messages.put(None)

    def send(self, message):
        body = json.dumps(dict(message, jsonrpc="2.0")).encode("utf-8")
        self.process.stdin.write(b"Content-Length: %d\r\n\r\n" % len(body) + body)
        self.process.stdin.flush()

    def receive(self):
        length = 0
        while True:
            line = self.process.stdout.readline().strip()
            if not line and length == 0:
                return None
            if not line:
                break
            name, value = line.split(b":")
            if name.lower() == b"content-length":
                length = int(value)
        return json.loads(self.process.stdout.read(length))

    def ask(self, method, params):
        self.number += 1
        self.send({"id": self.number, "method": method, "params": params})
        while True:
            message = self.messages.get(timeout=60)
            if message is None:
                sys.exit("the server ended")
            if message.get("id") == self.number:
                return message["result"]

    def end(self):
        self.ask("shutdown", None)
        self.send({"method": "exit"})
        return self.process.wait()


def applied(text, edits):
    """Edits count UTF-32 here, so that Python's indices fit."""
    starts = [0]
    i = 0
    while i < len(text):
        if text[i] == "\r" and text[i + 1:i + 2] == "\n":
            i += 1
        if text[i] in "\r\n":
            starts.append(i + 1)
        i += 1

    def index(position):
        return starts[position["line"]] + position["character"]

    for edit in sorted(edits, key=lambda e: index(e["range"]["start"]), reverse=True):
        text = (text[:index(edit["range"]["start"])] + edit["newText"] +
                text[index(edit["range"]["end"]):])
    return text


def by_fmt(text, options):
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "masks.txt")
        with open(path, "w", encoding="utf-8", newline="") as file:
            file.write(text)
        return subprocess.run([TAVO, "fmt", "--file", path] + options, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, check=False).stdout.decode("utf-8")


class Comparison:
    def __init__(self):
        self.server = Server()
        self.server.ask("initialize", {"capabilities": {"general": {
            "positionEncodings": ["utf-32"]}}})
        self.server.send({"method": "initialized", "params": {}})
        self.files = self.changed = self.failed = 0

    def by_server(self, text, settings):
        self.server.send({"method": "workspace/didChangeConfiguration",
                          "params": {"settings": {"tavo": settings}}})
        uri = "file:///%d.tavo" % self.files
        self.server.send({"method": "textDocument/didOpen", "params": {"textDocument": {
            "uri": uri, "languageId": "tavo", "version": 1, "text": text}}})
        edits = self.server.ask("textDocument/formatting", {
            "textDocument": {"uri": uri}, "options": {"tabSize": 2, "insertSpaces": True}})
        self.server.send({"method": "textDocument/didClose",
                          "params": {"textDocument": {"uri": uri}}})
        return applied(text, edits)

    def compare(self, name, text, style):
        settings, options = style
        found, wanted = self.by_server(text, settings), by_fmt(text, options)
        self.files += 1
        self.changed += wanted != text
        if found == wanted:
            return
        self.failed += 1
        for a, b in zip(found.splitlines(True), wanted.splitlines(True)):
            if a != b:
                print("%s %s:\n  server: %r\n  fmt:    %r" % (name, options, a, b))
                return
        print("%s: the server gives %d characters, fmt %d" % (name, len(found), len(wanted)))


seed = int(sys.argv[3]) if len(sys.argv) > 3 else random.randrange(1 << 32)
choose = random.Random(seed)
every = list(statements())
comparison = Comparison()
for name, text in files():
    for style in STYLES[:1] if len(text) > 10000 else STYLES:
        comparison.compare(name, text, style)
for number in range(150):
    comparison.compare("file %d of seed %d" % (number, seed), random_file(every, choose),
                       choose.choice(STYLES))
if comparison.server.end() != 0:
    comparison.failed += 1
    print("the server did not end as it should")
print("%d files, %d of them laid out anew, %d differ" % (
    comparison.files, comparison.changed, comparison.failed))
# Files that fmt leaves as they are would show nothing.
sys.exit(1 if comparison.failed or comparison.changed * 2 < comparison.files else 0)
