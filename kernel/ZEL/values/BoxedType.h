#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/SmartPtr.h>
#include <ZEL/values/Object.h>

#include <hasp_util/TypeInfo.h>

#include <cstdint>
#include <utility>

namespace ZEL::internal {

/// What all boxed values of one type share: how they are read and printed, and the metamodel's object for the type.
///
/// Counted by those who hold it. A boxed value keeps what it was made with, also when its type is no longer registered.
class BoxedType {
public:
    /// `aMetaType` is a `DataType` or null.
    BoxedType(HASP::TypeInfo aTypeInfo, ImmutableObject aMetaType)
        : typeInfo(std::move(aTypeInfo)), metaType(std::move(aMetaType)) {}
    BoxedType(BoxedType const &) = delete;
    BoxedType & operator=(BoxedType const &) = delete;

    void incRef() noexcept { ++fCount; }
    void decRef() noexcept {
        if (--fCount == 0) {
            delete this;
        }
    }

    HASP::TypeInfo const typeInfo;
    ImmutableObject const metaType;

private:
    ~BoxedType() = default;

    std::uint32_t fCount = 0;
};

using BoxedTypePtr = Generic::SmartPtr<BoxedType, Generic::ReferenceCounted>;

} // namespace ZEL::internal
