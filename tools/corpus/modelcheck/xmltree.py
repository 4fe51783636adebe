"""A light tree of an XML file, and what XMI means by the attributes of its elements."""

import re
import xml.parsers.expat
import zipfile

XMI_NAMESPACE = re.compile(r"http://(schema\.omg\.org/spec/XMI/|www\.omg\.org/(spec/)?XMI)")
XSI_NAMESPACE = "http://www.w3.org/2001/XMLSchema-instance"
_SEPARATOR = "\n"  # which no name and no namespace contains
_LARGEST_DEPTH = 2000
_LARGEST_PACKED = 1 << 30
_PACKED_MODELS = ("com.nomagic.magicdraw.uml_model.model", ".uml", ".xmi", ".mdxml", ".cmof", ".emof", ".xml")


class NotCountable(Exception):
    """The file is not XML, or one of those that are made to harm a parser."""


def is_xmi(uri):
    """Whether the namespace is that of some version of XMI."""
    return XMI_NAMESPACE.match(uri) is not None


class Node:
    """An element. The attributes by which XMI identifies and types it do not stand among `attributes`."""

    __slots__ = ("uri", "name", "attributes", "text", "children", "parent", "id", "idref", "type_uri", "type", "href",
                 "line")

    def __init__(self, uri, name, parent, line):
        self.uri = uri
        self.name = name
        self.parent = parent
        self.line = line
        self.attributes = {}
        self.children = []
        self.text = ""
        self.id = self.idref = self.href = None
        self.type_uri = self.type = ""

    def is_envelope(self):
        """Whether the element only wraps a model: it is none of its elements."""
        return is_xmi(self.uri) and (self.name in ("XMI", "Documentation") or "persistentIds" in self.attributes)

    def is_link(self):
        """Whether the element stands for one that is elsewhere."""
        return (self.idref is not None or self.href is not None) and not self.children

    def is_value(self):
        """Whether the element is a value of its parent: nothing but text."""
        return not (self.children or self.attributes or self.id or self.is_link()) and \
            (self.type == "" or bool(self.text.strip()))

    def label(self):
        """What tells the element from its siblings of the same kind."""
        for name in ("name", "body", "value", "key", "source"):
            if name in self.attributes:
                return self.attributes[name]
        return ""

    def walk(self):
        """The element and all below it, in the order of the file."""
        waiting = [self]
        while waiting:
            node = waiting.pop()
            yield node
            waiting.extend(reversed(node.children))


class _Builder:
    """Takes the events of a parser."""

    def __init__(self, parser):
        self.root = None
        self.namespaces = {}  # of the whole file, as they came first
        self._parser = parser
        self._scopes = {}
        self._open = []

    def start_namespace(self, prefix, uri):
        self.namespaces.setdefault(prefix or "", uri or "")
        self._scopes.setdefault(prefix or "", []).append(uri or "")

    def end_namespace(self, prefix):
        self._scopes[prefix or ""].pop()

    def start_element(self, name, attributes):
        if len(self._open) > _LARGEST_DEPTH:
            raise NotCountable("nested too deeply")
        uri, local = _split(name)
        parent = self._open[-1] if self._open else None
        node = Node(uri, local, parent, self._parser.CurrentLineNumber)
        for index in range(0, len(attributes), 2):
            self._add_attribute(node, attributes[index], attributes[index + 1])
        if parent is None:
            self.root = node
        else:
            parent.children.append(node)
        self._open.append(node)

    def end_element(self, _name):
        self._open.pop()

    def characters(self, text):
        self._open[-1].text += text

    def refuse_entities(self, *_declaration):
        raise NotCountable("declares entities")

    def _add_attribute(self, node, name, value):
        uri, local = _split(name)
        if is_xmi(uri):
            if local == "type":
                node.type_uri, node.type = self._resolve(value)
            elif local == "id":
                node.id = value
            elif local == "idref":
                node.idref = value
            elif local not in ("version", "uuid", "label"):
                node.attributes[local] = value
        elif uri == XSI_NAMESPACE:
            if local == "type":
                node.type_uri, node.type = self._resolve(value)
        elif local == "href" and not uri:
            node.href = value
        else:
            node.attributes[local] = value

    def _resolve(self, qualified):
        prefix, _, local = qualified.rpartition(":")
        scopes = self._scopes.get(prefix)
        return (scopes[-1] if scopes else ""), local


def _split(name):
    uri, separator, local = name.rpartition(_SEPARATOR)
    return (uri, local) if separator else ("", name)


class Document:
    """A parsed file: `tops` are the elements within its envelope."""

    def __init__(self, root, namespaces):
        self.root = root
        self.namespaces = namespaces
        inner = root.children if root.is_envelope() else [root]
        self.tops = [node for node in inner if not node.is_envelope()]

    def elements(self):
        """All elements but the envelope, in the order of the file."""
        for top in self.tops:
            yield from top.walk()

    def is_model(self):
        """Whether the file says that it is XMI 2."""
        return any(is_xmi(uri) for uri in self.namespaces.values()) and not self.is_xmi_1()

    def is_xmi_1(self):
        """Whether the file is XMI 1, whose elements mean something else."""
        return self.root.name == "XMI" and "xmi.version" in self.root.attributes


def parse(path):
    """The `Document` of the file. Raises `NotCountable` if it has none, or declares entities."""
    parser = xml.parsers.expat.ParserCreate(namespace_separator=_SEPARATOR)
    parser.ordered_attributes = True
    parser.buffer_text = True
    builder = _Builder(parser)
    parser.StartNamespaceDeclHandler = builder.start_namespace
    parser.EndNamespaceDeclHandler = builder.end_namespace
    parser.StartElementHandler = builder.start_element
    parser.EndElementHandler = builder.end_element
    parser.CharacterDataHandler = builder.characters
    parser.EntityDeclHandler = builder.refuse_entities
    try:
        parser.Parse(_content(path), True)
    except (zipfile.BadZipFile, NotImplementedError, RuntimeError) as error:
        raise NotCountable(f"not to be unpacked: {error}") from error
    except (xml.parsers.expat.ExpatError, LookupError, ValueError) as error:
        raise NotCountable(f"not well-formed: {error}") from error
    return Document(builder.root, builder.namespaces)


def _content(path):
    """The bytes of a file or, if it is a container, of the model in it."""
    with open(path, "rb") as file:
        if file.read(4) != b"PK\x03\x04":
            file.seek(0)
            return file.read()
    with zipfile.ZipFile(path) as container:
        for ending in _PACKED_MODELS:
            entries = [entry for entry in container.infolist() if entry.filename.endswith(ending)]
            if entries:
                with container.open(max(entries, key=lambda entry: entry.file_size)) as model:
                    content = model.read(_LARGEST_PACKED + 1)
                if len(content) > _LARGEST_PACKED:
                    raise NotCountable("too large in its container")
                return content
    raise NotCountable("a container without a model")
