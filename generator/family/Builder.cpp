#include "family/Builder.h"

#include "family/Names.h"

#include <algorithm>
#include <filesystem>
#include <set>

namespace zelgen {
namespace {

Uri uriOf(std::string const & text) {
    constexpr std::string_view kPlus = " + ";
    if (std::size_t const plus = text.find(kPlus); plus != std::string::npos) {
        return {text.substr(0, plus), text.substr(plus + kPlus.size())};
    }
    return {"", text};
}

/// The redefined properties of the class and its ancestors, which instances do not have.
std::set<Property const *> redefinedIn(Class const & target) {
    std::set<Property const *> result;
    for (Class const * const c : target.line()) {
        for (Property const & property : c->own) {
            result.insert(property.redefined.begin(), property.redefined.end());
        }
    }
    return result;
}

/// Whether a superclass has both properties already, and so determines which one replaces the other.
bool isSettledAbove(Class const & target, Property const & a, Property const & b) {
    return std::any_of(target.superclasses.begin(), target.superclasses.end(), [&a, &b](Class const * super) {
        return super->isKindOf(*a.owner) && super->isKindOf(*b.owner);
    });
}

} // namespace

Family::Family(std::vector<Definition const *> const & definitions) { FamilyBuilder(definitions, fMetamodels).build(); }

FamilyBuilder::FamilyBuilder(std::vector<Definition const *> const & definitions,
                             std::vector<std::unique_ptr<Metamodel>> & target)
    : fDefinitions(definitions), fCatalogue(definitions), fTarget(target) {}

void FamilyBuilder::build() {
    for (Definition const * const definition : fDefinitions) {
        addMetamodel(*definition);
    }
    for (auto const & metamodel : fTarget) {
        for (auto const & target : metamodel->classes) {
            addAncestors(*target);
            fOrder.push_back(target.get());
        }
    }
    // A class has more ancestors than any of them, so this brings superclasses first.
    std::stable_sort(fOrder.begin(), fOrder.end(),
                     [](Class const * a, Class const * b) { return a->ancestors.size() < b->ancestors.size(); });
    forEachClass([&](Class & target) { addProperties(target); });
    forEachProperty(&FamilyBuilder::connectProperty);
    forEachProperty(&FamilyBuilder::decideStorage);
    forEachClass([&](Class & target) { addInherited(target); });
    forEachClass([&](Class & target) { addViews(target); });
    forEachClass([&](Class & target) { addOperations(target); });
    forEachClass([&](Class & target) { addConstraints(target); });
}

void FamilyBuilder::forEachProperty(void (FamilyBuilder::*pass)(Property &, PropertyDefinition const &)) {
    forEachClass([&](Class & target) {
        for (Property & property : target.own) {
            (this->*pass)(property, *ownProperty(*fSources.at(&target).type, property.name));
        }
    });
}

void FamilyBuilder::addMetamodel(Definition const & definition) {
    auto metamodel = std::make_unique<Metamodel>();
    metamodel->files = {std::filesystem::path(definition.file).filename().string()};
    for (std::string const & part : definition.parts) {
        metamodel->files.push_back(std::filesystem::path(part).filename().string());
    }
    metamodel->prefix = definition.prefix.text;
    metamodel->cppNamespace = definition.cppNamespace.empty() ? metamodel->prefix : definition.cppNamespace.text;
    metamodel->includeDirectory = definition.includeDirectory.text;
    if (metamodel->includeDirectory.empty()) {
        for (char const c : metamodel->cppNamespace) {
            if (c != ':') {
                metamodel->includeDirectory += c;
            } else if (metamodel->includeDirectory.back() != '/') {
                metamodel->includeDirectory += '/';
            }
        }
    }
    metamodel->topPackage = definition.topPackage.empty() ? metamodel->prefix : definition.topPackage.text;
    for (Word const & uri : definition.uris) {
        metamodel->uris.push_back(uriOf(uri.text));
    }
    for (Word const & uri : definition.alsoRegistered) {
        metamodel->alsoRegistered.push_back(uriOf(uri.text));
    }
    metamodel->uuid = definition.uuid.text;
    metamodel->ownedEndKeys = {metamodel->prefix, metamodel->prefix};
    for (std::size_t i = 0; i < definition.ownedEndKeys.size(); ++i) {
        metamodel->ownedEndKeys.at(i) = definition.ownedEndKeys[i].text;
    }
    for (TypeDefinition const & source : definition.types) {
        auto type = std::make_unique<Type>();
        type->kind = source.kind;
        type->name = source.name.text;
        type->home = metamodel.get();
        type->mark = source.name.mark;
        for (Word const & literal : source.literals) {
            type->literals.push_back(literal.text);
            type->enumerators.push_back(Names::enumerator(source, literal.text));
        }
        if (source.kind == TypeKind::Class) {
            auto made = std::make_unique<Class>();
            made->type = type.get();
            made->home = metamodel.get();
            made->mark = source.name.mark;
            made->name = source.name.text;
            made->isAbstract = source.abstract.isTrue();
            made->builtAsStereotype = source.builtAs.text == "stereotype";
            made->hasGeneratedInterface = !hasWord(source.handWritten, "interface");
            made->hasGeneratedHandles = !hasWord(source.handWritten, "handles");
            type->asClass = made.get();
            fClasses[&source] = made.get();
            fSources[made.get()] = {&definition, &source};
            metamodel->classes.push_back(std::move(made));
        }
        fTypes[&source] = type.get();
        metamodel->types.push_back(std::move(type));
    }
    auto const namedClass = [&](Word const & name) {
        Catalogue::Entry const entry = name.empty() ? Catalogue::Entry() : fCatalogue.find(name.text, definition);
        return entry ? fClasses.at(entry.type) : nullptr;
    };
    metamodel->modelClass = namedClass(definition.modelClass);
    metamodel->factoryClass = namedClass(definition.factoryClass);
    fTarget.push_back(std::move(metamodel));
    if (fTarget.size() > 1) {
        fTarget.front()->dependencies.push_back(fTarget.back().get());
    }
}

void FamilyBuilder::addAncestors(Class & target) {
    Catalogue::Entry const source = fSources.at(&target);
    for (Word const & super : source.type->superclasses) {
        target.superclasses.push_back(fClasses.at(fCatalogue.find(super.text, *source.home).type));
    }
    for (Catalogue::Entry const & entry : fCatalogue.closure(source)) {
        if (entry.type != source.type) {
            target.ancestors.push_back(fClasses.at(entry.type));
        }
    }
    target.isModel = fCatalogue.isKindOf(source, "ZEL.Model");
    target.isNamedElement = fCatalogue.isKindOf(source, "ZEL.NamedElement");
    target.builtAsStereotype =
        target.builtAsStereotype || (!target.home->isBuiltIn() && fCatalogue.isKindOf(source, "ZEL.StereotypeObject"));
}

Type const & FamilyBuilder::typeOf(std::string const & name, Definition const & from) const {
    return *fTypes.at(fCatalogue.find(name, from).type);
}

Property const & FamilyBuilder::propertyOf(Catalogue::PropertyEntry const & entry) const {
    Class const & owner = *fClasses.at(entry.owner.type);
    return *std::find_if(owner.own.begin(), owner.own.end(),
                         [&](Property const & p) { return p.name == entry.property->name.text; });
}

Property const & FamilyBuilder::inClosure(Class const & from, std::string const & name) const {
    return propertyOf(fCatalogue.inClosure(fSources.at(&from), name));
}

void FamilyBuilder::addRedefinitions(Class & target) {
    for (Property const & property : target.own) {
        for (Property const * const other : property.redefined) {
            // Two ends that are both the container need not know each other; operations of the same name override each
            // other.
            bool const bothContainer = property.making == Making::Container && other->making == Making::Container;
            if (!bothContainer && property.base != other->base) {
                target.redefinitions.emplace_back(other, &property);
            }
        }
    }
}

void FamilyBuilder::addInherited(Class & target) {
    addRedefinitions(target);
    std::set<Property const *> const redefined = redefinedIn(target);
    std::map<std::string, Property const *> names;
    std::vector<Property const *> present;
    for (Property const & property : target.own) {
        present.push_back(&property);
    }
    for (Class const * const ancestor : target.ancestors) {
        for (Property const & property : ancestor->own) {
            target.inherited.push_back(&property);
            if (redefined.count(&property) != 0) {
                continue;
            }
            // Of two properties of the same name, the first one replaces the other.
            Property const * const standing = names.emplace(property.name, &property).first->second;
            if (standing == &property) {
                present.push_back(&property);
            } else if (!isSettledAbove(target, *standing, property)) {
                target.redefinitions.emplace_back(&property, standing);
            }
        }
    }
    for (Property const * const property : present) {
        if (property->owner != &target && !property->isHidden) {
            target.clones.push_back(property);
        }
        if (property->isField() && !target.isAbstract) {
            target.fields.push_back(property);
        }
    }
}

void FamilyBuilder::addViews(Class & target) {
    auto const partsOf = [&](std::vector<Word> const & names) {
        std::vector<Property const *> parts;
        parts.reserve(names.size());
        for (Word const & name : names) {
            parts.push_back(&inClosure(target, name.text));
        }
        return parts;
    };
    Catalogue::Entry const source = fSources.at(&target);
    for (Property const & property : target.own) {
        if (property.making == Making::Union) {
            target.views.push_back({&property, partsOf(ownProperty(*source.type, property.name)->view)});
        }
    }
    for (auto const & [name, parts] : source.type->views) {
        target.views.push_back({&inClosure(target, name.text), partsOf(parts)});
    }
}

void FamilyBuilder::addOperations(Class & target) {
    Catalogue::Entry const source = fSources.at(&target);
    auto const resolved = [&](SignatureType const & type) -> Type const * {
        return type.name == "void" || type.name == "Deviant" ? nullptr : &typeOf(type.name, *source.home);
    };
    for (OperationDefinition const & definition : source.type->operations) {
        Signature const signature = *parseSignature(definition.signature.text);
        Operation operation;
        operation.result = resolved(signature.result);
        operation.resultForm = signature.result;
        operation.name = signature.name;
        operation.isConst = signature.isConst;
        operation.body = definition.body;
        for (Signature::Parameter const & parameter : signature.parameters) {
            operation.parameters.push_back({resolved(parameter.type), parameter.type, parameter.name});
        }
        for (Class const * const ancestor : target.ancestors) {
            for (Operation const & inherited : ancestor->operations) {
                operation.overrides = operation.overrides || inherited.isCalledAs(operation);
            }
        }
        target.operations.push_back(std::move(operation));
    }
}

void FamilyBuilder::addConstraints(Class & target) {
    for (ConstraintDefinition const & definition : fSources.at(&target).type->constraints) {
        std::string const severity = definition.severity.empty() ? "error" : definition.severity.text;
        target.constraints.push_back({definition.name.text, Names::capital(severity), definition.text.text,
                                      Names::satisfies(definition.name.text)});
    }
}

} // namespace zelgen
