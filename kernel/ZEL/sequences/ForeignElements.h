#pragma once

#include <ZEL/Export.h>

namespace ZEL::NSInterface {
class ClassObjectIntf;
class ObjectIntf;
} // namespace ZEL::NSInterface

namespace ZEL::internal {

/// Told of every element that enters a stored sequence of `owner`. An element of another model must be kept alive: the
/// storage itself counts none of its elements.
ZEL_API void noteForeignElement(NSInterface::ClassObjectIntf const * owner, NSInterface::ObjectIntf * element);

} // namespace ZEL::internal
