#!/usr/bin/env python3
"""What somebody would write in an afternoon to do what `kovra decode --stream --format jsonl` does.

Reads general-status replies from standard input, one document behind the other, and prints each as
a line of JSON in the same form. It knows this one message, and tells nothing of what it does not
know.
"""

import json
import sys
import xml.etree.ElementTree as ElementTree

STATES = {"printing": 5}
LAMINATOR_STATES = {"not_used": 7}
END = "</get_general_status>"


def keyword(codes, word):
    return {"code": codes.get(word, 0), "name": word}


def value_of(name, text):
    if name == "printer_state":
        return keyword(STATES, text)
    if name == "laminator_state":
        return keyword(LAMINATOR_STATES, text)
    if name == "printer_lock":
        return text == "locked"
    return int(text, 0)


def decoded(number, text):
    reply = {"source": "-", "number": number, "kovra": 1}
    try:
        root = ElementTree.fromstring(text)
    except ElementTree.ParseError as error:
        return reply | {"ok": False, "error": {"message": str(error)}}
    record = {child.tag: value_of(child.tag, child.text) for child in root}
    readings = [{"document": "general-status", "result": True, "record": record}]
    return reply | {"ok": True, "root": root.tag, "readings": readings, "notes": []}


def main():
    number, lines = 0, []
    for line in sys.stdin:
        lines.append(line)
        if line.rstrip().endswith(END):
            number += 1
            document = "".join(lines).encode("utf-8")
            print(json.dumps(decoded(number, document), separators=(",", ":")))
            lines = []


if __name__ == "__main__":
    main()
