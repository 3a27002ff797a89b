"""Korvane used as a person uses it, one scenario per run:
    /usr/bin/python3 scenarios.py <scenario> <path of korvane>
Each scenario gets a desktop of its own from harness.Session.
"""
import os
import subprocess
import sys
import time

import harness as h
from harness import describe, extents, find, find_all, focused, has_state, poll, showing, text_of

INDEPENDENT, RELATED = "Independent Means", "Related Means"
M1, SD1 = "Mean of sample 1", "Standard deviation of sample 1"
M2, SD2 = "Mean of sample 2", "Standard deviation of sample 2"
N1, N2 = "N of sample 1, or number of pairs", "N of sample 2"
R = "Correlation r between the samples"
T, P, DF = "t", "Probability, two-tailed", "Degrees of freedom"
HELP = "Show the t-test information"  # what a screen reader calls "?"
MENUS = ("File", "Edit", "Window")
INFO_TITLE = "t-test Information"
ABOUT = "About Korvane"  # the menu item, and the name a screen reader gives the about window
NO_TEST_MESSAGE = "Select Independent or Related t-test and then enter appropriate data"
ENTRIES = (M1, SD1, N1, M2, SD2, N2)
# Typed with the mouse: fractions, unequal N, a negative t; and what the result fields then show.
SAMPLE = {M1: "97.5", SD1: "12.4", N1: "31", M2: "101.25", SD2: "9.8", N2: "27"}
SAMPLE_RESULTS = {T: "-1.264", P: ".2114", DF: "56"}
# Typed from the keyboard alone, in reading order.
KEYED = {M1: "10", SD1: "2", N1: "10", M2: "8", SD2: "3", N2: "12"}
KEYED_RESULTS = {T: "+1.798", P: ".0873", DF: "20"}


def role(name):
    return getattr(h.pyatspi, "ROLE_" + name)


def field(window, name):
    return find(window, role("TEXT"), name, only_showing=False)


def results(window):
    return {name: text_of(field(window, name)) for name in (T, P, DF)}


def expect_results(s, window, want, when):
    got = poll(lambda: results(window) == want and want, 3) or results(window)
    s.check(got == want, f"{when} the result fields show {got}, not {want}")


def choose_test(s, window, caption):
    s.click_on(find(window, role("RADIO_BUTTON"), caption))
    s.check(poll(lambda: showing(field(window, M1)), 3), f"\"{caption}\" brought up no fields")


def calculate(s, window):
    """Chooses the independent test, types SAMPLE and presses Calculate, all with the mouse."""
    choose_test(s, window, INDEPENDENT)
    for name, text in SAMPLE.items():
        s.click_on(field(window, name))
        s.type(text)
        s.check(poll(lambda: text_of(field(window, name)) == text, 2),
                f"typed \"{text}\" into \"{name}\", which then showed "
                f"\"{text_of(field(window, name))}\"")
    s.click_on(find(window, role("PUSH_BUTTON"), "Calculate"))
    expect_results(s, window, SAMPLE_RESULTS, "after Calculate")


def open_menu(s, window, title):
    item = find(window, role("MENU_ITEM"), title)
    s.check(item, f"the menu bar shows no \"{title}\" menu")
    s.click_on(item)
    popup = poll(lambda: next(c for c in item if c is not None and showing(c)), 3)
    s.check(popup, f"clicking \"{title}\" in the menu bar opened no menu")
    return popup


def open_by_keys(s, window, title, *keys):
    """Presses the keys one by one, as a person does; gives the menu they opened."""
    item = find(window, role("MENU_ITEM"), title)
    for key in keys:
        s.key(key)
    popup = poll(lambda: next(c for c in item if c is not None and showing(c)), 3)
    s.check(popup, f"{', '.join(keys)} opened no \"{title}\" menu")
    return popup


def close_menu(s, popup, title):
    """Escape closes the menu; Qt then leaves the bar focused, and a second Escape leaves it."""
    s.key("Escape")
    s.check(poll(lambda: not showing(popup), 3), f"Escape left the \"{title}\" menu open")
    bar = popup.parent.parent
    if poll(lambda: has_state(bar, "FOCUSED"), 0.5):
        s.key("Escape")
        s.check(poll(lambda: not has_state(bar, "FOCUSED"), 2),
                f"after the \"{title}\" menu was closed the menu bar kept the focus")


