"""A seeded monkey: random but realistic input to the real Korvane on a desktop of its own
(harness.Session: Xvfb, openbox, the accessibility bus), its promises checked after every event.
    /usr/bin/python3 monkey.py [--seed N] [--seconds S | --minutes M] [--events N]
                               [--program PATH] [--log PATH] [--replay [LOG]]
Clicks, double clicks, drags, middle and right clicks aim at what AT-SPI shows (the controls, the
menus and their items, the message box, anywhere in or outside the windows); keys, typed strings,
clipboard changes and the window manager's activate, minimise, move and close come between them.
Event n is drawn by a generator seeded with (seed, n) from what the screen shows then, so a run
is drawn again from its seed, and one draw that differs does not shift all later ones. Each event
is one line of the log; --replay LOG plays those lines again as they stand, at the logged pace.
"""
import argparse
import os
import random
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import threading
import time
import traceback

import harness as h
from harness import extents
from monkey_events import QUIT_KEYS, View, draw, presses, within

HERE = os.path.dirname(os.path.abspath(__file__))
# What the program promises whatever it is given. These limits are the program's own, not the
# machine's, so harness.PATIENCE does not stretch them.
EXIT_LIMIT = 3.0    # a quit ends the program with status 0 within this many seconds
BLANK_LIMIT = 2.0   # the longest time with no window of the program mapped
ANSWER_LIMIT = 5.0  # the longest wait for an answer over AT-SPI
# The program holds about 30 MiB with the about window up and no more than 35 MiB in long monkey
# runs, the accessibility bridge on: about a third of this bound, which leaves room for Qt's caches
# and the allocator's slack, while a leak of 20 KiB per event crosses it in a ten-minute run (some
# 3000 events).
RSS_LIMIT_MIB = 100
# A build with AddressSanitizer holds its shadow memory and keeps freed blocks in quarantine (up to
# 256 MiB): some 100 MiB at the start and growing with every allocation. There LeakSanitizer
# looks for leaks at the exit, and this bound only catches a runaway.
ASAN_RSS_LIMIT_MIB = 1024


def rss_limit_mib(pid):
    with open(f"/proc/{pid}/maps") as maps:
        return ASAN_RSS_LIMIT_MIB if "libasan" in maps.read() else RSS_LIMIT_MIB


# -- playing events --------------------------------------------------------------------------------

