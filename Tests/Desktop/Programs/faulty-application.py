#!/usr/bin/python3
"""An application that misbehaves on the accessibility bus, in the way that the first argument names.

Its window is a real one; its accessibility tree is not the toolkit's but answered here, message by message, so that it
can lie, hang and die at a chosen moment. Modes:

  plain            a frame with a label and a button; nothing is wrong
  wide             a panel with 50,000 labels
  deep             500 panels, one in the other, with a label in the innermost
  text             a text of 10 MB
  cycle            a panel lists the frame as its child, and itself
  shared           two panels list the same label
  lying-count      a panel says that it has 1,000 children and hands out three
  lying-length     a text says that it has 1,000 characters and hands out eleven
  changing         a text that is another one at each reading
  stop-before      stops (SIGSTOP) when the first question about its frame arrives
  stop-middle      answers for forty messages, then stops
  exit-middle      answers for forty messages, then exits without a word
  restart-middle   answers for forty messages, then starts anew as "plain", in the same process
  close-middle     answers for forty messages, then closes its window and knows no object any more
"""

import os
import signal
import sys

os.environ["NO_AT_BRIDGE"] = "1"  # the toolkit's own tree must not answer beside ours

import dbus  # noqa: E402
import dbus.lowlevel  # noqa: E402
import dbus.mainloop.glib  # noqa: E402
import gi  # noqa: E402

gi.require_version("Gtk", "3.0")
from gi.repository import Gtk  # noqa: E402

MODE = sys.argv[1]
WIDTH, HEIGHT = 600, 400
PATH = "/org/a11y/atspi/accessible/"
A11Y = "org.a11y.atspi."

ROLE_NAMES = {23: "frame", 39: "panel", 29: "label", 43: "push button", 61: "text", 75: "application"}
FRAME, PANEL, LABEL, BUTTON, TEXT, APPLICATION = 23, 39, 29, 43, 61, 75
ACTIVE, EDITABLE, ENABLED, MULTI_LINE, SENSITIVE, SHOWING, VISIBLE = 1, 7, 8, 17, 24, 25, 30


class Node:
    def __init__(self, role, name="", children=(), text=None, states=()):
        self.role, self.name, self.children, self.text = role, name, list(children), text
        self.states = {ENABLED, SENSITIVE, SHOWING, VISIBLE, *states}
        self.child_count = None
        self.length = None


nodes = {}


def add(key, *arguments, **options):
    nodes[key] = Node(*arguments, **options)
    return key


def build():
    add("label", LABEL, "A label")
    add("button", BUTTON, "Press me")
    top = ["label", "button"]
    if MODE == "wide":
        top = [add("panel", PANEL, "", [add(f"label{i}", LABEL, f"Label {i}") for i in range(50_000)])]
    elif MODE == "deep":
        inner = add("innermost", LABEL, "The innermost label")
        for level in range(500):
            inner = add(f"panel{level}", PANEL, "", [inner])
        top = [inner]
    elif MODE == "text":
        top = [add("text", TEXT, "", text="Ten megabytes. " * 700_000, states=(EDITABLE, MULTI_LINE))]
    elif MODE == "cycle":
        top = [add("panel", PANEL, "", ["frame", "panel", "label"])]
    elif MODE == "shared":
        top = [add("first", PANEL, "First", ["label", "button"]), add("second", PANEL, "Second", ["label"])]
    elif MODE == "lying-count":
        top = [add("panel", PANEL, "", [add(f"label{i}", LABEL, f"Label {i}") for i in range(3)])]
        nodes["panel"].child_count = 1000
    elif MODE in ("lying-length", "changing"):
        top = [add("text", TEXT, "", text="Hello world", states=(EDITABLE, MULTI_LINE))]
        nodes["text"].length = 1000 if MODE == "lying-length" else None
    elif MODE.endswith("-middle"):
        top = [add(f"label{i}", LABEL, f"Label {i}") for i in range(200)]
    add("frame", FRAME, "Faulty", top, states=(ACTIVE,))
    add("root", APPLICATION, "faulty-application", ["frame"])


def reference(key):
    return dbus.Struct((bus.get_unique_name(), dbus.ObjectPath(PATH + key)), signature="so")


def parent_of(key):
    for candidate, node in nodes.items():
        if key in node.children:
            return candidate
    return "root"


def state_words(node):
    bits = sum(1 << state for state in node.states)
    return dbus.Array([bits & 0xFFFFFFFF, bits >> 32], signature="u")


def interfaces(node):
    names = ["Accessible"]
    if node.role == APPLICATION:
        names.append("Application")
    else:
        names.append("Component")
    if node.text is not None:
        names.append("Text")
    return dbus.Array([A11Y + name for name in names], signature="s")


readings = 0


def text_of(node):
    global readings
    if MODE == "changing":
        readings += 1
        return "Hello number " + "x" * readings
    return node.text


