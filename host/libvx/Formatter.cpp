#include <libvx/Formatter.h>

namespace Quillon::System {

Formatter::~Formatter() = default;

} // namespace Quillon::System
