#!/usr/bin/env python3
"""Builds and tests again whenever a file of the tree changes: what ./dev watch runs.

The files of the tree are looked at twice a second. After a change the release preset is built and the
tests that the change can touch run: those of the folder for a file below tests/, those of the command
line for one of its files, all quick tests for a file of the library. Ends with Ctrl-C.
"""

import argparse
import json
import os
import pathlib
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
WATCHED = ("CMakeLists.txt", "README.md", "Src", "cmake", "docs", "include", "platform", "tests", "tools")
# The labels of the tests that a file below this folder can touch; the first that fits counts.
LABELS = (
    ("tools/tavo/", {"cli", "docs"}),
    ("platform/", {"platform", "corpus"}),
    ("docs/", {"docs"}),
    ("README.md", {"docs"}),
    ("Src/", {"quick"}),
    ("include/", {"quick"}),
    ("", {"quick"}),
)


def snapshot(root: pathlib.Path) -> dict[str, int]:
    """The time of the last change of each watched file, by its path below the root."""
    times = {}
    for name in WATCHED:
        top = root / name
        folders = os.walk(top) if top.is_dir() else [(str(root), [], [name])]
        for folder, inside, files in folders:
            inside[:] = [one for one in inside if not one.startswith((".", "__"))]
            for file in files:
                path = os.path.join(folder, file)
                if not file.startswith(".") and not file.endswith(("~", ".swp")):
                    try:
                        times[os.path.relpath(path, root)] = os.stat(path).st_mtime_ns
                    except FileNotFoundError:
                        pass  # removed while we look
    return times


def changed(before: dict[str, int], after: dict[str, int]) -> list[str]:
    return sorted(name for name in before.keys() | after.keys() if before.get(name) != after.get(name))


def topics(listing: dict, root: pathlib.Path) -> dict[str, tuple[str, set[str]]]:
    """For each test of `ctest --show-only=json-v1` the folder that declares it, and its labels."""
    graph = listing["backtraceGraph"]
    found = {}
    for test in listing["tests"]:
        folder, node = "", test.get("backtrace")
        while node is not None:
            entry = graph["nodes"][node]
            file = pathlib.Path(graph["files"][entry["file"]])
            if file.name == "CMakeLists.txt" and not folder:
                folder = os.path.relpath(file.parent, root)
            node = entry.get("parent")
        labels = {value for item in test.get("properties", []) if item["name"] == "LABELS" for value in item["value"]}
        found[test["name"]] = folder, labels
    return found


def tests_for(files: list[str], tests: dict[str, tuple[str, set[str]]]) -> list[str]:
    """The tests that a change of these files can touch, slow ones never."""
    chosen = set()
    for file in files:
        parts = pathlib.PurePosixPath(file).parts
        own = {name for name, (folder, _) in tests.items()
               if parts[0] == "tests" and len(parts) > 2 and folder.split("/")[:2] == list(parts[:2])}
        labels = next(labels for prefix, labels in LABELS if file.startswith(prefix))
        chosen |= own or {name for name, (_, has) in tests.items() if has & labels}
    return sorted(name for name in chosen if "slow" not in tests[name][1])


def run(*command: str) -> bool:
    return subprocess.run(command, cwd=ROOT, check=False).returncode == 0


def build_and_test(files: list[str], preset: str) -> None:
    print(f"\n== {', '.join(files[:3])}{' ...' if len(files) > 3 else ''}", flush=True)
    if not run("cmake", "--build", "--preset", preset):
        return
    listing = subprocess.run(["ctest", "--preset", preset, "--show-only=json-v1"], cwd=ROOT, check=True,
                             capture_output=True, text=True).stdout
    names = tests_for(files, topics(json.loads(listing), ROOT))
    if names:
        run("ctest", "--preset", preset, "--parallel", str(os.cpu_count()), "-R", "^(" + "|".join(names) + ")$")


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--preset", default="release")
    parser.add_argument("--once", action="store_true", help="end after the first change")
    options = parser.parse_args()
    before = snapshot(ROOT)
    print("watching; Ctrl-C ends", flush=True)
    try:
        while True:
            time.sleep(0.5)
            after = snapshot(ROOT)
            files = changed(before, after)
            if files:
                before = after
                build_and_test(files, options.preset)
                if options.once:
                    return 0
    except KeyboardInterrupt:
        return 0


if __name__ == "__main__":
    sys.exit(main())
