#pragma once

#include <ZEL/base/ReferenceCountingImpl.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/PropertyStorageIntf.h>
#include <ZEL/sequences/PropertyToSequenceMethods.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/values/Object.h>

namespace ZEL {

/// Storage of a single-valued property, over its table of generated operations, which must outlive it.
class ZEL_API SingleValuedPropertyManager : public PropertyStorageIntf, public ReferenceCountingImpl {
public:
    /// `kind` is handed to the sequence view of the property: other than 0 its `clear` does nothing.
    SingleValuedPropertyManager(Generic::PropertyToSequenceMethods const * methods, int kind) noexcept
        : fMethods(methods), fKind(kind) {}

    [[nodiscard]] bool has(ImmutableClassObject const & object) const override {
        return fMethods->has(object.getImplementation(), object.getDeviant());
    }
    /// A view of zero or one element; pushing on it sets the property.
    [[nodiscard]] Sequence<Object> get(ClassObject const & object) override;
    [[nodiscard]] ImmutableSequence<ImmutableObject> get(ImmutableClassObject const & object) const override;
    [[nodiscard]] Object getOne(ClassObject const & object) override { return value(object); }
    [[nodiscard]] ImmutableObject getOne(ImmutableClassObject const & object) const override { return value(object); }
    void setOrAdd(ClassObject const & object, Object const & value) override {
        fMethods->set(object.getImplementation(), object.getDeviant(), Generic::RefTraits<Object>::toRef(value));
    }
    void setOrAddEndOnly(ClassObject const & object, Object const & value) override {
        fMethods->setEndOnly(object.getImplementation(), object.getDeviant(), Generic::RefTraits<Object>::toRef(value));
    }
    void remove(ClassObject const & object, Object const &) override { removeOne(object); }
    void removeEndOnly(ClassObject const & object, Object const &) override { removeOneEndOnly(object); }
    void removeOne(ClassObject const & object) override {
        fMethods->remove(object.getImplementation(), object.getDeviant());
    }
    void removeOneEndOnly(ClassObject const & object) override {
        fMethods->removeEndOnly(object.getImplementation(), object.getDeviant());
    }

    [[nodiscard]] Generic::PropertyToSequenceMethods const * methods() const noexcept { return fMethods; }

private:
    [[nodiscard]] Object value(ImmutableClassObject const & object) const {
        return fMethods->getOne(object.getImplementation(), object.getDeviant());
    }
    [[nodiscard]] Generic::SequenceHandle viewOf(ImmutableClassObject const & object) const;

    Generic::PropertyToSequenceMethods const * fMethods;
    int fKind;
};

} // namespace ZEL
