#include <ZEL/Boolean.h>
#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/ClassDeviantImpl.h>
#include <ZEL/metamodel/ClassImpl.h>
#include <ZEL/metamodel/ClassRuntime.h>
#include <ZEL/metamodel/EnumerationDeviantImpl.h>
#include <ZEL/metamodel/EnumerationImpl.h>
#include <ZEL/metamodel/EnumerationLiteralDeviantImpl.h>
#include <ZEL/metamodel/EnumerationLiteralImpl.h>
#include <ZEL/metamodel/MetaModelDeclaration.h>
#include <ZEL/metamodel/PrimitiveTypeDeviantImpl.h>
#include <ZEL/metamodel/PrimitiveTypeImpl.h>
#include <ZEL/metamodel/StereotypeDeviantImpl.h>
#include <ZEL/metamodel/StereotypeImpl.h>
#include <ZEL/metamodel/VisibilityKind.h>

#include <algorithm>

namespace ZEL::internal {

namespace {

using EnumerationInWork = ObjectInWork<NSImplementation::EnumerationImpl, NSImplementation::EnumerationDeviantImpl>;
using LiteralInWork =
    ObjectInWork<NSImplementation::EnumerationLiteralImpl, NSImplementation::EnumerationLiteralDeviantImpl>;
using PlainClassInWork = ObjectInWork<NSImplementation::ClassImpl, NSImplementation::ClassDeviantImpl>;
using PrimitiveTypeInWork =
    ObjectInWork<NSImplementation::PrimitiveTypeImpl, NSImplementation::PrimitiveTypeDeviantImpl>;
using StereotypeInWork = ObjectInWork<NSImplementation::StereotypeImpl, NSImplementation::StereotypeDeviantImpl>;

/// What a descriptor says of a property by itself.
void setPlainValues(NSImplementation::PropertyDeviantImpl & state, PropertyDescriptor const & descriptor,
                    Deviant root) {
    state.setName(root, String(descriptor.name));
    state.setIsReadOnly(root, Boolean(descriptor.isReadOnly));
    state.setIsDerived(root, Boolean(descriptor.isDerived));
    state.setIsComposite(root, Boolean(descriptor.isComposite));
    state.setIsOrdered(root, Boolean(descriptor.isOrdered));
    state.setIsUnique(root, Boolean(descriptor.isUnique));
    if (*descriptor.defaultValue != '\0') {
        state.setDefault(root, String(descriptor.defaultValue));
    }
    state.setVisibility(root, VisibilityKind(VisibilityKind::Public));
    state.setLower(root, Integer(descriptor.lower));
    state.setUpper(root, UnlimitedNatural(descriptor.upper));
    state.StateCore::setPersistence(descriptor.persistence);
}

} // namespace

void MetaModelDeclaration::declareAll() {
    fTopPackage = fObjects.make<PackageInWork>();
    fTopPackage.state->setName(fObjects.root(), String(fDescriptor.topPackage));
    fClasses.reserve(fDescriptor.classes.size());
    auto nextClass = fDescriptor.classes.begin();
    for (char const * const declared : fDescriptor.declareOrder) {
        std::string_view const name(declared);
        auto const named = [name](auto const & candidate) { return name == candidate.name; };
        if (nextClass != fDescriptor.classes.end() && named(**nextClass)) {
            declareClass(**nextClass++);
            continue;
        }
        auto const enumeration = std::find_if(fDescriptor.enumerations.begin(), fDescriptor.enumerations.end(), named);
        auto const primitive = std::find_if(fDescriptor.primitives.begin(), fDescriptor.primitives.end(), named);
        if (enumeration != fDescriptor.enumerations.end()) {
            declareEnumeration(*enumeration);
        } else if (primitive != fDescriptor.primitives.end()) {
            declarePrimitive(*primitive);
        } else {
            raiseAnInternalError();
        }
    }
}

MetaModelDeclaration::DeclaredClass const * MetaModelDeclaration::find(ClassDescriptor const & descriptor) const {
    auto const found = fClasses.find(&descriptor);
    return found != fClasses.end() ? &found->second : nullptr;
}

NSInterface::TypeIntf * MetaModelDeclaration::findDataType(std::string_view registeredName) const {
    auto const found = fDataTypes.find(registeredName);
    return found != fDataTypes.end() ? found->second : nullptr;
}

void MetaModelDeclaration::place(NSInterface::ObjectIntf & type, StateCore & state) {
    state.setContainer(fTopPackage.object);
    fPlaced.push_back(&type);
}

void MetaModelDeclaration::fillTopPackage() const {
    fTopPackage.state->internal_packagedElementField(FieldUse::Write).assign(fPlaced.begin(), fPlaced.end());
}

ClassInWork MetaModelDeclaration::makeClass(ClassDescriptor const & descriptor) {
    if (descriptor.builtAs == BuiltAs::Model) {
        // The class of models is the metamodel itself. It cannot stand in a package of its own contents.
        auto const part = [](auto & whole) {
            return static_cast<NSInterface::ClassIntf *>(whole.cast(NSInterface::ClassIntf::classInfo()));
        };
        ModelCore & model = fObjects.model();
        return {part(model), part(*model.readState(fObjects.root()))};
    }
    if (descriptor.builtAs == BuiltAs::Stereotype) {
        auto const made = fObjects.make<StereotypeInWork>();
        place(*made.object, *made.state);
        return {made.object, made.state};
    }
    auto const made = fObjects.make<PlainClassInWork>();
    place(*made.object, *made.state);
    return {made.object, made.state};
}

void MetaModelDeclaration::declareClass(ClassDescriptor const & descriptor) {
    DeclaredClass & declared = fClasses[&descriptor];
    ClassInWork const made = declared.made = makeClass(descriptor);
    made.state->setName(fObjects.root(), String(descriptor.name));
    if (descriptor.isAbstract) {
        made.state->setIsAbstract(fObjects.root(), Boolean(true));
    }
    fKeyed.objects.push_back(made.object);
    descriptor.runtime->bind(descriptor, made.object, fObjects.root());

    declared.properties.reserve(descriptor.ownProperties.size() + descriptor.clones.size());
    for (PropertyDescriptor const & property : descriptor.ownProperties) {
        declared.properties.push_back(makeProperty(made, property));
    }
    for (PropertyDescriptor const * const property : descriptor.clones) {
        declared.properties.push_back(makeProperty(made, *property));
    }
    std::vector<NSInterface::ObjectIntf *> objects;
    objects.reserve(declared.properties.size());
    for (PropertyInWork const & property : declared.properties) {
        objects.push_back(property.object);
    }
    made.state->internal_ownedAttributeField(FieldUse::Write).assign(objects.begin(), objects.end());
    fKeyed.objects.insert(fKeyed.objects.end(), objects.begin(), objects.end());
}

PropertyInWork MetaModelDeclaration::makeProperty(ClassInWork const & owner,
                                                  PropertyDescriptor const & descriptor) const {
    auto const property = fObjects.make<PropertyInWork>();
    property.state->setContainer(owner.object);
    setPlainValues(*property.state, descriptor, fObjects.root());
    describe(property, descriptor.description);
    return property;
}

void MetaModelDeclaration::describe(PropertyInWork const & property, char const * text) const {
    if (*text == '\0') {
        return;
    }
    auto const comment = fObjects.make<CommentInWork>();
    comment.state->setContainer(property.object);
    comment.state->setBody(fObjects.root(), String(text));
    comment.state->internal_annotatedElementField(FieldUse::Write)
        .push_back(static_cast<ObjectIntf *>(property.object));
    property.state->internal_ownedCommentField(FieldUse::Write).push_back(static_cast<ObjectIntf *>(comment.object));
}

void MetaModelDeclaration::declareEnumeration(EnumerationDescriptor const & descriptor) {
    auto const enumeration = fObjects.make<EnumerationInWork>();
    place(*enumeration.object, *enumeration.state);
    enumeration.state->setName(fObjects.root(), String(descriptor.name));
    fDataTypes.emplace(descriptor.registeredName, enumeration.object);
    fKeyed.objects.push_back(enumeration.object);
    for (char const * const text : descriptor.literals) {
        auto const literal = fObjects.make<LiteralInWork>();
        literal.state->setContainer(enumeration.object);
        literal.state->setName(fObjects.root(), String(text));
        enumeration.state->internal_ownedLiteralField(FieldUse::Write)
            .push_back(static_cast<ObjectIntf *>(literal.object));
    }
}

void MetaModelDeclaration::declarePrimitive(PrimitiveDescriptor const & descriptor) {
    auto const type = fObjects.make<PrimitiveTypeInWork>();
    place(*type.object, *type.state);
    type.state->setName(fObjects.root(), String(descriptor.name));
    fDataTypes.emplace(descriptor.registeredName, type.object);
    fKeyed.objects.push_back(type.object);
}

} // namespace ZEL::internal
