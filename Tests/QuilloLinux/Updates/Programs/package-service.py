#!/usr/bin/python3
"""package-service.py MODE — a message bus of its own with a package service on it that behaves as told.

Writes the bus's address, then one line for each call that the service gets; ends when its input ends. Modes:
  update    0.2.0 is there for a package that owns /usr/bin/quillo-app
  current   the package is the newest
  foreign   no package owns the program
  refused   reading the lists fails, with a reason
  silent    reading the lists never ends
  deaf      no call is answered
  vanishing the service leaves the bus while it reads the lists
  absent    there is no service
"""
import subprocess
import sys

from gi.repository import Gio, GLib

INSTALLED = "quillo;0.1.0;amd64;installed"
SUCCESS, FAILED, CANCELLED = 1, 2, 3
INTERFACES = """<node>
<interface name="org.freedesktop.PackageKit"><method name="CreateTransaction"><arg type="o" direction="out"/></method>
</interface>
<interface name="org.freedesktop.PackageKit.Transaction">
<method name="SetHints"><arg type="as" direction="in"/></method>
<method name="SearchFiles"><arg type="t" direction="in"/><arg type="as" direction="in"/></method>
<method name="GetUpdates"><arg type="t" direction="in"/></method>
<method name="RefreshCache"><arg type="b" direction="in"/></method>
<method name="UpdatePackages"><arg type="t" direction="in"/><arg type="as" direction="in"/></method>
<method name="Cancel"/>
<signal name="Package"><arg type="u"/><arg type="s"/><arg type="s"/></signal>
<signal name="ErrorCode"><arg type="u"/><arg type="s"/></signal>
<signal name="Finished"><arg type="u"/><arg type="u"/></signal>
</interface></node>"""


def say(line):
    print(line, flush=True)


class Service:
    def __init__(self, bus, mode):
        self.bus = bus
        self.mode = mode
        self.count = 0
        self.manager, self.transaction = Gio.DBusNodeInfo.new_for_xml(INTERFACES).interfaces
        bus.register_object("/org/freedesktop/PackageKit", self.manager, self.create, None, None)
        self.owner = Gio.bus_own_name_on_connection(bus, "org.freedesktop.PackageKit", 0, None, None)

    def create(self, _bus, _sender, _path, _interface, _method, _arguments, invocation):
        if self.mode == "deaf":
            return
        self.count += 1
        path = f"/{self.count}_transaction"
        self.bus.register_object(path, self.transaction, self.act, None, None)
        invocation.return_value(GLib.Variant("(o)", (path,)))

    def tell(self, path, signal, kinds, *values):
        self.bus.emit_signal(None, path, "org.freedesktop.PackageKit.Transaction", signal,
                             GLib.Variant(f"({kinds})", values))

    def finish(self, path, end=SUCCESS):
        self.tell(path, "Finished", "uu", end, 1)

    def act(self, _bus, _sender, path, _interface, method, arguments, invocation):
        say(f"{method}{arguments.print_(False)}")
        if self.mode == "vanishing" and method == "RefreshCache":
            Gio.bus_unown_name(self.owner)
        invocation.return_value(None)
        if method == "SearchFiles":
            if self.mode != "foreign" and "/usr/bin/quillo-app" in arguments.unpack()[1]:
                self.tell(path, "Package", "uss", 1, INSTALLED, "turn windows into text")
            self.finish(path)
        elif method == "RefreshCache" and self.mode == "refused":
            self.tell(path, "ErrorCode", "us", 2, "there is no network")
            self.finish(path, FAILED)
        elif method == "RefreshCache" and self.mode not in ("silent", "vanishing"):
            self.finish(path)
        elif method == "GetUpdates":
            self.tell(path, "Package", "uss", 5, "other;9.9;amd64;here", "something else")
            if self.mode == "update":
                self.tell(path, "Package", "uss", 5, "quillo;0.2.0;i386;here", "of another machine")
                self.tell(path, "Package", "uss", 5, "quillo;0.2.0;amd64;here", "turn windows into text")
                self.tell(path, "Package", "uss", 5, "damaged", "no package")
            self.finish(path)
        elif method == "UpdatePackages":
            self.finish(path)
        elif method == "Cancel":
            self.finish(path, CANCELLED)


def main():
    daemon = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"], stdout=subprocess.PIPE,
                              text=True)
    try:
        address = daemon.stdout.readline().strip()
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
        loop = GLib.MainLoop()
        if sys.argv[1] == "absent":
            say(address)
        else:
            service = Service(bus, sys.argv[1])
            Gio.bus_watch_name_on_connection(bus, "org.freedesktop.PackageKit", 0,
                                             lambda *_: say(address), None)
        GLib.io_add_watch(sys.stdin.fileno(), 0, GLib.IOCondition.HUP | GLib.IOCondition.IN, lambda *_: loop.quit())
        loop.run()
    finally:
        daemon.terminate()
        daemon.wait()


main()
