#include <hasp_util/EnumType.h>
#include <hasp_util/ErrorHolder.h>

#include <stdexcept>
#include <utility>

namespace HASP {

EnumType::EnumType(std::map<int, std::string> literals) : fLiterals(std::move(literals)) {}

any EnumType::convertFromString(std::string const & text, ErrorHolder & errors) const {
    if (errors.hasError()) {
        throw std::logic_error("An Internal Error has occurred");
    }
    for (auto const & [number, literal] : fLiterals) {
        if (literal == text) {
            return fromNumber(number);
        }
    }
    errors.setError(
        {"Can't convert string '" + text + "' to an enumeration literal", CodeLocation(__FILE__, __LINE__)});
    return {};
}

std::string EnumType::convertToString(any const & value) const {
    auto const found = fLiterals.find(toNumber(value));
    if (found == fLiterals.end()) {
        throw std::logic_error("EnumType: the value has no literal");
    }
    return found->second;
}

bool EnumType::isLessThan(any const & left, any const & right) const { return toNumber(left) < toNumber(right); }

} // namespace HASP
