#pragma once

#include <ZEL/Export.h>

#include <hasp_util/ErrorHolder.h>
#include <hasp_util/Type.h>
#include <hasp_util/TypeInfo.h>

#include <string>

namespace ZEL::internal {

/// Throws "An Internal Error has occurred" if the holder has an error already.
ZEL_API void requireNoError(HASP::ErrorHolder const & errors);

/// Leaves "Can't convert string '", the text, "' to " and the type's name in the holder, as found at the given place.
ZEL_API void reportBadText(HASP::ErrorHolder & errors, std::string const & text, char const * nativeType,
                           char const * file, int line);

/// What the type classes `Info` share beside the conversions: how to make, recognise and reach one behind its handle.
template <class Info> class TypeInfoBase : public HASP::Type {
public:
    [[nodiscard]] static HASP::TypeInfo Create() { return HASP::Type::CreateTypeInfo(new Info); }

    [[nodiscard]] static bool Is(HASP::Type * type) { return dynamic_cast<Info *>(type) != nullptr; }
    [[nodiscard]] static bool Is(HASP::TypeInfo const & info) { return Is(HASP::Type::GetBaseType(info)); }
    /// Null for a type of another class. The object stays the handle's.
    [[nodiscard]] static Info * GetType(HASP::TypeInfo const & info) {
        return dynamic_cast<Info *>(HASP::Type::GetBaseType(info));
    }

protected:
    TypeInfoBase() = default;
    TypeInfoBase(TypeInfoBase const &) = default;
    TypeInfoBase & operator=(TypeInfoBase const &) = default;
};

} // namespace ZEL::internal
