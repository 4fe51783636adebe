#pragma once

#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Property.h>

namespace ZEL::Serializer {

/// A link that has been resolved. A default one is invalid: so a rule says that it did not resolve the link.
struct LinkedElement {
    ClassObject object;
    ImmutableProperty property;
    ClassObject target;

    /// Whether all three are valid. Never throws.
    [[nodiscard]] bool isValid() const { return object.isValid() && property.isValid() && target.isValid(); }
};

} // namespace ZEL::Serializer
