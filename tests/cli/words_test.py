#!/usr/bin/env python3
"""What people type: verbs, files and statements; and the language of the messages."""
import json
import os
import subprocess
import sys
import tempfile

TOOL = os.path.abspath(os.environ["TAVO"])
failures = 0


def expect(condition, *what):
    global failures
    if not condition:
        failures += 1
        print("FAILED:", *what)


def tavo(*arguments, **environment):
    env = {key: value for key, value in os.environ.items() if key != "TAVO_LANG"}
    done = subprocess.run([TOOL, *arguments], stdin=subprocess.DEVNULL, capture_output=True,
                          encoding="utf-8", env=dict(env, **environment), timeout=60)
    return done.returncode, done.stdout, done.stderr


with tempfile.TemporaryDirectory() as folder:
    os.chdir(folder)
    for name in ("a.txt", "-b"):
        with open(name, "w", encoding="utf-8") as file:
            file.write("PRO=HASH, ALG=SHA256\n")
    expect(tavo("chek", "a.txt") == (2, "", "tavo: no verb chek; did you mean check?\n"), "chek")
    expect(tavo("help")[1] == tavo("--help")[1], "help")
    expect("--strict" in tavo("help", "check")[1], "help check")
    expect(tavo("help", "chek")[0] == 2, "help chek")
    expect(tavo("parse", "") == (2, "", "tavo: parse: the statement is empty\n"), "empty")
    expect("use tavo check" in tavo("parse", "a.txt")[2], "a file for parse")
    expect("[7139]" in tavo("parse", "-f", "a.txt")[2], "parse -f")
    expect("there is no file" in tavo("fmt", "none.txt")[2], "no such file")
    expect(tavo("explain", "TAVO7139") == tavo("explain", "7139"), "a rule id")
    expect("2 files" in tavo("check", "a.txt", "--", "-b")[1], tavo("check", "a.txt", "--", "-b"))

    # JSON of a rejected statement says what is wrong and where.
    status, out, err = tavo("parse", "--format", "json", "PRO=HASH, ALG=SHA256")
    answer = json.loads(out)
    expect(status == 1 and err == "" and answer["pairs"] == [] and answer["status"] != 0, answer)
    expect([(e["number"], e["line"], e["column"]) for e in answer["errors"]] == [(7139, 1, 11)], out)

    # English, unless TAVO_LANG selects another language; machine-readable output is always English.
    english = tavo("check", "a.txt")
    expect(tavo("check", "a.txt", LC_ALL="de_DE.UTF-8", LANG="de", LC_MESSAGES="de") == english,
           "the locale changes the language")
    expect(tavo("explain", "7144", TAVO_LANG="de") != tavo("explain", "7144"), "TAVO_LANG is lost")
    expect(tavo("explain", "7144", LC_ALL="de_DE.UTF-8") == tavo("explain", "7144"), "LC_ALL rules")
    for arguments in (["check", "--format", "json", "a.txt"], ["check", "--format", "sarif", "a.txt"],
                      ["parse", "--format", "json", "PRO=HASH"], ["tokens", "--format", "tsv", "PRO=X"]):
        expect(tavo(*arguments, TAVO_LANG="de") == tavo(*arguments), arguments, "is not English")

    with open("d.txt", "w", encoding="utf-8") as file:
        file.write("PRO=HASH\n")

    # Every id of a report is among its rules.
    with open("c.txt", "wb") as file:
        file.write(b'PRO=HSH\nPRO=HASH, DSTFLD="\xe9"\nPRO=HASH, DSTFLD=X y\nPRO=CCN, TRCLEVEL="LOUD"\n')
    run = json.loads(tavo("check", "--format", "sarif", "c.txt")[1])["runs"][0]
    rules = {rule["id"] for rule in run["tool"]["driver"]["rules"]}
    expect({result["ruleId"] for result in run["results"]} <= rules, rules)
    expect("trace-level" in {result["ruleId"] for result in run["results"]}, run["results"])
    report = json.loads(tavo("check", "--format", "json", "c.txt")[1])
    expect(8021 in {finding["number"] for finding in report["findings"]}, report["findings"])
    expect("trace level" in tavo("explain", "TAVO8021")[1], "the platform's number is explained")

    # An unknown code page is one usage error, in every verb that reads text.
    for arguments in (["parse", "x"], ["tokens", "x"], ["check", "a.txt"], ["fmt", "a.txt"], ["list", "a.txt"],
                      ["grep", "PRO", "a.txt"], ["diff", "a.txt", "a.txt"]):
        for page in ("12345", "0x", "-1", "99999999999999999999", ""):
            status, out, err = tavo(arguments[0], "--code-page=" + page, *arguments[1:])
            expect((status, out) == (2, "") and err.count("--code-page") == 1, arguments, page, err)
        expect(tavo(arguments[0], "--code-page=850", *arguments[1:])[2].count("code-page") == 0, arguments)

    # The tool's own words are English in every language; TAVO_LANG is for texts of the catalogue.
    german = tavo("check", "d.txt", TAVO_LANG="de")[1]
    expect("1 file, 1 statement: " in german and "rule-violated: Der " in german, german)
    expect("did you mean ALG" in tavo("check", "a.txt", TAVO_LANG="de")[1], "a finding is English")

    # Explanations fit 80 columns where nobody says how wide it is.
    for words in ([], ["AFF"], ["NID"], ["EML", "DOM"], ["FLDDEF"], ["NID", "FMT"], ["unknown-option"], ["7139"], ["--errors"]):
        lines = tavo("explain", *words)[1].split("\n")
        long = [line for line in lines if len(line) > 80 and " " in line.strip()]
        expect(len(lines) > 3 and not long, words, long)

sys.exit(1 if failures else 0)
