# A screen reader's view of a program, spoken over AT-SPI's D-Bus protocol
# with Gio: a private session bus with the accessibility bus and registry
# (stopped by process id), and a client that walks a program's tree, reads
# tables and presses actions; and the program's window driven with xdotool.
import os
import signal
import subprocess
import tempfile
import time

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

ACCESSIBLE, TABLE, ACTION = "org.a11y.atspi.Accessible", "org.a11y.atspi.Table", "org.a11y.atspi.Action"
NULL_PATH = "/org/a11y/atspi/null"
FOCUSED, SENSITIVE, SHOWING = 12, 24, 25  # AT-SPI state bits
FLAGS = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION


class Buses:
    def __init__(self):
        self.folder = tempfile.mkdtemp(prefix="quillion-atspi-")
        conf = os.path.join(self.folder, "session.conf")
        with open(conf, "w") as f:
            f.write('<busconfig><type>session</type><listen>unix:path=%s/bus</listen><auth>EXTERNAL</auth>'
                    '<policy context="default"><allow send_destination="*" eavesdrop="true"/>'
                    '<allow eavesdrop="true"/><allow own="*"/></policy></busconfig>' % self.folder)
        runtime = os.path.join(self.folder, "runtime")
        os.mkdir(runtime, 0o700)
        daemon = subprocess.Popen(["dbus-daemon", "--config-file=" + conf, "--nofork", "--print-address=1"],
                                  stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, start_new_session=True)
        address = daemon.stdout.readline().decode().strip()
        self.env = dict(os.environ, DBUS_SESSION_BUS_ADDRESS=address, XDG_RUNTIME_DIR=runtime)
        launcher = subprocess.Popen(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately", "--a11y=1"],
                                    env=self.env, start_new_session=True, stdout=subprocess.DEVNULL,
                                    stderr=subprocess.DEVNULL)
        self.pids = [daemon.pid, launcher.pid]
        self.session = Gio.DBusConnection.new_for_address_sync(address, FLAGS, None, None)
        for _ in range(100):
            try:
                a11y = self.session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None,
                                              GLib.VariantType("(s)"), 0, 1000, None).unpack()[0]
                self.a11y = Gio.DBusConnection.new_for_address_sync(a11y, FLAGS, None, None)
                return
            except GLib.Error:
                time.sleep(0.05)
        raise RuntimeError("the accessibility bus did not start")

    def set_screen_reader(self, on):
        """The desktop's switch, as a screen reader's start sets it."""
        self.session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set",
                               GLib.Variant("(ssv)", ("org.a11y.Status", "ScreenReaderEnabled", GLib.Variant("b", on))),
                               None, 0, 2000, None)

    def listen(self):
        """Asks for the events a screen reader asks for, so that the program sends them, and counts them."""
        self.events = 0

        def count(*_):
            self.events += 1

        self.a11y.signal_subscribe(None, None, None, None, None, 0, count)
        for event in ("object:", "focus:", "window:"):
            self.a11y.call_sync("org.a11y.atspi.Registry", "/org/a11y/atspi/registry", "org.a11y.atspi.Registry",
                                "RegisterEvent", GLib.Variant("(sass)", (event, [], "")), None, 0, 2000, None)

    def pump(self):
        while GLib.MainContext.default().pending():
            GLib.MainContext.default().iteration(False)

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

    def __init__(self, buses, app_name):
        self.bus = buses.a11y
        root = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
        for _ in range(300):
            self.app = next((app for app in self.children(root) if self.name(app) == app_name), None)
            if self.app:
                return
            time.sleep(0.1)
        raise RuntimeError("no application %r on the accessibility bus" % app_name)

    def call(self, ref, interface, method, args=None, reply=None):
        try:
            result = self.bus.call_sync(ref[0], ref[1], interface, method, args,
                                        GLib.VariantType(reply) if reply else None, 0, 10000, None)
        except GLib.Error as error:
            # An object gone or a call refused is a reader's everyday; a program that
            # does not answer, or has gone, is not.
            if "UnknownObject" in error.message or "UnknownInterface" in error.message \
                    or "UnknownMethod" in error.message:
                raise Gone(error.message)
            raise
        return result.unpack() if result is not None else None

    def name(self, ref, what="Name"):
        return self.call(ref, "org.freedesktop.DBus.Properties", "Get", GLib.Variant("(ss)", (ACCESSIBLE, what)),
                         "(v)")[0]

    def role(self, ref):
        return self.call(ref, ACCESSIBLE, "GetRoleName", None, "(s)")[0]

    def children(self, ref):
        return [tuple(c) for c in self.call(ref, ACCESSIBLE, "GetChildren", None, "(a(so))")[0] if c[1] != NULL_PATH]

    def state(self, ref, bit):
        return bool((self.call(ref, ACCESSIBLE, "GetState", None, "(au)")[0][bit // 32] >> (bit % 32)) & 1)

    def is_table(self, ref):
        return TABLE in self.call(ref, ACCESSIBLE, "GetInterfaces", None, "(as)")[0]

    def table_size(self, ref):
        get = "org.freedesktop.DBus.Properties", "Get"
        return tuple(self.call(ref, *get, GLib.Variant("(ss)", (TABLE, p)), "(v)")[0] for p in ("NRows", "NColumns"))

    def cell(self, table, row, column):
        ref = self.call(table, TABLE, "GetAccessibleAt", GLib.Variant("(ii)", (row, column)), "((so))")[0]
        if ref[1] == NULL_PATH:
            raise Gone("no cell")
        return tuple(ref)

    def extents(self, ref):
        """Where the object is on the screen: x, y, width and height."""
        return self.call(ref, "org.a11y.atspi.Component", "GetExtents", GLib.Variant("(u)", (0,)), "((iiii))")[0]

    def press(self, ref):
        return self.call(ref, ACTION, "DoAction", GLib.Variant("(i)", (0,)), "(b)")[0]

    def walk(self, ref=None):
        """Reads every object under ref as a reader would, tables also through
        their row and column calls, at their edges and beyond; returns how many."""
        ref = ref or self.app
        try:
            self.name(ref)
            for method, reply in (("GetRole", "(u)"), ("GetState", "(au)"), ("GetIndexInParent", "(i)"),
                                  ("GetDescription", "(v)")):
                self.call(ref, ACCESSIBLE, method, None, reply)
            if self.is_table(ref):
                rows, columns = self.table_size(ref)
                for row, column in ((0, 0), (rows - 1, columns - 1), (rows, columns), (-1, 0)):
                    self.call(ref, TABLE, "GetRowColumnExtentsAtIndex", GLib.Variant("(i)", (row * columns + column,)))
                    for method in ("GetColumnExtentAt", "GetRowExtentAt", "IsSelected"):
                        self.call(ref, TABLE, method, GLib.Variant("(ii)", (row, column)))
                    self.call(ref, TABLE, "GetRowHeader", GLib.Variant("(i)", (row,)))
            return 1 + sum(self.walk(child) for child in self.children(ref))
        except Gone:
            return 1

    def find(self, predicate, ref=None):
        """The first object under ref, depth first, for which predicate holds."""
        ref = ref or self.app
        try:
            if predicate(ref):
                return ref
            return next((hit for hit in (self.find(predicate, c) for c in self.children(ref)) if hit), None)
        except Gone:
            return None

    def named(self, name, role=None):
        """The first object of that name (and role) that is shown and can be used."""
        return self.find(lambda ref: self.name(ref) == name and (role is None or self.role(ref) == role)
                         and self.state(ref, SHOWING) and self.state(ref, SENSITIVE))


class Window:
    """A program's window on an X display, driven as a person drives it."""

    def __init__(self, display, pid):
        self.display = display
        self.id = ""
        for _ in range(100):
            self.id = self.xdotool("search", "--onlyvisible", "--pid", str(pid), "--name", "^Quillion$").split("\n")[0]
            if self.id:
                return
            time.sleep(0.1)

    def xdotool(self, *args):
        return subprocess.run(["xdotool"] + list(args), env=dict(os.environ, DISPLAY=self.display),
                              capture_output=True, text=True).stdout.strip()

    def click(self, x, y):
        """A click at a point of the page, below the 19-pixel menu bar."""
        self.xdotool("mousemove", "--window", self.id, str(x), str(y + 19), "click", "1")

    def type_into(self, x, y, text):
        """Replaces a text box's text by typing."""
        self.click(x, y)
        self.xdotool("key", "ctrl+a", "BackSpace")
        self.xdotool("type", "--delay", "20", text)
