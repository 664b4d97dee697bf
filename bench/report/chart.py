#!/usr/bin/env python3
"""Draws the readers as bars: processor time in terms of a bare TinyXML parse of the same text.

  chart.py [--check] CHART BEFORE NOW

CHART is the SVG file. BEFORE and NOW are files of figures; what NOW lacks is shown as it was before. With --check nothing is written, and the result says whether CHART is the right one.
"""

import sys
from html import escape

from figures import BARE, COMMON, SIDES, load, relative

WIDTH, MARGIN, LABELS, NUMBERS = 760, 20, 190, 60
HEAD, TITLE, BAR, GAP, BETWEEN = 66, 22, 14, 6, 18
SCALE = WIDTH - 2 * MARGIN - LABELS - NUMBERS  # the length of the longest bar

STYLE = """
    text { font: 13px system-ui, sans-serif; fill: #1f2328; }
    .title { font-size: 16px; font-weight: 600; }
    .row { font-weight: 600; }
    .number { paint-order: stroke; stroke: #ffffff; stroke-width: 4px; }
    .quiet { fill: #59636e; }
    .ground { fill: #ffffff; }
    .bar { fill: #8c959f; }
    .kovra { fill: #0969da; }
    .before { fill: #80ccff; }
    .line { stroke: #59636e; stroke-dasharray: 3 3; }
    @media (prefers-color-scheme: dark) {
      text { fill: #f0f6fc; }
      .quiet { fill: #9198a1; }
      .number { stroke: #0d1117; }
      .ground { fill: #0d1117; }
      .bar { fill: #656c76; }
      .kovra { fill: #4493f8; }
      .before { fill: #1f4f8f; }
      .line { stroke: #9198a1; }
    }
"""


def bars_of(row, before, now):
    """Name, class and length of each bar of a row; the bare parse is the line at 1."""
    latest = (before | now)[row]
    bars = [(name, "kovra" if side == "kovra" else "bar", relative(latest, side, BARE))
            for side, name in SIDES.items() if side in latest and side != BARE]
    if row in now:
        bars.insert(1, ("Kovra, before", "before", relative(before[row], "kovra", BARE)))
    return bars


def text(x, y, words, kind="", anchor="start"):
    return f'  <text x="{x:.1f}" y="{y:.1f}" class="{kind}" text-anchor="{anchor}">{escape(words)}</text>'


def drawn(before, now):
    panels = {title: bars_of(row, before, now) for row, title in COMMON.items()}
    longest = max(length for bars in panels.values() for _, _, length in bars)
    start, unit = MARGIN + LABELS, SCALE / max(longest, 1)
    out, y = [], HEAD
    for title, bars in panels.items():
        out.append(text(MARGIN, y + 12, title, "row"))
        y += TITLE
        at, end = start + unit, y + len(bars) * (BAR + GAP)
        out.append(f'  <line x1="{at:.1f}" y1="{y - 4}" x2="{at:.1f}" y2="{end}" class="line"/>')
        for name, kind, length in bars:
            out.append(text(start - 8, y + 11, name, anchor="end"))
            out.append(f'  <rect x="{start}" y="{y}" width="{length * unit:.1f}" height="{BAR}" '
                       f'rx="2" class="{kind}"/>')
            out.append(text(start + length * unit + 6, y + 11, f"{length:.2f}", "number"))
            y += BAR + GAP
        y += BETWEEN
    height = y
    head = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{height}" '
            f'viewBox="0 0 {WIDTH} {height}" role="img">',
            "  <title>Processor time of readers in terms of a bare TinyXML parse</title>",
            f"  <style>{STYLE}  </style>",
            f'  <rect width="{WIDTH}" height="{height}" rx="6" class="ground"/>',
            text(MARGIN, 28, "Reading a reply into a record", "title"),
            text(MARGIN, 48, "processor time ÷ that of a bare TinyXML parse of the same text, "
                 "which is the dashed line; less is better", "quiet")]
    return "\n".join([*head, *out, "</svg>", ""])


def keep(chart, wanted, check, command):
    """Writes the chart; or only says whether it is there, and which command draws it."""
    if check:
        with open(chart, encoding="utf-8") as file:
            return 0 if file.read() == wanted else f"{chart} shows other figures: run {command}"
    with open(chart, "w", encoding="utf-8") as file:
        file.write(wanted)
    return 0


def main(arguments):
    check = arguments[0] == "--check"
    chart, before, now = arguments[1:] if check else arguments
    return keep(chart, drawn(load(before), load(now)), check, "scripts/measure")


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
