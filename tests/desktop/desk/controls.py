"""The controls of other programs' windows, found and used through accessibility (AT-SPI over D-Bus).

The calls are made without libatspi: without its cache, 2.46 waits for itself for ever when an event comes
during a call, and with its cache it needs an event loop to stay true.
"""

import functools

import dbus

from desk.waiting import LIMIT, wait_until

_ATSPI = "org.a11y.atspi."
_PROPERTIES = "org.freedesktop.DBus.Properties"
_CALL_LIMIT = 10.0  # seconds
_LABELLED_BY = 2
_NOBODY = "/org/a11y/atspi/null"

_STATES = {4: "checked", 8: "enabled", 12: "focused", 25: "showing", 30: "visible"}  # of AtspiStateType


@functools.cache
def _bus():
    launcher = dbus.SessionBus().get_object("org.a11y.Bus", "/org/a11y/bus", introspect=False)
    bus = dbus.bus.BusConnection(launcher.GetAddress(dbus_interface="org.a11y.Bus"))
    registry = bus.get_object(_ATSPI + "Registry", "/org/a11y/atspi/registry", introspect=False)
    # Chromium keeps its states current only while somebody listens.
    registry.RegisterEvent(
        "window:activate", dbus.Array([], signature="s"), "", dbus_interface=_ATSPI + "Registry"
    )
    return bus


class Control:
    """One control; every question is asked afresh.

    Toolkits differ in what they name: Qt names a combo box after its current entry, so find it by its role
    or by its description.
    """

    def __init__(self, owner, path):
        self.owner = str(owner)
        self._object = _bus().get_object(owner, path, introspect=False)

    def __repr__(self):
        try:
            return f"<{self.role} {self.name!r}>"
        except dbus.DBusException:
            return "<a control that is gone>"

    def _call(self, interface, method, *arguments):
        call = getattr(self._object, method)
        return call(*arguments, dbus_interface=_ATSPI + interface, timeout=_CALL_LIMIT)

    def _read(self, interface, name):
        return self._object.Get(_ATSPI + interface, name, dbus_interface=_PROPERTIES, timeout=_CALL_LIMIT)

    @property
    def name(self):
        return str(self._read("Accessible", "Name"))

    @property
    def description(self):
        return str(self._read("Accessible", "Description"))

    @property
    def role(self):
        """For example "push button", "text", "password text", "combo box", "label", "radio button"."""
        return str(self._call("Accessible", "GetRoleName"))

    @property
    def labels(self):
        """Names of the labels that belong to it."""
        relations = self._call("Accessible", "GetRelationSet")
        return [
            Control(*target).name for kind, targets in relations if kind == _LABELLED_BY for target in targets
        ]

    @property
    def text(self):
        """The text in it; of a control without text, its name. A password reads as empty or as dots."""
        if _ATSPI + "Text" not in self._call("Accessible", "GetInterfaces"):
            return self.name
        return str(self._call("Text", "GetText", dbus.Int32(0), dbus.Int32(-1)))

    @property
    def states(self):
        """Of those in _STATES, for example {"enabled", "showing", "focused"}."""
        words = self._call("Accessible", "GetState")
        bits = sum(int(word) << 32 * index for index, word in enumerate(words))
        return {name for number, name in _STATES.items() if bits >> number & 1}

    @property
    def enabled(self):
        return "enabled" in self.states

    @property
    def showing(self):
        return {"showing", "visible"} <= self.states

    @property
    def checked(self):
        return "checked" in self.states

    @property
    def focused(self):
        return "focused" in self.states

    @property
    def children(self):
        return [Control(*child) for child in self._call("Accessible", "GetChildren") if child[1] != _NOBODY]

    def below(self):
        """Everything in it, in the order of the screen; what vanishes meanwhile is left out."""
        try:
            children = self.children
        except dbus.DBusException:
            return
        for child in children:
            yield child
            yield from child.below()

    def is_called(self, name, role):
        try:
            names = (None, self.name, self.description)
            fits = role in (None, self.role) and (name in names or name in self.labels)
            return fits and self.showing
        except dbus.DBusException:
            return False

    def all(self, name=None, role=None):
        """What is on the screen with this name (its own or its label's) and role."""
        return [c for c in self.below() if c.is_called(name, role)]

    def find(self, name=None, role=None, timeout=LIMIT):
        """The first of them, as soon as it is on the screen."""
        wanted = f"a {role or 'control'} {name or ''} in {self}"
        return wait_until(lambda: self.all(name, role), timeout, wanted)[0]

    def wait_for_text(self, text, timeout=LIMIT):
        wait_until(lambda: self.text == text, timeout, f"the text {text!r} in {self}")

    def click(self):
        """Waits until it is enabled, then presses it."""
        wait_until(lambda: self.enabled, what=f"{self} being enabled")
        self.press()

    def press(self):
        """Does its first action: clicks, toggles, opens."""
        if not self._call("Action", "DoAction", dbus.Int32(0)):
            raise AssertionError(f"{self} cannot be clicked")

    def focus(self):
        self._call("Component", "GrabFocus")
        wait_until(lambda: self.focused, what=f"{self} having the keyboard")

    def write(self, text):
        """Replaces its text; keystrokes are screen.type_text's."""
        if not self._call("EditableText", "SetTextContents", text):
            raise AssertionError(f"{self} cannot be written to")


def at_once(program):
    """All windows of a program that was started here; None while accessibility does not know it."""
    daemon = _bus().get_object("org.freedesktop.DBus", "/org/freedesktop/DBus", introspect=False)
    for one in Control(_ATSPI + "Registry", "/org/a11y/atspi/accessible/root").children:
        if daemon.GetConnectionUnixProcessID(one.owner, dbus_interface="org.freedesktop.DBus") == program.pid:
            return one
    return None


def of(program, timeout=LIMIT):
    """The same, as soon as accessibility knows it."""
    return wait_until(
        lambda: at_once(program), timeout, f"{program.arguments[0]} among the accessible programs"
    )
