"""Blocks as one HTML page that needs nothing else, and that a browser asks nobody for."""

import base64
import hashlib
import pathlib
from html import escape

from blocks import Code, Heading, Link, Paragraph, Table

FOLDER = pathlib.Path(__file__).parent


def asset(name):
    return (FOLDER / name).read_text(encoding="utf-8")


def digest(text):
    return "'sha256-" + base64.b64encode(hashlib.sha256(text.encode()).digest()).decode() + "'"


def span(part):
    if isinstance(part, Code):
        return f"<code>{escape(part.text)}</code>"
    if isinstance(part, Link):
        return f'<a href="#{escape(part.anchor)}">{escape(part.text)}</a>'
    return escape(part)


def line(spans):
    return "".join(map(span, spans))


def row(heads, cells):
    return "<tr>" + "".join(f'<td data-head="{escape(head)}">{line(cell)}</td>'
                            for head, cell in zip(heads, cells)) + "</tr>"


def table(block):
    heads = "".join(f'<th scope="col">{escape(head)}</th>' for head in block.heads)
    rows = "\n".join(row(block.heads, cells) for cells in block.rows)
    return f"<table>\n<thead><tr>{heads}</tr></thead>\n<tbody>\n{rows}\n</tbody>\n</table>"


def sections(blocks):
    """The blocks from each heading to the next."""
    found = []
    for block in blocks:
        if isinstance(block, Heading):
            found.append([])
        found[-1].append(block)
    return found


def section(blocks):
    heading = blocks[0]
    out = [f'<section id="{escape(heading.anchor)}">' if heading.anchor else "<section>",
           f"<h{heading.level}>{escape(heading.text)}</h{heading.level}>"]
    for block in blocks[1:]:
        if isinstance(block, Paragraph):
            out.append(f"<p>{line(block.spans)}</p>")
        elif isinstance(block, Table):
            out.append(table(block))
    return "\n".join([*out, "</section>"])


def contents(blocks):
    links = [Link(block.text, block.anchor) for block in blocks
             if isinstance(block, Heading) and block.level == 2]
    return "<nav>" + " ".join(map(span, links)) + "</nav>"


def page(blocks):
    style, script = asset("handbook.css"), asset("handbook.js")
    first, *others = sections(blocks)
    policy = f"default-src 'none'; style-src {digest(style)}; script-src {digest(script)}"
    return "\n".join([
        "<!DOCTYPE html>", '<html lang="en">', "<head>", '<meta charset="utf-8">',
        f'<meta http-equiv="Content-Security-Policy" content="{escape(policy)}">',
        '<meta name="viewport" content="width=device-width, initial-scale=1">',
        f"<title>{escape(first[0].text)} - Kovra</title>", f"<style>{style}</style>", "</head>", "<body>",
        section(first), contents(blocks),
        '<p class="search" hidden><label>Show only what has <input type="search"></label>'
        '<output aria-live="polite"></output></p>',
        *map(section, others), f"<script>{script}</script>", "</body>", "</html>", ""])
