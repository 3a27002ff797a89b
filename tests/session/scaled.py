"""Korvane on a scaled screen, one scenario per run:
    /usr/bin/python3 scaled.py <scenario> <path of korvane>
A scenario's name ends in the scale it runs at (QT_SCALE_FACTOR) or the screen's dots per inch
(Xft.dpi), on a screen large enough to hold the form at that scale. There a screen magnifier and
a screen reader's review find the controls by the places AT-SPI reports, pictures are drawn
smoothly, no text is cut off, and the program has nothing to complain about.
"""
import os
import subprocess
import sys
import time

from PIL import Image, ImageChops, ImageStat

import harness as h
import scenarios
from harness import centre, describe, extents, find, find_all, has_state, poll
from scenarios import ENTRIES, INDEPENDENT, calculate, help_button, role

KINDS = ("TEXT", "PUSH_BUTTON", "RADIO_BUTTON", "LABEL", "PANEL", "IMAGE")
SCREENS = {"1": "1024x768", "1.25": "1280x1024", "1.5": "1280x1024", "2": "1600x1200"}
RESOURCES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "resources")



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


def difference(shot, place, picture):
    """Mean difference per channel (0 to 255) between the picture and the screen at place; the
    best of the places a pixel around it, as a scaled place is rounded either way."""
    x, y = place
    width, height = picture.size
    return min(sum(ImageStat.Stat(ImageChops.difference(
        shot.crop((x + dx, y + dy, x + dx + width, y + dy + height)), picture)).mean) / 3
        for dx in (-1, 0, 1) for dy in (-1, 0, 1))


def pick_columns(picture, width, ratio, phase):
    """picture narrowed to width by keeping, for each column, the one under its point at phase
    (0 its left edge, 0.5 its middle), ratio columns on from the last one."""
    picked = Image.new(picture.mode, (width, picture.height))
    for x in range(width):
        source = min(int((x + phase) * ratio), picture.width - 1)
        picked.paste(picture.crop((source, 0, source + 1, picture.height)), (x, 0))
    return picked


def nearest_pixels(picture, size, ratio, phase):
    """picture resized by taking the pixel under each shown pixel's point at phase."""
    across = pick_columns(picture, size[0], ratio, phase).transpose(Image.Transpose.TRANSPOSE)
    return pick_columns(across, size[1], ratio, phase).transpose(Image.Transpose.TRANSPOSE)


def picture(name):
    with Image.open(os.path.join(RESOURCES, name)) as image:
        return image.convert("RGB")


SMOOTH = (Image.Resampling.LANCZOS, Image.Resampling.BILINEAR)


def likeness(s, shot, canvas, name):
    """How far the canvas's pixels are from the @2x picture resized to the shown size smoothly,
    from it resized by taking the nearest pixel (at either of the usual points), and from the
    1x picture resized: {"smooth": ..., "nearest": ..., "1x": ...}, the closest of each kind."""
    scale = float(s.extra_env["QT_SCALE_FACTOR"])
    dense, plain = picture(name.replace(".png", "@2x.png")), picture(name)
    size = round(plain.width * scale), round(plain.height * scale)
    place = extents(canvas)[:2]
    print(f"{name} shown at {place} in {size[0]}x{size[1]}")
    kinds = {"smooth": [dense.resize(size, method) for method in SMOOTH],
             "nearest": [nearest_pixels(dense, size, 2 / scale, phase) for phase in (0, 0.5)],
             "1x": [plain.resize(size, method) for method in SMOOTH]
             + [plain.resize(size, Image.Resampling.NEAREST)]}
    return {kind: min(difference(shot, place, resized) for resized in all_resized)
            for kind, all_resized in kinds.items()}


# Drawn as the smooth resize, a picture differs from it by little more than rounding; in the wrong
# place, by far more.
SMOOTH_ENOUGH = 10


def rough(s, shot, canvas, name, what):
    """What is wrong with how the canvas shows the picture, or nothing."""
    far = likeness(s, shot, canvas, name)
    numbers = ", ".join(f"{far[k]:.2f} from the {k} resize" for k in far)
    print(f"{what}: {numbers}")
    if far["smooth"] <= min(far["nearest"], far["1x"]) and far["smooth"] < SMOOTH_ENOUGH:
        return []
    return [f"the {what} is not {name[:-4]}@2x.png resized smoothly; its pixels differ by "
            + numbers]


# Ink: a pixel this far in grey from the ground (grey #999 text on white is 102 away).
INK = 80
# A row or column this much covered by ink is a line (a button's frame, a neighbour's), not text.
LINE = 0.6 * 255


def without_lines(mask):
    """The ink mask with its rows and columns that are lines cleared."""
    width, height = mask.size
    for y, cover in enumerate(mask.resize((1, height), Image.Resampling.BOX).getdata()):
        if cover > LINE:
            mask.paste(0, (0, y, width, y + 1))
    for x, cover in enumerate(mask.resize((width, 1), Image.Resampling.BOX).getdata()):
        if cover > LINE:
            mask.paste(0, (x, 0, x + 1, height))
    return mask


def ink_bounds(shot, box):
    """Where, within box, something other than a line stands out from the box's commonest
    colour: a box relative to it, or None where there is nothing."""
    x, y, width, height = box
    region = shot.crop((x, y, x + width, y + height)).convert("L")
    ground = max(region.getcolors(width * height))[1]
    gap = ImageChops.difference(region, Image.new("L", region.size, ground))
    return without_lines(gap.point(lambda v: 255 if v > INK else 0)).getbbox()


def inside(inner, outer):
    return (outer[0] <= inner[0] and inner[0] + inner[2] <= outer[0] + outer[2]
            and outer[1] <= inner[1] and inner[1] + inner[3] <= outer[1] + outer[3])


