"""Kovra for Python: reads and composes the XML messages of a family of ID-card printers.

    >>> import kovra
    >>> reply = kovra.decode("<get_count><total_cards_done>5</total_cards_done></get_count>")
    >>> reply["readings"][0]["record"]
    {'total_cards_done': 5}
    >>> kovra.compose("nonce", {"nonce": "a1b2"}).splitlines()[1:]
    ['<nonce>a1b2</nonce>']

Secrets are shown as they are: keys, pass phrases and the data of magnetic tracks stand in what
`decode` returns and in the documents that `compose` makes. Python cannot wipe them; do not log
them.

All functions may be called from several threads, which run at the same time inside the library.
Each raises a MemoryError where the library has not enough memory.
"""

from kovra._api import compose, decode, messages, schema, version
from kovra._refused import Refused

__all__ = ["Refused", "compose", "decode", "messages", "schema", "version"]
