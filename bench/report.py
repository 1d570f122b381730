#!/usr/bin/env python3
"""Runs the benchmarks and prints their figures next to the targets.

    cmake --preset bench && cmake --build --preset bench && bench/report.py

Every figure is a median of interleaved repetitions of one run. Times are CPU times, which other
work on the machine disturbs least, unless wall time is named. The times and their plots go into
the build folder; --save also puts them into the tree (bench/results.json, docs/pictures).
"""
import argparse
import json
import math
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile

import plots

PROVIDERS = ("ccn eml nid col hash lookup hashlookup randomlookup age user swap").split()
LENGTHS = ("60", "130", "500")
LONG = ("fielddefinitions", "classes", "duplicates", "comment")


def run(command, **options):
    return subprocess.run(command, check=True, capture_output=True, text=True, **options).stdout


def measure(program, pattern, repetitions, min_time, libraries=None):
    """name -> (median CPU ns, median wall ns, characters)"""
    environment = dict(os.environ)
    if libraries:
        environment["LD_LIBRARY_PATH"] = libraries
    output = run([program, f"--benchmark_filter={pattern}", "--benchmark_format=json",
                  f"--benchmark_repetitions={repetitions}", f"--benchmark_min_time={min_time}",
                  "--benchmark_enable_random_interleaving=true"], env=environment)
    samples = {}
    for entry in json.loads(output)["benchmarks"]:
        if entry.get("error_occurred"):
            sys.exit(f"{entry['name']}: {entry['error_message']}")
        if entry["run_type"] == "iteration":
            samples.setdefault(entry["name"].removesuffix("/real_time"), []).append(entry)
    return {name: tuple(statistics.median(e[key] for e in entries)
                        for key in ("cpu_time", "real_time", "characters"))
            for name, entries in samples.items()}


class Table:
    HEAD = "| What | Measured | Target | Met |\n|---|---|---|---|"

    def __init__(self):
        self.missed = 0

    def row(self, what, figure, target, met):
        self.missed += not met
        print(f"| {what} | {figure} | {target} | {'yes' if met else '**no**'} |")


def geometric_mean(values):
    return math.exp(statistics.fmean(math.log(v) for v in values))


def add_ratios(table, what, target, ratios, worst, met):
    """A row of one ratio per provider; the worst one counts."""
    name = worst(ratios, key=ratios.get)
    table.row(what, f"{geometric_mean(ratios.values()):.2f} (worst {name} {ratios[name]:.2f})", target,
              met(ratios[name]))


def against_recognizer(table, times):
    for length in LENGTHS:
        add_ratios(table, f"ANTLR tool's recognizer : filling run, {length} characters", "at least 5",
                   {p: times[f"peer/antlr/{p}/{length}"][0] / times[f"filling/{p}/{length}/wide"][0]
                    for p in PROVIDERS}, min, lambda ratio: ratio >= 5)


def against_chain(table, times):
    add_ratios(table, "filling run : bare runtime chain, 130 characters", "at most 2.5",
               {p: times[f"filling/{p}/130/wide"][0] / times["barechain/hash/130"][0]
                for p in PROVIDERS}, max, lambda ratio: ratio <= 2.5)
    lean = {p: times[f"filling/{p}/130/wide"][0] / times["leanchain/hash/130"][0] for p in PROVIDERS}
    worst = max(lean, key=lean.get)
    print(f"| the same : chain with the lexer's state in the caller's memory | "
          f"{geometric_mean(lean.values()):.2f} (worst {worst} {lean[worst]:.2f}) | | |")


def lexers(table, times):
    for length in LENGTHS:
        add_ratios(table, f"re2c lexer : own lexer, {length} characters", "at least 1",
                   {p: times[f"lexer/re2c/{p}/{length}"][0] / times[f"lexer/own/{p}/{length}"][0]
                    for p in PROVIDERS}, min, lambda ratio: ratio >= 1)


def long_statements(table, times):
    for kind in LONG:
        base = times[f"filling/{kind}/4K/wide"]
        for size in ("64K", "1024K"):
            cost = times[f"filling/{kind}/{size}/wide"]
            ratio = cost[0] / cost[2] / (base[0] / base[2])
            table.row(f"cost per character, {kind}, {size} : 4K", f"{ratio:.2f}", "at most 1.3",
                      ratio <= 1.3)


def threads(table, times, what="filling", title="", target=1.8):
    one, two = (times[f"threads/{what}/hash/130/real_time/threads:{n}"] if
                f"threads/{what}/hash/130/real_time/threads:{n}" in times else
                times[f"threads/{what}/hash/130/threads:{n}"] for n in (1, 2))
    wall = one[1] / two[1]
    table.row(f"two threads{title} : one, wall time (needs two idle cores)", f"{wall:.2f}",
              f"at least {target}", wall >= target)
    print(f"| CPU time of a call{title} with two threads : with one | {two[0] / one[0]:.2f} | | |")


