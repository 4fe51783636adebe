#include <ZEL/base/Exception.h>
#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/DeviantAssertions.h>
#include <ZEL/deviants/DeviantImpl.h>

#include <string>

namespace ZEL {

using NSInterface::ClassObjectIntf;
using WithoutClass = ClassObjectIntf::WithoutClass;

bool DeviantAssertions::sAssertionsEnabled = true;

bool DeviantAssertions::enableAssertions(bool enable) noexcept {
    bool const former = sAssertionsEnabled;
    sAssertionsEnabled = enable;
    return former;
}

Deviant DeviantAssertions::deviant() const noexcept { return fDeviant == nullptr ? Deviant() : fDeviant->deviant(); }

bool DeviantAssertions::internal_assertWritable(ClassObjectIntf const * object) const {
    if (fDeviant == nullptr) {
        raiseInternalError("cannot operate on null deviant");
    }
    if (fDeviant->transaction().isOpen()) {
        return true;
    }
    std::string text = " Deviant '" + deviant().getName() + "' not opened for transactions.\n";
    if (object != nullptr) {
        text += "Attempt to modify object of type " + object->internal_describe(deviant(), WithoutClass::Raises) + " ";
    }
    raiseInternalError(text);
}

void DeviantAssertions::raiseAboutObject(ClassObjectIntf const * object, char const * complaint) const {
    std::string text = " Deviant '" + deviant().getName() + "' : \n";
    if (object != nullptr) {
        text += " object of type " + object->internal_describe(deviant(), WithoutClass::Raises) + " " + complaint;
    }
    raiseInternalError(text);
}

void DeviantAssertions::assertObjectNotPresentInDeviant(ClassObjectIntf const * object) const {
    raiseAboutObject(object, "is not present");
}

void DeviantAssertions::assertObjectAlreadyCreated(ClassObjectIntf const * object) const {
    raiseAboutObject(object, "has already been created");
}

void DeviantAssertions::assertThatModelHasBeenDestroyed(ClassObjectIntf const * object) {
    if (object == nullptr) {
        raiseAnInternalError();
    }
    raiseInternalError("Attempt to access object of type " +
                       object->internal_describe(Deviant(), WithoutClass::ByTypeOfBody) +
                       " after its model has been destroyed");
}

} // namespace ZEL
