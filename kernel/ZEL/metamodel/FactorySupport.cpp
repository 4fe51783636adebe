#include <ZEL/String.h>
#include <ZEL/base/AtScopeEnd.h>
#include <ZEL/base/Exception.h>
#include <ZEL/deviants/DeviantAssertions.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/DeviantManagerHelper.h>
#include <ZEL/metamodel/FactoryObject.h>
#include <ZEL/metamodel/FactorySupport.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/sequences/PersistentSequence.h>

#include <hasp_util/UUID.h>

#include <memory>

namespace ZEL::internal {

ModelCore & modelOfFactory(ClassObjectIntf & factory, Deviant deviant) {
    DeviantAssertions const assertions(deviant.getImpl());
    BodyCore const & body = *factory.internal_body();
    bool const hasModel = body.readState(deviant)->hasModel();
    assertions.assertWritable(&factory);
    if (!hasModel) {
        raiseNullReference();
    }
    return *body.internal_model();
}

BodyCore & createObject(ModelCore & model, Deviant deviant, ClassDescriptor const & descriptor) {
    return createObject(model, deviant, descriptor, model.nextId());
}

BodyCore & createUnplaced(ModelCore & model, Deviant deviant, ClassDescriptor const & descriptor, std::int32_t id) {
    DeviantAssertions(deviant.getImpl()).assertWritable(&model);
    model.checkId(deviant, id, descriptor);
    if (id < 1 || id == model.internal_id()) {
        raiseInternalError("Internal id value overflow!");
    }
    static_cast<void>(model.readState(deviant)); // throws while there is nothing to undo
    return model.create(deviant, descriptor, id);
}

BodyCore & createObject(ModelCore & model, Deviant deviant, ClassDescriptor const & descriptor, std::int32_t id) {
    BodyCore & body = createUnplaced(model, deviant, descriptor, id);
    addNewUnparented(body, deviant);
    return body;
}

BodyCore * createPart(ModelCore & model, Deviant deviant, ClassDescriptor const & descriptor, std::int32_t id,
                      ClassObjectIntf & container, FieldDescriptor const & field) {
    BodyCore & owner = *container.internal_body();
    if (owner.internal_model() != &model || !owner.deviant_isValid(deviant)) {
        return nullptr;
    }
    StateCore const & present = *owner.readState(deviant);
    if (!present.hasModel() || (field.sequence == nullptr && field.get(present) != nullptr)) {
        return nullptr;
    }
    BodyCore & body = createUnplaced(model, deviant, descriptor, id);
    // As if it had been among the objects without a container first: the model counts as changed.
    static_cast<void>(model.writeState(deviant));
    body.writeState(deviant)->setContainer(&container);
    StateCore & state = *owner.writeState(deviant);
    ObjectIntf * const part = static_cast<ClassObjectIntf *>(&body);
    if (field.sequence != nullptr) {
        field.writableSequence(state).push_back(part);
    } else {
        field.set(state, part);
    }
    return &body;
}

Model createModel(ClassDescriptor const & modelClass, FactoryObject (*createFactory)(Model)) {
    // There is no transaction before there is a model.
    AtScopeEnd const restore(
        [former = DeviantAssertions::enableAssertions(false)] { DeviantAssertions::enableAssertions(former); });
    auto & body = static_cast<ModelCore &>(*modelClass.createBody());
    Deviant const root = body.internal_deviantManager().getRootDeviant();
    Model model(&body, root);
    root.setMaximumUndoStackLength(0);
    body.internal_deviantManager().setHelper(std::make_unique<DeviantManagerHelper>().release());
    body.internal_setDeviation(root, body.createRootDeviation(root));
    body.setObjectId(root, model, Integer(body.nextId()));
    body.setUuidBase(root, String(HASP::UUID::createUuidAsString()));
    body.setOnlyModelZEL(root, model);
    FactoryObject const factory = createFactory(model);
    body.setOnlyFactory(root, factory);
    body.holdFactory(*factory.getImplementation()->internal_body());
    root.setMaximumUndoStackLength(Deviant::getDefaultMaximumUndoStackLength());
    return model;
}

FactoryObject createFactory(Model const & model, ClassDescriptor const & factoryClass) {
    auto & owner = static_cast<ModelCore &>(*model.getImplementation()->internal_body());
    Deviant const root = owner.internal_deviantManager().getRootDeviant();
    BodyCore & body = *factoryClass.createBody();
    FactoryObject factory(
        static_cast<NSInterface::FactoryObjectIntf *>(body.cast(NSInterface::FactoryObjectIntf::classInfo())),
        model.getDeviant());
    owner.adopt(body);
    body.internal_createDeviation(root);
    StateCore & state = *body.readState(root);
    state.setModel(&owner);
    // A factory names its model where the class of the link admits it: a profile's factory works in any model.
    for (FieldDescriptor const & field : factoryClass.fields) {
        if (field.set != nullptr && field.property->typeClass != nullptr &&
            field.property->typeClass->isKindOf(NSInterface::ModelIntf::descriptor()) && accepts(field, owner)) {
            field.set(state, &owner);
        }
    }
    return factory;
}

} // namespace ZEL::internal