def one_call(table, times, counts):
    """TAVOParser_ReadInto of UTF-8, beside what it replaces and what it cannot be faster than."""
    for name, title, peer, most in (
            ("utf8", "filling run", "filling/{p}/{n}/wide", 0.45),
            ("utf8", "re2c and descent, which stores nothing", "peer/re2c/{p}/{n}", 2.0)):
        for length in LENGTHS:
            add_ratios(table, f"one call : {title}, {length} characters", f"at most {most}",
                       {p: times[f"read/{name}/{p}/{length}"][0] /
                        times[peer.format(p=p, n=length)][0] for p in PROVIDERS}, max,
                       lambda ratio, most=most: ratio <= most)
    threads(table, times, "read", " of one-call reading", 1.9)
    for length in (130, 65536):
        calls = int(counts[f"read_into_utf8_{length}_allocations"])
        table.row(f"allocations of one call into the caller's memory, {length} characters", calls,
                  "0", calls == 0)
    print(f"| allocations of one call with memory of its own, 130 characters | "
          f"{counts['read_utf8_130_allocations']}, {counts['read_utf8_130_bytes']} bytes | | |")


def counted(folder):
    return dict(line.split() for line in run([f"{folder}/bin/tavo_bench_allocations"]).splitlines())


def allocations(table, counts):
    for form in ("wide", "8bit"):
        calls = int(counts[f"filling_{form}_130_allocations"])
        size = int(counts[f"filling_{form}_130_bytes"])
        table.row(f"allocations of a filling run, 130 characters, {form}", f"{calls}, {size} bytes",
                  "at most 16, 16 KB", calls <= 16 and size <= 16384)
    print(f"| the same, 64 KB of field definitions | {counts['filling_wide_65536_allocations']}, "
          f"{counts['filling_wide_65536_bytes']} bytes | | |")


def trace(table, folder, arguments):
    """Compares with the library built without trace frames; the two alternate in running first.

    Interference only makes a run longer: the lower quartile says more than the median.
    """
    name = "filling/hash/130/wide"
    costs = {f"{folder}/lib": [], f"{folder}/lib/no_trace": []}
    for number in range(arguments.trace_rounds):
        for library in sorted(costs, reverse=number % 2 == 0):
            times = measure(f"{folder}/bin/tavo_bench", f"^{name}$", 3, 0.03, library)
            costs[library].append(times[name][0])
    quartiles = [statistics.quantiles(times, n=4) for times in costs.values()]
    lower, median = (100 * (quartiles[0][i] / quartiles[1][i] - 1) for i in (0, 1))
    table.row("cost of tracing while it is off, 130 characters",
              f"{median:+.1f} % (lower quartiles of {arguments.trace_rounds} runs each: "
              f"{lower:+.1f} %)", "under 2 %", median < 2)


def instructions(folder, library, what="repeat", calls=2000):
    """Instructions of a filling run, or of "read", by callgrind, which no other process can disturb."""
    environment = dict(os.environ, LD_LIBRARY_PATH=library)
    totals = []
    for times in (calls, 2 * calls):
        result = subprocess.run(
            ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null",
             f"{folder}/bin/tavo_bench_allocations", what, "130", str(times)],
            check=True, capture_output=True, text=True, env=environment)
        totals += [int(line.split(":")[1]) for line in result.stderr.splitlines()
                   if "Collected" in line]
    return (totals[1] - totals[0]) / calls


def library_size(table, folder):
    library = f"{folder}/lib/libTAVOParser.so"
    with tempfile.TemporaryDirectory() as scratch:
        stripped = shutil.copy(os.path.realpath(library), scratch)
        run(["strip", stripped])
        size = os.path.getsize(stripped)
    table.row("size of the stripped library", f"{size / 1024:.0f} KB", "under 400 KB",
              size < 400 * 1024)
    sections = [line.split() for line in run(["readelf", "-r", "-W", library]).splitlines()
                if line.startswith("Relocation section")]
    relocations = sum(int(words[words.index("contains") + 1]) for words in sections)
    print(f"| relocations | {relocations} | | |")
    entries = sum(int(line.split(".init_array")[1].split()[3], 16) // 8
                  for line in run(["readelf", "-S", "-W", library]).splitlines()
                  if ".init_array" in line)
    table.row("entries of .init_array (one is the toolchain's frame_dummy)", entries, "1",
              entries == 1)


def editor(table, folder, arguments):
    """A keystroke, its diagnostics and a completion in the language server."""
    times = measure(f"{folder}/bin/tavo_editor_bench", "^editor/", arguments.repetitions,
                    arguments.min_time)
    for what, title in (("keystroke", "a keystroke"), ("newline", "a line end typed")):
        many = times[f"editor/{what}/10000"][0]
        ratio = many / times[f"editor/{what}/100"][0]
        table.row(f"{title} in 10,000 statements : in 100", f"{ratio:.2f}", "at most 3", ratio <= 3)
        share = times["editor/whole/10000"][0] / many
        table.row(f"reading 10,000 statements : {title} in them", f"{share:.0f}", "at least 20",
                  share >= 20)


