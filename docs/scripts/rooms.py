#!/usr/bin/env python3
"""Draws the rooms of the house, with an arrow wherever a file of one includes a file of another.

  rooms.py [--check] TREE DRAWING

TREE is the folder of the sources, DRAWING the SVG file. The arrows are those of the tree; where
they go on the page stands below. An arrow or a room that is new, or gone, ends the script with its
name: whoever adds one says where it belongs. With --check nothing is written, and the result says
whether DRAWING is the right one.
"""

import argparse
import os
import pathlib
import re
import sys
from html import escape

WIDTH = 760
INCLUDE = re.compile(r'^\s*#\s*include\s*["<]([^">]+)[">]', re.MULTILINE)
FAMILIES = "families"

# The face is what a host of today includes; the other public headers are the classic ones.
FACE_HEADERS = {"kovra.h", "kovra.hpp", "kovra_records.hpp", "kovra_value.hpp"}

# x, y, width, height, name and what lives there.
ROOMS = {
    "src/face": (20, 80, 590, 52, "src/face/", "values, findings, compose; the catalogue"),
    "tools/kovra": (630, 80, 110, 52, "tools/kovra/", "the verbs"),
    FAMILIES: (20, 172, 480, 92, "src/<family>/", "words, tables, messages, public classes"),
    "src/shared": (60, 304, 180, 52, "src/shared/", "tables of two families"),
    "src/frame": (130, 396, 430, 52, "src/frame/", "scanner, tree, rows, walk, sinks"),
    "include/classic": (20, 488, 450, 52, "include/kvx*.h", "classes and records, C++11"),
    "include/face": (540, 488, 200, 52, "include/kovra*.h*", "the face, C++17 and C99"),
    "TinyXML": (20, 580, 520, 32, "TinyXML", ""),
}

# From, to: the x of a vertical arrow; one without goes from side to side.
ARROWS = {
    ("src/face", FAMILIES): 250,
    ("src/face", "src/frame"): 525,
    ("src/face", "include/face"): 585,
    ("tools/kovra", "include/face"): 685,
    (FAMILIES, "src/shared"): 160,
    (FAMILIES, "src/frame"): 320,
    (FAMILIES, "include/classic"): 40,
    ("src/shared", "src/frame"): 185,
    ("src/shared", "include/classic"): 95,
    ("src/frame", "include/classic"): 300,
    ("src/frame", "include/face"): 550,
    ("src/frame", "TinyXML"): 505,
    ("include/face", "include/classic"): None,
    ("include/classic", "TinyXML"): 240,
}

STYLE = """
    text { font: 13px system-ui, sans-serif; fill: #1f2328; }
    .title { font-size: 16px; font-weight: 600; }
    .room { font-weight: 600; }
    .quiet { fill: #59636e; }
    .ground { fill: #ffffff; }
    .box { fill: #f6f8fa; stroke: #8c959f; }
    .public { fill: #ddf4ff; stroke: #54aeff; }
    .family { fill: #ffffff; stroke: #8c959f; }
    .small { font-size: 11.5px; }
    .arrow { stroke: #59636e; stroke-width: 1.5; fill: none; marker-end: url(#head); }
    .head { fill: #59636e; }
    @media (prefers-color-scheme: dark) {
      text { fill: #f0f6fc; }
      .quiet { fill: #9198a1; }
      .ground { fill: #0d1117; }
      .box { fill: #151b23; stroke: #656c76; }
      .public { fill: #0c2d6b; stroke: #388bfd; }
      .family { fill: #0d1117; stroke: #656c76; }
      .arrow { stroke: #9198a1; }
      .head { fill: #9198a1; }
    }
"""


def room_of(path):
    """The room of a file, and of a family which one."""
    first, second = path.parts[0], path.parts[1]
    if first == "include":
        return ("include/face" if path.name in FACE_HEADERS else "include/classic"), ""
    name = f"{first}/{second}"
    return (name, "") if name in ROOMS else (FAMILIES, second)


def included(tree, path, name):
    """The file of the tree that is meant; none for one of the system."""
    for folder in (path.parent, pathlib.Path("include"), pathlib.Path("src")):
        if (tree / folder / name).is_file():
            return pathlib.Path(os.path.normpath(folder / name))
    return None


