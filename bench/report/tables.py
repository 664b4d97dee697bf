#!/usr/bin/env python3
"""Prints the tables of docs/performance.md from figures, between the marks that the document holds.

  tables.py [--check] DOCUMENT BEFORE NOW TOOL

A table stands between <!-- table: NAME --> and <!-- end -->. BEFORE and NOW are files of figures;
what NOW lacks is shown as it was before. TOOL holds those of the tool. With --check nothing is written, and the
result says whether the document holds the tables that it should.
"""

import json
import re
import sys

from figures import BARE, COMMON, SIDES, load, other_side, relative

MOST = {  # what is promised: ÷ bare parse, ÷ pugixml by hand
    "general_status": (0.10, 0.75),
    "access_points_200": (0.11, 0.80),
    "media_cards_200": (0.13, 0.90),
    "configuration": (0.13, 0.80),
}
FURTHER = ("job_status", "job_list_100", "sensor_information", "capabilities_read", "media_read",
           "read_security_keys")
WRITERS = ("configuration_writing", "configuration_composing", "capabilities_write", "media_write",
           "write_security_keys", "write_key_change", "write_secure_directive",
           "write_motor_command")
FACE = {  # the row, what it is compared with, and what is promised of its instructions
    "face_read": ("`read<KVGeneralStatus>`", "the classic entry", "÷ at most 1.30"),
    "face_decode": ("`decode` of the same reply", "bare parse", "at most 15,000"),
    "face_decode_access_points": ("`decode` of 200 access points", "bare parse",
                                  "at most 4,000,000"),
    "face_json": ("`toJson` of 200 access points", "nlohmann's dump", "fewer"),
}
ENTRIES = (10, 100, 1000)
LISTS = {"access points": "access_points_{}", "media cards": "media_read_{}"}


def table(heads, lines):
    rule = ["---"] + ["--:"] * (len(heads) - 1)
    return "\n".join("| " + " | ".join(cells) + " |" for cells in [heads, rule, *lines])


