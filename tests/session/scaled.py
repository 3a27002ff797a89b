"""Korvane on a scaled screen, where a screen magnifier and a screen reader's review find the
controls by the places AT-SPI reports, one scenario per run:
    /usr/bin/python3 scaled.py <scenario> <path of korvane>
A scenario's name is the scale it runs at (QT_SCALE_FACTOR), on a screen large enough to hold
the form at that scale.
"""
import sys

import harness as h
from harness import describe, extents, find, find_all, has_state, poll
from scenarios import ENTRIES, INDEPENDENT, role

KINDS = ("TEXT", "PUSH_BUTTON", "RADIO_BUTTON", "LABEL", "PANEL", "IMAGE")


def centre(obj):
    x, y, w, height = extents(obj)
    return x + w // 2, y + height // 2


def found_at(window, x, y):
    """What AT-SPI gives at a screen point, asked from the window down, as a reader asks."""
    found = window
    while True:
        deeper = found.queryComponent().getAccessibleAtPoint(x, y, h.pyatspi.DESKTOP_COORDS)
        if deeper is None or deeper == found:
            return found
        found = deeper


def within(obj, container):
    """Whether obj is the container or lies inside it (a frame's centre may hold a field)."""
    while obj is not None:
        if obj == container:
            return True
        obj = obj.parent
    return False


def places_hold_their_controls(s):
    window = s.pass_about_window()
    radio = find(window, role("RADIO_BUTTON"), INDEPENDENT)
    s.click_on(radio)
    s.check(poll(lambda: has_state(radio, "CHECKED"), 3),
            f"a click at the centre of \"{INDEPENDENT}\"'s place {extents(radio)} did not choose "
            "it")
    for name in ENTRIES:
        entry = find(window, role("TEXT"), name)
        s.click_on(entry)
        s.check(poll(lambda: has_state(entry, "FOCUSED"), 2),
                f"a click at the centre of \"{name}\"'s place {extents(entry)} did not reach it")
    shown = [o for kind in KINDS for o in find_all(window, role(kind)) if o.name]
    missed = []
    for obj in shown:
        at = found_at(window, *centre(obj))
        if not within(at, obj):
            missed.append(f"{describe(obj)} at {extents(obj)}: {describe(at)}")
    s.check(len(shown) > 20 and not missed,
            f"of {len(shown)} controls, these are not found at their reported centres: {missed}")


SCENARIOS = {}
for scale, screen in (("1.25", "1280x1024"), ("1.5", "1280x1024"), ("2", "1600x1200")):
    def scenario(s):
        places_hold_their_controls(s)
    scenario.env, scenario.screen = {"QT_SCALE_FACTOR": scale}, screen
    SCENARIOS[f"places_at_{scale}"] = scenario

if __name__ == "__main__":
    sys.exit(h.run(SCENARIOS))
