# A screen reader's view of a program, spoken over AT-SPI's D-Bus protocol
# with Gio: a private session bus with the accessibility bus and registry,
# and a client that walks a program's accessible tree, reads tables and
# presses actions.
import os
import signal
import subprocess
import tempfile
import time

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

ACCESSIBLE = "org.a11y.atspi.Accessible"
TABLE = "org.a11y.atspi.Table"
ACTION = "org.a11y.atspi.Action"
COMPONENT = "org.a11y.atspi.Component"
PROPERTIES = "org.freedesktop.DBus.Properties"
NULL_PATH = "/org/a11y/atspi/null"


class Buses:
    """A session bus and an accessibility bus of their own, stopped by process id."""

    def __init__(self, folder):
        self.folder = folder
        self.pids = []
        conf = os.path.join(folder, "session.conf")
        with open(conf, "w") as f:
            f.write(
                '<busconfig><type>session</type><listen>unix:path=%s/session.sock</listen>'
                "<auth>EXTERNAL</auth><policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
                '<allow eavesdrop="true"/><allow own="*"/></policy>'
                "</busconfig>" % folder)
        self.runtime = os.path.join(folder, "runtime")
        os.makedirs(self.runtime, mode=0o700, exist_ok=True)
        daemon = subprocess.Popen(["dbus-daemon", "--config-file=" + conf, "--nofork", "--print-address=1"],
                                  stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, start_new_session=True)
        self.pids.append(daemon.pid)
        self.session_address = daemon.stdout.readline().decode().strip()
        self.env = dict(os.environ, DBUS_SESSION_BUS_ADDRESS=self.session_address, XDG_RUNTIME_DIR=self.runtime)
        launcher = subprocess.Popen(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately", "--a11y=1"],
                                    env=self.env, start_new_session=True, stdout=subprocess.DEVNULL,
                                    stderr=subprocess.DEVNULL)
        self.pids.append(launcher.pid)
        self.session = Gio.DBusConnection.new_for_address_sync(
            self.session_address,
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        address = None
        for _ in range(100):
            try:
                address = self.session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None,
                                                 GLib.VariantType("(s)"), 0, 1000, None).unpack()[0]
                break
            except GLib.Error:
                time.sleep(0.05)
        if not address:
            raise RuntimeError("the accessibility bus did not start")
        self.a11y = Gio.DBusConnection.new_for_address_sync(
            address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION,
            None, None)

    def set_screen_reader(self, on):
        """The desktop's switch, as a screen reader's start sets it."""
        self.session.call_sync("org.a11y.Bus", "/org/a11y/bus", PROPERTIES, "Set",
                               GLib.Variant("(ssv)", ("org.a11y.Status", "ScreenReaderEnabled", GLib.Variant("b", on))),
                               None, 0, 2000, None)

    def listen(self):
        """Asks for the events a screen reader asks for, so the program sends them; counts them."""
        self.events = {}

        def count(_connection, _sender, _path, interface, member, _params):
            key = interface.rsplit(".", 1)[-1] + ":" + member
            self.events[key] = self.events.get(key, 0) + 1

        self.a11y.signal_subscribe(None, "org.a11y.atspi.Event.Object", None, None, None, 0, count)
        self.a11y.signal_subscribe(None, "org.a11y.atspi.Event.Focus", None, None, None, 0, count)
        for event in ("object:children-changed", "object:state-changed", "object:property-change",
                      "focus:", "window:", "object:"):
            for signature, args in (("(sass)", (event, [], "")), ("(sas)", (event, [])), ("(s)", (event,))):
                try:
                    self.a11y.call_sync("org.a11y.atspi.Registry", "/org/a11y/atspi/registry",
                                        "org.a11y.atspi.Registry", "RegisterEvent", GLib.Variant(signature, args),
                                        None, 0, 2000, None)
                    break
                except GLib.Error:
                    continue

    def pump(self):
        context = GLib.MainContext.default()
        while context.pending():
            context.iteration(False)

    def stop(self):
        for pid in reversed(self.pids):
            try:
                os.killpg(pid, signal.SIGTERM)
            except ProcessLookupError:
                pass


class Gone(Exception):
    """The object asked about no longer exists: a reader moves on."""


