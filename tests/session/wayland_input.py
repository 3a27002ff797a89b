"""Real keyboard and pointer input for a wlroots compositor, through its virtual input protocols
(zwp_virtual_keyboard_manager_v1, zwlr_virtual_pointer_manager_v1), spoken over the Wayland wire
protocol directly: Debian ships no Python bindings and no tool for a virtual pointer. One
connection is kept for the whole session, so a key costs two small writes.

The compositor takes a virtual keyboard's keys without updating the modifier state, so a chord
sends the modifier mask itself (modifiers) between the modifier's press and release.
"""
import array
import os
import socket
import struct
import subprocess
import time

# evdev key codes (linux/input-event-codes.h) of the keys the scenarios press, by xdotool's name.
KEYS = {"Escape": 1, "minus": 12, "equal": 13, "BackSpace": 14, "Tab": 15, "bracketleft": 26,
        "bracketright": 27, "Return": 28, "ctrl": 29, "semicolon": 39, "apostrophe": 40,
        "grave": 41, "shift": 42, "backslash": 43, "comma": 51, "period": 52, "slash": 53,
        "alt": 56, "space": 57, "Home": 102, "Up": 103, "Prior": 104, "Left": 105, "Right": 106,
        "End": 107, "Down": 108, "Next": 109, "Insert": 110, "Delete": 111, "super": 125}
KEYS.update({str((i + 1) % 10): 2 + i for i in range(10)})
KEYS.update({c: 16 + i for i, c in enumerate("qwertyuiop")})
KEYS.update({c: 30 + i for i, c in enumerate("asdfghjkl")})
KEYS.update({c: 44 + i for i, c in enumerate("zxcvbnm")})
KEYS.update({f"F{i}": 58 + i for i in range(1, 11)}, F11=87, F12=88)
# Masks of the modifiers in the keymap xkbcli compiles for a US layout.
MASKS = {"shift": 1, "ctrl": 4, "alt": 8, "super": 64}
# Characters typed with Shift held, by the key that gives them.
SHIFTED = dict(zip('!@#$%^&*()_+{}:"~|<>?', "1234567890-=[];'`\\,./"))
PLAIN = {" ": "space", "-": "minus", "=": "equal", "[": "bracketleft", "]": "bracketright",
         ";": "semicolon", "'": "apostrophe", "`": "grave", "\\": "backslash", ",": "comma",
         ".": "period", "/": "slash", "\t": "Tab", "\n": "Return"}
BTN_LEFT = 0x110


def chord_of(char):
    """The xdotool-style chord that types one character on a US layout."""
    if char in SHIFTED:
        return "shift+" + PLAIN.get(SHIFTED[char], SHIFTED[char])
    if char.isupper():
        return "shift+" + char.lower()
    return PLAIN.get(char, char)


class WaylandError(RuntimeError):
    """The compositor refused a request or offers no virtual input."""


class Connection:
    """The few parts of the Wayland wire protocol a virtual input client needs."""

    def __init__(self, path):
        self.sock = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self.sock.connect(path)
        self.next_id, self.buffer, self.globals = 2, b"", {}

    def new_id(self):
        self.next_id += 1
        return self.next_id - 1

    def send(self, obj, opcode, args=b"", fds=()):
        header = struct.pack("<II", obj, (8 + len(args)) << 16 | opcode)
        ancillary = [(socket.SOL_SOCKET, socket.SCM_RIGHTS, array.array("i", fds))] if fds else []
        self.sock.sendmsg([header + args], ancillary)

    def events(self):
        """Reads what has arrived: (object, opcode, arguments) each."""
        self.buffer += self.sock.recv(65536)
        while len(self.buffer) >= 8:
            obj, size_op = struct.unpack_from("<II", self.buffer)
            size = size_op >> 16
            if len(self.buffer) < size:
                break
            yield obj, size_op & 0xFFFF, self.buffer[8:size]
            self.buffer = self.buffer[size:]

    def roundtrip(self, on_event=lambda obj, op, args: None):
        """wl_display.sync, handling every event until its callback is done."""
        callback = self.new_id()
        self.send(1, 0, struct.pack("<I", callback))
        while True:
            for obj, op, args in self.events():
                if obj == 1 and op == 0:  # wl_display.error
                    raise WaylandError(f"the compositor refused a request: {string_at(args, 8)}")
                if obj == callback:
                    return
                on_event(obj, op, args)

    def bind_globals(self, wanted):
        """Binds one global of each wanted interface {name: version}; gives their ids."""
        registry = self.new_id()
        self.send(1, 1, struct.pack("<I", registry))
        offered = {}

        def note(obj, op, args):
            if obj == registry and op == 0:
                number, = struct.unpack_from("<I", args)
                offered.setdefault(string_at(args, 4), number)

        self.roundtrip(note)
        missing = sorted(set(wanted) - set(offered))
        if missing:
            raise WaylandError(f"the compositor does not offer {', '.join(missing)}")
        bound = {}
        for interface, version in wanted.items():
            bound[interface] = self.new_id()
            self.send(registry, 0, struct.pack("<I", offered[interface]) + string(interface)
                      + struct.pack("<II", version, bound[interface]))
        return bound


