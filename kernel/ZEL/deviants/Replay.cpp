#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/deviants/DeviantImpl.h>
#include <ZEL/deviants/DeviantManager.h>
#include <ZEL/deviants/Replay.h>

#include <utility>
#include <vector>

namespace ZEL::internal {

namespace {

/// What an object is to become, made before it is put in place.
class NewState {
public:
    NewState(ClassObjectIntf & object, Deviant source)
        : fObject(object), fState(object.deviant_getCopyOfDeviation(source)) {
        if (!Deviant::isRealState(fState)) {
            fState = static_cast<ObjectIntf *>(Deviant::FallbackToRoot); // it follows the root from now on
        }
    }
    NewState(NewState && other) noexcept : fObject(other.fObject), fState(std::exchange(other.fState, nullptr)) {}
    NewState & operator=(NewState &&) = delete;
    ~NewState() { fObject.deviant_destroyState(fState); }

    void putInto(Deviant target) { fObject.internal_setDeviation(target, std::exchange(fState, nullptr)); }

private:
    ClassObjectIntf & fObject;
    ObjectIntf * fState;
};

void endState(ClassObjectIntf & object, Deviant target) {
    ObjectIntf * const state = object.internal_getDeviation(target);
    if (Deviant::isRealState(state)) {
        state->destroy(target);
    }
    object.internal_destroyDeviation(target);
}

} // namespace

Replayer::~Replayer() = default;

void carryOut(ChangedBodies const & bodies, Deviant target, Deviant source) {
    std::vector<NewState> states;
    states.reserve(bodies.created.size() + bodies.modified.size());
    for (auto const * const objects : {&bodies.created, &bodies.modified}) {
        for (ClassObjectIntf * const object : *objects) {
            states.emplace_back(*object, source);
        }
    }
    if (DeviantImpl * const named = target.isRootDeviant() ? nullptr : target.getImpl()) {
        named->states().makeRoom(states.size() + bodies.deleted.size());
    }
    // An object refers to others and not to their states, so the order among them does not matter.
    for (NewState & state : states) {
        state.putInto(target);
    }
    for (ClassObjectIntf * const object : bodies.deleted) {
        endState(*object, target);
    }
}

void replay(ReplayKind kind, ChangedBodies const & bodies, Deviant target, Deviant source) {
    if (Replayer * const replayer = target.getDeviantManager()->internal_replayer()) {
        replayer->replay(kind, bodies, target, source);
    } else {
        carryOut(bodies, target, source);
    }
}

} // namespace ZEL::internal
