#pragma once

#include <hasp_util/Export.h>
#include <hasp_util/Type.h>

#include <map>
#include <string>

namespace HASP {

/// Type of an enumeration: a table of literals, and conversion by it in both directions.
///
/// It knows numbers only; the derived class knows how an `any` holds a value of the enumeration.
class HOST_API EnumType : public Type {
public:
    /// Accepts exactly the literals' texts. Throws `std::logic_error` "An Internal Error has occurred" if the holder
    /// has an error already.
    [[nodiscard]] any convertFromString(std::string const & text, ErrorHolder & errors) const override;
    /// A value that has no literal throws `std::logic_error`.
    [[nodiscard]] std::string convertToString(any const & value) const override;
    [[nodiscard]] bool isLessThan(any const & left, any const & right) const override;

    /// Literal texts by their numbers.
    [[nodiscard]] std::map<int, std::string> const & getLiterals() const noexcept { return fLiterals; }

protected:
    explicit EnumType(std::map<int, std::string> literals);
    EnumType(EnumType const &) = default;
    EnumType & operator=(EnumType const &) = default;

    [[nodiscard]] virtual any fromNumber(int number) const = 0;
    [[nodiscard]] virtual int toNumber(any const & value) const = 0;

private:
    std::map<int, std::string> fLiterals;
};

} // namespace HASP
