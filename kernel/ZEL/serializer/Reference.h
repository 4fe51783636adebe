#pragma once

#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Property.h>

#include <string>

namespace ZEL::Serializer {

/// A link that is waiting to be resolved.
struct Reference {
    ClassObject object;         ///< holds the link
    ImmutableProperty property; ///< in which it holds it
    std::string id;             ///< the target as read from the file, or an absolute URI with a fragment

    friend bool operator<(Reference const & left, Reference const & right) noexcept { return left.id < right.id; }
};

} // namespace ZEL::Serializer
