"""Compares a driver of the library with the second opinion.

    python3 compare.py --driver build/tests/statement_driver --count 100000 --seed 7
    python3 compare.py --driver build/tests/statement_driver --seconds 60 --tokens
    python3 compare.py --driver build/tests/statement_driver --systematic

A driver reads one statement per line, a JSON string in UTF-8, and replies with one line of JSON:

    {"sizing":{"status":S,"count":N},"status":S,"flag":0,"pairs":[[keyType,"key",valueType,"value"],...],
     "errors":[{"id":7139,"pos":P,"excerpt":"..."},{"id":7141,"key":"..."},{"id":N}],
     "read":{"status":S,"pairs":[...],"errors":[...]}}

where "read" is what one call for the statement says, in the same form. A statement whose trace level is
refused is compared without it: how one call judges a level is no part of the second opinion. It replies
with --tokens {"tokens":[[type,start,length,hidden],...],"broken":[offset]}, the bracket empty
or with null when there is no lexical error; offsets and lengths count characters.

The exit code is 0 when nothing differs, 1 when something does.
"""

import argparse
import collections
import itertools
import json
import multiprocessing
import shlex
import subprocess
import sys
import time
from typing import Iterator, NamedTuple, Optional

import systematic
from generate import statements
from recogniser import recognise_both, tokens

CHUNK = 1000  # statements for one run of the driver
TIME_LIMIT = 60  # seconds that a driver may take over one chunk
LONGEST_PIECE = 40  # characters that the last step of minimising takes away at once
SYNTAX_NUMBERS = (7139, 7140)
# What the parser itself reports; a refused trace level is none of these (7174 and 7175 speak of trace levels).
OWN_NUMBERS = set(range(7089, 7187)) - {7174, 7175}


# --- the two answers in one form ---


def error_form(error: dict) -> dict:
    return {name: error[name] for name in ("id", "pos", "excerpt", "key") if error.get(name) is not None}


def statement_form(answer: dict) -> dict:
    return {
        "sizing": {"status": answer["sizing"]["status"], "count": answer["sizing"]["count"]},
        "status": answer["status"],
        "flag": int(answer["flag"]),
        "pairs": [pair_form(pair) for pair in answer["pairs"]],
        "errors": [error_form(error) for error in answer["errors"]],
        "read": read_form(answer["read"]),
    }


def pair_form(pair: list) -> list:
    key_type, key_text, value_type, value_text = pair
    return [key_type, key_text, value_type & 0xFFFFFFFF, value_text]


def read_form(answer: Optional[dict]) -> Optional[dict]:
    return answer and {
        "status": answer["status"],
        "pairs": [pair_form(pair) for pair in answer["pairs"]],
        "errors": [error_form(error) for error in answer["errors"]],
    }


def token_form(answer: dict) -> dict:
    broken = answer["broken"]
    if isinstance(broken, list):
        broken = broken[0] if broken else None
    return {
        "tokens": [[kind, start, length, int(hidden)] for kind, start, length, hidden in answer["tokens"]],
        "broken": broken,
    }


def own_statement_answer(text: str) -> dict:
    sizing, filling = recognise_both(text)
    errors = own_errors(filling)
    refused_level = {"id": "platform"} in errors
    return {
        "sizing": {"status": sizing.status, "count": sizing.count},
        "status": filling.status,
        "flag": 1 if filling.status == 7148 else 0,
        "pairs": [list(pair) for pair in filling.pairs],
        "errors": errors,
        "read": None if refused_level else own_read_answer(sizing, filling),
    }


def own_errors(run) -> list[dict]:
    return [error_form({"id": error.number if error.number is not None else "platform", "pos": error.position,
                        "excerpt": error.excerpt, "key": error.key_text}) for error in run.errors]


def own_read_answer(sizing, filling) -> dict:
    """One call says what the two runs say, which end at the first that fails; pairs only when neither does."""
    run = sizing if sizing.status else filling
    return {"status": run.status, "pairs": [] if run.status else [list(pair) for pair in run.pairs], "errors": own_errors(run)}


def own_token_answer(text: str) -> dict:
    found, broken = tokens(text)
    return {"tokens": [[kind, start, length, int(hidden)] for kind, start, length, hidden in found], "broken": broken}


