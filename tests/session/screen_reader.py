"""Orca, the screen reader, inside a harness.Session, with what it speaks written to a file.

Speech goes the way it goes on a desktop: Orca hands it to a speech-dispatcher, here one of the
session's own (its own configuration, socket and logs in the session's folder). Its only output
module is speech-dispatcher's generic one, whose "synthesizer" is a printf that appends each
utterance to speech.txt, ended by an ASCII record separator; the generic module's splitting into
sentences is turned off so that an utterance stays whole. Nothing is said aloud.

Orca is started with a settings folder prepared here (desktop keyboard layout, no key echo, no
braille) and its debug log in the session's folder, which shows the events behind each utterance
and tells when Orca is idle.
It is started from a few lines of Python rather than /usr/bin/orca: that script refuses to run
beside any other Orca of the same user (and its --replace kills them), while this one keeps to
its own display and buses.
"""
import json
import os
import re
import subprocess
import time

import harness as h

SEPARATOR = "\x1e"

LAUNCH = """
import sys
from orca import debug
debug.debugLevel, debug.eventDebugLevel = debug.LEVEL_ALL, debug.LEVEL_OFF
debug.debugFile = open(sys.argv[2], "w", buffering=1)
from orca import orca
manager = orca.getSettingsManager()
manager.activate(sys.argv[1], {})
sys.path.insert(0, manager.getPrefsDir())
sys.exit(orca.main())
"""

# What a person who has just set Orca up on a desktop keyboard has: flat review on the keypad,
# Insert as the Orca key. Key echo is off so that only what the program's windows cause is heard.
SETTINGS = {"keyboardLayout": 1, "orcaModifierKeys": ["Insert", "KP_Insert"],
            "enableKeyEcho": False, "enableBraille": False, "enableSound": False,
            "enableSpeech": True, "speechServerFactory": "speechdispatcherfactory",
            "startingProfile": ["Default", "default"]}


def _write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w") as out:
        out.write(text)


class Orca:
    """Starts speech-dispatcher and Orca on the session's display and buses; stopped by
    session.close() with everything else the session started."""

    def __init__(self, session):
        self.s = session
        self.dir = os.path.join(session.out, "orca")
        self.speech_path = os.path.join(self.dir, "speech.txt")
        self.debug_path = os.path.join(self.dir, "orca-debug.log")
        home = os.path.join(self.dir, "home")
        self.env = dict(session.env, HOME=home, XDG_CONFIG_HOME=os.path.join(home, "config"),
                        XDG_DATA_HOME=os.path.join(home, "data"),
                        XDG_CACHE_HOME=os.path.join(home, "cache"),
                        SPEECHD_ADDRESS="unix_socket:" + os.path.join(self.dir, "speechd.sock"))
        self._prepare(home)
        self._start_speech()
        self._start_orca()

    def _prepare(self, home):
        # libao, speech-dispatcher's audio output, needs a device even though nothing is played.
        _write(os.path.join(home, ".libao"), "default_driver=null\n")
        _write(os.path.join(self.dir, "speechd", "speechd.conf"),
               'LogLevel 3\nAudioOutputMethod "libao"\n'
               'AddModule "capture" "sd_generic" "capture.conf"\nDefaultModule capture\n')
        _write(os.path.join(self.dir, "speechd", "modules", "capture.conf"),
               f'GenericExecuteSynth "printf \'%s\\\\036\' \\\'$DATA\\\' >> {self.speech_path}"\n'
               'GenericDelimiters "\\036"\nGenericMaxChunkLength 100000\n'
               'GenericLanguage "en" "en" "utf-8"\nAddVoice "en" "MALE1" "capture"\n'
               'DefaultVoice "capture"\n')
        _write(self.speech_path, "")
        self.prefs = os.path.join(self.dir, "prefs")
        _write(os.path.join(self.prefs, "user-settings.conf"), json.dumps(
            {"general": SETTINGS, "pronunciations": {}, "keybindings": {},
             "profiles": {"default": {"profile": ["Default", "default"]}}}, indent=1))

    def _start_speech(self):
        self.speechd_log = open(os.path.join(self.dir, "speechd.out"), "w")
        socket = self.env["SPEECHD_ADDRESS"].split(":", 1)[1]
        self.s._spawn(["speech-dispatcher", "--run-single", "--timeout", "0",
                       "--config-dir", os.path.join(self.dir, "speechd"),
                       "--communication-method", "unix_socket", "--socket-path", socket,
                       "--log-dir", self.dir, "--pid-file", os.path.join(self.dir, "speechd.pid")],
                      env=self.env, stdout=self.speechd_log, stderr=subprocess.STDOUT)
        if not h.poll(lambda: os.path.exists(socket), 10):
            self.s.fail(f"speech-dispatcher did not open its socket; see {self.dir}/speechd.out")

    def _start_orca(self):
        self.orca_log = open(os.path.join(self.dir, "orca.out"), "w")
        self.proc = self.s._spawn(["/usr/bin/python3", "-c", LAUNCH, self.prefs, self.debug_path],
                                  env=self.env, stdout=self.orca_log, stderr=subprocess.STDOUT,
                                  cwd=self.dir)
        h.poll(lambda: "Screen reader on." in self.spoken() or not self.alive(), 15)
        if self.spoken()[:1] != ["Screen reader on."]:
            self.s.fail(f"Orca did not say \"Screen reader on.\" (it said {self.spoken_since(0)}; "
                        f"status {self.proc.poll()}; see {self.dir})")
        self.ready = self.mark()

    def spoken(self):
        """Every utterance so far, in order."""
        with open(self.speech_path, errors="replace") as speech:
            return [u.strip() for u in speech.read().split(SEPARATOR)[:-1]]

    def mark(self):
        """A place in the speech: spoken_since(mark) gives what came after it."""
        return len(self.spoken())

    def spoken_since(self, mark):
        return self.spoken()[mark:]

    def wait_spoken(self, pattern, since, timeout=4.0):
        """Waits for the regular expression in what was said after `since`, the utterances
        joined by single spaces; gives the match, or None if it did not come."""
        rx = re.compile(pattern)
        return h.poll(lambda: rx.search(" ".join(self.spoken_since(since))), timeout)

    def wait_quiet(self, since, quiet=0.5, timeout=4.0):
        """Waits until Orca has been idle for `quiet` seconds (it logs all it does, a line at a
        time, so neither its debug log nor the speech grows) and gives what was said after
        `since`."""
        state = {"size": -1, "at": 0.0}

        def settled():
            size, now = os.path.getsize(self.debug_path) + os.path.getsize(self.speech_path), \
                time.monotonic()
            if size != state["size"]:
                state.update(size=size, at=now)
            return now - state["at"] >= quiet
        h.poll(settled, timeout)
        return self.spoken_since(since)

    def alive(self):
        return self.proc.poll() is None
