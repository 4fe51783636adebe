#include <ZEL/Boolean.h>
#include <ZEL/PersistenceKind.h>
#include <ZEL/String.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/DataType.h>
#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/MultiValuedPropertyManager.h>
#include <ZEL/metamodel/SingleValuedPropertyManager.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/sequences/SequenceBuilder.h>
#include <ZEL/serializer/writer/PropertyPartition.h>

#include <hasp_util/XmlConstants.h>

namespace ZEL::Serializer {
namespace {

/// Whether the values of the property never stand in a file at its place.
bool isLeftOut(ImmutableProperty const & property) {
    if (property.isDerived() || property.getPersistence() == PersistenceKind::Transient ||
        property.getName().str() == "unparented") {
        return true;
    }
    ImmutableProperty const opposite = property.getOpposite();
    return opposite.isValid() && opposite.isComposite();
}

/// The property of that name of the class; null if its tables have none.
internal::PropertyDescriptor const * descriptorOf(internal::ClassDescriptor const & owner, std::string const & name) {
    for (internal::PropertyDescriptor const & own : owner.ownProperties) {
        if (name == own.name) {
            return &own;
        }
    }
    for (internal::PropertyDescriptor const * const inherited : owner.clones) {
        if (name == inherited->name) {
            return inherited;
        }
    }
    return nullptr;
}

} // namespace

WrittenProperty::WrittenProperty(ImmutableProperty const & handle)
    : property(handle),
      storage(handle.getStorage()),
      role(HASP::XmlConstants::NULL_NS_URI, handle.getName().str()),
      defaultText(handle.getDefault().str()),
      hasDefault(handle.hasDefault()),
      isMany(static_cast<std::uint32_t>(handle.upperBound()) > 1),
      isDataTyped(ImmutableDataType(handle.getType()).isValid()),
      isComposite(handle.isComposite()),
      isExtension(handle.getPersistence() == PersistenceKind::Extension),
      isNested(isComposite && !handle.isDerived()) {}

void WrittenProperty::findRoads(internal::ClassDescriptor const & ownerClass) {
    internal::PropertyDescriptor const * const descriptor = descriptorOf(ownerClass, role.getName());
    PropertyStorageIntf const * const body = storage.getImplementationWithoutAssert();
    if (descriptor == nullptr || body == nullptr) {
        return;
    }
    // An application may have given the property a storage of its own, which then says where the values are.
    bool const isGenerated = descriptor->isMany() ? dynamic_cast<MultiValuedPropertyManager const *>(body) != nullptr
                                                  : dynamic_cast<SingleValuedPropertyManager const *>(body) != nullptr;
    if (!isGenerated) {
        return;
    }
    owner = &ownerClass;
    if (isDataTyped) {
        methods = descriptor->single;
    } else {
        field = internal::fieldOf(ownerClass, *descriptor);
    }
}

PropertyPartition::PropertyPartition(ImmutableClass const & handle, internal::ClassDescriptor const & descriptor)
    : metaClass(handle), type(uriOf(handle.getRootModel()), handle.getName().str()) {
    for (internal::FieldDescriptor const & field : descriptor.fields) {
        if (internal::isContainment(*field.property)) {
            containments.push_back(&field);
        }
    }
}

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
    return property.isValid() ? enter(property) : nullptr;
}

WrittenProperty * PartitionCache::enter(ImmutableProperty const & property) {
    std::unique_ptr<WrittenProperty> & entry = fProperties[property.getImplementation()];
    if (entry == nullptr) {
        entry = std::make_unique<WrittenProperty>(property);
    }
    return entry.get();
}

std::unique_ptr<PropertyPartition> PartitionCache::makePartition(internal::ClassDescriptor const & descriptor,
                                                                 ImmutableClass const & metaClass) {
    auto made = std::make_unique<PropertyPartition>(metaClass, descriptor);
    PropertyPartition & partition = *made;
    std::vector<WrittenProperty const *> extensions;
    std::vector<WrittenProperty const *> composites;
    for (ImmutableProperty const property : partition.metaClass.getOwnedAttributes()) {
        if (property.getName().str() == "appliedStereotypeInstance") {
            partition.appliedStereotypeInstance = property;
        }
        if (isLeftOut(property)) {
            continue;
        }
        WrittenProperty * const written = enter(property);
        written->findRoads(descriptor);
        if (written->isExtension) {
            extensions.push_back(written);
        } else if (written->isDataTyped && written->isMany) {
            partition.multiValues.push_back(written);
        } else if (written->isDataTyped) {
            bool const isName = written->getName() == "name";
            partition.singleValues.insert(isName ? partition.singleValues.begin() : partition.singleValues.end(),
                                          written);
        } else {
            (written->isComposite ? composites : partition.references).push_back(written);
        }
    }
    partition.visitable = std::move(extensions);
    partition.visitable.insert(partition.visitable.end(), composites.begin(), composites.end());

    Generic::SequenceBuilder builder;
    Sequence<ImmutableProperty> const properties = builder.create<ImmutableProperty>();
    for (WrittenProperty const * const written : partition.visitable) {
        properties.push_back(written->property);
    }
    partition.visitableProperties = properties;
    return made;
}

std::string uriOf(ImmutableModel const & model) {
    if (!model.isValid()) {
        raiseInternalError("Attempt to obtain an invalid model's URI");
    }
    return model.getUri();
}

} // namespace ZEL::Serializer
