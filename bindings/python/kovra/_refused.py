"""What the library refuses."""

from __future__ import annotations

from typing import Any


class Refused(Exception):
    """A text that is no reply, a record that is no document, or the name of no message.

    `str()` of it is one sentence, with the place in front where there is one.
    """

    error: dict[str, Any]
    """What the library says: the `error` of a text or a name; of a record the whole result."""

    id: str | None
    """The kind of refusal, `"K005"`. None for a record."""

    line: int | None
    """Where in the text, from 1. None where no place is known."""

    column: int | None
    """Where in the line, from 1, in characters. None where no place is known."""

    offset: int | None
    """Where in the text, from 0, in bytes of UTF-8. None where no place is known."""

    message: str
    """One sentence without the place; that of the first problem for a record."""

    problems: list[dict[str, Any]]
    """What is wrong with a record or with choices; empty for a text or a name."""

    def __init__(self, result: dict[str, Any]) -> None:
        self.problems = result.get("problems", [])
        self.error = result.get("error", result)
        told = self.problems[0] if self.problems else self.error
        self.id = told.get("id")
        self.message = told["message"]
        # Line 0 stands for no place.
        self.line = told.get("line") or None
        self.column = told["column"] if self.line else None
        self.offset = told["offset"] if self.line else None
        super().__init__(result)

    def __str__(self) -> str:
        place = f"{self.line}:{self.column}: " if self.line else ""
        others = f" (and {len(self.problems) - 1} more)" if len(self.problems) > 1 else ""
        return place + self.message + others
