"""What the monkey sees of the program and the events it draws from what it sees.

A View is one look at the program over AT-SPI: its windows by kind and what a click can aim at.
draw(seed, n, view) draws event n from one weighted table of actions, by a generator seeded with
(seed, n); an event is a list of words, the verb first, and one line of the monkey's log.
"""
import random
import string

import harness as h
from harness import extents, has_state
from scenarios import ABOUT, INFO_TITLE, role

SCREEN = (0, 0, 1024, 768)  # harness.Session's Xvfb screen, as a box

TEXTS = ("1e308", "-1e-320", "99999999999999999999", "-", "+", "..", "--5", "é", "√", "€",
         "1e", ".", "0", "-0", "1,5", "12 ", "nan", "inf", "0x1F", "½", "٣", "1e+", "+-1",
         "00000.0001")
KEY_GROUPS = (tuple("0123456789"), ("period", "minus", "slash", "plus", "comma", "e"),
              tuple(string.ascii_letters),
              ("Tab", "shift+Tab", "Return", "Escape", "space", "Left", "Right", "Up", "Down",
               "Home", "End", "BackSpace", "Delete", "F10", "alt", "shift+End", "shift+Home"),
              ("ctrl+a", "ctrl+c", "ctrl+x", "ctrl+v", "ctrl+z", "shift+Insert", "ctrl+v"))
QUIT_KEYS = ("ctrl+q", "alt+F4")


# -- what the program shows ------------------------------------------------------------------------

class View:
    """One look at the program over AT-SPI: its windows by kind (control, about, info, alert,
    popup) and what a click can aim at, as (what, box) pairs."""

    def __init__(self):
        self.windows = {}
        self.controls, self.help, self.texts = [], [], []  # texts: every text field and area
        self.titles, self.items, self.quits, self.answers = [], [], [], []
        self.file_open = False  # the File menu is open, so a key or click may choose Quit
        self.quit_item = None   # the enabled Quit item's box while it shows

    def read(self, window):
        kind = window_kind(window)
        self.windows[kind] = extents(window)
        for obj, parent in showing_tree(window):
            for target in self.targets(kind, obj, parent):
                target.append((f"{obj.getRoleName()} \"{obj.name}\" in {kind}", extents(obj)))

    def targets(self, kind, obj, parent):
        """The lists of targets obj belongs to."""
        is_a = obj.getRole()
        if is_a == role("PUSH_BUTTON"):
            return [self.answers if kind == "alert" else
                    self.help if "information" in obj.name else self.controls]
        if is_a == role("RADIO_BUTTON"):
            return [self.controls]
        if is_a == role("TEXT"):
            return [self.texts] + ([self.controls] if kind == "control" else [])
        if is_a != role("MENU_ITEM") or not obj.name:
            return []
        if parent.getRole() != role("POPUP_MENU"):
            return [self.titles]
        self.file_open |= parent.parent.name == "File"
        if obj.name != "Quit":
            return [self.items]
        if has_state(obj, "SENSITIVE"):
            self.quit_item = extents(obj)
        return [self.quits]

    def clickable(self):
        return (self.controls + self.help + self.texts + self.titles + self.items + self.quits
                + self.answers)

    def in_windows(self):
        return [(f"somewhere in {kind}", box) for kind, box in self.windows.items()]

    def decorated(self):
        return [(kind, box) for kind, box in self.windows.items() if kind not in ("about", "popup")]

    def title_bars(self):
        """openbox's title bars, between the window's icon (a click opens openbox's own menu) and
        its buttons (iconify, maximise, close)."""
        return [(f"title bar of {kind}", (x + 24, y - 19, w - 88, 18))
                for kind, (x, y, w, _) in self.decorated()]

    def keep_off(self, button):
        """Where a press of that button must not land: openbox's icon and buttons for the left
        one (the monkey closes and minimises windows by its own verbs, and restores what it
        minimises), a whole title bar for the others (openbox's menus)."""
        zones = []
        for _, (x, y, w, _) in self.decorated():
            zones += ([(x - 1, y - 20, 24, 20), (x + w - 64, y - 20, 65, 20)] if button == "1"
                      else [(x - 1, y - 20, w + 2, 20)])
        return zones


def window_kind(window):
    if window.getRole() == role("ALERT"):
        return "alert"
    if window.getRole() != role("FRAME"):
        return "popup"
    return {"Korvane": "control", INFO_TITLE: "info", ABOUT: "about"}.get(window.name, "popup")


def showing_tree(obj, parent=None):
    """obj and everything showing below it, each with its parent; hidden parts are skipped whole,
    which keeps a look short."""
    yield obj, parent
    for child in obj:
        if child is not None and h.showing(child):
            yield from showing_tree(child, obj)


# -- drawing events --------------------------------------------------------------------------------
# An event is a list of words, the first the verb; makers give (words, what it aims at) or None
# when the screen offers them nothing to aim at, and another action is drawn.

def inside(rng, box):
    """A point of the box, one pixel in from its edges, kept on the screen."""
    x, y, width, height = box
    px, py = x + 1 + rng.randrange(max(width - 2, 1)), y + 1 + rng.randrange(max(height - 2, 1))
    return min(max(px, 0), SCREEN[2] - 1), min(max(py, 0), SCREEN[3] - 1)


def aim(rng, targets):
    if not targets:
        return None
    what, box = rng.choice(targets)
    return (*inside(rng, box), what)


