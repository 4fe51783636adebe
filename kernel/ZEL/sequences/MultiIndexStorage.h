#pragma once

#include <ZEL/Export.h>
#include <ZEL/sequences/SequenceIntf.h>

#include <memory>

namespace ZEL::Generic {

/// Makes two-index storages without a look at them: what a header may use where `MultiIndexImpl` itself is not wanted.
/// Exists for the element types of results, see `SequenceBuilder`.
template <class T> class ZEL_API MultiIndexStorage {
public:
    [[nodiscard]] static std::unique_ptr<SequenceIntf> create(bool isUnique);
};

} // namespace ZEL::Generic
