#!/usr/bin/env python3
"""What pipelines read: each format by the rules of its readers, the problem matcher against real
output, and the hooks of pre-commit in a real repository."""
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

TOOL = os.environ["TAVO"]
SOURCE = sys.argv[1]
# A name and a message with everything that a format could stumble over.
ODD = "a, b%3A:c<&>\"'\x1b[31m\n\u202e\u00e9.tavo"
STATEMENTS = """PRO=EML, MTD=HASH, DOM=x
PRO=EML, MTD=HASH, DOM=x
PRO=HASH, DSTFLD=A, DSTFLD=B, SEED="471147"
PRO=HASH,
  ALG=geheim
"""
CONFIGURATION = """[severity]
7118 = "off"
[[rule]]
name = "seeded"
when = "PRO=HASH"
forbid = "DSTFLD=A"
message = "50% of <\\u001b[31m> & ::error::\\r\\nsecond \\u0000line\\u202e, \\"quoted\\""
"""
failures = 0


def expect(condition, *what):
    global failures
    if not condition:
        failures += 1
        print("FAILED:", *what)


def run(folder, *arguments, tool=TOOL):
    environment = dict(os.environ, TAVO_LANG="de")
    environment["PATH"] = os.path.dirname(TOOL) + os.pathsep + environment["PATH"]
    return subprocess.run([tool, *arguments], cwd=folder, env=environment, capture_output=True)


def check(folder, form, *arguments):
    done = run(folder, "check", "--format", form, *arguments)
    for secret in (b"geheim", b"471147"):
        expect(secret not in done.stdout, form, "shows a secret")
    text = done.stdout.decode("utf-8")
    bad = [c for c in text if (ord(c) < 32 and c != "\n") or 0x7F <= ord(c) < 0xA0 or c == "\u202e"]
    expect(not bad, form, "holds raw control characters", bad)
    expect("DOMAIN cannot be used" in text, form, "is not English")
    return done.returncode, text


# ---- GitHub: workflow commands, read as the runner reads them ----------------------------------

def unescaped(text, pairs):
    for escape, character in pairs:
        text = text.replace(escape, character)
    return text


def github_commands(text):
    """Command, properties, message of each line."""
    for line in text.split("\n")[:-1]:
        match = re.fullmatch(r"::([a-z]+)(?: ([^:]*))?::(.*)", line)
        expect(match, "no workflow command:", line)
        properties = {}
        for part in (match[2] or "").split(","):
            name, _, value = part.partition("=")
            properties[name] = unescaped(value, [("%3A", ":"), ("%2C", ","), ("%0D", "\r"),
                                                 ("%0A", "\n"), ("%25", "%")])
        yield match[1], properties, unescaped(match[3], [("%0D", "\r"), ("%0A", "\n"),
                                                         ("%25", "%")])


def test_github(folder):
    status, text = check(folder, "github", "./" + ODD, "none.tavo")
    expect(status == 2, "github: exit status", status)
    commands = list(github_commands(text))
    expect([command for command, _, _ in commands] ==
           ["error", "error", "error", "warning", "error", "error"], commands)
    first = commands[0][1]
    expect(first["file"].startswith("a, b%3A:c<&>\"'") and first["file"].endswith("é.tavo"), first)
    expect((first["line"], first["col"], first["endLine"], first["endColumn"]) ==
           ("1", "10", "1", "18"), first)
    expect(first["title"] == "7112 rule-violated", first)
    house = [message for _, properties, message in commands
             if properties["title"] == "house/seeded"]
    expect(len(house) == 1 and house[0].startswith("50% of <\\") and "\n" not in house[0], house)
    fixed = [message for _, properties, message in commands
             if properties["title"] == "7139 unknown-option"]
    expect(fixed == ["ALG is no option of HASH\ndid you mean ALGO?"], fixed)
    expect(commands[-1][1]["file"] == "none.tavo" and "No such file" in commands[-1][2],
           commands[-1])
    for name in os.listdir(folder):
        expect("error" not in name, "a message became a command")
    done = run(folder, "check", "--format", "github", "--write-baseline", "old.json", ODD)
    expect(b"::notice title=tavo check::4 hidden (4 by the baseline)\n" in done.stdout, done)


# ---- GitLab: the code quality report ------------------------------------------------------------

