#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/ContaineeSequence.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/PropertySupport.h>
#include <ZEL/sequences/PersistentSequence.h>

#include <memory>
#include <unordered_map>

namespace ZEL::internal {

namespace {

using Generic::IteratorPtr;
using Generic::Ref;

/// The composite fields of a class, a model's factory among them. Never freed: objects outlive the statics of this
/// library.
std::vector<FieldDescriptor const *> const & compositeFieldsOf(ClassDescriptor const & descriptor) {
    static auto & all = *new std::unordered_map<ClassDescriptor const *, std::vector<FieldDescriptor const *>>;
    auto const [entry, isNew] = all.try_emplace(&descriptor);
    if (isNew) {
        for (FieldDescriptor const & field : descriptor.fields) {
            PropertyDescriptor const & property = *field.property;
            if (property.isComposite && !property.isDerived && property.typeClass != nullptr) {
                entry->second.push_back(&field);
            }
        }
    }
    return entry->second;
}

} // namespace

ContaineeSequence::ContaineeSequence(NSInterface::ClassObjectIntf const & object, Deviant deviant)
    : fObject(&object, deviant),
      fFields(compositeFieldsOf(object.internal_body()->readState(deviant)->internal_stateDescriptor())) {}

Generic::SequencePtr ContaineeSequence::makeWrapped() const {
    NSInterface::ClassObjectIntf const & object = *fObject.getImplementation();
    Sequence<ClassObject> const raw = object.getContaineeZELsWithoutAssociation(fObject.getDeviant());
    fCombined = dynamic_cast<Combined const *>(raw.getImplementation());
    if (fCombined == nullptr) {
        raiseAnInternalError();
    }
    return Generic::SequencePtr(containeeView(object, fObject.getDeviant(), raw).getImplementation());
}

StateCore const & ContaineeSequence::state() const {
    return *fObject.getImplementation()->internal_body()->readState(fObject.getDeviant());
}

int ContaineeSequence::sizeOf(StateCore const & state, int field) const {
    FieldDescriptor const & each = *fFields[static_cast<std::size_t>(field)];
    return each.sequence != nullptr ? static_cast<int>(readSequence(each, state).size())
                                    : static_cast<int>(each.get(state) != nullptr);
}

NSInterface::ObjectIntf * ContaineeSequence::elementAt(StateCore const & state, int field, int position) const {
    if (field >= fieldCount() || position < 0 || position >= sizeOf(state, field)) {
        raiseAnInternalError();
    }
    FieldDescriptor const & each = *fFields[static_cast<std::size_t>(field)];
    return each.sequence != nullptr ? static_cast<NSInterface::ObjectIntf *>(
                                          readSequence(each, state).at(static_cast<std::size_t>(position)))
                                    : each.get(state);
}

IteratorPtr ContaineeSequence::generic_begin(Deviant deviant) const {
    if (!isFor(deviant)) {
        return ForwardingSequence::generic_begin(deviant);
    }
    auto iterator = std::make_unique<Iterator>(this, 0);
    iterator->enter(state(), 0);
    return iterator;
}

IteratorPtr ContaineeSequence::generic_end(Deviant deviant) const {
    return isFor(deviant) ? std::make_unique<Iterator>(this, fieldCount()) : ForwardingSequence::generic_end(deviant);
}

int ContaineeSequence::generic_size(Deviant deviant) const {
    if (!isFor(deviant)) {
        return ForwardingSequence::generic_size(deviant);
    }
    StateCore const & present = state();
    int size = 0;
    for (int i = 0; i < fieldCount(); ++i) {
        size += sizeOf(present, i);
    }
    return size;
}

int ContaineeSequence::generic_fetch(Deviant deviant, int index, NSInterface::ObjectIntf ** bodies, int count) const {
    if (!isFor(deviant)) {
        return ForwardingSequence::generic_fetch(deviant, index, bodies, count);
    }
    StateCore const & present = state();
    int fetched = 0;
    for (int field = 0; field < fieldCount() && fetched < count; ++field) {
        int const size = sizeOf(present, field);
        for (; index < size && fetched < count; ++index) {
            bodies[fetched++] = elementAt(present, field, index);
        }
        index = index < size ? 0 : index - size;
    }
    return fetched;
}

IteratorPtr ContaineeSequence::generic_erase(Deviant deviant, Generic::IteratorIntf const * where) {
    auto const * const own = dynamic_cast<Iterator const *>(where);
    if (own == nullptr || own->fSequence != this) {
        return ForwardingSequence::generic_erase(deviant, where);
    }
    Generic::SequenceIntf & target = wrapped();
    Combined::Iterator const place(fCombined, own->fField, own->fPosition);
    static_cast<void>(target.generic_erase(deviant, &place));
    // The next element has moved here, unless the last of the field went.
    auto result = std::make_unique<Iterator>(*own);
    StateCore const & present = state();
    if (result->fPosition >= sizeOf(present, result->fField)) {
        result->enter(present, result->fField + 1);
    }
    return result;
}

// --- iterator --------------------------------------------------------------------------------------------------------

void ContaineeSequence::Iterator::enter(StateCore const & state, int field) {
    fField = field;
    fPosition = 0;
    while (fField < fSequence->fieldCount() && fSequence->sizeOf(state, fField) == 0) {
        ++fField;
    }
}

Ref ContaineeSequence::Iterator::current(Deviant) const {
    return Ref::ofStoredBody(fSequence->elementAt(fSequence->state(), fField, fPosition),
                             fSequence->fObject.getDeviant());
}

void ContaineeSequence::Iterator::next(Deviant) {
    if (fField >= fSequence->fieldCount()) {
        return;
    }
    StateCore const & state = fSequence->state();
    ++fPosition;
    if (fPosition >= fSequence->sizeOf(state, fField)) {
        enter(state, fField + 1);
    }
}

void ContaineeSequence::Iterator::previous(Deviant) {
    if (fPosition > 0) {
        --fPosition;
        return;
    }
    StateCore const & state = fSequence->state();
    int field = fField - 1;
    while (field >= 0 && fSequence->sizeOf(state, field) == 0) {
        --field;
    }
    if (field < 0) {
        raiseAnInternalError();
    }
    fField = field;
    fPosition = fSequence->sizeOf(state, field) - 1;
}

} // namespace ZEL::internal
