#pragma once

#include <ZEL/interchange/ReadTransforms.h>

#include <Foreign/MetaModelRegistration.h>
#include <GenericComponent/MetaModelRegistration.h>
#include <NumericTypes/MetaModelRegistration.h>
#include <RhapsodyPlatform/MetaModelRegistration.h>
#include <Tessel/MetaModelRegistration.h>

namespace ZEL::Interchange {

/// Registers UML with all its profiles, and `Foreign`; what is registered already stays.
///
/// Defined here, so that only a program that calls it loads the library of UML, which is many times larger than the
/// others.
inline void registerMetaModels() {
    NumericTypes::registerMetaModel(); // registers uml, too
    GenericComponent::registerMetaModel();
    Tessel::registerMetaModel();
    RhapsodyPlatform::registerMetaModel();
    Foreign::registerMetaModel();
}

} // namespace ZEL::Interchange
