"""What a screen reader has: the program's controls, its events and the keyboard. Nothing here knows the program."""
import contextlib
import ctypes
import ctypes.util
import dataclasses
import enum
import time

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

PATIENCE = 30  # seconds for anything to come
ACCESSIBLE = "org.a11y.atspi.Accessible"
ACTION = "org.a11y.atspi.Action"
LABELLED_BY = 2  # among the kinds of relations
PROPERTIES = "org.freedesktop.DBus.Properties"
REGISTRY = "org.a11y.atspi.Registry"
ROOT = "/org/a11y/atspi/accessible/root"
HEARD = ("object:state-changed", "object:property-change", "object:children-changed", "object:selection-changed",
         "object:text-changed", "window:activate", "focus:")
NOTED = ("StateChanged", "ChildrenChanged")  # of what a reader asks to hear, that in which a test is interested


class Role(enum.IntEnum):
    """Those of the interface's numbers that matter here."""
    ALERT = 2
    CANVAS = 6
    CHECK_BOX = 7
    CHECK_ITEM = 8
    COLUMN_HEADER = 10
    COMBO_BOX = 11
    DIALOG = 16
    FILLER = 20
    FRAME = 23
    IMAGE = 27
    LABEL = 29
    LAYERED_PANE = 30
    LIST = 31
    LIST_ITEM = 32
    MENU = 33
    MENU_ITEM = 35
    SEPARATOR = 50
    TAB = 37
    TAB_LIST = 38
    PANEL = 39
    PASSWORD = 40
    POPUP_MENU = 41
    BUTTON = 43
    RADIO_BUTTON = 44
    RADIO_ITEM = 45
    SCROLL_BAR = 48
    SPIN_BUTTON = 52
    TABLE = 55
    CELL = 56
    TABLE_COLUMN_HEADER = 57
    TEXT = 61
    TOGGLE_BUTTON = 62
    TREE = 65
    WINDOW = 69
    TREE_ITEM = 91
    NOTIFICATION = 101


class State(enum.IntEnum):
    ACTIVE = 1
    CHECKED = 4
    COLLAPSED = 5
    EDITABLE = 7
    ENABLED = 8
    EXPANDABLE = 9
    EXPANDED = 10
    FOCUSABLE = 11
    FOCUSED = 12
    MODAL = 16
    SELECTED = 23
    SENSITIVE = 24
    SHOWING = 25
    CHECKABLE = 41
    READ_ONLY = 43


TOPS = (Role.FRAME, Role.DIALOG, Role.WINDOW, Role.POPUP_MENU)
VIEWS = (Role.TREE, Role.LIST, Role.TABLE)
ROWS = {Role.CELL, Role.LIST_ITEM, Role.TREE_ITEM, Role.TABLE_COLUMN_HEADER}
MOST_ROWS = 60  # of a view that are looked at: a reader does not walk through all of a large one


class Gone(Exception):
    """The control is not there any more."""


def role_of(number):
    return Role(number) if number in Role._value2member_map_ else number


def states_of(words):
    bits = words[0] | words[1] << 32
    return {state for state in State if bits >> state & 1}


def short_names(interfaces):
    return {name.rsplit(".", 1)[1] for name in interfaces}


@dataclasses.dataclass(frozen=True)
class Event:
    kind: str    # "StateChanged"
    detail: str  # "showing"
    value: int
    control: "Control"


