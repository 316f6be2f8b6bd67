#!/usr/bin/python3
"""text_field.py VERSION TITLE: a window with one text field, by GTK 3 or 4.

Prints "text:" and what the field holds whenever that changes.
"""
import sys

import gi

VERSION, TITLE = sys.argv[1:3]
gi.require_version("Gtk", VERSION + ".0")
from gi.repository import GLib, Gtk  # noqa: E402


def show(field):
    print("text:" + field.get_text(), flush=True)


def fill(window):
    field = Gtk.Entry()
    field.connect("changed", show)
    window.set_default_size(320, 80)
    if VERSION == "3":
        window.add(field)
        window.show_all()
    else:
        window.set_child(field)
        window.present()
    field.grab_focus()


loop = GLib.MainLoop()
if VERSION == "3":
    Gtk.init([])
else:
    Gtk.init()
window = Gtk.Window(title=TITLE)
window.connect("destroy" if VERSION == "3" else "close-request", lambda *_: loop.quit())
fill(window)
loop.run()
