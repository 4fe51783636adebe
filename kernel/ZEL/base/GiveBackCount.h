#pragma once

#include <exception>

namespace ZEL::internal {

/// Releases one count on `body` for a holder that is being destroyed, and so never throws.
///
/// Other code may have released more counts than it took: a list of results does so after `replace`. The missing count
/// is then found by the last holder, which is not at fault and is in a destructor.
template <class Body> void giveBackCount(Body & body) noexcept {
    try {
        body.decRef();
    } catch (std::exception const &) {
        // A body without counts has nothing to release. The exception says so, or that there was no memory to say so.
    }
}

} // namespace ZEL::internal
