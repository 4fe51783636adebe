#pragma once

#include <ZEL/metamodel/Property.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/serializer/Context.h>

namespace ZEL::Serializer {

/// What the writer and its generator functions exchange about the object at hand.
struct VisitableContext {
    bool skipObject = false; ///< the object is not to be written or descended into
    bool hasContent = false; ///< the object's element will have children, so it is written with a start and an end tag
    Context context;         ///< the object's Context as it stands at this point
    ImmutableProperty property; ///< through which the current generator is called; invalid at the top level
    ImmutableSequence<ImmutableProperty> visitableProperties; ///< those whose values are to be descended into
};

} // namespace ZEL::Serializer
