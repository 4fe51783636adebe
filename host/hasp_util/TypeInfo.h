#pragma once

#include <hasp_util/Export.h>
#include <hasp_util/any.h>

#include <memory>
#include <string>
#include <utility>

namespace HASP {

class ErrorHolder;
class Type;

/// Shared handle on a type object. Copies share it; it is destroyed with the last of them.
///
/// A default-constructed handle is null: it can be copied, compared and tested for null; any other operation throws
/// `std::logic_error`.
class HOST_API TypeInfo {
public:
    TypeInfo() noexcept = default;

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
    explicit TypeInfo(std::shared_ptr<Type> type) noexcept : fType(std::move(type)) {}
    [[nodiscard]] Type const & type() const;

    std::shared_ptr<Type> fType;
};

} // namespace HASP
