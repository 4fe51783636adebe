#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/PropertyStorage.h>
#include <ZEL/metamodel/ReflectionErrors.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/values/Object.h>

#include <hasp_util/any.h>

#include <algorithm>
#include <string>
#include <vector>

namespace ZEL::internal {

namespace {

/// Whether the failure at hand is one that names nothing.
bool isWithoutText() {
    try {
        throw;
    } catch (HASP::bad_any_cast const &) {
        return true;
    } catch (Exception const & failure) {
        return isAnInternalError(failure);
    } catch (...) {
        return false;
    }
}

std::string quoted(String const & name) { return "'" + name.str() + "'"; }

std::string nameOf(ImmutableObject const & value) {
    if (value.getImplementationWithoutAssert() == nullptr) {
        return "no value";
    }
    ImmutableType const type = value.getMetaType();
    return type.isValid() ? quoted(type.getQualifiedName()) : "a value of an unknown type";
}

bool fits(Object const & value, ImmutableType const & expected) {
    if (value.getImplementationWithoutAssert() == nullptr) {
        return false;
    }
    std::vector<ImmutableClass> const classes = withSuperClasses(ImmutableClass(value.getMetaType()));
    return classes.empty() ? value.getMetaType() == expected
                           : std::find(classes.begin(), classes.end(), expected) != classes.end();
}

} // namespace

void raiseReflectionError(ClassObjectIntf const & object, Deviant deviant, ImmutableProperty const & property,
                          Object const * value) {
    if (!isWithoutText()) {
        throw;
    }
    ImmutableClass const metaClass = object.getMetaClass(deviant);
    std::string const what = "object of type " + quoted(metaClass.getQualifiedName()) +
                             " [id = " + std::to_string(static_cast<int>(object.getId(deviant))) + " ]";
    std::string const name = quoted(property.getName());
    // A class can have narrowed what it inherits.
    ImmutableProperty const own = metaClass.getProperty(property.getName());
    if (own.isValid() && value != nullptr && !fits(*value, own.getType())) {
        raiseInternalError("property " + name + " of " + what + ": found " + nameOf(*value) + ", expected " +
                           quoted(own.getType().getQualifiedName()));
    }
    if (!own.isValid() || own.getStorage() != property.getStorage()) {
        ImmutableClass const owner = property.getClass();
        raiseInternalError(what + " has no property " + name +
                           (owner.isValid() ? " of " + quoted(owner.getQualifiedName()) : std::string()));
    }
    throw;
}

void raiseReadOnly(std::string const & property, std::string const & form) {
    raiseInternalError(property + " is a read-only derived property so you cannot use the " + form +
                       " property method!");
}

void raiseNotRemovable(std::string const & property) {
    raiseUnimplemented(
        (property + " is a derived property and thus cannot have the remove method implemented").c_str());
}

} // namespace ZEL::internal
