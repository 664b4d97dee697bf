"""The shared library: how it is found, its memory, and threads."""

import ctypes
import doctest
import gc
import os
import pickle
import resource
import subprocess
import sys
import tomllib
import unittest
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from typing import Any
from unittest import mock

import kovra
from kovra import _library
from tests import samples

PACKAGE = Path(__file__).resolve().parents[1]


def run(program: str, **environment: str) -> "subprocess.CompletedProcess[str]":
    """A Python of its own."""
    return subprocess.run(
        [sys.executable, "-B", "-c", program],
        cwd=PACKAGE,
        env={**os.environ, **environment},
        capture_output=True,
        text=True,
        check=False,
    )


class Documentation(unittest.TestCase):
    def test_is_true(self) -> None:
        done = doctest.testmod(kovra)
        self.assertEqual(done.failed, 0)
        self.assertGreater(done.attempted, 0)


class Loading(unittest.TestCase):
    def test_tells_what_was_tried_and_how_to_mend_it(self) -> None:
        done = run("import kovra", KOVRA_LIBRARY="/nowhere/libkovra.so.1")
        self.assertNotEqual(done.returncode, 0)
        last = done.stderr.strip().splitlines()[-1]
        self.assertTrue(last.startswith("ImportError: "), last)
        for part in ("KOVRA_LIBRARY=/nowhere/libkovra.so.1", "libkovra1", "ldconfig"):
            self.assertIn(part, last)

    def test_without_the_variable_asks_the_loader(self) -> None:
        folder = str(Path(os.environ["KOVRA_LIBRARY"]).parent)
        program = "import kovra; print(kovra.version())"
        done = run(program, KOVRA_LIBRARY="", LD_LIBRARY_PATH=folder)
        self.assertEqual(done.stdout.strip(), kovra.version(), done.stderr)
        with mock.patch.object(ctypes, "CDLL", side_effect=OSError("not there")) as load:
            with mock.patch.dict(os.environ):
                del os.environ["KOVRA_LIBRARY"]
                with self.assertRaisesRegex(ImportError, "libkovra.so.1.*not there"):
                    _library._load()
            load.assert_called_once_with("libkovra.so.1")

    def test_knows_a_library_that_is_another(self) -> None:
        done = run("import kovra", KOVRA_LIBRARY="libc.so.6")
        last = done.stderr.strip().splitlines()[-1]
        self.assertRegex(last, "^ImportError: libc.so.6 lacks kovra_decode")

    def test_is_of_this_version(self) -> None:
        project = tomllib.loads((PACKAGE / "pyproject.toml").read_text())["project"]
        self.assertEqual(kovra.version(), project["version"])


class Refusals(unittest.TestCase):
    def test_can_be_sent_to_another_process(self) -> None:
        with self.assertRaises(kovra.Refused) as raised:
            kovra.decode("<a>")
        again = pickle.loads(pickle.dumps(raised.exception))
        self.assertEqual(str(again), str(raised.exception))
        self.assertEqual(vars(again), vars(raised.exception))


def resident() -> int:
    """Bytes of this process in memory."""
    pages = int(Path("/proc/self/statm").read_text().split()[1])
    return pages * resource.getpagesize()


class Memory(unittest.TestCase):
    TIMES = 20_000
    # A result that was not given back would cost a thousand bytes each time.
    MOST = 2_000_000

    def grows_by(self, call: Any) -> int:
        for _ in range(1_000):
            call()
        gc.collect()
        before = resident()
        for _ in range(self.TIMES):
            call()
        gc.collect()
        return resident() - before

    def test_does_not_grow_with_replies(self) -> None:
        reply = samples.read("status/idle.xml")
        self.assertGreater(len(str(kovra.decode(reply))), 300)
        self.assertLess(self.grows_by(lambda: kovra.decode(reply)), self.MOST)

    def test_does_not_grow_with_refusals(self) -> None:
        def refuse() -> None:
            with self.assertRaises(kovra.Refused):
                kovra.decode(b"<get_count>")

        self.assertLess(self.grows_by(refuse), self.MOST)

    def test_is_told_when_there_is_none(self) -> None:
        # Of each byte the library makes several; there is room for the bytes themselves.
        program = """
import resource, kovra
text = b"<get_count>" + b"<a/>" * 5_000_000 + b"</get_count>"
pages = int(open("/proc/self/statm").read().split()[0])
bound = pages * resource.getpagesize() + 50_000_000
resource.setrlimit(resource.RLIMIT_AS, (bound, bound))
try:
    kovra.decode(text)
except MemoryError as error:
    print(error)
print(kovra.decode("<get_count/>")["root"])
"""
        done = run(program)
        self.assertEqual(
            done.stdout.splitlines(),
            ["the library of Kovra has not enough memory", "get_count"],
            done.stderr,
        )

    def test_is_given_back_also_when_reading_it_fails(self) -> None:
        freed: list[int | None] = []
        with mock.patch.object(_library._library, "kovra_free") as free:
            free.side_effect = lambda result: freed.append(result.value)
            with mock.patch.object(ctypes, "string_at", side_effect=MemoryError):
                with self.assertRaises(MemoryError):
                    kovra.messages()
        self.assertEqual(len(freed), 1)
        self.assertIsNotNone(freed[0])
        _library._library.kovra_free(freed[0])


class Threads(unittest.TestCase):
    def test_do_not_meet(self) -> None:
        files = samples.good()
        texts = [file.read_bytes() for file in files]
        expected = [kovra.decode(text) for text in texts]

        def decode_all(first: int) -> int:
            for i in range(5 * len(texts)):
                which = (i + first) % len(texts)
                if kovra.decode(texts[which]) != expected[which]:
                    raise AssertionError(files[which])
            return first

        with ThreadPoolExecutor(4) as pool:
            firsts = range(0, 80, 20)
            self.assertEqual(list(pool.map(decode_all, firsts)), list(firsts))


if __name__ == "__main__":
    unittest.main()
