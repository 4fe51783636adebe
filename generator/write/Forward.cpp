#include "write/Emit.h"

namespace zelgen {
namespace {

std::string exportMacro(Emission const & emission) {
    return emission.metamodel.isBuiltIn() ? "" : emission.print(R"(

#ifndef $API$
#define $API$ __attribute__((visibility("default")))
#endif
)");
}

} // namespace

/// The names of all classes, for headers that only pass them on.
std::string emitForward(Emission const & emission) {
    std::string headers = emission.metamodel.isBuiltIn() ? "#include <ZEL/Export.h>\n" : "";
    for (Metamodel const * const other : emission.metamodel.dependencies) {
        headers += "#include <" + other->includeDirectory + "/Forward.h>\n";
    }
    std::string handles;
    std::string interfaces;
    for (auto const & type : emission.metamodel.types) {
        handles += "class " + type->name + ";\n";
        if (type->kind == TypeKind::Class) {
            handles += "class Immutable" + type->name + ";\n";
            interfaces += "class " + type->name + "Intf;\n";
        }
    }
    std::string const support = !emission.metamodel.isBuiltIn() ? "" : R"(
template <class T> class ImmutableSequence;
template <class T> class Sequence;
template <class Tag, class H> class PropertyAndObject;

namespace Generic {
struct SequenceField;
} // namespace Generic

namespace internal {
class PersistentSequence;
class PersistentTextSequence;
struct ClassDescriptor;
struct PropertyDescriptor;
} // namespace internal
)";
    return emission.print(R"(
$banner$
#pragma once

$headers$
$macro$

namespace $ns$ {

$handles$
$support$

namespace NSInterface {
$interfaces$
} // namespace NSInterface

} // namespace $ns$
)",
                          {{"banner", emission.banner({}, "write/Forward.cpp")},
                           {"headers", headers},
                           {"macro", exportMacro(emission)},
                           {"handles", handles},
                           {"support", support},
                           {"interfaces", interfaces}});
}

} // namespace zelgen
