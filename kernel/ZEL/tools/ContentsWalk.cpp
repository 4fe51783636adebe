#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/CompositeFields.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/sequences/PersistentSequence.h>
#include <ZEL/tools/ContentsWalk.h>

#include <algorithm>
#include <cstddef>
#include <deque>
#include <memory>
#include <utility>
#include <vector>

namespace ZEL {

using internal::BodyCore;
using internal::ClassObjectIntf;
using internal::CompositeFields;
using internal::FieldDescriptor;
using internal::ObjectIntf;
using internal::PersistentSequence;
using internal::StateCore;

namespace {

/// Whether the object has ended, but its model has not: throws if that has, or if the deviant was removed.
bool hasEnded(BodyCore const & body, Deviant deviant) {
    if (body.deviant_isValid(deviant)) {
        return false;
    }
    if (!deviant.isValid() || deviant.hasModelBeenDestroyed()) {
        static_cast<void>(body.readState(deviant));
    }
    return true;
}

/// What is left of the contents of one object.
class Level {
public:
    /// From the field at `first` on, of the composite ones.
    Level(ImmutableClassObject const & object, BodyCore const & body, CompositeFields const & fields, std::size_t first,
          bool isListedAlone)
        : fObject(object), fBody(&body), fFields(&fields), fField(first), fIsListedAlone(isListedAlone) {}
    /// Of an object of an application's own making, whatever it says.
    Level(ImmutableClassObject const & object, bool isListedAlone)
        : fObject(object), fOthers(object.getContaineeZELs().toVector()), fIsListedAlone(isListedAlone) {}
    Level(Level const &) = delete;
    Level & operator=(Level const &) = delete;

    [[nodiscard]] ClassObjectIntf const * object() const noexcept { return fObject.getImplementationWithoutAssert(); }
    /// Whether the object was found in the list of a container that it does not know.
    [[nodiscard]] bool isListedAlone() const noexcept { return fIsListedAlone; }
    /// Null if there is none, or if the object has ended. Throws if its model has.
    [[nodiscard]] ObjectIntf * next() {
        if (fBody == nullptr) {
            return fPlace == fOthers.size()
                       ? nullptr
                       : const_cast<ClassObjectIntf *>(fOthers[fPlace++].getImplementationWithoutAssert());
        }
        // Also before a look into the list that is held: once the model has gone, its objects may have gone as well.
        if (hasEnded(*fBody, fObject.getDeviant())) {
            return nullptr;
        }
        StateCore const & state = *fBody->readState(fObject.getDeviant());
        while (fPlace == fSize) {
            if (fField == fFields->size()) {
                return nullptr;
            }
            FieldDescriptor const & field = *(*fFields)[fField++];
            if (field.sequence != nullptr) {
                hold(field.sequence(state));
            } else if (ObjectIntf * const value = field.get(state);
                       value != nullptr && internal::isContainment(*field.property)) {
                return value;
            }
        }
        ++fPlace;
        return static_cast<ObjectIntf *>(*fCursor++);
    }

private:
    /// As the list is now: a write to the model leaves it alone.
    void hold(PersistentSequence const & elements) noexcept {
        fElements = elements;
        fCursor = fElements.begin();
        fPlace = 0;
        fSize = fElements.size();
    }

    ImmutableClassObject fObject;
    BodyCore const * fBody = nullptr; ///< null for an object of an application's own making
    CompositeFields const * fFields = nullptr;
    std::size_t fField = 0; ///< the next one
    PersistentSequence fElements;
    PersistentSequence::Cursor fCursor;
    std::vector<ImmutableClassObject> fOthers; ///< of an object without a body of ours
    std::size_t fPlace = 0;                    ///< in `fElements`, or in `fOthers`
    std::size_t fSize = 0;
    bool fIsListedAlone;
};

} // namespace

/// The objects from the root to the present one's container, each with what is left of its contents.
class ContentsWalk::Levels {
public:
    explicit Levels(ImmutableClassObject const & root)
        : fRoot(root), fPresent(root.getImplementation()->internal_body()) {
        if (fPresent != nullptr) {
            static_cast<void>(fPresent->readState(deviant()));
        }
    }

