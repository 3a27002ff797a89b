"""What Orca, the screen reader, says while a person does the whole job by keyboard, one
scenario per run:
    /usr/bin/python3 speech.py <scenario> <path of korvane>
Orca runs in the scenario's own session (screen_reader.py), started before the program so that it
meets the about window. A scenario makes every check it can and reports all that failed together,
each with what a listener should have heard and the utterances Orca actually spoke; it stops
early only when the program itself does not do what the next step needs.
"""
import re
import sys

import harness as h
from harness import describe, find, focused, has_state, poll, showing, text_of
from screen_reader import Orca
from scenarios import (DF, INDEPENDENT, INFO_TITLE, KEYED, KEYED_RESULTS, M1, M2, N1, N2, P, R,
                       RELATED, SD1, SD2, T, choose_by_keyboard, close_with_window_manager, field,
                       help_button, results, role)

RELATED_KEYED = {M1: "50", SD1: "10", N1: "25", M2: "47", SD2: "10", R: ".8"}
RELATED_RESULTS = {T: "+2.372", P: ".0261", DF: "24"}
ATTRIBUTION = "The Korvane developers"
# A result heard with its caption: "df 20", "t +1.798", "p .0873" or ".0873 two-tailed".
CAPTIONED = {DF: ("df", r"\bdf\W{{1,3}}{0}"), T: ("t", r"\bt\W{{1,3}}{0}"),
             P: ("p", r"(\bp\W{{1,3}}{0}|{0}\W{{1,3}}two-tailed)")}


def quoted(utterances):
    return " | ".join(f"\"{u}\"" for u in utterances) or "nothing"


class Ear:
    """Keys pressed and what Orca said after them; failed checks are gathered, not raised."""

    def __init__(self, s):
        self.s, self.orca, self.failures = s, s.prepared, []

    def press(self, *keys):
        """Presses the keys and gives the mark of the speech just before them."""
        mark = self.orca.mark()
        self.s.key(*keys)
        return mark

    def hear(self, since, pattern, timeout=2.0):
        """Waits for the pattern in what was said since the mark, then for Orca to finish
        speaking; gives whether it came."""
        came = self.orca.wait_spoken(pattern, since, timeout) is not None
        self.orca.wait_quiet(since)
        return came

    def said(self, since):
        return " ".join(self.orca.spoken_since(since))

    def expect(self, ok, step, want, since):
        if not ok:
            self.failures.append(f"{step}: expected {want}; Orca said "
                                 f"{quoted(self.orca.spoken_since(since))}")
        return ok

    def stop(self, seen):
        """The program did not do what the next step needs: the checks so far and this."""
        self.failures.append(f"STOPPED: {seen}")
        self.finish()

    def finish(self):
        if not self.orca.alive():
            self.failures.append(f"Orca ended on the way, with status {self.orca.proc.poll()}")
        if self.failures:
            self.s.fail(f"{len(self.failures)} check(s) failed:\n  - "
                        + "\n  - ".join(self.failures) + f"\n  (Orca's debug log: "
                        f"{self.orca.debug_path})")


def word(text):
    """A pattern for text standing on its own, not part of a longer number or word."""
    return rf"(?<![\w.+-]){re.escape(text)}(?!\.?\w|-)"


def focus_on(ear, window, keys, name, limit=8):
    """Presses keys until the field `name` has the focus; gives the mark before the last press."""
    for _ in range(limit):
        mark = ear.press(keys)
        if poll(lambda: getattr(focused(window), "name", None) == name, 1):
            return mark
    ear.stop(f"{keys} never brought the focus to \"{name}\" (it is on "
             f"{describe(focused(window))})")


def about_window(ear):
    """The about window comes up by itself at the start: it is named, and its attribution is
    its description. Only what is said of it counts, up to the next window announced (its
    timer calls up the control window after four seconds)."""
    since, step = ear.orca.ready, "the about window at the start"
    if not ear.expect(ear.hear(since, r"\bframe\b", 10), step, "a window announced", since):
        return
    said = ear.orca.spoken_since(since)
    first = next(i for i, u in enumerate(said) if re.search(r"\bframe\b", u))
    later = [i for i, u in enumerate(said) if i > first and re.search(r"\bframe\b", u)]
    about = " ".join(said[first:(later or [len(said)])[0]])
    ear.expect(re.match(r".*\bKorvane\b.*\bframe\b", about), step,
               "its name with the frame (\"About Korvane frame\" or the like)", since)
    ear.expect(ATTRIBUTION in about, step,
               f"its attribution \"{ATTRIBUTION}\" as its description", since)


