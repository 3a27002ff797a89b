"""A real desktop session for Korvane, driven as a person drives it.

How the pieces fit:
  Session starts, in this order, an Xvfb display of its own (-displayfd, so parallel runs never
  collide), the openbox window manager, a private D-Bus session bus and the accessibility bus
  launcher on it, and then the program with Qt's accessibility switched on. Input goes in as real
  X events through xdotool (keys to the focused window, clicks at screen points); what the program
  shows is read back over AT-SPI (pyatspi, imported only once DISPLAY and the bus address are in
  os.environ, because its client binds to the first bus it meets) and from screenshots (PIL).
  Every process is started by this process, which makes itself a child subreaper so that nothing
  started below it can slip away; close() ends all of them by pid on every path.
  Failures raise Seen, whose text says what a person would have seen and where the screenshots
  and the program's output were saved.
"""
import ctypes
import glob
import importlib.util
import os
import select
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import traceback

REQUIRED_TOOLS = ["Xvfb", "openbox", "dbus-daemon", "xdotool", "xclip", "xprop"]
BUS_LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
SKIP = 77

pyatspi = None  # imported by Session once the display and the bus exist


class Seen(AssertionError):
    """A check failed; the text is what a person at the screen would have seen."""


def missing_tools(needs=()):
    """What this machine lacks of the tools and files (globs) a scenario needs."""
    missing = [tool for tool in REQUIRED_TOOLS if shutil.which(tool) is None]
    missing += [pattern for pattern in needs if not glob.glob(pattern)]
    if not os.access(BUS_LAUNCHER, os.X_OK):
        missing.append(BUS_LAUNCHER)
    for module in ("pyatspi", "PIL"):  # looked for, not imported: pyatspi binds at import
        if importlib.util.find_spec(module) is None:
            missing.append("python module " + module)
    return missing


def poll(what, timeout=6.0, interval=0.05):
    """Calls what() until it gives something true and returns that; None after the timeout."""
    end = time.monotonic() + timeout
    while True:
        try:
            found = what()
        except Exception:  # noqa: BLE001 - AT-SPI objects vanish while windows change
            found = None
        if found or time.monotonic() > end:
            return found
        time.sleep(interval)


def descendants(pid):
    """The pids of all living processes below pid, deepest last."""
    children = {}
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            try:
                with open(f"/proc/{entry}/stat") as stat:
                    parent = int(stat.read().rsplit(")", 1)[1].split()[1])
            except (OSError, IndexError, ValueError):
                continue
            children.setdefault(parent, []).append(int(entry))
    found, todo = [], [pid]
    while todo:
        for child in children.get(todo.pop(), []):
            found.append(child)
            todo.append(child)
    return found


def reap_zombies():
    try:
        while os.waitpid(-1, os.WNOHANG)[0] > 0:
            pass
    except ChildProcessError:
        pass


