"""Which element of a converted file each element of the original became."""

import re
from collections import defaultdict

from .xmltree import is_xmi

UNDERSTOOD, KEPT, LOST = "understood", "kept", "lost"


def statements(node):
    """What an element says of itself: the texts of its values by their names, in lower case."""
    stated = defaultdict(list)
    for name, value in node.attributes.items():
        stated[name.lower()].append(value)
    for child in node.children:
        if child.is_value():
            stated[child.name.lower()].append(child.text.strip())
    return stated


class Matching:
    """Pairs the elements of two files, by ids first, then by their places, kinds and names."""

    def __init__(self, original, converted, metamodels):
        self.original = original
        self.converted = converted
        self._metamodels = metamodels
        self._partner = {}
        self._taken = set()
        self._classes = {}
        self._originals_by_id = _by_id(original)
        self._converted_by_id = _by_id(converted)
        self._pair_ids()
        self._pair_tops()
        for node in original.elements():
            partner = self._partner.get(node)
            if partner is not None:
                self._pair_lists(node.children, partner.children)
        self._pair_stereotypes()

    def partner(self, node):
        """The element that this one became, or None."""
        return self._partner.get(node)

    def partners_by_id(self, identity):
        """What the elements of that id became; None if the original has no such id."""
        nodes = self._originals_by_id.get(identity)
        return None if nodes is None else [self._partner[node] for node in nodes if node in self._partner]

    def class_of(self, element):
        """The metaclass of an object of the converted file; None if the element is only kept."""
        if element not in self._classes:
            self._classes[element] = self._find_class(element)
        return self._classes[element]

    def state(self, node):
        """Whether zel understood the element, kept it or lost it."""
        partner = self._partner.get(node)
        if partner is not None:
            return UNDERSTOOD if self._is_understood(partner) else KEPT
        owner = self._partner.get(node.parent)
        if owner is None:
            return LOST
        if node.is_link():
            stated = self.states_link(owner, node.name, node.idref, node.href)
        else:
            stated = node.is_value() and node.text.strip() in statements(owner)[node.name.lower()]
        if not stated:
            return LOST
        is_kept = any(child.name == node.name and child.is_link() and not child.type for child in owner.children)
        return UNDERSTOOD if self.class_of(owner) and not is_kept else KEPT

    def states_link(self, owner, role, idref, href):
        """Whether an element of the converted file has this link, or its target one back."""
        targets = [] if idref is None else self.partners_by_id(idref)
        if idref is not None and targets is None:
            return self._names_text(owner, role, idref) or self._has_type_named_in(owner, role, idref)
        if href is not None:
            return self._names_text(owner, role, href) or self._leads_within(owner, role, href)
        return any(self._refers(owner, target, role) or self._refers(target, owner) or
                   self._is_told_by_place(owner, target, role) for target in targets)

    def _has_type_named_in(self, owner, role, identity):
        """Whether the element has a type of the name in an id such as EAJava_int, which is that of nothing."""
        named = re.fullmatch(r"EA(?!ID_|PK_)[^_]*_(.+)", identity)
        types = self._converted_by_id.get(owner.attributes.get("type"), [])
        return role == "type" and named is not None and any(node.attributes.get("name") == named[1] for node in types)

    def _is_told_by_place(self, element, target, role):
        """Whether the link leads to the container or a part, which no file of zel names twice. What has several
        values, and a type, may lead there by chance."""
        found = self._metamodels.find(self.class_of(element), role)
        if element.parent is target:
            return role != "type" and not (found is not None and found.is_many)
        return target.parent is element

    def _leads_within(self, owner, role, href):
        """Whether the target was in another file, and is in this one: a part that was joined to its whole."""
        identity = _fragment(href)
        joined = [] if identity in self._originals_by_id else self._converted_by_id.get(identity, [])
        return any(self._refers(owner, target, role) or (target.parent is owner and target.name == role)
                   for target in joined)

    @staticmethod
    def _refers(element, target, role=None):
        """Whether the element names the target."""
        if target.id is None:
            return False
        return any(target.id in value.split() for name, value in element.attributes.items()
                   if role is None or name == role or role.startswith("base_")) or \
            any(child.idref == target.id or _fragment(child.href) == target.id for child in element.children
                if role is None or child.name == role)

    @staticmethod
    def _names_text(element, role, text):
        """Whether the element has a link of that text, however the path to a file is written."""
        if text in element.attributes.get(role, "").split():
            return True
        return any(child.name == role and (child.idref == text or _is_same_place(child.href, text))
                   for child in element.children)

    def _is_understood(self, element):
        if self.class_of(element):
            return True
        owner = self.class_of(element.parent) if element.parent is not None else None
        if owner is None or self._metamodels.find(owner, element.name) is None:
            return False
        # A link that leads nowhere is written as it came, without the type of what it leads to.
        return element.type != "" if element.is_link() else element.is_value()

    def _find_class(self, element):
        if element.parent is None or element.parent.is_envelope():
            return self._metamodels.class_of(element.uri, element.name)
        owner = self.class_of(element.parent)
        if owner is None or element.is_link():
            return None
        if self._metamodels.find(owner, element.name) is None and element.parent.name != "Extension":
            return None
        return self._metamodels.class_of(element.type_uri, element.type)

    def _pair(self, node, element):
        self._partner[node] = element
        self._taken.add(element)

    def _pair_ids(self):
        elements = _by_id(self.converted)
        for identity, nodes in self._originals_by_id.items():
            for node, element in _closest(nodes, elements.get(identity, [])):
                self._pair(node, element)

    def _pair_tops(self):
        """The top of a file may become a part of the model that zel puts around it."""
        level = self.converted.tops
        for _ in range(3):
            self._pair_lists(self.original.tops, level)
            level = [child for element in level for child in element.children]

    def _pair_stereotypes(self):
        """Stereotypes that zel does not know become instances of one class, which names them."""
        instances = defaultdict(list)
        for element in self.converted.tops:
            if "stereotype" in element.attributes:
                instances[element.attributes["stereotype"], element.attributes.get("base_Element")].append(element)
        for node in self.original.tops:
            if node in self._partner or is_xmi(node.uri):
                continue
            bases = [value for name, value in node.attributes.items() if name.startswith("base_")]
            for base in self.partners_by_id(bases[0]) or [] if bases else []:
                for element in instances[node.name, base.id]:
                    if element not in self._taken and node not in self._partner:
                        self._pair(node, element)

    def _pair_lists(self, nodes, elements):
        """Pairs siblings, those that are most alike first; within a round in their order."""
        for key in _ROUNDS:
            free = defaultdict(list)
            for element in reversed(elements):
                if element not in self._taken and not element.is_envelope():
                    free[key(element, element)].append(element)
            for node in nodes:
                if node not in self._partner and not node.is_envelope():
                    wanted = key(node, None)
                    if wanted is not None and free.get(wanted):
                        self._pair(node, free[wanted].pop())


