#include <ZEL/base/Exception.h>
#include <ZEL/serializer/NamespaceManager.h>

#include <utility>

namespace ZEL::Serializer {

void NamespaceManager::popContext() {
    if (fSaved.empty()) {
        raiseInternalError("popContext() invalid on empty Namespace stack");
    }
    fCurrent = std::move(fSaved.back());
    fSaved.pop_back();
}

void NamespaceManager::clear() {
    fSaved.clear();
    fCurrent = NamespaceContext();
}

} // namespace ZEL::Serializer
