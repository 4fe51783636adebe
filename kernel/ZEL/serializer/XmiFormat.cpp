#include <ZEL/serializer/XmiFormat.h>

#include <cassert>
#include <iterator>

namespace ZEL::Serializer {

std::string const XmiFormat::FormatStrings[3] = {"Standard", "MagicDraw", "Rhapsody"};

std::string const & XmiFormat::toString() const noexcept {
    assert(static_cast<std::size_t>(fFormat) < std::size(FormatStrings));
    return FormatStrings[fFormat];
}

} // namespace ZEL::Serializer
