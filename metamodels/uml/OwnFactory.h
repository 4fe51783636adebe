#pragma once

#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/FactoryObject.h>
#include <ZEL/metamodel/Model.h>

#include <uml/UmlFactory.h>

namespace uml::internal {

/// Makes objects of UML beside `object`, in its deviant. The model may be of another metamodel that builds on this one,
/// with a factory of its own.
inline UmlFactory factoryBeside(ZEL::ClassObject const & object) {
    ZEL::Model const model = object.getModelZEL();
    UmlFactory const own(model.getFactory());
    return own.isValid() ? own : UmlFactory::createNewFactory(model);
}

} // namespace uml::internal
