#!/usr/bin/env python3
"""Prints the handbook of the printer's vocabulary: what the tool knows of all messages.

  handbook.py [--check] [--html] TOOL FILE

TOOL is the program `kovra`; all that is printed comes from it. FILE is Markdown or, with --html, a
page that needs nothing else. With --check nothing is written, and the result says whether FILE is
what the tool prints.
"""

import argparse
import json
import subprocess
import sys

import catalogue
import html_page
import markdown
from blocks import Code, Heading, Link, Paragraph, Table

FEW = 6  # as many words stand beside their member; more have a table of their own

FORMS = {
    "setting": "setting",
    "ipv4": "IPv4 address",
    "hardware_address": "hardware address",
    "hexadecimal": "whole number, no sign, as `0x1A`",
}
KINDS = {
    "integer": "whole number",
    "natural": "whole number, no sign",
    "real": "number with a fraction",
}


def introduction(catalogue_):
    around = [Code(name) for name in catalogue_.unbound]
    return [
        Heading(1, "", "Handbook of the vocabulary"),
        Paragraph(["All messages of the printer that Kovra reads or writes, with their elements, words "
                   "and codes, and all that Kovra may remark on them. It is printed from the library's "
                   "own catalogue (", Code("scripts/documents"), "), so it is what the library does."]),
        Paragraph(["A member is named as in the records of the headers and in the JSON; ", Code("[]"),
                   " stands behind a list. Its elements, or attributes, are those below the root of the "
                   "reply; where there are several, each carries it. A setting is a value between bounds, "
                   "in the text and in the attributes ", Code("min"), " and ", Code("max"),
                   ". Secrets are shown as ", Code("******"), " unless asked for. ",
                   Code("kovra explain"), " tells the same of one name."]),
        Paragraph(["These names carry nothing by themselves; they stand around others, or beside them: ",
                   *separated(around), "."]),
    ]


def separated(spans):
    """The spans with commas between them."""
    out = []
    for span in spans:
        out += [", ", span] if out else [span]
    return out


def use_of(message):
    uses = [Code("kovra decode")] if message.read else []
    return uses + ([Code("kovra compose " + message.command)] if message.written else [])


def overview(messages):
    rows = [[[Link(message.name, message.name)], separated(map(Code, message.roots)),
             [message.title], separated(use_of(message))] for message in messages]
    return [Heading(2, "messages", "Messages"),
            Table(["Message", "Root", "What it tells", "Verbs"], rows)]


def kind_of(member):
    if member.form:
        return code_in_text(FORMS[member.form])
    if member.kind == "text" and member.most_bytes:
        return [f"text, at most {member.most_bytes} bytes"]
    if member.words and member.kind in ("list", "record"):
        return [{"list": "list of keywords", "record": "flags"}[member.kind]]
    return [KINDS.get(member.kind, member.kind)]


def code_in_text(text):
    return [Code(piece) if i % 2 else piece for i, piece in enumerate(text.split("`"))]


def words_of(words):
    """Words with their codes; those that share a code stand behind it."""
    spans = []
    for code, names in words.by_code():
        spans.append([*separated(map(Code, names)), f" {code}"])
    out = []
    for span in spans:
        out += ["; ", *span] if out else span
    return out


def remarks_on(member):
    remarks = []
    if member.words and len(member.words.pairs) <= FEW:
        remarks.append(words_of(member.words))
    elif member.words:
        remarks.append([Link(f"{len(member.words.pairs)} words", member.words.anchor)])
    if member.secret:
        remarks.append(["secret"])
    if member.title:
        remarks.append([member.title])
    out = []
    for remark in remarks:
        out += ["; ", *remark] if out else remark
    return out


def choice_row(choice):
    takes = choice["form"]
    if "least" in choice:
        takes += f" from {choice['least']} to {choice['most']}"
    if choice["required"]:
        takes += ", required"
    title = [" ".join(choice["title"].split())]
    words = separated(map(Code, choice.get("words", [])))
    return [[Code(choice["name"])], [takes], [*title, *([": "] if words else []), *words]]


def chapter(message):
    blocks = [Heading(3, message.name, message.name)]
    text = [message.title[:1].upper() + message.title[1:], "."]
    if message.roots:
        text += [" Root ", *separated(map(Code, message.roots)), "."]
    text += [" For ", *separated(use_of(message)), "."]
    if message.required:
        text += [" To compose it takes ", *separated(map(Code, message.required)), "."]
    blocks.append(Paragraph(text))
    if message.choices:
        blocks.append(Table(["Choice", "Takes", "What it does"], map(choice_row, message.choices)))
    rows = [[[Code(member.path)], kind_of(member), separated(map(Code, member.elements)),
             remarks_on(member)] for member in message.members]
    blocks.append(Table(["Member", "Kind", "Elements", "Words, codes, remarks"], rows))
    return blocks


def words_chapter(vocabularies):
    blocks = [Heading(2, "words", "Words and codes"),
              Paragraph(["Sets of more than a few words. Words of one code stand in one row."])]
    for words in vocabularies:
        if len(words.pairs) <= FEW:
            continue
        blocks.append(Heading(3, words.anchor, "Words of " + words.members[0]))
        also = words.members[1:]
        if also:
            blocks.append(Paragraph(["Also of ", *separated(map(Code, also)), "."]))
        blocks.append(Table(["Code", "Words"], [[[str(code)], separated(map(Code, names))]
                                               for code, names in words.by_code()]))
    return blocks


def findings_chapter(findings):
    rows = [[[Code(finding["id"])], [finding["severity"]], [Code(finding["kind"])],
             [finding["title"] + ": " + finding["explanation"]]] for finding in findings]
    return [Heading(2, "findings", "Notes and refusals"),
            Paragraph(["What may be said of a reply. An id is never used again for something else. ",
                       Code("kovra explain K104"), " shows an example as well."]),
            Table(["Id", "Severity", "Kind", "What it means"], rows)]


def index(catalogue_):
    rows = [[[Code(name)], separated(Link(message, message) for message in messages)]
            for name, messages in catalogue_.index()]
    return [Heading(2, "index", "Index of elements and words"),
            Table(["Element or word", "Messages"], rows)]


def handbook(known):
    blocks = introduction(known) + overview(known.messages)
    blocks.append(Heading(2, "members", "Members"))
    for message in known.messages:
        blocks += chapter(message)
    return blocks + words_chapter(known.vocabularies) + findings_chapter(known.findings) + index(known)


def told_by(tool, *arguments):
    return json.loads(subprocess.run([tool, *arguments, "--format", "json"], check=True,
                                     stdout=subprocess.PIPE).stdout)


def main():
    parser = argparse.ArgumentParser(description="Prints the handbook of the vocabulary.")
    parser.add_argument("--check", action="store_true")
    parser.add_argument("--html", action="store_true")
    parser.add_argument("tool")
    parser.add_argument("file")
    arguments = parser.parse_args()
    known = catalogue.Catalogue(told_by(arguments.tool, "list"),
                                told_by(arguments.tool, "list", "--findings"),
                                told_by(arguments.tool, "vocabulary"))
    render = html_page.page if arguments.html else markdown.text
    wanted = render(handbook(known))
    if arguments.check:
        with open(arguments.file, encoding="utf-8") as file:
            return 0 if file.read() == wanted else f"{arguments.file} tells something else: run scripts/documents"
    with open(arguments.file, "w", encoding="utf-8") as file:
        file.write(wanted)
    return 0


if __name__ == "__main__":
    sys.exit(main())