def extents(key):
    if key == "frame":
        return (0, 0, WIDTH, HEIGHT)
    return (10, 10, 200, 20)


def property_value(key, node, interface, name):
    values = {
        "Name": node.name,
        "Description": "",
        "Locale": "C",
        "AccessibleId": "",
        "HelpText": "",
        "ToolkitName": "faulty",
        "Version": "1",
        "AtspiVersion": "2.1",
        "Id": dbus.Int32(1),
        "CaretOffset": dbus.Int32(0),
        "ChildCount": dbus.Int32(node.child_count if node.child_count is not None else len(node.children)),
    }
    if name == "Parent":
        return reference(parent_of(key))
    if name == "CharacterCount" and node.text is not None:
        return dbus.Int32(node.length if node.length is not None else len(text_of(node)))
    return values.get(name)


def answer(key, node, interface, member, arguments):
    """The reply's signature and values, or None for a method that does not exist."""
    if interface == "org.freedesktop.DBus.Properties" and member == "Get":
        value = property_value(key, node, *arguments)
        return None if value is None else ("v", [value])
    short = interface.removeprefix(A11Y)
    if short == "Accessible":
        if member == "GetChildren":
            return "a(so)", [dbus.Array([reference(child) for child in node.children], signature="(so)")]
        if member == "GetChildAtIndex":
            index = int(arguments[0])
            return "(so)", [reference(node.children[index] if 0 <= index < len(node.children) else "null")]
        if member == "GetIndexInParent":
            return "i", [dbus.Int32(0)]
        if member == "GetRole":
            return "u", [dbus.UInt32(node.role)]
        if member in ("GetRoleName", "GetLocalizedRoleName"):
            return "s", [ROLE_NAMES[node.role]]
        if member == "GetState":
            return "au", [state_words(node)]
        if member == "GetAttributes":
            return "a{ss}", [dbus.Dictionary({}, signature="ss")]
        if member == "GetRelationSet":
            return "a(ua(so))", [dbus.Array([], signature="(ua(so))")]
        if member == "GetInterfaces":
            return "as", [interfaces(node)]
        if member == "GetApplication":
            return "(so)", [reference("root")]
    if short == "Component" and member == "GetExtents":
        x, y, width, height = extents(key)
        if int(arguments[0]) == 0:
            origin_x, origin_y = window.get_window().get_origin()[1:]
            x, y = x + origin_x, y + origin_y
        return "(iiii)", [dbus.Struct((x, y, width, height), signature="iiii")]
    if short == "Text" and node.text is not None:
        if member == "GetText":
            start, end = int(arguments[0]), int(arguments[1])
            return "s", [text_of(node)[start:end]]
        if member == "GetNSelections":
            return "i", [dbus.Int32(0)]
        if member == "GetSelection":
            return "ii", [dbus.Int32(0), dbus.Int32(0)]
    return None


served = 0


def serve(connection, message):
    global served
    if message.get_type() != 1 or not (message.get_path() or "").startswith(PATH):
        return dbus.lowlevel.HANDLER_RESULT_NOT_YET_HANDLED
    key = message.get_path().removeprefix(PATH)
    served += 1
    if MODE == "stop-before" and key == "frame" or MODE == "stop-middle" and served > 40:
        os.kill(os.getpid(), signal.SIGSTOP)
    if MODE == "exit-middle" and served > 40:
        os._exit(0)
    if MODE == "restart-middle" and served > 40:
        os.closerange(3, 64)
        os.execv(sys.executable, [sys.executable, sys.argv[0], "plain"])
    if MODE == "close-middle" and served == 41:
        window.destroy()
        nodes.clear()
    node = nodes.get(key)
    result = node and answer(key, node, message.get_interface() or "", message.get_member(), message.get_args_list())
    if result is None:
        error = "org.freedesktop.DBus.Error." + ("UnknownMethod" if node else "UnknownObject")
        reply = dbus.lowlevel.ErrorMessage(message, error, "not here")
    else:
        signature, values = result
        reply = dbus.lowlevel.MethodReturnMessage(message)
        reply.append(*values, signature=signature)
    connection.send_message(reply)
    return dbus.lowlevel.HANDLER_RESULT_HANDLED


build()
window = Gtk.Window(title="Faulty", default_width=WIDTH, default_height=HEIGHT)
if MODE != "close-middle":
    window.connect("destroy", Gtk.main_quit)
window.add(Gtk.Label(label="An application with its own mind"))

loop = dbus.mainloop.glib.DBusGMainLoop()
session = dbus.SessionBus(mainloop=loop)
address = session.call_blocking("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", "", ())
bus = dbus.bus.BusConnection(str(address), mainloop=loop)
bus.add_message_filter(serve)
bus.call_async(
    A11Y + "Registry", PATH + "root", A11Y + "Socket", "Embed", "(so)", (reference("root"),), None, None)

window.show_all()
Gtk.main()