def choose_test(ear, window, caption, since):
    """From the radio button the focus has (since the mark) or reaches by Tab (Shift+Tab for
    the related test), arrows to the caption and Space: the group, the caption and the state
    are heard."""
    back = "shift+Tab" if caption == RELATED else "Tab"
    for _ in range(12):
        if getattr(focused(window), "getRole", lambda: None)() == role("RADIO_BUTTON"):
            break
        since = ear.press(back)
        poll(lambda: focused(window).getRole() == role("RADIO_BUTTON"), 1)
    else:
        ear.stop(f"{back} never reached a radio button")
    ear.hear(since, r"radio button")
    now = focused(window).name
    heard = re.search(rf"Kind of t-test.*{re.escape(now)}.*\bnot selected\b", ear.said(since))
    ear.expect(heard, f"the focus on the radio button \"{now}\"",
               f"the group \"Kind of t-test\", \"{now}\" and \"not selected\"", since)
    if now != caption:
        since = ear.press("Right" if caption == RELATED else "Left")
        ear.expect(ear.hear(since, rf"{caption}.*\bnot selected\b"),
                   f"an arrow to \"{caption}\"", f"\"{caption}\" and \"not selected\"", since)
    since = ear.press("space")
    if not poll(lambda: focused(window).name == M1, 2):
        ear.stop(f"Space on \"{caption}\" did not choose it and put the focus in \"{M1}\"")
    ear.expect(ear.hear(since, rf"(^|\s)selected\b.*{M1}"), f"Space on \"{caption}\"",
               f"\"selected\", then \"{M1}\"", since)


def fill(ear, window, values):
    """Types each value and Tabs on: every field's name is heard as the focus comes to it."""
    names = list(values)
    for name, after in zip(names, names[1:] + [None]):
        ear.s.type(values[name])
        if after:
            since = focus_on(ear, window, "Tab", after, 1)
            ear.expect(ear.hear(since, re.escape(after)), f"Tab into the empty field \"{after}\"",
                       f"its name \"{after}\"", since)
    typed = {name: text_of(field(window, name)) for name in names}
    if typed != values:
        ear.stop(f"typing {list(values.values())} with Tab between left {typed}")


def revisit(ear, window, values, key):
    """Moves through filled fields: each is heard by name and whole value, and nothing else
    (no "text unselected" from the field left, no value before the name)."""
    names = list(values)
    order = names[-2::-1] if key == "shift+Tab" else names[1:]
    for name in order:
        value = values[name]
        since = focus_on(ear, window, key, name, 1)
        ear.hear(since, re.escape(name))
        said, step = ear.said(since), f"{key} into \"{name}\" holding \"{value}\""
        ear.expect(re.search(rf"{re.escape(name)}( text)?\.? {word(value)}", said), step,
                   f"the name, then the value \"{value}\" whole", since)
        ear.expect(re.fullmatch(rf"(Sample [12] \w+\. )?{re.escape(name)} text\.?"
                                r"( \S+( selected)?\.?)?", said), step,
                   "its group, name and value and nothing else: no \"text unselected\" for the "
                   "field left, no value before the name", since)


def calculate(ear, window, want):
    """Return presses Calculate: t, df and p are heard with their captions, once, unasked."""
    since = ear.press("Return")
    if not poll(lambda: results(window) == want, 3):
        ear.stop(f"after Return the result fields show {results(window)}, not {want}")
    ear.hear(since, word(want[T]), 3)
    said = ear.said(since)
    missing = [f"{CAPTIONED[n][0]} {want[n]}" for n in (DF, T, P)
               if not re.search(CAPTIONED[n][1].format(word(want[n])), said)]
    ear.expect(not missing, "Return (Calculate) and no further key",
               f"the results with their captions, e.g. \"df {want[DF]}, t {want[T]}, "
               f"p {want[P]} two-tailed\" (not heard: {missing})", since)
    ear.expect(len(re.findall(word(want[T]), said)) <= 1, "Return (Calculate)",
               "the results once", since)


