#include <ZEL/Deviant.h>
#include <ZEL/DeviantAssertions.h>
#include <ZEL/DeviantImpl.h>
#include <ZEL/Exception.h>
#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObjectIntf.h>

#include <string>
#include <typeinfo>

namespace ZEL {

namespace {

std::string idOf(NSInterface::ClassObjectIntf const & object, Deviant deviant) {
    return std::to_string(static_cast<int>(object.getId(deviant)));
}

/// "'ZEL.Comment' [id = 2 ] ": the object's class and number, as all texts name an object.
std::string describe(NSInterface::ClassObjectIntf const & object, Deviant deviant) {
    ImmutableClass const metaClass = object.getMetaClass(deviant);
    if (!metaClass.isValid()) {
        raiseInternalError(std::string("object without metaClass") + typeid(ImmutableClass).name());
    }
    return "'" + metaClass.getQualifiedName().str() + "' [id = " + idOf(object, deviant) + " ] ";
}

} // namespace

bool DeviantAssertions::sAssertionsEnabled = true;

bool DeviantAssertions::enableAssertions(bool enable) noexcept {
    bool const former = sAssertionsEnabled;
    sAssertionsEnabled = enable;
    return former;
}

Deviant DeviantAssertions::deviant() const noexcept { return fDeviant == nullptr ? Deviant() : fDeviant->deviant(); }

bool DeviantAssertions::internal_assertWritable(NSInterface::ClassObjectIntf const * object) const {
    if (fDeviant == nullptr) {
        raiseInternalError("cannot operate on null deviant");
    }
    if (fDeviant->transactionDepth != 0) {
        return true;
    }
    std::string text = " Deviant '" + deviant().getName() + "' not opened for transactions.\n";
    if (object != nullptr) {
        text += "Attempt to modify object of type " + describe(*object, deviant());
    }
    raiseInternalError(text);
}

void DeviantAssertions::raiseAboutObject(NSInterface::ClassObjectIntf const * object, char const * complaint) const {
    std::string text = " Deviant '" + deviant().getName() + "' : \n";
    if (object != nullptr) {
        text += " object of type " + describe(*object, deviant()) + complaint;
    }
    raiseInternalError(text);
}

void DeviantAssertions::assertObjectNotPresentInDeviant(NSInterface::ClassObjectIntf const * object) const {
    raiseAboutObject(object, "is not present");
}

void DeviantAssertions::assertObjectAlreadyCreated(NSInterface::ClassObjectIntf const * object) const {
    raiseAboutObject(object, "has already been created");
}

void DeviantAssertions::assertThatModelHasBeenDestroyed(NSInterface::ClassObjectIntf const * object) {
    if (object == nullptr) {
        raiseAnInternalError();
    }
    ImmutableClass const metaClass = object->getMetaClass(Deviant());
    std::string const name = metaClass.isValid() ? metaClass.getQualifiedName().str() : typeid(*object).name();
    raiseInternalError("Attempt to access object of type '" + name + "' [id = " + idOf(*object, Deviant()) +
                       " ] after its model has been destroyed");
}

} // namespace ZEL
