#include "write/Emit.h"
#include "write/Operations.h"
#include "write/forms/PropertyForm.h"

namespace zelgen {
namespace {

/// The heading of a property's operations: "body: String [0..1]", and its description.
std::string propertyComment(Property const & p) {
    std::string const upper = p.upper == 0xFFFFFFFF ? "*" : std::to_string(p.upper);
    std::string const heading = p.name + ": " + p.type->name + " [" + std::to_string(p.lower) + ".." + upper + ']';
    return Printer::comment("//", p.description.empty() ? heading : heading + ". " + p.description, 4);
}

std::string property(Emission const & emission, Property const & p) {
    std::string text = propertyComment(p) + PropertyForm::of(p).declarations(emission.printerFor(p), p);
    if (!p.isHidden) {
        text += "[[nodiscard]] static ZEL::internal::PropertyDescriptor const & " + descriptorOperation(p) +
                "() noexcept;\n";
    }
    return text;
}

/// The operations of inherited properties that another one replaces.
std::string redefinitions(Emission const & emission, Class const & of) {
    std::vector<std::string> blocks;
    for (auto const & [redefined, by] : of.redefinitions) {
        blocks.push_back(emission.print(
            "// $p$, redefined by $by$\n$operations$",
            {{"p", redefined->qualifiedName()},
             {"by", by->qualifiedName()},
             {"operations",
              PropertyForm::of(*redefined).forwardDeclarations(emission.printerFor(*redefined), *redefined, *by)}}));
    }
    return Printer::blocks(blocks);
}

std::string operations(Emission const & emission, Class const & of) {
    std::string text;
    for (Operation const & operation : of.operations) {
        text += operationText::declaration(emission.print, operation);
    }
    for (View const & view : of.views) {
        text += view.property->owner == &of ? "" : viewDeclaration(emission.printerFor(*view.property));
    }
    return text;
}

/// The functions written by hand that decide about the constraints.
std::string constraints(Emission const & emission, Class const & of) {
    std::string text;
    for (Constraint const & constraint : of.constraints) {
        text +=
            Printer::comment("///", "Constraint: " + constraint.text, 4) +
            emission.print("[[nodiscard]] bool $name$(ZEL::Deviant deviant) const;\n", {{"name", constraint.function}});
    }
    return text;
}

} // namespace

std::set<std::string> headersOfIntf(Emission const & emission, Class const & of) {
    std::set<std::string> headers{emission.path("Forward.h")};
    for (Class const * const super : of.superclasses) {
        headers.insert(Emission::header(*super, "Intf"));
    }
    return headers;
}

std::string emitIntfHeader(Emission const & emission, Class const & of) {
    std::vector<std::string> bases;
    for (Class const * const super : of.superclasses) {
        bases.push_back("public virtual " + operationsOf(*super));
    }
    std::vector<std::string> members;
    for (Property const & p : of.own) {
        members.push_back(property(emission, p));
    }
    members.push_back(redefinitions(emission, of));
    members.push_back(operations(emission, of));
    members.push_back(constraints(emission, of));
    members.push_back(factoryDeclarations(emission, of));
    return emission.print(R"(
$banner$
#pragma once

$headers$

namespace $ns$::NSInterface {

/// The operations of $X$, each with the deviant in which it is to act.
class $API$ $X$Intf : $bases$ {
public:
    ~$X$Intf() override = 0;

    static ZEL::CooperativeVisitor::internal::ClassInfo const & classInfo();
    static ZEL::internal::ClassDescriptor const & descriptor() noexcept;
    /// The part of an object that is a $X$; null of null.
    static $X$Intf * upcast_helper($X$Intf * object) noexcept { return object; }
    static $X$Intf const * upcast_helper($X$Intf const * object) noexcept { return object; }

    $members$
};

inline $X$Intf::~$X$Intf() = default;

} // namespace $ns$::NSInterface
)",
                          {{"banner", emission.banner(of.mark, "write/IntfHeader.cpp")},
                           {"headers", Emission::includes(headersOfIntf(emission, of))},
                           {"bases", Printer::join(bases, ", ")},
                           {"members", Printer::blocks(members)}});
}

} // namespace zelgen
