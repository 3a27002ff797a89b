"""Korvane used as a person uses it, one scenario per run:
    /usr/bin/python3 scenarios.py <scenario> <path of korvane>
Each scenario gets a desktop of its own from harness.Session; see harness.py for how it is built.
"""
import math
import os
import sys
import time

import harness as h
from harness import extents, find, find_all, has_state, poll, showing, text_of

INDEPENDENT, RELATED = "Independent Means", "Related Means"
M1, SD1 = "Mean of sample 1", "Standard deviation of sample 1"
N1 = "N of sample 1, or number of pairs"
M2, SD2, N2 = "Mean of sample 2", "Standard deviation of sample 2", "N of sample 2"
R = "Correlation r between the samples"
T, P, DF = "t", "Probability, two-tailed", "Degrees of freedom"
INFO_TITLE = "t-test Information"
NO_TEST_MESSAGE = "Select Independent or Related t-test and then enter appropriate data"

# Entries of an independent test as typed with the mouse: fractions, unequal N, a negative t.
SAMPLE = {M1: "97.5", SD1: "12.4", N1: "31", M2: "101.25", SD2: "9.8", N2: "27"}
# The same kind of test typed from the keyboard alone, in reading order; t +1.798, df 20, p .0873.
SAMPLE_KEYS = {M1: "10", SD1: "2", N1: "10", M2: "8", SD2: "3", N2: "12"}


# ----- what the result fields must show, worked out from the formulas --------------------------
def two_tailed_p(t, df):
    """1 - 2 * (integral of Student's t density from 0 to |t|), by Simpson's rule."""
    t = abs(t)
    if t == 0:
        return 1.0
    log_c = math.lgamma((df + 1) / 2) - math.lgamma(df / 2) - 0.5 * math.log(df * math.pi)
    density = lambda x: math.exp(log_c - (df + 1) / 2 * math.log1p(x * x / df))  # noqa: E731
    steps = 4000
    width = t / steps
    total = density(0) + density(t) + sum((4 if i % 2 else 2) * density(i * width)
                                          for i in range(1, steps))
    return max(0.0, 1 - 2 * total * width / 3)


def shown_results(t, df):
    """The texts of the t, p and df fields for this t and df."""
    digits = f"{abs(t):.3f}"
    t_text = ("-" if t < 0 else "+") + (digits[1:] if digits.startswith("0") else digits)
    p_text = f"{max(two_tailed_p(t, df), 0.0001):.4f}"
    return {T: t_text, P: p_text[1:] if p_text.startswith("0") else p_text, DF: str(df)}


def expected_independent(entries):
    m1, sd1, m2, sd2 = (float(entries[k]) for k in (M1, SD1, M2, SD2))
    n1, n2 = int(float(entries[N1])), int(float(entries[N2]))
    pooled = ((n1 - 1) * sd1 ** 2 + (n2 - 1) * sd2 ** 2) / (n1 + n2 - 2)
    return shown_results((m1 - m2) / math.sqrt(pooled * (1 / n1 + 1 / n2)), n1 + n2 - 2)


# ----- steps a person takes ---------------------------------------------------------------------
def field(window, name):
    return find(window, h.pyatspi.ROLE_TEXT, name, only_showing=False)


def results(window):
    return {name: text_of(field(window, name)) for name in (T, P, DF)}


def choose_test(s, window, caption):
    s.click_on(find(window, h.pyatspi.ROLE_RADIO_BUTTON, caption))
    s.check(poll(lambda: showing(field(window, M1)), 3),
            f"clicking \"{caption}\" brought up no entry fields")


def type_into(s, window, entries):
    for name, text in entries.items():
        s.click_on(field(window, name))
        s.type(text)
        shown = poll(lambda: text_of(field(window, name)) == text and text, 2)
        s.check(shown, f"typed \"{text}\" into the field \"{name}\", "
                       f"which then showed \"{text_of(field(window, name))}\"")


def calculate(s, window, entries=SAMPLE):
    """Chooses the independent test, types the entries and presses Calculate with the mouse."""
    choose_test(s, window, INDEPENDENT)
    type_into(s, window, entries)
    s.click_on(find(window, h.pyatspi.ROLE_PUSH_BUTTON, "Calculate"))
    expect_results(s, window, expected_independent(entries), "after Calculate")


