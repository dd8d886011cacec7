#!/usr/bin/python3
"""The peer: reads the same fields of one application's window through pyatspi, call by call, and counts the elements.

Prints "<nodes> <seconds>"; the seconds leave out Python's own start.
"""

import sys
import time

import pyatspi

pid = int(sys.argv[1])


def application():
    for candidate in pyatspi.Registry.getDesktop(0):
        if candidate is not None and candidate.get_process_id() == pid:
            return candidate
    sys.exit("no such application on the accessibility bus")


def read(element):
    """What the capture reads of an element; the values are dropped, their cost is the point."""
    element.getRole()
    element.name
    element.description
    element.getState().getStates()
    element.getAttributes()
    interfaces = pyatspi.listInterfaces(element)
    if "Component" in interfaces:
        element.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    if "EditableText" in interfaces:
        text = element.queryText()
        text.getText(0, text.characterCount)
        text.caretOffset
        if text.getNSelections():
            text.getSelection(0)
    if "Action" in interfaces:
        action = element.queryAction()
        for index in range(action.nActions):
            action.getName(index)
    if "Value" in interfaces:
        element.queryValue().currentValue


def walk(root):
    count = 0
    pending = [root]
    while pending:
        element = pending.pop()
        if element is None:
            continue
        count += 1
        read(element)
        pending.extend(element)
    return count


app = application()
started = time.monotonic()
nodes = sum(walk(window) for window in app)
print(nodes, time.monotonic() - started)
