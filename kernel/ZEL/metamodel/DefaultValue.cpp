#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/DefaultValue.h>

#include <hasp_util/ErrorHolder.h>

namespace ZEL::internal {

HASP::any defaultValueOf(HASP::TypeInfo const & type, char const * text) {
    HASP::ErrorHolder errors;
    HASP::any value = type.convertFromString(text, errors);
    if (errors.hasError()) {
        raiseInternalError(errors.getMessage());
    }
    return value;
}

} // namespace ZEL::internal
