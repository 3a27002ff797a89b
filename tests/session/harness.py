"""A real desktop session for Korvane, driven as a person drives it.

Session starts an Xvfb display of its own (a random number, reported back with -displayfd),
openbox, a private D-Bus session bus with the accessibility bus on it, and then the program with
Qt's accessibility on. Input goes in as real X events (xdotool); what the program shows is read back
over AT-SPI (pyatspi, imported only once DISPLAY and the bus address are set, because its client
binds to the first bus it meets) and from screenshots (PIL). This process is a child subreaper,
so nothing started below it slips away; close() ends all of it. A failed check raises Seen, whose
text says what a person would have seen and where the screenshots and output were kept.
"""
import contextlib
import ctypes
import os
import random
import select
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import traceback

pyatspi = None  # imported by Session once the display and the bus exist


class Seen(AssertionError):
    """A check failed; the text is what a person at the screen would have seen."""


# Every wait is stretched this many times: a machine that runs the suites in parallel answers
# slowly, and a wait ends as soon as what it waits for is seen.
PATIENCE = 3


def poll(what, timeout=6.0, interval=0.05):
    """Calls what() until it gives something true and returns that; None after the timeout."""
    end = time.monotonic() + timeout * PATIENCE
    while True:
        try:
            found = what()
        except Exception:  # noqa: BLE001 - AT-SPI objects vanish while windows change
            found = None
        if found or time.monotonic() > end:
            return found
        time.sleep(interval)


def descendants(pid):
    """The pids of all processes below pid."""
    children = {}
    for entry in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open(f"/proc/{entry}/stat") as stat:
                children.setdefault(int(stat.read().rsplit(")", 1)[1].split()[1]), []).append(
                    int(entry))
        except (OSError, IndexError, ValueError):
            continue
    found, todo = [], [pid]
    while todo:
        below = children.get(todo.pop(), [])
        found, todo = found + below, todo + below
    return found


def read_line(fd, timeout, complaint):
    data, end = b"", time.monotonic() + timeout
    while not data.endswith(b"\n"):
        ready = select.select([fd], [], [], max(0.0, end - time.monotonic()))[0]
        chunk = os.read(fd, 256) if ready else b""
        if not chunk:
            raise Seen(complaint)
        data += chunk
    return data.decode().strip()


