#include "write/Emit.h"
#include "write/Fields.h"
#include "write/forms/PropertyForm.h"

namespace zelgen {
namespace {

std::set<std::string> headersOf(Class const & of) {
    std::set<std::string> headers{"ZEL/metamodel/Fields.h", "ZEL/metamodel/StateCore.h",
                                  "ZEL/sequences/PersistentSequence.h", "ZEL/sequences/PersistentTextSequence.h",
                                  Emission::header(of, "Intf")};
    for (Property const * const p : of.fields) {
        if (p->field == FieldKind::Value) {
            headers.insert({Emission::valueHeader(*p->type), "ZEL/metamodel/DefaultValue.h"});
        }
    }
    return headers;
}

std::string fieldDeclarations(Emission const & emission, Class const & of) {
    std::string text;
    for (Property const * const p : of.fields) {
        text += fieldText::declaration(*p);
    }
    for (Property const * const p : of.fields) {
        text += fieldText::bitDeclarations(*p);
    }
    return emission.print("$text$", {{"text", text}});
}

} // namespace

std::string castArguments(Emission const & emission, Class const & of) {
    std::vector<std::string> interfaces{interfaceOf(of)};
    for (Class const * const ancestor : of.ancestors) {
        interfaces.push_back(interfaceOf(*ancestor));
    }
    return emission.print("$list$", {{"list", Printer::join(interfaces, ",\n")}});
}

/// The state of an object of the class in one deviant: a flat struct of all fields, and the operations over them.
std::string emitStateHeader(Emission const & emission, Class const & of) {
    std::vector<std::string> members;
    for (Property const * const p : of.fields) {
        members.push_back(PropertyForm::of(*p).stateDeclarations(emission.print, *p));
    }
    return emission.print(R"(
$banner$
#pragma once

$headers$

namespace $ns$::NSImplementation {

/// The stored properties of $X$: own ones, then inherited ones in their order.
struct $X$Fields {
    $fields$
};

/// The state of a $X$ in one deviant.
class $API$ $X$DeviantImpl final : public ZEL::internal::StateCore, public virtual $ns$::NSInterface::$X$Intf {
public:
    [[nodiscard]] void * cast(ZEL::CooperativeVisitor::internal::ClassInfo const & info) const override;
    [[nodiscard]] ZEL::CooperativeVisitor::internal::MethodInfo
    getVisitMethod(ZEL::CooperativeVisitor::internal::VisitTable const & table) const override;
    [[nodiscard]] std::size_t getByteSize() const override;
    [[nodiscard]] ZEL::internal::ClassDescriptor const & internal_stateDescriptor() const noexcept override;

    /// Makes this state a copy of another one.
    void assign($X$DeviantImpl const & other);

    $members$

    $X$Fields fields;
};

} // namespace $ns$::NSImplementation
)",
                          {{"banner", emission.banner(of.mark, "write/State.cpp")},
                           {"headers", Emission::includes(headersOf(of))},
                           {"ns", of.home->cppNamespace},
                           {"API", emission.exportMacro},
                           {"X", of.name},
                           {"fields", fieldDeclarations(emission, of)},
                           {"members", Printer::blocks(members)}});
}

std::string emitStateSource(Emission const & emission, Class const & of) {
    std::set<std::string> headers{"ZEL/Boolean.h", "ZEL/String.h", "ZEL/metamodel/PropertySupport.h",
                                  "ZEL/sequences/Sequence.h"};
    std::vector<std::string> members;
    for (Property const * const p : of.fields) {
        headers.insert(Emission::valueHeader(*p->type));
        members.push_back(PropertyForm::of(*p).stateDefinitions(emission.print, of, *p));
    }
    return emission.print(R"(
$banner$
#include <$header$>

$headers$

namespace $ns$::NSImplementation {

namespace {

ZEL::CooperativeVisitor::internal::CastTable const & casts(std::type_identity<$X$DeviantImpl>) {
    return ZEL::CooperativeVisitor::internal::castTable<$X$DeviantImpl,
        $interfaces$
    >();
}

} // namespace

void * $X$DeviantImpl::cast(ZEL::CooperativeVisitor::internal::ClassInfo const & info) const {
    return casts(std::type_identity<$X$DeviantImpl>()).cast(info, const_cast<$X$DeviantImpl *>(this));
}

ZEL::CooperativeVisitor::internal::MethodInfo
$X$DeviantImpl::getVisitMethod(ZEL::CooperativeVisitor::internal::VisitTable const & table) const {
    return casts(std::type_identity<$X$DeviantImpl>()).visitMethod(table, const_cast<$X$DeviantImpl *>(this));
}

std::size_t $X$DeviantImpl::getByteSize() const { return sizeof($X$DeviantImpl); }

ZEL::internal::ClassDescriptor const & $X$DeviantImpl::internal_stateDescriptor() const noexcept {
    return descriptor();
}

void $X$DeviantImpl::assign($X$DeviantImpl const & other) {
    assignCore(other);
    fields = other.fields;
}

$members$

} // namespace $ns$::NSImplementation
)",
                          {{"banner", emission.banner(of.mark, "write/State.cpp")},
                           {"header", Emission::header(of, "DeviantImpl")},
                           {"headers", Emission::includes(headers)},
                           {"ns", of.home->cppNamespace},
                           {"X", of.name},
                           {"interfaces", castArguments(emission, of)},
                           {"members", Printer::blocks(members)}});
}

} // namespace zelgen
