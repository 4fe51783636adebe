// What all elements answer without a field of their own.

#include <ZEL/Boolean.h>
#include <ZEL/Exception.h>
#include <ZEL/Integer.h>
#include <ZEL/PersistenceKind.h>
#include <ZEL/String.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/ElementIntf.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/metamodel/PackageIntf.h>
#include <ZEL/metamodel/PropertySupport.h>
#include <ZEL/metamodel/StateCore.h>

#include <string>

namespace ZEL::NSInterface {

CooperativeVisitor::internal::ClassInfo const & ClassObjectIntf::classInfo() {
    static auto const info = CooperativeVisitor::internal::makeClassInfo<ClassObjectIntf, ObjectDomain>();
    return info;
}

Boolean ElementIntf::mustBeOwned(Deviant) const { return Boolean(true); }

Boolean PackageIntf::mustBeOwned(Deviant) const { return Boolean(false); }

// --- persistence: a few bits that every state has ----------------------------------------------------------------------

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

// --- identity ------------------------------------------------------------------------------------------------------------

Boolean ClassObjectIntf::hasId(Deviant) const { return Boolean(true); }
void ClassObjectIntf::removeId(Deviant) {}
void ClassObjectIntf::setId(Deviant, Integer const &) {}
Integer ClassObjectIntf::getId(Deviant) const { return Integer(-1); }

Boolean ClassObjectIntf::hasSiid(Deviant deviant) const { return Boolean(!getSiid(deviant).empty()); }

String ClassObjectIntf::getSiid(Deviant deviant) const {
    Model const model = getModelZEL(deviant);
    if (model.getImplementationWithoutAssert() == nullptr) {
        return String();
    }
    return String(model.getSiid().str() + "_" + std::to_string(static_cast<std::int32_t>(getId(deviant))));
}

void ClassObjectIntf::setSiid(Deviant, String const &) {
    raiseInternalError("siid is a read-only derived property so you cannot use the set property method!");
}

void ClassObjectIntf::removeSiid(Deviant) {
    raiseUnimplemented("siid is a derived property and thus cannot have the remove method implemented");
}

// --- models --------------------------------------------------------------------------------------------------------------

Boolean ClassObjectIntf::hasModelZEL(Deviant deviant) const {
    return Boolean(internal::coreToRead(*this, deviant).modelZEL != nullptr);
}

Model ClassObjectIntf::getModelZEL(Deviant deviant) const {
    return Model(internal::coreToRead(*this, deviant).modelZEL, deviant);
}

void ClassObjectIntf::setModelZEL(Deviant deviant, Model const & model) { setOnlyModelZEL(deviant, model); }

void ClassObjectIntf::removeModelZEL(Deviant deviant) { removeOnlyModelZEL(deviant); }

void ClassObjectIntf::setOnlyModelZEL(Deviant deviant, Model const & model) {
    ModelIntf * const value = model.getImplementationWithoutAssert();
    internal::BodyCore const * const body = internal_body();
    if (body != nullptr && value != nullptr && value->internal_body() != body->internal_model()) {
        raiseAnInternalError(); // an object never leaves the model that has made it
    }
    if (internal::coreToRead(*this, deviant).modelZEL != value) {
        internal::coreToWrite(*this, deviant).modelZEL = value;
    }
}

void ClassObjectIntf::removeOnlyModelZEL(Deviant deviant) { internal::coreToWrite(*this, deviant).modelZEL = nullptr; }

Boolean ClassObjectIntf::hasRootModel(Deviant deviant) const { return Boolean(getRootModel(deviant).isValid()); }

Model ClassObjectIntf::getRootModel(Deviant deviant) const { return getModelZEL(deviant); }

void ClassObjectIntf::setRootModel(Deviant, Model const &) {
    raiseInternalError("rootModel is a read-only derived property so you cannot use the set property method!");
}

void ClassObjectIntf::setOnlyRootModel(Deviant, Model const &) {
    raiseInternalError("rootModel is a read-only derived property so you cannot use the set_end property method!");
}

void ClassObjectIntf::removeRootModel(Deviant) {
    raiseUnimplemented("rootModel is a derived property and thus cannot have the remove method implemented");
}

void ClassObjectIntf::removeOnlyRootModel(Deviant deviant) { removeRootModel(deviant); }

// --- stereotype instances ------------------------------------------------------------------------------------------------

Sequence<StereotypeObject> ClassObjectIntf::getAppliedStereotypeInstances(Deviant deviant) const {
    return internal::associationView<StereotypeObject>(*this, deviant, appliedStereotypeInstanceProperty(),
                                                       getAppliedStereotypeInstancesWithoutAssociation(deviant));
}

Sequence<StereotypeObject> ClassObjectIntf::getAppliedStereotypeInstancesWithoutAssociation(Deviant deviant) const {
    return internal::storedSequence<StereotypeObject>(*this, deviant, internal::stereotypeInstanceField());
}

} // namespace ZEL::NSInterface
