"""The real-session harness on a native Wayland desktop: headless sway instead of Xvfb and
openbox, the program on Qt's wayland platform, input through sway's virtual keyboard and pointer
(wayland_input.py), screenshots by grim, the clipboard by wl-copy and wl-paste. The accessibility
bus, AT-SPI and the checks are harness.Session's.

A Wayland client does not know where its windows are, and Qt reports AT-SPI places within the
window. Each window's place on the screen comes from sway's tree instead and is added to every
place harness.extents gives (window_origin below).

sway refuses to run as root. Run as root, a scenario script starts itself again as an
unprivileged user (as_unprivileged_user), from a copy of itself and the program in a folder
that user can read.
"""
import json
import os
import pwd
import shutil
import signal
import subprocess
import sys
import tempfile
import time

import harness as h
from harness import Seen, poll
from wayland_input import VirtualInput, chord_of

# sway's own settings for the suite: one output the size the session asks for, focus only by
# click or by the program (as openbox does), no Xwayland.
CONFIG = """output HEADLESS-1 mode {size} position 0 0
focus_follows_mouse no
mouse_warping none
xwayland disable
"""


def views(node):
    """The windows (views) in a sway tree, tiled and floating."""
    if node.get("pid"):
        yield node
    for child in node.get("nodes", []) + node.get("floating_nodes", []):
        yield from views(child)


def content_place(view):
    """Where a view's content starts on the screen: its container's place plus the border sway
    draws at its sides (the title bar lies above the container, in deco_rect)."""
    rect, inner = view["rect"], view["window_rect"]
    return rect["x"] + inner["x"], rect["y"] + inner["y"]


def top_level(obj):
    """The top-level AT-SPI window that holds obj (a menu is held by the window of its bar)."""
    while obj.parent is not None and obj.parent.getRole() != h.pyatspi.ROLE_APPLICATION:
        obj = obj.parent
    return obj


class WaylandSession(h.Session):
    ERRORS_APART = True

    def __init__(self, program, name, extra_env=None, prepare=None, screen="1280x800"):
        super().__init__(program, name, extra_env, prepare, screen)

    def _start_display(self, quiet):
        runtime = self.env["XDG_RUNTIME_DIR"]
        config = os.path.join(self.out, "sway.config")
        with open(config, "w") as file:
            file.write(CONFIG.format(size=self.size))
        self.env.pop("DISPLAY", None)
        self.env.update(SWAYSOCK=os.path.join(runtime, "sway.sock"), WLR_BACKENDS="headless",
                        WLR_LIBINPUT_NO_DEVICES="1", WLR_RENDERER="pixman",
                        QT_QPA_PLATFORM="wayland")
        if "ASAN_OPTIONS" in self.env:  # a sanitizer build: whole stacks, so that a leak in
            # Qt's plug-ins matches its suppression, and no list of the suppressions used on
            # stderr, which the scenarios keep for the program's own complaints
            self.env["ASAN_OPTIONS"] += ":fast_unwind_on_malloc=0"
            self.env["LSAN_OPTIONS"] = self.env.get("LSAN_OPTIONS", "") + ":print_suppressions=0"
        sway = self._spawn(["sway", "--config", config], **quiet)
        display = poll(lambda: next(f for f in os.listdir(runtime)
                                    if f.startswith("wayland-") and not f.endswith(".lock")), 10)
        if not display or not poll(lambda: self._run(["swaymsg", "-t", "get_outputs"]), 10):
            raise Seen(f"sway did not start (status {sway.poll()}; see desktop.log)")
        self.env["WAYLAND_DISPLAY"] = display
        width, height = map(int, self.size.split("x"))
        self.input = VirtualInput(os.path.join(runtime, display), width, height)
        self.settled = {}  # the place each view had at the last two reads, by sway's id
        h.window_origin = self.window_origin

    def _accessibility_bus_up(self):
        return "unix:" in self._run(["dbus-send", "--session", "--print-reply",
                                     "--dest=org.a11y.Bus", "/org/a11y/bus",
                                     "org.a11y.Bus.GetAddress"])

    def _grab(self, path):
        from PIL import Image
        subprocess.run(["grim", path], env=self.env, check=True, timeout=10)
        with Image.open(path) as image:
            return image.convert("RGB")

    def key(self, *keys):
        """Presses keys, by xdotool's names (Tab, shift+Tab, ctrl+a), to the focused window."""
        for chord in keys:
            self.input.chord(chord)
            time.sleep(0.04)
        time.sleep(0.1)

    def type(self, text):
        for char in text:
            self.input.chord(chord_of(char))
            time.sleep(0.03)
        time.sleep(0.1)

    def move_mouse(self, x, y):
        self.input.move(x, y)
        time.sleep(0.05)

    def mouse_button(self, down):
        self.input.button(down)

    def _clipboard_reader(self, target=None):
        kind = (["--list-types"] if target == "TARGETS" else ["--type", target] if target
                else [])
        return ["wl-paste", "--no-newline"] + kind

    def _clipboard_server(self, target=None):
        return ["wl-copy", "--foreground"] + (["--type", target] if target else [])

    def sway(self, *args):
        return self._run(["swaymsg", *args])

    def program_views(self):
        """The program's windows that sway shows, from its tree."""
        tree = json.loads(self.sway("-r", "-t", "get_tree") or "{}")
        return [v for v in views(tree) if v["pid"] == self.proc.pid and v.get("visible")]

    def windows_mapped_by(self, act, seconds=1.0):
        """How many windows of the program sway maps while act() runs and seconds after."""
        watch = subprocess.Popen(["swaymsg", "-m", "-r", "-t", "subscribe", '["window"]'],
                                 env=self.env, stdout=subprocess.PIPE, text=True)
        time.sleep(0.3)  # subscribed
        act()
        time.sleep(seconds)
        watch.terminate()
        text, decoder, events = watch.communicate()[0], json.JSONDecoder(), []
        while text.strip():
            event, end = decoder.raw_decode(text.strip())
            events.append(event)
            text = text.strip()[end:]
        return sum(e.get("change") == "new" and e["container"].get("pid") == self.proc.pid
                   for e in events)

    def windows(self):
        return [str(v["id"]) for v in self.program_views()]

    def _focused(self):
        return next((v for v in self.program_views() if v.get("focused")), {})

    def active_window(self):
        return str(self._focused().get("id", ""))

    def active_title(self):
        return self._focused().get("name") or ""

    def close_active(self):
        """The compositor's close of the focused window, as its key binding would ask it."""
        self.sway("kill")

    def _view_like(self, window):
        box = window.queryComponent().getExtents(h.pyatspi.DESKTOP_COORDS)
        same_size = [v for v in self.program_views()
                     if abs(v["window_rect"]["width"] - box.width) <= 2
                     and abs(v["window_rect"]["height"] - box.height) <= 2]
        same_size.sort(key=lambda v: v.get("name") != window.name)
        if not same_size:
            self.fail(f"sway shows no window of the program {box.width}x{box.height} for "
                      f"\"{window.name}\"")
        return same_size[0]

    def view_of(self, window):
        """sway's view of a top-level AT-SPI window: one of the program's of the same size,
        the one of the same title first (a message box has the control window's). sway maps a
        window and then centres it, so a place is trusted once two reads agree."""
        view = self._view_like(window)
        while self.settled.get(view["id"]) != view["rect"]:
            self.settled[view["id"]] = view["rect"]
            time.sleep(0.4)
            view = self._view_like(window)
        return view

    def window_origin(self, obj):
        """What to add to a place Qt reports in obj's window to get the screen place."""
        window = top_level(obj)
        box = window.queryComponent().getExtents(h.pyatspi.DESKTOP_COORDS)
        x, y = content_place(self.view_of(window))
        return x - box.x, y - box.y


