#pragma once

#include <ZEL/base/Exception.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/DeviantImpl.h>

namespace ZEL::internal {

/// The body of `deviant`. Raises `textOnNull` for the null deviant, and the text of a dead model once the manager has
/// gone.
inline DeviantImpl & requireDeviant(Deviant deviant, char const * textOnNull) {
    if (!deviant.isNotNull()) {
        raiseInternalError(textOnNull);
    }
    DeviantImpl * const impl = deviant.getImpl();
    if (impl == nullptr) {
        raiseInternalError("object accessed after its model has been destroyed");
    }
    return *impl;
}

inline NSInterface::ObjectIntf * sentinel(void * value) noexcept {
    return static_cast<NSInterface::ObjectIntf *>(value);
}

} // namespace ZEL::internal
