"""What a document is made of, whatever it is printed as.

Text is a list of spans: plain strings, Code and Link. A cell of a table is such a list.
"""

import dataclasses


@dataclasses.dataclass
class Code:
    text: str


@dataclasses.dataclass
class Link:
    """To a heading of the same document."""

    text: str
    anchor: str


@dataclasses.dataclass
class Heading:
    level: int
    anchor: str
    text: str


@dataclasses.dataclass
class Paragraph:
    spans: list


@dataclasses.dataclass
class Table:
    heads: list
    rows: object