def string(text):
    data = text.encode() + b"\0"
    return struct.pack("<I", len(data)) + data + b"\0" * (-len(data) % 4)


def string_at(args, offset):
    length, = struct.unpack_from("<I", args, offset)
    return args[offset + 4:offset + 4 + length - 1].decode()


def us_keymap():
    """A US keymap in the XKB text form the virtual keyboard protocol carries."""
    return subprocess.run(["xkbcli", "compile-keymap", "--layout", "us"], capture_output=True,
                          check=True).stdout


class VirtualInput:
    """A keyboard and a pointer of the compositor's seat, driven from here."""

    def __init__(self, socket_path, width, height):
        self.wire, self.extent = Connection(socket_path), (width, height)
        ids = self.wire.bind_globals({"wl_seat": 1, "zwp_virtual_keyboard_manager_v1": 1,
                                      "zwlr_virtual_pointer_manager_v1": 1})
        seat = struct.pack("<I", ids["wl_seat"])
        self.keyboard, self.pointer = self.wire.new_id(), self.wire.new_id()
        self.wire.send(ids["zwp_virtual_keyboard_manager_v1"], 0,
                       seat + struct.pack("<I", self.keyboard))
        self.wire.send(ids["zwlr_virtual_pointer_manager_v1"], 0,
                       seat + struct.pack("<I", self.pointer))
        keymap = us_keymap() + b"\0"
        memory = os.memfd_create("keymap")
        os.write(memory, keymap)
        # Format XKB_V1 and the size; the fd travels beside the message, not among the words.
        self.wire.send(self.keyboard, 0, struct.pack("<II", 1, len(keymap)), fds=(memory,))
        os.close(memory)
        self.wire.roundtrip()

    @staticmethod
    def now():
        return int(time.monotonic() * 1000) & 0xFFFFFFFF

    def _key(self, code, pressed):
        self.wire.send(self.keyboard, 1, struct.pack("<III", self.now(), code, int(pressed)))

    def _modifiers(self, mask):
        self.wire.send(self.keyboard, 2, struct.pack("<IIII", mask, 0, 0, 0))

    def chord(self, chord, hold=0.02):
        """Presses and releases a chord such as ctrl+q, shift+Tab, F10, or alt alone. Each
        modifier sends the new mask after its press and after its release, as a keyboard does."""
        *modifiers, key = chord.split("+")
        key = key.lower() if len(key) == 1 else key
        held = [m.lower() for m in modifiers] + ([key] if key in MASKS else [])
        if key not in KEYS or any(m not in MASKS for m in held):
            raise WaylandError(f"no key code for \"{chord}\"")
        mask = 0
        for modifier in held:
            self._key(KEYS[modifier], True)
            mask |= MASKS[modifier]
            self._modifiers(mask)
        if key not in MASKS:
            self._key(KEYS[key], True)
        self.wire.roundtrip()
        time.sleep(hold)
        if key not in MASKS:
            self._key(KEYS[key], False)
        for modifier in reversed(held):
            self._key(KEYS[modifier], False)
            mask &= ~MASKS[modifier]
            self._modifiers(mask)
        self.wire.roundtrip()

    def move(self, x, y):
        width, height = self.extent
        self.wire.send(self.pointer, 1, struct.pack("<IIIII", self.now(), x, y, width, height))
        self.wire.send(self.pointer, 4)  # frame
        self.wire.roundtrip()

    def button(self, pressed, code=BTN_LEFT):
        self.wire.send(self.pointer, 2, struct.pack("<III", self.now(), code, int(pressed)))
        self.wire.send(self.pointer, 4)
        self.wire.roundtrip()
