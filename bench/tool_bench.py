#!/usr/bin/env python3
"""Times the mensura tool as whole processes, as a user runs it.

usage: tool_bench.py PATH_TO_MENSURA [--runs N] [--lines N]

Three cases, each against its target:
  startup   `mensura convert 5.5 ft m` against GNU units doing the same
            conversion, `units -1 -t "5.5 ft" m`: in ten rounds, each the
            median of many runs of both by hyperfine; the median of the
            rounds' times and of their ratios (target: at most 0.4).
  convert   a batch of a million numbers, one a line, through
            `mensura convert ft m` (target: 3 million lines a second).
  parse     a batch of a million texts ("5.5 ft", "1,000.5 mm", "5′-6 1/2″"
            and the like, mixed) through `mensura parse m` (same target).
A batch is timed from the start of the process to its end, its output going
to /dev/null: the median of --runs runs. The inputs are made afresh in a
temporary folder. hyperfine and units are Debian packages; without them the
startup case is skipped. This measures; it never fails a build.
"""
import argparse
import json
import os
import random
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

STARTUP_TARGET = 0.4  # the tool's time over that of GNU units, at most
STARTUP_ROUNDS = 10  # rounds in which the tool and units take turns
LINES_TARGET = 3e6  # lines a second, at least
ENVIRONMENT = dict(os.environ, LC_ALL="C", LANG="C")


def hyperfine_median(command, runs, folder):
    """The median time of a command, in seconds, by hyperfine without a shell."""
    export = os.path.join(folder, "hyperfine.json")
    subprocess.run(["hyperfine", "-N", "--style", "none", "--warmup", "5", "--runs", str(runs),
                    "--export-json", export, command], check=True, env=ENVIRONMENT,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    with open(export, encoding="utf-8") as file:
        return statistics.median(json.load(file)["results"][0]["times"])


def write_numbers(path, count):
    randomly = random.Random(1)
    with open(path, "w", encoding="utf-8") as file:
        file.writelines(f"{randomly.uniform(0, 1000):.6g}\n" for _ in range(count))


def write_texts(path, count):
    randomly = random.Random(2)
    forms = [
        lambda: f"{randomly.randint(0, 99)}.5 ft",
        lambda: f"{randomly.randint(1, 9)},{randomly.randint(0, 999):03d}.5 mm",
        lambda: f"{randomly.randint(0, 9)}′-{randomly.randint(0, 11)} 1/2″",
        lambda: f"{randomly.randint(0, 9)} ft {randomly.randint(0, 11)} in",
        lambda: f"{randomly.uniform(0, 100):.3f} m",
        lambda: f"{randomly.randint(0, 500)} cm",
    ]
    with open(path, "w", encoding="utf-8") as file:
        file.writelines(forms[i % len(forms)]() + "\n" for i in range(count))


def batch_median(arguments, path, runs):
    """The median time of the tool over the lines of path, in seconds."""
    times = []
    for _ in range(runs):
        with open(path, "rb") as stdin:
            start = time.perf_counter()
            completed = subprocess.run(arguments, stdin=stdin, stdout=subprocess.DEVNULL,
                                       stderr=subprocess.PIPE, env=ENVIRONMENT)
            times.append(time.perf_counter() - start)
        if completed.returncode != 0 or completed.stderr:
            sys.exit(f"{' '.join(arguments)} failed ({completed.returncode}):\n"
                     f"{completed.stderr.decode('utf-8', 'replace')[:2000]}")
    return statistics.median(times)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("tool")
    parser.add_argument("--runs", type=int, default=5, help="runs of each batch")
    parser.add_argument("--startup-runs", type=int, default=300, help="runs of each process")
    parser.add_argument("--lines", type=int, default=1_000_000, help="lines of each batch")
    options = parser.parse_args()
    tool = os.path.abspath(options.tool)

    rows = []  # case, time, reference, ratio or rate against its target
    with tempfile.TemporaryDirectory(prefix="mensura-tool-bench-") as folder:
        if shutil.which("hyperfine") and shutil.which("units"):
            # The machine's speed drifts over seconds: the two commands take
            # turns in rounds, and each round gives a ratio of its own.
            runs = max(1, options.startup_runs // STARTUP_ROUNDS)
            ours, theirs, ratios = [], [], []
            for _ in range(STARTUP_ROUNDS):
                ours.append(hyperfine_median(f"{tool} convert 5.5 ft m", runs, folder))
                theirs.append(hyperfine_median('units -1 -t "5.5 ft" m', runs, folder))
                ratios.append(ours[-1] / theirs[-1])
            rows.append(("convert 5.5 ft m", f"{statistics.median(ours) * 1e3:.2f} ms",
                         f"units {statistics.median(theirs) * 1e3:.2f} ms",
                         f"{statistics.median(ratios):.2f} (target <= {STARTUP_TARGET})"))
        else:
            rows.append(("convert 5.5 ft m", "skipped", "needs hyperfine and units", ""))

        numbers = os.path.join(folder, "numbers")
        texts = os.path.join(folder, "texts")
        write_numbers(numbers, options.lines)
        write_texts(texts, options.lines)
        for name, arguments, path in [("convert ft m", ["convert", "ft", "m"], numbers),
                                      ("parse m", ["parse", "m"], texts)]:
            seconds = batch_median([tool, *arguments], path, options.runs)
            rate = options.lines / seconds
            rows.append((f"{name}, {options.lines} lines", f"{seconds * 1e3:.0f} ms", "",
                         f"{rate / 1e6:.2f} M lines/s (target >= {LINES_TARGET / 1e6:.0f})"))

    header = ("case", "time", "reference", "ratio / target")
    widths = [max(len(row[i]) for row in [header, *rows]) for i in range(len(header))]
    for row in [header, *rows]:
        print("  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip())


if __name__ == "__main__":
    main()
