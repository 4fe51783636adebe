#pragma once

#include <ZEL/sequences/TypeOverElements.h>

namespace ZEL {

/// The type of sequences over one element type.
class ZEL_API SequenceType final : public internal::TypeOverElements<SequenceType> {
public:
    using TypeOverElements::TypeOverElements;

    [[nodiscard]] SequenceType * clone() const override { return new SequenceType(*this); }
};

} // namespace ZEL
