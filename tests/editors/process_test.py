#!/usr/bin/env python3
"""The server as a process: how it ends, and what it does with a client that dies.

usage: process_test.py TAVO
"""
import json
import os
import random
import subprocess
import sys
import tempfile
import time

TAVO = sys.argv[1]
# The server looks after its client every five seconds.
PATIENCE = 60
failed = False


def check(what, wanted, found):
    global failed
    if wanted != found:
        failed = True
        print("%s: wanted %r, found %r" % (what, wanted, found))


def framed(message):
    body = json.dumps(dict(message, jsonrpc="2.0")).encode("utf-8")
    return b"Content-Length: %d\r\n\r\n" % len(body) + body


def initialize(process=None):
    return framed({"id": 1, "method": "initialize",
                   "params": {"processId": process, "capabilities": {}}})


def start(*arguments):
    return subprocess.Popen([TAVO, "lsp", *arguments], stdin=subprocess.PIPE,
                            stdout=subprocess.PIPE, stderr=subprocess.PIPE)


def ended(server):
    try:
        return server.wait(PATIENCE)
    except subprocess.TimeoutExpired:
        server.kill()
        return "nothing: it went on"


# As the protocol asks: shutdown, exit, and nothing but frames on standard output.
server = start("--stdio")
answer, errors = server.communicate(
    initialize() + framed({"id": 2, "method": "shutdown"}) + framed({"method": "exit"}), PATIENCE)
check("status after shutdown and exit", 0, server.returncode)
check("standard error", b"", errors)
check("answers", 2, answer.count(b"Content-Length: "))

# A project's configuration is found where the document is.
with tempfile.TemporaryDirectory() as folder:
    with open(os.path.join(folder, "tavo.toml"), "w", encoding="utf-8") as file:
        file.write('[severity]\n7112 = "warning"\n')
    document = {"uri": "file://%s/a%%20b.tavo" % folder, "languageId": "tavo", "version": 1,
                "text": "PRO=EML, MTD=HASH, DOM=x\n"}
    server = start()
    answer, errors = server.communicate(
        initialize() + framed({"method": "textDocument/didOpen", "params": {
            "textDocument": document}}) +
        framed({"id": 2, "method": "textDocument/diagnostic", "params": {
            "textDocument": document}}) + framed({"id": 3, "method": "shutdown"}) + framed({"method": "exit"}), PATIENCE)
    check("the configured severity", True, b'"severity":2' in answer)

# The client closes its end.
server = start()
server.stdin.write(initialize())
server.stdin.close()
check("status when the input ends", 1, ended(server))

# The client stops reading, and says nothing more.
server = start()
server.stdout.close()
server.stdin.write(initialize())
server.stdin.flush()
check("status when nobody reads", 1, ended(server))

# The client dies, and a process of its own keeps the pipe open.
client = subprocess.Popen([sys.executable, "-c", "input()"], stdin=subprocess.PIPE)
server = start()
server.stdin.write(initialize(client.pid))
server.stdin.flush()
server.stdout.readline()
time.sleep(6)
check("while the client lives", None, server.poll())
client.kill()
client.wait()
check("status when the client dies", 1, ended(server))

# Bytes that are no message end nothing.
server = start()
answer, errors = server.communicate(
    b"\x00\xff nonsense\r\n\r\n" + random.Random(1).randbytes(20000).replace(b"\r\n\r\n", b"") + b"\r\n\r\n" +
    initialize() + framed({"id": 2, "method": "shutdown"}) + framed({"method": "exit"}), PATIENCE)
check("status after nonsense", 0, server.returncode)
check("parse errors are answered", True, b"-32700" in answer)
check("standard error", b"", errors)
sys.exit(1 if failed else 0)
