#include "write/Emit.h"
#include "write/Handles.h"
#include "write/Operations.h"
#include "write/forms/PropertyForm.h"

namespace zelgen {

/// Inline operations use values, so the classes of these must be complete. Operations that return anything else are
/// templates, made where they are called: for these, forward declarations do, and the library of the metamodel need not
/// contain them all for each class.
std::set<std::string> headersOfHandle(Class const & of) {
    std::set<std::string> headers{"ZEL/metamodel/ClassObjectHandle.h", "ZEL/metamodel/PropertyAndObject.h",
                                  Emission::header(of, "Intf")};
    if (!of.hasGeneratedInterface) {
        headers.insert(of.home->includeDirectory + "/Forward.h");
    }
    for (Class const * const super : of.superclasses) {
        headers.insert(Emission::header(*super));
    }
    for (Property const * const p : handleProperties(of)) {
        if (p->type->kind != TypeKind::Class) {
            headers.insert(Emission::shapeHeader(*p->type));
        }
    }
    return headers;
}

namespace {

/// The operations of `ImmutableX`, or those that `X` adds.
std::string operations(Emission const & emission, Class const & of, bool immutable) {
    std::string text;
    for (Property const * const p : handleProperties(of)) {
        PropertyForm const & form = PropertyForm::of(*p);
        Printer const print = emission.printerFor(*p);
        text += immutable ? form.readers(print, *p) : form.writers(print, *p);
    }
    for (Operation const * const operation : handleOperations(of)) {
        if (operationText::isOnHandle(*operation, immutable)) {
            text += operationText::handleOperation(emission.print, *operation, immutable);
        }
    }
    return text;
}

std::string tags(Emission const & emission, Class const & of) {
    std::string text;
    for (Property const * const p : of.reflectiveOwn()) {
        text += PropertyForm::of(*p).tag(emission.printerFor(*p));
    }
    return text;
}

/// `P_()` for every property, with the tag of the class that introduces it.
std::string pairs(Emission const & emission, Class const & of) {
    std::string text;
    for (Property const * const p : handleProperties(of)) {
        if (!p->isHidden) {
            text +=
                emission.print(R"(
template <class R = ZEL::PropertyAndObject<$tag$, $X$>> [[nodiscard]] R $P$_() const { return R(*this); }
)",
                               {{"tag", (p->owner == &of ? "" : p->owner->type->cppName() + "::") + p->capital + 'T'},
                                {"P", p->capital}});
        }
    }
    return text;
}

/// Models return handles on themselves in another deviant.
std::string deviantCreator(Emission const & emission, Class const & of, std::string const & handle) {
    return !of.isModel ? ""
                       : emission.print(R"(
/// This model in the deviant of the name, which is made unless it exists. Throws
/// "createDeviantWithName called on non-root deviant".
[[nodiscard]] $H$ createDeviantWithName(ZEL::String const & name) const;
)",
                                        {{"H", handle}});
}

} // namespace

std::string emitHandleHeader(Emission const & emission, Class const & of) {
    return emission.print(R"(
$banner$
#pragma once

$headers$

namespace $ns$ {

/// Handle on a $X$, for reading.
class $API$ Immutable$X$ : public ZEL::ImmutableClassObjectHandle<NSInterface::$X$Intf> {
public:
    using ImmutableClassObjectHandle::ImmutableClassObjectHandle;
    Immutable$X$() noexcept = default;

    [[nodiscard]] static char const * getOrcaName() noexcept;
    /// The type of such handles as values. A template, so that it costs only who calls it.
    template <class H = Immutable$X$> [[nodiscard]] static HASP::TypeInfo const & getTypeInfo() {
        return ZEL::internal::handleTypeInfo<H>();
    }
    [[nodiscard]] static std::size_t getTypeByteSize() noexcept;
    [[nodiscard]] static ZEL::ImmutableClass MetaClass();
    [[nodiscard]] ZEL::ImmutableClass getMetaClass() const;
    /// The same object in the deviant of `model`.
    [[nodiscard]] Immutable$X$ asDeviant(ZEL::ImmutableModel const & model) const;
    $immutableDeviantCreator$

    $readers$
};

/// Handle on a $X$, for reading and writing.
class $API$ $X$ : public ZEL::ClassObjectHandle<Immutable$X$> {
public:
    using ClassObjectHandle::ClassObjectHandle;
    $X$() noexcept = default;

    [[nodiscard]] static char const * getOrcaName() noexcept;
    template <class H = $X$> [[nodiscard]] static HASP::TypeInfo const & getTypeInfo() {
        return ZEL::internal::handleTypeInfo<H>();
    }
    /// The same object in the deviant of `model`.
    [[nodiscard]] $X$ asDeviant(ZEL::ImmutableModel const & model) const;
    $deviantCreator$

    $writers$
    $factory$

    $tags$

    $pairs$
};

} // namespace $ns$
)",
                          {{"banner", emission.banner(of.mark, "write/HandleHeader.cpp")},
                           {"headers", Emission::includes(headersOfHandle(of))},
                           {"immutableDeviantCreator", deviantCreator(emission, of, "Immutable" + of.name)},
                           {"readers", operations(emission, of, true)},
                           {"deviantCreator", deviantCreator(emission, of, of.name)},
                           {"writers", operations(emission, of, false)},
                           {"factory", factoryHandleDeclarations(emission, of)},
                           {"tags", tags(emission, of)},
                           {"pairs", pairs(emission, of)}});
}

} // namespace zelgen
