#pragma once

#include <ZEL/Export.h>

#include <array>
#include <concepts>
#include <string>
#include <string_view>

namespace ZEL::Generic {

/// The registered names of the sequence types over one element type, such as "ZEL.ImmutableSequenceOfComment".
class ZEL_API SequenceNames {
public:
    /// `typeName` is the registered name of the element type, "ZEL.Comment" or "ZEL.ImmutableComment". Sequences of
    /// values have one name for both kinds of elements.
    SequenceNames(std::string_view typeName, bool isOfValues);

    [[nodiscard]] char const * get(bool immutableSequence, bool immutableElement) const noexcept {
        return fNames[(immutableSequence ? 0u : 2u) + (immutableElement ? 0u : 1u)].c_str();
    }

    /// The names for a type, made once; they live to process end.
    [[nodiscard]] static SequenceNames const & of(std::string const & typeName, bool isOfValues);

private:
    std::array<std::string, 4> fNames;
};

/// The names for elements of class `T`.
template <class T> SequenceNames const & sequenceNames() {
    if constexpr (requires {
                      { T::getTypeName() } -> std::convertible_to<std::string>;
                  }) {
        static SequenceNames const & names = SequenceNames::of(T::getTypeName(), true);
        return names;
    } else if constexpr (requires {
                             { T::getOrcaName() } -> std::convertible_to<std::string>;
                         }) {
        static SequenceNames const & names = SequenceNames::of(T::getOrcaName(), false);
        return names;
    } else {
        static SequenceNames const & names = SequenceNames::of("ZEL.Object", false);
        return names;
    }
}

} // namespace ZEL::Generic
