#pragma once

#include <hasp_util/Export.h>

#include <compare>
#include <string>
#include <string_view>

namespace HASP {

/// A text that is kept once in the process, so that equal ones compare as one pointer.
///
/// The text is never freed: use it for names that the program knows, not for what comes out of files.
class HOST_API StringID {
public:
    /// The empty text.
    StringID();
    /// Looks the text up in a table, under a lock.
    explicit StringID(std::string_view text);

    [[nodiscard]] std::string const & toString() const noexcept { return *fText; }

    friend bool operator==(StringID left, StringID right) noexcept { return left.fText == right.fText; }
    /// An arbitrary order, which stays the same within one process.
    friend bool operator<(StringID left, StringID right) noexcept {
        return std::is_lt(
            std::compare_three_way()(static_cast<void const *>(left.fText), static_cast<void const *>(right.fText)));
    }

private:
    std::string const * fText;
};

} // namespace HASP
