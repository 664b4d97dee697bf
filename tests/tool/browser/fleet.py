#!/usr/bin/env python3
"""Writes the replies of a fleet into a folder, always the same ones: what a page is looked at with.

    fleet.py FOLDER PRINTERS
"""

import pathlib
import random
import sys

STATES = ["idle"] * 20 + ["printing"] * 6 + ["standby"] * 6 + [
    "printing_heating", "cleaning", "laminating", "alarm_handling", "offline", "insert_card"]
RIBBONS = [("YMCKO", 500), ("YMCKOK", 350), ("KRO", 1000), ("YMCKO hologram and UV", 250)]
MODELS = ["HX-300", "HX-500 Retransfer", "HX-700 Laminating"]


def element(name, *children):
    return f"<{name}>{''.join(str(child) for child in children)}</{name}>"


def left(dice, whole):
    """Most supplies have plenty; some are low, and a few are gone."""
    kind = dice.random()
    return 0 if kind < 0.01 else dice.randint(1, whole // 10) if kind < 0.06 \
        else dice.randint(whole // 10 + 1, whole)


def supply(dice, name, description, whole):
    return element(name, element("type", 1), element("description", description),
                   element("initial_size", whole), element("panels_remaining", left(dice, whole)))


def replies(dice, number):
    state = dice.choice(STATES)
    in_alarm = state == "alarm_handling"
    ribbon, panels = dice.choice(RIBBONS)
    yield "general-status", element(
        "get_general_status", element("printer_state", state),
        element("alarms", hex(1 << dice.randint(0, 20) | 2) if in_alarm else "0x0"),
        element("error", dice.randint(1, 120) if in_alarm else 0), element("warning", 0),
        element("printer_lock", "locked"), element("num_jobs_done_ok", dice.randint(0, 9000)),
        element("num_jobs_done_error", dice.randint(0, 20)),
        element("laminator_state", dice.choice(["ready", "not_used", "standby"])))
    laminate = [supply(dice, "top_laminate", "Clear 1.0 mil", 250)] if number % 3 == 0 else []
    yield "media-status", element(
        "get_media_status", supply(dice, "ribbon", ribbon, panels),
        supply(dice, "film", "Clear transfer film", 1000), *laminate)
    yield "printer-id", element(
        "printer_id", element("vendor", "Halvex Card Systems"),
        element("printer_model", dice.choice(MODELS)), element("printer_serial", 20417000 + number),
        element("firmware_version", f"4.{dice.randint(0, 12)}.{dice.randint(0, 3)}"))
    yield "cards-until-cleaning", element(
        "get_count", element("total_cards_until_next_cleaning", dice.randint(-20, 3000)))
    if number % 2 == 0:
        yield "configuration", element(
            "configuration", element("cleaning_thresholds", *(
                f'<{name} min="0" max="5000">{value}</{name}>'
                for name, value in [("alcohol_card_cleaning", 3000), ("pre_warning", 100)])))


def main(folder, printers):
    dice = random.Random(1)
    for number in range(int(printers)):
        for message, reply in replies(dice, number):
            path = pathlib.Path(folder, f"printer-{number:05}.{message}.xml")
            path.write_text(reply + "\n", encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
