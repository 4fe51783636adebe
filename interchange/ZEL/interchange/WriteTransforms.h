#pragma once

#include <ZEL/Export.h>

namespace ZEL {
class ImmutableModel;
} // namespace ZEL

namespace ZEL::Serializer {
class XmiWriter;
} // namespace ZEL::Serializer

namespace ZEL::Interchange {

/// Prepares the writer's next run for a model that `addReadTransforms` may have helped to read: what it holds of other tools
/// is written as it came. Looks at each object of the model once; a model without such objects is written as without.
ZEL_API void addWriteTransforms(Serializer::XmiWriter & writer, ImmutableModel const & model);

} // namespace ZEL::Interchange
