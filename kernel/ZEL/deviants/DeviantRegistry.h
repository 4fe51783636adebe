#pragma once

#include <ZEL/Export.h>
#include <ZEL/deviants/Deviant.h>

#include <utility>

namespace ZEL {

class ReferenceCountingIntf;

/// Gives a pair of a body and a deviant one opaque address, for hosts that know an object by one pointer only.
///
/// One table for the process, made on first use and never freed. A body's ids go with the body.
class ZEL_API DeviantRegistry {
public:
    /// The same address for the same pair until `retract`; null for a null body.
    [[nodiscard]] static void * getId(ReferenceCountingIntf * body, Deviant deviant);
    /// The pair of an id that `getId` returned; (null, null deviant) for null.
    [[nodiscard]] static std::pair<void *, Deviant> getVariantInfo(void const * id);
    [[nodiscard]] static ReferenceCountingIntf * getReferenceCountingIntf(void const * id);
    /// Forgets all ids of the body. Every body's destructor calls it, from the first id on.
    static void retract(ReferenceCountingIntf * body) noexcept;
};

} // namespace ZEL
