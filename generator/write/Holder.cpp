#include "write/Emit.h"
#include "write/Fields.h"

namespace zelgen {
namespace {

/// The stored values, flat in one struct.
std::string fields(Emission const & emission, Class const & of) {
    std::string members;
    std::string seldom;
    for (Property const * const p : of.fields) {
        (p->isSeldom ? seldom : members) += fieldText::declaration(*p);
    }
    for (Property const * const p : of.fields) {
        members += fieldText::bitDeclarations(*p);
    }
    if (!seldom.empty()) {
        members = emission.print(R"(
/// Those that few objects have.
struct internal_Seldom {
    $seldom$
};

ZEL::internal::SeldomFields<internal_Seldom> internal_seldom;
$members$
)",
                                 {{"seldom", seldom}, {"members", members}});
    }
    return emission.print(R"(
/// The stored properties of $X$: own ones, then inherited ones in their order.
struct $X$Fields {
    $members$
};
)",
                          {{"members", members}});
}

std::set<std::string> headersOf(Class const & of, Holder holder, std::string const & fields) {
    std::set<std::string> headers{Emission::header(of, "Intf")};
    if (holder == Holder::Body) {
        headers.insert({of.isModel ? "ZEL/metamodel/ModelCore.h" : "ZEL/metamodel/BodyCore.h",
                        Emission::header(of, "DeviantImpl")});
        return headers;
    }
    headers.insert("ZEL/metamodel/StateCore.h");
    static std::map<std::string, std::string> const fieldTypes{
        {"TextField", "ZEL/metamodel/Fields.h"},
        {"PersistentSequence", "ZEL/sequences/PersistentSequence.h"},
        {"PersistentTextSequence", "ZEL/sequences/PersistentTextSequence.h"},
        {"defaultValue", "ZEL/metamodel/DefaultValue.h"},
        {"SeldomFields", "ZEL/metamodel/SeldomFields.h"},
    };
    for (auto const & [word, header] : fieldTypes) {
        if (mentions(fields, word)) {
            headers.insert(header);
        }
    }
    for (Property const * const p : of.fields) {
        if (p->field == FieldKind::Value) {
            headers.insert(Emission::valueHeader(*p->type));
        }
    }
    return headers;
}

/// How objects of the class end: without the destructors of their interfaces, which have nothing to end. Only these
/// would need the tables of the interfaces as they are while an object is made or destroyed, several times the size of
/// all that is used of a class.
std::string end(Emission const & emission, Class const & of, Holder holder) {
    if (holder == Holder::State) {
        return emission.print(R"(
/// A state ends by `delete`, which runs no destructor but those of its values.
~$X$DeviantImpl() override { internal_neverDestroyed(); }
static void operator delete($X$DeviantImpl * state, std::destroying_delete_t, std::size_t size) noexcept {
    state->fields.~$X$Fields();
    internal_end(*state, size);
}
using StateCore::operator delete;
)");
    }
    if (of.isModel) {
        return "";
    }
    return emission.print(R"(
/// A body ends by `delete`, which runs no destructor.
~$X$Impl() override { internal_neverDestroyed(); }
static void operator delete($X$Impl * body, std::destroying_delete_t, std::size_t size) noexcept {
    internal_end(*body, size);
}
using BodyCore::operator delete;
)");
}

/// What the class has in addition to the operations of properties.
std::string ownDeclarations(Emission const & emission, Holder holder) {
    if (holder == Holder::Body) {
        return emission.print(R"(
[[nodiscard]] ZEL::internal::ClassDescriptor const & internal_descriptor() const noexcept override;
)");
    }
    return emission.print(R"(
[[nodiscard]] std::size_t getByteSize() const override;
[[nodiscard]] ZEL::internal::ClassDescriptor const & internal_stateDescriptor() const noexcept override;

/// Makes this state a copy of another one.
void assign($X$DeviantImpl const & other);
)");
}

std::string ownDefinitions(Emission const & emission, Holder holder) {
    if (holder == Holder::Body) {
        return emission.print(R"(
ZEL::internal::ClassDescriptor const & $X$Impl::internal_descriptor() const noexcept { return descriptor(); }
)");
    }
    return emission.print(R"(
std::size_t $X$DeviantImpl::getByteSize() const { return sizeof($X$DeviantImpl); }

ZEL::internal::ClassDescriptor const & $X$DeviantImpl::internal_stateDescriptor() const noexcept {
    return descriptor();
}

void $X$DeviantImpl::assign($X$DeviantImpl const & other) {
    assignCore(other);
    fields = other.fields;
}
)");
}

