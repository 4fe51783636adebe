#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/tools/Comparator.h>
#include <ZEL/values/ValueObject.h>

#include <optional>
#include <utility>

namespace ZEL {

namespace {

/// Whether the two are equal values; nothing if neither is a value.
std::optional<bool> compareValues(ImmutableObject const & a, ImmutableObject const & b) {
    ImmutableValueObject const valueOfA(a);
    ImmutableValueObject const valueOfB(b);
    if (!valueOfA.isValid() && !valueOfB.isValid()) {
        return std::nullopt;
    }
    return valueOfA.isValid() && valueOfB.isValid() && valueOfA == valueOfB;
}

} // namespace

/// A pair of class objects whose properties are being compared.
struct Comparator::Frame {
    ImmutableClassObject a;
    ImmutableClassObject b;
    std::vector<ComparedProperty> const * properties;
    std::size_t nextProperty = 0;
    std::vector<ImmutableObject> elementsOfA;
    std::vector<ImmutableObject> elementsOfB;
    std::size_t nextElement = 0;
};

Comparator::Comparator(ImmutableObject first, ImmutableObject second)
    : fFirst(std::move(first)), fSecond(std::move(second)) {}

Comparator::~Comparator() = default;

Comparator & Comparator::operator=(Comparator const & other) {
    if (this != &other) {
        // Handles on one body keep their own deviant when they are assigned to: start from null ones.
        fFirst = ImmutableObject();
        fSecond = ImmutableObject();
        fFirst = other.fFirst;
        fSecond = other.fSecond;
        fail(other.fFailedFirst, other.fFailedSecond);
        fCounterparts = other.fCounterparts;
    }
    return *this;
}

bool Comparator::compare() {
    fCounterparts.clear();
    fail(ImmutableClassObject(), ImmutableClassObject());
    fProperties.clear();
    bool const isEqual = compareCompositionR(fFirst, fSecond) && compareAssociationR(fFirst, fSecond);
    fProperties.clear();
    return isEqual;
}

bool Comparator::compareCompositionR(ImmutableObject const & first, ImmutableObject const & second) {
    return walk(Pass::Composition, first, second);
}

bool Comparator::compareAssociationR(ImmutableObject const & first, ImmutableObject const & second) {
    return walk(Pass::Association, first, second);
}

void Comparator::add(ImmutableObject const & a, ImmutableObject const & b) {
    fCounterparts[a.getImplementation()] = b.getImplementation();
}

ImmutableObject Comparator::get(ImmutableObject const & a) const {
    auto const found = fCounterparts.find(a.getImplementation());
    return found == fCounterparts.end() ? ImmutableObject() : ImmutableObject(found->second, a.getDeviant());
}

void Comparator::fail(ImmutableClassObject const & a, ImmutableClassObject const & b) {
    fFailedFirst = ImmutableClassObject();
    fFailedSecond = ImmutableClassObject();
    fFailedFirst = a;
    fFailedSecond = b;
}

Comparator::Verdict Comparator::compareOne(Pass pass, ImmutableObject const & a, ImmutableObject const & b) {
    if (a == b && a.getDeviant() == b.getDeviant()) {
        return Verdict::Equal;
    }
    if (!a.isValid() || !b.isValid()) {
        return Verdict::Different;
    }
    if (std::optional<bool> const areEqual = compareValues(a, b)) {
        return *areEqual ? Verdict::Equal : Verdict::Different;
    }
    ImmutableClassObject const first(a);
    ImmutableClassObject const second(b);
    if (!first.isValid() || !second.isValid()) {
        return Verdict::Different;
    }
    fail(first, second);
    if (pass == Pass::Composition) {
        add(a, b);
    }
    return first.getMetaClass() == second.getMetaClass() ? Verdict::Descend : Verdict::Different;
}

bool Comparator::compareLink(ImmutableObject const & a, ImmutableObject const & b) const {
    if (!a.isValid() || !b.isValid()) {
        return a.isValid() == b.isValid();
    }
    if (std::optional<bool> const areEqual = compareValues(a, b)) {
        return *areEqual;
    }
    ImmutableObject const counterpart = get(a);
    // An object outside of the trees corresponds to itself.
    return (counterpart.getImplementationWithoutAssert() != nullptr ? counterpart : a) == b;
}

/// Takes up the next property of a frame; false if its values differ already by number or by a link.
bool Comparator::nextProperty(Pass pass, Frame & frame) {
    ComparedProperty const & compared = (*frame.properties)[frame.nextProperty++];
    frame.elementsOfA.clear();
    frame.elementsOfB.clear();
    frame.nextElement = 0;
    if (pass == Pass::Composition && !compared.isComposite) {
        return true;
    }
    frame.elementsOfA = frame.a.get(compared.property).toVector();
    frame.elementsOfB = frame.b.get(compared.property).toVector();
    if (frame.elementsOfA.size() != frame.elementsOfB.size()) {
        return false;
    }
    bool const isSingleInvalid =
        frame.elementsOfA.size() == 1 && !frame.elementsOfA.front().isValid() && !frame.elementsOfB.front().isValid();
    bool const areLinks = !compared.isComposite;
    bool isEqual = true;
    if (areLinks) {
        for (std::size_t i = 0; isEqual && i < frame.elementsOfA.size(); ++i) {
            isEqual = compareLink(frame.elementsOfA[i], frame.elementsOfB[i]);
        }
    }
    if (areLinks || isSingleInvalid) {
        frame.elementsOfA.clear();
        frame.elementsOfB.clear();
    }
    return isEqual;
}

std::vector<Comparator::ComparedProperty> const & Comparator::propertiesOf(ImmutableClass const & metaClass) {
    auto const [entry, isNew] = fProperties.try_emplace(metaClass.getImplementation());
    if (isNew) {
        for (internal::PropertyView const & property : internal::MetaClassView::of(metaClass)->properties()) {
            // The link to the container is that of the other side's container by the place in the tree; where the
            // trees themselves stand does not matter.
            if (!property.isDerived && !property.isIdentity() && !property.isContainer) {
                entry->second.push_back({property.property, property.isComposite});
            }
        }
    }
    return entry->second;
}

bool Comparator::walk(Pass pass, ImmutableObject const & first, ImmutableObject const & second) {
    std::vector<Frame> frames;
    auto const enter = [&](ImmutableObject const & a, ImmutableObject const & b) {
        Verdict const verdict = compareOne(pass, a, b);
        if (verdict == Verdict::Descend) {
            ImmutableClassObject const object(a);
            frames.push_back({object, ImmutableClassObject(b), &propertiesOf(object.getMetaClass()), 0, {}, {}, 0});
        }
        return verdict != Verdict::Different;
    };
    if (!enter(first, second)) {
        return false;
    }
    while (!frames.empty()) {
        Frame & frame = frames.back();
        if (frame.nextElement < frame.elementsOfA.size()) {
            std::size_t const i = frame.nextElement++;
            ImmutableObject const a = frame.elementsOfA[i];
            ImmutableObject const b = frame.elementsOfB[i];
            if (!enter(a, b)) {
                return false;
            }
        } else if (frame.nextProperty < frame.properties->size()) {
            if (!nextProperty(pass, frame)) {
                return false;
            }
        } else {
            frames.pop_back();
            // What follows is compared on behalf of the pair above.
            fail(frames.empty() ? ImmutableClassObject() : frames.back().a,
                 frames.empty() ? ImmutableClassObject() : frames.back().b);
        }
    }
    return true;
}

bool compare(ImmutableObject const & a, ImmutableObject const & b) { return Comparator(a, b).compare(); }

} // namespace ZEL
