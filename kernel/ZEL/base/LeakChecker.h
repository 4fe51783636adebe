#pragma once

#include <ZEL/Export.h>

#include <utility>
#include <vector>

namespace ZEL {

/// Finds out whether a stretch of a program leaves objects of the kernel behind.
///
/// Lifetimes nest. A model keeps its objects until it goes, so a checked stretch must enclose the whole life of the
/// models that it works on. The object constructed first after `beginTrackLifetime` can escape notice; a real leak is
/// never a single one.
class ZEL_API LeakChecker {
public:
    void beginTrackLifetime();
    /// Lists what was made since the matching `beginTrackLifetime` and is still alive on `std::cout`; if there is
    /// anything, forgets all lifetimes and throws "detected object leaks". Nothing without a lifetime. With tracking
    /// off all lifetimes are forgotten.
    void endTrackLifetime();

private:
    std::vector<std::pair<int, int>> fLifetimes; ///< number of active objects, creation number
};

} // namespace ZEL
