#!/usr/bin/python3
"""An editor of GTK 3 or an entry of GTK 4 that writes down what is pasted into it.

usage: paste-recorder.py gtk3|gtk4 FILE

FILE gets one line for each thing that arrives: "image 16x12", or "text " and everything that the field then holds (JSON).
A second, unfocused field stands below it ("other"). SIGUSR1 moves the focus there.
"""
import json
import signal
import sys

import gi

toolkit, path = sys.argv[1:3]
gi.require_version("Gtk", "3.0" if toolkit == "gtk3" else "4.0")
gi.require_version("Gdk", "3.0" if toolkit == "gtk3" else "4.0")
from gi.repository import Gdk, GLib, Gtk  # noqa: E402


def record(line):
    with open(path, "a", encoding="utf-8") as file:
        file.write(line + "\n")


def record_text(field, text):
    record(field + " " + json.dumps(text, ensure_ascii=False))


def run_gtk3():
    window = Gtk.Window(title="Recorder")
    box = Gtk.Box(orientation=Gtk.Orientation.VERTICAL)
    view = Gtk.TextView()
    view.set_size_request(400, 200)
    other = Gtk.Entry()
    box.pack_start(view, True, True, 0)
    box.pack_start(other, False, False, 0)
    window.add(box)
    buffer = view.get_buffer()

    def pasted(_view):
        clipboard = Gtk.Clipboard.get(Gdk.SELECTION_CLIPBOARD)
        if clipboard.wait_is_image_available():
            image = clipboard.wait_for_image()
            record(f"image {image.get_width()}x{image.get_height()}" if image else "broken image")
            view.stop_emission_by_name("paste-clipboard")

    def changed(_buffer):
        record_text("text", buffer.get_text(*buffer.get_bounds(), True))

    view.connect("paste-clipboard", pasted)
    buffer.connect("changed", changed)
    other.connect("changed", lambda _entry: record_text("other", other.get_text()))
    window.connect("destroy", lambda _window: Gtk.main_quit())
    GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGUSR1, lambda: other.grab_focus() or True)
    view.grab_focus()
    window.show_all()
    Gtk.main()


def run_gtk4():
    def activate(application):
        window = Gtk.ApplicationWindow(application=application, title="Recorder")
        box = Gtk.Box(orientation=Gtk.Orientation.VERTICAL)
        entry = Gtk.Entry()
        other = Gtk.Entry()
        box.append(entry)
        box.append(other)
        window.set_child(box)
        text = entry.get_delegate()

        def read(clipboard, result):
            texture = clipboard.read_texture_finish(result)
            record(f"image {texture.get_width()}x{texture.get_height()}" if texture else "broken image")

        def pasted(_text):
            clipboard = entry.get_clipboard()
            if clipboard.get_formats().contain_gtype(Gdk.Texture):
                clipboard.read_texture_async(None, read)
                text.stop_emission_by_name("paste-clipboard")

        text.connect("paste-clipboard", pasted)
        entry.connect("changed", lambda _entry: record_text("text", entry.get_text()))
        other.connect("changed", lambda _entry: record_text("other", other.get_text()))
        GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGUSR1, lambda: other.grab_focus() or True)
        window.set_default_size(400, 100)
        entry.grab_focus()
        window.present()

    application = Gtk.Application()
    application.connect("activate", activate)
    application.run([])


run_gtk3() if toolkit == "gtk3" else run_gtk4()