@dataclasses.dataclass(frozen=True)
class Control:
    reader: "Reader" = dataclasses.field(repr=False, compare=False)
    path: str

    def _ask(self, interface, member, arguments=None):
        return self.reader.ask(self.path, interface, member, arguments)

    def _property(self, interface, name):
        return self._ask(PROPERTIES, "Get", GLib.Variant("(ss)", (interface, name)))[0]

    @property
    def name(self):
        return self._property(ACCESSIBLE, "Name")

    @property
    def description(self):
        return self._property(ACCESSIBLE, "Description")

    @property
    def role(self):
        return role_of(self._ask(ACCESSIBLE, "GetRole")[0])

    @property
    def states(self):
        return states_of(self._ask(ACCESSIBLE, "GetState")[0])

    @property
    def interfaces(self):
        return short_names(self._ask(ACCESSIBLE, "GetInterfaces")[0])

    @property
    def labels(self):
        """The names of what it is labelled by."""
        relations = self._ask(ACCESSIBLE, "GetRelationSet")[0]
        return [Control(self.reader, path).name for kind, targets in relations if kind == LABELLED_BY
                for _, path in targets]

    @property
    def child_count(self):
        return self._property(ACCESSIBLE, "ChildCount")

    @property
    def index(self):
        return self._ask(ACCESSIBLE, "GetIndexInParent")[0]

    @property
    def parent(self):
        return Control(self.reader, self._property(ACCESSIBLE, "Parent")[1])

    @property
    def children(self):
        if self.role in VIEWS:
            return [self.child(number) for number in range(min(self.child_count, MOST_ROWS))]
        found = [Control(self.reader, path) for _, path in self._ask(ACCESSIBLE, "GetChildren")[0]]
        return [control for control in found if not control.path.endswith("/null")]

    def child(self, number):
        return Control(self.reader, self._ask(ACCESSIBLE, "GetChildAtIndex", GLib.Variant("(i)", (number,)))[0][1])

    @property
    def actions(self):
        if "Action" not in self.interfaces:
            return []
        return [action[0] for action in self._ask(ACTION, "GetActions")[0]]

    def act(self, action):
        """Without waiting for the answer, which comes only when a dialog that opens is closed again."""
        number = self.actions.index(action)
        self.reader.send(self.path, ACTION, "DoAction", GLib.Variant("(i)", (number,)))

    def press(self):
        self.act("Press")

    def focus(self):
        self._ask("org.a11y.atspi.Component", "GrabFocus")
        self.reader.until(lambda: self.has(State.FOCUSED), f"the focus on {self.name!r}")

    def has(self, *states):
        return set(states) <= self.states

    @property
    def text(self):
        return self._ask("org.a11y.atspi.Text", "GetText", GLib.Variant("(ii)", (0, -1)))[0]

    def write(self, text):
        self._ask("org.a11y.atspi.EditableText", "SetTextContents", GLib.Variant("(s)", (text,)))

    def walk(self):
        """Itself and all below it that can be perceived."""
        try:
            if State.SHOWING not in self.states:
                return
            children = self.children
        except Gone:
            return
        yield self
        for child in children:
            yield from child.walk()

    def said(self):
        return f"{self.role!r} {self.name!r} ({self.description!r})"


@dataclasses.dataclass
class Sight:
    """A control as it was when it was looked at."""
    control: Control
    parent: "Sight | None" = None
    role: int = 0
    states: set = frozenset()
    name: str = ""
    interfaces: set = frozenset()
    actions: list = dataclasses.field(default_factory=list)
    children: list = dataclasses.field(default_factory=list)

    def said(self):
        return f"{self.role!r} {self.name!r}"


def whole(sights):
    """Without rows of views, which have nothing below them and do what all rows do."""
    return [sight for sight in sights if sight.role not in ROWS]


