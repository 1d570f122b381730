#!/usr/bin/env python3
"""Changes the library in small ways, one at a time, and counts what the tests notice.

    tests/mutation.py --count 200 --seed 1
    tests/mutation.py --count 20 --only Grammar --list
    tests/mutation.py --apply 'Src/TAVOParser/service/service.cpp:73:...'   (see --list for the names)

A mutant turns a comparison, a condition, a sign, a constant, a truth value or an entry of a table into
another one. The tree is copied into a folder of its own and built there with little optimisation; for
each mutant what changed is built again (by way of ccache, if there is one) and the tests run until one
fails, the quick ones first: the corpus, the unit and property tests, the fuzzers' corpus, and a small
run of the second opinion. What none of them notices is built and tested once more with the sanitizers
for addresses and undefined behaviour, as every change is. A mutant that does not compile is none. One
that every test lets pass has survived: the same behaviour in other words, or behaviour that no test
holds.

With --bounded only a few test programs are built and run, without the command line, the sanitizers and the
second opinion: what ctest does with a handful of mutants, so that the script itself stays whole.

The exit code is 0 when at least --least percent were noticed.
"""

import argparse
import difflib
import os
import pathlib
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from typing import Iterator, NamedTuple

ROOT = pathlib.Path(__file__).resolve().parent.parent
COPIED = ("CMakeLists.txt", "CMakePresets.json", "Src", "bench", "bindings", "cmake", "docs", "fuzz", "include", "platform", "shared", "tests", "tools",
          "examples")
SOURCES = "Src/TAVOParser"
# Valgrind and the large second opinion take too long; what is installed and documented is not asked about here.
LEFT_OUT = "^(bounded_|valgrind_|second_opinion_|install|docs|dev_|modules|readme|package|abi_(description|exports|hardening)_|.*other_platform)"
SECOND_OPINION_COUNT = 4000
MEMORY_LIMIT = 6 << 30  # bytes for each process: a mutant may ask for memory without end
TIME_LIMIT = 300  # seconds for all tests: a mutant may never end
SANITIZERS = "address,undefined"
SANITIZED_TESTS = ["array_test", "corpus_test", "errors_test", "faults_test", "grammar_test", "greedy_test", "records_test",
                   "records_memory_test", "service_test", "statement_property_test", "stream_end_test", "util_test",
                   "validation_test"]
BOUNDED_TESTS = ["array_test", "corpus_test", "grammar_test", "validation_test"]
QUICK_TEST = 1.0  # seconds: tests that take less go first
QUICK_TIME_LIMIT = 60
BATCH = 40  # mutants that are put in the order of their files, so that few files are built twice

SWAPS = {"==": "!=", "!=": "==", "<=": "<", ">=": ">", " < ": " <= ", " > ": " >= ", "&&": "||", "||": "&&",
         " + ": " - ", " - ": " + ", "++": "--", "true": "false", "false": "true", "+=": "-=", "-=": "+="}
PATTERN = re.compile(r"==|!=|<=(?!>)|>=| < | > |&&|\|\||(?<=[\w)\]]) [+-] (?=[\w(])|\+\+|\+=|-=|\btrue\b|\bfalse\b"
                     r"|(?<![\w.'\"])(?:0x[0-9A-Fa-f]+|\d+)(?=[uUlL]*\b)|(?<=[(\s&|])!(?=[\w(])|\bTAVO_PARSER_\w+")
# Lines that say nothing about behaviour, or that only tracing sees. What a constant's name calls a size
# hint is one: the runtime asks for it and looks at it nowhere.
IGNORED_LINE = re.compile(r"\s*(#|//|\*|static_assert|template|using|extern \"C\"|TAVO_TRACE_(FUNCTION|ENTRY)|tavo::trace_|kId\w+ = "
                          r"|constexpr \w+ k\w*SizeHint = )")
NOT_CODE = re.compile(r'//.*|"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])+\'|uint\d+_t|int\d+_t|\btemplate\s*<[^>]*>')
FILES_FOR_TRACING = {"trace.h"}


class Mutant(NamedTuple):
    file: str  # below the root
    line: int  # 1-based
    start: int
    stop: int
    replacement: str

    def name(self) -> str:
        return f"{self.file}:{self.line}:{self.start}:{self.stop}:{self.replacement}"


def code_only(line: str) -> str:
    """The line with its comments and literals blanked out, columns kept."""
    return NOT_CODE.sub(lambda found: "_" * len(found[0]), line)


def replacements(found: str, others: list[str], choose: random.Random) -> str:
    if found in SWAPS:
        return SWAPS[found]
    if found == "!":
        return ""
    if found.startswith("TAVO_PARSER_"):
        rest = [other for other in others if other != found]
        return choose.choice(rest) if rest else found
    value = int(found, 0)
    return hex(value ^ 1) if found.startswith("0x") else str(value + 1)


