"""What the package offers."""

from __future__ import annotations

import json
import re
from collections.abc import Mapping
from typing import Any

from kovra import _library
from kovra._refused import Refused


def decode(text: str | bytes, as_: str | None = None) -> dict[str, Any]:
    """Decodes a reply. Secrets in it are shown as they are.

    `text` is the reply: bytes as the printer sent them, or a str, of which the encoding that its
    XML declaration names does not count. `as_` is the name of the message that it is read as;
    without it, the reply's root tells.

    Returns what the library says, with its `root`, `readings` and `notes`:

        {"kovra": 1, "ok": True, "root": "get_count",
         "readings": [{"document": "card-count", "result": True,
                       "record": {"total_cards_done": 5}}],
         "notes": []}

    Offsets count bytes, of a str those of its UTF-8. Raises Refused for a text that is no reply,
    and a ValueError for a str that has no UTF-8, since a surrogate stands alone in it.
    """
    if not isinstance(text, (str, bytes)):
        raise TypeError(f"a reply is str or bytes, not {type(text).__name__}")
    reply = _utf8(text) if isinstance(text, str) else text
    return _result(_library.decode, reply, len(reply), _name(as_ or ""))


def compose(message: str, record: Mapping[str, Any], **choices: Any) -> str:
    """Composes a document that the printer accepts.

    `message` is the name of a message that is written, and `record` its record: what stands as the
    `record` of a reading in what `decode` returns, the same as a person wrote it, or all of what
    `decode` returns. Each choice is an argument, with underscores where its name has dashes:

        compose("configuration", reply, sections=["wireless"], zero_missing=True)

    Raises Refused, with its `problems`, for a record or a choice that does not fit.
    """
    chosen = json.dumps(choices) if choices else ""
    result = _result(
        _library.compose, _name(message), json.dumps(record).encode(), chosen.encode()
    )
    document: str = result["document"]
    return document


def messages() -> list[dict[str, Any]]:
    """Every message that the printer sends or accepts, in a fixed order.

    Each has its `name`, `title`, `roots`, `read`, `written`, `members`, `required` and `choices`.
    """
    listed: list[dict[str, Any]] = _result(_library.messages)["messages"]
    return listed


def schema(name: str) -> dict[str, Any]:
    """The JSON Schema (draft 2020-12) of a message's record. Raises Refused for an unknown name."""
    return _result(_library.schema, _name(name))


def version() -> str:
    """The version of the library that is running: "1.0.0"."""
    return _library.version()


_ENCODING = re.compile(r"""(\s*<\?xml[^>]*?encoding[^>"']*["'])([-\w.]+)""", re.ASCII)


def _utf8(text: str) -> bytes:
    """A str as the library reads it: no encoding is declared, and everything stays in its place."""
    declared = _ENCODING.match(text)
    if declared is not None:
        text = declared[1] + " " * len(declared[2]) + text[declared.end() :]
    return text.encode()


def _name(text: str) -> bytes:
    """A text as C takes it, for which a zero byte would be its end."""
    if "\0" in text:
        raise ValueError("a name with a null character")
    return text.encode()


def _result(function: Any, *arguments: bytes | int | None) -> dict[str, Any]:
    is_done, text = _library.call(function, *arguments)
    result: dict[str, Any] = json.loads(text)
    if not is_done:
        raise Refused(result)
    return result
