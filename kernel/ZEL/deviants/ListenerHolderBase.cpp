#include <ZEL/deviants/ListenerHolderBase.h>

namespace ZEL::internal {

ListenerHolderBase::~ListenerHolderBase() = default;

} // namespace ZEL::internal