def test_gitlab(folder):
    status, text = check(folder, "gitlab", "./" + ODD, "none.tavo")
    report = json.loads(text)
    expect(status == 2 and len(report) == 6, "gitlab:", status, len(report))
    for entry in report:
        expect(set(entry) == {"description", "check_name", "fingerprint", "severity", "location"},
               entry)
        expect(entry["severity"] in ("info", "minor", "major", "critical", "blocker"), entry)
        expect(isinstance(entry["description"], str) and entry["description"], entry)
        lines = entry["location"]["lines"]
        expect(1 <= lines["begin"] <= lines["end"], entry)
        path = entry["location"]["path"]
        expect(path and not path.startswith(("/", "./")), entry)
    prints = [entry["fingerprint"] for entry in report]
    expect(len(set(prints)) == len(prints), "fingerprints are not unique", prints)
    # They stay when lines move, secrets change, and the layout does.
    path = os.path.join(folder, ODD)
    with open(path, "w", encoding="utf-8") as file:
        file.write("# moved\n\n" + STATEMENTS.replace("geheim", "anders").replace("471147", "147")
                   .replace(", DOM", ",DOM"))
    _, text = check(folder, "gitlab", "./" + ODD, "none.tavo")
    expect([entry["fingerprint"] for entry in json.loads(text)] == prints, "fingerprints moved")


# ---- XML ----------------------------------------------------------------------------------------

def test_junit(folder):
    status, text = check(folder, "junit", ODD, "none.tavo")
    root = ElementTree.fromstring(text)
    expect(status == 2 and root.tag == "testsuites", "junit:", status, root.tag)
    verdicts = []
    for suite in root:
        expect(suite.tag == "testsuite" and suite.get("name"), suite.attrib)
        counts = {"failure": 0, "error": 0, "skipped": 0}
        for case in suite:
            expect(case.tag == "testcase" and case.get("name") and case.get("classname"),
                   case.attrib)
            expect(len(case) <= 1, "several verdicts in a case")
            for verdict in case:
                counts[verdict.tag] += 1
                verdicts.append(verdict.tag)
                expect(verdict.get("message"), verdict.attrib)
        expect([suite.get(name) for name in ("tests", "failures", "errors", "skipped")] ==
               [str(number) for number in (len(suite), counts["failure"], counts["error"],
                                           counts["skipped"])], suite.attrib)
    expect(sorted(verdicts) == ["error"] + 4 * ["failure"] + ["skipped"], verdicts)
    expect([suite.get("name") for suite in root][-1] == "summary", "no summary")


def test_checkstyle(folder):
    status, text = check(folder, "checkstyle", ODD, "none.tavo")
    root = ElementTree.fromstring(text)
    expect(status == 2 and root.tag == "checkstyle" and root.get("version"), "checkstyle:", status)
    names = [file.get("name") for file in root]
    expect(len(names) == 2 and names[1] == "none.tavo", names)
    errors = [error for file in root for error in file]
    expect(len(errors) == 6, len(errors))
    for error in errors:
        expect(error.tag == "error" and error.get("severity") in ("error", "warning", "info"),
               error.attrib)
        expect(int(error.get("line")) >= 1 and int(error.get("column")) >= 1, error.attrib)
        expect(error.get("message") and error.get("source").startswith("tavo."), error.attrib)


def test_clean(folder):
    with open(os.path.join(folder, "clean.tavo"), "w", encoding="utf-8") as file:
        file.write("PRO=CCN\n")
    for form in ("github", "gitlab", "junit", "checkstyle"):
        done = run(folder, "check", "--format", form, "clean.tavo")
        text = done.stdout.decode()
        expect(done.returncode == 0, form, "of a clean file:", done)
        if form == "gitlab":
            expect(json.loads(text) == [], text)
        elif form == "github":
            expect(text == "", text)
        else:
            root = ElementTree.fromstring(text)
            expect(not list(root.iter("error")) and not list(root.iter("failure")), text)
            expect(form == "checkstyle" or len(list(root.iter("testcase"))) == 1, text)


def test_problem_matcher(folder):
    path = os.path.join(SOURCE, "tools", "tavo", "pipelines", "github-problem-matcher.json")
    with open(path, encoding="utf-8") as file:
        (matcher,) = json.load(file)["problemMatcher"]
    (pattern,) = matcher["pattern"]
    expect(matcher["owner"] == "tavo", matcher)
    with open(os.path.join(folder, "job.tavo"), "w", encoding="utf-8") as file:
        file.write(STATEMENTS)
    text = run(folder, "check", "./job.tavo").stdout.decode()
    found = []
    for line in text.split("\n"):
        match = re.match(pattern["regexp"], line)
        if match:
            found.append(tuple(match[pattern[name]] for name in
                               ("file", "line", "column", "severity", "code")))
    expect(found == [("job.tavo", "1", "10", "error", "7112"),
                     ("job.tavo", "2", "10", "error", "7112"),
                     ("job.tavo", "3", "1", "error", None),
                     ("job.tavo", "3", "21", "warning", None),
                     ("job.tavo", "5", "3", "error", "7139")], found)


