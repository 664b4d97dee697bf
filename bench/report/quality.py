#!/usr/bin/env python3
"""Draws as bars what the proofs of docs/quality.md leave over.

  quality.py [--check] CHART FIGURES DOCUMENT

CHART is the SVG file. FIGURES has for each proof the share that it covers in per cent, now and where
it was measured then before, and the least that is aimed at; those of now have to stand in DOCUMENT,
too. With --check nothing is written, and the result says whether CHART is the right one.
"""

import json
import sys

from chart import BAR, BETWEEN, GAP, HEAD, MARGIN, NUMBERS, STYLE, TITLE, WIDTH, keep, text

SCALE = WIDTH - 2 * MARGIN - NUMBERS - 60
MOST = 60  # per cent at the right end


def length(share):
    return (100 - share) * SCALE / MOST


def drawn(proofs):
    out, y = [], HEAD
    for proof in proofs:
        out.append(text(MARGIN, y + 12, proof["what"], "row"))
        y += TITLE
        bars = [("now", "kovra"), ("before", "before")]
        shown = [(name, kind) for name, kind in bars if name in proof]
        for name, kind in shown:
            left = 100 - proof[name]
            words = f"{left:.1f} %" + (", before" if name == "before" else "")
            out.append(f'  <rect x="{MARGIN}" y="{y}" width="{length(proof[name]):.1f}" '
                       f'height="{BAR}" rx="2" class="{kind}"/>')
            beyond = max(length(proof[name]), length(proof["aim"]) if name == "now" else 0)
            out.append(text(MARGIN + beyond + 8, y + 11, words, "number"))
            y += BAR + GAP
        at = MARGIN + length(proof["aim"])
        top = y - len(shown) * (BAR + GAP) - 3
        out.append(f'  <line x1="{at:.1f}" y1="{top}" x2="{at:.1f}" y2="{top + BAR + 6}" class="line"/>')
        y += BETWEEN
    head = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{y}" '
            f'viewBox="0 0 {WIDTH} {y}" role="img">',
            "  <title>What the proofs leave over</title>",
            f"  <style>{STYLE}  </style>",
            f'  <rect width="{WIDTH}" height="{y}" rx="6" class="ground"/>',
            text(MARGIN, 28, "What the proofs leave over", "title"),
            text(MARGIN, 48, "in per cent; the dashed line is the most that is aimed at; less is better",
                 "quiet")]
    return "\n".join([*head, *out, "</svg>", ""])


def main(arguments):
    check = arguments[0] == "--check"
    chart, figures, document = arguments[1:] if check else arguments
    with open(figures, encoding="utf-8") as file:
        proofs = json.load(file)
    with open(document, encoding="utf-8") as file:
        text = file.read()
    for proof in proofs:
        if proof["now"] != 100 and f"{proof['now']} %" not in text:
            return f"{document} has no {proof['now']} %: {proof['what']}"
    return keep(chart, drawn(proofs), check, "bench/report/quality.py")


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
