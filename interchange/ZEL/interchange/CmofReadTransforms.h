#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/Transformer.h>

namespace ZEL::Interchange {

/// Reading of metamodels whose files have a package at the top, as those of CMOF have.
///
/// The package becomes the top package of a `MetaModel`, which has no name. A tag after it becomes an instance of
/// `Foreign::Tag` on the first element that it names; that metamodel must be registered for it. Serves one run.
class ZEL_API CmofReadTransforms : public Serializer::Transformer {
public:
    CmofReadTransforms();
};

} // namespace ZEL::Interchange
