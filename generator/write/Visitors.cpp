#include "write/Visitors.h"

#include <algorithm>
#include <array>

namespace zelgen {
namespace {

/// The classes that have instances, by name.
std::vector<Class const *> visited(Emission const & emission) {
    std::vector<Class const *> result;
    for (auto const & c : emission.metamodel.classes) {
        if (!c->isAbstract) {
            result.push_back(c.get());
        }
    }
    std::sort(result.begin(), result.end(), [](Class const * a, Class const * b) { return a->name < b->name; });
    return result;
}

struct VisitorKind {
    std::string_view name; ///< and of its files
    bool visitsMutable;    ///< in addition to the handles for reading
    std::string_view comment;
};

constexpr std::array<VisitorKind, 2> kKinds{
    {{"Visitor", true,
      R"(/// What is done with an object of each concrete class of this metamodel, through a handle for writing and through one
/// for reading. Each operation returns true to go on.
///
/// A class that overrides one of the two operations of a name hides the other: `using` brings it back.)"},
     {"ImmutableVisitor", false,
      R"(/// What is done with an object of each concrete class of this metamodel, through a handle for reading. Each operation
/// returns true to go on.)"}}};

/// One text for each operation of a visitor: those for writing, then those for reading.
std::string forEachOperation(Emission const & emission, VisitorKind const & kind, std::string_view text) {
    std::string result;
    for (bool const immutable : {false, true}) {
        if (immutable || kind.visitsMutable) {
            for (Class const * const c : visited(emission)) {
                result += emission.print(text, {{"X", c->name}, {"H", c->type->cppName(immutable)}});
            }
        }
    }
    return result;
}

std::string handleHeaders(Emission const & emission) {
    std::set<std::string> headers;
    for (Class const * const c : visited(emission)) {
        headers.insert(Emission::header(*c));
    }
    return Emission::includes(headers);
}

std::string commentOfVisit(VisitorKind const & kind) {
    return Printer::comment(
        "///",
        std::string("Calls the operation for the object's class") +
            (kind.visitsMutable ? ", for a handle for writing the one for writing," : "") +
            " and returns its result. For an object of another class, that is the operation for the "
            "first superclass that has one; if there is none, the object is passed over: true. "
            "Throws \"Cannot access NULL ref. Use isValid() before calling methods\" on a null "
            "handle.",
        4);
}

std::string header(Emission const & emission, VisitorKind const & kind) {
    return emission.print(
        R"(
$banner$
#pragma once

$headers$

namespace $ns$ {

$comment$
class $API$ $V$ {
public:
    $V$() = default;
    $V$($V$ const &) = default;
    $V$ & operator=($V$ const &) = default;
    virtual ~$V$();

    $commentOfVisit$
    template <class Handle> bool visit(Handle const & object) {
        return dispatch(*object.getImplementation(), object.getDeviant()$form$);
    }

    $operations$

private:
    bool dispatch(ZEL::NSInterface::ObjectIntf const & object, ZEL::Deviant deviant$parameter$);
};

} // namespace $ns$
)",
        {{"headers", Emission::includes({emission.path("Forward.h"), "ZEL/deviants/Deviant.h"})},
         {"comment", std::string(kind.comment)},
         {"commentOfVisit", commentOfVisit(kind)},
         {"form", kind.visitsMutable ? ", requires { typename Handle::ImmutableForm; }" : ""},
         {"operations", forEachOperation(emission, kind, "virtual bool visit$X$($H$ object) = 0;\n")}});
}

/// The operations of one form as a table, in which `dispatch` looks up the class of the object.
std::string table(Emission const & emission, bool immutable) {
    std::string entries;
    for (Class const * const c : visited(emission)) {
        entries +=
            emission.print("{&$H$::BodyInterface::classInfo, &ZEL::internal::visitAs<$V$, $H$, &$V$::visit$X$>},\n",
                           {{"H", c->type->cppName(immutable)}, {"X", c->name}});
    }
    return emission.print(R"(
static auto const $name$ = ZEL::internal::visitTable({
    $entries$
});
)",
                          {{"name", immutable ? "reading" : "writing"}, {"entries", entries}});
}

std::string source(Emission const & emission, VisitorKind const & kind) {
    return emission.print(R"(
$banner$
#include <$header$>

#include <ZEL/metamodel/VisitorSupport.h>
$headers$

namespace $ns$ {

$V$::~$V$() = default;

bool $V$::dispatch(ZEL::NSInterface::ObjectIntf const & object, ZEL::Deviant deviant$parameter$) {
    $reading$
    $writing$
    return ZEL::internal::visit($table$, this, object, deviant);
}

} // namespace $ns$
)",
                          {{"header", emission.path(std::string(kind.name) + ".h")},
                           {"headers", handleHeaders(emission)},
                           {"reading", table(emission, true)},
                           {"writing", kind.visitsMutable ? table(emission, false) : ""},
                           {"table", kind.visitsMutable ? "forWriting ? writing : reading" : "reading"}});
}

std::string emptyHeader(Emission const & emission, VisitorKind const & kind) {
    return emission.print(R"(
$banner$
#pragma once

#include <$visitor$>

namespace $ns$ {

/// Does nothing and goes on, for visitors of some classes only.
class $API$ $V$Empty : public $V$ {
public:
    $operations$
};

} // namespace $ns$
)",
                          {{"visitor", emission.path(std::string(kind.name) + ".h")},
                           {"operations", forEachOperation(emission, kind, "bool visit$X$($H$ object) override;\n")}});
}

std::string emptySource(Emission const & emission, VisitorKind const & kind) {
    constexpr char operation[] = "bool $V$Empty::visit$X$([[maybe_unused]] $H$ object) { return true; }\n";
    return emission.print(R"(
$banner$
#include <$header$>

$headers$

namespace $ns$ {

$operations$

} // namespace $ns$
)",
                          {{"header", emission.path(std::string(kind.name) + "Empty.h")},
                           {"headers", handleHeaders(emission)},
                           {"operations", forEachOperation(emission, kind, operation)}});
}

bool isNameOfVisitor(std::string const & name) {
    return std::any_of(kKinds.begin(), kKinds.end(), [&](VisitorKind const & kind) {
        return name == kind.name || name == std::string(kind.name) + "Empty";
    });
}

} // namespace

std::vector<VisitorFiles> emitVisitors(Emission const & emission) {
    auto const & types = emission.metamodel.types;
    if (std::any_of(types.begin(), types.end(), [](auto const & type) { return isNameOfVisitor(type->name); })) {
        return {};
    }
    std::vector<VisitorFiles> result;
    for (VisitorKind const & kind : kKinds) {
        std::string const name(kind.name);
        Emission const known = emission.knowing({{"V", name},
                                                 {"banner", emission.banner({}, "write/Visitors.cpp")},
                                                 {"parameter", kind.visitsMutable ? ", bool forWriting" : ""}});
        result.push_back({name, header(known, kind), source(known, kind)});
        result.push_back({name + "Empty", emptyHeader(known, kind), emptySource(known, kind)});
    }
    return result;
}

} // namespace zelgen