class Reader:
    """Reads one application's tree the way a screen reader does."""

    def __init__(self, buses, app_name, timeout=30):
        self.bus = buses.a11y
        self.calls = 0
        deadline = time.time() + timeout
        self.app = None
        while self.app is None and time.time() < deadline:
            for ref in self.children(("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")):
                try:
                    if self.name(ref) == app_name:
                        self.app = ref
                except Gone:
                    pass
            if self.app is None:
                time.sleep(0.1)
        if self.app is None:
            raise RuntimeError("no application %r on the accessibility bus" % app_name)

    def call(self, ref, interface, method, args=None, reply=None):
        self.calls += 1
        try:
            result = self.bus.call_sync(ref[0], ref[1], interface, method, args,
                                        GLib.VariantType(reply) if reply else None, 0, 10000, None)
        except GLib.Error as error:
            if "ServiceUnknown" in error.message or "NoReply" in error.message or "Timeout" in error.message \
                    or "timed out" in error.message or "was not provided" in error.message:
                raise
            raise Gone(error.message)
        return result.unpack() if result is not None else None

    def prop(self, ref, interface, name):
        return self.call(ref, PROPERTIES, "Get", GLib.Variant("(ss)", (interface, name)), "(v)")[0]

    def name(self, ref):
        return self.prop(ref, ACCESSIBLE, "Name")

    def role(self, ref):
        return self.call(ref, ACCESSIBLE, "GetRoleName", None, "(s)")[0]

    def children(self, ref):
        return [tuple(child) for child in self.call(ref, ACCESSIBLE, "GetChildren", None, "(a(so))")[0]
                if child[1] != NULL_PATH]

    def interfaces(self, ref):
        return self.call(ref, ACCESSIBLE, "GetInterfaces", None, "(as)")[0]

    def states(self, ref):
        words = self.call(ref, ACCESSIBLE, "GetState", None, "(au)")[0]
        return [(words[i // 32] >> (i % 32)) & 1 for i in range(64)]

    def showing(self, ref):
        states = self.states(ref)
        return bool(states[25] and states[24])  # showing and sensitive

    def table_size(self, ref):
        return self.prop(ref, TABLE, "NRows"), self.prop(ref, TABLE, "NColumns")

    def cell(self, table, row, column):
        ref = self.call(table, TABLE, "GetAccessibleAt", GLib.Variant("(ii)", (row, column)), "((so))")[0]
        if ref[1] == NULL_PATH:
            raise Gone("no cell")
        return tuple(ref)

    def press(self, ref):
        return self.call(ref, ACTION, "DoAction", GLib.Variant("(i)", (0,)), "(b)")[0]

    def walk(self, ref=None, found=None):
        """Every object under ref, reading each as a reader would; tables also
        through their row and column calls. Returns (tables, objects read)."""
        ref = ref or self.app
        found = found if found is not None else {"tables": [], "objects": 0, "names": {}}
        try:
            found["objects"] += 1
            name = self.name(ref)
            self.call(ref, ACCESSIBLE, "GetRole", None, "(u)")
            self.call(ref, ACCESSIBLE, "GetState", None, "(au)")
            self.call(ref, ACCESSIBLE, "GetIndexInParent", None, "(i)")
            self.prop(ref, ACCESSIBLE, "Parent")
            interfaces = self.interfaces(ref)
            if COMPONENT in interfaces:
                self.call(ref, COMPONENT, "GetExtents", GLib.Variant("(u)", (0,)), "((iiii))")
            if name:
                found["names"][ref[1]] = name
            if TABLE in interfaces:
                found["tables"].append(ref)
                rows, columns = self.table_size(ref)
                # What a reader asks of a table, at its edges and beyond them.
                for row, column in ((0, 0), (rows - 1, columns - 1), (rows, columns), (-1, 0)):
                    self.call(ref, TABLE, "GetRowColumnExtentsAtIndex", GLib.Variant("(i)", (row * columns + column,)))
                    self.call(ref, TABLE, "GetColumnExtentAt", GLib.Variant("(ii)", (row, column)))
                    self.call(ref, TABLE, "GetRowExtentAt", GLib.Variant("(ii)", (row, column)))
                    self.call(ref, TABLE, "IsSelected", GLib.Variant("(ii)", (row, column)))
                    self.call(ref, TABLE, "GetRowHeader", GLib.Variant("(i)", (row,)))
                    self.call(ref, TABLE, "GetColumnDescription", GLib.Variant("(i)", (column,)))
            for child in self.children(ref):
                self.walk(child, found)
        except Gone:
            pass
        return found

    def find(self, predicate, ref=None):
        """The first object under ref (depth first) for which predicate(ref) holds."""
        ref = ref or self.app
        try:
            if predicate(ref):
                return ref
            for child in self.children(ref):
                hit = self.find(predicate, child)
                if hit:
                    return hit
        except Gone:
            pass
        return None

    def named(self, name, role=None):
        """The first object of that name (and role) that is shown and can be used."""
        return self.find(lambda ref: self.name(ref) == name and (role is None or self.role(ref) == role)
                         and self.showing(ref))


def private_folder():
    return tempfile.mkdtemp(prefix="quillion-atspi-")
