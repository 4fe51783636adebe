#include <ZEL/base/AtScopeEnd.h>
#include <ZEL/base/Cleanup.h>
#include <ZEL/deviants/DeviantAssertions.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassRuntime.h>
#include <ZEL/metamodel/FactoryIntf.h>
#include <ZEL/metamodel/MetaModelBuilder.h>
#include <ZEL/metamodel/MetaModelDeclaration.h>
#include <ZEL/metamodel/MetaModelDefinition.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/values/TypeInfoRegistry.h>

namespace ZEL::internal {

namespace {

/// Until the end of the scope writes pass without a transaction, and what is made counts as part of the process-wide
/// metamodels.
auto buildSection() {
    Cleanup::beginMetaRegistrySection();
    return AtScopeEnd([former = DeviantAssertions::enableAssertions(false)] {
        Cleanup::endMetaRegistrySection();
        DeviantAssertions::enableAssertions(former);
    });
}

/// For the end of the process, where nobody is left to hear of what fails.
template <class Step> void attempt(Step step) noexcept {
    try {
        step();
    } catch (...) {
    }
}

} // namespace

MetaModel MetaModelBuilder::build() {
    auto const section = buildSection();
    MetaModel model(NSInterface::FactoryIntf::createNewModel());
    Deviant const root = model.getDeviant();
    root.setMaximumUndoStackLength(0);
    model.setUuidBase(String(fDescriptor.uuidBase));

    try {
        MetaModelDeclaration declaration(fDescriptor, model);
        declaration.declareAll();
        MetaModelDefinition definition(fDescriptor, declaration);
        definition.defineAll();

        String const uri(fDescriptor.uris.front());
        model.setUri(uri);
        Package const topPackage(declaration.topPackage().object, root);
        topPackage.setUri(uri);
        model.setTopPackage(topPackage);
        collectDataTypes(declaration);
        enterKeysLater(declaration.keyed());
    } catch (...) {
        forgetClasses();
        throw;
    }
    return model;
}

void MetaModelBuilder::collectDataTypes(MetaModelDeclaration const & declaration) {
    fRoot = declaration.objects().root();
    fDataTypes.clear();
    for (PrimitiveDescriptor const & primitive : fDescriptor.primitives) {
        fDataTypes.push_back(declaration.findDataType(primitive.registeredName));
    }
    for (EnumerationDescriptor const & enumeration : fDescriptor.enumerations) {
        fDataTypes.push_back(declaration.findDataType(enumeration.registeredName));
    }
}

void MetaModelBuilder::registerAll(MetaModel const & model) const {
    auto const section = buildSection();
    if (!TypeInfoRegistry::internal_registerLater(*this)) {
        registerTypes();
    }
    registerCreators();
    bindUris(model);
}

void MetaModelBuilder::unregisterAll() const noexcept {
    attempt([this] { unregisterNames(); });
}

void MetaModelBuilder::tearDown(MetaModel const & model) const noexcept {
    auto const section = buildSection();
    ModelCore & body = *model.getImplementationWithoutAssert()->internal_body()->internal_model();
    attempt([&] { leaveSuperClasses(body); });
    forgetKeys(fDescriptor, body);
    forgetClasses();
    if (body.numRef() == 1) {
        return; // the caller's, with which all goes at once
    }
    attempt([&] {
        Deviant const root = model.getDeviant();
        root.setMaximumUndoStackLength(0);
        root.beginTransaction();
        body.internal_destroyContents(root);
        root.commitTransaction();
    });
}

void MetaModelBuilder::forgetClasses() const noexcept {
    for (ClassDescriptor const * const descriptor : fDescriptor.classes) {
        descriptor->runtime->unbind();
    }
}

void MetaModelBuilder::leaveSuperClasses(ModelCore const & model) const {
    for (ClassDescriptor const * const descriptor : fDescriptor.classes) {
        Class const object(descriptor->runtime->metaClass(), descriptor->runtime->deviant());
        for (ClassDescriptor const * const base : descriptor->superClasses) {
            Class const superClass(base->runtime->metaClass(), base->runtime->deviant());
            if (!superClass.isValid() || !object.isValid()) {
                continue;
            }
            ModelCore * const other = superClass.getImplementation()->internal_body()->internal_model();
            if (other != &model) {
                superClass.getImplementation()->getSubClassesWithoutAssociation(superClass.getDeviant()).remove(object);
                other->forgetForeign(*object.getImplementation()->internal_body());
            }
        }
    }
}

} // namespace ZEL::internal