def _by_id(document):
    found = defaultdict(list)
    for node in document.elements():
        if node.id is not None:
            found[node.id].append(node)
    return found


def _closest(nodes, elements):
    """Pairs elements of one id: those of one name and type first, so that ids that occur twice do no harm."""
    left = list(elements)
    for node in nodes:
        if left:
            best = max(left, key=lambda element: (element.type == node.type, element.name == node.name))
            left.remove(best)
            yield node, best


def _fragment(href):
    return None if href is None else href.rpartition("#")[2]


def _is_same_place(href, other):
    """Whether two links lead to the same place: files are moved, so only the end of their paths counts."""
    if href is None:
        return False
    file, _, fragment = href.rpartition("#")
    other_file, _, other_fragment = other.rpartition("#")
    return fragment == other_fragment and file.rpartition("/")[2] == other_file.rpartition("/")[2]


def _type_of(node):
    """An element at the top names its own type."""
    return node.type or (node.name if node.parent is None or node.parent.is_envelope() else "")


def _exactly(node, _converted):
    return (node.name, _type_of(node), tuple(sorted(node.attributes.items())), node.idref, node.href,
            node.text.strip() if node.is_value() else "")


def _role_type_label(node, _converted):
    return None if node.is_link() else (node.name, _type_of(node), node.label())


def _role_type(node, _converted):
    return None if node.is_link() or node.is_value() else (node.name, _type_of(node))


def _type_label(node, _converted):
    return (_type_of(node), node.label()) if _type_of(node) and node.label() else None


def _named_role(node, _converted):
    """For what changes its kind, as a model in a model does."""
    return (node.name, node.label()) if node.label() and not node.is_link() else None


def _role_label(node, converted):
    """For a file that leaves out the types that its properties imply."""
    return None if node.is_link() or node.is_value() or (converted is None and node.type) else \
        (node.name, node.label())


def _role(node, converted):
    return None if node.is_link() or node.is_value() or (converted is None and node.type) else node.name


def _type(node, _converted):
    return None if node.is_link() or not node.type else _type_of(node)


_ROUNDS = (_exactly, _role_type_label, _type_label, _named_role, _role_type, _role_label, _role, _type)