def readable_copies(folder, program):
    """Copies of this suite's scripts, the program and a leak suppressions file named in
    LSAN_OPTIONS (in a checkout the user may not read) into folder; gives the program's copy and
    LSAN_OPTIONS naming the suppressions' copy."""
    here = os.path.dirname(os.path.abspath(__file__))
    for name in os.listdir(here):
        if name.endswith(".py"):
            shutil.copy(os.path.join(here, name), folder)
    options = [("suppressions=" + shutil.copy(o.split("=", 1)[1], folder))
               if o.startswith("suppressions=") else o
               for o in os.environ.get("LSAN_OPTIONS", "").split(":")]
    return shutil.copy(program, os.path.join(folder, "korvane")), ":".join(options)


def as_unprivileged_user(user="kvtest"):
    """Runs this script again as user (made if missing), from copies in a folder that user owns;
    gives its exit status."""
    if subprocess.run(["id", "-u", user], capture_output=True).returncode:
        subprocess.run(["useradd", "--system", "--no-create-home", "--shell",
                        "/usr/sbin/nologin", user], check=True)
    account = pwd.getpwnam(user)
    folder = tempfile.mkdtemp(prefix="korvane-wayland-")
    try:
        program, lsan_options = readable_copies(folder, sys.argv[2])
        os.mkdir(os.path.join(folder, "home"))
        for root, dirs, files in os.walk(folder):
            for name in [root] + [os.path.join(root, n) for n in dirs + files]:
                os.chown(name, account.pw_uid, account.pw_gid)
        script = os.path.join(folder, os.path.basename(sys.argv[0]))
        child = subprocess.Popen(["runuser", "-u", user, "--", "env", f"HOME={folder}/home",
                                  f"USER={user}", f"LSAN_OPTIONS={lsan_options}",
                                  sys.executable, script, sys.argv[1], program] + sys.argv[3:])
        signal.signal(signal.SIGTERM, lambda *_: child.terminate())
        return child.wait()
    finally:
        shutil.rmtree(folder, ignore_errors=True)
