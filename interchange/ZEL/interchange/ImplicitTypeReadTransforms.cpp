#include <ZEL/Boolean.h>
#include <ZEL/String.h>
#include <ZEL/interchange/ImplicitTypeReadTransforms.h>
#include <ZEL/interchange/MetaClasses.h>
#include <ZEL/interchange/UmlNames.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Model.h>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace ZEL::Interchange {

using Serializer::Context;
using Serializer::ContextSequence;
using Serializer::QualifiedName;

namespace {

void rename(Context & context, QualifiedName role) {
    if (role != context.getRole()) {
        if (context.getType() == context.getRole()) {
            context.setType(role);
        }
        context.setRole(role);
    }
}

} // namespace

void ImplicitTypeReadTransforms::Element::noteStated(std::string_view property) {
    std::erase_if(presumed, [property](UmlDefault const * row) { return row->property == property; });
}

ImplicitTypeReadTransforms::ImplicitTypeReadTransforms()
    : fClasses(std::make_unique<MetaClasses>()), fUml(std::make_unique<UmlNames>(*fClasses)) {
    addTransform(Context(), [this](Context const & context) { return complete(context); });
    setTranslateNamespace([this](std::string const & uri) {
        fDeclaresUml25 = fDeclaresUml25 || isUml25Namespace(uri);
        return uri;
    });
    setOnCreate([this](Context const & element, ClassObject const & object) { leave(element, object); });
    setPostTransform([this](Model const &) {
        if (!fFiles.empty()) {
            fFiles.pop_back();
        }
    });
}

ImplicitTypeReadTransforms::~ImplicitTypeReadTransforms() = default;

ContextSequence ImplicitTypeReadTransforms::complete(Context const & context) {
    Context result = context;
    if (context.isElement()) {
        completeElement(result);
    } else if (!fFiles.empty() && !fFiles.back().path.empty()) {
        completeAttribute(result);
    }
    return result;
}

void ImplicitTypeReadTransforms::completeElement(Context & context) {
    if (context.getParentRole().isEmpty() && context.getParentType().isEmpty()) {
        fFiles.emplace_back(); // the root of a file
    } else if (fFiles.empty()) {
        return;
    }
    File & file = fFiles.back();
    file.isOfUml25 = std::exchange(fDeclaresUml25, false) || file.isOfUml25;
    std::vector<Element> & path = file.path;
    // What made an object was taken off the path when that was complete; what made none is found by its names.
    while (!path.empty() &&
           (path.back().role != context.getParentRole() || path.back().type != context.getParentType())) {
        path.pop_back();
    }
    Element element{context.getRole(), context.getType(), {}, {}, nullptr, {}};
    if (!path.empty()) {
        Element & parent = path.back();
        context.setParentRole(parent.newRole);
        context.setParentType(parent.newType);
        complete(context, parent);
    }
    element.newRole = context.getRole();
    element.newType = context.getType();
    element.metaClass = fClasses->find(element.newType);
    if (file.isOfUml25 && element.metaClass != nullptr) {
        element.presumed = fUml->defaultsOf(*element.metaClass, UmlForm::Version25);
    }
    path.push_back(std::move(element));
}

/// An attribute stands after its element.
void ImplicitTypeReadTransforms::completeAttribute(Context & attribute) {
    Element & element = fFiles.back().path.back();
    if (attribute.getParentRole() != element.role || attribute.getParentType() != element.type) {
        return;
    }
    attribute.setParentRole(element.newRole);
    attribute.setParentType(element.newType);
    if (element.metaClass != nullptr) {
        rename(attribute, fUml->propertyOf(*element.metaClass, attribute.getRole()));
        element.noteStated(attribute.getRoleName());
    }
}

void ImplicitTypeReadTransforms::complete(Context & element, Element & parent) {
    internal::MetaClassView const * const owner = parent.metaClass;
    if (element.getRole().hasUri() || owner == nullptr) {
        return; // named after a class, not after a property
    }
    rename(element, fUml->propertyOf(*owner, element.getRole()));
    parent.noteStated(element.getRoleName());
    internal::PropertyView const * const property = owner->find(std::string_view(element.getRoleName()));
    if (property == nullptr || !property->isComposite) {
        return; // a link without a type needs none
    }
    if (element.getType() != element.getRole()) {
        element.setType(fUml->classOfPart(element.getType()));
    } else if (QualifiedName const type = typeOf(*owner, parent, *property); !type.isEmpty()) {
        element.setType(type);
    }
    if (property->isDerived) {
        internal::PropertyView const * const place = fClasses->placeFor(parent.newType, element.getType());
        if (place != nullptr) {
            element.setRole({}, place->name);
        }
    }
}

/// Of a part that states none; empty if the property does not tell it either.
QualifiedName ImplicitTypeReadTransforms::typeOf(internal::MetaClassView const & owner, Element const & parent,
                                                 internal::PropertyView const & property) {
    QualifiedName const implied = fUml->impliedType(owner, QualifiedName({}, property.name));
    if (!implied.isEmpty() || !property.type.isValid()) {
        return implied;
    }
    QualifiedName const type(parent.newType.getUri(), property.type.getName().str());
    internal::MetaClassView const * const known = fClasses->find(type);
    return known != nullptr && !known->metaClass().isAbstract() ? type : QualifiedName();
}

void ImplicitTypeReadTransforms::leave(Context const & context, ClassObject const & object) {
    if (fFiles.empty()) {
        return;
    }
    std::vector<Element> & path = fFiles.back().path;
    auto const left = std::find_if(path.rbegin(), path.rend(), [&](Element const & open) {
        return open.newRole == context.getRole() && open.newType == context.getType();
    });
    if (left == path.rend()) {
        return;
    }
    for (UmlDefault const * const row : left->presumed) {
        object.setOrAdd(String(row->property), Boolean(row->value));
    }
    path.erase(std::prev(left.base()), path.end());
}

} // namespace ZEL::Interchange