def look(tree):
    """The arrows between rooms, and the names of the families."""
    arrows, families = set(), set()
    sources = sorted(path.relative_to(tree) for folder in ("include", "src", "tools")
                     for path in (tree / folder).rglob("*") if path.suffix in (".h", ".hpp", ".cpp"))
    for path in sources:
        room, family = room_of(path)
        families |= {family} - {""}
        for name in INCLUDE.findall((tree / path).read_text(encoding="utf-8")):
            target = included(tree, path, name)
            if target is None:
                to, other = ("TinyXML" if name == "tinyxml.h" else room), family
            else:
                to, other = room_of(target)
            if room == to == FAMILIES and family != other:
                sys.exit(f"{path} includes {target}: a family knows no other")
            if room != to:
                arrows.add((room, to))
    return arrows, sorted(families)


def text(x, y, words, kind=""):
    return f'  <text x="{x}" y="{y}" class="{kind}">{escape(words)}</text>'


def box(room):
    x, y, width, height, name, purpose = ROOMS[room]
    kind = "public" if room.startswith("include/") else "box"
    out = [f'  <rect x="{x}" y="{y}" width="{width}" height="{height}" rx="6" class="{kind}"/>',
           text(x + 12, y + 21, name, "room")]
    return out + ([text(x + 12, y + 40, purpose, "quiet")] if purpose else [])


def chips(families):
    """A small box for each family, side by side within theirs."""
    x, y, width, height = ROOMS[FAMILIES][:4]
    each, out = (width - 18) / len(families), []
    for i, name in enumerate(families):
        left = x + 12 + i * each
        out.append(f'  <rect x="{left:.1f}" y="{y + height - 38}" width="{each - 6:.1f}" height="26" '
                   'rx="4" class="family"/>')
        out.append(f'  <text x="{left + each / 2 - 3:.1f}" y="{y + height - 20}" '
                   f'class="small" text-anchor="middle">{escape(name)}</text>')
    return out


def arrow(source, target, x):
    left, top, _, height = ROOMS[source][:4]
    if x is not None:
        return f'  <path d="M{x} {top + height} V{ROOMS[target][1] - 2}" class="arrow"/>'
    return (f'  <path d="M{left} {top + height // 2} H{ROOMS[target][0] + ROOMS[target][2] + 2}" '
            'class="arrow"/>')


def drawn(families):
    height = max(y + height for _, y, _, height, _, _ in ROOMS.values()) + 20
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{height}" '
           f'viewBox="0 0 {WIDTH} {height}" role="img">',
           "  <title>The rooms of the house and what each includes</title>",
           f"  <style>{STYLE}  </style>",
           '  <defs><marker id="head" viewBox="0 0 8 8" refX="7" refY="4" markerWidth="7" '
           'markerHeight="7" orient="auto"><path d="M0 0 L8 4 L0 8 z" class="head"/></marker></defs>',
           f'  <rect width="{WIDTH}" height="{height}" rx="6" class="ground"/>',
           text(20, 32, "The rooms", "title"),
           text(20, 54, "An arrow: some file of one room includes a file of the other. "
                "Public headers are blue.", "quiet")]
    for room in ROOMS:
        out += box(room)
    out += chips(families)
    out += [arrow(*ends, x) for ends, x in ARROWS.items()]
    return "\n".join([*out, "</svg>", ""])


def main():
    parser = argparse.ArgumentParser(description="Draws the rooms of the house.")
    parser.add_argument("--check", action="store_true")
    parser.add_argument("tree", type=pathlib.Path)
    parser.add_argument("drawing")
    arguments = parser.parse_args()
    arrows, families = look(arguments.tree)
    for source, target in sorted(arrows ^ ARROWS.keys()):
        sys.exit(f"{source} -> {target}: " +
                 ("an arrow that is not drawn" if (source, target) in arrows else "no file includes it any more"))
    wanted = drawn(families)
    if arguments.check:
        with open(arguments.drawing, encoding="utf-8") as file:
            return 0 if file.read() == wanted else f"{arguments.drawing} is another: run scripts/documents"
    with open(arguments.drawing, "w", encoding="utf-8") as file:
        file.write(wanted)
    return 0


if __name__ == "__main__":
    sys.exit(main())
