"""The title's hover as a person meets it: the attribution under the title is up exactly while the
pointer is over the title, also once a menu or a message box that lay over the title has closed.
    /usr/bin/python3 hover.py title_hover <path of korvane>
"""
import sys

import harness as h
from harness import centre, extents, find, poll, showing
from scenarios import M1, T, calculate, choose_test, field, INDEPENDENT, open_menu, role

ATTRIBUTION = "© 2026 The Korvane developers"



def overlap(a, b):
    (ax, ay, aw, ah), (bx, by, bw, bh) = extents(a), extents(b)
    return ax < bx + bw and bx < ax + aw and ay < by + bh and by < ay + ah


def title_hover(s):
    window = s.pass_about_window()
    title = find(window, role("IMAGE"))
    label = find(window, role("LABEL"), ATTRIBUTION, only_showing=False)

    def expect(up, when):
        s.check(poll(lambda: showing(label) == up, 2) or showing(label) == up,
                f"{when} the attribution is {'hidden' if up else 'still up'}")

    def away():
        s.move_mouse(*centre(field(window, M1)))

    s.move_mouse(*centre(title))
    expect(True, "with the pointer over the title")
    away()
    expect(False, "with the pointer moved from the title to a field")

    # Edit > Copy, chosen over the title: the menu drops over it from the bar above.
    calculate(s, window)
    s.click_on(field(window, T))
    s.key("ctrl+a")
    copy = find(open_menu(s, window, "Edit"), role("MENU_ITEM"), "Copy")
    s.check(overlap(copy, title), "Edit > Copy does not lie over the title; move the check")
    s.click_on(copy)
    expect(True, "with the pointer over the title once Edit > Copy was chosen there")
    away()
    expect(False, "after Edit > Copy was chosen over the title and the pointer moved to a field")

    # A refused Calculate: the message box is up while the pointer goes over the title, and
    # Return dismisses it there.
    s.click_on(find(window, role("PUSH_BUTTON"), "Clear"))
    choose_test(s, window, INDEPENDENT)
    s.click_on(find(window, role("PUSH_BUTTON"), "Calculate"))
    s.check(poll(lambda: len(s.top_windows()) == 2, 3), "a Calculate with no entries gave no message")
    s.move_mouse(*centre(title))
    s.key("Return")
    s.check(poll(lambda: len(s.top_windows()) == 1, 3), "Return left the message up")
    expect(True, "with the pointer over the title once the message was dismissed there")
    away()
    expect(False, "after a message was dismissed over the title and the pointer moved to a field")


if __name__ == "__main__":
    sys.exit(h.run({"title_hover": title_hover}))