class Monkey:
    def __init__(self, session, seed, log):
        self.s, self.seed, self.log, self.recent = session, seed, log, []
        self.watch = MappedWatch(session)
        self.clip_png = os.path.join(session.out, "clip.png")
        from PIL import Image
        Image.new("RGB", (8, 8), (200, 30, 30)).save(self.clip_png)
        self.events = self.peak_kib = 0
        self.quit_asked = None  # (start, end) of the last event that may have quit
        self.ended_at = self.before = None  # the screen before the event, kept for a failure

    def start(self):
        """Waits for the program's first window and its place on the accessibility bus, and
        notes when it ends (a thread waits for that, so the moment is exact)."""
        proc = self.s.proc
        self.ended_at = None

        def note_the_end():
            proc.wait()
            self.ended_at = time.monotonic()
        threading.Thread(target=note_the_end, daemon=True).start()
        if not h.poll(self.s.windows, 10) or not h.poll(self.apps, 10):
            self.violated("the program showed no window, or did not join the accessibility bus")
        self.watch.follow(proc.pid)

    def xdo(self, *args):
        return self.s.xdotool(*args)

    def perform(self, words, view):
        getattr(self, "do_" + words[0])(view, *words[1:])

    def do_click(self, view, button, x, y):
        self.xdo("mousemove", x, y, "click", button)

    def do_press(self, view, x, y):
        """A press held a moment: the "?" button acts on the press, before the release."""
        self.xdo("mousemove", x, y, "mousedown", 1, "sleep", 0.15, "mouseup", 1)

    def do_double(self, view, x, y):
        self.xdo("mousemove", x, y, "click", "--repeat", 2, "--delay", 80, 1)

    def do_drag(self, view, x1, y1, x2, y2):
        middle = (int(x1) + int(x2)) // 2, (int(y1) + int(y2)) // 2
        self.xdo("mousemove", x1, y1, "mousedown", 1, "sleep", 0.1, "mousemove", *middle,
                 "sleep", 0.1, "mousemove", x2, y2, "sleep", 0.1, "mouseup", 1)

    def do_key(self, view, keys):
        self.xdo("key", "--delay", 40, keys)

    def do_type(self, view, text):
        self.xdo("type", "--delay", 20, text)

    def do_clip(self, view, what, text=None):
        if what == "none":
            self.s.clear_clipboard()
        elif what == "png":
            with open(self.clip_png, "rb") as png:
                self.s.set_clipboard(png.read(), "image/png")
        else:
            self.s.set_clipboard(text)

    def window_id(self, view, kind):
        """The X window of that kind: the program's mapped window of the size AT-SPI gave it."""
        if kind not in view.windows:
            return None
        size = "%dx%d" % view.windows[kind][2:]
        ids = self.s.windows()
        sizes = self.xdo("getwindowgeometry", *ids).split("Geometry: ")[1:] if ids else []
        return next((i for i, g in zip(ids, sizes) if g.split()[0] == size), None)

    def do_activate(self, view, kind):
        window = self.window_id(view, kind)
        if window:
            self.xdo("windowactivate", window)

    def do_minimize(self, view, kind, delay, how):
        """Minimises the window and brings it back after the delay, as a task bar would."""
        window = self.window_id(view, kind)
        if window:
            self.xdo("windowminimize", window)
            time.sleep(float(delay))
            self.xdo(how, window)

    def do_move(self, view, kind, x, y):
        window = self.window_id(view, kind)
        if window:
            self.xdo("windowmove", window, x, y)

    def do_close(self, view, kind, how):
        """openbox's close: its title bar's close button, or Alt+F4 once the window is active."""
        if kind not in view.windows:
            return
        if how == "button":
            x, y, w, _ = view.windows[kind]
            self.do_click(view, 1, x + w - 11, y - 10)
            return
        window = self.window_id(view, kind)
        if window:
            self.xdo("windowactivate", window)
            end = time.monotonic() + 1
            while self.xdo("getactivewindow").strip() != window and time.monotonic() < end:
                time.sleep(0.05)
            self.xdo("key", "alt+F4")

    # -- the promises --------------------------------------------------------------------------

    def apps(self):
        return [a for a in h.pyatspi.Registry.getDesktop(0)
                if a is not None and a.get_process_id() == self.s.proc.pid]

    def look(self):
        """The program's windows over AT-SPI, which must answer within ANSWER_LIMIT."""
        start = time.monotonic()
        while True:
            try:
                windows = [w for app in self.apps() for w in app if w is not None]
                if windows:
                    extents(windows[0])  # asks the program itself: AT-SPI caches names and roles
                    break
                error = "it listed no window"
            except Exception as failure:  # noqa: BLE001 - a timeout, or a window went away
                error = failure
            if self.s.proc.poll() is not None:
                return View()  # it ended; check() says whether it might
            if time.monotonic() - start > ANSWER_LIMIT:
                self.violated(f"the program did not answer over AT-SPI within {ANSWER_LIMIT} s "
                              f"({error})")
            time.sleep(0.1)
        if time.monotonic() - start > ANSWER_LIMIT:
            self.violated(f"AT-SPI answered only after {time.monotonic() - start:.1f} s")
        view = View()
        for window in windows:
            try:
                if not h.showing(window):
                    continue
                view.read(window)
            except Exception:  # noqa: BLE001 - it changed while read; the next look sees it
                pass
        return view

    def may_quit(self, words, view):
        """A quit key, the window manager's close (another window may be in the way), any key or
        click while the File menu is open (it may choose Quit), or a press on File (a drag from
        it may end on Quit)."""
        if words[0] == "close" or words[0] == "key" and words[1] in QUIT_KEYS:
            return True
        file_title = [box for what, box in view.titles if what.startswith("menu item \"File")]
        return view.file_open or any(within(point, box) for _, point in presses(words)
                                     for box in file_title)

    def chose_quit(self, words, view):
        """A left click on the Quit item while it shows enabled: the program must end."""
        return (view.quit_item is not None and "alert" not in view.windows
                and words[:2] == ["click", "1"] and within(words[2:4], view.quit_item))

    def check(self, words, view, started):
        if self.may_quit(words, view):
            self.quit_asked = started, time.monotonic()
            self.watch.grace(EXIT_LIMIT)  # its windows may go a moment before it ends
        if self.chose_quit(words, view):
            try:
                self.s.proc.wait(EXIT_LIMIT)
            except subprocess.TimeoutExpired:
                self.violated(f"File > Quit was chosen; the program still ran {EXIT_LIMIT} s later")
        if self.s.proc.poll() is not None:
            self.ended()
        self.check_output()
        blank = self.watch.longest()
        if blank > BLANK_LIMIT:
            self.violated(f"no window of the program was on screen for {blank:.1f} s")
        self.check_memory()

    def ended(self):
        status = self.s.proc.wait()
        while self.ended_at is None:  # the waiting thread is about to note it
            time.sleep(0.01)
        if status < 0:
            self.violated(f"the program died of {signal.Signals(-status).name}" + backtrace(self.s))
        asked = self.quit_asked
        if asked is None or not asked[0] <= self.ended_at <= asked[1] + EXIT_LIMIT:
            since = f", the last was {self.ended_at - asked[1]:.1f} s before" if asked else ""
            self.violated(f"the program ended with status {status}, though no quit was asked "
                          f"within {EXIT_LIMIT} s before{since}")
        if status != 0:
            self.violated(f"the program ended with status {status} after a quit")
        self.check_output()
        self.write(f"# the program ended with status 0; run {self.s.runs + 1} starts")
        self.watch.follow(None)
        self.s.start_program()
        self.start()

    def check_output(self):
        said = self.s.output().strip()
        if said:
            self.violated(f"the program wrote: {said[:2000]!r}")

    def check_memory(self):
        try:
            with open(f"/proc/{self.s.proc.pid}/status") as status:
                kib = int(status.read().split("VmRSS:")[1].split()[0])
            limit = rss_limit_mib(self.s.proc.pid)
        except (OSError, IndexError, ValueError):
            return  # it ended in the meantime; the next check says how
        self.peak_kib = max(self.peak_kib, kib)
        if kib > limit * 1024:
            self.violated(f"resident memory grew to {kib // 1024} MiB, above {limit} MiB")

    def violated(self, what):
        if self.before is not None:
            self.before.save(os.path.join(self.s.out, f"before-event-{self.events}.png"))
        self.s.fail(f"{what}\n  at event #{self.events}")

    def write(self, line):
        self.recent = (self.recent + [line])[-20:]
        print(line, file=self.log, flush=True)

    # -- running -------------------------------------------------------------------------------

    def play(self, events, until):
        """Plays (n, logged time, words, what) events, drawing those without words, until
        until(n, seconds played) says stop."""
        from PIL import ImageGrab
        begun = time.monotonic()
        self.watch.start()
        try:
            self.start()
            for n, logged, words, what in events:
                view = self.look()
                if until(n, time.monotonic() - begun):
                    break
                if words is None:
                    words, what = draw(self.seed, n, view)
                else:  # a replay keeps the logged pace
                    time.sleep(max(0.0, logged - (time.monotonic() - begun)))
                words, started = [str(w) for w in words], time.monotonic()
                self.events = n
                self.write(f"{n:05d} {started - begun:8.2f} {shlex.join(words)}  # {what}")
                self.before = ImageGrab.grab(xdisplay=self.s.env["DISPLAY"])
                self.perform(words, view)
                self.check(words, view, started)
        finally:
            self.watch.stop()


