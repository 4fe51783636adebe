"""The classes and properties that zel has, as it lists them itself."""

import re
from typing import NamedTuple

_PROPERTY = re.compile(r"^    (\S+) : (\S+) \[([^\]]*)\]([^=]*)(?:= (.*))?$")
_ENUMERATION = re.compile(r"^enumeration (\S+) \{ ([^,} ]+)", re.MULTILINE)
_CLASS = re.compile(r"^(?:abstract )?class (\S+)(?: : (.*))?$")


class Property(NamedTuple):
    """A property: the text of its default, which is empty if it has none, and whether it has several values."""

    default: str
    is_many: bool


class MetaClass:
    """A class with the properties of its own."""

    def __init__(self, superclasses):
        self.superclasses = superclasses
        self.properties = {}


class Metamodels:
    """Looks up classes by the namespace and name that a file of zel has for them."""

    def __init__(self, ask):
        """`ask` runs zel with the arguments that it is given, and returns what it printed."""
        self._prefixes = {}
        self._classes = {}
        self._first_literals = {}
        for line in ask("metamodel").splitlines():
            uri, prefix = line.split()[:2]
            self._prefixes[uri] = prefix
        listings = {prefix: ask("metamodel", uri) for uri, prefix in self._prefixes.items()}
        for listing in listings.values():
            self._first_literals.update(_ENUMERATION.findall(listing))
        for prefix, listing in listings.items():
            self._read(prefix, listing)

    def is_registered(self, uri):
        """Whether a metamodel has this namespace."""
        return uri in self._prefixes

    def class_of(self, uri, name):
        """The qualified name of the class, or None."""
        qualified = f"{self._prefixes.get(uri)}.{name}"
        return qualified if qualified in self._classes else None

    def find(self, class_name, role):
        """The `Property` of that name that the class has or inherits, or None."""
        waiting = [class_name]
        for name in waiting:
            found = self._classes.get(name)
            if found is not None:
                if role in found.properties:
                    return found.properties[role]
                waiting.extend(found.superclasses)
        return None

    def _read(self, prefix, listing):
        current = None
        for line in listing.splitlines():
            of_class, of_property = _CLASS.match(line), _PROPERTY.match(line)
            if of_class:
                current = MetaClass([s.strip() for s in (of_class.group(2) or "").split(",")])
                self._classes[f"{prefix}.{of_class.group(1)}"] = current
            elif of_property and current is not None:
                # A property without a value has the first literal of its enumeration.
                default = of_property.group(5) or self._first_literals.get(of_property.group(2), "")
                current.properties[of_property.group(1)] = Property(default, of_property.group(3).endswith("*"))