class Reader:
    """To be there before the program, as a reader usually is."""

    def __init__(self):
        self._program = None
        self._bus_name = None
        self._events = []
        session = Gio.bus_get_sync(Gio.BusType.SESSION)
        address = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
                                    Gio.DBusCallFlags.NONE, -1, None).unpack()[0]
        enabled = GLib.Variant("(ssv)", ("org.a11y.Status", "ScreenReaderEnabled", GLib.Variant("b", True)))
        session.call_sync("org.a11y.Bus", "/org/a11y/bus", PROPERTIES, "Set", enabled, None,
                          Gio.DBusCallFlags.NONE, -1, None)
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self._bus = Gio.DBusConnection.new_for_address_sync(address, flags)
        for member in NOTED:
            self._bus.signal_subscribe(None, "org.a11y.atspi.Event.Object", member, None, None,
                                       Gio.DBusSignalFlags.NONE, self._note)
        for event in HEARD:
            self._call(REGISTRY, "/org/a11y/atspi/registry", REGISTRY, "RegisterEvent",
                       GLib.Variant("(sass)", (event, [], "")))
        self.root = Control(self, ROOT)
        self.keyboard = Keyboard()

    def attach(self, program):
        self._program = program
        self._bus_name = None
        self._events.clear()
        self.until(self._find_program, "the program among those on the bus")

    def _find_program(self):
        children = self._call(REGISTRY, ROOT, ACCESSIBLE, "GetChildren")[0]
        for name, _ in children:
            pid = self._call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                             "GetConnectionUnixProcessID", GLib.Variant("(s)", (name,)))[0]
            if pid == self._program.pid:
                self._bus_name = name
        return self._bus_name is not None

    def _note(self, _bus, sender, path, _interface, member, arguments):
        if self._bus_name in (None, sender):
            detail, value = arguments.unpack()[:2]
            self._events.append(Event(member, detail, value, Control(self, path)))

    def _call(self, name, path, interface, member, arguments=None):
        return self._bus.call_sync(name, path, interface, member, arguments, None, Gio.DBusCallFlags.NONE,
                                   PATIENCE * 1000, None).unpack()

    def ask(self, path, interface, member, arguments=None):
        try:
            return self._call(self._bus_name, path, interface, member, arguments)
        except GLib.Error as error:
            if not self._program.is_running():
                raise AssertionError(f"the program ended at {interface}.{member}") from error
            raise Gone(f"{path} {member}: {error.message}") from error

    def ask_all(self, questions):
        """The answers to (path, interface, member, arguments), None where a control has gone. All are under way at once:
        waiting for each in turn takes several times as long."""
        answers = [None] * len(questions)
        open_ones = set(range(len(questions)))

        def take(bus, result, number):
            open_ones.discard(number)
            with contextlib.suppress(GLib.Error):
                answers[number] = bus.call_finish(result).unpack()
        for number, (path, interface, member, arguments) in enumerate(questions):
            self._bus.call(self._bus_name, path, interface, member, arguments, None, Gio.DBusCallFlags.NONE,
                           PATIENCE * 1000, None, take, number)
        while open_ones:
            GLib.MainContext.default().iteration(True)
        return answers

    def hear(self):
        """All that the program has said until now: its answer comes after that."""
        self.root.name  # noqa: B018
        while GLib.MainContext.default().pending():
            GLib.MainContext.default().iteration(False)

    def survey(self, top):
        """All below `top` that can be perceived, and itself."""
        seen, level = [], [Sight(top)]
        while level:
            shown = self._look_at(level)
            level = self._look_below(shown)
            seen += shown
        return seen

    def _look_at(self, sights):
        """Those that are in sight. Of rows, which are the most, is asked what all of them have."""
        answers = self._ask_of(sights, (ACCESSIBLE, "GetState", None))
        for sight, (states,) in answers:
            sight.states = states_of(states[0])
        shown = [sight for sight, _ in answers if State.SHOWING in sight.states]
        answers = self._ask_of(shown, (ACCESSIBLE, "GetRole", None),
                               (PROPERTIES, "Get", GLib.Variant("(ss)", (ACCESSIBLE, "Name"))))
        for sight, (role, name) in answers:
            sight.role, sight.name = role_of(role[0]), name[0]
            if sight.parent:
                sight.parent.children.append(sight)
        there = [sight for sight, _ in answers]
        for sight, (interfaces,) in self._ask_of(whole(there), (ACCESSIBLE, "GetInterfaces", None)):
            sight.interfaces = short_names(interfaces[0])
        return there

    def _ask_of(self, sights, *kinds):
        """Those that are still there, each with the answers to all kinds of questions."""
        answers = self.ask_all([(sight.control.path, *kind) for sight in sights for kind in kinds])
        each = [(sight, answers[number * len(kinds):(number + 1) * len(kinds)]) for number, sight in enumerate(sights)]
        return [(sight, found) for sight, found in each if all(found)]

    def _look_below(self, sights):
        with_actions = [sight for sight in whole(sights) if "Action" in sight.interfaces]
        for sight, (actions,) in self._ask_of(with_actions, (ACTION, "GetActions", None)):
            sight.actions = [action[0] for action in actions[0]]
        asked = [(sight, question) for sight in whole(sights) for question in self._ways_down(sight)]
        below = []
        for (sight, _), answer in zip(asked, self.ask_all([question for _, question in asked]), strict=True):
            found = answer[0] if answer else []
            for _, path in found if isinstance(found, list) else [found]:
                if not path.endswith("/null"):
                    below.append(Sight(Control(self, path), sight))
        return below

    def _ways_down(self, sight):
        """The questions for what is below it."""
        path = sight.control.path
        if sight.role not in VIEWS:
            return [(path, ACCESSIBLE, "GetChildren", None)]
        with contextlib.suppress(Gone):
            rows = range(min(sight.control.child_count, MOST_ROWS))
            return [(path, ACCESSIBLE, "GetChildAtIndex", GLib.Variant("(i)", (row,))) for row in rows]
        return []

    def send(self, path, interface, member, arguments):
        self._bus.call(self._bus_name, path, interface, member, arguments, None, Gio.DBusCallFlags.NONE, -1, None, None)

    def until(self, condition, what, seconds=None):
        """What `condition` answers once that is true; asked again after each event, and from time to time."""
        context = GLib.MainContext.default()
        end = time.monotonic() + (seconds or PATIENCE)
        while True:
            with contextlib.suppress(Gone):
                answer = condition()
                if answer:
                    return answer
            if time.monotonic() > end or not self._program.is_running():
                raise AssertionError(f"did not come: {what}; in sight: {self._in_sight()}")
            self._pause(context)

    def _in_sight(self):
        with contextlib.suppress(Gone, AssertionError):
            return [window.said() for window in self.windows] if self._program.is_running() and self._bus_name else []
        return []

    def _pause(self, context):
        self.keyboard.give_to_topmost()
        timer = GLib.timeout_add(50, lambda: GLib.SOURCE_CONTINUE)
        context.iteration(True)
        while context.pending():
            context.iteration(False)
        GLib.source_remove(timer)

    def popup(self):
        """The open menu or list that stands in no window and is known by where the focus went; None without one."""
        control = self.focused()
        with contextlib.suppress(Gone):
            windows = self.root.children
            while control and not control.path.endswith(("/null", "/root")):
                if control.role == Role.POPUP_MENU or (control not in windows and control.index < 0):
                    return control if control.has(State.SHOWING) else None
                control = control.parent
        return None

    @property
    def comings(self):
        """How often something came into sight or went."""
        return sum(event.kind == "ChildrenChanged" or event.detail == "showing" for event in self._events)

    @property
    def windows(self):
        """The topmost last."""
        windows = [window for window in self.root.children if State.SHOWING in window.states]
        popup = self.popup()
        return windows + [popup] if popup and popup not in windows else windows

    def find(self, name, role=None, within=None):
        """The first control in sight of this name (and role), or whose name begins so with "..."; None without one."""
        is_it = name.__eq__ if not name.endswith("...") else lambda said: said.startswith(name[:-3])
        for top in [within] if within else reversed(self.windows):
            for control in top.walk():
                with contextlib.suppress(Gone):
                    if is_it(control.name) and role in (None, control.role):
                        return control
        return None

    def await_control(self, name, role=None, within=None):
        return self.until(lambda: self.find(name, role, within), f"{role!r} {name!r}")

    def focused(self):
        """Where the last event said that the focus went."""
        for event in reversed(self._events):
            if event.detail == "focused" and event.value:
                return event.control
        return None

    def forget(self):
        self._events.clear()

    def announced(self):
        """What came up as a notification since the last `forget()`: readers speak it at once."""
        texts = []
        for event in list(self._events):
            if event.kind == "StateChanged" and event.detail == "showing" and event.value:
                with contextlib.suppress(Gone):
                    if event.control.role == Role.NOTIFICATION:
                        texts.append(event.control.name)
        return texts

    def await_news(self, text):
        self.until(lambda: any(text in said for said in self.announced()), f"an announcement of {text!r}")

    def press(self, name, role=Role.BUTTON, within=None):
        control = self.await_control(name, role, within)
        self.until(lambda: control.has(State.ENABLED), f"{name!r} to be on")
        control.press()
        return control

    def keys(self, *combinations):
        for combination in combinations:
            self.keyboard.press(combination)


