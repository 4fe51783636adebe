#include <ZEL/Boolean.h>
#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/DataType.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/sequences/PersistentSequence.h>
#include <ZEL/sequences/PropertyToSequenceMethods.h>
#include <ZEL/sequences/Ref.h>
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
               return field->sequence != nullptr ? !internal::readSequence(*field, fState).empty()
                                                 : field->get(fState) != nullptr;
           });
}

bool ObjectView::hasStereotypes() const { return !fState.stereotypeInstances().empty(); }

std::optional<std::string> ObjectView::textOf(WrittenProperty const & property) const {
    if (property.methods == nullptr || property.valueType == nullptr) {
        return boxedTextOf(property);
    }
    Deviant const deviant = fObject.getDeviant();
    if (!property.methods->has(&fIntf, deviant)) {
        return std::nullopt;
    }
    // Most values are of these types. All values of the property are of one, whose name is known.
    Generic::Ref const value = property.methods->get(&fIntf, deviant);
    if (Boolean const * const boolean = value.valueAs<Boolean>()) {
        return *boolean ? "true" : "false";
    }
    if (String const * const text = value.valueAs<String>()) {
        return text->str();
    }
    if (Integer const * const number = value.valueAs<Integer>()) {
        return std::to_string(static_cast<std::int32_t>(*number));
    }
    if (UnlimitedNatural const * const number = value.valueAs<UnlimitedNatural>()) {
        return number->toString().str();
    }
    return boxedTextOf(property);
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
    if (property.field != nullptr && property.owner == &fBody.internal_descriptor()) {
        auto const add = [&](void * element) {
            auto * const object = static_cast<NSInterface::ObjectIntf *>(element);
            objects.emplace_back(
                static_cast<NSInterface::ClassObjectIntf *>(object->cast(NSInterface::ClassObjectIntf::classInfo())),
                fObject.getDeviant());
        };
        if (property.field->sequence != nullptr) {
            internal::PersistentSequence const & sequence = internal::readSequence(*property.field, fState);
            objects.reserve(sequence.size());
            sequence.forEach(add);
        } else if (NSInterface::ObjectIntf * const value = property.field->get(fState)) {
            add(value);
        }
    } else if (property.storage.has(fObject)) {
        objects = ImmutableSequence<ImmutableClassObject>(property.storage.get(fObject)).toVector();
    }
    return objects;
}

} // namespace ZEL::Serializer
