#include "write/Emit.h"
#include "write/forms/PropertyForm.h"

namespace zelgen {

/// The body of an object of the class: identity and count are in its base; what is generated is the fast road from an
/// operation to the field.
std::string emitBodyHeader(Emission const & emission, Class const & of) {
    std::vector<std::string> members;
    for (Property const * const p : of.fields) {
        members.push_back(PropertyForm::of(*p).bodyDeclarations(emission.print, *p));
    }
    std::string const core = of.isModel ? "ModelCore" : "BodyCore";
    return emission.print(
        R"(
$banner$
#pragma once

$headers$

namespace $ns$::NSImplementation {

/// The body of a $X$.
class $API$ $X$Impl final : public ZEL::internal::$Core$, public virtual $ns$::NSInterface::$X$Intf {
public:
    [[nodiscard]] ZEL::internal::ClassDescriptor const & internal_descriptor() const noexcept override;
    [[nodiscard]] void * cast(ZEL::CooperativeVisitor::internal::ClassInfo const & info) const override;
    [[nodiscard]] ZEL::CooperativeVisitor::internal::MethodInfo
    getVisitMethod(ZEL::CooperativeVisitor::internal::VisitTable const & table) const override;

    $members$

private:
    [[nodiscard]] $X$Fields const & read(ZEL::Deviant deviant) const {
        return static_cast<$X$DeviantImpl const &>(*readState(deviant)).fields;
    }
    [[nodiscard]] $X$Fields & write(ZEL::Deviant deviant) const {
        return static_cast<$X$DeviantImpl &>(*writeState(deviant)).fields;
    }
};

} // namespace $ns$::NSImplementation
)",
        {{"banner", emission.banner(of.mark, "write/Body.cpp")},
         {"headers", Emission::includes({"ZEL/metamodel/" + core + ".h", Emission::header(of, "DeviantImpl"),
                                         Emission::header(of, "Intf")})},
         {"ns", of.home->cppNamespace},
         {"API", emission.exportMacro},
         {"X", of.name},
         {"Core", core},
         {"members", Printer::blocks(members)}});
}

std::string emitBodySource(Emission const & emission, Class const & of) {
    std::set<std::string> headers{"ZEL/Boolean.h", "ZEL/String.h"};
    std::vector<std::string> members;
    for (Property const * const p : of.fields) {
        headers.insert(Emission::valueHeader(*p->type));
        members.push_back(PropertyForm::of(*p).bodyDefinitions(emission.print, of, *p));
    }
    return emission.print(R"(
$banner$
#include <$header$>

$headers$

namespace $ns$::NSImplementation {

namespace {

ZEL::CooperativeVisitor::internal::CastTable const & casts(std::type_identity<$X$Impl>) {
    return ZEL::CooperativeVisitor::internal::castTable<$X$Impl,
        $interfaces$
    >();
}

} // namespace

ZEL::internal::ClassDescriptor const & $X$Impl::internal_descriptor() const noexcept { return descriptor(); }

void * $X$Impl::cast(ZEL::CooperativeVisitor::internal::ClassInfo const & info) const {
    return casts(std::type_identity<$X$Impl>()).cast(info, const_cast<$X$Impl *>(this));
}

ZEL::CooperativeVisitor::internal::MethodInfo
$X$Impl::getVisitMethod(ZEL::CooperativeVisitor::internal::VisitTable const & table) const {
    return casts(std::type_identity<$X$Impl>()).visitMethod(table, const_cast<$X$Impl *>(this));
}

$members$

} // namespace $ns$::NSImplementation
)",
                          {{"banner", emission.banner(of.mark, "write/Body.cpp")},
                           {"header", Emission::header(of, "Impl")},
                           {"headers", Emission::includes(headers)},
                           {"ns", of.home->cppNamespace},
                           {"X", of.name},
                           {"interfaces", castArguments(emission, of)},
                           {"members", Printer::blocks(members)}});
}

} // namespace zelgen
