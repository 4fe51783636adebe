#include <ZEL/base/Cleanup.h>
#include <ZEL/base/Exception.h>
#include <ZEL/base/LeakChecker.h>

namespace ZEL {

void LeakChecker::beginTrackLifetime() {
    fLifetimes.emplace_back(Cleanup::numberOfActiveObjects(), Cleanup::creationNumber());
}

void LeakChecker::endTrackLifetime() {
    if (!Cleanup::isTrackingObjects()) {
        fLifetimes.clear();
        return;
    }
    if (fLifetimes.empty()) {
        return;
    }
    int const creationNumber = fLifetimes.back().second;
    fLifetimes.pop_back();
    if (Cleanup::printLeakedObjects(creationNumber) > 0) {
        fLifetimes.clear();
        raiseInternalError("detected object leaks");
    }
}

} // namespace ZEL
