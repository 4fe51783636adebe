"""What an XML reading of the original says of its objects, held against what zel says of them."""

from .matching import UNDERSTOOD, statements

_UNBOUNDED = ("*", "-1")
_MULTIPLICITY = ("lower", "upper")


class Fact:
    """One statement: `what` of which object, what the original says and what zel says."""

    __slots__ = ("node", "what", "expected", "said", "is_true")

    def __init__(self, node, what, expected, said, is_true=None):
        self.node = node
        self.what = what
        self.expected = expected
        self.said = said
        self.is_true = expected == said if is_true is None else is_true


class Facts:
    """Finds the facts of all objects that became objects."""

    def __init__(self, matching, metamodels, dumped):
        """`dumped` holds what zel says of elements of the converted file."""
        self._matching = matching
        self._metamodels = metamodels
        self._dumped = dumped

    def all(self):
        """All facts, in the order of the file."""
        for node in self._matching.original.elements():
            element = self._matching.partner(node)
            if element is not None and self._matching.class_of(element):
                yield from self._of_object(node, element)

    def lost_attributes(self):
        """The attributes of matched elements that are gone, as pairs of element and name, and how many there were."""
        count, lost = 0, []
        for node in self._matching.original.elements():
            element = self._matching.partner(node)
            if element is None:
                continue
            stated = statements(element)
            for name, value in node.attributes.items():
                count += 1
                if not self._keeps_attribute(element, stated, name, value):
                    lost.append((node, name))
        return count, lost

    def _of_object(self, node, element):
        stated, said = statements(node), statements(element)
        dumped = self._dumped.get(element, {})
        yield Fact(node, "name", _first(stated, "name"), _first(said, "name"))
        owner = self._matching.partner(node.parent)
        if owner is not None and self._matching.class_of(owner):
            yield Fact(node, "owner", owner.line, element.parent.line, element.parent is owner)
        yield from self._links(node, element)
        if "aggregation" in stated or "iscomposite" in stated:
            expected = _aggregation(stated)
            yield Fact(node, "aggregation", expected, _aggregation(said))
            if "isComposite" in dumped:
                yield Fact(node, "isComposite", expected == "composite", dumped["isComposite"] == "true")
        if any(child.name in ("lowerValue", "upperValue") for child in node.children) or \
                any(bound in stated for bound in _MULTIPLICITY):
            for bound in _MULTIPLICITY:
                expected = _bound(node, stated, bound)
                if expected is not None:
                    yield Fact(node, bound, expected, _normal_bound(dumped.get(bound, _bound(element, said, bound))))

    def _links(self, node, element):
        owner_class = self._matching.class_of(element)
        for name, value in node.attributes.items():
            if self._is_reference(owner_class, name, value):
                for token in value.split():
                    yield self._link_fact(node, element, name, token, None)
        for child in node.children:
            if child.is_link() and self._matching.state(child) == UNDERSTOOD:
                yield self._link_fact(node, element, child.name, child.idref, child.href)

    def _link_fact(self, node, element, role, idref, href):
        is_true = self._matching.states_link(element, role, idref, href)
        return Fact(node, role, idref or href, "the same" if is_true else "nothing of it", is_true)

    def _is_reference(self, owner_class, name, value):
        """Whether all that the attribute names are elements of the file, and zel has that property."""
        tokens = value.split()
        return bool(tokens) and name not in ("name", "body", "value") and \
            self._metamodels.find(owner_class, name) is not None and \
            all(self._matching.partners_by_id(token) is not None for token in tokens)

    def _keeps_attribute(self, element, stated, name, value):
        if _normal(value) in map(_normal, stated[name.lower()]):
            return True
        class_name = self._matching.class_of(element)
        found = self._metamodels.find(class_name, name) if class_name else None
        if found is not None and not stated[name.lower()] and _normal(found.default) == _normal(value):
            return True
        if f"{name}={value}" in element.attributes.get("values", "").split("\n"):
            return True
        tokens = value.split()
        return bool(tokens) and all(self._matching.partners_by_id(token) is not None for token in tokens) and \
            all(self._matching.states_link(element, name, token, None) for token in tokens)


def _first(stated, name):
    return stated[name][0] if stated[name] else ""


def _normal(value):
    """Numbers stand for truth values in some files, and line ends differ."""
    return {"1": "true", "0": "false", "-1": "*"}.get(value, value.replace("\r\n", "\n").strip())


def _aggregation(stated):
    if _first(stated, "iscomposite") in ("true", "1"):
        return "composite"
    return _first(stated, "aggregation") or "none"


def _normal_bound(text):
    return "*" if text in _UNBOUNDED else text


def _bound(node, stated, bound):
    """The bound that an element states by a literal or an attribute, 1 if it states none; None if a parser cannot tell
    it, because it is an expression."""
    for child in node.children:
        if child.name == bound + "Value":
            if child.is_link() or (child.type and not child.type.startswith("Literal")):
                return None
            value = _first(statements(child), "value")
            if value:
                return _normal_bound(value)
            return None if child.type in ("LiteralString", "LiteralNull") else "0"
    return _normal_bound(_first(stated, bound) or "1")
