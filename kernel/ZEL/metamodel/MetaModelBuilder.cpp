#include <ZEL/base/AtScopeEnd.h>
#include <ZEL/base/Cleanup.h>
#include <ZEL/deviants/DeviantAssertions.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassRuntime.h>
#include <ZEL/metamodel/GlobalXMIIdToObjectMap.h>
#include <ZEL/metamodel/MetaModelBuilder.h>
#include <ZEL/metamodel/MetaModelDeclaration.h>
#include <ZEL/metamodel/MetaModelDefinition.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/metamodel/Package.h>

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

MetaModel MetaModelBuilder::build() const {
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
        declaration.topPackage().setUri(uri);
        model.setTopPackage(declaration.topPackage());
    } catch (...) {
        MetaModelDeclaration::forget(fDescriptor, model);
        throw;
    }
    return model;
}

void MetaModelBuilder::registerAll(MetaModel const & model) const {
    auto const section = buildSection();
    registerTypes();
    registerCreators();
    bindUris(model);
}

void MetaModelBuilder::unregisterAll() const noexcept {
    attempt([this] { unregisterNames(); });
}

void MetaModelBuilder::tearDown(MetaModel const & model) const noexcept {
    auto const section = buildSection();
    attempt([this] { leaveSuperClasses(); });
    MetaModelDeclaration::forget(fDescriptor, model);
    attempt([&model] {
        Deviant const root = model.getDeviant();
        root.setMaximumUndoStackLength(0);
        root.beginTransaction();
        model.getImplementation()->internal_destroyContents(root);
        root.commitTransaction();
    });
}

void MetaModelBuilder::leaveSuperClasses() const {
    for (ClassDescriptor const * const descriptor : fDescriptor.classes) {
        Class const object = classObjectOf(*descriptor);
        for (ClassDescriptor const * const base : descriptor->superClasses) {
            Class const superClass = classObjectOf(*base);
            if (superClass.isValid() && object.isValid()) {
                superClass.getImplementation()->getSubClassesWithoutAssociation(superClass.getDeviant()).remove(object);
                superClass.getImplementation()->internal_body()->internal_model()->forgetForeign(
                    *object.getImplementation()->internal_body());
            }
        }
    }
}

} // namespace ZEL::internal