def at(verb, targets_of, *before):
    """A maker: the verb at a point of one of the targets that targets_of(view) lists."""
    def make(rng, view):
        found = aim(rng, targets_of(view))
        return found and ([verb, *before, *found[:2]], found[2])
    return make


def drag(rng, view):
    start = aim(rng, view.clickable() + view.in_windows() + view.title_bars())
    if start is None:
        return None
    end = (aim(rng, view.clickable() + view.in_windows()) if rng.random() < 0.5 else
           inside(rng, (start[0] - 150, start[1] - 150, 300, 300)))
    return ["drag", *start[:2], *end[:2]], f"from {start[2]}"


def answer(rng, view):
    """The message box answered by its button, Return or Escape."""
    if not view.answers:
        return None
    how = rng.choice(("click", "Return", "Escape"))
    if how != "click":
        return ["key", how], "the message box"
    x, y, what = aim(rng, view.answers)
    return ["click", 1, x, y], what


def key(rng, view):
    return ["key", rng.choice(rng.choice(KEY_GROUPS))], "the focused window"


def a_number(rng):
    shapes = (lambda: str(rng.randint(-1000, 100000)),
              lambda: f"{rng.uniform(-1000, 1000):.{rng.randint(0, 8)}f}",
              lambda: f"{rng.uniform(1, 10):.3f}e{rng.randint(-330, 330)}",
              lambda: "".join(rng.choice("0123456789.-+e") for _ in range(rng.randint(1, 12))))
    return rng.choice(shapes)()


def a_text(rng):
    return rng.choice(TEXTS) if rng.random() < 0.5 else a_number(rng)


def typing(rng, view):
    return ["type", a_text(rng)], "the focused window"


def clipboard(rng, view):
    chance = rng.random()
    if chance < 0.5:
        return ["clip", "none"], "the clipboard left without an owner"
    if chance < 0.7:
        return ["clip", "png"], "a picture, and no text, on the clipboard"
    return ["clip", "text", a_text(rng)], "text on the clipboard"


def window_action(verb):
    """A maker for the window manager's verbs, on one of the windows it manages."""
    def make(rng, view):
        kinds = sorted(k for k in view.windows if k != "popup")
        if not kinds:
            return None
        kind = rng.choice(kinds)
        args = {"minimize": lambda: [f"{rng.uniform(0.1, 0.8):.2f}",
                                     rng.choice(("windowmap", "windowactivate"))],
                "move": lambda: [rng.randint(-100, 700), rng.randint(0, 500)],
                "close": lambda: [rng.choice(("keys", "button"))]}.get(verb, list)()
        return [verb, kind, *args], f"the {kind} window"
    return make


# One weighted table of everything the monkey does. Menus opened are mostly used: a menu item is
# chosen far more often than anything else while a menu is open, and the message box is answered
# about every other event, as a person at the screen would. Quit is chosen more rarely than the
# other items, so that a run of the program lasts some hundred events.
ACTIONS = (
    (16, "click a control", at("click", lambda v: v.controls, 1)),
    (5, "press the ? button", at("press", lambda v: v.help)),
    (14, "click a menu title", at("click", lambda v: v.titles, 1)),
    (150, "choose a menu item", at("click", lambda v: v.items, 1)),
    (6, "choose File > Quit", at("click", lambda v: v.quits, 1)),
    (60, "answer the message box", answer),
    (8, "click somewhere in a window", at("click", View.in_windows, 1)),
    (2, "click a title bar", at("click", View.title_bars, 1)),
    (1, "click anywhere", at("click", lambda v: [("the screen", SCREEN)], 1)),
    (3, "double click", at("double", lambda v: v.clickable() + v.in_windows())),
    (3, "drag", drag),
    (4, "middle click in a text", at("click", lambda v: v.texts, 2)),
    (1, "middle click", at("click", View.in_windows, 2)),
    (1, "right click", at("click", lambda v: v.clickable() + v.in_windows(), 3)),
    (18, "press a key", key),
    (0.25, "quit by key", lambda rng, v: (["key", rng.choice(QUIT_KEYS)], "the focused window")),
    (8, "type a string", typing),
    (6, "change the clipboard", clipboard),
    (2, "activate a window", window_action("activate")),
    (2, "minimise a window and restore it", window_action("minimize")),
    (1, "move a window", window_action("move")),
    (0.4, "close a window", window_action("close")),
)


def draw(seed, n, view):
    rng = random.Random(f"{seed}:{n}")
    weights = [weight for weight, _, _ in ACTIONS]
    while True:
        _, name, make = rng.choices(ACTIONS, weights)[0]
        made = make(rng, view)
        if made and not any(within(point, box) for button, point in presses(made[0])
                            for box in view.keep_off(button)):
            return made[0], f"{name}: {made[1]}"


def presses(words):
    """The (button, point) pairs where the event presses or releases a mouse button."""
    verb, args = words[0], [str(w) for w in words[1:]]
    return {"click": lambda: [(args[0], args[1:3])], "press": lambda: [("1", args[0:2])],
            "double": lambda: [("1", args[0:2])],
            "drag": lambda: [("1", args[0:2]), ("1", args[2:4])]}.get(verb, list)()


def within(point, box):
    x, y = map(int, point)
    return box[0] <= x < box[0] + box[2] and box[1] <= y < box[1] + box[3]
