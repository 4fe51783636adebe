#include <ZEL/Boolean.h>
#include <ZEL/String.h>
#include <ZEL/metamodel/ClassIntf.h>
#include <ZEL/metamodel/Classifier.h>
#include <ZEL/metamodel/ClassifierIntf.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/Type.h>

namespace ZEL::NSInterface {

Boolean ClassifierIntf::conformsTo(Deviant deviant, ImmutableType const & other) const {
    return conformsToClass(deviant, ImmutableClassifier(other));
}

Property ClassIntf::getProperty(Deviant deviant, String const & name) { return getOwnedAttributeByName(deviant, name); }

ImmutableProperty ClassIntf::getProperty(Deviant deviant, String const & name) const {
    return getOwnedAttributeByName(deviant, name);
}

} // namespace ZEL::NSInterface
