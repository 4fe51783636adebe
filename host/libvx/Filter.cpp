#include <libvx/Filter.h>

namespace Quillon::System {

Filter::~Filter() = default;

} // namespace Quillon::System
