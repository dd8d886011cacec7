#!/usr/bin/python3
"""What a screen reader hears of alerts: one line each, "shown" or "name" and the alert's name, after "ready"."""
import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402


def heard(event):
    if event.source.get_role() != Atspi.Role.ALERT:
        return
    if event.type.startswith("object:state-changed"):
        if event.detail1:
            print("shown", event.source.get_name(), flush=True)
    else:
        print("name", event.source.get_name(), flush=True)


Atspi.init()
listener = Atspi.EventListener.new(heard)
for kind in ("object:state-changed:showing", "object:property-change:accessible-name"):
    listener.register(kind)
print("ready", flush=True)
Atspi.event_main()