NO_WINDOW, POINTER_ROOT, VIEWABLE = 0, 1, 2


class WindowAttributes(ctypes.Structure):
    """As the display's library lays them out."""
    _fields_ = [(name, ctypes.c_int) for name in ("x", "y", "width", "height", "border_width", "depth")] + [
        ("visual", ctypes.c_void_p), ("root", ctypes.c_ulong)] + [
        (name, ctypes.c_int) for name in ("window_class", "bit_gravity", "win_gravity", "backing_store")] + [
        ("backing_planes", ctypes.c_ulong), ("backing_pixel", ctypes.c_ulong), ("save_under", ctypes.c_int),
        ("colormap", ctypes.c_ulong), ("map_installed", ctypes.c_int), ("map_state", ctypes.c_int)] + [
        (name, ctypes.c_long) for name in ("all_event_masks", "your_event_mask", "do_not_propagate_mask")] + [
        ("override_redirect", ctypes.c_int), ("screen", ctypes.c_void_p)]


class Keyboard:
    """That of the display."""

    def __init__(self):
        self._x11 = ctypes.CDLL(ctypes.util.find_library("X11"))
        self._test = ctypes.CDLL(ctypes.util.find_library("Xtst"))
        self._x11.XOpenDisplay.restype = ctypes.c_void_p
        self._x11.XStringToKeysym.restype = ctypes.c_ulong
        self._x11.XDefaultRootWindow.restype = ctypes.c_ulong
        self._display = ctypes.c_void_p(self._x11.XOpenDisplay(None))
        self._on_error = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(lambda *_: 0)
        self._x11.XSetErrorHandler(self._on_error)  # a window may go while it is asked about

    def press(self, combination):
        """As in "ctrl+shift+n": keysym names, joined."""
        names = {"ctrl": "Control_L", "shift": "Shift_L", "alt": "Alt_L"}
        codes = [self._code(names.get(name, name)) for name in combination.split("+")]
        for code, down in [(code, 1) for code in codes] + [(code, 0) for code in reversed(codes)]:
            self._test.XTestFakeKeyEvent(self._display, code, down, ctypes.c_ulong(0))
        self._x11.XSync(self._display, 0)

    def give_to_topmost(self):
        """As a window manager does, of which there is none here, when the window that had the keys has gone."""
        window, revert = ctypes.c_ulong(), ctypes.c_int()
        self._x11.XGetInputFocus(self._display, ctypes.byref(window), ctypes.byref(revert))
        if window.value in (NO_WINDOW, POINTER_ROOT, self._x11.XDefaultRootWindow(self._display)):
            for candidate in reversed(self._windows()):
                if self._takes_keys(candidate):
                    self._x11.XSetInputFocus(self._display, candidate, POINTER_ROOT, ctypes.c_ulong(0))
                    self._x11.XSync(self._display, 0)
                    return

    def _windows(self):
        root, parent, count = ctypes.c_ulong(), ctypes.c_ulong(), ctypes.c_uint()
        children = ctypes.POINTER(ctypes.c_ulong)()
        self._x11.XQueryTree(self._display, ctypes.c_ulong(self._x11.XDefaultRootWindow(self._display)),
                             ctypes.byref(root), ctypes.byref(parent), ctypes.byref(children), ctypes.byref(count))
        found = [ctypes.c_ulong(children[number]) for number in range(count.value)]
        self._x11.XFree(children)
        return found

    def _takes_keys(self, window):
        attributes = WindowAttributes()
        there = self._x11.XGetWindowAttributes(self._display, window, ctypes.byref(attributes))
        return there and attributes.map_state == VIEWABLE and not attributes.override_redirect

    def _code(self, name):
        code = self._x11.XKeysymToKeycode(self._display, ctypes.c_ulong(self._x11.XStringToKeysym(name.encode())))
        if code == 0:
            raise ValueError(f"no key {name}")
        return code
