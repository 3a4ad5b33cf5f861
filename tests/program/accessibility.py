"""The accessibility tree of a running program, as a screen reader gets it: over the accessibility bus,
nothing cached."""

from gi.repository import Gio, GLib

from waiting import NotYet

_BASE = "org.a11y.atspi."
_ACCESSIBLE = _BASE + "Accessible"
_ROOT = "/org/a11y/atspi/accessible/root"
_CALL_TIMEOUT = 10000  # milliseconds

# Bit numbers in the state set.
STATE_ACTIVE = 1
STATE_CHECKED = 4
STATE_ENABLED = 8
STATE_FOCUSED = 12
STATE_SELECTED = 23
STATE_SENSITIVE = 24
STATE_SHOWING = 25
STATE_VISIBLE = 30

_SCREEN_COORDINATES = 0


class Gone(NotYet):
    """The object, or its program, is not there any more. Another look may find a new one."""


class AccessibilityBus:
    """The connection to the accessibility bus of a session."""

    def __init__(self, session_bus_address):
        flags = (Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
                 | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        session = Gio.DBusConnection.new_for_address_sync(session_bus_address, flags, None, None)
        self._connection = session
        address = self.call("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress")[0]
        self._session = session
        self._connection = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
        # Toolkits offer their tree when the registry tells them that somebody reads.
        self._enable()

    def _enable(self):
        status = GLib.Variant("(ssv)", ("org.a11y.Status", "IsEnabled", GLib.Variant("b", True)))
        self._session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties",
                                "Set", status, None, Gio.DBusCallFlags.NONE, _CALL_TIMEOUT, None)

    def call(self, name, path, interface, method, signature=None, *arguments):
        parameters = GLib.Variant(signature, arguments) if signature else None
        try:
            result = self._connection.call_sync(name, path, interface, method, parameters, None,
                                                Gio.DBusCallFlags.NONE, _CALL_TIMEOUT, None)
        except GLib.Error as error:
            raise Gone(f"{method} of {name}{path}: {error.message}") from error
        return result.unpack()

    def send(self, name, path, interface, method, signature, *arguments):
        """A call whose result nobody waits for."""
        self._connection.call(name, path, interface, method, GLib.Variant(signature, arguments),
                              None, Gio.DBusCallFlags.NONE, _CALL_TIMEOUT, None, None)

    def application(self, process):
        """The root of the program with this process identifier, or None."""
        root = Node(self, "org.a11y.atspi.Registry", _ROOT)
        for child in root.children():
            try:
                owner = self.call("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                  "org.freedesktop.DBus", "GetConnectionUnixProcessID", "(s)",
                                  child.name_on_bus)[0]
            except Gone:
                continue
            if owner == process:
                return child
        return None


class Node:
    """One object of the tree."""

    def __init__(self, bus, name_on_bus, path):
        self._bus = bus
        self.name_on_bus = name_on_bus
        self.path = path

    def __eq__(self, other):
        return (self.name_on_bus, self.path) == (other.name_on_bus, other.path)

    def __hash__(self):
        return hash((self.name_on_bus, self.path))

    def __repr__(self):
        return f"<{self.role()} {self.name()!r}>"

    def _call(self, interface, method, signature=None, *arguments):
        return self._bus.call(self.name_on_bus, self.path, interface, method, signature, *arguments)

    def _property(self, interface, name):
        return self._call("org.freedesktop.DBus.Properties", "Get", "(ss)", _BASE + interface,
                          name)[0]

    def name(self):
        return self._property("Accessible", "Name")

    def description(self):
        return self._property("Accessible", "Description")

    def role(self):
        return self._call(_ACCESSIBLE, "GetRoleName")[0]

    def children(self):
        listed = self._call(_ACCESSIBLE, "GetChildren")[0]
        return [Node(self._bus, name, path) for name, path in listed
                if not path.endswith("/null")]

    def states(self):
        low, high = self._call(_ACCESSIBLE, "GetState")[0]
        bits = low | high << 32
        return {bit for bit in range(64) if bits >> bit & 1}

    def attributes(self):
        return self._call(_ACCESSIBLE, "GetAttributes")[0]

    def interfaces(self):
        return {name.removeprefix(_BASE) for name in self._call(_ACCESSIBLE, "GetInterfaces")[0]}

    def extents(self):
        """Left, top, width and height in pixels of the screen."""
        return self._call(_BASE + "Component", "GetExtents", "(u)", _SCREEN_COORDINATES)[0]

    def text(self):
        """What is written in a text or document."""
        return self._call(_BASE + "Text", "GetText", "(ii)", 0, -1)[0]

    def action_names(self):
        return [action[0] for action in self._call(_BASE + "Action", "GetActions")[0]]

    def do_action(self, name):
        """Asks for the action and does not wait for its end: a dialog may come before that."""
        index = self.action_names().index(name)
        self._bus.send(self.name_on_bus, self.path, _BASE + "Action", "DoAction", "(i)", index)

    def is_enabled(self):
        return STATE_ENABLED in self.states()

    def is_checked(self):
        return STATE_CHECKED in self.states()

    def is_showing(self):
        return STATE_SHOWING in self.states()

    def walk(self):
        """This object and everything below it, parents first."""
        yield self
        try:
            children = self.children()
        except Gone:
            return
        for child in children:
            yield from child.walk()

    def find_all(self, role, name=None):
        return [node for node in self.walk()
                if node.role() == role and (name is None or node.name() == name)]

    def find(self, role, name=None):
        """The first such object at or below this one, or None."""
        for node in self.walk():
            if node.role() == role and (name is None or node.name() == name):
                return node
        return None
