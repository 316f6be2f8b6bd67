#!/usr/bin/python3
"""gtk_client.py [OPTION...]: a GTK program that owns the clipboard.

  --text TEXT            offers TEXT as GTK does for its own text fields
  --offer TARGET=text:TEXT | TARGET=file:PATH
                         offers those bytes for that target; may be repeated
  --window TITLE         shows a window of that title and waits until it is active before owning
  --class NAME           the class of its windows
  --quit-after MS        ends MS milliseconds after it has taken the clipboard

Prints "owning" once the clipboard is its own, then serves until it is ended or loses it and has no window.
"""
import argparse
import sys

import gi


def parse(arguments):
    parser = argparse.ArgumentParser()
    parser.add_argument("--text")
    parser.add_argument("--offer", action="append", default=[])
    parser.add_argument("--window")
    parser.add_argument("--class", dest="wm_class")
    parser.add_argument("--quit-after", type=int)
    return parser.parse_args(arguments)


# GTK takes the class of its windows from the program's name, once, when it is imported.
OPTIONS = parse(sys.argv[1:])
if OPTIONS.wm_class:
    sys.argv[0] = OPTIONS.wm_class

gi.require_version("Gtk", "3.0")
gi.require_version("Gdk", "3.0")
from gi.repository import Gdk, GLib, Gtk  # noqa: E402


def content(offer):
    target, value = offer.split("=", 1)
    kind, rest = value.split(":", 1)
    if kind == "text":
        return target, rest.encode()
    with open(rest, "rb") as stream:
        return target, stream.read()


class Client:
    def __init__(self, options):
        self.options = options
        self.offers = [content(offer) for offer in options.offer]
        self.owns = False
        self.window = Gtk.Window(title=options.window or "clipboard client")
        self.window.set_default_size(320, 120)
        self.window.add(Gtk.Label(label=options.window or ""))
        self.window.connect("destroy", Gtk.main_quit)
        self.window.connect("selection-get", self.serve)
        if options.window:
            self.window.connect("notify::is-active", lambda *_: self.window.is_active() and self.own())
            self.window.show_all()
            self.window.present()
        else:
            self.window.realize()
            GLib.idle_add(self.own)

    def own(self):
        if self.owns:
            return
        self.owns = True
        if self.offers:
            for number, (target, _) in enumerate(self.offers):
                atom = Gdk.Atom.intern(target, False)
                Gtk.selection_add_target(self.window, Gdk.SELECTION_CLIPBOARD, atom, number)
            Gtk.selection_owner_set(self.window, Gdk.SELECTION_CLIPBOARD, Gdk.CURRENT_TIME)
        elif self.options.text is not None:
            Gtk.Clipboard.get(Gdk.SELECTION_CLIPBOARD).set_text(self.options.text, -1)
        Gdk.Display.get_default().sync()
        print("owning", flush=True)
        if self.options.quit_after is not None:
            GLib.timeout_add(self.options.quit_after, Gtk.main_quit)

    def serve(self, _widget, data, number, _time):
        data.set(data.get_target(), 8, self.offers[number][1])


def main():
    Client(OPTIONS)
    Gtk.main()


if __name__ == "__main__":
    main()
