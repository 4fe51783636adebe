#include <libvx/IUserException.h>

namespace Quillon::System {

IUserException::~IUserException() = default;

} // namespace Quillon::System