class Tables:
    def __init__(self, before, now, tool_figures):
        self.stages = [before, now]
        self.tool_figures = tool_figures
        self.latest = before | now

    def cell(self, row, value, form, most=None):
        """The value of a row before and now, and what it may be at most."""
        shown = " → ".join(form.format(value(stage[row])) for stage in self.stages if row in stage)
        return shown if most is None else f"{shown} (at most {most})"

    def own(self, row, measure):
        return self.cell(row, lambda sides: sides["kovra"][measure], "{:,}")

    def ratio(self, row, to, most=None, form="{:.2f}"):
        return self.cell(row, lambda sides: sides[to]["ratio"], form, most)

    def readers(self):
        heads = ["Row", "÷ bare TinyXML parse", "÷ pugixml by hand", "instructions", "heap calls"]
        return table(heads, [[title, self.ratio(row, BARE, f"{MOST[row][0]:.2f}"),
                              self.ratio(row, "pugixml", f"{MOST[row][1]:.2f}"),
                              self.own(row, "instructions"), self.own(row, "calls")]
                             for row, title in COMMON.items()])

    def libraries(self):
        heads = ["", "processor time ÷ bare parse", "instructions", "heap calls", "heap bytes"]
        lines = []
        for row, title in COMMON.items():
            lines.append([f"**{title}**", "", "", "", ""])
            sides = self.latest[row]
            lines += [[name, f"{relative(sides, side, BARE):.2f}"] +
                      [f"{sides[side][measure]:,}" for measure in ("instructions", "calls", "peak")]
                      for side, name in SIDES.items()]
        return table(heads, lines)

    def against_one(self, rows, other):
        def instructions(sides):
            return sides["kovra"]["instructions"] / sides[other_side(sides)]["instructions"]

        def ratio(sides):
            return sides[other_side(sides)]["ratio"]

        heads = ["Row", f"processor time ÷ {other}", f"instructions ÷ {other}", "heap calls"]
        return table(heads, [[f"`{row}`", self.cell(row, ratio, "{:.2f}"),
                              self.cell(row, instructions, "{:.2f}"), self.own(row, "calls")]
                             for row in rows])

    def further(self):
        return self.against_one(FURTHER, "bare parse")

    def writers(self):
        return self.against_one(WRITERS, "by hand")

    def face(self):
        heads = ["", "compared with", "processor time ÷", "instructions ÷", "instructions",
                 "promised", "heap calls"]
        lines = []
        for row, (title, other, promised) in FACE.items():
            sides = self.latest[row]
            ours, theirs = sides["kovra"], sides[other_side(sides)]
            lines.append([title, other, f"{theirs['ratio']:.2f}",
                          f"{ours['instructions'] / theirs['instructions']:.2f}",
                          f"{ours['instructions']:,}", promised,
                          f"{ours['calls']:,}"])
        return table(heads, lines)

    def tool(self):
        figures = self.tool_figures
        memory = " / ".join(f"{figures[key] / 1024:.1f} MB"
                            for key in ("resident_short", "resident_long"))
        count = figures["replies"]
        return table(["", "measured", "promised"], [
            ["processor time of a reply", f"{figures['microseconds']:.1f} µs", "at most 6 µs"],
            ["a straightforward Python program ÷ that", f"{figures['python']:.1f}", "at least 10"],
            ["`-j 2`: times as fast", f"{figures['two_workers']:.2f}", "at least 1.8 on idle cores"],
            ["two processes beside each other: as fast as", f"{figures['two_processes']:.2f}", ""],
            ["`-j 2`: processor time ÷", f"{figures['two_workers_processor']:.2f}", ""],
            [f"resident memory, 2,000 / {10 * count:,} replies", memory, "the same"],
            ["instructions of `kovra --version`", f"{figures['start']:,}", "at most 1,000,000"],
            ["instructions of `kovra decode` of one reply", f"{figures['start_decode']:,}", ""],
        ])

    def growth(self):
        heads = ["Entries"] + [f"instructions for one of the {name}" for name in LISTS]
        return table(heads, [[f"{count:,}"] + [
            self.cell(row.format(count), lambda sides, n=count: sides["kovra"]["instructions"] / n,
                      "{:,.0f}") for row in LISTS.values()] for count in ENTRIES])

    def longest(self):
        ratio = self.ratio("access_points_growth", "in_hundred_lists", "1.3", "{:.3f}")
        return table(["", "÷ one of 1,000"], [["processor time of one of 100,000", ratio]])

    def memory(self):
        def per_byte(side, measure):
            return lambda sides: sides[side][measure] / sides[side]["text"]

        row = "access_points_10MB"
        heads = ["", "heap ÷ bytes of text", "resident memory ÷ bytes of text"]
        return table(heads, [[name, self.cell(row, per_byte(side, "peak"), "{:.1f}",
                                              8 if side == "kovra" else None),
                              self.cell(row, per_byte(side, "resident"), "{:.1f}")]
                             for side, name in SIDES.items()])


def filled(text, tables):
    def fill(mark):
        return f"{mark[1]}\n\n{getattr(tables, mark[2])()}\n\n<!-- end -->"

    return re.sub(r"(<!-- table: (\w+) -->).*?<!-- end -->", fill, text, flags=re.DOTALL)


def main(arguments):
    check = arguments[0] == "--check"
    document, before, now, tool = arguments[1:] if check else arguments
    with open(document, encoding="utf-8") as file:
        text = file.read()
    with open(tool, encoding="utf-8") as file:
        tool_figures = json.load(file)
    tables = Tables(load(before), load(now), tool_figures)
    wanted = filled(text, tables)
    if check:
        return 0 if text == wanted else f"{document} holds other figures: run scripts/measure"
    with open(document, "w", encoding="utf-8") as file:
        file.write(wanted)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
