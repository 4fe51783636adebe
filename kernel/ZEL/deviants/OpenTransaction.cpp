#include <ZEL/base/Exception.h>
#include <ZEL/deviants/OpenTransaction.h>

namespace ZEL::internal {

namespace {

ClassObjectIntf & bodyOf(StateMap::Key key) noexcept { return *const_cast<ClassObjectIntf *>(key); }

} // namespace

void OpenTransaction::begin(std::string const & name, std::int32_t level) {
    if (fDepth == 0) {
        requireNothingSaved();
        fChanges.name = name;
        fChanges.changeLevel = level;
        fRefusedBy = nullptr;
        fIsWithin = true;
        fIsKnownToBodies = true;
    }
    setDepth(fDepth + 1);
}

void OpenTransaction::requireNothingSaved() const {
    if (!fChanges.states.empty()) {
        raiseInternalError("executeChangeSetOnTop: current changeset is not empty");
    }
}

void OpenTransaction::setDepth(std::int32_t depth) noexcept {
    static std::uint64_t lastTransaction = 0;
    if (depth == 0) {
        fIdentity.openTransaction = 0;
    } else if (fDepth == 0) {
        fIdentity.openTransaction = ++lastTransaction;
    }
    fDepth = depth;
    showSavedStates();
}

void OpenTransaction::endInto(ChangeSet & record) noexcept {
    record.swap(fChanges);
    fIsWithin = false;
    setDepth(0);
}

void OpenTransaction::close() noexcept {
    fChanges.states.destroyAndClear();
    fChanges.name.clear();
    setDepth(0);
}

void OpenTransaction::saveOver(StateMap::Key object, StateMap::State state) {
    StateMap::State const former = save(object, state);
    if (former != state) {
        bodyOf(object).deviant_destroyState(former);
    }
}

void OpenTransaction::putBackSavedStates() noexcept {
    fChanges.states.replaceStates([this](StateMap::Key key, StateMap::State saved) -> StateMap::State {
        Deviant const deviant(&fIdentity);
        StateMap::State const present = key->internal_getDeviation(deviant);
        if (present == nullptr && !Deviant::isRealState(saved)) {
            return saved; // nothing has come about that must go
        }
        bodyOf(key).internal_setDeviation(deviant, saved);
        return nullptr;
    });
}

} // namespace ZEL::internal
