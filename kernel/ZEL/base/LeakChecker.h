#pragma once

#include <ZEL/Export.h>

#include <utility>
#include <vector>

namespace ZEL {

/// Checks whether a part of a program leaks objects of the kernel.
///
/// Lifetimes nest. A model keeps its objects until its own end, so the checked part must enclose the whole life of the
/// models that it works on. The first object constructed after `beginTrackLifetime` can escape notice; a real leak is
/// never a single object.
class ZEL_API LeakChecker {
public:
    void beginTrackLifetime();
    /// Lists on `std::cout` the objects that were made since the matching `beginTrackLifetime` and are still alive; if
    /// there are any, forgets all lifetimes and throws "detected object leaks". Does nothing without a lifetime. While
    /// tracking is off, forgets all lifetimes.
    void endTrackLifetime();

private:
    std::vector<std::pair<int, int>> fLifetimes; ///< number of active objects, creation number
};

} // namespace ZEL