def backtrace(session):
    """The stack of a crashed run from its core file, when the system left one in the program's
    folder (kernel.core_pattern "core") and gdb is there to read it."""
    cores = [f for f in os.listdir(session.out) if f.startswith("core")]
    if not cores or not shutil.which("gdb"):
        return " (no core file to read a backtrace from)"
    core = os.path.join(session.out, max(cores, key=lambda f: os.path.getmtime(
        os.path.join(session.out, f))))
    bt = subprocess.run(["gdb", "-batch", "-ex", "bt", session.program, core],
                        capture_output=True, text=True, timeout=120).stdout
    frames = list(dict.fromkeys(line for line in bt.splitlines() if line.startswith("#")))
    return f"; its core is {core}, backtrace:\n    " + "\n    ".join(frames[:30])


class MappedWatch(threading.Thread):
    """Looks ten times a second whether some window of the program is mapped (a minimised one is
    not), and keeps the longest stretch without one. Only stretches it watched count: when a look
    comes more than half a second after the one before (the machine starved this thread), the
    stretch starts again there."""

    def __init__(self, session):
        super().__init__(daemon=True)
        self.s, self.pid, self.running = session, None, True
        self.lock = threading.Lock()
        self.blank_since = self.last_look = None
        self.longest_blank, self.quiet_until = 0.0, 0.0

    def follow(self, pid):
        """Watches that process from now on; None pauses the watch."""
        with self.lock:
            self.pid, self.blank_since, self.last_look = pid, None, None

    def grace(self, seconds):
        """Counts no stretch without windows for that long from now (a quit was asked)."""
        with self.lock:
            self.quiet_until, self.blank_since = time.monotonic() + seconds, None

    def longest(self):
        """The longest stretch without a window since the last call."""
        with self.lock:
            longest, self.longest_blank = self.longest_blank, 0.0
            return longest

    def run(self):
        while self.running:
            pid = self.pid
            try:
                if pid is not None:
                    mapped = self.s.xdotool("search", "--onlyvisible", "--pid", pid).split()
                    self.saw(pid, bool(mapped), time.monotonic())
            except subprocess.TimeoutExpired:
                pass  # no look this time; the next one counts as starved if it comes late
            time.sleep(0.1)

    def saw(self, pid, mapped, now):
        with self.lock:
            if pid != self.pid:
                return
            starved = self.last_look is not None and now - self.last_look > 0.5
            if mapped or starved or now < self.quiet_until:
                self.blank_since = None if mapped else now
            elif self.blank_since is None:
                self.blank_since = now
            if self.blank_since is not None:
                self.longest_blank = max(self.longest_blank, now - self.blank_since)
            self.last_look = now

    def stop(self):
        self.running = False
        self.join(2)


