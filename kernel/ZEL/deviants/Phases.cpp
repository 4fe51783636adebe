#include <ZEL/base/GiveBackCount.h>
#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/deviants/DeviantManager.h>
#include <ZEL/deviants/Phases.h>

#include <utility>

namespace ZEL::internal {

void Phases::makeRoom(std::size_t holders) {
    if (fHolders.capacity() < fHolders.size() + holders) {
        fHolders.reserve(fHolders.size() + 2 * holders);
    }
}

void Phases::keep(std::unique_ptr<ListenerHolderBase> holder) noexcept {
    if (areRunning()) {
        fHolders.push_back(std::move(holder));
    }
}

void Phases::dropKept() noexcept {
    // What ends here may bring in more: a listener's destructor can dismiss another one.
    while (!fHolders.empty() || fRecords != nullptr) {
        if (fRecords != nullptr) {
            auto const record = std::move(fRecords);
            fRecords = std::move(record->next);
        } else {
            // Its room stays, for those that go next.
            auto const holder = std::move(fHolders.front());
            fHolders.erase(fHolders.begin());
        }
    }
}

PhaseScope::PhaseScope(Phases & phases) : fPhases(phases), fModel(phases.fManager.internal_body()) {
    // A model that nobody holds yet is still being built, and must not end with this count.
    if (fModel != nullptr && fModel->numRef() == 0) {
        fModel = nullptr;
    }
    if (fModel != nullptr) {
        fModel->incRef();
    }
    ++fPhases.fRunning;
}

PhaseScope::~PhaseScope() {
    if (--fPhases.fRunning == 0) {
        fPhases.dropKept();
    }
    if (fModel != nullptr) {
        giveBackCount(*fModel);
    }
}

} // namespace ZEL::internal
