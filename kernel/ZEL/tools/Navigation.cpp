#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Constants.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/metamodel/MetaModelRegistry.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/tools/Navigation.h>
#include <ZEL/values/Object.h>

namespace ZEL {

namespace navigation {

namespace {

ImmutableType validMetaType(ImmutableObject const & object) {
    ImmutableType type = object.getMetaType();
    if (!type.isValid()) {
        raiseInternalError("navigation::getMetaTypeName:error zel-object has not a valid meta-type");
    }
    return type;
}

} // namespace

String getMetaTypeName(ImmutableObject const & object) {
    if (!object.isValid()) {
        raiseInternalError("navigation::getMetaTypeName:error Not a valid zel object");
    }
    return validMetaType(object).getName();
}

String getMetaTypeClassName(ImmutableObject const & object) {
    if (!object.isValid()) {
        raiseInternalError("navigation::getMetaTypeClassName:error Not a valid zel object");
    }
    ImmutableClass const metaClass = validMetaType(object).getMetaClass();
    if (!metaClass.isValid()) {
        raiseInternalError("navigation::getMetaTypeName:error zel-object mata-type has not a valid meta-class");
    }
    return metaClass.getName();
}

} // namespace navigation

Package getPackage() {
    return MetaModel(MetaModelRegistry::instance()->getModelFromUri(METAMODEL_URI)).getTopPackage();
}

} // namespace ZEL
