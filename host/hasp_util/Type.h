#pragma once

#include <hasp_util/Export.h>
#include <hasp_util/any.h>

#include <string>
#include <vector>

namespace HASP {

class ErrorHolder;
class TypeInfo;

/// What a value type can do with its values, which travel as `any` or as text.
///
/// A type object is handed around as a `TypeInfo`, which owns it. The operations that are not pure rest on the text
/// form: bytes are those of the text, and values compare as texts do.
class HOST_API Type {
public:
    /// A text that is no value leaves an error in the holder and returns an empty `any`.
    [[nodiscard]] virtual any convertFromString(std::string const & text, ErrorHolder & errors) const = 0;
    /// Throws `bad_any_cast` if the value is of another type.
    [[nodiscard]] virtual std::string convertToString(any const & value) const = 0;
    [[nodiscard]] virtual any convertFromByteArray(std::vector<unsigned char> const & bytes,
                                                   ErrorHolder & errors) const;
    [[nodiscard]] virtual std::vector<unsigned char> convertToByteArray(any const & value) const;
    [[nodiscard]] virtual any defaultConstruct() const = 0;
    /// Whether the value is one of this type.
    [[nodiscard]] virtual bool isValid(any const & value) const;
    [[nodiscard]] virtual bool isEqualTo(any const & left, any const & right) const;
    [[nodiscard]] virtual bool isLessThan(any const & left, any const & right) const;
    /// A new object of the same class, which the caller owns.
    [[nodiscard]] virtual Type * clone() const = 0;
    virtual ~Type();

    /// The type object behind a handle, null for a null handle. It stays the handle's.
    [[nodiscard]] static Type * GetBaseType(TypeInfo const & info) noexcept;

protected:
    Type() = default;
    Type(Type const &) = default;
    Type & operator=(Type const &) = default;

    /// Hands a new type object over to a handle.
    [[nodiscard]] static TypeInfo CreateTypeInfo(Type * type);
};

} // namespace HASP
