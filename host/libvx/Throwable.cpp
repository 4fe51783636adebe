#include <libvx/Throwable.h>

namespace Quillon::System {

Throwable::~Throwable() = default;

} // namespace Quillon::System
