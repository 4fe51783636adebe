#include <ZEL/serializer/ReadReport.h>

namespace ZEL::Serializer {

bool ReadReport::isEmpty() const noexcept {
    return fSkippedElements.empty() && fIgnoredAttributes.empty() && fRejectedValues.empty() &&
           fUnresolvedReferences.empty() && fUnreadFiles.empty();
}

} // namespace ZEL::Serializer