class Session:
    ERRORS_APART = False  # True: the program's stderr goes to a file of its own, errors_path

    def __init__(self, program, name, extra_env=None, prepare=None, screen="1024x768"):
        """prepare(session), if given, runs once the desktop is up and before the program
        starts (a screen reader that has to see the first window, say); what it gives is kept
        as self.prepared. screen is the display's size in pixels."""
        self.program, self.extra_env, self.size = program, extra_env or {}, screen
        self.out = tempfile.mkdtemp(prefix=f"korvane-session-{name}-")
        self.procs, self.shots, self.runs, self.proc, self.log = [], 0, 0, None, None
        self.clip = None
        ctypes.CDLL(None).prctl(36, 1, 0, 0, 0)  # PR_SET_CHILD_SUBREAPER
        try:
            self._start_desktop()
            self.prepared = prepare(self) if prepare else None
            self.start_program()
        except BaseException:
            self.close()
            raise

    def _spawn(self, argv, **kw):
        self.procs.append(subprocess.Popen(argv, env=kw.pop("env", self.env), **kw))
        return self.procs[-1]

    def _start_desktop(self):
        self.desktop_log = open(os.path.join(self.out, "desktop.log"), "w")
        quiet = dict(stdout=self.desktop_log, stderr=subprocess.STDOUT)
        runtime = os.path.join(self.out, "runtime")
        os.mkdir(runtime, 0o700)
        self.env = {k: v for k, v in os.environ.items()
                    if not k.startswith(("QT_", "GTK_", "DBUS_", "AT_SPI", "XDG_RUNTIME",
                                         "WAYLAND_", "SWAYSOCK"))}
        self.env.update(XDG_RUNTIME_DIR=runtime, LC_ALL="C")
        self._start_display(quiet)
        self._start_accessibility(quiet)

    def _start_display(self, quiet):
        # A display number drawn away from the low ones other runs take; one that another server
        # holds makes Xvfb end without reporting it, and the next draw is tried. -noreset: by
        # default the server resets when its last client leaves, and a client that connects in
        # that moment is turned away (openbox, started just after the first xprop, was).
        for _ in range(5):
            read_end, write_end = os.pipe()
            self.procs.append(subprocess.Popen(
                ["Xvfb", f":{random.randint(1000, 9999)}", "-displayfd", str(write_end),
                 "-screen", "0", f"{self.size}x24", "-nolisten", "tcp", "-noreset"],
                pass_fds=(write_end,), **quiet))
            os.close(write_end)
            try:
                number = read_line(read_end, 10, "Xvfb did not report its display")
                break
            except Seen:
                continue
        else:
            raise Seen("Xvfb did not start on any of five displays")
        self.env["DISPLAY"] = ":" + number
        # Under load the display may not take a client at once: openbox gets a second chance.
        for _ in range(2):
            poll(lambda: self._run(["xprop", "-root", "-len", "0", "_NET_WM_NAME"]), 5)
            openbox = self._spawn(["openbox", "--sm-disable"], **quiet)
            if poll(lambda: "window id" in self._run(["xprop", "-root",
                                                       "_NET_SUPPORTING_WM_CHECK"])
                    or openbox.poll() is not None, 10) and openbox.poll() is None:
                break
        else:
            raise Seen("openbox did not take charge of the display")

    def _accessibility_bus_up(self):
        return "= \"unix:" in self._run(["xprop", "-root", "AT_SPI_BUS"])

    def _start_accessibility(self, quiet):
        """A private session bus with the accessibility bus on it; then pyatspi, bound to them."""
        bus = self._spawn(["dbus-daemon", "--session", "--nofork", "--print-address"],
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.env["DBUS_SESSION_BUS_ADDRESS"] = read_line(bus.stdout.fileno(), 10,
                                                         "the session bus did not start")
        self._spawn(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"], **quiet)
        if not poll(self._accessibility_bus_up, 10):
            raise Seen("the accessibility bus did not start")
        for key in ("DISPLAY", "WAYLAND_DISPLAY"):
            os.environ.pop(key, None)
        for key in ("DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR"):
            if key in self.env:
                os.environ[key] = self.env[key]
        global pyatspi
        import pyatspi as module
        pyatspi = module
        pyatspi.Registry.getDesktop(0).childCount  # starts the registry before the program

    def start_program(self):
        """Starts the program (again, once an earlier run of it has ended) on this desktop."""
        self.runs += 1
        self.started = time.monotonic()
        self.log_path = os.path.join(self.out, f"program-{self.runs}.log")
        self.log = open(self.log_path, "w")
        env = dict(self.env, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
                   QT_ACCESSIBILITY="1", **self.extra_env)
        errors = subprocess.STDOUT
        if self.ERRORS_APART:
            self.errors_path = os.path.join(self.out, f"program-{self.runs}.stderr")
            errors = open(self.errors_path, "w")
        # In the session's folder, where a crash leaves its core for a backtrace.
        self.proc = self._spawn([self.program], env=env, stdout=self.log, stderr=errors,
                                cwd=self.out)

    def close(self):
        """Ends the program, the desktop and anything left below this process."""
        deadline = time.monotonic() + 4
        for sig in (signal.SIGTERM, signal.SIGKILL):
            for proc in reversed(self.procs):
                for pid in [proc.pid] + descendants(proc.pid):
                    with contextlib.suppress(ProcessLookupError):
                        os.kill(pid, sig)
            while descendants(os.getpid()) and time.monotonic() < deadline:
                try:
                    os.waitpid(-1, os.WNOHANG)
                except ChildProcessError:
                    break
                time.sleep(0.02)
            deadline = time.monotonic() + 2
        for log in (self.log, getattr(self, "desktop_log", None)):
            if log is not None:
                log.close()

    def output(self):
        self.log.flush()
        with open(self.log_path, errors="replace") as log:
            return log.read()

    def screenshot(self, label):
        self.shots += 1
        return self._grab(os.path.join(self.out, f"{self.shots:02d}-{label}.png"))

    def _grab(self, path):
        from PIL import ImageGrab
        image = ImageGrab.grab(xdisplay=self.env["DISPLAY"])
        image.save(path)
        return image

    def fail(self, seen):
        try:
            self.screenshot("failure")
        except Exception:  # noqa: BLE001 - the display may be gone already
            pass
        raise Seen(f"{seen}\n  (screenshots and the program's output are in {self.out})")

    def check(self, condition, seen):
        if not condition:
            self.fail(seen)

    def _run(self, argv):
        return subprocess.run(argv, env=self.env, capture_output=True, text=True,
                              timeout=10).stdout

    def xdotool(self, *args):
        return self._run(["xdotool", *map(str, args)])

    def key(self, *keys):
        """Presses keys (xdotool names such as Tab, shift+Tab, ctrl+a) to the focused window."""
        self.xdotool("key", "--delay", 40, *keys)
        time.sleep(0.1)

    def type(self, text):
        self.xdotool("type", "--delay", 30, text)
        time.sleep(0.1)

    def move_mouse(self, x, y):
        self.xdotool("mousemove", x, y)  # not --sync: it waits for ever if already there
        poll(lambda: f"X={x}\nY={y}\n" in self.xdotool("getmouselocation", "--shell"), 1, 0.02)

    def click_on(self, obj, press_only=False, at=None):
        """Clicks the middle of an AT-SPI object, or the screen point `at`."""
        x, y, w, h = extents(obj) if obj is not None else (*at, 0, 0)
        self.move_mouse(x + w // 2, y + h // 2)
        self.mouse_button(True)
        if press_only:  # the "?" button acts on the press: a moment before the release
            time.sleep(0.1)
        self.mouse_button(False)
        time.sleep(0.15)

    def mouse_button(self, down):
        self.xdotool("mousedown" if down else "mouseup", 1)

    def _clipboard_reader(self, target=None):
        """The command that prints the clipboard (target TARGETS: the types it offers)."""
        return ["xclip", "-o", "-selection", "clipboard"] + (["-t", target] if target else [])

    def _clipboard_server(self, target=None):
        """The command that serves its input on the clipboard until it is ended."""
        return ["xclip", "-quiet", "-i", "-selection", "clipboard"] + (["-t", target] if target
                                                                          else [])

    def clipboard(self, target=None):
        return self._run(self._clipboard_reader(target))

    def set_clipboard(self, data, target=None):
        """Puts text, or bytes of another type (image/png, ...), on the clipboard. xclip serves it
        until another client takes it, the next set_clipboard or clear_clipboard, or close()."""
        self._end_clipboard_server()
        self.clip = self._spawn(self._clipboard_server(target), stdin=subprocess.PIPE,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.clip.stdin.write(data if target else data.encode())
        self.clip.stdin.close()
        if target:
            poll(lambda: target in self.clipboard("TARGETS").split(), 2)
        else:
            poll(lambda: self.clipboard() == data, 2)

    def clear_clipboard(self):
        """Leaves the clipboard with no owner: our server takes it from whoever holds it and
        ends."""
        self.set_clipboard("(taken to be cleared)")
        self._end_clipboard_server()
        poll(lambda: subprocess.run(self._clipboard_reader(), env=self.env,
                                    capture_output=True).returncode != 0, 2)

    def _end_clipboard_server(self):
        if self.clip is not None:
            self.clip.terminate()
            self.clip.wait()
            self.procs.remove(self.clip)
            self.clip = None

    def windows(self):
        """The program's mapped top-level X windows, as ids."""
        return self.xdotool("search", "--onlyvisible", "--pid", self.proc.pid).split()

    def active_window(self):
        return self.xdotool("getactivewindow").strip()

    def active_title(self):
        return self.xdotool("getactivewindow", "getwindowname").strip()

    def close_active(self):
        """The window manager's close of the active window: openbox's Alt+F4."""
        self.key("alt+F4")

    def top_windows(self, role=None, name=None):
        # Under the GTK theme GTK registers a window-less application of its own for our pid.
        apps = [a for a in pyatspi.Registry.getDesktop(0)
                if a is not None and a.get_process_id() == self.proc.pid]
        return [w for app in apps for w in app if w is not None and showing(w)
                and role in (None, w.getRole()) and name in (None, w.name)]

    def frame(self, title, timeout=6.0):
        """The program's showing top-level window of that title, waiting for it."""
        return poll(lambda: self.top_windows(name=title)[0], timeout)

    def wait_out_about_timer(self):
        """Four seconds after the start the about window's timer hides it (also when it was
        called up again from the menu) and calls up the control window, raising it over the
        others: a scenario that needs neither waits until that has happened."""
        time.sleep(max(0.0, self.started + 4.5 - time.monotonic()))

    def pass_about_window(self):
        """Waits for the about window and dismisses it with a key, as a person in a hurry does."""
        self.check(poll(self.windows, 10), "no window of the program came up")
        self.key("space")
        window = self.frame("Korvane")
        self.check(window, "the control window \"Korvane\" did not come up")
        return window


def has_state(obj, state):
    return obj.getState().contains(getattr(pyatspi, "STATE_" + state))


def showing(obj):
    return has_state(obj, "SHOWING")


# Gives where on the screen the places an object's window reports start, for a session whose
# clients know only places within their windows (Wayland); None where they are screen places.
window_origin = None


def extents(obj):
    box = obj.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    dx, dy = window_origin(obj) if window_origin else (0, 0)
    return box.x + dx, box.y + dy, box.width, box.height


def centre(obj):
    x, y, width, height = extents(obj)
    return x + width // 2, y + height // 2


def walk(obj):
    yield obj
    for child in obj:
        if child is not None:
            yield from walk(child)


def find_all(root, role=None, name=None, only_showing=True):
    return [o for o in walk(root) if role in (None, o.getRole()) and name in (None, o.name)
            and (not only_showing or showing(o))]


def find(root, role=None, name=None, only_showing=True):
    return next(iter(find_all(root, role, name, only_showing)), None)


def text_of(obj):
    text = obj.queryText()
    return text.getText(0, text.characterCount)


def focused(root):
    return next((o for o in walk(root) if has_state(o, "FOCUSED")), None)


def describe(obj):
    return "nothing" if obj is None else f"{obj.getRoleName()} \"{obj.name}\""


def run(SCENARIOS, kind=Session):
    """Entry point of a scenario script: <script> <scenario> <program>, on a kind of Session."""
    name, program = sys.argv[1], os.path.abspath(sys.argv[2])
    session = None
    try:
        scenario = SCENARIOS[name]
        session = kind(program, name, getattr(scenario, "env", None),
                          getattr(scenario, "prepare", None),
                          getattr(scenario, "screen", "1024x768"))
        scenario(session)
    except Seen as seen:
        print(f"session {name}: FAILED: {seen}", file=sys.stderr)
        return 1
    except Exception as error:  # noqa: BLE001 - the scenario broke off; say where things stood
        traceback.print_exc()
        status = session and session.proc and session.proc.poll()
        print(f"session {name}: BROKE OFF with {error!r} (program status {status}; "
              f"its output is in {session and session.out})", file=sys.stderr)
        return 1
    finally:
        if session is not None:
            session.close()
    shutil.rmtree(session.out, ignore_errors=True)  # kept only where something failed
    print(f"session {name}: passed")
    return 0
