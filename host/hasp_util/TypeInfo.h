#pragma once

#include <hasp_util/Export.h>
#include <hasp_util/any.h>

#include <string>

namespace HASP {

class ErrorHolder;
class Type;

/// Shared handle on a type object. Copies share it; it is destroyed with the last of them.
///
/// A default-constructed handle is null: it can be copied, compared and tested for null; any other operation throws
/// `std::logic_error`. The count of the handles is for one thread, as the library is.
class HOST_API TypeInfo {
public:
    TypeInfo() noexcept = default;
    TypeInfo(TypeInfo const & other) noexcept : TypeInfo(other.fType) {}
    TypeInfo(TypeInfo && other) noexcept : fType(other.fType) { other.fType = nullptr; }
    TypeInfo & operator=(TypeInfo other) noexcept {
        Type * const type = fType;
        fType = other.fType;
        other.fType = type;
        return *this;
    }
    ~TypeInfo();

    [[nodiscard]] bool isNull() const noexcept { return fType == nullptr; }
    [[nodiscard]] any convertFromString(std::string const & text, ErrorHolder & errors) const;
    [[nodiscard]] std::string convertToString(any const & value) const;
    [[nodiscard]] any defaultConstruct() const;
    [[nodiscard]] bool isValid(any const & value) const;
    [[nodiscard]] bool isEqualTo(any const & left, any const & right) const;
    [[nodiscard]] bool isLessThan(any const & left, any const & right) const;

    /// Whether both refer to the same type object.
    friend bool operator==(TypeInfo const & left, TypeInfo const & right) noexcept { return left.fType == right.fType; }

private:
    friend class Type;
    /// Counted by the type object; null makes a null handle.
    explicit TypeInfo(Type * type) noexcept;
    [[nodiscard]] Type const & type() const;

    Type * fType = nullptr;
};

} // namespace HASP
