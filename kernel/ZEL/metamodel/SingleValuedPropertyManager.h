#pragma once

#include <ZEL/base/ReferenceCountingImpl.h>
#include <ZEL/metamodel/PropertyStorageIntf.h>

namespace ZEL {

namespace Generic {
struct PropertyToSequenceMethods;
} // namespace Generic

/// Storage of a single-valued property, over its table of generated operations, which must outlive it.
class ZEL_API SingleValuedPropertyManager : public PropertyStorageIntf, public ReferenceCountingImpl {
public:
    /// `kind` is handed to the sequence view of the property: other than 0 its `clear` does nothing.
    SingleValuedPropertyManager(Generic::PropertyToSequenceMethods const * methods, int kind) noexcept
        : fMethods(methods), fKind(kind) {}

    [[nodiscard]] bool has(ImmutableClassObject const & object) const override;
    /// A view of zero or one element; pushing on it sets the property.
    [[nodiscard]] Sequence<Object> get(ClassObject const & object) override;
    [[nodiscard]] ImmutableSequence<ImmutableObject> get(ImmutableClassObject const & object) const override;
    [[nodiscard]] Object getOne(ClassObject const & object) override;
    [[nodiscard]] ImmutableObject getOne(ImmutableClassObject const & object) const override;
    void setOrAdd(ClassObject const & object, Object const & value) override;
    void setOrAddEndOnly(ClassObject const & object, Object const & value) override;
    void remove(ClassObject const & object, Object const & value) override;
    void removeEndOnly(ClassObject const & object, Object const & value) override;
    void removeOne(ClassObject const & object) override;
    void removeOneEndOnly(ClassObject const & object) override;

private:
    Generic::PropertyToSequenceMethods const * fMethods;
    int fKind;
};

} // namespace ZEL