# -- the command line ------------------------------------------------------------------------------

def logged_events(path):
    """The events of a log, as (n, time, words, what); comment lines are skipped."""
    with open(path) as log:
        for line in log:
            words = shlex.split(line, comments=True)
            if words:
                yield int(words[0]), float(words[1]), words[2:], line.split("  # ", 1)[-1].strip()


def drawn_events():
    n = 0
    while True:
        n += 1
        yield n, None, None, None


def arguments():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--seed", type=int, help="the run's seed (by default a new one)")
    parser.add_argument("--seconds", type=float, help="play events for this long")
    parser.add_argument("--minutes", type=float, help="play events for this long")
    parser.add_argument("--events", type=int, help="play at most this many events")
    parser.add_argument("--program", default=os.path.join(HERE, "../../build/app/korvane"))
    parser.add_argument("--log", help="the event log (by default in the session's folder)")
    parser.add_argument("--replay", nargs="?", const="", metavar="LOG",
                        help="play a log again; without LOG, draw the seed's events again")
    args = parser.parse_args()
    if args.replay == "" and args.seed is None:
        parser.error("--replay without a log draws a seed's events again: give --seed")
    if not os.access(args.program, os.X_OK):
        parser.error(f"{args.program} is not built yet; run: bash scripts/build.sh, or give "
                     "--program")
    if args.seed is None:
        args.seed = random.SystemRandom().randrange(1, 10**6)
    args.seconds = (args.seconds or 0) + 60 * (args.minutes or 0) or None
    return args


def main():
    args = arguments()
    # A crash leaves a core in the program's folder (the session's), for the backtrace.
    resource.setrlimit(resource.RLIMIT_CORE, (resource.getrlimit(resource.RLIMIT_CORE)[1],) * 2)
    session = monkey = None
    try:
        session = h.Session(os.path.abspath(args.program), "monkey")
        h.pyatspi.setTimeout(int(ANSWER_LIMIT * 1000), 15000)
        args.log = args.log or os.path.join(session.out, "events.log")
        print(f"monkey: seed {args.seed}; events go to {args.log}", flush=True)
        with open(args.log, "w") as log:
            print(f"# monkey.py --seed {args.seed} --program {session.program}", file=log)
            monkey = Monkey(session, args.seed, log)
            monkey.play(logged_events(args.replay) if args.replay else drawn_events(),
                        lambda n, seconds: (args.events is not None and n > args.events)
                        or (args.seconds is not None and seconds > args.seconds))
    except h.Seen as seen:
        return report(args, f"FAILED with seed {args.seed}: {seen}", monkey)
    except Exception as error:  # noqa: BLE001 - the monkey itself broke off; say where it stood
        traceback.print_exc()
        return report(args, f"BROKE OFF with seed {args.seed}: {error!r}", monkey)
    finally:
        if session is not None:
            session.close()
    print(f"monkey: seed {args.seed}: {monkey.events} events, {session.runs} runs of the "
          f"program, resident memory at most {monkey.peak_kib // 1024} MiB: passed")
    shutil.rmtree(session.out, ignore_errors=True)  # the log too, unless --log put it elsewhere
    return 0


def report(args, what, monkey):
    print(f"monkey: {what}", file=sys.stderr)
    if monkey is not None:
        print("the last events:\n  " + "\n  ".join(monkey.recent), file=sys.stderr)
    if args.log:
        print(f"the event log: {args.log}\nto play it again: /usr/bin/python3 "
              f"{os.path.abspath(sys.argv[0])} --seed {args.seed} --replay {args.log} "
              f"--program {os.path.abspath(args.program)}", file=sys.stderr)
    return 1


if __name__ == "__main__":
    sys.exit(main())
