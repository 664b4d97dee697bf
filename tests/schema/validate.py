"""Every record that the library shows is one that its schema allows, says an independent validator.

validate.py SAMPLES: with KOVRA_LIBRARY set to the library and PYTHONPATH to the module over it.
"""

import pathlib
import sys

import jsonschema

import kovra


def replies(samples: pathlib.Path) -> list[tuple[str, bytes]]:
    """All samples that decode, and each with its words misspelt, so that unknown ones show."""
    found = []
    for path in sorted(samples.glob("*/*.xml")):
        if path.name.endswith(".bad.xml"):
            continue
        text = path.read_bytes()
        found.append((str(path), text))
        found.append((f"{path}, upper case", text.replace(b"e</", b"E</")))
    return found


def main() -> int:
    validators = {}
    for message in kovra.messages():
        schema = kovra.schema(message["name"])
        jsonschema.Draft202012Validator.check_schema(schema)
        validators[message["name"]] = jsonschema.Draft202012Validator(schema)

    checked, read, problems = 0, set(), 0
    for name, text in replies(pathlib.Path(sys.argv[1])):
        for reading in kovra.decode(text)["readings"]:
            checked += 1
            read.add(reading["document"])
            for error in validators[reading["document"]].iter_errors(reading["record"]):
                problems += 1
                print(f"{name}: {list(error.path)}: {error.message[:200]}", file=sys.stderr)

    # A schema that allows anything would be no proof.
    refused = 0
    for validator in validators.values():
        refused += not validator.is_valid({"no_such_member": 1})
        refused += not validator.is_valid([])
    missing = {m["name"] for m in kovra.messages() if m["read"]} - read
    print(f"{len(validators)} schemas, {checked} records, {problems} problems")
    if missing:
        print(f"no sample shows {', '.join(sorted(missing))}", file=sys.stderr)
    return int(problems > 0 or missing != set() or refused != 2 * len(validators))


sys.exit(main())
