#pragma once

#include <ZEL/metamodel/Descriptors.h>

#include <vector>

namespace ZEL::internal {

using CompositeFields = std::vector<FieldDescriptor const *>;

/// The stored composite fields of a class in their order, a model's factory and the stereotype instances among them.
/// Found at the first question; good until the process ends.
[[nodiscard]] CompositeFields const & compositeFieldsOf(ClassDescriptor const & descriptor);

} // namespace ZEL::internal
