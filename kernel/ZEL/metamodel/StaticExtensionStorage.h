#pragma once

#include <ZEL/base/ReferenceCountingImpl.h>
#include <ZEL/metamodel/PropertyStorageIntf.h>
#include <ZEL/metamodel/Stereotype.h>

namespace ZEL {

/// Storage of a metaclass property that stands for the extension of the metaclass by a stereotype.
///
/// The values are those of the object's applied stereotype instances whose metaclass is the stereotype itself;
/// instances of stereotypes derived from it are not among them. A value that is no valid stereotype instance throws
/// "Only Stereotypes can be added to this property!" before anything is written.
class ZEL_API StaticExtensionStorage : public PropertyStorageIntf, public ReferenceCountingImpl {
public:
    explicit StaticExtensionStorage(Stereotype const & stereotype) : fStereotype(stereotype) {}

    [[nodiscard]] bool has(ImmutableClassObject const & object) const override;
    /// A view on the applied instances; pushing on it applies an instance of the stereotype.
    [[nodiscard]] Sequence<Object> get(ClassObject const & object) override;
    [[nodiscard]] ImmutableSequence<ImmutableObject> get(ImmutableClassObject const & object) const override;
    /// The first instance, or an invalid handle.
    [[nodiscard]] Object getOne(ClassObject const & object) override;
    [[nodiscard]] ImmutableObject getOne(ImmutableClassObject const & object) const override;
    /// Takes the value out first, so that it is held once, and last.
    void setOrAdd(ClassObject const & object, Object const & value) override;
    void setOrAddEndOnly(ClassObject const & object, Object const & value) override;
    void remove(ClassObject const & object, Object const & value) override;
    void removeEndOnly(ClassObject const & object, Object const & value) override;
    /// Removes the first instance of the stereotype; nothing if there is none.
    void removeOne(ClassObject const & object) override;
    void removeOneEndOnly(ClassObject const & object) override;

private:
    Stereotype fStereotype;
};

} // namespace ZEL
