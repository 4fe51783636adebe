#pragma once

#include <hasp_util/Export.h>

#include <string>
#include <string_view>

namespace HASP {

/// A text in the memory of a reader, or null. Valid until the reader's next event; copy it with `toString` to keep it.
class HOST_API XmlStringRef {
public:
    /// Null.
    constexpr XmlStringRef() noexcept = default;
    constexpr explicit XmlStringRef(std::string_view text) noexcept : fText(text), fIsNull(false) {}

    [[nodiscard]] constexpr bool isNull() const noexcept { return fIsNull; }
    /// Empty for null.
    [[nodiscard]] std::string toString() const { return std::string(fText); }
    [[nodiscard]] constexpr std::string_view view() const noexcept { return fText; }

    /// Null differs from every text, including the empty one.
    friend constexpr bool operator==(XmlStringRef left, std::string_view right) noexcept {
        return !left.fIsNull && left.fText == right;
    }

private:
    std::string_view fText;
    bool fIsNull = true;
};

} // namespace HASP
