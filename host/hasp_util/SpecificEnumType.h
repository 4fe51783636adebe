#pragma once

#include <hasp_util/EnumType.h>
#include <hasp_util/TypeInfo.h>

#include <map>
#include <stdexcept>
#include <string>
#include <utility>

namespace HASP {

/// Type of one enumeration class.
///
/// `Kind` has a nested `enum Value`, can be constructed from it and by default, and compares by `==`. The table of
/// literals is a map in either direction: text to `Kind::Value`, or `Kind::Value` to text.
template <class Kind> class SpecificEnumType final : public EnumType {
public:
    using Value = typename Kind::Value;

    template <class Literals> explicit SpecificEnumType(Literals const & literals) : EnumType(byNumber(literals)) {}

    template <class Literals> [[nodiscard]] static TypeInfo Create(Literals const & literals) {
        return Type::CreateTypeInfo(new SpecificEnumType(literals));
    }

    [[nodiscard]] any defaultConstruct() const override { return Kind(); }
    [[nodiscard]] SpecificEnumType * clone() const override { return new SpecificEnumType(*this); }

protected:
    [[nodiscard]] any fromNumber(int number) const override { return Kind(static_cast<Value>(number)); }
    [[nodiscard]] int toNumber(any const & value) const override {
        Kind const & kind = any_cast<Kind const &>(value);
        for (auto const & literal : getLiterals()) {
            if (Kind(static_cast<Value>(literal.first)) == kind) {
                return literal.first;
            }
        }
        throw std::logic_error("EnumType: the value has no literal");
    }

private:
    [[nodiscard]] static std::map<int, std::string> byNumber(std::map<std::string, Value> const & literals) {
        std::map<int, std::string> numbered;
        for (auto const & [text, value] : literals) {
            numbered.emplace(static_cast<int>(value), text);
        }
        return numbered;
    }
    [[nodiscard]] static std::map<int, std::string> byNumber(std::map<Value, std::string> const & literals) {
        return {literals.begin(), literals.end()};
    }
};

} // namespace HASP
