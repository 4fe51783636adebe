#pragma once

#include <ZEL/sequences/TypeOverElements.h>

namespace ZEL {

/// The type of iterators over one element type.
class ZEL_API IteratorType final : public internal::TypeOverElements<IteratorType> {
public:
    using TypeOverElements::TypeOverElements;

    [[nodiscard]] IteratorType * clone() const override { return new IteratorType(*this); }
};

} // namespace ZEL
