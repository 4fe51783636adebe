#include <ZEL/interchange/CmofReadTransforms.h>
#include <ZEL/interchange/ImplicitTypeReadTransforms.h>
#include <ZEL/interchange/Interchange.h>
#include <ZEL/interchange/StereotypeReadTransforms.h>
#include <ZEL/interchange/UmlReadTransforms.h>
#include <ZEL/serializer/reader/XmiReader.h>

#include <Foreign/MetaModelRegistration.h>
#include <GenericComponent/MetaModelRegistration.h>
#include <NumericTypes/MetaModelRegistration.h>
#include <RhapsodyPlatform/MetaModelRegistration.h>
#include <Tessel/MetaModelRegistration.h>

#include <memory>

namespace ZEL::Interchange {

void registerMetaModels() {
    NumericTypes::registerMetaModel(); // registers uml, too
    GenericComponent::registerMetaModel();
    Tessel::registerMetaModel();
    RhapsodyPlatform::registerMetaModel();
    Foreign::registerMetaModel();
}

void addReadTransforms(Serializer::XmiReader & reader) {
    reader.addTransformer(std::make_shared<UmlReadTransforms>());
    reader.addTransformer(std::make_shared<ImplicitTypeReadTransforms>());
    reader.addTransformer(std::make_shared<CmofReadTransforms>());
    reader.addTransformer(std::make_shared<StereotypeReadTransforms>());
}

} // namespace ZEL::Interchange
