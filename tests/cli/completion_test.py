#!/usr/bin/env python3
"""The completion scripts load in their shells and complete statements inside quotes."""
import os
import shutil
import subprocess
import sys

TOOL = os.environ["TAVO"]
ENVIRONMENT = dict(os.environ, PATH=os.path.dirname(TOOL) + os.pathsep + os.environ["PATH"])


def expect(condition, *what):
    if not condition:
        print("FAILED:", *what)
        sys.exit(1)


def script(shell):
    return subprocess.run([TOOL, "completion", shell], capture_output=True, check=True,
                          encoding="utf-8").stdout


def bash_replies(*words):
    quoted = " ".join("'" + word.replace("'", "'\\''") + "'" for word in words)
    code = script("bash") + ("\ncompopt() { :; }\nCOMP_WORDS=(%s)\nCOMP_CWORD=%d\n_tavo\n"
                             "printf '%%s\\n' \"${COMPREPLY[@]}\"\n" % (quoted, len(words) - 1))
    done = subprocess.run(["bash", "--norc", "-c", code], capture_output=True, encoding="utf-8",
                          env=ENVIRONMENT)
    expect(done.stderr == "", done.stderr)
    return done.stdout.split("\n")[:-1]


verbs = ["parse", "check", "tokens", "explain", "fmt", "list", "grep", "diff", "config", "completion", "lsp", "help"]
common = ["--help", "--version", "--show-secrets", "--color"]
expect(bash_replies("tavo", "") == verbs + common, bash_replies("tavo", ""))
expect(bash_replies("tavo", "--co") == ["--color"], "an option before the verb")
for verb, option, values in (("check", "--format", ["text", "json", "sarif", "github", "gitlab",
                                                "junit", "checkstyle"]),
                             ("check", "--layout", ["auto", "lines", "paragraphs"]),
                             ("parse", "--format", ["table", "json", "tsv"]),
                             ("fmt", "--spelling", ["keep", "long", "short"]),
                             ("tokens", "--color", ["auto", "always", "never"])):
    expect(bash_replies("tavo", verb, option, "") == values, verb, option)
expect(bash_replies("tavo", "explain", "EML", "") == [""], "nothing after the provider")
expect(bash_replies("tavo", "ch") == ["check"], "a verb")
expect("--layout" in bash_replies("tavo", "check", "--"), "the options of a verb")
expect("--show-secrets" in bash_replies("tavo", "parse", "--s"), "the options of all verbs")
expect(bash_replies("tavo", "parse", "'PRO=EML, ME") == ["PRO=EML, METHOD="], "an option name")
expect(bash_replies("tavo", "parse", "'PRO=EML, MTD=r") ==
       ["PRO=EML, MTD=" + value for value in ("RAN", "RANDOM", "REP", "REPEATABLE")], "values")
expect(bash_replies("tavo", "parse", "\"PRO=NID, FMT=(F") == ["PRO=NID, FMT=(FR="], "a parameter")
expect(bash_replies("tavo", "parse", "'PRO=HASH, MTD=") == [""], "no values where none belong")
expect("EML" in bash_replies("tavo", "explain", "e"), "providers")

for shell, arguments in (("zsh", ["-n"]), ("fish", ["--no-execute"])):
    if shutil.which(shell) is None:
        print("no %s here: its script is only written" % shell)
        expect(len(script(shell)) > 500, shell)
        continue
    done = subprocess.run([shell, *arguments], input=script(shell), capture_output=True,
                          encoding="utf-8")
    expect(done.returncode == 0 and done.stderr == "", done.stderr)

if shutil.which("fish") is not None:
    done = subprocess.run(["fish", "--no-config", "-c",
                           script("fish") + "\ncomplete -C \"tavo parse 'PRO=EML, ME\""],
                          capture_output=True, encoding="utf-8", env=ENVIRONMENT)
    expect("PRO=EML, METHOD=" in done.stdout.replace("'", ""), done.stdout + done.stderr)
