"""What a screen reader finds in a program."""

import json
import re
import subprocess
from pathlib import Path

from .processes import Child, wait_until


class Node:
    """One element as it was when it was read."""

    def __init__(self, data):
        self.role, self.name = data["role"], data["name"]
        self.description, self.value, self.text = data["description"], data["value"], data["text"]
        self.actions, self.states, self.place = data["actions"], data["states"], data["place"]
        self.children = [Node(child) for child in data["children"]]

    def __repr__(self):
        extra = "".join(f" {key}={value!r}" for key, value in
                        (("value", self.value), ("text", self.text), ("description", self.description),
                         ("actions", self.actions)) if value)
        return f"{self.role} {self.name!r}{extra}"

    def walk(self):
        yield self
        for child in self.children:
            yield from child.walk()

    def find(self, name=None, role=None):
        """The first element with this name (a pattern is searched in it) and role; None without one."""
        def matches(node):
            named = name.search(node.name) if isinstance(name, re.Pattern) else name in (None, node.name)
            return named and role in (None, node.role)
        return next(filter(matches, self.walk()), None)

    def listing(self, depth=0):
        return "\n".join(["  " * depth + repr(self), *(child.listing(depth + 1) for child in self.children)])


class ScreenReader:
    def __init__(self, folder, environment):
        script = Path(__file__).with_name("accessibility_reader.py")
        self._reader = Child(["/usr/bin/python3", "-B", script], environment, folder / "screen-reader.log",
                             stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def read(self, process):
        """The tree of a program; None while it shows nothing."""
        answer = self._ask(process=process)
        return Node(answer) if answer else None

    def wait_for(self, process, name=None, role=None, seconds=10.0):
        """An element, as soon as the program has it."""
        def look():
            tree = self.read(process)
            return tree and tree.find(name, role)
        try:
            return wait_until(look, f"an element {name!r} of role {role!r}", seconds)
        except AssertionError as late:
            tree = self.read(process)
            raise AssertionError(f"{late}; there is:\n{tree.listing() if tree else 'nothing'}") from None

    def wait_for_rest(self, process, name, role):
        """An element once it no longer moves."""
        places = [None]

        def look():
            node = self.wait_for(process, name, role)
            places.append(node.place)
            return node if places[-1] == places[-2] else None
        return wait_until(look, f"'{name}' to come to rest")

    def press(self, process, node, action="Press"):
        """The element is looked up again by its name and role: its place may have changed since it was read."""
        if not self._ask(process=process, press=[node.role, node.name], action=action):
            raise AssertionError(f"{node} does not do '{action}'")

    def follow(self):
        """From here on it listens to who gets the keyboard, and to whose value changes."""
        self._ask(follow=True)

    def focused(self, process):
        """The element of a program that got the keyboard last since then, popups included; None without one."""
        answer = self._ask(focus=process)
        return Node(answer) if answer else None

    def changed(self, process):
        """The element of a program that told of another value last since then; None without one."""
        answer = self._ask(changed=process)
        return Node(answer) if answer else None

    def end(self):
        self._reader.end()

    def _ask(self, **request):
        self._reader.stdin.write(json.dumps(request).encode() + b"\n")
        self._reader.stdin.flush()
        return json.loads(self._reader.stdout.readline() or b"null")