/// The end of the class: the values of a state, or the access of a body to those of its states.
std::string values(Emission const & emission, Holder holder) {
    if (holder == Holder::State) {
        return emission.print("    $X$Fields fields;\n");
    }
    return emission.print(R"(
private:
    [[nodiscard]] $X$Fields const & read(ZEL::Deviant deviant) const {
        return static_cast<$X$DeviantImpl const &>(*readState(deviant)).fields;
    }
    [[nodiscard]] $X$Fields & write(ZEL::Deviant deviant) const {
        return static_cast<$X$DeviantImpl &>(*writeState(deviant)).fields;
    }
)");
}

/// "public ZEL::internal::BodyCore, public virtual ZEL::NSInterface::CommentIntf".
std::string bases(Class const & of, Holder holder) {
    std::string const core = holder == Holder::State ? "StateCore" : of.isModel ? "ModelCore" : "BodyCore";
    return "public ZEL::internal::" + core + ", public virtual " + interfaceOf(of);
}

/// The interfaces of the class in base order.
std::string interfaces(Class const & of) {
    std::vector<std::string> names;
    for (Class const * const c : of.line()) {
        names.push_back(interfaceOf(*c));
    }
    return Printer::join(names, ",\n");
}

} // namespace

std::string emitHolderHeader(Emission const & emission, Class const & of, Holder holder) {
    std::string const structure = holder == Holder::State ? fields(emission, of) : "";
    std::vector<std::string> members{end(emission, of, holder), ownDeclarations(emission, holder)};
    for (Property const * const p : of.fields) {
        members.push_back(PropertyForm::of(*p).overrides(emission.printerFor(*p), *p, holder));
    }
    std::string const definition = emission.print(
        R"(
/// $about$
class $API$ $C$ final : $bases$ {
public:
    [[nodiscard]] void * cast(ZEL::CooperativeVisitor::internal::ClassInfo const & info) const override;
    [[nodiscard]] ZEL::CooperativeVisitor::internal::MethodInfo
    getVisitMethod(ZEL::CooperativeVisitor::internal::VisitTable const & table) const override;
    $members$

$values$
};
)",
        {{"about", holder == Holder::State ? "The state of a " + of.name + " in one deviant."
                                           : "The body of a " + of.name + '.'},
         {"C", holderName(of, holder)},
         {"bases", bases(of, holder)},
         {"members", Printer::blocks(members)},
         {"values", values(emission, holder)}});
    return emission.print(R"(
$banner$
#pragma once

$headers$

namespace $ns$::NSImplementation {

$classes$

} // namespace $ns$::NSImplementation
)",
                          {{"banner", emission.banner(of.mark, "write/Holder.cpp")},
                           {"headers", Emission::includes(headersOf(of, holder, structure))},
                           {"classes", Printer::blocks({structure, definition})}});
}

std::string emitHolderSource(Emission const & emission, Class const & of, Holder holder) {
    std::vector<std::string> blocks{ownDefinitions(emission, holder)};
    std::set<std::string> headers;
    for (Property const * const p : of.fields) {
        Printer const print = emission.printerFor(*p).knowing({{"C", holderName(of, holder)}});
        blocks.push_back(PropertyForm::of(*p).overrideDefinitions(print, *p, holder));
        if (!p->many) {
            headers.insert(Emission::valueHeader(*p->type));
        }
    }
    std::string const members = Printer::blocks(blocks);
    headers.merge(Emission::supportFor(members));
    std::set<std::string> known = headersOf(of, holder, holder == Holder::State ? fields(emission, of) : "");
    return emission.print(R"(
$banner$
#include <$header$>

$headers$

namespace $ns$::NSImplementation {

namespace {

ZEL::CooperativeVisitor::internal::CastTable const & castsOf$C$() {
    return ZEL::CooperativeVisitor::internal::castTable<$C$,
        $interfaces$
    >();
}

} // namespace

void * $C$::cast(ZEL::CooperativeVisitor::internal::ClassInfo const & info) const {
    return castsOf$C$().cast(info, const_cast<$C$ *>(this));
}

ZEL::CooperativeVisitor::internal::MethodInfo
$C$::getVisitMethod(ZEL::CooperativeVisitor::internal::VisitTable const & table) const {
    return castsOf$C$().visitMethod(table, const_cast<$C$ *>(this));
}

$members$

} // namespace $ns$::NSImplementation
)",
                          {{"banner", emission.banner(of.mark, "write/Holder.cpp")},
                           {"header", Emission::header(of, holder == Holder::State ? "DeviantImpl" : "Impl")},
                           {"headers", Emission::includes(headers, known)},
                           {"C", holderName(of, holder)},
                           {"interfaces", interfaces(of)},
                           {"members", members}});
}

} // namespace zelgen
