"""Reads and works programs through the accessibility bus of the environment that it was started in.

One JSON request a line on standard input, one JSON answer a line on standard output. A process of its own, because the
client library connects to one bus for the life of a process."""

import json
import sys

import pyatspi
from gi.repository import GLib

focused = []  # elements that have told of getting the keyboard, the latest last
changed = []  # and of another value


def application(process):
    for candidate in pyatspi.Registry.getDesktop(0):
        if candidate is not None and candidate.get_process_id() == process:
            candidate.clear_cache()
            return candidate
    return None


def value_of(node):
    try:
        return node.queryValue().currentValue
    except NotImplementedError:
        return None


def text_of(node):
    try:
        text = node.queryText()
        return text.getText(0, -1)
    except NotImplementedError:
        return None


def actions_of(node):
    try:
        action = node.queryAction()
        return [action.getName(index) for index in range(action.nActions)]
    except NotImplementedError:
        return []


def find(node, role, name):
    if (node.getRoleName(), node.name) == (role, name):
        return node
    found = (find(child, role, name) for child in node if child is not None)
    return next((node for node in found if node), None)


def describe(node):
    states = node.getState()
    at = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS) if "Component" in node.get_interfaces() else None
    children = [node.getChildAtIndex(index) for index in range(node.childCount)]
    return {
        "role": node.getRoleName(), "name": node.name, "description": node.description,
        "value": value_of(node), "text": text_of(node), "actions": actions_of(node),
        "states": [pyatspi.stateToString(state) for state in states.getStates()],
        "place": [at.x, at.y, at.width, at.height] if at else None,
        "children": [describe(child) for child in children if child is not None],
    }


def follow():
    def note_focus(event):
        if event.detail1:
            focused.append(event.source)
    pyatspi.Registry.registerEventListener(note_focus, "object:state-changed:focused")
    pyatspi.Registry.registerEventListener(lambda event: changed.append(event.source),
                                           "object:property-change:accessible-value")
    return True


def latest(told, process):
    """The last element of a program that told; also in a popup, which is in no tree."""
    while GLib.MainContext.default().iteration(False):
        pass
    node = next((node for node in reversed(told) if node.get_process_id() == process), None)
    return describe(node) if node else None


def answer(request):
    if "follow" in request:
        return follow()
    if "focus" in request:
        return latest(focused, request["focus"])
    if "changed" in request:
        return latest(changed, request["changed"])
    node = application(request["process"])
    if node is None:
        return None
    if "press" not in request:
        return describe(node)
    node = find(node, *request["press"])
    actions = actions_of(node) if node else []
    wanted = request["action"]
    return wanted in actions and node.queryAction().doAction(actions.index(wanted))


for line in sys.stdin:
    try:
        result = answer(json.loads(line))
    except Exception as gone:  # the tree may change while it is read; the caller asks again
        result = None
        print(f"{type(gone).__name__}: {gone}", file=sys.stderr, flush=True)
    print(json.dumps(result), flush=True)
