"""Replies: what is decoded, and what is refused."""

import json
import unittest
from typing import Any

import kovra
from tests import samples

CARDS = "<get_count><total_cards_done>5</total_cards_done></get_count>"


def record(text: str | bytes) -> Any:
    return kovra.decode(text)["readings"][0]["record"]


def ssid(text: str | bytes) -> Any:
    return record(text)["wireless"]["ssid"]


def refusal(test: unittest.TestCase, text: str | bytes, as_: str | None = None) -> kovra.Refused:
    with test.assertRaises(kovra.Refused) as raised:
        kovra.decode(text, as_)
    return raised.exception


def outline(reply: dict[str, Any]) -> Any:
    """What was read as what, without the values, of which a golden file masks some."""
    readings = [
        (reading["document"], reading["result"], sorted(reading["record"]))
        for reading in reply["readings"]
    ]
    return reply["root"], readings


class Decoding(unittest.TestCase):
    def test_tells_what_the_reply_says(self) -> None:
        self.assertEqual(
            kovra.decode(CARDS),
            {
                "kovra": 1,
                "ok": True,
                "root": "get_count",
                "readings": [
                    {"document": "card-count", "result": True, "record": {"total_cards_done": 5}}
                ],
                "notes": [],
            },
        )

    def test_takes_bytes_and_text(self) -> None:
        self.assertEqual(kovra.decode(CARDS.encode()), kovra.decode(CARDS))

    def test_reads_every_sample_as_what_its_golden_file_says(self) -> None:
        files = samples.good()
        self.assertGreater(len(files), 100)
        for file in files:
            with self.subTest(file=file.name):
                reply = kovra.decode(file.read_bytes())
                golden = json.loads(file.with_suffix(".json").read_text())
                self.assertTrue(reply["ok"])
                self.assertEqual(outline(reply), outline(golden))

    def test_refuses_every_broken_sample(self) -> None:
        files = samples.bad()
        self.assertGreater(len(files), 100)
        for file in files:
            with self.subTest(file=file.name):
                refused = refusal(self, file.read_bytes())
                self.assertRegex(refused.id or "", "^K0[0-9]{2}$")
                self.assertFalse(refused.problems)

    def test_shows_secrets(self) -> None:
        wireless = record(samples.read("config/full.xml"))["wireless"]
        self.assertEqual(wireless["key"], "seven red umbrellas")

    def test_reads_as_the_message_that_it_is_asked_for(self) -> None:
        as_cleaning = kovra.decode(CARDS, "cards-until-cleaning")
        self.assertEqual(as_cleaning["readings"][0]["document"], "cards-until-cleaning")
        self.assertEqual(kovra.decode(CARDS, as_="card-count"), kovra.decode(CARDS))
        self.assertEqual(kovra.decode(CARDS, as_=""), kovra.decode(CARDS))


class Characters(unittest.TestCase):
    def reply(self, name: str, declaration: str = "") -> str:
        return (
            f"{declaration}<configuration><wireless><ssid>{name}</ssid></wireless></configuration>"
        )

    def test_beyond_ascii_go_in_and_come_out(self) -> None:
        for name in ("Büro", "事務所", "🖨", "a\u0301"):
            self.assertEqual(ssid(self.reply(name)), name)
            self.assertEqual(ssid(self.reply(name).encode()), name)

    def test_of_bytes_are_those_of_the_declared_encoding(self) -> None:
        declaration = '<?xml version="1.0" encoding="ISO-8859-1"?>'
        self.assertEqual(ssid(self.reply("Büro", declaration).encode("latin-1")), "Büro")

    def test_of_a_str_need_no_declared_encoding(self) -> None:
        for encoding in ("ISO-8859-1", "l1", "latin1", "UTF-8", "UTF-16", ""):
            for quote in "\"'":
                named = f"encoding={quote}{encoding}{quote}"
                declaration = f"\n<?xml version={quote}1.0{quote} {named}?>"
                text = self.reply("Büro 事", declaration)
                self.assertEqual(ssid(text), "Büro 事", encoding)

    def test_keep_their_places_whatever_is_declared(self) -> None:
        declaration = '<?xml version="1.0" encoding="ISO-8859-1"?>'
        text = self.reply("ü", declaration).replace("</ssid>", "</x>")
        refused = refusal(self, text)
        self.assertEqual(refused.id, "K009")
        self.assertEqual(refused.line, 1)
        self.assertEqual(refused.column, text.index("</x>") + 1)
        self.assertEqual(refused.offset, len(text[: text.index("</x>")].encode()))

    def test_that_are_none_are_a_mistake(self) -> None:
        with self.assertRaises(ValueError):
            kovra.decode(self.reply("\ud800"))

    def test_of_any_bytes_are_read(self) -> None:
        self.assertEqual(ssid(self.reply("?").encode().replace(b"?", b"\xff")), "\ufffd")


class Refusing(unittest.TestCase):
    def test_tells_why_and_where(self) -> None:
        refused = refusal(self, "<get_count>\n <é></get_count>")
        self.assertEqual(refused.id, "K009")
        self.assertEqual((refused.line, refused.column, refused.offset), (2, 5, 17))
        self.assertEqual(refused.message, refused.error["message"])
        self.assertEqual(refused.error["kind"], "wrong_end_tag")
        self.assertEqual(refused.problems, [])
        self.assertEqual(str(refused), "2:5: " + refused.message)

    def test_without_a_place_tells_none(self) -> None:
        refused = refusal(self, CARDS, as_="nothing")
        self.assertEqual(refused.id, "K015")
        self.assertEqual((refused.line, refused.column, refused.offset), (None, None, None))
        self.assertEqual(str(refused), refused.message)

    def test_takes_nothing_for_an_empty_text(self) -> None:
        for nothing in ("", b""):
            refused = refusal(self, nothing)
            self.assertEqual(refused.id, "K001")
            self.assertEqual((refused.line, refused.column, refused.offset), (1, 1, 0))

    def test_looks_behind_a_null_character(self) -> None:
        self.assertEqual(refusal(self, CARDS + "\0").id, "K012")
        with self.assertRaises(ValueError):
            kovra.decode(CARDS, "card-count\0")

    def test_knows_other_types_for_a_mistake(self) -> None:
        for wrong in (None, 5, ["<a/>"], bytearray(b"<a/>")):
            with self.assertRaisesRegex(TypeError, "str or bytes, not"):
                kovra.decode(wrong)  # type: ignore[arg-type]


if __name__ == "__main__":
    unittest.main()
