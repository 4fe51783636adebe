#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/CompositeFields.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/sequences/PersistentSequence.h>
#include <ZEL/tools/ContentsWalk.h>

#include <algorithm>
#include <cstddef>
#include <deque>
#include <utility>

namespace ZEL {

using internal::BodyCore;
using internal::ClassObjectIntf;
using internal::CompositeFields;
using internal::FieldDescriptor;
using internal::ObjectIntf;
using internal::PersistentSequence;
using internal::StateCore;

namespace {

/// The contents of one object: the fields that are still to come, and what is left of the present one. A list is held
/// as it was found, so that a write to the model leaves it alone.
class Level {
public:
    Level(ImmutableClassObject const & object, BodyCore const & body, CompositeFields const & fields, std::size_t first)
        : fObject(object), fBody(&body), fFields(&fields), fField(first) {}
    Level(Level const &) = delete;
    Level & operator=(Level const &) = delete;

    [[nodiscard]] ClassObjectIntf const * object() const noexcept { return fObject.getImplementationWithoutAssert(); }
    /// Null if there is none. Throws if the object can no longer be read.
    [[nodiscard]] ObjectIntf * next() {
        // Also before a look into the list that is held: once the model has gone, its objects may have gone as well.
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
    void hold(PersistentSequence const & elements) noexcept {
        fElements = elements;
        fCursor = fElements.begin();
        fPlace = 0;
        fSize = fElements.size();
    }

    ImmutableClassObject fObject;
    BodyCore const * fBody;
    CompositeFields const * fFields;
    std::size_t fField; ///< the next one
    PersistentSequence fElements;
    PersistentSequence::Cursor fCursor;
    std::size_t fPlace = 0;
    std::size_t fSize = 0;
};

} // namespace

/// The objects from the root to the present one's container, each with what is left of its contents.
class ContentsWalk::Levels {
public:
    explicit Levels(ImmutableClassObject const & root)
        : fRoot(root), fPresent(root.getImplementation()->internal_body()) {}

    [[nodiscard]] Deviant deviant() const noexcept { return fRoot.getDeviant(); }
    /// `object` is the present one. Nothing for an object without contents, as most are.
    void enter(ImmutableClassObject const & object) {
        if (fPresent == nullptr) {
            return; // of a class of the application's own making: no property of it contains an object
        }
        StateCore const & state = *fPresent->readState(deviant());
        CompositeFields const & fields = internal::compositeFieldsOf(state.internal_stateDescriptor());
        for (std::size_t i = 0; i < fields.size(); ++i) {
            FieldDescriptor const & field = *fields[i];
            if (field.sequence != nullptr ? !field.sequence(state).empty() : field.get(state) != nullptr) {
                fLevels.emplace_back(object, *fPresent, fields, i);
                return;
            }
        }
    }
    /// The next object that exists, which is then the present one; null if there is none.
    [[nodiscard]] ClassObjectIntf const * next() {
        while (!fLevels.empty()) {
            ObjectIntf * const child = fLevels.back().next();
            if (child == nullptr) {
                fLevels.pop_back();
                continue;
            }
            fPresent = child->internal_body();
            if (fPresent == nullptr) {
                return &internal::classObject(*child);
            }
            if (fPresent->deviant_isValid(deviant()) && !leadsBack(*fPresent)) {
                return fPresent;
            }
        }
        return nullptr;
    }

private:
    /// States of a deviant and of the root can have combined to two objects that contain each other. Then one of them
    /// is the root, or another one's content by the container's list alone.
    [[nodiscard]] bool leadsBack(BodyCore const & body) const {
        ClassObjectIntf const * const child = &body;
        return child == fRoot.getImplementationWithoutAssert() ||
               (body.readState(deviant())->container() != fLevels.back().object() &&
                std::any_of(fLevels.begin(), fLevels.end(),
                            [child](Level const & level) { return level.object() == child; }));
    }

    ImmutableClassObject fRoot;
    BodyCore const * fPresent; ///< of the object that the walk is at; null if it has no state of this kind
    std::deque<Level> fLevels; ///< none of them moves: a place in a list knows the list
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
    if (!std::exchange(fSkips, false)) {
        fLevels->enter(fCurrent);
    }
    ClassObjectIntf const * const found = fLevels->next();
    fCurrent = ImmutableClassObject(found, fLevels->deviant());
    fIsAtEnd = found == nullptr;
    return !fIsAtEnd;
}

} // namespace ZEL
