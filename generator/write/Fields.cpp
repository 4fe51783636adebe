#include "write/Fields.h"

#include "family/Names.h"
#include "write/Printer.h"

#include <algorithm>

namespace zelgen::fieldText {
namespace {

bool isNumber(Property const & p) {
    return p.field == FieldKind::Int32 || p.field == FieldKind::Unsigned32 || p.field == FieldKind::Double ||
           p.field == FieldKind::Single;
}

std::string hasMember(std::string const & fields, Property const & p) { return fields + "has" + p.capital; }

/// The value in a new state: a native constant, or an expression for a value that is an object.
std::string initial(Property const & p) {
    if (p.field == FieldKind::Text) {
        return "ZEL::internal::TextField(" + (p.defaultValue.empty() ? "" : Printer::quoted(p.defaultValue)) + ')';
    }
    if (p.field == FieldKind::Value) {
        std::string const type = p.type->cppName();
        return p.defaultValue.empty()
                   ? type + "()"
                   : "ZEL::internal::defaultValue<" + type + ">(" + Printer::quoted(p.defaultValue) + ')';
    }
    if (p.field == FieldKind::Flag) {
        return p.defaultValue == "true" ? "true" : "false";
    }
    if (p.field == FieldKind::Bits) {
        auto const & literals = p.type->literals;
        auto const found = std::find(literals.begin(), literals.end(), p.defaultValue);
        return std::to_string(found == literals.end() ? 0 : found - literals.begin());
    }
    if (p.field == FieldKind::Unsigned32 && p.defaultValue == "*") {
        return "0xFFFFFFFF";
    }
    return p.defaultValue.empty() ? "0" : p.defaultValue;
}

std::string native(Property const & p) {
    switch (p.field) {
    case FieldKind::Int32:
        return "std::int32_t";
    case FieldKind::Unsigned32:
        return "std::uint32_t";
    case FieldKind::Double:
        return "double";
    default:
        return "float";
    }
}

} // namespace

std::string declaration(Property const & p) {
    std::string const name = Names::field(p.base);
    std::string const initializer = p.defaultValue.empty() ? "" : " = " + initial(p);
    switch (p.field) {
    case FieldKind::Flag:
    case FieldKind::Bits:
        return "";
    case FieldKind::Text:
        return "ZEL::internal::TextField " + name + initializer + ";\n";
    case FieldKind::Value:
        return p.type->cppName() + ' ' + name + initializer + ";\n";
    case FieldKind::Pointer:
        return p.type->home->cppNamespace + "::NSInterface::" + p.type->name + "Intf * " + name + " = nullptr;\n";
    case FieldKind::Pointers:
        return "ZEL::internal::PersistentSequence " + name + ";\n";
    case FieldKind::Texts:
        return "ZEL::internal::PersistentTextSequence " + name + ";\n";
    default:
        return native(p) + ' ' + name + " = " + initial(p) + ";\n";
    }
}

std::string bitDeclarations(Property const & p) {
    std::string result;
    if (p.field == FieldKind::Flag) {
        result = "bool " + Names::field(p.base) + " : 1 = " + initial(p) + ";\n";
    } else if (p.field == FieldKind::Bits) {
        result = "std::uint8_t " + Names::field(p.base) + " : " + std::to_string(p.bits()) + " = " + initial(p) + ";\n";
    }
    if (p.keepsHas) {
        result += "bool has" + p.capital + " : 1 = " + (p.defaultValue.empty() ? "false" : "true") + ";\n";
    }
    return result;
}

std::string member(std::string const & fields, Property const & p) {
    return fields + (p.isSeldom ? "internal_seldom->" : "") + Names::field(p.base);
}

std::string writableMember(std::string const & fields, Property const & p) {
    return fields + (p.isSeldom ? "internal_seldom.write()." : "") + Names::field(p.base);
}

std::string load(std::string const & fields, Property const & p) {
    std::string const type = p.type->cppName();
    switch (p.field) {
    case FieldKind::Text:
        return member(fields, p) + ".get()";
    case FieldKind::Value:
        return member(fields, p);
    case FieldKind::Flag:
        return type + "(bool(" + member(fields, p) + "))";
    case FieldKind::Bits:
        return type + "(static_cast<" + type + "::Value>(" + member(fields, p) + "))";
    default:
        return type + '(' + member(fields, p) + ')';
    }
}

std::string isSet(std::string const & fields, Property const & p) {
    if (p.keepsHas) {
        return hasMember(fields, p);
    }
    switch (p.field) {
    case FieldKind::Text:
        return '!' + member(fields, p) + ".isEmpty()";
    case FieldKind::Flag:
        return member(fields, p);
    case FieldKind::Pointer:
        return member(fields, p) + " != nullptr";
    default:
        return member(fields, p) + " != 0";
    }
}

std::string store(std::string const & fields, Property const & p, std::string const & value) {
    std::string const target = writableMember(fields, p);
    if (p.field == FieldKind::Text) {
        return target + ".set(" + value + ".str());\n" + (p.keepsHas ? hasMember(fields, p) + " = true;\n" : "");
    }
    std::string source = value;
    if (p.field == FieldKind::Flag) {
        source = "bool(" + value + ')';
    } else if (p.field == FieldKind::Bits) {
        source = "static_cast<std::uint8_t>(" + value + ".getValue())";
    } else if (isNumber(p)) {
        source = value + ".getValue()";
    }
    std::string const isPresent = p.field == FieldKind::Value ? value + ".isValid()" : "true";
    return target + " = " + source + ";\n" + (p.keepsHas ? hasMember(fields, p) + " = " + isPresent + ";\n" : "");
}

std::string clear(std::string const & fields, Property const & p) {
    std::string const target = writableMember(fields, p);
    std::string const empty = p.field == FieldKind::Text && p.defaultValue.empty() ? target + ".clear();\n"
                              : p.field == FieldKind::Pointer                      ? target + " = nullptr;\n"
                                                              : target + " = " + initial(p) + ";\n";
    return (p.isSeldom ? "if (" + fields + "internal_seldom.isWritten()) {\n    " + empty + "}\n" : empty) +
           (p.keepsHas ? hasMember(fields, p) + " = false;\n" : "");
}

bool mayHoldAbsentValue(Property const & p) {
    // Without a default, only an invalid object is absent, and no other one equals it.
    return p.keepsHas && (p.field != FieldKind::Value || !p.defaultValue.empty());
}

std::string holds(std::string const & fields, Property const & p, std::string const & value) {
    std::string const equal = p.field == FieldKind::Text ? member(fields, p) + ".view() == " + value + ".str()"
                                                         : load(fields, p) + " == " + value;
    return mayHoldAbsentValue(p) ? hasMember(fields, p) + " && " + equal : equal;
}

std::string constant(Property const & p, std::string const & value) {
    std::string const type = p.type->cppName();
    if (p.field == FieldKind::Text) {
        return type + '(' + Printer::quoted(value) + ')';
    }
    if (p.field == FieldKind::Bits) {
        return type + '(' + type + "::" + Names::enumerator(value) + ')';
    }
    return type + '(' + value + (p.field == FieldKind::Unsigned32 ? "u" : "") + ')';
}

} // namespace zelgen::fieldText
