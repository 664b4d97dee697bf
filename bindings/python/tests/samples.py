"""The replies that the tests read."""

from pathlib import Path

FOLDER = Path(__file__).resolve().parents[3] / "samples"


def good() -> list[Path]:
    """Every reply that is decoded."""
    return sorted(path for path in FOLDER.glob("*/*.xml") if not path.name.endswith(".bad.xml"))


def bad() -> list[Path]:
    """Every reply that is refused."""
    return sorted(FOLDER.glob("*/*.bad.xml"))


def read(name: str) -> bytes:
    return (FOLDER / name).read_bytes()
