#include <ZEL/ListenerHolderBase.h>

namespace ZEL::internal {

ListenerHolderBase::~ListenerHolderBase() = default;

} // namespace ZEL::internal
