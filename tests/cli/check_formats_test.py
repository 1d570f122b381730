#!/usr/bin/env python3
"""JSON and SARIF of `tavo check` are well-formed and agree with the text."""
import json
import os
import re
import subprocess
import sys
import tempfile

TEXT = """# comment
PRO=HASH, DSTFLD=X

PRO=EML,
  MTD=HASH,
  DOM=x
PRO=HASH, DSTFLD="\u00e9", ALG=SHA256
PRO=HASH, DSTFLD=X SEED="1"
PRO=HASH, DSTFLD=X, DSTFLD=Y
"""


def check(path, *arguments):
    return subprocess.run([os.environ["TAVO"], "check", path, *arguments], capture_output=True,
                          encoding="utf-8")


def expect(condition, what):
    if not condition:
        print("FAILED:", what)
        sys.exit(1)


with tempfile.TemporaryDirectory() as folder:
    path = os.path.join(folder, "a b.txt")
    with open(path, "w", encoding="utf-8") as file:
        file.write(TEXT)
    text, as_json, sarif = check(path), check(path, "--format", "json"), check(path, "--format",
                                                                               "sarif")
    expect(text.returncode == as_json.returncode == sarif.returncode == 1, "exit status 1")
    told = re.findall(r"^(.*):(\d+):(\d+): (?:error(?:\[(\d+)\])?|(warning)) [a-z-]+: ", text.stdout, re.M)
    expect([(int(line), int(column), number or "0") for _, line, column, number, _ in told] ==
           [(5, 3, "7112"), (7, 23, "7139"), (8, 20, "0"), (9, 21, "0")], told)

    report = json.loads(as_json.stdout)
    expect([(f["file"], str(f["line"]), str(f["column"]), f["number"]) for f in report["findings"]]
           == [(file, line, column, int(number or 0)) for file, line, column, number, _ in told],
           "JSON and text differ")
    finding = report["findings"][1]
    fix = {"title": "change to ALGO", "safe": False, "placeholder": False,
           "edits": [{"line": 7, "column": 23, "endLine": 7, "endColumn": 26, "text": "ALGO"}]}
    expect(finding["fixes"] == [fix], finding["fixes"])
    expect((finding["rule"], finding["recorded"], finding["offset"], finding["length"]) ==
           ("unknown-option", True, 22, 3), finding)
    expect("ALGO" in finding["expected"], finding["expected"])
    expect(report["summary"] == {"files": 1, "filesNotRead": 0, "statements": 5,
                                 "wrongStatements": 3, "errors": 3, "warnings": 1,
                                 "hidden": {"byConfiguration": 0, "byIgnores": 0,
                                            "byBaseline": 0}},
           report["summary"])

    run = json.loads(sarif.stdout)["runs"][0]
    rules = {rule["id"] for rule in run["tool"]["driver"]["rules"]}
    expect(all(result["ruleId"] in rules for result in run["results"]), "a result without a rule")
    regions = [result["locations"][0]["physicalLocation"]["region"] for result in run["results"]]
    expect(regions[1] == {"startLine": 7, "startColumn": 23, "endColumn": 26}, regions)
    expect(run["results"][1]["ruleId"] == "unknown-option", run["results"][1])
    change = run["results"][1]["fixes"][0]["artifactChanges"][0]["replacements"][0]
    expect(change == {"deletedRegion": regions[1], "insertedContent": {"text": "ALGO"}}, change)
    expect(len(run["results"][0]["relatedLocations"]) == 1, run["results"][0])
    uri = run["results"][0]["locations"][0]["physicalLocation"]["artifactLocation"]["uri"]
    expect(uri == "file://" + path.replace(" ", "%20"), uri)

    with open(path, "w", encoding="utf-8") as file:
        file.write("PRO=HASH, DSTFLD=X\n")
    for form in ("text", "json", "sarif"):
        clean = check(path, "--format", form)
        expect(clean.returncode == 0, form + " of a clean file")
        if form != "text":
            json.loads(clean.stdout)
    expect(check(path, path + ".none").returncode == 2, "a file that is not there")
    expect(check(folder).returncode == 2, "a folder without files of statements")
