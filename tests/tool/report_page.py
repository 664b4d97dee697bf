#!/usr/bin/env python3
"""Reads a page of `kovra report` as a browser would, and prints what it says as JSON.

    report_page.py PAGE STYLE SCRIPT [MARK]

It complains about whatever is no such page: an element or an attribute that does not belong there,
elements that are not closed, a policy that does not name just what is embedded, a style or a script
that is another one than in these files, a character that no page may have, or MARK, a piece of
somebody else's text, where nothing isolates it.
"""

import base64
import hashlib
import html.parser
import json
import pathlib
import re
import sys

VOID = {"meta", "input"}
ATTRIBUTES = {
    "html": {"lang"}, "head": set(), "title": set(), "style": set(), "script": set(),
    "meta": {"charset", "http-equiv", "name", "content"}, "body": set(), "header": set(),
    "main": set(), "footer": set(), "time": {"datetime"}, "section": {"id"}, "h1": set(),
    "h2": set(), "h3": set(), "p": {"class"}, "b": set(), "bdi": set(), "ul": {"class"},
    "li": {"class"}, "a": {"href"}, "div": {"class", "role", "hidden"}, "label": set(),
    "input": {"type", "id", "autocomplete"}, "span": {"class", "id", "role"},
    "table": {"role"}, "caption": set(), "thead": {"role"},
    "tbody": {"role", "data-need", "data-share"}, "tr": {"role", "class"},
    "th": {"scope", "role", "data-by", "aria-sort"},
    "td": {"role", "colspan", "data-label"}, "dl": set(), "dt": set(), "dd": {"class"},
    "meter": {"min", "max", "low", "high", "optimum", "value", "aria-label"},
    "details": set(), "summary": set(),
}
# All but the tabs and the line ends of the page's own, and what rearranges a line.
UNFIT = re.compile("[\0-\x08\x0b-\x1f\x7f-\x9f\u061c\u200e\u200f\u2028-\u202e\u2066-\u2069\ufeff]")


class Node:
    def __init__(self, name, attributes):
        self.name = name
        self.attributes = attributes
        self.children = []

    def all(self, name):
        for child in self.children:
            if isinstance(child, Node):
                if child.name == name:
                    yield child
                yield from child.all(name)

    def text(self):
        return "".join(c if isinstance(c, str) else c.text() for c in self.children)


class Page(html.parser.HTMLParser):
    def __init__(self, mark):
        super().__init__(convert_charrefs=True)
        self.mark = mark
        self.root = Node("", {})
        self.open = [self.root]
        self.problems = []

    def handle_starttag(self, tag, attrs):
        if tag not in ATTRIBUTES:
            self.problems.append(f"an element {tag}")
        for name, _ in attrs:
            if name not in ATTRIBUTES.get(tag, ()):
                self.problems.append(f"an attribute {name} of {tag}")
        node = Node(tag, dict(attrs))
        self.open[-1].children.append(node)
        if tag not in VOID:
            self.open.append(node)

    def handle_endtag(self, tag):
        if self.open[-1].name != tag:
            self.problems.append(f"an end of {tag} within {self.open[-1].name}")
        else:
            self.open.pop()

    def handle_data(self, data):
        self.open[-1].children.append(data)
        within = {node.name for node in self.open}
        if self.mark and self.mark in data and "bdi" not in within:
            self.problems.append(f"a text that is not isolated in {self.open[-1].name}: {data}")

    def handle_comment(self, data):
        self.problems.append(f"a comment: {data}")

    def handle_pi(self, data):
        self.problems.append(f"an instruction: {data}")


def check_policy(root, problems, files):
    metas = list(root.all("meta"))
    policies = [m for m in metas if "http-equiv" in m.attributes]
    if policies != metas[1:2]:
        problems.append("the policy is not the one thing behind the character set")
    hashes = {}
    for name, file in files.items():
        elements = list(root.all(name))
        content = pathlib.Path(file).read_text(encoding="utf-8")
        if [element.text() for element in elements] != [content]:
            problems.append(f"the {name} is not that of {file}")
        digest = hashlib.sha256(elements[0].text().encode()).digest()
        hashes[name] = "'sha256-" + base64.b64encode(digest).decode() + "'"
    expected = (f"default-src 'none'; style-src {hashes['style']}; script-src {hashes['script']}; "
                "base-uri 'none'; form-action 'none'")
    if policies[0].attributes["content"] != expected:
        problems.append(f"the policy is {policies[0].attributes['content']}, not {expected}")


def pairs(cell):
    """Of a list of names and values: name, value, and the bar, if there is one."""
    for entry in cell.all("div"):
        meters = list(entry.all("meter"))
        yield (next(entry.all("dt")).text(), next(entry.all("dd")).text(),
               meters[0].attributes if meters else None)


def level(what, said, bar):
    shown = {"what": what, "said": said}
    if bar:
        shown["bar"] = [float(bar[name]) for name in ("value", "low", "max")]
        assert bar["aria-label"] == what and bar["min"] == "0"
    return shown


def printer(body):
    row, more = body.all("tr")
    name, need, states, levels = [c for c in row.children if isinstance(c, Node)]
    sections = list(more.all("section"))
    return {
        "name": next(name.all("bdi")).text(),
        "about": [p.text() for p in name.all("p")],
        "need": next(need.all("span")).text(),
        "signs": [item.text() for item in need.all("li")],
        "states": [f"{what}: {said}" for what, said, _ in pairs(states)],
        "levels": [level(*each) for each in pairs(levels)],
        "told": {next(s.all("h3")).text(): [f"{a}: {b}" for a, b, _ in pairs(s)] for s in sections},
    }


def items(root, section):
    for each in root.all("section"):
        if each.attributes.get("id") == section:
            return [item.text() for item in each.all("li")]
    return []


def main(page_file, style, script, mark=None):
    text = pathlib.Path(page_file).read_bytes().decode("utf-8")
    page = Page(mark)
    page.feed(text)
    page.close()
    root, problems = page.root, page.problems
    if page.open != [root]:
        problems.append(f"{page.open[-1].name} is not closed")
    if not text.startswith("<!DOCTYPE html>\n"):
        problems.append("no declaration in front")
    problems += [f"a character {ord(c):#x}" for c in UNFIT.findall(text)]
    check_policy(root, problems, {"style": style, "script": script})
    between = re.sub(r"<(style|script)>.*?</\1>|<[^<>]*>", "", text, flags=re.S)
    problems += [f"not escaped: {found}" for found in re.findall(".{0,20}[<>\"'].{0,20}", between)]
    targets = [a.attributes["href"] for a in root.all("a")]
    problems += [f"a link to {t}" for t in targets if t not in ("#refused", "#notes")]
    tally = next(root.all("ul"))
    print(json.dumps({
        "title": next(root.all("title")).text(),
        "tally": [item.text() for item in tally.all("li")],
        "made": [time.text() for time in root.all("time")],
        "printers": [printer(body) for body in root.all("tbody")],
        "refused": items(root, "refused"),
        "notes": items(root, "notes"),
    }))
    for problem in problems[:20]:
        print(f"{page_file}: {problem}", file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
