#pragma once

#include <ZEL/base/ReferenceCountingImpl.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/PropertyStorageIntf.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/values/Object.h>

namespace ZEL {

/// Storage of a multi-valued property, over its two generated getters.
class ZEL_API MultiValuedPropertyManager : public PropertyStorageIntf, public ReferenceCountingImpl {
public:
    using Getter = Sequence<Object> (*)(ImmutableClassObject const & object);

    MultiValuedPropertyManager(Getter getter, Getter getterWithoutAssociation) noexcept
        : fGetter(getter), fGetterWithoutAssociation(getterWithoutAssociation) {}

    [[nodiscard]] bool has(ImmutableClassObject const & object) const override { return !fGetter(object).empty(); }
    [[nodiscard]] Sequence<Object> get(ClassObject const & object) override { return fGetter(object); }
    [[nodiscard]] ImmutableSequence<ImmutableObject> get(ImmutableClassObject const & object) const override {
        return fGetter(object);
    }
    [[nodiscard]] Object getOne(ClassObject const & object) override { return first(object); }
    [[nodiscard]] ImmutableObject getOne(ImmutableClassObject const & object) const override { return first(object); }
    void setOrAdd(ClassObject const & object, Object const & value) override { fGetter(object).push_back(value); }
    void setOrAddEndOnly(ClassObject const & object, Object const & value) override {
        fGetterWithoutAssociation(object).push_back(value);
    }
    /// All occurrences go; boxed values are compared by value.
    void remove(ClassObject const & object, Object const & value) override { removeAll(fGetter(object), value); }
    void removeEndOnly(ClassObject const & object, Object const & value) override {
        removeAll(fGetterWithoutAssociation(object), value);
    }
    void removeOne(ClassObject const & object) override { fGetter(object).pop_front(); }
    void removeOneEndOnly(ClassObject const & object) override { fGetterWithoutAssociation(object).pop_front(); }

    [[nodiscard]] Getter getter() const noexcept { return fGetter; }

private:
    [[nodiscard]] Object first(ImmutableClassObject const & object) const;
    static void removeAll(Sequence<Object> const & values, Object const & value);

    Getter fGetter;
    Getter fGetterWithoutAssociation;
};

} // namespace ZEL
