#!/usr/bin/python3
"""A GTK 3 window with about as many accessible elements as the first argument says."""

import sys

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import GLib, Gtk  # noqa: E402

wanted = int(sys.argv[1])
# Pictures of the window can be compared.
Gtk.Settings.get_default().set_property("gtk-cursor-blink", False)
window = Gtk.Window(title="Many widgets", default_width=1200, default_height=900)
window.connect("destroy", Gtk.main_quit)
pages = Gtk.Box(orientation=Gtk.Orientation.VERTICAL)
scroller = Gtk.ScrolledWindow(child=pages)
window.add(scroller)

elements = 5
number = 0
while elements < wanted:
    row = Gtk.Box(spacing=4)
    row.add(Gtk.Label(label=f"Field {number} of the form"))
    row.add(Gtk.Entry(text=f"value {number}"))
    row.add(Gtk.CheckButton(label=f"Keep {number}"))
    row.add(Gtk.Button(label=f"Apply {number}"))
    pages.add(row)
    elements += 6
    number += 1

window.show_all()
if len(sys.argv) > 2:
    GLib.timeout_add_seconds(int(sys.argv[2]), Gtk.main_quit)
Gtk.main()
