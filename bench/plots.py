#!/usr/bin/env python3
"""Draws the measured times: how the cost grows with a statement, and how it compares with peers.

usage: plots.py [--check | --write]

Reads bench/results.json, which `./dev bench --save` writes, and draws docs/pictures/speed-*.svg.
--check says which picture differs from the data; the exit status is 1 then.
"""
import argparse
import json
import math
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "docs" / "pictures"))
sys.dont_write_bytecode = True
import svg  # noqa: E402

RESULTS = ROOT / "bench" / "results.json"
PICTURES = ROOT / "docs" / "pictures"

LENGTHS = ("60", "130", "500")
SIZES = ("4K", "64K", "1024K")
GROWING = {"fielddefinitions": "field definitions", "classes": "repeated classes",
           "duplicates": "duplicate keys", "comment": "one long comment"}
# A measurement's name in the tables: its name in the benchmark.
COMPARED = {"filling run": "filling/hash/{}/wide", "bare chain": "barechain/hash/{}",
            "chain with the lexer's state in the caller's memory": "leanchain/hash/{}",
            "chain with the runtime's pool": "poolchain/hash/{}",
            "ANTLR tool's recognizer": "peer/antlr/hash/{}",
            "flex and bison": "peer/flexbison/hash/{}",
            "re2c and descent": "peer/re2c/hash/{}", "own lexer": "lexer/own/hash/{}",
            "re2c lexer": "lexer/re2c/hash/{}", "flex lexer": "lexer/flex/hash/{}"}
# Three groups of bars that do the same work.
GROUPS = {"whole parse": ("filling run", "ANTLR tool's recognizer", "flex and bison",
                          "re2c and descent"),
          "runtime objects only": ("bare chain", "chain with the runtime's pool"),
          "tokens only": ("own lexer", "re2c lexer", "flex lexer")}


def results_of(times, machine, repetitions):
    """The figures of a run for the plots. times: name -> (CPU ns, wall ns, characters), medians."""
    names = [name.format(length) for name in COMPARED.values() for length in LENGTHS]
    names += [f"filling/{kind}/{size}/wide" for kind in GROWING for size in SIZES]
    return {"machine": machine, "repetitions": repetitions,
            "times": {name: {"cpu_ns": round(times[name][0], 1),
                             "characters": int(times[name][2])} for name in names}}


def nanoseconds(value):
    return "%.0f ns" % value if value < 10000 else "%.1f µs" % (value / 1000)


def comparison(results):
    """Bars of CPU time on a logarithmic scale, one group for each kind of work."""
    times = results["times"]
    rows = [(group, title) for group, titles in GROUPS.items() for title in titles]
    left, right, top, bar, gap, group_gap = 200, 90, 76, 11, 9, 26
    width, plot = 880, 880 - left - right
    height = top + len(rows) * (3 * bar + gap) + len(GROUPS) * group_gap + 42
    values = [times[COMPARED[title].format(n)]["cpu_ns"] for _, title in rows for n in LENGTHS]
    low = 10 ** math.floor(math.log10(min(values)))
    high = 10 ** math.ceil(math.log10(max(values)))

    def across(value):
        return left + plot * math.log(value / low) / math.log(high / low)

    picture = svg.Picture(
        width, height, "CPU time of a hash statement, compared with peers",
        "; ".join("%s: %s" % (title, ", ".join(nanoseconds(
            times[COMPARED[title].format(n)]["cpu_ns"]) for n in LENGTHS)) for _, title in rows))
    picture.text(20, 28, "CPU time of one hash statement (logarithmic scale)", "title", 15,
                 bold=True)
    for index, n in enumerate(LENGTHS):
        characters = times[COMPARED["filling run"].format(n)]["characters"]
        x = left + index * 130
        picture.add("rect", class_="f%d" % index, x=x, y=42, width=12, height=12, rx=2)
        picture.text(x + 18, 52, "%d characters" % characters, "text", 12)
    bottom = height - 46
    decade = low
    while decade <= high:
        picture.line(across(decade), top - 8, across(decade), bottom, "grid")
        picture.text(across(decade), bottom + 16, nanoseconds(decade), "dim", 11, "middle")
        decade *= 10
    y, previous = top, None
    for group, title in rows:
        if group != previous:
            picture.text(20, y + 14, group, "title", 12, bold=True)
            y += group_gap
            previous = group
        picture.text(left - 10, y + 1.5 * bar + 4, title, "text", 12, "end")
        for index, n in enumerate(LENGTHS):
            value = times[COMPARED[title].format(n)]["cpu_ns"]
            picture.add("rect", class_="f%d" % index, x=left, y=y + index * bar,
                        width=max(across(value) - left, 1), height=bar - 1, rx=1)
            picture.text(across(value) + 5, y + index * bar + 9, nanoseconds(value), "dim", 10)
        y += 3 * bar + gap
    picture.text(20, height - 6, caption(results), "dim", 10)
    return str(picture)


