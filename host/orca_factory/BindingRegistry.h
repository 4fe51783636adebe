#pragma once

#include <hasp_util/Export.h>

namespace orca::factory::basic {

/// The host's table of bindings from an object's address to its counterparts elsewhere.
///
/// The library makes no bindings; it only promises to take an address back before the object's memory is used again.
class HOST_API BindingRegistry {
public:
    /// Drops what is bound to the address. An address that nothing is bound to, null included, is accepted.
    static void retract(void const * address) noexcept;
};

} // namespace orca::factory::basic
