#include <ZEL/String.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/DataType.h>
#include <ZEL/metamodel/FieldText.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/sequences/PersistentSequence.h>
#include <ZEL/serializer/writer/ObjectView.h>
#include <ZEL/values/Object.h>
#include <ZEL/values/ValueObject.h>

#include <algorithm>

namespace ZEL::Serializer {

ObjectView::ObjectView(ImmutableClassObject const & object)
    : fObject(object),
      fIntf(*object.getImplementation()),
      fBody(*fIntf.internal_body()),
      fState(*fBody.readState(object.getDeviant())) {}

bool ObjectView::hasContainees(PropertyPartition const & partition) const {
    return hasStereotypes() ||
           std::any_of(partition.containments.begin(), partition.containments.end(), [this](auto const * field) {
               return field->sequence != nullptr ? !field->sequence(fState).empty() : field->get(fState) != nullptr;
           });
}

bool ObjectView::hasStereotypes() const { return !fState.stereotypeInstances().empty(); }

std::optional<std::string> ObjectView::textOf(WrittenProperty const & property) const {
    if (property.value == nullptr || property.owner != &fBody.internal_descriptor()) {
        return boxedTextOf(property);
    }
    internal::FieldValue const value = property.value->get(fState);
    if (!value.isSet()) {
        return std::nullopt;
    }
    // All values of the property are of one type; the first one tells its name.
    if (property.valueType == nullptr) {
        return boxedTextOf(property);
    }
    std::optional<std::string> text = internal::textOf(value);
    return text ? text : boxedTextOf(property);
}

std::optional<std::string> ObjectView::boxedTextOf(WrittenProperty const & property) const {
    if (!property.storage.has(fObject)) {
        return std::nullopt;
    }
    ImmutableObject const value = property.storage.getOne(fObject);
    if (!value.isValid()) {
        return std::nullopt;
    }
    noteType(value, property);
    return value.toString().str();
}

void ObjectView::noteType(ImmutableObject const & value, WrittenProperty const & property) {
    ImmutableDataType const type = ImmutableValueObject(value).getMetaDataType();
    if (property.valueType == nullptr || property.valueType != type.getImplementationWithoutAssert()) {
        property.valueTypeName = QualifiedName(uriOf(type.getRootModel()), type.getName().str());
        property.valueType = type.getImplementation();
    }
}

std::vector<ImmutableClassObject> ObjectView::objectsOf(WrittenProperty const & property) const {
    std::vector<ImmutableClassObject> objects;
    if (property.links != nullptr && property.owner == &fBody.internal_descriptor()) {
        auto const add = [&](void * element) {
            auto * const object = static_cast<NSInterface::ObjectIntf *>(element);
            objects.emplace_back(
                static_cast<NSInterface::ClassObjectIntf *>(object->cast(NSInterface::ClassObjectIntf::classInfo())),
                fObject.getDeviant());
        };
        if (property.links->sequence != nullptr) {
            internal::PersistentSequence const & sequence = property.links->sequence(fState);
            objects.reserve(sequence.size());
            sequence.forEach(add);
        } else if (NSInterface::ObjectIntf * const value = property.links->get(fState)) {
            add(value);
        }
    } else if (property.storage.has(fObject)) {
        objects = ImmutableSequence<ImmutableClassObject>(property.storage.get(fObject)).toVector();
    }
    return objects;
}

} // namespace ZEL::Serializer
