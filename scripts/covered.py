"""Says which lines and branches below some folders have been run, as gcov counted them.

    covered.py BUILD COVERED FOLDER...

COVERED becomes JSON: for each file its lines, by number, with how often each ran and how often each
of its branches was taken. A template counts as one, whatever it is instantiated with; a lambda in
one counts each time.

A branch is where code goes one way or another without any exception. So where a call leads to, its
handler or the next statement, is none, nor is what only handlers and clean-ups decide. gcov's text,
which other programs read, does not mark the handlers of calls that never ran: every header then
seems to have branches that nobody takes, in each object file that keeps a copy of its functions.
gcov's JSON marks them. Only the text marks blocks that nothing but exceptions leads to, and only
until one does: hence a second look at each object file as if nothing had run.
"""

import concurrent.futures
import functools
import itertools
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
from collections import defaultdict
from pathlib import Path
from typing import Any

ROOT = Path(__file__).resolve().parent.parent
# What has no code of its own: braces, an `else`, a comment.
EMPTY = re.compile(r"[\s{}();]*(else)?[\s{}();]*(//.*)?")
MARK = re.compile(r"//.*GCOVR_EXCL_(BR_)?LINE")

SOURCE = re.compile(r" *-: *0:Source:(.*)")
LINE = re.compile(r" *(?:-|[#=]+): *([0-9]+):")
BLOCK = re.compile(r" *([$%])+: *[0-9]+-block ")

Place = tuple[str, int]  # a file, relative to the root, and a line of it


def gcov(notes: Path, folder: Path, *options: str) -> list[str]:
    """What gcov says; sources are found from the folder in which they were compiled."""
    asked = ["gcov", "--stdout", "--branch-probabilities", *options, str(notes)]
    answer = subprocess.run(asked, cwd=folder, check=True, capture_output=True, text=True)
    return answer.stdout.splitlines()


def counts(notes: Path, folder: Path) -> dict[Place, list[dict[str, Any]]]:
    """Each line's counts, once for each instantiation."""
    lines = defaultdict(list)
    for file in json.loads("".join(gcov(notes, folder, "--json-format")))["files"]:
        name = os.path.relpath(folder / file["file"], ROOT)
        for line in file["lines"]:
            lines[name, line["line_number"]].append(line)
    return lines


def exceptional(notes: Path, folder: Path) -> dict[Place, list[bool]]:
    """For each branch of a line, in the order of the counts, whether only exceptions lead to it."""
    with tempfile.TemporaryDirectory() as elsewhere:
        copy = Path(shutil.copy(notes, elsewhere))
        text = gcov(copy, folder, "--all-blocks")
    flags = defaultdict(list)
    name, number, is_exceptional = "", 0, False
    for line in text:
        if line.startswith("branch"):
            flags[name, number].append(is_exceptional)
        elif block := BLOCK.match(line):
            is_exceptional = block[1] == "$"
        elif source := SOURCE.match(line):
            name = os.path.relpath(folder / source[1], ROOT)
        elif place := LINE.match(line):
            number = int(place[1])
    return flags


def choices(branches: list[dict[str, Any]], is_exceptional: list[bool]) -> list[int]:
    """How often each branch was taken that is one; a call's return stands before its handler."""
    is_handler = [branch["throw"] for branch in branches] + [False]
    return [branch["count"] for index, branch in enumerate(branches)
            if not (is_handler[index] or is_handler[index + 1] or is_exceptional[index])]


class Line:
    """How often a line ran, and how often each of its branches was taken."""

    def __init__(self) -> None:
        self.count = 0
        self.branches: list[int] = []

    def add(self, count: int, branches: list[int]) -> None:
        """Adds what an instantiation, or the same code in another object file, has counted."""
        self.count += count
        self.branches += [0] * (len(branches) - len(self.branches))
        for index, taken in enumerate(branches):
            self.branches[index] += taken


def of_object(notes: Path, build: Path, folders: tuple[str, ...]) -> dict[Place, Line]:
    """What one object file has counted."""
    flags = exceptional(notes, build)
    lines = {}
    for place, instances in counts(notes, build).items():
        if not place[0].startswith(folders):
            continue
        lines[place] = Line()
        every = sum(len(instance["branches"]) for instance in instances)
        # The text leaves out some templates.
        left_out = iter(flags[place] if len(flags[place]) == every else [False] * every)
        for instance in instances:
            branches = instance["branches"]
            taken = choices(branches, list(itertools.islice(left_out, len(branches))))
            lines[place].add(instance["count"], taken)
    return lines


def of_build(build: Path, folders: tuple[str, ...]) -> dict[Place, Line]:
    """What all object files of a build have counted together."""
    sums: dict[Place, Line] = defaultdict(Line)
    with concurrent.futures.ProcessPoolExecutor() as pool:
        notes = sorted(build.rglob("*.gcno"))
        read = functools.partial(of_object, build=build, folders=folders)
        for lines in pool.map(read, notes):
            for place, line in lines.items():
                sums[place].add(line.count, line.branches)
    return sums


def kept(name: str, lines: list[tuple[int, Line]]) -> list[dict[str, Any]]:
    """The lines of a file that have code and no mark, in order."""
    code = (ROOT / name).read_text().splitlines()
    result = []
    for number, line in lines:
        text = code[number - 1]
        mark = MARK.search(text)
        if EMPTY.fullmatch(text) or (mark and not mark[1]):
            continue
        branches = [] if mark else line.branches
        result.append({"line": number, "count": line.count, "branches": branches})
    return result


def main() -> None:
    build, result, *folders = sys.argv[1:]
    below = tuple(folder.rstrip("/") + "/" for folder in folders)
    files = defaultdict(list)
    for (name, number), line in sorted(of_build(Path(build).resolve(), below).items()):
        files[name].append((number, line))
    Path(result).write_text(json.dumps({name: kept(name, lines) for name, lines in files.items()}))


if __name__ == "__main__":
    main()
