#pragma once

#include <hasp_util/Export.h>

namespace orca::factory::basic {

/// The host's table of bindings from the address of an object to its counterparts elsewhere.
///
/// The library makes no bindings; it only retracts an address before the memory of the object is used again.
class HOST_API BindingRegistry {
public:
    /// Removes what is bound to the address. Any address is accepted, including null and those without a binding.
    static void retract(void const * address) noexcept;
};

} // namespace orca::factory::basic
