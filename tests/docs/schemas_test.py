#!/usr/bin/env python3
"""Every JSON that the program writes is what its schema in docs/schemas says, and what is not is not.

usage: schemas_test.py SCHEMAS_FOLDER
"""
import copy
import json
import os
import pathlib
import subprocess
import sys
import tempfile

try:
    import jsonschema
except ImportError:
    print("no python3-jsonschema here")
    sys.exit(77)

TOOL = os.path.abspath(os.environ["TAVO"])
SCHEMAS = {path.name.split(".")[0]: json.loads(path.read_text(encoding="utf-8"))
           for path in pathlib.Path(sys.argv[1]).resolve().glob("*.schema.json")}
WRONG = ["PRO=HASH, AGLO=SHA256, DSTFLD=X", "PRO=HASH, SEED=\"x", "PRO=HASH,, DSTFLD=X", "PRO=EML, MTD=HASH, DOM=x",
         "PRO=HASH, DSTFLD=X SEED=\"1\"", "PRO=HASH, DSTFLD=X, DSTFLD=Y", "PRO=HASH, DSTFLD=, ALGO=SHA256",
         "LIB=x, FLDDEF1=(NAM=y)", "PRO=HASH", "TRCLEVEL=\"NOPE\"", "PRO=HASH, DSTFLD=\U0001f600", "x"]
RIGHT = ["PRO=HASH, DSTFLD=X, SEED=\"1\"", "PRO=EML", "LIB=x, pw=\"y\", FLDDEF1=(NAME=A, DT=CHAR)",
         "PRO=AFF, MTD=REP, COPY=(1,4)(7,2,\"X\")", "TRCLEVEL=\"CALLS\""]
failures = validated = 0


def told(schema, document):
    return [error.message for error in jsonschema.Draft202012Validator(SCHEMAS[schema]).iter_errors(document)]


def expect(condition, *what):
    global failures
    if not condition:
        failures += 1
        print("FAILED:", *what)


def validate(schema, document, *what):
    global validated
    validated += 1
    errors = told(schema, document)
    expect(not errors, schema, *what, errors[:3])


def run(*arguments, stdin=""):
    done = subprocess.run([TOOL, *arguments], input=stdin, capture_output=True, encoding="utf-8", timeout=120)
    expect(done.returncode in (0, 1), arguments, done)
    return done.stdout


def answer(schema, *arguments, stdin=""):
    document = json.loads(run(*arguments, stdin=stdin))
    validate(schema, document, arguments)
    return document


def main():
    for schema in SCHEMAS.values():
        jsonschema.Draft202012Validator.check_schema(schema)
    for statement in WRONG + RIGHT:
        answer("parse", "parse", "--format", "json", statement)
        answer("tokens", "tokens", "--format", "json", statement)
    whole = "\n\n".join(WRONG + RIGHT) + "\n"
    report = answer("check", "check", "--format", "json", "-", stdin=whole)
    answer("check", "check", "--format", "json", "-", stdin="PRO=EML\n")
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        for name, text in (("a.masks", whole), ("b.masks", whole.replace("DSTFLD=X", "DSTFLD=Z")),
                           ("c.masks", "\n".join(RIGHT[::-1]) + "\n"), ("d.masks", "\n".join(RIGHT) + "\n")):
            with open(name, "w", encoding="utf-8") as file:
                file.write(text)
        for arguments in (["list", "--format", "jsonl", "a.masks"], ["grep", "--format", "jsonl", "!XYZ", "a.masks"]):
            for line in run(*arguments).splitlines():
                validate("list", json.loads(line), arguments)
        answer("list-stats", "list", "--stats", "--format", "jsonl", "a.masks")
        changes = answer("diff", "diff", "--format", "json", "a.masks", "b.masks")["changes"]
        changes += answer("diff", "diff", "--format", "json", "--moved", "c.masks", "d.masks")["changes"]
        changes += answer("diff", "diff", "--format", "json", "a.masks", "d.masks")["changes"]
        expect({change["kind"] for change in changes} >= {"changed", "removed", "moved"}, "kinds of changes")
        run("check", "-q", "--write-baseline", "old.json", "a.masks")
        with open("old.json", encoding="utf-8") as file:
            validate("baseline", json.load(file))
        answer("config", "config", "--format", "json", "a.masks")
        os.chdir("/")
    answer("explain", "explain", "--format", "json")
    # A schema that accepts anything would be none.
    for change in (lambda d: d["findings"][0].pop("rule"), lambda d: d["findings"][0].update(x=1),
                   lambda d: d["findings"][0].update(line=0), lambda d: d["findings"][0].update(severity="bad"),
                   lambda d: d["summary"].pop("errors"),
                   lambda d: d["findings"][0]["fixes"][0]["edits"][0].pop("text")):
        broken = copy.deepcopy(report)
        broken["findings"] = [f for f in broken["findings"] if f["fixes"]]
        change(broken)
        expect(told("check", broken), "a broken report is accepted")
    # Just the fields that are promised.
    expect(set(report["findings"][0]) - {"recordedMessage"} ==
           {"file", "line", "column", "endLine", "endColumn", "offset", "length", "severity", "number", "rule", "message",
            "found", "expected", "related", "fixes", "recorded"}, set(report["findings"][0]))
    used = {"check", "parse", "tokens", "list", "list-stats", "diff", "baseline", "config", "explain"}
    expect(set(SCHEMAS) == used, "schemas without a test", set(SCHEMAS) ^ used)
    print("%d documents, %d failures" % (validated, failures))
    return 1 if failures or validated < 40 else 0


sys.exit(main())
