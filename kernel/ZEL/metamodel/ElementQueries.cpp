// What all elements answer without a field of their own.

#include <ZEL/Boolean.h>
#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/ClassObjectOperations.h>
#include <ZEL/metamodel/ElementIntf.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/metamodel/PackageIntf.h>
#include <ZEL/metamodel/PersistenceKind.h>
#include <ZEL/metamodel/PropertySupport.h>
#include <ZEL/metamodel/ReflectionErrors.h>

#include <array>
#include <charconv>
#include <limits>
#include <string>
#include <typeinfo>

namespace ZEL {

std::string internal::siidOf(std::string const & siidOfModel, std::int32_t number) {
    std::array<char, std::numeric_limits<std::int32_t>::digits10 + 2> digits{};
    auto const [end, error] = std::to_chars(digits.begin(), digits.end(), number);
    static_cast<void>(error); // there is room for any number
    std::string siid;
    siid.reserve(siidOfModel.size() + 1 + digits.size());
    siid += siidOfModel;
    siid += kSiidSeparator;
    siid.append(digits.begin(), end);
    return siid;
}

namespace NSInterface {

Boolean ElementIntf::mustBeOwned(Deviant) const { return Boolean(true); }

Boolean PackageIntf::mustBeOwned(Deviant) const { return Boolean(false); }

// --- persistence: a few bits that every state has --------------------------------------------------------------------

Boolean ElementIntf::hasPersistence(Deviant deviant) const {
    return Boolean(internal::coreToRead(*this, deviant).persistence() != 0);
}

PersistenceKind ElementIntf::getPersistence(Deviant deviant) const {
    return PersistenceKind(static_cast<PersistenceKind::Value>(internal::coreToRead(*this, deviant).persistence()));
}

void ElementIntf::setPersistence(Deviant deviant, PersistenceKind const & persistence) {
    if (getPersistence(deviant) != persistence) {
        internal::coreToWrite(*this, deviant).setPersistence(static_cast<unsigned int>(persistence.getValue()));
    }
}

void ElementIntf::removePersistence(Deviant deviant) { internal::coreToWrite(*this, deviant).setPersistence(0); }

// --- a state's answers, and those of what is neither body nor state --------------------------------------------------

String ClassObjectOperations::toString(Deviant) const { return String(); }
Object ClassObjectOperations::fromString(Deviant, String const &) { return Object(); }
ImmutableClass ClassObjectOperations::getMetaClass(Deviant) const { return ImmutableClass(); }
ClassObject ClassObjectOperations::clone(Deviant, ClassObject const &) { return ClassObject(); }

// --- identity --------------------------------------------------------------------------------------------------------

std::string ClassObjectOperations::internal_describe(Deviant deviant, WithoutClass orElse) const {
    ImmutableClass const metaClass = getMetaClass(deviant);
    if (!metaClass.isValid() && orElse == WithoutClass::Raises) {
        raiseInternalError(std::string("object without metaClass") + typeid(ImmutableClass).name());
    }
    std::string const name = metaClass.isValid() ? metaClass.getQualifiedName().str() : typeid(*this).name();
    return "'" + name + "' [id = " + std::to_string(static_cast<int>(getId(deviant))) + " ]";
}

Boolean ClassObjectOperations::hasId(Deviant) const { return Boolean(true); }
void ClassObjectOperations::removeId(Deviant) {}
void ClassObjectOperations::setId(Deviant, Integer const &) {}
Integer ClassObjectOperations::getId(Deviant) const { return Integer(-1); }

Boolean ClassObjectOperations::hasSiid(Deviant deviant) const {
    return Boolean(getModelZEL(deviant).getImplementationWithoutAssert() != nullptr);
}

String ClassObjectOperations::getSiid(Deviant deviant) const {
    Model const model = getModelZEL(deviant);
    if (model.getImplementationWithoutAssert() == nullptr) {
        return String();
    }
    return String(internal::siidOf(model.getSiid().str(), static_cast<std::int32_t>(getId(deviant))));
}

void ClassObjectOperations::setSiid(Deviant, String const &) { internal::raiseReadOnly("siid"); }

void ClassObjectOperations::removeSiid(Deviant) { internal::raiseNotRemovable("siid"); }

// --- models ----------------------------------------------------------------------------------------------------------

Boolean ClassObjectOperations::hasModelZEL(Deviant deviant) const {
    return Boolean(internal::coreToRead(*this, deviant).hasModel());
}

Model ClassObjectOperations::getModelZEL(Deviant deviant) const {
    return Model(internal::coreToRead(*this, deviant).model(), deviant);
}

void ClassObjectOperations::setModelZEL(Deviant deviant, Model const & model) { setOnlyModelZEL(deviant, model); }

void ClassObjectOperations::removeModelZEL(Deviant deviant) { removeOnlyModelZEL(deviant); }

void ClassObjectOperations::setOnlyModelZEL(Deviant deviant, Model const & model) {
    ModelIntf * const value = model.getImplementationWithoutAssert();
    internal::BodyCore const * const body = internal_body();
    if (body != nullptr && value != nullptr && value->internal_body() != body->internal_model()) {
        raiseAnInternalError(); // an object never leaves the model that has made it
    }
    if (internal::coreToRead(*this, deviant).model() != value) {
        internal::coreToWrite(*this, deviant).setModel(value);
    }
}

void ClassObjectOperations::removeOnlyModelZEL(Deviant deviant) {
    internal::coreToWrite(*this, deviant).setModel(nullptr);
}

Boolean ClassObjectOperations::hasRootModel(Deviant deviant) const { return Boolean(getRootModel(deviant).isValid()); }

Model ClassObjectOperations::getRootModel(Deviant deviant) const { return getModelZEL(deviant); }

void ClassObjectOperations::setRootModel(Deviant, Model const &) { internal::raiseReadOnly("rootModel"); }

void ClassObjectOperations::setOnlyRootModel(Deviant, Model const &) {
    internal::raiseReadOnly("rootModel", "set_end");
}

void ClassObjectOperations::removeRootModel(Deviant) { internal::raiseNotRemovable("rootModel"); }

void ClassObjectOperations::removeOnlyRootModel(Deviant deviant) { removeRootModel(deviant); }

// --- stereotype instances --------------------------------------------------------------------------------------------

Sequence<StereotypeObject> ClassObjectOperations::getAppliedStereotypeInstances(Deviant deviant) const {
    return internal::associationView<StereotypeObject>(*this, deviant, appliedStereotypeInstanceProperty(),
                                                       getAppliedStereotypeInstancesWithoutAssociation(deviant));
}

Sequence<StereotypeObject>
ClassObjectOperations::getAppliedStereotypeInstancesWithoutAssociation(Deviant deviant) const {
    return internal::storedSequence<StereotypeObject>(*this, deviant, internal::stereotypeInstanceField());
}

} // namespace NSInterface
} // namespace ZEL
