#!/usr/bin/python3
"""text_entry.py FILE: a window with a text field, which writes what is in it to the file at every change."""
import os
import sys

import gi
gi.require_version("Gtk", "3.0")
from gi.repository import Gtk


def save(entry):
    with open(sys.argv[1] + ".new", "w", encoding="utf-8") as file:
        file.write(entry.get_text() + "\n")
    os.replace(sys.argv[1] + ".new", sys.argv[1])


window = Gtk.Window(title="text entry")
entry = Gtk.Entry()
entry.connect("changed", save)
window.add(entry)
window.connect("destroy", Gtk.main_quit)
window.show_all()
Gtk.main()
