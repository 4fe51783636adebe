#pragma once

#include <ZEL/Export.h>

#include <cassert>
#include <string>

namespace ZEL::Serializer {

/// Which dialect of XMI a file is in. That of Rhapsody is one of writing: it is read as the standard one.
class ZEL_API XmiFormat {
public:
    enum Format { Standard = 0, MagicDraw = 1, Rhapsody = 2 };

    inline static std::string const FormatStrings[3] = {"Standard", "MagicDraw", "Rhapsody"};

    explicit(false) XmiFormat(Format format) noexcept : fFormat(format) {}

    [[nodiscard]] Format getFormat() const noexcept { return fFormat; }
    /// Not checked: the format must be one of the enumerators.
    [[nodiscard]] std::string const & toString() const noexcept {
        assert(static_cast<std::size_t>(fFormat) < std::size(FormatStrings));
        return FormatStrings[fFormat];
    }

private:
    Format fFormat;
};

} // namespace ZEL::Serializer
