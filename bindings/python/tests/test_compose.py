"""Documents: what is composed, and what does not fit."""

import math
import unittest
from typing import Any

import kovra
from tests import samples


def refusal(test: unittest.TestCase, message: str, record: Any, **choices: Any) -> kovra.Refused:
    with test.assertRaises(kovra.Refused) as raised:
        kovra.compose(message, record, **choices)
    return raised.exception


def sections() -> list[str]:
    """All that a configuration may be composed of."""
    configuration = next(each for each in kovra.messages() if each["name"] == "configuration")
    words: list[str] = next(
        choice["words"] for choice in configuration["choices"] if choice["name"] == "sections"
    )
    return words


class Composing(unittest.TestCase):
    def test_gives_back_what_was_decoded(self) -> None:
        reply = kovra.decode(samples.read("config/full.xml"))
        record = reply["readings"][0]["record"]
        for section in sections():
            with self.subTest(section=section):
                document = kovra.compose(
                    "configuration", reply, sections=[section], zero_missing=True
                )
                self.assertEqual(
                    document,
                    kovra.compose("configuration", record, sections=[section], zero_missing=True),
                )
                again = kovra.decode(document)["readings"][0]["record"]
                self.assertTrue(again)
                if section in ("ethernet", "physical_address", "standby_timeout", "feeder_mode"):
                    self.assertEqual(again[section], record[section])

    def test_shows_secrets(self) -> None:
        reply = kovra.decode(samples.read("config/full.xml"))
        document = kovra.compose("configuration", reply, sections=["wireless"])
        self.assertIn("<key>seven red umbrellas</key>", document)

    def test_takes_characters_beyond_ascii(self) -> None:
        for nonce in ("ü", "事", "🖨", "a&b<c"):
            document = kovra.compose("nonce", {"nonce": nonce})
            self.assertEqual(kovra.decode(document)["readings"][0]["record"], {"nonce": nonce})

    def test_takes_the_words_of_a_command_line(self) -> None:
        record = {"motor": "ribbon", "state": "off"}
        self.assertEqual(
            kovra.compose("device-control motor", record),
            kovra.compose("device-control-motor", record),
        )

    def test_leaves_the_record_alone(self) -> None:
        reply = kovra.decode(samples.read("config/full.xml"))
        kovra.compose("configuration", reply, sections=["wireless"])
        self.assertEqual(reply, kovra.decode(samples.read("config/full.xml")))


class Choices(unittest.TestCase):
    def test_are_arguments(self) -> None:
        both = {"cards": [{"type": 1}, {"type": 2}]}
        one = kovra.compose("configuration", both, sections=["cards"], card=2, zero_missing=True)
        self.assertIn("<type>2</type>", one)
        self.assertNotIn("<type>1</type>", one)

    def test_have_underscores_for_dashes(self) -> None:
        capabilities = next(each for each in kovra.messages() if each["name"] == "capabilities")
        self.assertIn("direct-to-card", [choice["name"] for choice in capabilities["choices"]])
        reply = kovra.decode(samples.read("caps/full.xml"))
        self.assertNotEqual(
            kovra.compose("capabilities", reply, direct_to_card=True),
            kovra.compose("capabilities", reply, direct_to_card=False),
        )

    def test_that_there_are_not_are_problems(self) -> None:
        refused = refusal(self, "nonce", {"nonce": "n"}, colour="red")
        self.assertEqual(
            refused.problems,
            [
                {
                    "path": "colour",
                    "found": "an unknown choice",
                    "expected": "one that this document has",
                    "message": "colour: found an unknown choice; "
                    "expected one that this document has",
                }
            ],
        )

    def test_that_are_required_are_missed(self) -> None:
        refused = refusal(self, "configuration", {})
        self.assertEqual([problem["path"] for problem in refused.problems], ["sections"])


class Refusing(unittest.TestCase):
    def test_tells_every_problem(self) -> None:
        record = {"wireless": {"channel": "six", "ssid": 5}, "x": 1}
        refused = refusal(self, "configuration", record, sections=["wireless"], zero_missing=True)
        self.assertEqual(
            [problem["path"] for problem in refused.problems],
            ["wireless.channel", "wireless.ssid", "x"],
        )
        self.assertEqual(refused.message, refused.problems[0]["message"])
        self.assertEqual(str(refused), refused.message + " (and 2 more)")
        self.assertIsNone(refused.id)
        self.assertEqual((refused.line, refused.column, refused.offset), (None, None, None))
        self.assertIs(refused.error["ok"], False)

    def test_of_one_problem_is_one_sentence(self) -> None:
        refused = refusal(self, "nonce", {"nonce": 5})
        self.assertEqual(str(refused), refused.message)
        self.assertNotIn("5", str(refused), "it is a secret")

    def test_knows_what_is_no_record(self) -> None:
        for record in (None, 5, "text", [], {}):
            self.assertTrue(refusal(self, "nonce", record).problems)

    def test_tells_what_json_cannot_say(self) -> None:
        refused = refusal(self, "nonce", {"nonce": math.nan})
        self.assertEqual(refused.problems[0]["in"], "record")
        self.assertEqual((refused.line, refused.column, refused.offset), (1, 11, 10))
        self.assertIsNone(refused.id)
        self.assertTrue(str(refused).startswith("1:11: malformed JSON"), str(refused))
        refused = refusal(self, "nonce", {"nonce": "\ud800"})
        self.assertEqual(refused.problems[0]["in"], "record")
        refused = refusal(self, "nonce", {"nonce": "n"}, number=math.inf)
        self.assertEqual(refused.problems[0]["in"], "choices")
        with self.assertRaises(TypeError):
            kovra.compose("nonce", {"nonce": b"bytes"})

    def test_knows_unknown_messages(self) -> None:
        for name in ("nothing", "", "general-status"):
            self.assertEqual(len(refusal(self, name, {}).problems), 1)
        with self.assertRaises(ValueError):
            kovra.compose("nonce\0", {"nonce": "n"})


class Listing(unittest.TestCase):
    def test_has_every_message_once(self) -> None:
        names = [message["name"] for message in kovra.messages()]
        self.assertEqual(len(names), len(set(names)))
        self.assertIn("general-status", names)
        self.assertIn("device-control-motor", names)

    def test_tells_what_is_read_and_written(self) -> None:
        by_name = {message["name"]: message for message in kovra.messages()}
        self.assertEqual(
            set(by_name["configuration"]),
            {"name", "title", "roots", "read", "written", "members", "required", "choices"},
        )
        self.assertEqual(by_name["nonce"]["required"], ["nonce"])
        self.assertFalse(by_name["general-status"]["written"])
        self.assertFalse(by_name["device-control-fan"]["read"])

    def test_of_schemas_is_complete(self) -> None:
        for message in kovra.messages():
            schema = kovra.schema(message["name"])
            self.assertEqual(schema["title"], message["name"])
            self.assertEqual(schema["type"], "object")

    def test_of_schemas_lacks_unknown_names(self) -> None:
        for name in ("nothing", ""):
            with self.assertRaises(kovra.Refused) as raised:
                kovra.schema(name)
            self.assertEqual(raised.exception.id, "K015")
            self.assertIn(f'"{name}"', raised.exception.message)


if __name__ == "__main__":
    unittest.main()
