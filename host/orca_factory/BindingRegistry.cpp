#include <orca_factory/BindingRegistry.h>

namespace orca::factory::basic {

// Nothing is ever bound here. The operation stays out of line so that the host's own library can answer it.
void BindingRegistry::retract(void const *) noexcept {}

} // namespace orca::factory::basic
