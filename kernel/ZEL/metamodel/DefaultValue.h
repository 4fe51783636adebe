#pragma once

#include <ZEL/Export.h>

#include <hasp_util/TypeInfo.h>
#include <hasp_util/any.h>

namespace ZEL::internal {

/// The value that a metamodel's text stands for. Throws the text of the type for one that stands for none.
[[nodiscard]] ZEL_API HASP::any defaultValueOf(HASP::TypeInfo const & type, char const * text);

/// The initial value of a property whose type `V` is written by hand, so that its constants are not known when classes
/// are generated.
template <class V> [[nodiscard]] V defaultValue(char const * text) {
    return HASP::any_cast<V>(defaultValueOf(V::getTypeInfo(), text));
}

} // namespace ZEL::internal
