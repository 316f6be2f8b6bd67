#!/usr/bin/python3
"""screen_reader.py COMMAND [ARGUMENT...]: a program as those know it who cannot see it.

Everything goes through the accessibility bus; no key is pressed and no pointer moved. Waits up to PATIENCE
seconds for what it looks for, prints what it is asked for and exits 1 when that does not come about.

  tree                         the whole program: role, name, description, states, actions and value of each part
  find ROLE NAME               waits until there is such a part, and prints its name
  gone ROLE NAME               waits until there is none
  count ROLE NAME              how many children it has
  act ROLE NAME ACTION         does one of its actions, such as Press or SetFocus
  set ROLE NAME TEXT           puts the text into it in place of what it holds
  text ROLE NAME               what it holds
  states ROLE NAME             its states, one a line
  state ROLE NAME STATE        waits until it has the state; with a ! in front of it, until it has not
  value ROLE NAME [NUMBER]     its number; sets it first where there is one
  listen EVENT...              prints each such event as it comes: its kind, and role and name of its source

ROLE is as `tree` prints it. NAME is the whole name; a * in it stands for anything.
The environment's SCREEN_READER_PROGRAM names the program, Tessary without it.
"""
import os
import re
import sys
import time
import warnings

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402  (only after the version is known)

warnings.simplefilter("ignore", DeprecationWarning)  # what replaces them is not in every version
PATIENCE = 10
MOST_CHILDREN = 300  # of one part; more are left out by `tree` and `find`
PROGRAM = os.environ.get("SCREEN_READER_PROGRAM", "Tessary")
SAID_STATES = ("checked", "expandable", "expanded", "collapsed", "focused", "selected", "editable", "invalid-entry")


def program():
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        child = desktop.get_child_at_index(index)
        if child is not None and child.get_name() == PROGRAM:
            return child
    return None


def states(part):
    return sorted(state.value_nick for state in part.get_state_set().get_states())


def children(part):
    for index in range(min(part.get_child_count(), MOST_CHILDREN)):
        child = part.get_child_at_index(index)
        if child is not None:
            yield child


def parts(part):
    """All of them, the outer ones first, without what is hidden; what is scrolled away is there."""
    yield part
    for child in children(part):
        try:
            if "visible" in states(child) or child.get_role_name() == "list item":
                yield from parts(child)
        except GLib.Error:
            continue  # gone meanwhile


def matches(part, role, name):
    if part.get_role_name() != role:
        return False
    pattern = ".*".join(re.escape(piece) for piece in name.split("*"))
    return re.fullmatch(pattern, part.get_name(), re.DOTALL) is not None


def found(role, name):
    whole = program()
    if whole is None:
        return None
    for part in parts(whole):
        try:
            if matches(part, role, name):
                return part
        except GLib.Error:
            continue
    return None


def wait(question, complaint):
    """What the question brings once it brings anything."""
    end = time.monotonic() + PATIENCE
    while True:
        try:
            answer = question()
        except GLib.Error:
            answer = None  # a part that went while it was asked
        if answer:
            return answer
        if time.monotonic() > end:
            sys.exit(f"screen_reader: {complaint}")
        GLib.MainContext.default().iteration(False)
        time.sleep(0.02)  # lint-allow(sleep): between two looks, within a deadline


def find(role, name):
    return wait(lambda: found(role, name), f"there is no {role} named {name}")


def actions(part):
    return [Atspi.Action.get_action_name(part, index) for index in range(Atspi.Action.get_n_actions(part))]


def act(role, name, action):
    part = find(role, name)
    known = actions(part)
    if action not in known:
        sys.exit(f"screen_reader: {role} {name} knows only {', '.join(known)}")
    if not Atspi.Action.do_action(part, known.index(action)):
        sys.exit(f"screen_reader: {role} {name} did not do {action}")


def set_text(role, name, text):
    part = find(role, name)
    if not Atspi.EditableText.set_text_contents(part, text):
        sys.exit(f"screen_reader: {role} {name} takes no text")


def text(role, name):
    part = find(role, name)
    print(Atspi.Text.get_text(part, 0, Atspi.Text.get_character_count(part)))


def state(role, name, wanted):
    has = not wanted.startswith("!")
    nick = wanted.lstrip("!")

    def question():
        part = found(role, name)
        return part is not None and (nick in states(part)) == has

    wait(question, f"{role} {name} is never {wanted}")


def value(role, name, number=None):
    part = find(role, name)
    if number is not None and not Atspi.Value.set_current_value(part, float(number)):
        sys.exit(f"screen_reader: {role} {name} takes no number")
    print(Atspi.Value.get_current_value(part))


def line(part):
    words = [part.get_role_name(), repr(part.get_name())]
    if part.get_description():
        words.append(f"({part.get_description()})")
    said = [each for each in states(part) if each in SAID_STATES]
    interfaces = part.get_interfaces()
    if said:
        words.append("[" + " ".join(said) + "]")
    if "Action" in interfaces and actions(part):
        words.append("{" + ", ".join(actions(part)) + "}")
    return " ".join(words)


def tree():
    def branch(part, depth):
        print("  " * depth + line(part))
        for child in children(part):
            if "visible" in states(child) or child.get_role_name() == "list item":
                branch(child, depth + 1)
        left_out = part.get_child_count() - MOST_CHILDREN
        if left_out > 0:
            print("  " * (depth + 1) + f"and {left_out} more")

    branch(wait(program, f"{PROGRAM} is not on the accessibility bus"), 0)


def listen(*kinds):
    def told(event):
        part = event.source
        if part is not None and part.get_application() and part.get_application().get_name() == PROGRAM:
            print(f"{event.type}\t{part.get_role_name()}\t{part.get_name()}\t{event.detail1}", flush=True)

    listener = Atspi.EventListener.new(told)
    for kind in kinds:
        listener.register(kind)
    wait(program, f"{PROGRAM} is not on the accessibility bus")
    print("listening", flush=True)
    Atspi.event_main()


COMMANDS = {
    "tree": tree,
    "find": lambda role, name: print(find(role, name).get_name()),
    "gone": lambda role, name: wait(lambda: found(role, name) is None, f"{role} {name} stays"),
    "count": lambda role, name: print(find(role, name).get_child_count()),
    "act": act,
    "set": set_text,
    "text": text,
    "states": lambda role, name: print("\n".join(states(find(role, name)))),
    "state": state,
    "value": value,
    "listen": listen,
}

if __name__ == "__main__":
    if len(sys.argv) < 2 or sys.argv[1] not in COMMANDS:
        sys.exit(__doc__)
    Atspi.init()
    COMMANDS[sys.argv[1]](*sys.argv[2:])
