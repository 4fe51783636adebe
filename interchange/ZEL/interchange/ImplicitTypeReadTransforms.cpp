#include <ZEL/Boolean.h>
#include <ZEL/String.h>
#include <ZEL/interchange/ImplicitTypeReadTransforms.h>
#include <ZEL/interchange/MetaClasses.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Model.h>

#include <algorithm>

namespace ZEL::Interchange {

using Serializer::Context;
using Serializer::ContextSequence;
using Serializer::QualifiedName;

ImplicitTypeReadTransforms::ImplicitTypeReadTransforms() : fClasses(std::make_unique<MetaClasses>()) {
    addTransform(Context(), [this](Context const & context) { return complete(context); });
    setOnCreate([this](Context const & element, ClassObject const &) { leave(element); });
    setPostTransform([this](Model const &) {
        if (!fPaths.empty()) {
            fPaths.pop_back();
        }
    });
}

ImplicitTypeReadTransforms::~ImplicitTypeReadTransforms() = default;

ContextSequence ImplicitTypeReadTransforms::complete(Context const & context) {
    Context result = context;
    if (context.isElement()) {
        completeElement(result);
    } else if (!fPaths.empty() && !fPaths.back().empty()) {
        // An attribute stands after its element.
        Element const & element = fPaths.back().back();
        if (context.getParentRole() == element.role && context.getParentType() == element.type) {
            result.setParentRole(element.newRole);
            result.setParentType(element.newType);
        }
    }
    return result;
}

void ImplicitTypeReadTransforms::completeElement(Context & context) {
    if (context.getParentRole().isEmpty() && context.getParentType().isEmpty()) {
        fPaths.emplace_back(); // the root of a file
    } else if (fPaths.empty()) {
        return;
    }
    Path & path = fPaths.back();
    // What made an object was taken off the path when that was complete; what made none is found by its names.
    while (!path.empty() &&
           (path.back().role != context.getParentRole() || path.back().type != context.getParentType())) {
        path.pop_back();
    }
    Element element{context.getRole(), context.getType(), {}, {}};
    if (!path.empty()) {
        Element const & parent = path.back();
        context.setParentRole(parent.newRole);
        context.setParentType(parent.newType);
        complete(context, parent);
    }
    element.newRole = context.getRole();
    element.newType = context.getType();
    path.push_back(element);
}

void ImplicitTypeReadTransforms::complete(Context & element, Element const & parent) {
    if (element.getRole().hasUri()) {
        return; // named after a class, not after a property
    }
    internal::MetaClassView const * const owner = fClasses->find(parent.newType);
    internal::PropertyView const * const property =
        owner != nullptr ? owner->find(std::string_view(element.getRoleName())) : nullptr;
    if (property == nullptr) {
        return;
    }
    // A link without a type needs none.
    if (property->isComposite && element.getType() == element.getRole() && property->type.isValid()) {
        QualifiedName const type(parent.newType.getUri(), property->type.getName().str());
        if (internal::MetaClassView const * const known = fClasses->find(type);
            known != nullptr && !known->metaClass().isAbstract()) {
            element.setType(type);
        }
    }
    if (property->isComposite && property->isDerived) {
        internal::PropertyView const * const place = fClasses->placeFor(parent.newType, element.getType());
        if (place != nullptr) {
            element.setRole({}, place->name);
        }
    }
}

void ImplicitTypeReadTransforms::leave(Context const & element) {
    if (fPaths.empty()) {
        return;
    }
    Path & path = fPaths.back();
    auto const left = std::find_if(path.rbegin(), path.rend(), [&](Element const & open) {
        return open.newRole == element.getRole() && open.newType == element.getType();
    });
    if (left != path.rend()) {
        path.erase(std::prev(left.base()), path.end());
    }
}

} // namespace ZEL::Interchange
