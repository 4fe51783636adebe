#include <libvx/UserException.h>

namespace Quillon::System {

UserException::~UserException() = default;

} // namespace Quillon::System
