#include <ZEL/serializer/reader/ReadReport.h>

namespace ZEL::Serializer {

bool ReadReport::isEmpty() const noexcept {
    // What lies in skipped elements, and their versions, come with those alone.
    return fSkippedElements.empty() && fIgnoredAttributes.empty() && fRejectedValues.empty() &&
           fReplacedValues.empty() && fUncontainedObjects.empty() && fUnresolvedReferences.empty() &&
           fUnreadFiles.empty();
}

} // namespace ZEL::Serializer
