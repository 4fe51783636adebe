"""The objects of a file as zel itself sees them, put beside the elements that it wrote for them."""

import re

_VALUE = re.compile(r'(\w+)="(.*?)"(?= \w+="| *$)')
_OPENING = re.compile(r"^ *\[ (\w+)(.*)$")
_CLOSING = re.compile(r"^ *\](.*)$")


class Dumped:
    """An object of a dump: the property that holds it, its values, and the objects in it."""

    __slots__ = ("role", "values", "children")

    def __init__(self, role):
        self.role = role
        self.values = {}
        self.children = []


def parse_dump(text):
    """The objects at the top of what `zel dump` printed."""
    tops, stack = [], []
    for line in text.splitlines():
        opening, closing = _OPENING.match(line), _CLOSING.match(line)
        if opening:
            dumped = Dumped(opening.group(1))
            (stack[-1].children if stack else tops).append(dumped)
            stack.append(dumped)
            _add_values(dumped, opening.group(2))
        elif closing and stack:
            _add_values(stack.pop(), closing.group(1))
    return tops


def _add_values(dumped, text):
    for name, value in _VALUE.findall(text):
        dumped.values[name] = value


def values_by_element(dumped_tops, document, is_object):
    """What the dump of a file says of its elements: a dictionary from elements to values. Objects and elements are
    paired by the property that holds them and their place in it; where the numbers differ nothing is paired."""
    pairs = {}
    waiting = list(zip(dumped_tops, (top for top in document.tops if is_object(top))))
    while waiting:
        dumped, element = waiting.pop()
        pairs[element] = dumped.values
        roles = {child.role for child in dumped.children}
        for role in roles:
            objects = [child for child in dumped.children if child.role == role]
            elements = [child for child in element.children if child.name == role and is_object(child)]
            if len(objects) == len(elements):
                waiting.extend(zip(objects, elements))
    return pairs