def review_lines(ear):
    """Orca's flat review, line by line from the top of the window to its last line."""
    since = ear.press("Insert+KP_Page_Up")
    ear.hear(since, r".")
    last = ear.said(since)
    since = ear.press("Insert+KP_Home")
    ear.hear(since, r".")
    lines = [ear.said(since)]
    while lines[-1] != last and len(lines) < 20:
        since = ear.press("KP_Page_Up")
        if not ear.hear(since, r"."):
            break
        lines.append(ear.said(since))
    ear.hear(ear.press("KP_Subtract"), "flat review")  # leaves it
    return lines


def flat_review(ear, window, values, want):
    """Flat review reads what the window shows: entries, their labels, the results and their
    captions; and nothing hidden."""
    lines = review_lines(ear)
    text = " | ".join(lines)
    shown = [n for n in values if showing(field(window, n))]
    wanted = [values[n] for n in shown] + list(want.values()) + [
        "Mean", "Standard Deviation", "N", "df", "t", "two-tailed"]
    unread = [w for w in wanted if not re.search(word(w), text)]
    ear.failures += [f"flat review from the top to the last line: expected {unread} among the "
                     f"lines; Orca read {quoted(lines)}"] if unread else []
    hidden = {o.name for o in h.find_all(window, only_showing=False)
              if not showing(o) and len(o.name) > 2 and o.getRole() == role("LABEL")}
    read = [name for name in hidden if name in text]
    ear.failures += [f"flat review: hidden labels {read} were read"] if read else []


def blank_field(ear, window, values, blank, via, message):
    """A field emptied and Return pressed in another: the message is heard in full, and after
    it the focus is back in the field it names, heard by name."""
    focus_on(ear, window, "shift+Tab", blank)
    ear.s.key("ctrl+a", "BackSpace")
    focus_on(ear, window, "Tab", via)
    since = ear.press("Return")
    if not poll(lambda: ear.s.top_windows(role("ALERT")), 3):
        ear.stop(f"Return with \"{blank}\" empty brought up no message")
    ear.expect(ear.hear(since, re.escape(message)), f"Return with \"{blank}\" empty",
               f"the message \"{message}\" in full", since)
    since = ear.press("Return")
    if not poll(lambda: not ear.s.top_windows(role("ALERT")), 3):
        ear.stop("Return did not dismiss the message")
    back = poll(lambda: getattr(focused(window), "name", None) == blank, 2)
    ear.expect(back and ear.hear(since, re.escape(blank)), "dismissing the message",
               f"the focus back in \"{blank}\", heard by name (the focus is on "
               f"{describe(focused(window))})", since)
    ear.s.type(values[blank])


def information_window(ear, window):
    """The "?" button answers the mouse press alone: the window's title, its text named as
    what it is, and the text's content are heard."""
    since = ear.orca.mark()
    ear.s.click_on(help_button(window), press_only=True)
    info = ear.s.frame(INFO_TITLE, 3)
    if not info:
        ear.stop("a press on \"?\" did not bring up the information window")
    content = text_of(find(info, role("TEXT")))
    opening = " ".join(content.split()[:4])
    ear.hear(since, re.escape(opening))
    said, step = ear.said(since), "the information window called up"
    ear.expect(INFO_TITLE in said, step, f"its title \"{INFO_TITLE}\"", since)
    ear.expect(opening in said, step, f"its text, which begins \"{opening}\"", since)
    ear.expect(not re.search(r"(^|\.) ?text\.?( |$)", said), step,
               "its text control named, not a bare \"text.\"", since)
    close_with_window_manager(ear.s, INFO_TITLE)
    if not poll(lambda: not ear.s.top_windows(name=INFO_TITLE), 3):
        ear.stop("Alt+F4 left the information window up")


MENUS = (("alt+f", "File", ("Print", "Quit")), ("alt+e", "Edit", ("Undo", "Cut", "Copy", "Paste")),
         ("alt+w", "Window", ("Control", "About Korvane")), ("F10", "File", ("Print", "Quit")))


def open_popup(window, title):
    item = find(window, role("MENU_ITEM"), title)
    return poll(lambda: next(c for c in item if c is not None and showing(c)), 1)


def close_popup(ear, window, popup):
    for _ in range(3):
        bar = find(window, role("MENU_BAR"))
        if not showing(popup) and not has_state(bar, "FOCUSED"):
            return
        ear.s.key("Escape")
        poll(lambda: not showing(popup), 1)
    ear.stop("Escape did not close the menu and leave the menu bar")