def menu_states(s, window, title):
    """The showing items of a menu, opened and closed again, as (caption, enabled) pairs."""
    popup = open_menu(s, window, title)
    items = [(i.name, has_state(i, "SENSITIVE")) for i in popup
             if i is not None and showing(i) and i.name]
    close_menu(s, popup, title)
    return items


def help_button(window):
    return next(b for b in find_all(window, role("PUSH_BUTTON"))
                if b.name not in ("Calculate", "Clear"))


def close_with_window_manager(s, title):
    """The window manager's close of the active window, once it is the right one."""
    s.check(poll(lambda: s.active_title() == title, 3),
            f"\"{title}\" was not the active window to close (active: \"{s.active_title()}\")")
    s.close_active()


def expect_clean_exit(s, how):
    try:
        status = s.proc.wait(5)
    except subprocess.TimeoutExpired:
        s.fail(f"{how}: the program was still running 5 s later")
    s.check(status == 0, f"{how}: the program ended with status {status} (negative: the signal); "
                         f"its output: {s.output().strip()!r}")
    faults = [line for line in s.output().splitlines() if "Korvane:" in line]
    s.check(not faults, f"{how}: the program reported a fault: {faults}")


def visit_everything(s, window, by_keys=False):
    """A message box, every menu, the information window and the about window, each dismissed.
    by_keys: the message and the menus are answered by key, not the mouse (on a scaled screen Qt
    reports their places unscaled)."""
    s.click_on(find(window, role("PUSH_BUTTON"), "Calculate"))
    alert = poll(lambda: s.top_windows(role("ALERT"))[0], 3)
    s.check(alert, "Calculate with no test chosen showed no message")
    message = find(alert, role("LABEL"))
    s.check(message and message.name == NO_TEST_MESSAGE, f"the message said {describe(message)}")
    if by_keys:
        s.key("Return")
    else:
        s.click_on(find(alert, role("PUSH_BUTTON")))
    s.check(poll(lambda: not s.top_windows(role("ALERT")), 3), "the message stayed up")
    for title in MENUS:
        close_menu(s, open_by_keys(s, window, title, "alt+" + title[0].lower()) if by_keys
                   else open_menu(s, window, title), title)
    s.click_on(help_button(window), press_only=True)
    s.check(s.frame(INFO_TITLE, 3), "a press on \"?\" did not bring up the information window")
    close_with_window_manager(s, INFO_TITLE)
    s.check(poll(lambda: not s.top_windows(name=INFO_TITLE), 3), "information window stayed up")
    s.wait_out_about_timer()
    if by_keys:  # A is About Korvane's access key
        open_by_keys(s, window, "Window", "alt+w")
        s.key("a")
    else:
        s.click_on(find(open_menu(s, window, "Window"), role("MENU_ITEM"), ABOUT))
    about = poll(lambda: s.top_windows(role("FRAME"), ABOUT)[0], 3)
    s.check(about, "Window > About Korvane brought up no about window")
    x, y, width, _ = extents(about)
    s.click_on(None, at=(x + width // 2, y + 10))
    s.check(poll(lambda: not s.top_windows(role("FRAME"), ""), 3), "the about window stayed up")
    s.check(s.frame("Korvane", 3), "the control window was gone after the about window")


def activate(s, window):
    """Clicks the empty right end of the menu bar, which makes the window the active one."""
    x, y, width, height = extents(find(window, role("MENU_BAR")))
    s.click_on(None, at=(x + width - 10, y + height // 2))


def ways_out(s):
    leaving = {"by the close button": lambda w: (activate(s, w),
                                                 close_with_window_manager(s, "Korvane")),
               "by File > Quit": lambda w: s.click_on(find(open_menu(s, w, "File"),
                                                           role("MENU_ITEM"), "Quit")),
               "by Ctrl+Q": lambda w: (activate(s, w), s.key("ctrl+q"))}
    for run, (how, leave) in enumerate(leaving.items()):
        if run:
            s.start_program()
        window = s.pass_about_window()
        visit_everything(s, window)
        leave(window)
        expect_clean_exit(s, f"after a full tour, leaving {how}")


def about_alt_f4(s):
    """The window manager's close (openbox's Alt+F4) on the about window is refused."""
    about = poll(s.windows, 10)
    s.check(about, "no window of the program came up")
    s.check(poll(lambda: s.active_window() == about[0], 3),
            "the about window never became active, so the close could not reach it")
    s.close_active()
    pressed, blank_since = time.monotonic(), None
    while not s.frame("Korvane", 0):
        now = time.monotonic()
        s.check(s.proc.poll() is None, "closing the about window ended the program")
        blank_since = None if s.windows() else blank_since or now
        s.check(blank_since is None or now - blank_since < 2,
                "after closing the about window no window of the program was on screen for 2 s")
        s.check(now - pressed < 6, "the control window did not come 6 s after the close")
        time.sleep(0.05)
    close_with_window_manager(s, "Korvane")
    expect_clean_exit(s, "closing the control window after a close on the about window")


def result_fields(s):
    window = s.pass_about_window()
    calculate(s, window)

    def in_field(name, *keys):
        s.click_on(field(window, name))
        s.key(*keys)

    def from_edit_menu(item):
        s.click_on(find(open_menu(s, window, "Edit"), role("MENU_ITEM"), item))
        if find(window, role("MENU_ITEM"), item):  # a disabled item leaves the menu open
            s.key("Escape", "Escape")

    s.set_clipboard("12345")
    attempts = [("Ctrl+A Ctrl+X in t", lambda: in_field(T, "ctrl+a", "ctrl+x")),
                ("Edit > Cut in p", lambda: (in_field(P, "ctrl+a"), from_edit_menu("Cut"))),
                ("Edit > Paste in p", lambda: (in_field(P, "End"), from_edit_menu("Paste"))),
                ("Ctrl+V in p", lambda: in_field(P, "End", "ctrl+v")),
                ("typing 42 in p", lambda: (in_field(P, "End"), s.type("42"))),
                ("BackSpace, Delete in p",
                 lambda: in_field(P, "End", "BackSpace", "Home", "Delete"))]
    for what, attempt in attempts:
        attempt()
        expect_results(s, window, SAMPLE_RESULTS, f"after {what}")
    in_field(T, "ctrl+a", "ctrl+c")
    s.check(poll(lambda: s.clipboard() == SAMPLE_RESULTS[T], 2),
            f"Ctrl+A Ctrl+C in the t field copied \"{s.clipboard()}\"")
    choose_test(s, window, RELATED)
    for name in (T, P, DF, M1, SD1, N1, M2, SD2, R):
        text = field(window, name)
        writable = has_state(text, "EDITABLE") and not has_state(text, "READ_ONLY")
        s.check(writable == (name not in (T, P, DF)),
                f"a screen reader is told the field \"{name}\" is {'' if writable else 'not '}"
                "editable")


def contrast(a, b):
    def luminance(rgb):
        linear = [c / 255 / 12.92 if c <= 10 else ((c / 255 + 0.055) / 1.055) ** 2.4
                  for c in rgb[:3]]
        return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]
    high, low = sorted((luminance(a), luminance(b)), reverse=True)
    return (high + 0.05) / (low + 0.05)


def ground_and_ink(shots, box):
    """(contrast, ground, ink): the box's commonest colour and the pixel that contrasts most with
    it, from the shot where that contrast is lowest (so a blinking cursor cannot pass for text)."""
    x, y, width, height = box
    found = []
    for shot in shots:
        region = shot.crop((x, y, x + width, y + height))
        ground = max(region.getcolors(width * height))[1]
        ink = max(region.getdata(), key=lambda pixel: contrast(pixel, ground))
        found.append((contrast(ground, ink), ground, ink))
    return min(found)


def inset(box, by):
    return box[0] + by, box[1] + by, box[2] - 2 * by, box[3] - 2 * by


def qt_extents(s, obj):
    """The screen place of a widget of Qt's own (the menu bar's titles): under QT_SCALE_FACTOR
    Qt reports it unscaled."""
    return tuple(round(v * float(s.extra_env.get("QT_SCALE_FACTOR", 1))) for v in extents(obj))


def texts_to_measure(s, window):
    """What the platform draws in its own colours: (what a person calls it, screen box)."""
    regions = []
    for radio in find_all(window, role("RADIO_BUTTON")):
        x, y, width, height = extents(radio)  # the caption, right of the round mark
        caption = (x + height + 2, y, width - height - 2, height)
        regions.append((f"radio \"{radio.name}\"", caption))
    for frame in find_all(window, role("PANEL")) + find_all(window, role("GROUPING")):
        if frame.name.startswith("Sample"):  # the caption stands above the frame's line
            regions.append((f"frame \"{frame.name}\"", (*extents(frame)[:3], 16)))
    for button in find_all(window, role("PUSH_BUTTON")):
        regions.append((f"button \"{button.name}\"", inset(extents(button), 4)))
    for text in find_all(window, role("TEXT")):
        regions.append((f"field \"{text.name}\"", inset(extents(text), 3)))
    for title in find_all(find(window, role("MENU_BAR")), role("MENU_ITEM")):
        if title.name:
            regions.append((f"menu \"{title.name}\"", inset(qt_extents(s, title), 1)))
    return regions


OWN_COLOURS = {"Mean": (0xCC, 0, 0), "Standard Deviation": (0xCC, 0, 0), "N": (0xCC, 0, 0),
               "two-tailed": (0x77,) * 3, "t": (0x99,) * 3, "df": (0x99,) * 3}
# What a calculation leaves shown that the suite knows by name, by kind. More may be shown, and
# is measured too; these must be.
SHOWN_AFTER_CALCULATE = {
    "radio": (INDEPENDENT, RELATED), "frame": ("Sample 1", "Sample 2"),
    "button": ("Calculate", "Clear", HELP), "field": (*SAMPLE, *SAMPLE_RESULTS),
    "label": tuple(OWN_COLOURS), "menu": MENUS}


def missing_after_calculate(found, words):
    """What of SHOWN_AFTER_CALCULATE is not among found, whose entries read 'word "name"';
    words gives the word for each kind to look for."""
    return [f"{word} \"{name}\"" for kind, word in words.items()
            for name in SHOWN_AFTER_CALCULATE[kind] if f"{word} \"{name}\"" not in found]


def contrast_check(s, variant):
    window = s.pass_about_window()
    calculate(s, window)
    s.move_mouse(0, 0)  # no hover highlight anywhere
    shots = []
    for _ in range(3):
        time.sleep(0.35)
        shots.append(s.screenshot(variant).convert("RGB"))
    if os.environ.get("KORVANE_SESSION_DOCS"):
        left, top, width, height = extents(window)
        shots[0].crop((left, top, left + width, top + height)).save(
            os.path.join(os.environ["KORVANE_SESSION_DOCS"], f"korvane-{variant}.png"))
    ground = ground_and_ink(shots[:1], extents(find(window, role("FILLER"))))[1]
    s.check(ground == (255, 255, 255), f"the window's ground is {ground}, not white")
    if variant == "dark":  # the look stays light, so only Qt's plug-in log shows the theme took
        s.check('libqgtk3.so" loaded library' in s.output(), "Qt did not load its GTK theme")
    regions = texts_to_measure(s, window)
    measured = [what for what, _ in regions]
    missing = missing_after_calculate(measured, {kind: kind for kind in
                                                 ("radio", "frame", "button", "field", "menu")})
    s.check(not missing, f"not found to measure: {missing} (found {measured})")
    faint = [f"{what}: {ink} on {ground}, {ratio:.2f}:1" for what, box in regions
             for ratio, ground, ink in [ground_and_ink(shots, box)] if ratio < 4.5]
    s.check(not faint, "hard to read (contrast below 4.5:1): " + "; ".join(faint))
    wrong = [f"\"{label.name}\" in {ink}, not {OWN_COLOURS[label.name]}"
             for label in find_all(window, role("LABEL")) if label.name in OWN_COLOURS
             for _, _, ink in [ground_and_ink(shots[:1], extents(label))]
             if max(abs(a - b) for a, b in zip(ink, OWN_COLOURS[label.name])) > 0x28]
    s.check(not wrong, "labels lost their own colours: " + "; ".join(wrong))


def press(s, window, *keys):
    """Presses the keys; gives what then has the focus, waiting a moment for it to move."""
    before = focused(window)
    s.key(*keys)
    return poll(lambda: focused(window) != before and focused(window), 1) or focused(window)


def is_radio(obj):
    return obj is not None and obj.getRole() == role("RADIO_BUTTON")


def choose_by_keyboard(s, window, caption):
    """From a radio button reached by Tab or Shift+Tab, arrows and Space until the test is
    chosen, which puts the focus in the mean 1 field."""
    back = "shift+Tab" if caption == RELATED else "Tab"
    path = [describe(press(s, window, back)) for _ in range(16) if not is_radio(focused(window))]
    s.check(is_radio(focused(window)), f"{back} never reached a radio button: {path}")
    radio = find(window, role("RADIO_BUTTON"), caption)
    for _ in range(4):
        now = focused(window) or radio
        if has_state(radio, "CHECKED") and now.name == M1:
            return
        press(s, window, "space" if now.name == caption else
              "Left" if caption == INDEPENDENT else "Right")
    s.fail(f"arrows and Space did not choose \"{caption}\" ({describe(focused(window))})")


def names(fields):
    return [f"text \"{name}\"" for name in fields]


def keyboard_only(s):
    window = s.pass_about_window()
    choose_by_keyboard(s, window, INDEPENDENT)
    s.type(KEYED[M1])
    for name in ENTRIES[1:]:
        s.key("Tab")
        s.type(KEYED[name])
    typed = {name: text_of(field(window, name)) for name in ENTRIES}
    s.check(typed == KEYED, f"typing 10 Tab 2 Tab 10 Tab 8 Tab 3 Tab 12 left {typed}")
    s.key("Return")
    expect_results(s, window, KEYED_RESULTS, "after Return in the N 2 field")
    cycle = [describe(focused(window))]
    while len(cycle) < 25 and (len(cycle) == 1 or cycle[-1] != cycle[0]):
        cycle.append(describe(press(s, window, "Tab")))
    s.check(cycle[0] == names([N2])[0] and cycle[-1] == cycle[0], f"Tab went round {cycle}")
    s.check(any("push button" in c and "information" in c for c in cycle),
            f"Tab never reached the \"?\" button: {cycle}")
    start = cycle.index(names([M1])[0])
    s.check(cycle[start:start + 6] == names(ENTRIES), f"Tab goes {cycle}; the entry fields should "
            "follow one another in reading order with nothing between them")
    back = [describe(press(s, window, "shift+Tab")) for _ in range(5)]
    s.check(back == names((SD2, M2, N1, SD1, M1)), f"Shift+Tab from N 2 went {back}")
    choose_by_keyboard(s, window, RELATED)
    order = [describe(focused(window))] + [describe(press(s, window, "Tab")) for _ in range(5)]
    s.check(order == names((M1, SD1, N1, M2, SD2, R)), f"in the related test Tab goes {order}")


def pictures_above(window, y_limit, min_width):
    content = find(window, role("FILLER"))
    return [o for o in find_all(content) if o is not content and extents(o)[2] >= min_width
            and sum(extents(o)[1::2]) <= y_limit]


def spoken_names(s):
    window = s.pass_about_window()
    calculate(s, window)
    named = {role(r) for r in ("PUSH_BUTTON", "RADIO_BUTTON", "TEXT", "ENTRY", "LABEL", "IMAGE",
                               "ICON", "PANEL", "GROUPING")}
    shown = find_all(window)
    silent = [describe(o) for o in shown if o.getRole() in named and not o.name.strip()]
    s.check(not silent, f"a screen reader announces these without a name: {silent}")
    untitled = [describe(o) for o in shown if "untitled" in o.name.lower()]
    s.check(not untitled, f"a screen reader announces \"Untitled\": {untitled}")
    question = help_button(window)
    s.check("information" in question.name.lower(), f"\"?\" is announced as {describe(question)}")
    radios = find_all(window, role("RADIO_BUTTON"))
    title = pictures_above(window, min(extents(r)[1] for r in radios), 400)
    s.check(title and all(o.name or o.description for o in title),
            f"the title picture above the radio buttons has no words: {list(map(describe, title))}")
    group = radios[0].parent
    while group.getRole() not in (role("PANEL"), role("GROUPING"), role("FRAME")):
        group = group.parent
    s.check(group.getRole() in (role("PANEL"), role("GROUPING")) and group.name.strip()
            and radios[1] in list(h.walk(group)),
            f"the radio buttons are not in one named group; their parent is {describe(group)}")
    s.click_on(question, press_only=True)
    info = s.frame(INFO_TITLE, 3)
    s.check(info, "a press on \"?\" did not bring up the information window")
    formula = pictures_above(info, extents(find(info, role("TEXT")))[1], 0)
    s.check(formula and all(o.name or o.description for o in formula),
            f"the formula picture has no words: {list(map(describe, formula))}")


def menus(s):
    window = s.pass_about_window()
    file_items = dict(menu_states(s, window, "File"))
    s.check(file_items.get("Print") is False and file_items.get("Quit") is True,
            f"File menu: {file_items}; Print should be disabled and Quit enabled")
    window_items = menu_states(s, window, "Window")
    s.check([n for n, _ in window_items].count("About Korvane") == 1
            and dict(window_items).get("Control") is False,
            f"Window menu: {window_items}; one \"About Korvane\" and Control disabled expected")

    def expect_edit(where, want):
        got = {name: on for name, on in menu_states(s, window, "Edit") if name in want}
        s.check(got == want, f"with {where} the Edit menu has {got}, not {want}")

    choose_test(s, window, INDEPENDENT)
    s.set_clipboard("42")
    s.click_on(field(window, M1))
    expect_edit("the focus in an empty entry field, text on the clipboard",
                {"Undo": False, "Cut": False, "Copy": False, "Paste": True})
    s.type("12.5")
    s.key("ctrl+a")
    expect_edit("text selected in an entry field", {"Cut": True, "Copy": True, "Paste": True})
    s.key("ctrl+a", "BackSpace")
    calculate(s, window)
    s.click_on(field(window, T))
    s.key("ctrl+a")
    expect_edit("a result field's text selected", {"Cut": False, "Copy": True, "Paste": False})
    for keys, title in ((("F10",), "File"), (("alt+e",), "Edit"), (("alt+w",), "Window")):
        close_menu(s, open_by_keys(s, window, title, *keys), title)
    # The keyboard alone: Alt gives the bar the keyboard, Right goes to Edit, Down opens it, and
    # O is Copy's access key. The menu serves the field that had the keyboard, which gets it back.
    s.click_on(field(window, T))
    s.key("ctrl+a")
    s.set_clipboard("42")
    edit = open_by_keys(s, window, "Edit", "alt", "Right", "Down")
    items = {i.name: has_state(i, "SENSITIVE") for i in edit if i is not None and showing(i)}
    s.check(items.get("Copy") is True and items.get("Cut") is False,
            f"opened by Alt, Right, Down over the selected t field the Edit menu has {items}")
    s.key("o")
    s.check(poll(lambda: s.clipboard() == SAMPLE_RESULTS[T], 2),
            f"Edit > Copy chosen by key copied \"{s.clipboard()}\" from the t field")
    s.check(poll(lambda: focused(window).name == T, 2),
            f"after Edit > Copy by key the focus is on {describe(focused(window))}, not the t field")
    text = field(window, T).queryText()
    selected = [text.getSelection(i) for i in range(text.getNSelections())]
    s.check(selected == [(0, len(SAMPLE_RESULTS[T]))],
            f"after Edit > Copy by key the t field has {selected} selected, not all its text")

SCENARIOS = {f.__name__: f for f in (ways_out, result_fields, about_alt_f4, keyboard_only,
                                     spoken_names, menus)}
SCENARIOS["contrast_light"] = lambda s: contrast_check(s, "light")
SCENARIOS["contrast_dark"] = lambda s: contrast_check(s, "dark")
SCENARIOS["contrast_dark"].env = {"QT_QPA_PLATFORMTHEME": "gtk3", "GTK_THEME": "Adwaita:dark",
                                  "QT_DEBUG_PLUGINS": "1"}

if __name__ == "__main__":
    sys.exit(h.run(SCENARIOS))
