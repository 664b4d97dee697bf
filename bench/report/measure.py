#!/usr/bin/env python3
"""Measures every row of the benchmarks and writes the figures down.

  measure.py PROGRAM FIGURES [ROWS]

PROGRAM is kovra_bench; ROWS is a regular expression for the rows to measure again, while those that
FIGURES holds already stay. Processor time and heap are what the program reports. Instructions are
counted by callgrind over two runs of the same calls, few and more, so that all else cancels out.
"""

import json
import re
import subprocess
import sys
import tempfile

from figures import load

MEASURES = ("us", "ratio", "calls", "peak", "resident")
ENOUGH_US = 20_000  # so much work, in microseconds, is enough for callgrind,
TOO_LONG_US = 100_000  # and a row where one call takes so much takes it minutes: it is left out
SHOWN = "-_10000/"  # all rows but the longest lists, of which no table tells


def reported(program, rows):
    """What the program reports, as {row: {side: {measure: value}}}."""
    with tempfile.NamedTemporaryFile(suffix=".json") as out:
        subprocess.run([program, f"--benchmark_filter={rows}", f"--benchmark_out={out.name}"],
                       check=True)
        runs = json.load(out)["benchmarks"]
    return {run["name"].split("/")[0]: sides_of(run) for run in runs}


def sides_of(run):
    row = {}
    for side in (key.removesuffix("_us") for key in run if key.endswith("_us")):
        values = {measure: run.get(f"{side}_{measure}") for measure in MEASURES}
        if values["calls"] is None:
            continue  # a time for one entry is no side
        row[side] = {measure: value for measure, value in values.items() if value is not None}
        if "text_bytes" in run:
            row[side]["text"] = run["text_bytes"]
    return row


def collected(program, row, side, calls):
    command = ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", program,
               f"--benchmark_filter=^{row}/", f"--side={side}", f"--calls={calls}"]
    run = subprocess.run(command, check=True, capture_output=True, text=True)
    return int(re.search(r"Collected : (\d+)", run.stderr).group(1))


def instructions(program, row, side, microseconds):
    """Instructions of one call. The first one is not counted: it is paid once by each process."""
    more = max(1, min(1000, int(ENOUGH_US / microseconds)))
    few = collected(program, row, side, 1)
    return round((collected(program, row, side, 1 + more) - few) / more)


def count(program, name, row):
    for side, values in row.items():
        values["instructions"] = instructions(program, name, side, values["us"])
        print(f"{name}: {side}: {values['instructions']:,} instructions", flush=True)


def rounded(value):
    return value if isinstance(value, int) else float(f"{value:.4g}")


def whole(values):
    """Counts are whole numbers; times and ratios have four digits."""
    counts = ("calls", "peak", "resident", "text", "instructions")
    return {key: int(value) if key in counts else rounded(value) for key, value in values.items()}


def main(program, path, rows=SHOWN):
    known = load(path)
    for name, row in reported(program, rows).items():
        if all(values["us"] < TOO_LONG_US for values in row.values()):
            count(program, name, row)
        row = {side: whole(values) for side, values in row.items()}
        known[name] = row
        with open(path, "w", encoding="utf-8") as file:
            json.dump({"rows": known}, file, indent=1)
            file.write("\n")


if __name__ == "__main__":
    main(*sys.argv[1:])
