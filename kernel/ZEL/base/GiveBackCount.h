#pragma once

#include <exception>

namespace ZEL::internal {

/// Gives one count on `body` back on behalf of a holder that ends, and so never throws.
///
/// Somebody may have given back more than was taken: a list of results does after `replace`. The count that is missing
/// then is the last holder's, who has no part in it and stands in a destructor.
template <class Body> void giveBackCount(Body & body) noexcept {
    try {
        body.decRef();
    } catch (std::exception const &) {
        // Of a body without counts there is nothing to give back, not even if memory is too short to say so.
    }
}

} // namespace ZEL::internal
