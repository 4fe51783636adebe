"""Shows handles of the library in gdb: (gdb) print book -> ZEL.Class [id = 2] "Book".

gdb loads this file with the library, if it may load files from its folder (`add-auto-load-safe-path`). The program that is
debugged does the work, so a core file shows addresses only; `print /r` shows the two words of a handle.
"""

import gdb
import gdb.printing

LONGEST = 300


def handle_base(type_):
    """The `RefBase` that a type is or derives from, null if it is no handle."""
    if (type_.tag or "").startswith("ZEL::RefBase<"):
        return type_
    for field in type_.fields():
        if field.is_base_class:
            base = handle_base(field.type.strip_typedefs())
            if base is not None:
                return base
    return None


def printable(text):
    """Names come from files: what is no visible character is shown by its number."""
    cut = text if len(text) <= LONGEST else text[:LONGEST] + "..."
    return "".join(c if c.isprintable() else repr(c)[1:-1] for c in cut)


class HandlePrinter:
    def __init__(self, handle):
        self.body = int(handle["fBody"])
        self.deviant = int(handle["fDeviant"]["fIdentity"])

    def to_string(self):
        call = (
            "((const char * (*)(const void *, const void *)) zel_describe_handle)"
            "((const void *) %d, (const void *) %d)" % (self.body, self.deviant)
        )
        try:
            return printable(gdb.parse_and_eval(call).string(errors="replace"))
        except gdb.error:
            return "body %#x in deviant %#x" % (self.body, self.deviant)


class HandlePrinters(gdb.printing.PrettyPrinter):
    def __init__(self):
        super().__init__("zel")
        self.known = {}

    def __call__(self, value):
        type_ = value.type.strip_typedefs()
        if type_.code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF):
            value = value.referenced_value()
            type_ = value.type.strip_typedefs()
        if type_.code != gdb.TYPE_CODE_STRUCT or type_.tag is None:
            return None
        if type_.tag not in self.known:
            base = handle_base(type_)
            # The storage of a property is counted, but no object of a model.
            self.known[type_.tag] = base is not None and "PropertyStorageIntf" not in base.tag
        return HandlePrinter(value) if self.known[type_.tag] else None


gdb.printing.register_pretty_printer(gdb.current_objfile(), HandlePrinters(), replace=True)
