#!/usr/bin/python3
"""A GTK 4 window with a plain entry, a password entry and entries that conceal their text without saying so."""

import gi

gi.require_version("Gtk", "4.0")
from gi.repository import Gtk  # noqa: E402


def show(application):
    box = Gtk.Box(orientation=Gtk.Orientation.VERTICAL)
    box.append(Gtk.Entry(text="plain words"))
    password = Gtk.PasswordEntry()
    password.set_text("secret of a password entry")
    box.append(password)
    for mark in (None, "x", "\0"):
        entry = Gtk.Entry(text="secret of a concealing entry", visibility=False)
        if mark is not None:
            entry.set_invisible_char(mark)
        box.append(entry)
    box.append(Gtk.Label(label="last words"))
    Gtk.ApplicationWindow(application=application, title="Secrets", child=box).present()


app = Gtk.Application()
app.connect("activate", show)
app.run()