def same(own: dict, other: Optional[dict]) -> bool:
    if other is None:
        return False
    if own.get("read", True) is None:
        other = {**other, "read": None}
    if own == other:
        return True
    # A refused trace level has whatever number the platform gives it.
    if "errors" not in own or len(own["errors"]) != len(other["errors"]):
        return False
    errors = [mine if mine == {"id": "platform"} and list(theirs) == ["id"] and theirs["id"] not in OWN_NUMBERS else theirs
              for mine, theirs in zip(own["errors"], other["errors"])]
    return own == {**other, "errors": errors}


def outcome(own: dict) -> str:
    if "errors" not in own:
        return "broken" if own["broken"] is not None else "whole"
    if not own["errors"]:
        return "accepted"
    return "syntax" if own["errors"][-1]["id"] in SYNTAX_NUMBERS else "invalid"


# --- the driver ---


def without(text: str, length: int, step: int) -> list[str]:
    """The text without each of its pieces of this length; never empty."""
    return [text[:at] + text[at + length:] for at in range(0, len(text) - length + 1, step) if length < len(text)]


class Driver:

    def __init__(self, command: str, token_mode: bool):
        self.command = shlex.split(command) + (["--tokens"] if token_mode else [])
        self.form = token_form if token_mode else statement_form
        self.own = own_token_answer if token_mode else own_statement_answer

    def answers(self, texts: list[str]) -> tuple[list[Optional[dict]], str]:
        """One answer for each text, None from the one on that the driver did not survive; and how it ended."""
        lines = "".join(json.dumps(text, ensure_ascii=False) + "\n" for text in texts).encode()
        try:
            run = subprocess.run(self.command, input=lines, capture_output=True, timeout=TIME_LIMIT)
            output, ending = run.stdout, f"exit code {run.returncode}"
            if run.returncode:
                ending += ": " + run.stderr[-2000:].decode(errors="replace")
        except subprocess.TimeoutExpired as late:
            output, ending = late.stdout or b"", f"no answer within {TIME_LIMIT} seconds"
        found: list[Optional[dict]] = []
        for line in output.split(b"\n")[:len(texts)]:
            try:
                found.append(self.form(json.loads(line.decode())))
            except (ValueError, KeyError, TypeError, AttributeError) as wrong:
                if line:
                    ending += f"; unreadable answer {line[:200]!r} ({wrong!r})"
                break
        return found + [None] * (len(texts) - len(found)), ending

    def first_difference(self, texts: list[str]) -> Optional[str]:
        for text, answer in zip(texts, self.answers(texts)[0]):
            if not same(self.own(text), answer):
                return text
        return None

    def minimised(self, text: str) -> str:
        """Deletes pieces, the long ones first, as long as the two still disagree."""
        size = max(len(text) // 2, 1)
        while size:
            found = self.first_difference(without(text, size, max(size // 2, 1)))
            if found is None:
                size //= 2
            else:
                text = found
        # Then every piece of every length, so that a whole option goes wherever it begins.
        while True:
            candidates = [shorter for length in range(min(len(text), LONGEST_PIECE), 0, -1) for shorter in without(text, length, 1)]
            found = self.first_difference(candidates)
            if found is None:
                return text
            text = found


class Difference(NamedTuple):
    kind: str
    original: str
    minimised: str
    own: dict
    other: Optional[dict]
    ending: str


class Work(NamedTuple):
    command: str
    token_mode: bool
    seed: str
    chunk: int
    count: int
    given: list[tuple[str, str]]  # the statements themselves, or none to generate them
    most: int


def examine(work: Work) -> tuple[collections.Counter, list[Difference]]:
    """One chunk. What is generated depends on nothing but the seed and the chunk's number."""
    driver = Driver(work.command, work.token_mode)
    totals: collections.Counter = collections.Counter()
    differences: list[Difference] = []
    left = work.given or list(statements(f"{work.seed}:{work.chunk}", work.count))
    while left:
        answers, _ = driver.answers([text for _, text in left])
        alive = len(left)
        for at, ((kind, text), answer) in enumerate(zip(left, answers)):
            own = driver.own(text)
            totals[kind, outcome(own)] += 1
            if not same(own, answer):
                if len(differences) < work.most:
                    shortest = driver.minimised(text)
                    (other,), ending = driver.answers([shortest])
                    differences.append(Difference(kind, text, shortest, driver.own(shortest), other, ending))
                else:
                    return totals, differences
            if answer is None:  # the driver ended here: continue after this statement
                alive = at + 1
                break
        left = left[alive:]
    return totals, differences


# --- the report ---


def show_difference(number: int, difference: Difference) -> None:
    print(f"\nDifference {number}, class {difference.kind}")
    print("  statement ", json.dumps(difference.original, ensure_ascii=False))
    print("  minimised ", json.dumps(difference.minimised, ensure_ascii=False), " = ", json.dumps(difference.minimised))
    own, other = difference.own, difference.other
    if other is None:
        print("  opinion   ", json.dumps(own, ensure_ascii=False))
        print("  driver    ", difference.ending)
        return
    for name in own:
        mark = " " if same({**other, name: own[name]}, other) else "*"
        print(f"  opinion  {mark}", name, json.dumps(own[name], ensure_ascii=False))
        print(f"  driver   {mark}", name, json.dumps(other[name], ensure_ascii=False))


def show_totals(totals: collections.Counter, seconds: float) -> None:
    columns = sorted({result for _, result in totals})
    print(f"{'class':<8}" + "".join(f"{column:>12}" for column in columns) + f"{'all':>12}")
    for kind in sorted({kind for kind, _ in totals}):
        row = [totals[kind, column] for column in columns]
        print(f"{kind:<8}" + "".join(f"{number:>12}" for number in row) + f"{sum(row):>12}")
    every = sum(totals.values())
    print(f"{every} statements in {seconds:.1f} s, {every / max(seconds, 1e-9):.0f} a second")


def systematic_chunks(options) -> Iterator[Work]:
    every = systematic.statements()
    while given := list(itertools.islice(every, CHUNK)):
        yield Work(options.driver, options.tokens, "", 0, len(given), given, options.stop)


def chunks(options) -> Iterator[Work]:
    deadline = time.monotonic() + options.seconds if options.seconds else None
    left = options.count if options.count else None
    for number in itertools.count():
        if left is not None and left <= 0 or deadline is not None and time.monotonic() > deadline:
            return
        size = CHUNK if left is None else min(CHUNK, left)
        yield Work(options.driver, options.tokens, options.seed, number, size, [], options.stop)
        if left is not None:
            left -= size


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--driver", required=True, help="the driver's command")
    parser.add_argument("--tokens", action="store_true", help="compare tokens instead of pairs and errors")
    parser.add_argument("--systematic", action="store_true", help="every word in every place instead of random statements")
    parser.add_argument("--count", type=int, help="statements (10000 unless --seconds is given)")
    parser.add_argument("--seconds", type=float, help="stop after this time")
    parser.add_argument("--seed", default="1")
    parser.add_argument("--stop", type=int, default=5, help="stop after so many differences")
    parser.add_argument("--jobs", type=int, default=2)
    options = parser.parse_args()
    if options.count is None and options.seconds is None:
        options.count = 10000

    totals: collections.Counter = collections.Counter()
    differences: list[Difference] = []
    started = time.monotonic()
    work = systematic_chunks(options) if options.systematic else chunks(options)
    with multiprocessing.Pool(options.jobs) as pool:
        # A round is a few chunks for each process: the deadline and the differences are looked at in between.
        while True:
            batch = list(itertools.islice(work, options.jobs * 2))
            if not batch:
                break
            for some_totals, some_differences in pool.imap(examine, batch):
                totals += some_totals
                differences += some_differences
            if len(differences) >= options.stop:
                break
    # Different statements often shrink to the same one: show it once.
    distinct = list({difference.minimised.upper(): difference for difference in differences}.values())
    for number, difference in enumerate(distinct[:options.stop], 1):
        show_difference(number, difference)
    print()
    show_totals(totals, time.monotonic() - started)
    print(f"{len(differences)} differences, {len(distinct)} after minimising" if differences else "no difference")
    return 1 if differences else 0


if __name__ == "__main__":
    sys.exit(main())