def growth(results):
    """CPU time per character of long statements."""
    times = results["times"]
    left, top, width, height = 64, 60, 880, 380
    right, bottom = width - 190, height - 62
    series = {}
    for kind in GROWING:
        entries = [times[f"filling/{kind}/{size}/wide"] for size in SIZES]
        series[kind] = [(entry["characters"], entry["cpu_ns"] / entry["characters"])
                        for entry in entries]
    # All kinds and the short statements of the comparison are on one scale.
    short = [times[COMPARED["filling run"].format(n)] for n in LENGTHS]
    series["hash"] = [(entry["characters"], entry["cpu_ns"] / entry["characters"])
                      for entry in short]
    titles = dict(GROWING, hash="hash statement")
    points = [point for line in series.values() for point in line]
    low = math.log10(min(point[0] for point in points)) - 0.1
    high = math.log10(max(point[0] for point in points)) + 0.1
    most = max(point[1] for point in points)
    step = next(s for s in (0.5, 1, 2, 5, 10, 20, 50) if most / s <= 8)
    ceiling = step * math.ceil(most / step)

    def place(point):
        return (left + (right - left) * (math.log10(point[0]) - low) / (high - low),
                bottom - (bottom - top) * point[1] / ceiling)

    picture = svg.Picture(
        width, height, "CPU time per character of a filling run, by the length of the statement",
        "; ".join("%s: %s" % (titles[kind], ", ".join(
            "%d characters %.2f ns" % point for point in line)) for kind, line in series.items()))
    picture.text(20, 28, "CPU time per character of a filling run", "title", 15, bold=True)
    picture.text(20, 46, "a flat line means that the cost grows linearly with the length", "dim", 12)
    value = 0.0
    while value <= ceiling:
        y = place((1, value))[1]
        picture.line(left, y, right, y, "grid")
        picture.text(left - 8, y + 4, "%g ns" % value, "dim", 11, "end")
        value += step
    for label, characters in (("100", 100), ("1 K", 1024), ("10 K", 10240), ("100 K", 102400),
                              ("1 M", 1048576)):
        x = place((characters, 0))[0]
        picture.line(x, bottom, x, bottom + 5)
        picture.text(x, bottom + 19, label, "dim", 11, "middle")
    picture.text((left + right) / 2, bottom + 36, "characters of the statement", "dim", 11,
                 "middle")
    ends = []
    for index, (kind, line) in enumerate(series.items()):
        places = [place(point) for point in line]
        picture.add("path", class_="s%d" % index, fill="none", stroke_width=2,
                    d="M" + "L".join("%s %s" % (svg.number(x), svg.number(y)) for x, y in places))
        for x, y in places:
            picture.add("circle", class_="f%d" % index, cx=x, cy=y, r=3.5)
        if kind != "hash":
            ends.append((places[-1][1], index, kind, places[-1][0]))
        else:
            picture.text(places[-1][0] + 8, places[-1][1] - 6, titles[kind], "text", 12)
    below = None
    for y, index, kind, x in sorted(ends):
        y = y if below is None else max(y, below + 16)
        below = y
        picture.add("rect", class_="f%d" % index, x=right + 10, y=y - 5, width=10, height=10, rx=2)
        picture.text(right + 26, y + 4, "%s, %.1f ns" % (titles[kind], series[kind][-1][1]), "text",
                     12)
    picture.text(20, height - 6, caption(results), "dim", 10)
    return str(picture)


def caption(results):
    return "medians of %d repetitions; %s" % (results["repetitions"], results["machine"])


def drawn(results):
    """File name -> picture."""
    return {"speed-comparison.svg": comparison(results), "speed-growth.svg": growth(results)}


def write():
    results = json.loads(RESULTS.read_text(encoding="utf-8"))
    for name, picture in drawn(results).items():
        (PICTURES / name).write_text(picture, encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(description="Draw bench/results.json.")
    parser.add_argument("--check", action="store_true")
    parser.add_argument("--write", action="store_true")
    arguments = parser.parse_args()
    if arguments.write:
        write()
    results = json.loads(RESULTS.read_text(encoding="utf-8"))
    wrong = [name for name, picture in drawn(results).items()
             if not (PICTURES / name).exists() or
             (PICTURES / name).read_text(encoding="utf-8") != picture]
    for name in wrong:
        print("docs/pictures/%s does not show bench/results.json. Run ./dev pictures." % name)
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
