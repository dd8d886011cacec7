#!/usr/bin/python3
"""A tray host on the session's bus, and what a user does with the menu of the one icon in it.

  tray-host.py serve           stays; tells on standard output when an icon has come
  tray-host.py menu            opens the menu and prints it, one item a line: "[-] " or "[x] " (disabled, enabled), text
  tray-host.py choose TEXT     opens the menu and chooses the item that begins with the text
"""
import sys
import time

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

WATCHER = "org.kde.StatusNotifierWatcher"
PATH = "/StatusNotifierWatcher"
MENU = "com.canonical.dbusmenu"
PROPERTIES = "org.freedesktop.DBus.Properties"


class Watcher(dbus.service.Object):
    def __init__(self, bus):
        self.items = []
        super().__init__(bus, PATH)

    @dbus.service.method(WATCHER, in_signature="s", sender_keyword="sender")
    def RegisterStatusNotifierItem(self, service, sender=None):
        name = service if not service.startswith("/") else sender
        self.items.append(name)
        print("item", name, flush=True)
        self.StatusNotifierItemRegistered(name)

    @dbus.service.method(WATCHER, in_signature="s")
    def RegisterStatusNotifierHost(self, service):
        pass

    @dbus.service.signal(WATCHER, signature="s")
    def StatusNotifierItemRegistered(self, service):
        pass

    @dbus.service.signal(WATCHER)
    def StatusNotifierHostRegistered(self):
        pass

    def values(self):
        return {
            "RegisteredStatusNotifierItems": dbus.Array(self.items, signature="s"),
            "IsStatusNotifierHostRegistered": True,
            "ProtocolVersion": dbus.Int32(0),
        }

    # Toolkits believe only in properties that are announced, which the library does not do by itself.
    @dbus.service.method(dbus.INTROSPECTABLE_IFACE, out_signature="s", path_keyword="path", connection_keyword="bus")
    def Introspect(self, path, bus):
        announced = "".join(
            f'<property name="{name}" type="{kind}" access="read"/>'
            for name, kind in (("RegisteredStatusNotifierItems", "as"), ("IsStatusNotifierHostRegistered", "b"),
                               ("ProtocolVersion", "i")))
        text = super().Introspect(path, bus)
        return text.replace(f'<interface name="{WATCHER}">', f'<interface name="{WATCHER}">{announced}')

    @dbus.service.method(PROPERTIES, in_signature="ss", out_signature="v")
    def Get(self, interface, name):
        return self.values()[name]

    @dbus.service.method(PROPERTIES, in_signature="s", out_signature="a{sv}")
    def GetAll(self, interface):
        return self.values()


def serve():
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    # The object before the name: who sees the name asks at once.
    watcher = Watcher(bus)
    name = dbus.service.BusName(WATCHER, bus)
    watcher.StatusNotifierHostRegistered()
    print("ready", name.get_name(), flush=True)
    GLib.MainLoop().run()


def opened_menu():
    bus = dbus.SessionBus()
    items = bus.get_object(WATCHER, PATH).Get(WATCHER, "RegisteredStatusNotifierItems", dbus_interface=PROPERTIES)
    item = bus.get_object(items[-1], "/StatusNotifierItem")
    path = item.Get("org.kde.StatusNotifierItem", "Menu", dbus_interface=PROPERTIES)
    menu = dbus.Interface(bus.get_object(items[-1], path), MENU)
    menu.AboutToShow(0)
    _, (_, _, children) = menu.GetLayout(0, -1, [])
    return menu, [(int(child[0]), child[1]) for child in children]


def main():
    if sys.argv[1] == "serve":
        serve()
    menu, entries = opened_menu()
    if sys.argv[1] == "menu":
        for _, properties in entries:
            if properties.get("type") == "separator":
                print("----")
            else:
                print("[x]" if properties.get("enabled", True) else "[-]", properties.get("label", "").replace("_", ""))
        return 0
    for number, properties in entries:
        if properties.get("label", "").replace("_", "").startswith(sys.argv[2]):
            menu.Event(number, "clicked", dbus.String("", variant_level=1), dbus.UInt32(int(time.time()) & 0xFFFFFFFF))
            return 0
    print("no such item:", sys.argv[2], file=sys.stderr)
    return 1


sys.exit(main())
