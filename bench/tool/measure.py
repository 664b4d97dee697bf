#!/usr/bin/env python3
"""Measures the tool on streams of replies and writes the figures down.

  measure.py TOOL REPLY FIGURES [REPLIES]
  measure.py --check TOOL REPLY

TOOL is kovra as it is installed, REPLY a general status, REPLIES how many the streams hold. The ways
of decoding them take turns, so that a busy machine slows all of them; processor time is the kernel's account of the
process, instructions are callgrind's. A ratio is that of the medians.
With --check nothing is measured, and the result says whether all ways give the same lines.
"""

import json
import os
import pathlib
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

ROUNDS = 9
PYTHON = pathlib.Path(__file__).with_name("elementtree.py")


def begun(command, stream, output=os.devnull):
    with open(stream, "rb") as source, open(output, "wb") as sink:
        return subprocess.Popen(command, stdin=source, stdout=sink, stderr=subprocess.DEVNULL)


def used(command, stream, output=os.devnull, processes=1):
    """Processor time and wall clock in seconds, of so many processes beside each other."""
    begin = time.monotonic()
    processor = 0
    for process in [begun(command, stream, output) for _ in range(processes)]:
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode != 0:
            sys.exit(f"{command} ended with {process.returncode}")
        processor += usage.ru_utime + usage.ru_stime
    return processor, time.monotonic() - begin


def resident(command, stream):
    """Most resident memory in KiB, while all but the last replies are read and more may come. The
    kernel's account in the end has that of the process, too, which started this one."""
    process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    with open(stream, "rb") as source:
        shutil.copyfileobj(source, process.stdin)
    process.stdin.flush()
    status = pathlib.Path(f"/proc/{process.pid}/status").read_text()
    process.stdin.close()
    process.wait()
    return int(re.search(r"VmHWM:\s+(\d+)", status)[1])


def stream_of(reply, count, path):
    with open(path, "wb") as file:
        for _ in range(count // 1000):
            file.write(reply * 1000)


def require_equal(ways, stream, folder):
    """All ways must give the same lines, or there is nothing to compare."""
    outputs = []
    for number, command in enumerate(ways):
        outputs.append(folder / f"output{number}")
        used(command, stream, outputs[-1])
    lines = [list(map(json.loads, output.read_text().splitlines())) for output in outputs]
    if not lines[0] or any(other != lines[0] for other in lines[1:]):
        sys.exit("the ways to decode give different lines")


def started(command):
    """Instructions of a process that does nearly nothing."""
    valgrind = ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null"]
    run = subprocess.run(valgrind + command, check=True, capture_output=True, text=True)
    return int(re.search(r"Collected : (\d+)", run.stderr).group(1))


def ways_of(tool):
    decode = [tool, "decode", "--stream", "--format", "jsonl"]
    return {"one": decode, "two": [*decode, "-j", "2"], "python": [sys.executable, str(PYTHON)]}


def check(tool, reply_path, folder):
    stream_of(pathlib.Path(reply_path).read_bytes(), 2000, folder / "short")
    require_equal(ways_of(tool).values(), folder / "short", folder)


def measured(tool, reply_path, count, folder):
    check(tool, reply_path, folder)
    reply = pathlib.Path(reply_path).read_bytes()
    ways = ways_of(tool)
    stream, short, long = (folder / name for name in ("stream", "short", "long"))
    stream_of(reply, count, stream)

    # What two cores of this machine are worth: two processes that share nothing.
    runs = {name: (command, 1) for name, command in ways.items()} | {"beside": (ways["one"], 2)}
    times = {name: [] for name in runs}
    walls = {name: [] for name in runs}
    for _ in range(ROUNDS):
        for name, (command, processes) in runs.items():
            processor, wall = used(command, stream, processes=processes)
            times[name].append(processor)
            walls[name].append(wall)
    processor = {name: statistics.median(all) for name, all in times.items()}
    wall = {name: statistics.median(all) for name, all in walls.items()}

    stream_of(reply, 10 * count, long)
    return {
        "replies": count,
        "microseconds": round(processor["one"] / count * 1e6, 2),
        "two_workers": round(wall["one"] / wall["two"], 2),
        "two_workers_processor": round(processor["two"] / processor["one"], 2),
        "two_processes": round(2 * wall["one"] / wall["beside"], 2),
        "python": round(processor["python"] / processor["one"], 1),
        "resident_short": resident(ways["one"], short),
        "resident_long": resident(ways["one"], long),
        "start": started([tool, "--version"]),
        "start_decode": started([tool, "decode", str(reply_path)]),
        "load": round(os.getloadavg()[0], 1),
    }


def main(arguments):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        if arguments[0] == "--check":
            return check(*arguments[1:], folder)
        tool, reply, path, *count = arguments
        figures = measured(tool, reply, int(count[0]) if count else 200_000, folder)
    with open(path, "w", encoding="utf-8") as file:
        json.dump(figures, file, indent=1)
        file.write("\n")
    print(json.dumps(figures, indent=1))
    return None


if __name__ == "__main__":
    main(sys.argv[1:])
