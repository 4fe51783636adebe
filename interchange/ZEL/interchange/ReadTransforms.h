#pragma once

#include <ZEL/Export.h>

namespace ZEL::Serializer {
class XmiReader;
} // namespace ZEL::Serializer

/// Files of other tools: what they leave out, name otherwise or add to a model.
namespace ZEL::Interchange {

/// Prepares the reader's next run for files of other tools. This system's own files are read as without, but slower.
/// Metamodels must be registered before.
ZEL_API void addReadTransforms(Serializer::XmiReader & reader);

} // namespace ZEL::Interchange
