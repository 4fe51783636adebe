#pragma once

#include <ZEL/base/ReferenceCountingImpl.h>
#include <ZEL/metamodel/PropertyStorageIntf.h>

namespace ZEL {

/// Storage of a multi-valued property, over its two generated getters.
class ZEL_API MultiValuedPropertyManager : public PropertyStorageIntf, public ReferenceCountingImpl {
public:
    using Getter = Sequence<Object> (*)(ImmutableClassObject const & object);

    MultiValuedPropertyManager(Getter getter, Getter getterWithoutAssociation) noexcept
        : fGetter(getter), fGetterWithoutAssociation(getterWithoutAssociation) {}

    [[nodiscard]] bool has(ImmutableClassObject const & object) const override;
    [[nodiscard]] Sequence<Object> get(ClassObject const & object) override;
    [[nodiscard]] ImmutableSequence<ImmutableObject> get(ImmutableClassObject const & object) const override;
    [[nodiscard]] Object getOne(ClassObject const & object) override;
    [[nodiscard]] ImmutableObject getOne(ImmutableClassObject const & object) const override;
    void setOrAdd(ClassObject const & object, Object const & value) override;
    void setOrAddEndOnly(ClassObject const & object, Object const & value) override;
    /// All occurrences go; boxed values are compared by value.
    void remove(ClassObject const & object, Object const & value) override;
    void removeEndOnly(ClassObject const & object, Object const & value) override;
    void removeOne(ClassObject const & object) override;
    void removeOneEndOnly(ClassObject const & object) override;

private:
    Getter fGetter;
    Getter fGetterWithoutAssociation;
};

} // namespace ZEL
