"""Sequences of a few steps each that once ended the program with SIGSEGV, each now tried every
way a person reaches it, ending with a clean exit:
    /usr/bin/python3 lifetimes.py <scenario> <path of korvane>
"""
import io
import sys
import time

import harness as h
from harness import extents, find, poll, text_of
from scenarios import (ABOUT, INFO_TITLE, close_with_window_manager, expect_clean_exit, help_button,
                       open_menu, role)


def alive(s, after):
    s.check(s.proc.poll() is None, f"{after}, the program ended with status {s.proc.poll()}; "
                                   f"its output: {s.output().strip()!r}")


def about_window(s):
    return poll(lambda: s.top_windows(role("FRAME"), ABOUT)[0], 1)


def call_up_about_window(s, window):
    s.click_on(find(open_menu(s, window, "Window"), role("MENU_ITEM"), ABOUT))
    s.check(poll(lambda: about_window(s), 3), "Window > About Korvane brought up no about window")


def control_window_id(s):
    return s.xdotool("search", "--onlyvisible", "--pid", s.proc.pid, "--name", "^Korvane$").split()


def about_from_menu_then_form(s):
    """The about window called up from the menu, then the form comes back: by a click on it, by
    the window manager's activation, and by a restore after minimising it. The about window
    gives way each time; Qt is still switching the focus away from it as it goes."""
    window = s.pass_about_window()
    s.wait_out_about_timer()
    x, y, width, height = extents(window)
    form = control_window_id(s)[0]
    comebacks = {
        "a click on the form": lambda: s.click_on(None, at=(x + 20, y + height - 15)),
        "the window manager's activation": lambda: s.xdotool("windowactivate", form),
        "a restore after minimising": lambda: (s.xdotool("windowminimize", form), time.sleep(0.5),
                                                s.xdotool("windowactivate", form)),
    }
    for how, come_back in comebacks.items():
        call_up_about_window(s, window)
        come_back()
        time.sleep(1)  # the fault showed within a second
        alive(s, f"after the about window from the menu and {how}")
        s.check(poll(lambda: not about_window(s), 3),
                f"after {how} the about window stayed up")
        s.check(s.frame("Korvane", 3), f"after {how} the control window was not shown")
    s.key("ctrl+q")
    expect_clean_exit(s, "Ctrl+Q after the about window came and went three times")


def set_picture_clipboard(s):
    """A clipboard that offers a picture and no text, as after copying an image."""
    from PIL import Image
    png = io.BytesIO()
    Image.new("RGB", (4, 4), "red").save(png, "PNG")
    s.set_clipboard(png.getvalue(), "image/png")


def paste_into_information(s):
    """The information window's text is editable: every way of pasting into it, with nothing on
    the clipboard, a picture, then text. Only the text goes in."""
    window = s.pass_about_window()
    s.wait_out_about_timer()
    s.click_on(help_button(window), press_only=True)
    info = s.frame(INFO_TITLE, 3)
    s.check(info, "a press on \"?\" did not bring up the information window")
    text = find(info, role("TEXT"))
    s.click_on(text)
    before = text_of(text)
    pastes = {"Ctrl+V": lambda: s.key("ctrl+v"), "Shift+Insert": lambda: s.key("shift+Insert"),
              "a middle click": lambda: (s.xdotool("click", 2), time.sleep(0.15))}
    for offer, prepare in (("nothing on the clipboard", lambda: None),
                           ("a picture on the clipboard", lambda: set_picture_clipboard(s))):
        prepare()
        for how, paste in pastes.items():
            paste()
            time.sleep(0.5)
            alive(s, f"after {how} into the information text with {offer}")
            s.check(s.frame(INFO_TITLE, 1), f"after {how} with {offer} the information window "
                                            f"was gone")
            s.check(text_of(text) == before,
                    f"{how} with {offer} changed the text to {text_of(text)!r}")
    s.set_clipboard("Note ")
    s.key("ctrl+v")
    pasted = lambda: len(text_of(text)) == len(before) + 5 and text_of(text).count("Note ") == 1  # noqa: E731
    s.check(poll(pasted, 2), f"Ctrl+V with \"Note \" on the clipboard left the text as "
                             f"{text_of(text)!r}")
    close_with_window_manager(s, INFO_TITLE)  # it lies over the form's menu bar
    s.check(poll(lambda: not s.top_windows(name=INFO_TITLE), 3), "information window stayed up")
    s.click_on(find(open_menu(s, window, "File"), role("MENU_ITEM"), "Quit"))
    expect_clean_exit(s, "File > Quit after pasting into the information window")


SCENARIOS = {f.__name__: f for f in (about_from_menu_then_form, paste_into_information)}

if __name__ == "__main__":
    sys.exit(h.run(SCENARIOS))