def text_box(field):
    """The field's text from its first character's left to its last one's right."""
    text = field.queryText()
    first, last = (text.getCharacterExtents(i, h.pyatspi.DESKTOP_COORDS)
                   for i in (0, text.characterCount - 1))
    return first[0], first[1], last[0] + last[2] - first[0], max(first[3], last[3])


def drawn_texts(window):
    """(what, box its text must fit, box whose ink is the text) for each text the control window
    shows: a field's characters must lie in its place; a caption's ink must not touch the edges
    of its place (for a radio button, the part right of the round mark)."""
    texts = []
    for field in find_all(window, role("TEXT")):
        texts.append((describe(field), extents(field), text_box(field)))
    for label in find_all(window, role("LABEL")) + find_all(window, role("PUSH_BUTTON")):
        texts.append((describe(label), extents(label), None))
    for radio in find_all(window, role("RADIO_BUTTON")):
        x, y, width, height = extents(radio)
        texts.append((describe(radio), (x + height, y, width - height, height), None))
    return texts


def cut_texts(shot, texts):
    """What of texts is cut off or not drawn."""
    faults = []
    for what, place, chars in texts:
        if chars is not None and not inside(chars, place):
            faults.append(f"{what}: its characters at {chars} reach out of its place {place}")
            continue
        ink = ink_bounds(shot, chars or place)
        width, height = (chars or place)[2:]
        if ink is None:
            faults.append(f"{what}: nothing drawn at {chars or place}")
        elif chars is None and (ink[0] == 0 or ink[1] == 0 or ink[2] == width
                                or ink[3] == height):
            faults.append(f"{what}: its ink {ink} runs to the edge of its place {place}")
    return faults


def cut_through(shot, text):
    """The text with its place ending halfway down it, as a clipped text's would."""
    what, place, chars = text
    if chars is None:
        ink = ink_bounds(shot, place)
        chars = place[0], place[1] + ink[1], place[2], ink[3] - ink[1]
    return what, (*place[:3], chars[1] + chars[3] // 2 - place[1]), text[2]


def drawn_whole_and_smooth(s):
    window = s.pass_about_window()
    calculate(s, window)
    s.move_mouse(0, 0)  # no hover highlight anywhere
    time.sleep(0.35)
    shot = s.screenshot("calculated").convert("RGB")
    radios = find_all(window, role("RADIO_BUTTON"))
    banner = scenarios.pictures_above(window, min(extents(r)[1] for r in radios), 400)
    s.check(len(banner) == 1, f"not one title banner: {list(map(describe, banner))}")
    texts = drawn_texts(window)
    measured = [what for what, *_ in texts]
    missing = scenarios.missing_after_calculate(measured, {
        "field": "text", "label": "label", "button": "push button", "radio": "radio button"})
    s.check(not missing, f"not found to measure: {missing} (found {measured})")
    blind = [text[0] for text in texts if not cut_texts(shot, [cut_through(shot, text)])]
    s.check(not blind, f"cut off halfway down, these still seemed whole: {blind}")
    faults = rough(s, shot, banner[0], "tlarge.png", "title banner") + cut_texts(shot, texts)
    s.click_on(help_button(window), press_only=True)
    info = s.frame(scenarios.INFO_TITLE, 3)
    s.check(info, "a press on \"?\" did not bring up the information window")
    time.sleep(0.35)
    shot = s.screenshot("information").convert("RGB")
    faults += rough(s, shot, find(info, role("IMAGE")), "tformula.png", "formula picture")
    s.check(not faults, "; ".join(faults))


def quiet_after_a_full_tour(s):
    window = s.pass_about_window()
    scenarios.visit_everything(s, window, by_keys=True)
    calculate(s, window)
    s.key("ctrl+q")
    scenarios.expect_clean_exit(s, "quitting after a full tour")
    s.check(not s.output(), f"after a full tour the program printed {s.output()!r}")


def variant(check, screen, env=None, prepare=None):
    """check run on a screen of that size, env added to the program's environment, and
    prepare(session) run on the desktop before the program starts."""
    def scenario(s):
        check(s)
    scenario.env = dict(getattr(check, "env", {}), **(env or {}))
    scenario.screen, scenario.prepare = screen, prepare
    return scenario


def at_scale(check, scale):
    return variant(check, SCREENS[scale], env={"QT_SCALE_FACTOR": scale})


def at_dpi(check, dpi, screen):
    """check run on a screen of that many dots per inch, as a desktop's settings give it."""
    return variant(check, screen, prepare=lambda s: subprocess.run(
        ["xrdb", "-merge"], input=f"Xft.dpi: {dpi}\n", text=True, env=s.env, check=True,
        timeout=10))


SCENARIOS = {}
for scale in ("1.25", "1.5", "2"):
    SCENARIOS[f"places_at_{scale}"] = at_scale(places_hold_their_controls, scale)
    SCENARIOS[f"drawn_at_{scale}"] = at_scale(drawn_whole_and_smooth, scale)
for scale in ("1.5", "2"):
    for name in ("contrast_light", "contrast_dark", "spoken_names"):
        SCENARIOS[f"{name}_at_{scale}"] = at_scale(scenarios.SCENARIOS[name], scale)
for scale in SCREENS:
    SCENARIOS[f"quiet_at_{scale}"] = at_scale(quiet_after_a_full_tour, scale)
for dpi, screen in ((144, "1280x1024"), (192, "1600x1200")):
    SCENARIOS[f"quiet_at_{dpi}dpi"] = at_dpi(quiet_after_a_full_tour, dpi, screen)

if __name__ == "__main__":
    sys.exit(h.run(SCENARIOS))
