#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/FieldValue.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/PointerMap.h>
#include <ZEL/sequences/PersistentSequence.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/tools/Comparator.h>
#include <ZEL/values/ValueObject.h>

#include <cstddef>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ZEL {

namespace {

using internal::BodyCore;
using internal::StateCore;
using NSInterface::ObjectIntf;

/// An object through a deviant, without a count: what is compared is held by its model or by a handle.
struct Seen {
    ObjectIntf * object = nullptr;
    Deviant deviant;

    [[nodiscard]] bool isValid() const { return object != nullptr && object->deviant_isValid(deviant); }
    [[nodiscard]] ImmutableObject handle() const { return ImmutableObject(object, deviant); }
};

Seen seen(ImmutableObject const & handle) { return {handle.getImplementationWithoutAssert(), handle.getDeviant()}; }

/// For two objects that are not both of classes: only equal values are equal.
bool areEqualValues(Seen const & a, Seen const & b) {
    ImmutableValueObject const valueOfA(a.handle());
    ImmutableValueObject const valueOfB(b.handle());
    return valueOfA.isValid() && valueOfB.isValid() && valueOfA == valueOfB;
}

struct ComparedProperty {
    ImmutableProperty property;
    bool isComposite;
    internal::FieldDescriptor const * links;
    internal::ValueDescriptor const * value;
};

/// What is compared of the instances of a class in the two passes.
struct ComparedProperties {
    std::vector<ComparedProperty> composite;
    std::vector<ComparedProperty> all;
};

ComparedProperties comparedPropertiesOf(internal::ClassDescriptor const & descriptor) {
    ComparedProperties result;
    for (internal::PropertyView const & property : internal::MetaClassView::of(descriptor)->properties()) {
        // The link to the container is that of the other side's container by the place in the tree; where the
        // trees themselves stand does not matter.
        if (!property.isDerived && !property.isIdentity() && !property.isContainer) {
            result.all.push_back({property.property, property.isComposite, property.links, property.value});
            if (property.isComposite) {
                result.composite.push_back(result.all.back());
            }
        }
    }
    return result;
}

/// A pair of objects of one class whose properties are being compared.
struct Frame {
    /// One of the two.
    struct Side {
        Seen object;
        StateCore const * state = nullptr;
        std::vector<Seen> elements; ///< of the present property
        std::vector<ImmutableObject> held;

        /// Takes up the values of a property.
        void read(ComparedProperty const & compared);
    };

    Side a;
    Side b;
    std::vector<ComparedProperty> const * properties = nullptr;
    std::size_t nextProperty = 0;
    std::size_t nextElement = 0;

    void leaveElements() {
        for (Side * const side : {&a, &b}) {
            side->elements.clear();
            side->held.clear();
        }
        nextElement = 0;
    }
};

void Frame::Side::read(ComparedProperty const & compared) {
    if (compared.links == nullptr) {
        held = ImmutableClassObject(object.handle()).get(compared.property).toVector();
        for (ImmutableObject const & element : held) {
            elements.push_back(seen(element));
        }
    } else if (compared.links->sequence != nullptr) {
        compared.links->sequence(*state).forEach([this](void * element) {
            elements.push_back({static_cast<ObjectIntf *>(element), object.deviant});
        });
    } else if (ObjectIntf * const element = compared.links->get(*state)) {
        elements.push_back({element, object.deviant});
    }
}

} // namespace

struct Comparator::Counterparts : internal::PointerMap<ObjectIntf *> {};

/// One pass over a pair of trees.
class Comparator::Walk {
public:
    Walk(Pass pass, Counterparts & counterparts) : fPass(pass), fCounterparts(counterparts) {}

    [[nodiscard]] bool run(Seen const & first, Seen const & second);