def expect_results(s, window, want, when):
    got = poll(lambda: results(window) if results(window) == want else None, 3) or results(window)
    s.check(got == want, f"{when} the result fields show t \"{got[T]}\", p \"{got[P]}\", "
                         f"df \"{got[DF]}\"; the entries give t \"{want[T]}\", p \"{want[P]}\", "
                         f"df \"{want[DF]}\"")


def open_menu(s, window, title):
    item = find(window, h.pyatspi.ROLE_MENU_ITEM, title)
    s.check(item, f"the menu bar shows no \"{title}\" menu")
    s.click_on(item)
    popup = poll(lambda: next((c for c in item if c is not None and showing(c)), None), 3)
    s.check(popup, f"clicking \"{title}\" in the menu bar opened no menu")
    return popup


def close_menu(s, popup, title):
    """Escape closes the menu; Qt then leaves the bar holding the focus with the title lit, and a
    second Escape gives the focus back to where it was."""
    s.key("Escape")
    s.check(poll(lambda: not showing(popup), 3), f"Escape left the \"{title}\" menu open")
    bar = popup.parent.parent
    if poll(lambda: has_state(bar, h.pyatspi.STATE_FOCUSED), 0.5):
        s.key("Escape")
        s.check(poll(lambda: not has_state(bar, h.pyatspi.STATE_FOCUSED), 2),
                f"after the \"{title}\" menu was closed the menu bar kept the focus")


def menu_items(popup):
    """The showing items of an open menu, as (caption, enabled) pairs."""
    return [(item.name, has_state(item, h.pyatspi.STATE_SENSITIVE)
             and has_state(item, h.pyatspi.STATE_ENABLED))
            for item in popup if item is not None and showing(item) and item.name]


def help_button(window):
    """The "?" button: the push button that is neither Calculate nor Clear."""
    return next(b for b in find_all(window, h.pyatspi.ROLE_PUSH_BUTTON)
                if b.name not in ("Calculate", "Clear"))


def top_windows(s, role=None, name=None):
    return [w for w in s.application() or [] if w is not None and showing(w)
            and (role is None or w.getRole() == role) and (name is None or w.name == name)]


def active_window_name(s):
    return s.xdotool("getactivewindow", "getwindowname").strip()


