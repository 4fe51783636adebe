#include <libvx/Externalizable.h>

namespace Quillon::System {

Externalizable::~Externalizable() = default;

} // namespace Quillon::System