def machine():
    model = next((line.split(":")[1].strip() for line in open("/proc/cpuinfo")
                  if line.startswith("model name")), "unknown")
    compiler = run(["c++", "--version"]).splitlines()[0]
    return f"{model}, {os.cpu_count()} cores; {compiler}; load {os.getloadavg()[0]:.1f}"


def save(times, where, arguments, folder):
    """Writes the times and their plots."""
    results = plots.results_of(times, where, arguments.repetitions)
    text = json.dumps(results, indent=1) + "\n"
    out = pathlib.Path(folder) / "report"
    out.mkdir(exist_ok=True)
    (out / "results.json").write_text(text, encoding="utf-8")
    for name, picture in plots.drawn(results).items():
        (out / name).write_text(picture, encoding="utf-8")
    print(f"\nplots: {out}")
    if arguments.save:
        plots.RESULTS.write_text(text, encoding="utf-8")
        plots.write()


def peers(times):
    print("\n| CPU ns, hash statement | 60 | 130 | 500 |\n|---|---|---|---|")
    for title, name in plots.COMPARED.items():
        print(f"| {title} | " + " | ".join(f"{times[name.format(n)][0]:.0f}" for n in LENGTHS) +
              " |")
    print("| one call | " + " | ".join(f"{times[f'read/utf8/hash/{n}'][0]:.0f}" for n in LENGTHS) +
          " |")


def report_one_call(folder, arguments):
    print(machine() + "\n")
    of_providers = f"({'|'.join(PROVIDERS)})/({'|'.join(LENGTHS)})"
    times = measure(f"{folder}/bin/tavo_bench",
                    f"^(filling/{of_providers}/wide|read/utf8/{of_providers}|peer/re2c/.*)$",
                    arguments.repetitions, arguments.min_time)
    times |= measure(f"{folder}/bin/tavo_bench", "^threads/read/", 2 * arguments.repetitions,
                     5 * arguments.min_time)
    table = Table()
    print(Table.HEAD)
    one_call(table, times, counted(folder))
    print(f"\n{table.missed} targets missed")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", default="build/bench", help="build folder")
    parser.add_argument("--repetitions", type=int, default=15)
    parser.add_argument("--min-time", type=float, default=0.02, help="seconds per repetition")
    parser.add_argument("--save", action="store_true",
                        help="replace bench/results.json and its plots in docs/pictures")
    parser.add_argument("--only-one-call", action="store_true",
                        help="only the rows of TAVOParser_ReadInto")
    parser.add_argument("--trace-rounds", type=int, default=41)
    parser.add_argument("--editor", action="store_true",
                        help="measure the language server only, with tavo_editor_bench alone")
    arguments = parser.parse_args()
    folder = os.path.abspath(arguments.build)
    if arguments.only_one_call:
        report_one_call(folder, arguments)
        return
    if arguments.editor:
        print(machine() + "\n")
        print(Table.HEAD)
        editor(Table(), folder, arguments)
        return

    print("peers:", run([f"{folder}/bin/tavo_peer_check"]).strip())
    where = machine()
    print(where + "\n")
    pattern = "|".join([
        f"^(filling)/({'|'.join(PROVIDERS)})/({'|'.join(LENGTHS)})/wide$",
        f"^read/utf8/({'|'.join(PROVIDERS)})/({'|'.join(LENGTHS)})$",
        "^(peer|lexer)/", "^(bare|lean|pool)chain/", f"^filling/({'|'.join(LONG)})/.*/wide$"])
    times = measure(f"{folder}/bin/tavo_bench", pattern, arguments.repetitions, arguments.min_time)
    times |= measure(f"{folder}/bin/tavo_bench", "^threads/", 2 * arguments.repetitions,
                     5 * arguments.min_time)
    table = Table()
    print(Table.HEAD)
    against_recognizer(table, times)
    against_chain(table, times)
    lexers(table, times)
    long_statements(table, times)
    threads(table, times)
    counts = counted(folder)
    one_call(table, times, counts)
    allocations(table, counts)
    trace(table, folder, arguments)
    if shutil.which("valgrind"):
        with_frames = instructions(folder, f"{folder}/lib")
        without = instructions(folder, f"{folder}/lib/no_trace")
        print(f"| instructions of a filling run, 130 characters | {with_frames:.0f} "
              f"({without:.0f} without trace frames) | | |")
        print(f"| instructions of one call, 130 characters | "
              f"{instructions(folder, f'{folder}/lib', 'read'):.0f} | | |")
    library_size(table, folder)
    editor(table, folder, arguments)
    peers(times)
    save(times, where, arguments, folder)
    print(f"\n{table.missed} targets missed")


if __name__ == "__main__":
    main()
