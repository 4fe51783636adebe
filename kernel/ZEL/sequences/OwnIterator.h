#pragma once

#include <ZEL/base/Exception.h>
#include <ZEL/sequences/IteratorIntf.h>

namespace ZEL::Generic {

/// The iterator as one of the class that a sequence makes. Throws "An Internal Error has occurred" for another.
template <class Iterator> Iterator const & ownIterator(IteratorIntf const * iterator) {
    auto const * const own = dynamic_cast<Iterator const *>(iterator);
    if (own == nullptr) {
        raiseAnInternalError();
    }
    return *own;
}

} // namespace ZEL::Generic
