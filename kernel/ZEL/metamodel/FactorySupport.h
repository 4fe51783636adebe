#pragma once

#include <ZEL/Integer.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Descriptors.h>

/// How objects, models and factories come into being; the generated creators are calls of these.
namespace ZEL::internal {

class ModelCore;

/// A new object of the class in the model: present in `deviant` alone, unparented, numbered by the next number or by
/// `id`. Throws before anything is made: when the model has gone, when the deviant is not open for writing, when the
/// numbers are used up ("Internal id value overflow!"), and when `id` belongs to another object.
ZEL_API BodyCore & createObject(ModelCore & model, Deviant deviant, ClassDescriptor const & descriptor);
ZEL_API BodyCore & createObject(ModelCore & model, Deviant deviant, ClassDescriptor const & descriptor,
                                std::int32_t id);

/// The same for an object that the caller places, in a container or among the unparented ones.
[[nodiscard]] ZEL_API BodyCore & createUnplaced(ModelCore & model, Deviant deviant, ClassDescriptor const & descriptor,
                                                std::int32_t id);

/// The same for an object that stands in a containment field of `container` from the beginning, at the back of a
/// multi-valued one. Null, and nothing made, unless the container is an object of the model in the deviant, and a
/// single-valued field is empty. The field must accept objects of the class, which must not be a class of models.
[[nodiscard]] ZEL_API BodyCore * createPart(ModelCore & model, Deviant deviant, ClassDescriptor const & descriptor,
                                            std::int32_t id, ClassObjectIntf & container,
                                            FieldDescriptor const & field);

/// The model in which `factory` creates, seen in `deviant`.
ZEL_API ModelCore & modelOfFactory(ClassObjectIntf & factory, Deviant deviant);

/// What `createX` of a factory does, for handle class `H`; `id` is a number or is left out.
template <class H, class... Id> H createObject(ClassObjectIntf & factory, Deviant deviant, Id const &... id) {
    using Interface = typename H::BodyInterface;
    BodyCore & body = createObject(modelOfFactory(factory, deviant), deviant, descriptorOf<Interface>(),
                                   static_cast<std::int32_t>(id)...);
    return H(static_cast<Interface *>(body.cast(Interface::classInfo())), deviant);
}

/// A new model with id 1, a fresh uuid and a factory, without history.
[[nodiscard]] ZEL_API Model createModel(ClassDescriptor const & modelClass, FactoryObject (*createFactory)(Model));

/// A new factory that creates in `model`. It has no number and no container, and lives by its count; the one that
/// `createModel` makes is held by the model.
[[nodiscard]] ZEL_API FactoryObject createFactory(Model const & model, ClassDescriptor const & factoryClass);

} // namespace ZEL::internal
