#pragma once

#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/serializer/QualifiedName.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace ZEL::Serializer {

/// What the writer asks of a property for each object, found once.
struct WrittenProperty : internal::PropertyView {
    explicit WrittenProperty(internal::PropertyView const & view);

    QualifiedName attribute; ///< its name, in no namespace

    internal::ClassDescriptor const * owner = nullptr; ///< of whose objects `links` and `value` are; null if unknown

    // The data type of the value met last: nearly always that of the next one, too.
    mutable void const * valueType = nullptr;
    mutable QualifiedName valueTypeName;

    /// Whether its values stand in `xmi:Extension`.
    [[nodiscard]] bool isExtension() const noexcept { return persistence == PersistenceKind::Extension; }
};

/// The properties of a metaclass that are written, by the form in which they are.
struct PropertyPartition {
    std::shared_ptr<internal::MetaClassView const> view;
    QualifiedName type;                                ///< the metaclass in its metamodel
    std::vector<WrittenProperty const *> singleValues; ///< attributes; "name" goes first
    std::vector<WrittenProperty const *> multiValues;
    std::vector<WrittenProperty const *> references;
    std::vector<WrittenProperty const *> visitable;              ///< extension properties, then composite ones
    ImmutableSequence<ImmutableProperty> visitableProperties;    ///< the same
    ImmutableSequence<ImmutableProperty> collectedProperties;    ///< and then `appliedStereotypeInstance`, if valid
    ImmutableProperty appliedStereotypeInstance;                 ///< invalid if the class has none
    std::vector<internal::FieldDescriptor const *> containments; ///< where the contained objects are stored
};

/// The partitions of the metaclasses met in a run. References stay valid until the end of the run.
class PartitionCache {
public:
    [[nodiscard]] PropertyPartition const & partitionOf(NSInterface::ClassObjectIntf const & object);
    /// Null for an invalid property.
    [[nodiscard]] WrittenProperty const * find(ImmutableProperty const & property);

private:
    [[nodiscard]] std::unique_ptr<PropertyPartition> makePartition(internal::ClassDescriptor const & descriptor,
                                                                   ImmutableClass const & metaClass);
    [[nodiscard]] WrittenProperty * enter(internal::PropertyView const & property);

    std::unordered_map<internal::ClassDescriptor const *, std::unique_ptr<PropertyPartition>> fPartitions;
    internal::ClassDescriptor const * fLast = nullptr; ///< the class asked for last, and its partition
    PropertyPartition const * fLastPartition = nullptr;
    // The handle in the entry keeps the body alive whose address is the key.
    std::unordered_map<void const *, std::unique_ptr<WrittenProperty>> fProperties;
};

/// The URI of the metamodel, or model, that a model handle stands for. Throws "Attempt to obtain an invalid model's
/// URI".
[[nodiscard]] std::string uriOf(ImmutableModel const & model);

} // namespace ZEL::Serializer