    /// The pair of class objects that was met last, or that a walk came back to: null objects if there is none.
    [[nodiscard]] std::pair<Seen, Seen> const & last() const noexcept { return fLast; }
    [[nodiscard]] bool hasEntered() const noexcept { return fHasEntered; }

private:
    /// False if the two differ. Compares what lies in the objects of a pair next.
    [[nodiscard]] bool enter(Seen a, Seen b);
    /// Takes up the next property of a frame; false if its values differ already by number or by a link.
    [[nodiscard]] bool nextProperty(Frame & frame);
    [[nodiscard]] bool compareLink(Seen const & a, Seen const & b) const;
    [[nodiscard]] std::vector<ComparedProperty> const & propertiesOf(internal::ClassDescriptor const & descriptor);
    void push(Seen const & a, BodyCore const & bodyOfA, Seen const & b, BodyCore const & bodyOfB);
    void pop();

    Pass fPass;
    Counterparts & fCounterparts;
    std::vector<Frame> fFrames; ///< those beyond the depth are kept for their memory
    std::size_t fDepth = 0;
    std::pair<Seen, Seen> fLast;
    bool fHasEntered = false;
    std::unordered_map<internal::ClassDescriptor const *, ComparedProperties> fProperties;
    internal::ClassDescriptor const * fLastClass = nullptr;
    std::vector<ComparedProperty> const * fLastProperties = nullptr;
};

std::vector<ComparedProperty> const & Comparator::Walk::propertiesOf(internal::ClassDescriptor const & descriptor) {
    if (fLastClass != &descriptor) {
        auto found = fProperties.find(&descriptor);
        if (found == fProperties.end()) {
            found = fProperties.emplace(&descriptor, comparedPropertiesOf(descriptor)).first;
        }
        fLastClass = &descriptor;
        fLastProperties = fPass == Pass::Composition ? &found->second.composite : &found->second.all;
    }
    return *fLastProperties;
}

void Comparator::Walk::push(Seen const & a, BodyCore const & bodyOfA, Seen const & b, BodyCore const & bodyOfB) {
    std::vector<ComparedProperty> const & properties = propertiesOf(bodyOfA.internal_descriptor());
    if (fDepth == fFrames.size()) {
        fFrames.emplace_back();
    }
    Frame & frame = fFrames[fDepth++];
    frame.a.object = a;
    frame.b.object = b;
    frame.a.state = bodyOfA.readState(a.deviant);
    frame.b.state = bodyOfB.readState(b.deviant);
    frame.properties = &properties;
    frame.nextProperty = 0;
    frame.leaveElements();
}

void Comparator::Walk::pop() {
    --fDepth;
    fLast = {};
    if (fDepth > 0) { // what follows is compared on behalf of the pair above
        Frame const & above = fFrames[fDepth - 1];
        fLast = {above.a.object, above.b.object};
    }
}

bool Comparator::Walk::enter(Seen a, Seen b) {
    if (a.object == b.object && a.deviant == b.deviant) {
        return true;
    }
    if (!a.isValid() || !b.isValid()) {
        return false;
    }
    BodyCore const * const bodyOfA = a.object->internal_body();
    BodyCore const * const bodyOfB = b.object->internal_body();
    if (bodyOfA == nullptr || bodyOfB == nullptr) {
        return areEqualValues(a, b);
    }
    fHasEntered = true;
    fLast = {a, b};
    if (fPass == Pass::Composition) {
        fCounterparts.set(a.object, b.object);
    }
    if (&bodyOfA->internal_descriptor() != &bodyOfB->internal_descriptor()) {
        return false;
    }
    push(a, *bodyOfA, b, *bodyOfB);
    return true;
}

bool Comparator::Walk::compareLink(Seen const & a, Seen const & b) const {
    if (!a.isValid() || !b.isValid()) {
        return a.isValid() == b.isValid();
    }
    if (a.object->internal_body() == nullptr || b.object->internal_body() == nullptr) {
        return areEqualValues(a, b);
    }
    ObjectIntf * const * const counterpart = fCounterparts.find(a.object);
    // An object outside of the trees corresponds to itself.
    return (counterpart != nullptr ? *counterpart : a.object) == b.object;
}