def mutants(only: str) -> Iterator[Mutant]:
    for path in sorted((ROOT / SOURCES).rglob("*")):
        name = str(path.relative_to(ROOT))
        if path.suffix not in (".cpp", ".h", ".c") or path.name in FILES_FOR_TRACING or only not in name:
            continue
        lines = path.read_text().split("\n")
        others = sorted({word for line in lines for word in re.findall(r"\bTAVO_PARSER_\w+", code_only(line))})
        for number, line in enumerate(lines, 1):
            if IGNORED_LINE.match(line):
                continue
            for found in PATTERN.finditer(code_only(line)):
                choose = random.Random(f"{name}:{number}:{found.start()}")
                replacement = replacements(found[0], others, choose)
                if replacement != found[0]:
                    yield Mutant(name, number, found.start(), found.end(), replacement)


def limit_memory() -> None:
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))


class Tree:
    """A copy of the sources with a build folder, plain or with sanitizers."""

    def __init__(self, folder: pathlib.Path, jobs: int, sanitizers: str = "", bounded: bool = False):
        self.folder, self.jobs, self.sanitizers = folder, jobs, sanitizers
        self.programs = SANITIZED_TESTS if sanitizers else BOUNDED_TESTS if bounded else []  # empty: all
        self.build = folder / ("sanitized" if sanitizers else "build")
        cases = 50 if sanitizers else 300  # of each property
        self.environment = dict(os.environ, TAVO_TRACE_FILE="/dev/null", RC_PARAMS=f"max_success={cases} seed=1",
                                CCACHE_NOHASHDIR="1")
        self.quick: list[str] = []

    def run(self, *command: str, limit: float = 3000) -> subprocess.CompletedProcess:
        # The address sanitizer reserves more than any limit.
        with subprocess.Popen(command, cwd=self.folder, env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              text=True, start_new_session=True,
                              preexec_fn=None if self.sanitizers else limit_memory) as process:
            try:
                stdout, stderr = process.communicate(timeout=limit)
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, signal.SIGKILL)  # the tests as well, not only what runs them
                raise
        return subprocess.CompletedProcess(command, process.returncode, stdout, stderr)

    def configure(self) -> None:
        done = self.run("cmake", "-S", ".", "-B", str(self.build), "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
                        "-DCMAKE_CXX_FLAGS_RELEASE=-O1", "-DCMAKE_C_FLAGS_RELEASE=-O1",
                        f"-DTAVO_SANITIZE={self.sanitizers}", f"-DTAVO_BUILD_TOOLS={'OFF' if self.programs else 'ON'}")
        if done.returncode:
            sys.exit("The copy cannot be configured:\n" + done.stdout[-3000:] + done.stderr[-3000:])

    def make(self) -> subprocess.CompletedProcess:
        return self.run("cmake", "--build", str(self.build), "-j", str(self.jobs),
                        "--target", *(self.programs or ["all"]))

    def prepare(self) -> None:
        """Builds and tests the tree as it is."""
        self.configure()
        made = self.make()
        if made.returncode:
            sys.exit("The copy does not compile:\n" + made.stdout[-3000:])
        failing = self.noticed_by()
        if failing:
            sys.exit(f"{failing} fails without a mutant")
        if not self.programs:
            self.learn_costs()

    def learn_costs(self) -> None:
        """Remembers which tests were quick."""
        costs = self.build / "Testing" / "Temporary" / "CTestCostData.txt"
        for line in costs.read_text().split("---")[0].splitlines():
            name, _, seconds = line.split()
            if float(seconds) < QUICK_TEST:
                self.quick.append(name)

    def failing_of(self, *choice: str, limit: int = TIME_LIMIT) -> str:
        try:
            done = self.run("ctest", "--test-dir", str(self.build), "-j", str(self.jobs), "--stop-on-failure", *choice,
                            limit=limit)
        except subprocess.TimeoutExpired:
            return "time"
        if not done.returncode:
            return ""
        failed = re.search(r"\n\s*\d+ - (\S+) \(", done.stdout)
        return failed[1] if failed else "ctest"

    def noticed_by(self) -> str:
        """The first test that fails, or nothing."""
        if self.programs:
            failing = self.failing_of("-R", "^(" + "|".join(self.programs) + ")$")
            return failing and failing + (" with sanitizers" if self.sanitizers else "")
        quick = "^(" + "|".join(self.quick) + ")$"
        failing = self.quick and self.failing_of("-R", quick, "-E", LEFT_OUT, limit=QUICK_TIME_LIMIT)
        failing = failing or self.failing_of("-E", f"{LEFT_OUT}|{quick}" if self.quick else LEFT_OUT)
        if failing:
            return failing
        try:
            done = self.run("python3", "tests/second_opinion/compare.py", "--driver", "build/tests/statement_driver", "--count",
                            str(SECOND_OPINION_COUNT), "--seed", "3", "--stop", "1", "--jobs", str(self.jobs),
                            limit=TIME_LIMIT)
        except subprocess.TimeoutExpired:  # it makes small what differs, which takes its time
            return "second_opinion"
        return "second_opinion" if done.returncode else ""


