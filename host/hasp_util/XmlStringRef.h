#pragma once

#include <hasp_util/Export.h>

#include <string>
#include <string_view>

namespace HASP {

/// A text that lies in a reader, or none. Valid until the reader's next event; take a copy by `toString` to keep it.
class HOST_API XmlStringRef {
public:
    /// None.
    constexpr XmlStringRef() noexcept = default;
    constexpr explicit XmlStringRef(std::string_view text) noexcept : fText(text), fIsNull(false) {}

    [[nodiscard]] constexpr bool isNull() const noexcept { return fIsNull; }
    /// Empty if there is none.
    [[nodiscard]] std::string toString() const { return std::string(fText); }
    [[nodiscard]] constexpr std::string_view view() const noexcept { return fText; }

    /// None differs from every text, the empty one included.
    friend constexpr bool operator==(XmlStringRef left, std::string_view right) noexcept {
        return !left.fIsNull && left.fText == right;
    }

private:
    std::string_view fText;
    bool fIsNull = true;
};

} // namespace HASP
