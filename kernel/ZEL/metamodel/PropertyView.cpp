// Single values read where they lie, through the view of a class.

#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/StateCore.h>

#include <string>

namespace ZEL::internal {

void PropertyView::raiseNotInPlace(ClassObjectIntf const & object, Deviant deviant, char const * expected) const {
    raiseInternalError("property '" + name + "' of " +
                       object.internal_describe(deviant, ClassObjectIntf::WithoutClass::ByTypeOfBody) +
                       " has no stored " + expected);
}

PropertyView const & PropertyView::inClassOf(ClassObjectIntf const & object, Deviant deviant) const {
    MetaClassView const & view = MetaClassView::ofInstance(object);
    if (descriptor != nullptr && descriptor->single != nullptr) {
        // By an address that all classes share that have inherited the property: sooner than by its name.
        if (PropertyView const * const same = view.find(descriptor->single); same != nullptr) {
            return *same;
        }
    }
    PropertyView const * const own = view.find(name);
    bool const isInherited = own != nullptr && own->descriptor != nullptr && descriptor != nullptr &&
                             own->instances->isKindOf(*descriptor->owner);
    if (!isInherited) {
        raiseInternalError(object.internal_describe(deviant, ClassObjectIntf::WithoutClass::ByTypeOfBody) +
                           " has no such property '" + name + "'");
    }
    return *own;
}

inline FieldValue PropertyView::read(ClassObjectIntf const & object, Deviant deviant) const {
    BodyCore const * const body = object.internal_body();
    if (body != nullptr && &body->internal_descriptor() == instances && value != nullptr) [[likely]] {
        return value->get(*body->readState(deviant));
    }
    PropertyView const & own = inClassOf(object, deviant);
    if (own.value == nullptr) {
        raiseNotInPlace(object, deviant, "value");
    }
    return own.value->get(*body->readState(deviant));
}

inline FieldValue PropertyView::read(ClassObjectIntf const & object, Deviant deviant, FieldValue::Form form,
                                     char const * expected) const {
    FieldValue const found = read(object, deviant);
    if (found.form() != form) [[unlikely]] {
        raiseNotInPlace(object, deviant, expected);
    }
    return found;
}

FieldValue PropertyView::valueOf(ClassObjectIntf const & object, Deviant deviant) const {
    return read(object, deviant);
}

std::string_view PropertyView::textOf(ClassObjectIntf const & object, Deviant deviant) const {
    return read(object, deviant, FieldValue::Form::Text, "text").text();
}

bool PropertyView::booleanOf(ClassObjectIntf const & object, Deviant deviant) const {
    return read(object, deviant, FieldValue::Form::Flag, "Boolean").flag();
}

std::int32_t PropertyView::integerOf(ClassObjectIntf const & object, Deviant deviant) const {
    return read(object, deviant, FieldValue::Form::Integer, "Integer").integer();
}

ImmutableObject PropertyView::linkOf(ClassObjectIntf const & object, Deviant deviant) const {
    BodyCore const * const body = object.internal_body();
    bool const isOwn = body != nullptr && &body->internal_descriptor() == instances;
    PropertyView const & own = isOwn ? *this : inClassOf(object, deviant);
    if (own.links == nullptr || own.isMany) {
        raiseNotInPlace(object, deviant, "link");
    }
    ObjectIntf * const link = own.links->get(*body->readState(deviant));
    return ImmutableObject(link, link == nullptr ? Deviant() : deviant);
}

PersistentSequence const & PropertyView::linksIn(StateCore const & state) const noexcept {
    return links->sequence(state);
}

} // namespace ZEL::internal