class Session:
    def __init__(self, program, name, extra_env=None):
        self.program = program
        self.name = name
        self.out = tempfile.mkdtemp(prefix=f"korvane-session-{name}-")
        self.extra_env = extra_env or {}
        self.procs = []
        self.app = None
        self.shots = 0
        self.proc = None
        self.log = None
        ctypes.CDLL(None).prctl(36, 1, 0, 0, 0)  # PR_SET_CHILD_SUBREAPER
        try:
            self._start_desktop()
            self.start_program()
        except BaseException:
            self.close()
            raise

    # ----- start and stop -------------------------------------------------------------------
    def _spawn(self, argv, **kw):
        proc = subprocess.Popen(argv, env=kw.pop("env", self.env), **kw)
        self.procs.append(proc)
        return proc

    def _start_desktop(self):
        read_end, write_end = os.pipe()
        self.desktop_log = open(os.path.join(self.out, "desktop.log"), "w")
        xvfb = subprocess.Popen(["Xvfb", "-displayfd", str(write_end), "-screen", "0",
                                 "1024x768x24", "-nolisten", "tcp"], pass_fds=(write_end,),
                                stdout=self.desktop_log, stderr=subprocess.STDOUT)
        self.procs.append(xvfb)
        os.close(write_end)
        number = self._read_line(read_end, 10, "Xvfb did not report its display")
        os.close(read_end)
        runtime = os.path.join(self.out, "runtime")
        os.mkdir(runtime, 0o700)
        self.env = {key: value for key, value in os.environ.items()
                    if not key.startswith(("QT_", "GTK_", "DBUS_", "AT_SPI", "XDG_RUNTIME"))}
        self.env.update(DISPLAY=":" + number, XDG_RUNTIME_DIR=runtime, LC_ALL="C")
        os.environ["DISPLAY"] = self.env["DISPLAY"]
        # Under load the display may not take a client at once: the window manager gets a second
        # chance once the display answers.
        wm_check = ["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"]
        for _ in range(2):
            poll(lambda: self._run(["xprop", "-root", "-len", "0", "_NET_WM_NAME"]) != "", 5)
            openbox = self._spawn(["openbox", "--sm-disable"], stdout=self.desktop_log,
                                  stderr=subprocess.STDOUT)
            if poll(lambda: "window id" in self._run(wm_check) or openbox.poll() is not None, 10) \
                    and openbox.poll() is None:
                break
        else:
            raise Seen("openbox did not take charge of the display")
        bus = self._spawn(["dbus-daemon", "--session", "--nofork", "--print-address"],
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        address = self._read_line(bus.stdout.fileno(), 10, "the session bus did not start")
        self.env["DBUS_SESSION_BUS_ADDRESS"] = address
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = address
        os.environ["XDG_RUNTIME_DIR"] = runtime
        self._spawn([BUS_LAUNCHER, "--launch-immediately"],
                    stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        if not poll(lambda: "= \"unix:" in self._run(["xprop", "-root", "AT_SPI_BUS"]), 10):
            raise Seen("the accessibility bus did not start")
        global pyatspi
        import pyatspi as module
        pyatspi = module
        pyatspi.Registry.getDesktop(0).childCount  # starts the registry daemon before the program

    def start_program(self):
        """Starts the program (again, after an earlier run of it has ended) on this desktop."""
        self.app = None
        env = dict(self.env, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_ACCESSIBILITY="1",
                   **self.extra_env)
        self.desktop_pids = set(descendants(os.getpid()))
        self.runs = getattr(self, "runs", 0) + 1
        self.log_path = os.path.join(self.out, f"program-{self.runs}.log")
        self.log = open(self.log_path, "w")
        self.proc = self._spawn([self.program], env=env, stdout=self.log, stderr=subprocess.STDOUT)

    @staticmethod
    def _read_line(fd, timeout, complaint):
        data = b""
        end = time.monotonic() + timeout
        while not data.endswith(b"\n"):
            ready, _, _ = select.select([fd], [], [], max(0.0, end - time.monotonic()))
            chunk = os.read(fd, 256) if ready else b""
            if not chunk:
                raise Seen(complaint)
            data += chunk
        return data.decode().strip()

    def close(self):
        """Ends every process this session started, the program first, and anything below them."""
        for proc in reversed(self.procs):
            if proc.poll() is not None:
                continue
            for pid in descendants(proc.pid) + [proc.pid]:
                try:
                    os.kill(pid, signal.SIGTERM)
                except ProcessLookupError:
                    pass
            try:
                proc.wait(3)
            except subprocess.TimeoutExpired:
                proc.kill()
                proc.wait()
        deadline = time.monotonic() + 3
        while True:  # until nothing is left below this process, not even a zombie
            reap_zombies()
            left = descendants(os.getpid())
            if not left or time.monotonic() > deadline:
                break
            for pid in left:
                try:
                    os.kill(pid, signal.SIGKILL)
                except ProcessLookupError:
                    pass
            time.sleep(0.02)
        for log in (self.log, getattr(self, "desktop_log", None)):
            if log is not None:
                log.close()

    # ----- the program's own process --------------------------------------------------------
    def output(self):
        self.log.flush()
        with open(self.log_path, errors="replace") as log:
            return log.read()

    def wait_for_exit(self, timeout=5.0):
        """The program's exit status, or None if it still runs after the timeout."""
        try:
            return self.proc.wait(timeout)
        except subprocess.TimeoutExpired:
            return None

    def left_behind(self):
        """Processes still alive below this one that were not there when the program started and
        that the session did not start itself, with their commands."""
        ours = set(self.desktop_pids)
        for proc in self.procs:
            if proc is not self.proc:
                ours.update(descendants(proc.pid) + [proc.pid])
        found = []
        for pid in descendants(os.getpid()):
            try:
                with open(f"/proc/{pid}/stat") as stat:
                    if pid in ours or stat.read().rsplit(") ", 1)[1].startswith("Z"):
                        continue
                with open(f"/proc/{pid}/cmdline", "rb") as cmdline:
                    command = cmdline.read().replace(b"\0", b" ").decode(errors="replace")
                found.append(f"{pid} {command.strip()}")
            except OSError:
                continue
        return found

    # ----- failure reports ------------------------------------------------------------------
    def screenshot(self, label, box=None):
        from PIL import ImageGrab
        image = ImageGrab.grab(bbox=box, xdisplay=self.env["DISPLAY"])
        self.shots += 1
        path = os.path.join(self.out, f"{self.shots:02d}-{label}.png")
        image.save(path)
        return image, path

    def fail(self, seen):
        try:
            self.screenshot("failure")
        except Exception:  # noqa: BLE001 - the display may be gone already
            pass
        raise Seen(f"{seen}\n  (screenshots and the program's output are in {self.out})")

    def check(self, condition, seen):
        if not condition:
            self.fail(seen)

    # ----- X input --------------------------------------------------------------------------
    def _run(self, argv):
        return subprocess.run(argv, env=self.env, capture_output=True, text=True, timeout=10).stdout

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
        # not --sync: xdotool would wait for ever when the pointer is already there
        self.xdotool("mousemove", x, y)
        poll(lambda: f"X={x}\nY={y}\n" in self.xdotool("getmouselocation", "--shell"), 1, 0.02)

    def click(self, x, y, press_only=False):
        self.move_mouse(x, y)
        if press_only:
            self.xdotool("mousedown", 1)
            time.sleep(0.1)
            self.xdotool("mouseup", 1)
        else:
            self.xdotool("click", 1)
        time.sleep(0.15)

    def click_on(self, obj, press_only=False):
        x, y, w, h = extents(obj)
        self.click(x + w // 2, y + h // 2, press_only)

    def clipboard(self):
        return subprocess.run(["xclip", "-o", "-selection", "clipboard"], env=self.env,
                              capture_output=True, text=True, timeout=5).stdout

    def set_clipboard(self, text):
        """xclip takes the clipboard and serves it in the foreground until another client takes
        it over; close() ends it if it is still there."""
        xclip = self._spawn(["xclip", "-quiet", "-i", "-selection", "clipboard"],
                            stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
                            stderr=subprocess.DEVNULL)
        xclip.stdin.write(text.encode())
        xclip.stdin.close()
        poll(lambda: self.clipboard() == text, 2)

    # ----- X windows ------------------------------------------------------------------------
    def windows(self):
        """The program's mapped top-level X windows, as ids."""
        found = self.xdotool("search", "--onlyvisible", "--pid", self.proc.pid)
        return [int(window) for window in found.split()]

    # ----- AT-SPI ---------------------------------------------------------------------------
    def application(self):
        if self.app is None:
            desktop = pyatspi.Registry.getDesktop(0)
            for app in desktop:
                if app is not None and app.get_process_id() == self.proc.pid:
                    self.app = app
        return self.app

    def frame(self, title, timeout=6.0):
        """The program's showing top-level window of that title, waiting for it."""
        def find():
            app = self.application()
            for window in app or []:
                if window is not None and window.name == title and showing(window):
                    return window
        return poll(find, timeout)

    def control_window(self, timeout=6.0):
        window = self.frame("Korvane", timeout)
        self.check(window, "the control window \"Korvane\" did not come up")
        return window

    def pass_about_window(self):
        """Waits for the about window and dismisses it with a key, as a person in a hurry does."""
        self.check(poll(lambda: self.windows(), 10), "no window of the program came up")
        self.key("space")
        return self.control_window()


# ----- AT-SPI helpers -------------------------------------------------------------------------
def showing(obj):
    return obj.getState().contains(pyatspi.STATE_SHOWING)


def has_state(obj, state):
    return obj.getState().contains(state)


def extents(obj):
    box = obj.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    return box.x, box.y, box.width, box.height


def walk(obj):
    yield obj
    for i in range(obj.childCount):
        child = obj.getChildAtIndex(i)
        if child is not None:
            yield from walk(child)


def find_all(root, role=None, name=None, only_showing=True):
    return [o for o in walk(root)
            if (role is None or o.getRole() == role) and (name is None or o.name == name)
            and (not only_showing or showing(o))]


def find(root, role=None, name=None, only_showing=True):
    found = find_all(root, role, name, only_showing)
    return found[0] if found else None


def text_of(obj):
    text = obj.queryText()
    return text.getText(0, text.characterCount)


def focused(root):
    return next((o for o in walk(root) if has_state(o, pyatspi.STATE_FOCUSED)), None)


def describe(obj):
    return f"{obj.getRoleName()} \"{obj.name}\""


def run(scenarios):
    """Entry point of a scenario script: <script> <scenario> <program>."""
    if len(sys.argv) != 3 or sys.argv[1] not in scenarios:
        print(f"usage: {sys.argv[0]} <{'|'.join(scenarios)}> <program>", file=sys.stderr)
        return 2
    scenario = scenarios[sys.argv[1]]
    missing = missing_tools(getattr(scenario, "needs", ()))
    if missing:
        print("session: skipped, missing " + ", ".join(missing))
        return SKIP
    session = None
    try:
        session = Session(os.path.abspath(sys.argv[2]), sys.argv[1], getattr(scenario, "env", None))
        scenario(session)
    except Seen as seen:
        print(f"session {sys.argv[1]}: FAILED: {seen}", file=sys.stderr)
        return 1
    except Exception as error:  # noqa: BLE001 - the scenario broke off; say where things stood
        traceback.print_exc()
        where = ""
        if session is not None and session.proc is not None:
            status = session.proc.poll()
            where = (" while the program was still running" if status is None
                     else f" after the program had ended with status {status}")
            where += f" (screenshots and the program's output are in {session.out})"
        print(f"session {sys.argv[1]}: BROKE OFF with {error!r}{where}", file=sys.stderr)
        return 1
    finally:
        if session is not None:
            session.close()
    shutil.rmtree(session.out, ignore_errors=True)  # kept only where something failed
    print(f"session {sys.argv[1]}: passed")
    return 0
