#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/sequences/SequenceBuilder.h>
#include <ZEL/serializer/writer/PropertyPartition.h>

#include <hasp_util/XmlConstants.h>

namespace ZEL::Serializer {
namespace {

/// Whether the values of the property never stand in a file at its place.
bool isLeftOut(internal::PropertyView const & property) {
    return property.isDerived || property.persistence == PersistenceKind::Transient ||
           property.role == internal::PropertyView::Role::Unparented || property.isContainer;
}

} // namespace

WrittenProperty::WrittenProperty(internal::PropertyView const & view)
    : PropertyView(view), attribute(HASP::XmlConstants::NULL_NS_URI, name) {}

PropertyPartition const & PartitionCache::partitionOf(NSInterface::ClassObjectIntf const & object) {
    internal::ClassDescriptor const & descriptor = object.internal_body()->internal_descriptor();
    if (fLast != &descriptor) {
        std::unique_ptr<PropertyPartition> & entry = fPartitions[&descriptor];
        if (entry == nullptr) {
            entry = makePartition(descriptor, object.getMetaClass(Deviant()));
        }
        fLast = &descriptor;
        fLastPartition = entry.get();
    }
    return *fLastPartition;
}

WrittenProperty const * PartitionCache::find(ImmutableProperty const & property) {
    if (!property.isValid()) {
        return nullptr;
    }
    auto const found = fProperties.find(property.getImplementation());
    return found != fProperties.end() ? found->second.get() : enter(internal::PropertyView(property));
}

WrittenProperty * PartitionCache::enter(internal::PropertyView const & property) {
    std::unique_ptr<WrittenProperty> & entry = fProperties[property.property.getImplementation()];
    if (entry == nullptr) {
        entry = std::make_unique<WrittenProperty>(property);
    }
    return entry.get();
}

std::unique_ptr<PropertyPartition> PartitionCache::makePartition(internal::ClassDescriptor const & descriptor,
                                                                 ImmutableClass const & metaClass) {
    using Role = internal::PropertyView::Role;
    auto made = std::make_unique<PropertyPartition>();
    PropertyPartition & partition = *made;
    partition.view = internal::MetaClassView::of(metaClass);
    partition.type = QualifiedName(uriOf(partition.view->metaClass().getRootModel()), partition.view->name());
    for (internal::FieldDescriptor const & field : descriptor.fields) {
        if (internal::isContainment(*field.property)) {
            partition.containments.push_back(&field);
        }
    }
    std::vector<WrittenProperty const *> extensions;
    std::vector<WrittenProperty const *> composites;
    for (internal::PropertyView const & property : partition.view->properties()) {
        if (property.role == Role::StereotypeInstances) {
            partition.appliedStereotypeInstance = property.property;
        }
        if (isLeftOut(property)) {
            continue;
        }
        WrittenProperty * const written = enter(property);
        written->owner = &descriptor;
        if (written->isExtension()) {
            extensions.push_back(written);
        } else if (written->isDataType && written->isMany) {
            partition.multiValues.push_back(written);
        } else if (written->isDataType) {
            bool const isName = written->role == Role::Name;
            partition.singleValues.insert(isName ? partition.singleValues.begin() : partition.singleValues.end(),
                                          written);
        } else {
            (written->isComposite ? composites : partition.references).push_back(written);
        }
    }
    partition.visitable = std::move(extensions);
    partition.visitable.insert(partition.visitable.end(), composites.begin(), composites.end());

    Generic::SequenceBuilder builder;
    Sequence<ImmutableProperty> const visitable = builder.create<ImmutableProperty>();
    Sequence<ImmutableProperty> const collected = builder.create<ImmutableProperty>();
    for (WrittenProperty const * const written : partition.visitable) {
        visitable.push_back(written->property);
        collected.push_back(written->property);
    }
    if (partition.appliedStereotypeInstance.isValid()) {
        collected.push_back(partition.appliedStereotypeInstance);
    }
    partition.visitableProperties = visitable;
    partition.collectedProperties = collected;
    return made;
}

std::string uriOf(ImmutableModel const & model) {
    if (!model.isValid()) {
        raiseInternalError("Attempt to obtain an invalid model's URI");
    }
    return model.getUri();
}

} // namespace ZEL::Serializer
