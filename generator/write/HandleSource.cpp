#include "write/Emit.h"
#include "write/Handles.h"
#include "write/forms/PropertyForm.h"

namespace zelgen {
namespace {

std::set<std::string> headersOf(Emission const & emission, Class const & of, std::string const & members) {
    std::set<std::string> headers{"ZEL/metamodel/Class.h", "ZEL/metamodel/ClassRuntime.h",
                                  "ZEL/metamodel/Descriptors.h", "ZEL/metamodel/Model.h"};
    headers.merge(factoryHeaders(emission, of));
    headers.merge(Emission::supportFor(members));
    return headers;
}

std::string tags(Emission const & emission, Class const & of) {
    std::vector<std::string> blocks;
    for (Property const * const p : of.reflectiveOwn()) {
        blocks.push_back(emission.print(R"(
ZEL::internal::PropertyDescriptor const & $X$::$P$T::descriptor() noexcept { return $p$; }
)",
                                        {{"P", p->capital}, {"p", descriptorOf(*p)}}));
    }
    return Printer::blocks(blocks);
}

std::string deviantCreator(Emission const & emission, Class const & of, std::string const & handle) {
    return !of.isModel ? ""
                       : emission.print(R"(
$H$ $H$::createDeviantWithName(ZEL::String const & name) const {
    NSInterface::$X$Intf * const body = getImplementation();
    if (!getDeviant().isRootDeviant()) {
        ZEL::raiseInternalError("createDeviantWithName called on non-root deviant");
    }
    return $H$(body, body->createDeviantWithName(getDeviant(), name));
}
)",
                                        {{"H", handle}});
}

} // namespace

std::string emitHandleSource(Emission const & emission, Class const & of) {
    std::string const header = Emission::header(of);
    std::string const members =
        Printer::blocks({deviantCreator(emission, of, "Immutable" + of.name), deviantCreator(emission, of, of.name)});
    std::set<std::string> known = headersOfHandle(of);
    known.insert(header);
    return emission.print(R"(
$banner$
#include <$header$>

$headers$

namespace $ns$ {

char const * Immutable$X$::getOrcaName() noexcept { return "$P$.Immutable$X$"; }

char const * $X$::getOrcaName() noexcept { return "$P$.$X$"; }

std::size_t Immutable$X$::getTypeByteSize() noexcept { return $I$::descriptor().bodySize; }

ZEL::ImmutableClass Immutable$X$::MetaClass() {
    ZEL::internal::ClassRuntime const & runtime = *$I$::descriptor().runtime;
    return ZEL::ImmutableClass(runtime.metaClass(), runtime.deviant());
}

ZEL::ImmutableClass Immutable$X$::getMetaClass() const {
    return static_cast<ZEL::NSInterface::ClassObjectIntf const *>(getImplementation())->getMetaClass(getDeviant());
}

Immutable$X$ Immutable$X$::asDeviant(ZEL::ImmutableModel const & model) const {
    return Immutable$X$(getImplementation(), model.getDeviant());
}

$X$ $X$::asDeviant(ZEL::ImmutableModel const & model) const { return $X$(getImplementation(), model.getDeviant()); }

$members$

$factory$

$tags$

} // namespace $ns$
)",
                          {{"banner", emission.banner(of.mark, "write/HandleSource.cpp")},
                           {"header", header},
                           {"headers", Emission::includes(headersOf(emission, of, members), known)},
                           {"P", of.home->prefix},
                           {"I", operationsOf(of)},
                           {"members", members},
                           {"factory", factoryHandleDefinitions(emission, of)},
                           {"tags", tags(emission, of)}});
}

} // namespace zelgen