# ---- pre-commit ---------------------------------------------------------------------------------

def test_hooks(folder):
    try:
        import yaml
    except ImportError:
        print("python3-yaml is missing: the hooks are not tested")
        return
    path = os.path.join(SOURCE, ".pre-commit-hooks.yaml")
    with open(path, encoding="utf-8") as file:
        hooks = {hook["id"]: hook for hook in yaml.safe_load(file)}
    expect(set(hooks) == {"tavo-check", "tavo-fmt"}, hooks)
    for name in ("a.tavo", "b c.masks"):
        with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
            file.write("pro=hash,dstfld=X\nPRO=HASH, ALG=SHA256\n")
    for hook in hooks.values():
        wanted = [name for name in ("a.tavo", "jobs/b c.masks", "a.tavo.txt", "tavo", "b.masks~")
                  if re.search(hook["files"], name)]
        expect(wanted == ["a.tavo", "jobs/b c.masks"], wanted)
        words = hook["entry"].split()
        expect(words[0] == "tavo" and hook["language"] == "system", hook)
        done = run(folder, *words[1:], "a.tavo", "b c.masks")
        expect(done.returncode == 1, hook["id"], done)
    for name in ("a.tavo", "b c.masks"):
        with open(os.path.join(folder, name), encoding="utf-8") as file:
            expect(file.read() == "PRO=hash, DSTFLD=X\nPRO=HASH, ALG=SHA256\n", name)


def test_real_pre_commit(folder):
    program = shutil.which("pre-commit")
    if program is None:
        print("pre-commit is missing: the hooks were run without it")
        return
    os.environ["PRE_COMMIT_HOME"] = os.path.join(folder, "home")
    os.environ.update(GIT_AUTHOR_NAME="a", GIT_AUTHOR_EMAIL="a@example.com",
                      GIT_COMMITTER_NAME="a", GIT_COMMITTER_EMAIL="a@example.com")
    hooks, project = os.path.join(folder, "hooks"), os.path.join(folder, "project")
    for repository in (hooks, project):
        os.mkdir(repository)
        run(repository, "init", "-q", tool="git")
    shutil.copy(os.path.join(SOURCE, ".pre-commit-hooks.yaml"), hooks)
    done = run(hooks, "validate-manifest", ".pre-commit-hooks.yaml", tool=program)
    expect(done.returncode == 0, done)
    run(hooks, "add", ".", tool="git")
    run(hooks, "commit", "-q", "-m", "hooks", tool="git")
    with open(os.path.join(project, "job.tavo"), "w", encoding="utf-8") as file:
        file.write("PRO=HASH, DSTFLD=X, ALG=SHA256\n")
    with open(os.path.join(project, "other.txt"), "w", encoding="utf-8") as file:
        file.write("no statement\n")
    run(project, "add", ".", tool="git")
    arguments = ["try-repo", hooks, "tavo-check", "--all-files", "--color", "never"]
    done = run(project, *arguments, tool=program)
    told = done.stdout.decode()
    expect(done.returncode == 1 and "job.tavo:1:21: error[7139]" in told and
           "other.txt" not in told, done)
    with open(os.path.join(project, "job.tavo"), "w", encoding="utf-8") as file:
        file.write("PRO=HASH, DSTFLD=X, ALGO=SHA256\n")
    run(project, "add", ".", tool="git")
    done = run(project, *arguments, tool=program)
    expect(done.returncode == 0 and b"Passed" in done.stdout, done)


for test in (test_github, test_gitlab, test_junit, test_checkstyle, test_clean,
             test_problem_matcher, test_hooks, test_real_pre_commit):
    with tempfile.TemporaryDirectory() as place:
        if test in (test_github, test_gitlab, test_junit, test_checkstyle, test_problem_matcher):
            with open(os.path.join(place, "tavo.toml"), "w", encoding="utf-8") as written:
                written.write(CONFIGURATION)
            with open(os.path.join(place, ODD), "w", encoding="utf-8") as written:
                written.write(STATEMENTS)
        test(place)
print("%d failed" % failures)
sys.exit(1 if failures else 0)
