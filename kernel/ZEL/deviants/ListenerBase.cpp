#include <ZEL/deviants/ListenerBase.h>

namespace ZEL {

ListenerBase::~ListenerBase() = default;

void ListenerBase::onDeviantDestroyed() {}

} // namespace ZEL
