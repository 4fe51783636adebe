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
/// A type object is passed around as a `TypeInfo`, which owns it. The operations that are not pure rely on the text
/// form: the bytes are those of the text, and values compare as their texts do.
class HOST_API Type {
public:
    /// Returns an empty `any`, and leaves an error in the holder, if the text is not a value.
    [[nodiscard]] virtual any convertFromString(std::string const & text, ErrorHolder & errors) const = 0;
    /// Throws `bad_any_cast` if the value is of another type.
    [[nodiscard]] virtual std::string convertToString(any const & value) const = 0;
    [[nodiscard]] virtual any convertFromByteArray(std::vector<unsigned char> const & bytes,
                                                   ErrorHolder & errors) const;
    [[nodiscard]] virtual std::vector<unsigned char> convertToByteArray(any const & value) const;
    [[nodiscard]] virtual any defaultConstruct() const = 0;
    /// Whether the value is of this type.
    [[nodiscard]] virtual bool isValid(any const & value) const;
    [[nodiscard]] virtual bool isEqualTo(any const & left, any const & right) const;
    [[nodiscard]] virtual bool isLessThan(any const & left, any const & right) const;
    /// A new type object of the same class, owned by the caller.
    [[nodiscard]] virtual Type * clone() const = 0;
    virtual ~Type();

    /// The type object of a handle, which keeps owning it; null for a null handle.
    [[nodiscard]] static Type * GetBaseType(TypeInfo const & info) noexcept;

protected:
    Type() = default;
    Type(Type const &) noexcept {} ///< a copy has handles of its own
    Type & operator=(Type const &) noexcept { return *this; }

    /// A handle that owns the new type object.
    [[nodiscard]] static TypeInfo CreateTypeInfo(Type * type);

private:
    friend class TypeInfo;

    unsigned int fHandles = 0;
};

} // namespace HASP