    [[nodiscard]] Deviant deviant() const noexcept { return fRoot.getDeviant(); }
    /// `object` is the present one. Nothing for an object without contents, as most are, or one that has ended.
    void enter(ImmutableClassObject const & object) {
        if (fPresent == nullptr) {
            if (object.isValid()) {
                add(object, fPresentIsListedAlone);
            }
            return;
        }
        if (hasEnded(*fPresent, deviant())) {
            return;
        }
        StateCore const & state = *fPresent->readState(deviant());
        CompositeFields const & fields = internal::compositeFieldsOf(state.internal_stateDescriptor());
        for (std::size_t i = 0; i < fields.size(); ++i) {
            FieldDescriptor const & field = *fields[i];
            if (field.sequence != nullptr ? !field.sequence(state).empty() : field.get(state) != nullptr) {
                add(object, *fPresent, fields, i, fPresentIsListedAlone);
                return;
            }
        }
    }
    /// The next object that exists, which is then the present one; null if there is none.
    [[nodiscard]] ClassObjectIntf const * next() {
        while (!fLevels.empty()) {
            ObjectIntf * const child = fLevels.back().next();
            if (child == nullptr) {
                fListedAlone -= static_cast<std::size_t>(fLevels.back().isListedAlone());
                fLevels.pop_back();
                continue;
            }
            BodyCore const * const body = child->internal_body();
            ClassObjectIntf const & found =
                body != nullptr ? static_cast<ClassObjectIntf const &>(*body) : internal::classObject(*child);
            if ((body == nullptr || body->deviant_isValid(deviant())) && !leadsBack(found, body)) {
                fPresent = body;
                return &found;
            }
        }
        return nullptr;
    }

private:
    template <class... Arguments> void add(Arguments const &... arguments) {
        Level const & level = fLevels.emplace_back(arguments...);
        fListedAlone += static_cast<std::size_t>(level.isListedAlone());
    }

    /// States of a deviant and of the root can have combined to objects that contain each other. On the way round at
    /// least one of them is listed by a container that it does not know.
    [[nodiscard]] bool leadsBack(ClassObjectIntf const & child, BodyCore const * body) {
        ClassObjectIntf const * const container =
            body == nullptr ? child.getContainerZEL(deviant()).getImplementationWithoutAssert()
                            : body->readState(deviant())->container();
        fPresentIsListedAlone = container != fLevels.back().object();
        return &child == fRoot.getImplementationWithoutAssert() ||
               ((fPresentIsListedAlone || fListedAlone != 0) &&
                std::any_of(fLevels.begin(), fLevels.end(),
                            [&child](Level const & level) { return level.object() == &child; }));
    }

    ImmutableClassObject fRoot;
    BodyCore const * fPresent; ///< of the object that the walk is at; null for one of an application's own making
    bool fPresentIsListedAlone = false;
    std::deque<Level> fLevels;    ///< none of them moves: a place in a list knows the list
    std::size_t fListedAlone = 0; ///< levels of objects that were found so
};

ContentsWalk::ContentsWalk(ImmutableClassObject root)
    : fLevels(std::make_unique<Levels>(root)), fCurrent(std::move(root)) {}

ContentsWalk::ContentsWalk(ContentsWalk &&) noexcept = default;
ContentsWalk & ContentsWalk::operator=(ContentsWalk &&) noexcept = default;
ContentsWalk::~ContentsWalk() = default;

bool ContentsWalk::next() {
    if (std::exchange(fIsAtEnd, true)) {
        return false;
    }
    ImmutableClassObject const present = std::exchange(fCurrent, {});
    if (!std::exchange(fSkips, false)) {
        fLevels->enter(present);
    }
    ClassObjectIntf const * const found = fLevels->next();
    fCurrent = ImmutableClassObject(found, fLevels->deviant());
    fIsAtEnd = found == nullptr;
    return !fIsAtEnd;
}

} // namespace ZEL
