#include <libvx/IException.h>

namespace Quillon::System {

IException::~IException() = default;

} // namespace Quillon::System
