"""Blocks as Markdown."""

import re

from blocks import Code, Heading, Link, Paragraph, Table

WIDTH = 100


def escaped(text):
    return re.sub(r"([\\`*_<>|\[\]])", r"\\\1", text)


def span(part):
    if isinstance(part, Code):
        return "`" + part.text.replace("|", "\\|") + "`"
    if isinstance(part, Link):
        return f"[{escaped(part.text)}](#{part.anchor})"
    return escaped(part)


def line(spans):
    return "".join(map(span, spans))


def filled(text):
    """Lines of at most WIDTH characters; what stands in code font or in a link stays whole."""
    lines, last = [], ""
    for word in re.findall(r"(?:`[^`]*`|\[[^\]]*\]\([^)]*\)|\S)+", text):
        if last and len(last) + 1 + len(word) > WIDTH:
            lines.append(last)
            last = word
        else:
            last += (" " if last else "") + word
    return "\n".join([*lines, last])


def table(block):
    rows = ["| " + " | ".join(block.heads) + " |", "|---" * len(block.heads) + "|"]
    rows += ["| " + " | ".join(map(line, cells)) + " |" for cells in block.rows]
    return "\n".join(rows)


def heading(block):
    # An anchor of its own: what a renderer makes of a title is its affair.
    anchor = f'<a id="{block.anchor}"></a>\n\n' if block.anchor else ""
    return anchor + "#" * block.level + " " + escaped(block.text)


def text(blocks):
    out = []
    for block in blocks:
        if isinstance(block, Heading):
            out.append(heading(block))
        elif isinstance(block, Paragraph):
            out.append(filled(line(block.spans)))
        elif isinstance(block, Table):
            out.append(table(block))
    return "\n\n".join(out) + "\n"