def copy_sources(folder: pathlib.Path) -> None:
    for name in COPIED:
        source = ROOT / name
        if source.is_dir():
            shutil.copytree(source, folder / name)
        elif source.exists():
            shutil.copy2(source, folder / name)
    shutil.rmtree(folder / "tests" / "platform", ignore_errors=True)  # never sees the library


def change(folder: pathlib.Path, mutant: Mutant) -> str:
    """Applies a mutant; returns the text of the file as it was."""
    path = folder / mutant.file
    before = path.read_text()
    lines = before.split("\n")
    line = lines[mutant.line - 1]
    lines[mutant.line - 1] = line[:mutant.start] + mutant.replacement + line[mutant.stop:]
    path.write_text("\n".join(lines))
    return before


def shown(mutant: Mutant) -> str:
    line = (ROOT / mutant.file).read_text().split("\n")[mutant.line - 1]
    changed = line[:mutant.start] + mutant.replacement + line[mutant.stop:]
    return f"{mutant.file}:{mutant.line}\n" + "\n".join(
        part for part in difflib.unified_diff([line], [changed], n=0, lineterm="") if part[:2] not in ("--", "++", "@@"))


def noticed_by(trees: list[Tree]) -> str | None:
    """The first test that fails in the first tree where one does, or nothing; none for what does not compile."""
    for tree in trees:
        if tree.make().returncode:
            return None
        failing = tree.noticed_by()
        if failing:
            return failing
    return ""


def examine(folder: pathlib.Path, trees: list[Tree], chosen: list[Mutant],
            deadline: float) -> tuple[dict[str, int], list[Mutant], int]:
    noticed: dict[str, int] = {}
    survivors: list[Mutant] = []
    rejected = 0
    for number, mutant in enumerate(chosen, 1):
        if time.monotonic() > deadline:
            print(f"Out of time after {number - 1} of {len(chosen)}")
            break
        before = change(folder, mutant)
        try:
            result = noticed_by(trees)
        finally:
            (folder / mutant.file).write_text(before)
        if result is None:
            rejected += 1
        elif result:
            noticed[result] = noticed.get(result, 0) + 1
        else:
            survivors.append(mutant)
        shown_result = "does not compile" if result is None else result or "SURVIVED"
        print(f"{number:4} {mutant.name()}  {shown_result}", flush=True)
    return noticed, survivors, rejected


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--count", type=int, default=100, help="mutants, chosen at random")
    parser.add_argument("--seed", default="1")
    parser.add_argument("--only", default="", help="of files whose name holds this")
    parser.add_argument("--seconds", type=float, default=1e9, help="stop after this time")
    parser.add_argument("--least", type=float, default=90, help="percent that have to be noticed")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--bounded", action="store_true", help="with a few test programs only")
    parser.add_argument("--list", action="store_true", help="only name the mutants")
    parser.add_argument("--apply", action="append", metavar="NAME", help="these mutants instead of chosen ones")
    options = parser.parse_args()

    every = list(mutants(options.only))
    if options.apply:
        chosen = [mutant for mutant in every if mutant.name() in options.apply]
    else:
        drawn = random.Random(options.seed).sample(every, min(options.count, len(every)))
        chosen = [mutant for first in range(0, len(drawn), BATCH) for mutant in sorted(drawn[first:first + BATCH])]
    if options.list:
        print("\n".join(mutant.name() for mutant in (every if options.count >= len(every) else chosen)))
        return 0
    print(f"{len(chosen)} of {len(every)} mutants, seed {options.seed}", flush=True)
    started = time.monotonic()
    with tempfile.TemporaryDirectory(prefix="tavo-mutation-") as name:
        folder = pathlib.Path(name)
        copy_sources(folder)
        trees = ([Tree(folder, options.jobs, bounded=True)] if options.bounded else
                 [Tree(folder, options.jobs), Tree(folder, options.jobs, SANITIZERS)])
        for tree in trees:
            tree.prepare()
        noticed, survivors, rejected = examine(folder, trees, chosen, started + options.seconds)
    killed = sum(noticed.values())
    tried = killed + len(survivors)
    for mutant in survivors:
        print("\nSurvived: " + shown(mutant))
    print()
    for name, count in sorted(noticed.items(), key=lambda item: -item[1]):
        print(f"{count:5} noticed by {name}")
    share = 100 * killed / tried if tried else 100.0
    print(f"{killed} of {tried} mutants noticed, {share:.1f} %; {rejected} more did not compile; "
          f"{time.monotonic() - started:.0f} s")
    return 0 if share >= options.least else 1


if __name__ == "__main__":
    sys.exit(main())
