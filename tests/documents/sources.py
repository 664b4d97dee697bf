"""Where documents show code: blocks of Markdown, of pages of the manual, and of the tool's helps."""

import dataclasses
import re


@dataclasses.dataclass
class Block:
    place: str      # "docs/json.md:12"
    language: str   # what the fence says; "" for one that is indented
    lines: list

    @property
    def text(self):
        return "\n".join(self.lines)


def without_indent(lines):
    least = min((len(line) - len(line.lstrip()) for line in lines if line.strip()), default=0)
    return [line[least:] for line in lines]


def of_markdown(name, text):
    """Fenced blocks, and those that are indented by four blanks behind an empty line."""
    lines, blocks, i = text.split("\n"), [], 0
    while i < len(lines):
        start = i
        if fence := re.match(r" *```(\w*)", lines[i]):
            i += 1
            while not lines[i].lstrip().startswith("```"):
                i += 1
            blocks.append(Block(f"{name}:{start + 1}", fence[1], without_indent(lines[start + 1:i])))
        elif lines[i].startswith("    ") and lines[i].strip() and not lines[i - 1].strip():
            while i < len(lines) and (lines[i].startswith("    ") or not lines[i].strip()):
                i += 1
            blocks.append(Block(f"{name}:{start + 1}", "",
                                without_indent("\n".join(lines[start:i]).rstrip().split("\n"))))
            continue
        i += 1
    return blocks


def of_manual(name, text):
    """What stands as it is under EXAMPLES."""
    examples = text.partition(".SH EXAMPLES\n")[2].partition(".SH ")[0]
    plain = examples.replace("\\-", "-").replace("\\(aq", "'").replace("\\e", "\\").replace("\\&", "")
    return [Block(name, "", body.split("\n"))
            for body in re.findall(r"^\.nf\n(.*?)\n\.fi$", plain, re.MULTILINE | re.DOTALL)]


def of_help(name, text):
    """The examples, without what is said behind them."""
    found = re.search(r"^Examples?:\n((?:  .*\n)+)", text, re.MULTILINE)
    if not found:
        return []
    lines = [re.split(r"(?<=\S) {3,}(?=\S)", line)[0] for line in found[1].rstrip("\n").split("\n")]
    return [Block(name, "", without_indent(lines))]


def inline_commands(text):
    """`kovra ...` within a line of Markdown."""
    outside = re.sub(r"^ *```.*?^ *```", "", text, flags=re.MULTILINE | re.DOTALL)
    return re.findall(r"`(kovra [^`]+)`", outside)
