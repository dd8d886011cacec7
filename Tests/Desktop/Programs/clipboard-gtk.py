#!/usr/bin/python3
"""Owns the clipboard, or prints what is on it. Usage: clipboard-gtk.py 3|4 own-image|own-text|read"""
import json
import sys

import gi

version, deed = sys.argv[1:3]
gi.require_version("Gtk", version + ".0")
gi.require_version("Gdk", version + ".0")
from gi.repository import Gdk, GdkPixbuf, GLib, GObject, Gtk  # noqa: E402

WORDS = "Grüße, 世界 😀\n" * 3


def picture():
    pixels = bytes((x * 3 + y * 5 + c * 70) % 256 for y in range(200) for x in range(300) for c in range(3))
    return GdkPixbuf.Pixbuf.new_from_bytes(
        GLib.Bytes.new(pixels), GdkPixbuf.Colorspace.RGB, False, 8, 300, 200, 900)


def show(types, text, size):
    print(json.dumps({"image": size, "text": text, "types": sorted(types)}, ensure_ascii=False))


def gtk3():
    clipboard = Gtk.Clipboard.get(Gdk.SELECTION_CLIPBOARD)
    if deed == "read":
        image = clipboard.wait_for_image()
        _, targets = clipboard.wait_for_targets()
        show([target.name() for target in targets or []], clipboard.wait_for_text(),
             image and [image.get_width(), image.get_height()])
        return
    if deed == "own-image":
        clipboard.set_image(picture())
    else:
        clipboard.set_text(WORDS, -1)
    Gtk.main()


def gtk4():
    Gtk.init()
    loop = GLib.MainLoop()
    clipboard = Gdk.Display.get_default().get_clipboard()
    if deed != "read":
        if deed == "own-image":
            value = GObject.Value(Gdk.Texture, Gdk.Texture.new_for_pixbuf(picture()))
            clipboard.set_content(Gdk.ContentProvider.new_for_value(value))
        else:
            clipboard.set(WORDS)
        loop.run()
        return

    found = {}

    def text_came(board, result):
        try:
            found["text"] = board.read_text_finish(result)
        except GLib.Error:
            found["text"] = None
        board.read_texture_async(None, image_came)

    def image_came(board, result):
        try:
            image = board.read_texture_finish(result)
            found["size"] = [image.get_width(), image.get_height()]
        except GLib.Error:
            found["size"] = None
        show(board.get_formats().get_mime_types() or [], found["text"], found["size"])
        loop.quit()

    # The formats come with the first turns of the loop.
    GLib.timeout_add(100, lambda: clipboard.read_text_async(None, text_came))
    loop.run()


gtk3() if version == "3" else gtk4()
