#!/usr/bin/env python3
"""The wrong example of every rule has a finding of that rule; the right one has no finding."""
import json
import os
import re
import subprocess
import sys

TOOL = os.environ["TAVO"]


def rules_of(statement):
    done = subprocess.run([TOOL, "check", "--format", "json", "-"], input=statement + "\n",
                          capture_output=True, encoding="utf-8")
    return [finding["rule"] for finding in json.loads(done.stdout)["findings"]]


def main():
    text = open(os.path.join(sys.argv[1], "errors.md"), encoding="utf-8").read()
    rules = re.findall(r"^### ([a-z-]+)$", text, re.M)
    examples = re.findall(r"^### ([a-z-]+)\n(?:(?!^###).)*?```text\nwrong:  (.*?)\nright:  (.*?)\n```",
                          text, re.M | re.S)
    if len(rules) < 20 or len(examples) < len(rules) - 4:
        print("FAILED: %d rules, %d examples" % (len(rules), len(examples)))
        return 1
    failed = 0
    for rule, wrong, right in examples:
        if rule not in rules_of(wrong):
            failed += 1
            print("FAILED: %s is not told of %s: %s" % (rule, wrong, rules_of(wrong)))
        if rules_of(right):
            failed += 1
            print("FAILED: %s is wrong: %s" % (right, rules_of(right)))
    print("%d examples, %d failed" % (len(examples), failed))
    return 1 if failed else 0


sys.exit(main())
