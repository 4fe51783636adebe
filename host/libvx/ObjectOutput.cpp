#include <libvx/ObjectOutput.h>

namespace Quillon::System {

ObjectOutput::~ObjectOutput() = default;

} // namespace Quillon::System
