"""The shared library: where it is, and its functions as Python calls them."""

from __future__ import annotations

import ctypes
import os
from collections.abc import Callable
from typing import Any

_SONAME = "libkovra.so.1"
_VARIABLE = "KOVRA_LIBRARY"

_DONE = 0
_NO_MEMORY = 2


def _load() -> ctypes.CDLL:
    """The library that the environment names, or the one that the loader finds."""
    named = os.environ.get(_VARIABLE)
    tried = named or _SONAME
    try:
        return ctypes.CDLL(tried)
    except OSError as error:
        source = f"{_VARIABLE}={named}" if named else f"{_SONAME}, where the loader looks for it"
        raise ImportError(
            f"the library of Kovra cannot be loaded. Tried: {source} ({error}). "
            f"Install the package libkovra1, run ldconfig after an installation by hand, or set "
            f"{_VARIABLE} to the path of {_SONAME}."
        ) from error


def _expect_status(status: Any, function: Any, arguments: tuple[Any, ...]) -> Any:
    if status == _NO_MEMORY:
        raise MemoryError("the library of Kovra has not enough memory")
    return status


def _declare(library: ctypes.CDLL, name: str, *parameters: Any) -> Callable[..., int]:
    """A function that returns a status and puts its result where its last argument says."""
    try:
        function = library[name]
    except AttributeError as error:
        raise ImportError(
            f"{library._name} lacks {name}: it is older than this module. "
            f"Install a current libkovra1, or set {_VARIABLE} to the path of another {_SONAME}."
        ) from error
    # A result as c_char_p would be a copy of Python's, with no way back to what has to be freed.
    function.argtypes = [*parameters, ctypes.POINTER(ctypes.c_void_p)]
    function.restype = ctypes.c_int
    function.errcheck = _expect_status
    return function


_library = _load()
_text = ctypes.c_char_p

decode = _declare(_library, "kovra_decode", _text, ctypes.c_size_t, _text)
compose = _declare(_library, "kovra_compose", _text, _text, _text)
messages = _declare(_library, "kovra_messages")
schema = _declare(_library, "kovra_schema", _text)

_library.kovra_version.argtypes = []
_library.kovra_version.restype = _text
_library.kovra_free.argtypes = [ctypes.c_void_p]
_library.kovra_free.restype = None


def call(function: Callable[..., int], *arguments: bytes | int | None) -> tuple[bool, bytes]:
    """Whether it was done, and the JSON that tells the result."""
    result = ctypes.c_void_p()
    try:
        status = function(*arguments, ctypes.byref(result))
        return status == _DONE, ctypes.string_at(result)
    finally:
        _library.kovra_free(result)


def version() -> str:
    """The version of the library."""
    text: bytes = _library.kovra_version()
    return text.decode("ascii")
