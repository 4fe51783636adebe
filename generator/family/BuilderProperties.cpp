#include "family/Builder.h"
#include "family/Names.h"

#include <algorithm>

// What is decided about one property at a time.

namespace zelgen {
namespace {

/// Where the values are stored, or how they are derived.
Making makingOf(Property const & property, PropertyDefinition const & source) {
    if (!source.stored.empty()) {
        return source.stored.text == "core" ? Making::Core : Making::Body;
    }
    if (property.stereotype != nullptr) {
        return Making::Extension;
    }
    if (property.type->asClass != nullptr && !property.many && property.opposite != nullptr &&
        property.opposite->isComposite) {
        return Making::Container;
    }
    if (!source.body.empty()) {
        return source.body.text == "hand" ? Making::Hand : Making::Unimplemented;
    }
    if (source.viewOf) {
        return property.filtered == nullptr ? Making::Containees : Making::Filter;
    }
    return property.isDerived ? Making::Union : Making::Field;
}

FieldKind fieldKindOf(Property const & property) {
    static std::map<std::string, FieldKind> const kinds{{"ZEL.Boolean", FieldKind::Flag},
                                                        {"ZEL.Integer", FieldKind::Int32},
                                                        {"ZEL.UnlimitedNatural", FieldKind::Unsigned32},
                                                        {"ZEL.Real", FieldKind::Double},
                                                        {"ZEL.Double", FieldKind::Double},
                                                        {"ZEL.Single", FieldKind::Single},
                                                        {"ZEL.String", FieldKind::Text}};
    if (property.type->kind == TypeKind::Class) {
        return property.many ? FieldKind::Pointers : FieldKind::Pointer;
    }
    if (property.many) {
        return FieldKind::Texts;
    }
    if (property.type->kind == TypeKind::Enumeration) {
        return FieldKind::Bits;
    }
    auto const found = kinds.find(property.type->qualifiedName());
    return found == kinds.end() ? FieldKind::Value : found->second;
}

Form formOf(Property const & property) {
    if (property.many) {
        return Form::Many;
    }
    if (property.type->kind == TypeKind::Class) {
        return Form::Reference;
    }
    bool const required = property.lower > 0;
    if (required && property.field == FieldKind::Flag && Names::readsAsFlag(property.base)) {
        return Form::Flag;
    }
    // An empty stored text counts as absent even if one is required, so that it is not written to files.
    return required && !property.isTextField() ? Form::RequiredValue : Form::Value;
}

/// Whether the field alone cannot express "no value", because the default of its type is a value like any other.
bool needsHasFlag(Property const & property) {
    if (property.form != Form::Value || !property.isField()) {
        return false;
    }
    std::string typesDefault = "0";
    switch (property.field) {
    case FieldKind::Text:
        typesDefault = "";
        break;
    case FieldKind::Value:
        return true;
    case FieldKind::Flag:
        typesDefault = "false";
        break;
    case FieldKind::Bits:
        typesDefault = property.type->literals.front();
        break;
    default:
        break;
    }
    return !property.defaultValue.empty() && property.defaultValue != typesDefault;
}

} // namespace

void FamilyBuilder::addProperties(Class & target) {
    std::vector<PropertyDefinition> const & sources = fSources.at(&target).type->properties;
    target.own.resize(sources.size());
    for (std::size_t i = 0; i < sources.size(); ++i) {
        target.own[i].owner = &target;
        fillProperty(target.own[i], sources[i]);
    }
}

void FamilyBuilder::fillProperty(Property & property, PropertyDefinition const & source) {
    Class const & owner = *property.owner;
    property.mark = source.name.mark;
    property.name = source.name.text;
    property.type = &typeOf(source.type.text, definitionOf(owner));
    for (Class const * const ancestor : owner.ancestors) {
        for (Property const & inherited : ancestor->own) {
            if (inherited.name == property.name) {
                property.redefined.push_back(&inherited);
            }
        }
    }
    property.base = property.redefined.empty() ? property.name : Names::prefixed(property.type->name, property.name);
    property.capital = Names::capital(property.base);
    property.plural = Names::plural(property.capital);

    std::string const multiplicity = source.multiplicity.empty() ? "0..1" : source.multiplicity.text;
    std::size_t const dots = multiplicity.find("..");
    std::string const upper = multiplicity.substr(dots + 2);
    property.lower = std::stoi(multiplicity.substr(0, dots));
    property.upper = upper == "*" ? 0xFFFFFFFFu : static_cast<std::uint32_t>(std::stoul(upper));
    property.many = property.upper != 1;

    property.isReadOnly = hasWord(source.flags, "read_only");
    property.isDerived = hasWord(source.flags, "derived");
    property.isComposite = hasWord(source.flags, "composite");
    property.isOrdered = hasWord(source.flags, "ordered");
    property.isUnique = !hasWord(source.flags, "nonunique");
    property.isSeldom = hasWord(source.flags, "seldom");
    property.defaultValue = source.defaultValue.text;
    property.persistence = source.persistence.empty() ? "default" : source.persistence.text;
    property.association = source.association.text;
    property.ownedEnd = source.ownedEnd.text;
    std::string const keyEnd = source.key.empty() ? owner.qualifiedName() + '.' + property.name : source.key.text;
    property.key = owner.qualifiedName() + "::" + keyEnd;
    property.description = source.description;
    property.isHidden = source.hidden.isTrue();
    property.fixed = source.fixed.text;
}

void FamilyBuilder::connectProperty(Property & property, PropertyDefinition const & source) {
    Definition const & from = definitionOf(*property.owner);
    if (!source.redefines.empty()) {
        property.redefined.push_back(&propertyOf(fCatalogue.findProperty(source.redefines.text, from)));
    }
    // What those redefine under other names, too: two superclasses may have put different ones in its place.
    for (std::size_t i = 0; i < property.redefined.size(); ++i) {
        for (Property const * const further : property.redefined[i]->redefined) {
            if (std::find(property.redefined.begin(), property.redefined.end(), further) == property.redefined.end()) {
                property.redefined.push_back(further);
            }
        }
    }
    if (!source.opposite.empty()) {
        property.opposite = &propertyOf(fCatalogue.findProperty(source.opposite.text, from));
    }
    if (source.baseElement.isTrue()) {
        property.opposite = &propertyOf(fCatalogue.findProperty("ZEL.ClassObject.appliedStereotypeInstance", from));
    }
    if (source.viewOf && source.viewOf->text != "containees") {
        property.filtered = &inClosure(*property.owner, source.viewOf->text);
    }
    if (!source.stereotype.empty()) {
        property.stereotype = typeOf(source.stereotype.text, from).asClass;
    }
    if (property.type->kind == TypeKind::Class) {
        property.otherEnd = property.opposite != nullptr ? OtherEnd::Property
                            : property.isComposite       ? OtherEnd::Container
                                                         : OtherEnd::None;
    }
}

void FamilyBuilder::decideStorage(Property & property, PropertyDefinition const & source) {
    property.making = makingOf(property, source);
    property.field = fieldKindOf(property);
    property.form = formOf(property);
    property.keepsHas = needsHasFlag(property);
}

} // namespace zelgen
