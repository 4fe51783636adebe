"""Which tool wrote a file, in which version of XMI and of its metamodel."""

import re

from .xmltree import is_xmi

_ECLIPSE = re.compile(r"http://www\.eclipse\.org/uml2/(\d+\.\d+)\.\d+/UML")
_VERSION_IN_URI = re.compile(r"/XMI/?(\d[\d.]*)?$")
_UML = re.compile(r"http://(?:schema|www)\.omg\.org/spec/UML/([\d.]+)(?:/uml\.xml)?$")
_MOF = re.compile(r"http://schema\.omg\.org/spec/MOF/[\d.]+/([ce]mof)")


def family_of(document):
    """A short name, such as "MagicDraw UML 16.5, UML 2.2, XMI 2.1"."""
    if document.is_xmi_1():
        return "XMI " + document.root.attributes["xmi.version"]
    parts = [part for part in (_exporter(document), _metamodel(document), _xmi_version(document)) if part]
    if len([top for top in document.tops if _metamodel_of(top.uri) and top.name != "Tag"]) > 1:
        parts.append("several at the top")
    return ", ".join(parts)


def _exporter(document):
    for node in document.root.children if document.root.is_envelope() else []:
        if node.is_envelope():
            stated = dict(node.attributes)
            stated.update((child.name, child.text.strip()) for child in node.children if child.is_value())
            name = stated.get("exporter", "")
            return f"{name} {_major_and_minor(stated.get('exporterVersion', ''))}".strip()
    return ""


def _major_and_minor(version):
    return ".".join(version.split()[0].split(".")[:2]) if version.split() else ""


def _metamodel(document):
    uris = [top.uri for top in document.tops] + list(document.namespaces.values())
    return next(filter(None, map(_metamodel_of, uris)), "")


def _metamodel_of(uri):
    eclipse, uml, mof = _ECLIPSE.match(uri), _UML.match(uri), _MOF.match(uri)
    if eclipse:
        return "Eclipse UML2 " + eclipse.group(1)
    if uml:
        return "UML " + uml.group(1)
    return mof.group(1).upper() if mof else ""


def _xmi_version(document):
    for uri in document.namespaces.values():
        if is_xmi(uri):
            match = _VERSION_IN_URI.search(uri)
            return "XMI " + (match.group(1) if match and match.group(1) else "2.0")
    return "no XMI"
