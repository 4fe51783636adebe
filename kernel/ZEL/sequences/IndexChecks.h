#pragma once

#include <ZEL/base/Exception.h>

#include <cstddef>

namespace ZEL::internal {

[[noreturn]] inline void raiseSequenceIndexIsTooLarge() { raiseInternalError("sequence index out of bounds"); }

/// `index` as a position of an element. Throws "sequence index must be positive" or "sequence index out of bounds".
inline std::size_t checkedIndex(int index, std::size_t size) {
    if (index < 0) [[unlikely]] {
        raiseInternalError("sequence index must be positive");
    }
    if (static_cast<std::size_t>(index) >= size) [[unlikely]] {
        raiseSequenceIndexIsTooLarge();
    }
    return static_cast<std::size_t>(index);
}

/// The same for an insertion, where `index` may equal the size.
inline std::size_t checkedInsertIndex(int index, std::size_t size) { return checkedIndex(index, size + 1); }

/// The position of the first element. Throws "sequence is empty".
inline std::size_t firstIndex(std::size_t size) {
    if (size == 0) [[unlikely]] {
        raiseInternalError("sequence is empty");
    }
    return 0;
}

/// The position of the last element. Throws "sequence is empty".
inline std::size_t lastIndex(std::size_t size) { return firstIndex(size) + size - 1; }

} // namespace ZEL::internal