bool Comparator::Walk::nextProperty(Frame & frame) {
    ComparedProperty const & compared = (*frame.properties)[frame.nextProperty++];
    if (compared.value != nullptr) {
        return compared.value->get(*frame.a.state) == compared.value->get(*frame.b.state);
    }
    frame.leaveElements();
    frame.a.read(compared);
    frame.b.read(compared);
    std::vector<Seen> const & a = frame.a.elements;
    std::vector<Seen> const & b = frame.b.elements;
    if (a.size() != b.size()) {
        return false;
    }
    if (compared.isComposite) {
        if (a.size() == 1 && !a.front().isValid() && !b.front().isValid()) {
            frame.leaveElements();
        }
        return true;
    }
    bool isEqual = true;
    for (std::size_t i = 0; isEqual && i < a.size(); ++i) {
        isEqual = compareLink(a[i], b[i]);
    }
    frame.leaveElements();
    return isEqual;
}

bool Comparator::Walk::run(Seen const & first, Seen const & second) {
    if (!enter(first, second)) {
        return false;
    }
    while (fDepth > 0) {
        Frame & frame = fFrames[fDepth - 1];
        if (frame.nextElement < frame.a.elements.size()) {
            std::size_t const i = frame.nextElement++;
            if (!enter(frame.a.elements[i], frame.b.elements[i])) {
                return false;
            }
        } else if (frame.nextProperty < frame.properties->size()) {
            if (!nextProperty(frame)) {
                return false;
            }
        } else {
            pop();
        }
    }
    return true;
}

Comparator::Comparator(ImmutableObject first, ImmutableObject second)
    : fFirst(std::move(first)), fSecond(std::move(second)), fCounterparts(std::make_unique<Counterparts>()) {}

Comparator::Comparator(Comparator const & other)
    : fFirst(other.fFirst),
      fSecond(other.fSecond),
      fFailedFirst(other.fFailedFirst),
      fFailedSecond(other.fFailedSecond),
      fCounterparts(std::make_unique<Counterparts>()) {
    for (auto const & entry : other.fCounterparts->entries()) {
        fCounterparts->add(entry.pointer, entry.value);
    }
}

Comparator::~Comparator() = default;

Comparator & Comparator::operator=(Comparator const & other) {
    if (this != &other) {
        Comparator copy(other);
        // Handles on one body keep their own deviant when they are assigned to: start from null ones.
        fFirst = ImmutableObject();
        fSecond = ImmutableObject();
        fFirst = other.fFirst;
        fSecond = other.fSecond;
        fail(other.fFailedFirst, other.fFailedSecond);
        fCounterparts = std::move(copy.fCounterparts);
    }
    return *this;
}

bool Comparator::compare() {
    fCounterparts = std::make_unique<Counterparts>();
    fail(ImmutableClassObject(), ImmutableClassObject());
    return compareCompositionR(fFirst, fSecond) && compareAssociationR(fFirst, fSecond);
}

bool Comparator::compareCompositionR(ImmutableObject const & first, ImmutableObject const & second) {
    return walk(Pass::Composition, first, second);
}

bool Comparator::compareAssociationR(ImmutableObject const & first, ImmutableObject const & second) {
    return walk(Pass::Association, first, second);
}

bool Comparator::walk(Pass pass, ImmutableObject const & first, ImmutableObject const & second) {
    Walk walk(pass, *fCounterparts);
    bool const isEqual = walk.run(seen(first), seen(second));
    if (walk.hasEntered()) {
        auto const & [a, b] = walk.last();
        fail(ImmutableClassObject(a.handle()), ImmutableClassObject(b.handle()));
    }
    return isEqual;
}

void Comparator::fail(ImmutableClassObject const & a, ImmutableClassObject const & b) {
    fFailedFirst = ImmutableClassObject();
    fFailedSecond = ImmutableClassObject();
    fFailedFirst = a;
    fFailedSecond = b;
}

bool compare(ImmutableObject const & a, ImmutableObject const & b) { return Comparator(a, b).compare(); }

} // namespace ZEL
