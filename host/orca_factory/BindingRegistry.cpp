#include <orca_factory/BindingRegistry.h>

namespace orca::factory::basic {

// Nothing is ever bound here. The operation is not inline, so that the host's own library can provide it.
void BindingRegistry::retract(void const *) noexcept {}

} // namespace orca::factory::basic
