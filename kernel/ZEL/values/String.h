#pragma once

#include <ZEL/values/NumberConversion.h>
#include <ZEL/values/ValueBase.h>
#include <ZEL/values/ValuesFwd.h>

#include <concepts>
#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

namespace ZEL {

/// The text value: UTF-8, compared byte by byte.
///
/// Numbers have two ways to text that differ on purpose. The constructors from native numbers, and the implicit
/// conversion of a number value to `String`, print as a stream with default settings: "1" for true, six significant
/// digits. The constructors from `Boolean`, `Integer` and `UnlimitedNatural`, and `toString()` of all values, print as
/// their types do: "true", and "*" for the unlimited value.
class ZEL_API String : public ValueBase<String> {
public:
    String() noexcept = default;
    /// Null counts as empty.
    String(char const * text) : fText(text == nullptr ? "" : text) {}
    String(std::string const & text) : fText(text) {}
    String(std::string && text) noexcept : fText(std::move(text)) {}
    String(std::string_view text) : fText(text) {}

    explicit String(double number);
    explicit String(float number);
    explicit String(int number);
    explicit String(unsigned int number);
    template <std::same_as<bool> B> explicit String(B value) : fText(value ? "1" : "0") {}

    template <internal::OneOf<Boolean, Integer, UnlimitedNatural, Double, Real, Single> Number>
    explicit String(Number const & value) : String(value.toString()) {}

    /// Throw "An Internal Error has occurred" on a null handle and on an object that is no value, `HASP::bad_any_cast`
    /// on a value of another class.
    explicit String(ImmutableValueObject const & object);
    explicit String(ImmutableObject const & object);

    [[nodiscard]] static std::string getTypeName() { return "ZEL.String"; }
    [[nodiscard]] static HASP::TypeInfo const & getTypeInfo();

    [[nodiscard]] char const * c_str() const noexcept { return fText.c_str(); }
    [[nodiscard]] std::string const & str() const noexcept { return fText; }
    [[nodiscard]] std::size_t size() const noexcept { return fText.size(); }
    [[nodiscard]] bool empty() const noexcept { return fText.empty(); }
    operator std::string() const { return fText; }
    [[nodiscard]] String toString() const { return *this; }

    friend bool operator==(String const & left, String const & right) noexcept { return left.fText == right.fText; }
    friend auto operator<=>(String const & left, String const & right) noexcept { return left.fText <=> right.fText; }
    template <std::convertible_to<std::string_view> T> friend bool operator==(String const & left, T const & right) {
        return std::string_view(left.fText) == std::string_view(right);
    }
    template <std::convertible_to<std::string_view> T> friend auto operator<=>(String const & left, T const & right) {
        return std::string_view(left.fText) <=> std::string_view(right);
    }

    /// A template, so that a number value is not printed by way of its conversion to `String`.
    template <std::same_as<String> S, class Traits>
    friend std::basic_ostream<char, Traits> & operator<<(std::basic_ostream<char, Traits> & out, S const & text) {
        return out << text.fText;
    }
    friend std::size_t hash_value(String const & text) noexcept { return std::hash<std::string>()(text.fText); }

private:
    std::string fText;
};

} // namespace ZEL

template <> struct std::hash<ZEL::String> {
    std::size_t operator()(ZEL::String const & text) const noexcept { return hash_value(text); }
};
