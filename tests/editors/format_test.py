#!/usr/bin/env python3
"""What the server formats is what `tavo fmt` writes, in files made of every statement of the corpus.

usage: format_test.py TAVO CORPUS
"""
import json
import os
import pathlib
import queue
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
    yield "several lines", "".join(text.replace(", ", ",\n  ") + "\n# between\n\n"
                                   for text in single)
    yield "empty", ""
    yield "comments only", "# a\n\n# b"


class Server:
    def __init__(self):
        self.process = subprocess.Popen([TAVO, "lsp"], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE)
        self.number = 0
        # Read all the time: the server may tell something while it is being told.
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


def by_fmt(text):
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "masks.txt")
        with open(path, "w", encoding="utf-8", newline="") as file:
            file.write(text)
        return subprocess.run([TAVO, "fmt", "--file", path], stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, check=False).stdout.decode("utf-8")


failed = 0
server = Server()
server.ask("initialize", {"capabilities": {"general": {"positionEncodings": ["utf-32"]}}})
server.send({"method": "initialized", "params": {}})
for number, (name, text) in enumerate(files()):
    uri = "file:///%d.tavo" % number
    server.send({"method": "textDocument/didOpen", "params": {"textDocument": {
        "uri": uri, "languageId": "tavo", "version": 1, "text": text}}})
    edits = server.ask("textDocument/formatting", {
        "textDocument": {"uri": uri}, "options": {"tabSize": 2, "insertSpaces": True}})
    found, wanted = applied(text, edits), by_fmt(text)
    if found != wanted:
        failed += 1
        for a, b in zip(found.split("\n"), wanted.split("\n")):
            if a != b:
                print("%s:\n  server: %r\n  fmt:    %r" % (name, a, b))
                break
        else:
            print("%s: the server gives %d characters, fmt %d" % (name, len(found), len(wanted)))
if server.end() != 0:
    failed += 1
    print("the server did not end as it should")
print("%d files, %d differ" % (number + 1, failed))
sys.exit(1 if failed else 0)