def activate_by_click(s, window):
    """Clicks the empty right end of the window's menu bar, which gives it the focus."""
    x, y, width, height = extents(find(window, h.pyatspi.ROLE_MENU_BAR))
    s.click(x + width - 10, y + height // 2)


def close_with_window_manager(s, title):
    """Alt+F4, openbox's close of the active window, after checking it is the right one."""
    s.check(poll(lambda: active_window_name(s) == title, 3),
            f"the window \"{title}\" was not the active one, so Alt+F4 could not close it "
            f"(active: \"{active_window_name(s)}\")")
    s.key("alt+F4")


def expect_clean_exit(s, how):
    status = s.wait_for_exit(5)
    if status is None:
        s.fail(f"{how}: the program was still running 5 s later")
    if status != 0:
        seen = f"was killed by signal {-status} (exit status {128 - status} in a shell)" \
            if status < 0 else f"ended with exit status {status}"
        s.fail(f"{how}: the program {seen}; its output: {s.output().strip()!r}")
    faults = [line for line in s.output().splitlines() if "Korvane:" in line]
    s.check(not faults, f"{how}: the program reported a fault: {faults}")
    left = s.left_behind()
    s.check(not left, f"{how}: processes were left behind: {left}")


# ----- the scenarios ----------------------------------------------------------------------------
def leave_by_close_button(s, window):
    activate_by_click(s, window)
    close_with_window_manager(s, "Korvane")


def leave_by_file_quit(s, window):
    s.click_on(find(open_menu(s, window, "File"), h.pyatspi.ROLE_MENU_ITEM, "Quit"))


def leave_by_ctrl_q(s, window):
    activate_by_click(s, window)
    s.key("ctrl+q")


WAYS_OUT = {"the close button (Alt+F4 in openbox)": leave_by_close_button,
            "File > Quit": leave_by_file_quit, "Ctrl+Q": leave_by_ctrl_q}


def ways_out(s):
    for run, (way, leave) in enumerate(WAYS_OUT.items()):
        if run:
            s.start_program()
        window = s.pass_about_window()
        visit_everything(s, window)
        leave(s, window)
        expect_clean_exit(s, f"after a full tour, leaving by {way}")


def visit_everything(s, window):
    """A message box, every menu, the information window and the about window, each dismissed."""
    s.click_on(find(window, h.pyatspi.ROLE_PUSH_BUTTON, "Calculate"))
    alert = poll(lambda: top_windows(s, h.pyatspi.ROLE_ALERT), 3)
    s.check(alert, "Calculate with no test chosen showed no message")
    message = find(alert[0], h.pyatspi.ROLE_LABEL)
    s.check(message and message.name == NO_TEST_MESSAGE,
            f"the message said \"{message and message.name}\", not \"{NO_TEST_MESSAGE}\"")
    s.click_on(find(alert[0], h.pyatspi.ROLE_PUSH_BUTTON))
    s.check(poll(lambda: not top_windows(s, h.pyatspi.ROLE_ALERT), 3),
            "the message stayed up after its button was clicked")
    for title in ("File", "Edit", "Window"):
        close_menu(s, open_menu(s, window, title), title)
    s.click_on(help_button(window), press_only=True)
    s.check(s.frame(INFO_TITLE, 3),
            "a mouse press on \"?\" did not bring up the information window")
    close_with_window_manager(s, INFO_TITLE)
    s.check(poll(lambda: not top_windows(s, name=INFO_TITLE), 3),
            "the information window stayed up after Alt+F4")
    popup = open_menu(s, window, "Window")
    s.click_on(find(popup, h.pyatspi.ROLE_MENU_ITEM, "About Korvane"))
    about = poll(lambda: top_windows(s, h.pyatspi.ROLE_FRAME, ""), 3)
    s.check(about, "Window > About Korvane brought up no about window")
    x, y, width, height = extents(about[0])
    s.click(x + width // 2, y + 10)
    s.check(poll(lambda: not top_windows(s, h.pyatspi.ROLE_FRAME, ""), 3),
            "the about window stayed up after a click in it")
    s.check(s.frame("Korvane", 3), "the control window was gone after the about window")


def about_alt_f4(s):
    about = poll(lambda: s.windows(), 10)
    s.check(about, "no window of the program came up")
    s.check(poll(lambda: s.xdotool("getactivewindow").strip() == str(about[0]), 3),
            "the about window never became the active window, so Alt+F4 could not reach it")
    s.key("alt+F4")
    pressed, blank_since = time.monotonic(), None
    while not s.frame("Korvane", 0):
        now = time.monotonic()
        if s.proc.poll() is not None:
            s.fail(f"Alt+F4 on the about window ended the program (exit status {s.proc.poll()})")
        blank_since = None if s.windows() else blank_since or now
        if blank_since is not None and now - blank_since > 2:
            s.fail(f"{now - pressed:.1f} s after Alt+F4 on the about window no window of the "
                   f"program has been on the screen for {now - blank_since:.1f} s")
        if now - pressed > 6:
            s.fail("the control window had not come up 6 s after Alt+F4 on the about window")
        time.sleep(0.05)
    close_with_window_manager(s, "Korvane")
    expect_clean_exit(s, "closing the control window after Alt+F4 on the about window")


def result_fields(s):
    window = s.pass_about_window()
    calculate(s, window)
    shown = results(window)
    t_field, p_field = field(window, T), field(window, P)

    def in_p_field(*keys):
        s.click_on(p_field)
        s.key(*keys)

    def from_edit_menu(item):
        s.click_on(find(open_menu(s, window, "Edit"), h.pyatspi.ROLE_MENU_ITEM, item))
        if find(window, h.pyatspi.ROLE_MENU_ITEM, item):  # a disabled item leaves it open
            s.key("Escape", "Escape")

    s.click_on(t_field)
    s.key("ctrl+a", "ctrl+x")
    expect_results(s, window, shown, "after Ctrl+A Ctrl+X in the t field")
    in_p_field("ctrl+a")
    from_edit_menu("Cut")
    expect_results(s, window, shown, "after Edit > Cut with the p field's text selected")
    s.set_clipboard("12345")
    in_p_field("End")
    from_edit_menu("Paste")
    expect_results(s, window, shown, "after Edit > Paste in the p field")
    in_p_field("End", "ctrl+v")
    expect_results(s, window, shown, "after Ctrl+V in the p field")
    in_p_field("End")
    s.type("42")
    expect_results(s, window, shown, "after typing 42 in the p field")
    in_p_field("End", "BackSpace", "Home", "Delete")
    expect_results(s, window, shown, "after BackSpace and Delete in the p field")
    s.click_on(t_field)
    s.key("ctrl+a", "ctrl+c")
    copied = poll(lambda: s.clipboard() == shown[T] and shown[T], 2) or s.clipboard()
    s.check(copied == shown[T], f"Ctrl+A Ctrl+C in the t field put \"{copied}\" on the clipboard, "
                                f"not the field's \"{shown[T]}\"")
    for name in (T, P, DF):
        states = field(window, name).getState()
        s.check(not states.contains(h.pyatspi.STATE_EDITABLE)
                or states.contains(h.pyatspi.STATE_READ_ONLY),
                f"a screen reader is told the result field \"{name}\" can be edited")
    choose_test(s, window, RELATED)
    for name in (M1, SD1, N1, M2, SD2, R):
        states = field(window, name).getState()
        s.check(states.contains(h.pyatspi.STATE_EDITABLE)
                and not states.contains(h.pyatspi.STATE_READ_ONLY),
                f"a screen reader is told the entry field \"{name}\" cannot be edited")


def relative_luminance(rgb):
    def linear(c):
        c /= 255
        return c / 12.92 if c <= 0.04045 else ((c + 0.055) / 1.055) ** 2.4
    r, g, b = (linear(c) for c in rgb[:3])
    return 0.2126 * r + 0.7152 * g + 0.0722 * b


def contrast(a, b):
    la, lb = sorted((relative_luminance(a), relative_luminance(b)), reverse=True)
    return (la + 0.05) / (lb + 0.05)


def ground_and_ink(images, box):
    """The commonest colour of the box and the pixel that contrasts most with it, taken from the
    shot where that contrast is lowest (several shots, so that a blinking text cursor cannot
    stand in for a text)."""
    x, y, width, height = box
    found = []
    for image in images:
        region = image.crop((x, y, x + width, y + height))
        ground = max(region.getcolors(width * height))[1]
        ink = max(region.getdata(), key=lambda pixel: contrast(pixel, ground))
        found.append((contrast(ground, ink), ground, ink))
    return min(found)


def hex_colour(rgb):
    return "#%02X%02X%02X" % tuple(rgb[:3])


def inset(box, by):
    x, y, width, height = box
    return x + by, y + by, width - 2 * by, height - 2 * by


def texts_to_measure(window):
    """What the platform draws in its own colours, as (what a person calls it, screen box)."""
    roles = h.pyatspi
    regions = []
    for radio in find_all(window, roles.ROLE_RADIO_BUTTON):
        x, y, width, height = extents(radio)  # the caption, right of the round mark
        regions.append((f"the radio caption \"{radio.name}\"",
                        (x + height + 2, y, width - height - 2, height)))
    for frame in find_all(window, roles.ROLE_PANEL) + find_all(window, roles.ROLE_GROUPING):
        if frame.name.startswith("Sample"):
            x, y, width, _ = extents(frame)  # the caption stands above the frame's line
            regions.append((f"the frame caption \"{frame.name}\"", (x, y, width, 16)))
    for button in find_all(window, roles.ROLE_PUSH_BUTTON):
        regions.append((f"the button caption \"{button.name}\"", inset(extents(button), 4)))
    for text in find_all(window, roles.ROLE_TEXT):
        regions.append((f"the text \"{text_of(text)}\" in the field \"{text.name}\"",
                        inset(extents(text), 3)))
    for title in find_all(find(window, roles.ROLE_MENU_BAR), roles.ROLE_MENU_ITEM):
        if title.name:
            regions.append((f"the menu title \"{title.name}\"", inset(extents(title), 1)))
    return regions


# Labels that carry colours of their own.
OWN_COLOURS = {"Mean": (0xCC, 0, 0), "Standard Deviation": (0xCC, 0, 0), "N": (0xCC, 0, 0),
               "two-tailed": (0x77,) * 3, "t": (0x99,) * 3, "df": (0x99,) * 3}


def contrast_check(s, variant):
    window = s.pass_about_window()
    calculate(s, window)
    s.move_mouse(0, 0)  # no hover highlight anywhere
    time.sleep(0.3)
    shots = []
    for _ in range(3):
        shots.append(s.screenshot(variant)[0].convert("RGB"))
        time.sleep(0.35)
    left, top, width, height = extents(window)
    if os.environ.get("KORVANE_SESSION_DOCS"):
        shots[0].crop((left, top, left + width, top + height)).save(
            os.path.join(os.environ["KORVANE_SESSION_DOCS"], f"korvane-{variant}.png"))
    x, y, width, height = extents(find(window, h.pyatspi.ROLE_FILLER))
    ground = max(shots[0].crop((x, y, x + width, y + height)).getcolors(width * height))[1]
    s.check(ground == (255, 255, 255), f"the window's ground is {hex_colour(ground)}, not white")
    if variant == "dark":
        # The program keeps its light look, so the picture cannot show that the theme was in
        # force; Qt's plug-in log does.
        s.check('libqgtk3.so" loaded library' in s.output(),
                "the dark theme did not take: Qt did not load its GTK theme plug-in")

    regions = texts_to_measure(window)
    s.check(len(regions) == 19, f"of the 19 captions and texts to measure (2 radio buttons, 2 "
                                f"frames, 3 buttons, 9 fields, 3 menus) only these were found: "
                                f"{[what for what, _ in regions]}")
    faint = []
    for what, box in regions:
        ratio, ground, ink = ground_and_ink(shots, box)
        if ratio < 4.5:
            faint.append(f"{what}: {hex_colour(ink)} on {hex_colour(ground)}, contrast {ratio:.2f}")
    s.check(not faint, "hard to read (contrast below 4.5:1):\n    " + "\n    ".join(faint))

    wrong = []
    for label in find_all(window, h.pyatspi.ROLE_LABEL):
        if label.name in OWN_COLOURS:
            _, _, ink = ground_and_ink(shots[:1], extents(label))
            want = OWN_COLOURS[label.name]
            if max(abs(a - b) for a, b in zip(ink, want)) > 0x28:
                wrong.append(f"\"{label.name}\" is drawn in {hex_colour(ink)}, "
                             f"not in its own {hex_colour(want)}")
    s.check(not wrong, "labels lost their own colours:\n    " + "\n    ".join(wrong))


def contrast_light(s):
    contrast_check(s, "light")


def contrast_dark(s):
    contrast_check(s, "dark")


contrast_dark.env = {"QT_QPA_PLATFORMTHEME": "gtk3", "GTK_THEME": "Adwaita:dark",
                     "QT_DEBUG_PLUGINS": "1"}
contrast_dark.needs = ["/usr/lib/*/qt6/plugins/platformthemes/libqgtk3.so"]


def focus_after(s, window, keys):
    """Presses the keys and gives the object that then has the focus (waiting for it to move)."""
    before = h.focused(window)
    s.key(*keys)
    moved = poll(lambda: (now := h.focused(window)) is not None and now != before and now, 1)
    return moved or h.focused(window)


def name_of(obj):
    return h.describe(obj) if obj is not None else "nothing"


def tab_until(s, window, keys, wanted, limit=16):
    """Presses the keys until wanted(focused object) holds; gives that object and the path."""
    path = []
    for _ in range(limit):
        now = focus_after(s, window, keys)
        path.append(name_of(now))
        if now is not None and wanted(now):
            return now, path
    return None, path


def is_radio(obj):
    return obj.getRole() == h.pyatspi.ROLE_RADIO_BUTTON


def choose_by_keyboard(s, window, caption):
    """From a focused radio button, arrows and Space until the test is chosen; choosing a test
    puts the focus in the mean 1 field."""
    for _ in range(4):
        now = h.focused(window)
        if now is not None and now.name == M1 and has_state(
                find(window, h.pyatspi.ROLE_RADIO_BUTTON, caption), h.pyatspi.STATE_CHECKED):
            return
        if now is None or not is_radio(now):
            break
        other_way = "Left" if caption == INDEPENDENT else "Right"
        focus_after(s, window, ("space",) if now.name == caption else (other_way,))
    s.fail(f"arrows and Space on the radio buttons did not choose \"{caption}\" "
           f"(the focus is on {name_of(h.focused(window))})")


def keyboard_only(s):
    s.check(poll(lambda: s.windows(), 10), "no window of the program came up")
    s.key("space")
    window = s.control_window()
    start = h.focused(window)
    radio, path = tab_until(s, window, ("Tab",), is_radio)
    s.check(radio, f"Tab never reached a radio button, from {name_of(start)} it went: {path}")
    radio, path = tab_until(s, window, ("shift+Tab",), is_radio)
    s.check(radio, f"Shift+Tab never came back to a radio button, it went: {path}")
    choose_by_keyboard(s, window, INDEPENDENT)
    for step, name in enumerate((M1, SD1, N1, M2, SD2, N2)):
        if step:
            s.key("Tab")
        s.type(SAMPLE_KEYS[name])
    typed = {name: text_of(field(window, name)) for name in (M1, SD1, N1, M2, SD2, N2)}
    s.check(typed == SAMPLE_KEYS, "typing 10 Tab 2 Tab 10 Tab 8 Tab 3 Tab 12 left "
            + ", ".join(f"{name} \"{text}\"" for name, text in typed.items()))
    s.key("Return")
    expect_results(s, window, {T: "+1.798", P: ".0873", DF: "20"}, "after Return in the N 2 field")

    cycle = [name_of(h.focused(window))]
    s.check(cycle[0] == f"text \"{N2}\"", f"after Return the focus was on {cycle[0]}")
    for _ in range(24):
        cycle.append(name_of(focus_after(s, window, ("Tab",))))
        if cycle[-1] == cycle[0]:
            break
    s.check(cycle[-1] == cycle[0], f"Tab did not come round again: {cycle}")
    s.check(any(c.startswith("push button") and "Calculate" not in c and "Clear" not in c
                for c in cycle), f"Tab never reached the \"?\" button: {cycle}")
    places = [cycle.index(f"text \"{n}\"", 1) if f"text \"{n}\"" in cycle[1:] else -1
              for n in (M1, SD1, N1, M2, SD2, N2)]
    s.check(places == list(range(places[0], places[0] + 6)) and places[0] > 0,
            f"the Tab order runs {cycle}; the entry fields should follow one another in reading "
            "order with nothing between them")
    backwards = [name_of(focus_after(s, window, ("shift+Tab",))) for _ in range(5)]
    s.check(backwards == [f"text \"{n}\"" for n in (SD2, M2, N1, SD1, M1)],
            f"Shift+Tab from the N 2 field went {backwards}")

    radio, path = tab_until(s, window, ("shift+Tab",), is_radio)
    s.check(radio, f"Shift+Tab never came back to a radio button, it went: {path}")
    choose_by_keyboard(s, window, RELATED)
    order = [name_of(h.focused(window))] + [name_of(focus_after(s, window, ("Tab",)))
                                            for _ in range(5)]
    s.check(order == [f"text \"{n}\"" for n in (M1, SD1, N1, M2, SD2, R)],
            f"in the related test Tab goes {order}")


def spoken_names(s):
    roles = h.pyatspi
    window = s.pass_about_window()
    calculate(s, window)
    named_roles = {roles.ROLE_PUSH_BUTTON, roles.ROLE_RADIO_BUTTON, roles.ROLE_TEXT,
                   roles.ROLE_ENTRY, roles.ROLE_LABEL, roles.ROLE_IMAGE, roles.ROLE_ICON,
                   roles.ROLE_PANEL, roles.ROLE_GROUPING}
    shown = [o for o in h.walk(window) if showing(o)]
    silent = [h.describe(o) for o in shown if o.getRole() in named_roles and not o.name.strip()]
    s.check(not silent, f"a screen reader announces these without a name: {silent}")
    untitled = [h.describe(o) for o in shown if "untitled" in o.name.lower()]
    s.check(not untitled, f"a screen reader announces \"Untitled\": {untitled}")
    question = help_button(window)
    s.check("information" in question.name.lower(), f"the \"?\" button is announced as "
            f"\"{question.name}\", which does not say it brings up information")
    radios = find_all(window, roles.ROLE_RADIO_BUTTON)
    radio_top = min(extents(r)[1] for r in radios)
    content = find(window, roles.ROLE_FILLER)
    title = [o for o in h.walk(content) if o is not content and showing(o)
             and extents(o)[2] >= 400 and sum(extents(o)[1::2]) <= radio_top]
    s.check(title, "no title picture was found above the radio buttons")
    s.check(all(o.name or o.description for o in title),
            f"the title picture ({h.describe(title[0])}) has neither name nor description")
    group = radios[0].parent
    while group.getRole() not in (roles.ROLE_PANEL, roles.ROLE_GROUPING, roles.ROLE_FRAME):
        group = group.parent
    s.check(group.getRole() != roles.ROLE_FRAME and radios[1] in list(h.walk(group)),
            f"the two radio buttons are not in one group; their parent is "
            f"{h.describe(radios[0].parent)}")
    s.check(group.name.strip(), "the group of the two radio buttons has no name")
    s.click_on(question, press_only=True)
    info = s.frame(INFO_TITLE, 3)
    s.check(info, "a mouse press on \"?\" did not bring up the information window")
    content = find(info, roles.ROLE_FILLER)
    text_top = extents(find(info, roles.ROLE_TEXT))[1]
    pictures = [o for o in h.walk(content) if o is not content and showing(o)
                and sum(extents(o)[1::2]) <= text_top]
    s.check(pictures, "no formula picture was found above the text of the information window")
    s.check(all(o.name or o.description for o in pictures),
            f"the formula picture ({h.describe(pictures[0])}) has neither name nor description")


def menus(s):
    window = s.pass_about_window()

    def states_of(title):
        popup = open_menu(s, window, title)
        items = menu_items(popup)
        close_menu(s, popup, title)
        return items

    file_items = dict(states_of("File"))
    s.check(file_items.get("Print") is False, f"File > Print is not disabled: {file_items}")
    s.check(file_items.get("Quit") is True, f"File > Quit is not enabled: {file_items}")
    window_items = states_of("Window")
    abouts = [name for name, _ in window_items if name == "About Korvane"]
    s.check(len(abouts) == 1, f"the Window menu lists \"About Korvane\" {len(abouts)} times: "
                              f"{window_items}")
    s.check(dict(window_items).get("Control") is False,
            f"Window > Control is not disabled: {window_items}")

    def expect_edit(where, want):
        got = {name: enabled for name, enabled in states_of("Edit") if name in want}
        s.check(got == want, f"with {where} the Edit menu has "
                             + ", ".join(f"{n} {'enabled' if e else 'disabled'}"
                                         for n, e in got.items())
                             + "; it should have "
                             + ", ".join(f"{n} {'enabled' if e else 'disabled'}"
                                         for n, e in want.items()))

    choose_test(s, window, INDEPENDENT)
    s.set_clipboard("42")
    s.click_on(field(window, M1))
    expect_edit("the focus in an empty entry field and text on the clipboard",
                {"Undo": False, "Cut": False, "Copy": False, "Paste": True})
    s.type("12.5")
    s.key("ctrl+a")
    expect_edit("text selected in an entry field", {"Cut": True, "Copy": True, "Paste": True})
    s.key("ctrl+a", "BackSpace")
    s.check(poll(lambda: text_of(field(window, M1)) == "", 2),
            f"Ctrl+A BackSpace left \"{text_of(field(window, M1))}\" in the mean 1 field")
    calculate(s, window)
    s.click_on(field(window, T))
    s.key("ctrl+a")
    expect_edit("the text of a result field selected", {"Cut": False, "Copy": True, "Paste": False})


SCENARIOS = {f.__name__: f for f in (ways_out, result_fields, about_alt_f4, contrast_light,
                                     contrast_dark, keyboard_only, spoken_names, menus)}

if __name__ == "__main__":
    sys.exit(h.run(SCENARIOS))
