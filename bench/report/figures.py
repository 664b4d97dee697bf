"""Figures of the benchmarks: what measure.py writes down, and what tables.py and chart.py show.

A file of figures is JSON, {"rows": {row: {side: {...}}}}. Of a side it holds what the program reports
(see compare() in support/bench_support.hpp) and, as counted by callgrind, "instructions".
"""

import json
import os

BARE = "bare_parse"

# The sides in the words of the documentation, in the order in which they are shown.
SIDES = {
    "kovra": "Kovra",
    "pugixml": "pugixml, by hand",
    "tinyxml2": "tinyxml2, by hand",
    "expat": "expat, by hand",
    "libxml2": "libxml2, by hand",
    "tinyxml_by_hand": "TinyXML, by hand",
    BARE: "TinyXML, bare parse",
}

# The rows that every library reads.
COMMON = {
    "general_status": "general status",
    "access_points_200": "200 access points",
    "media_cards_200": "200 media cards",
    "configuration": "configuration",
}


def load(path):
    """The rows of a file; none while there is no such file."""
    if not os.path.exists(path):
        return {}
    with open(path, encoding="utf-8") as file:
        return json.load(file)["rows"]


def other_side(row):
    """The side that a row's ratio is against when it has but one."""
    return next(side for side in row if side != "kovra")


def relative(row, side, to):
    """Processor time of one call of `side` in terms of one of `to`, by the ratios within the run."""
    ratio = {"kovra": 1} | {name: values["ratio"] for name, values in row.items() if name != "kovra"}
    return ratio[to] / ratio[side]