def menus(ear, window):
    """Alt and each title's first letter open File, Edit and Window, and F10 the first menu,
    each with its first item that can be chosen highlighted: that item is heard. (Orca names
    the menu of an item as context only for menus of its own menu role; Qt's popup menus are of
    the popup role, so the open menu is checked over AT-SPI by its title.)"""
    ear.s.set_clipboard("42")  # so that Paste is enabled in an entry field
    for keys, title, items in MENUS:
        # Qt holds each key until the screen reader has seen it; a key pressed while Orca is
        # still busy with what came before can time out there and arrive without its Alt.
        ear.orca.wait_quiet(ear.orca.mark())
        since = ear.press(*keys.split())
        popup = open_popup(window, title)
        step = f"{keys} in an entry field"
        if not ear.expect(popup, step, f"the {title} menu open, heard", since):
            continue
        ear.hear(since, "|".join(items))
        ear.expect(re.search(rf"\b({'|'.join(items)})\b", ear.said(since)), step,
                   f"the item chosen in the {title} menu, one of {list(items)}", since)
        close_popup(ear, window, popup)


def copy_p(ear, window, want):
    """p's text selected, then Edit > Copy by keyboard: the clipboard holds p."""
    ear.s.set_clipboard("not copied")
    ear.s.click_on(field(window, P))
    ear.s.key("ctrl+a")
    since = ear.press("alt+e")
    step = f"\"{want}\" selected in p, then Alt+E, Down to Copy and Return"
    popup = open_popup(window, "Edit")
    if not ear.expect(popup, step, "the Edit menu open", since):
        return
    copy = find(popup, role("MENU_ITEM"), "Copy")
    if ear.expect(h.has_state(copy, "SENSITIVE"), step, "Copy enabled", since):
        for _ in range(5):
            if ear.hear(since, r"\bCopy\b", 1):
                break
            ear.s.key("Down")
        ear.s.key("Return")
    clipboard = poll(lambda: ear.s.clipboard() == want and want, 2) or ear.s.clipboard()
    ear.expect(clipboard == want, step, f"\"{want}\" on the clipboard (it holds "
                                        f"\"{clipboard}\")", since)
    close_popup(ear, window, popup)


def whole_job(s, caption, keyed, want, blank, via, message, meet_about=False):
    """A keyboard-only calculation heard from start to end: the test chosen, the fields filled
    and visited both ways, the results, flat review, then one field blanked and Return pressed
    in the field `via`."""
    ear = Ear(s)
    if meet_about:
        about_window(ear)
    since = ear.orca.mark()
    window = s.pass_about_window()
    choose_test(ear, window, caption, since)
    fill(ear, window, keyed)
    revisit(ear, window, keyed, "shift+Tab")
    revisit(ear, window, keyed, "Tab")
    calculate(ear, window, want)
    flat_review(ear, window, keyed, want)
    blank_field(ear, window, keyed, blank, via, message)
    ear.finish()


def independent(s):
    whole_job(s, INDEPENDENT, KEYED, KEYED_RESULTS, SD1, N1,
              "Please enter the standard deviation of the 1st sample", meet_about=True)


def related(s):
    whole_job(s, RELATED, RELATED_KEYED, RELATED_RESULTS, M2, R,
              "Please enter the mean of the 2nd sample")


def windows_and_menus(s):
    ear = Ear(s)
    window = s.pass_about_window()
    choose_by_keyboard(s, window, INDEPENDENT)
    for name in KEYED:
        s.type(KEYED[name])
        s.key("Tab" if name != N2 else "Return")
    if not poll(lambda: results(window) == KEYED_RESULTS, 3):
        ear.stop(f"typing {list(KEYED.values())} and Return left the results {results(window)}")
    information_window(ear, window)
    s.click_on(field(window, N2))
    if not poll(lambda: has_state(field(window, N2), "FOCUSED"), 3):
        ear.stop("a click on the N 2 field did not give it the keyboard")
    menus(ear, window)
    copy_p(ear, window, KEYED_RESULTS[P])
    ear.finish()


SCENARIOS = {"independent": independent, "related": related,
             "windows_and_menus": windows_and_menus}
for scenario in SCENARIOS.values():
    scenario.prepare = Orca

if __name__ == "__main__":
    sys.exit(h.run(SCENARIOS))
