#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace ZEL::internal {

/// A single value of a data type as it lies in an object's state: read without a box, a copy or a count.
///
/// A text is a view of the state's, good until the next write to the object.
class FieldValue {
public:
    /// The index of a literal in its enumeration is its number.
    enum class Form : std::uint8_t { Flag, Integer, UnlimitedNatural, Double, Single, Literal, Text };

    [[nodiscard]] static FieldValue ofFlag(bool isSet, bool value) noexcept {
        return {isSet, Form::Flag, static_cast<std::uint64_t>(value)};
    }
    [[nodiscard]] static FieldValue ofInteger(bool isSet, std::int32_t value) noexcept {
        return {isSet, Form::Integer, static_cast<std::uint32_t>(value)};
    }
    [[nodiscard]] static FieldValue ofUnlimitedNatural(bool isSet, std::uint32_t value) noexcept {
        return {isSet, Form::UnlimitedNatural, value};
    }
    [[nodiscard]] static FieldValue ofDouble(bool isSet, double value) noexcept {
        FieldValue made(isSet, Form::Double, 0);
        std::memcpy(&made.fBits, &value, sizeof(value));
        return made;
    }
    [[nodiscard]] static FieldValue ofSingle(bool isSet, float value) noexcept {
        FieldValue made(isSet, Form::Single, 0);
        std::memcpy(&made.fBits, &value, sizeof(value));
        return made;
    }
    [[nodiscard]] static FieldValue ofLiteral(bool isSet, unsigned int index) noexcept {
        return {isSet, Form::Literal, index};
    }
    /// `value` is shorter than 4 GiB.
    [[nodiscard]] static FieldValue ofText(bool isSet, std::string_view value) noexcept {
        FieldValue made(isSet, Form::Text, reinterpret_cast<std::uintptr_t>(value.data()));
        made.fSize = static_cast<std::uint32_t>(value.size());
        return made;
    }

    [[nodiscard]] bool isSet() const noexcept { return fIsSet; }
    [[nodiscard]] Form form() const noexcept { return fForm; }
    // Each of the value of its form alone.
    [[nodiscard]] bool flag() const noexcept { return fBits != 0; }
    [[nodiscard]] std::int32_t integer() const noexcept { return static_cast<std::int32_t>(number()); }
    /// An unlimited natural or the index of a literal.
    [[nodiscard]] std::uint32_t number() const noexcept { return static_cast<std::uint32_t>(fBits); }
    [[nodiscard]] double asDouble() const noexcept {
        double value = 0;
        std::memcpy(&value, &fBits, sizeof(value));
        return value;
    }
    [[nodiscard]] float asSingle() const noexcept {
        float value = 0;
        std::memcpy(&value, &fBits, sizeof(value));
        return value;
    }
    [[nodiscard]] std::string_view text() const noexcept {
        return {reinterpret_cast<char const *>(static_cast<std::uintptr_t>(fBits)), fSize};
    }

    /// Of two values of one property: both absent, or equal as the data type compares. NaN equals nothing.
    friend bool operator==(FieldValue const & left, FieldValue const & right) noexcept {
        if (!left.fIsSet || !right.fIsSet) {
            return left.fIsSet == right.fIsSet;
        }
        switch (left.fForm) {
        case Form::Text:
            return left.text() == right.text();
        case Form::Double:
            return left.asDouble() == right.asDouble();
        case Form::Single:
            return left.asSingle() == right.asSingle();
        default:
            return left.fBits == right.fBits;
        }
    }

private:
    FieldValue(bool isSet, Form form, std::uint64_t bits) noexcept : fBits(bits), fForm(form), fIsSet(isSet) {}

    std::uint64_t fBits; ///< the value; of a text its address
    std::uint32_t fSize = 0;
    Form fForm;
    bool fIsSet;
};

static_assert(sizeof(FieldValue) == 16, "returned in registers");

} // namespace ZEL::internal
