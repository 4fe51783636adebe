#pragma once

#include <ZEL/values/String.h>
#include <ZEL/values/TypeInfoBase.h>
#include <ZEL/values/ValueBase.h>

#include <hasp_util/StringID.h>

#include <compare>

namespace ZEL {

/// A named value: a text, and an object of any class or none.
///
/// Holds one count on the object's body and forgets the deviant through which it was seen, so that `getValue` returns a
/// handle with the null deviant. Compared by name and body.
class ZEL_API Argument : public ValueBase<Argument> {
public:
    /// The names of its two properties, for reflective access.
    static HASP::StringID fName_ID;
    static HASP::StringID fValue_ID;

    Argument() noexcept = default;
    /// Throws "Cannot access NULL ref. Use isValid() before calling methods" on a null handle.
    Argument(String name, Object const & value);
    explicit Argument(ImmutableValueObject const & object);
    explicit Argument(ImmutableObject const & object);

    [[nodiscard]] static std::string getTypeName() { return "ZEL.Argument"; }
    [[nodiscard]] static HASP::TypeInfo const & getTypeInfo();
    /// As the type reads it: "(name,value)"; the result has no value.
    [[nodiscard]] static Argument fromString(String const & text);
    [[nodiscard]] String toString() const;

    [[nodiscard]] bool hasName() const noexcept { return true; }
    [[nodiscard]] String const & getName() const noexcept { return fName; }
    void setName(String const & name) { fName = name; }

    [[nodiscard]] bool hasValue() const noexcept { return fValue.getImplementationWithoutAssert() != nullptr; }
    [[nodiscard]] Object getValue() const { return fValue; }
    /// A null handle leaves no value.
    void setValue(Object const & value);
    void removeValue() { fValue = Object(); }

    // --- the same as objects; a name that is no text throws as `String` does when made of an object ------------------
    [[nodiscard]] bool hasObjectName() const noexcept { return hasName(); }
    [[nodiscard]] bool hasObjectValue() const noexcept { return hasValue(); }
    [[nodiscard]] ImmutableObject getNameAsImmutableObject() const;
    [[nodiscard]] ImmutableObject getValueAsImmutableObject() const { return fValue; }
    void setOrAddObjectName(Object const & name) { fName = String(name); }
    void setOrAddObjectValue(Object const & value) { setValue(value); }
    /// Empties the name if it is this text.
    void removeObjectName(ImmutableObject const & name);
    /// Removes the value if it is this object.
    void removeObjectValue(ImmutableObject const & value);
    void removeObjectFirstName() { fName = String(); }
    void removeObjectFirstValue() { removeValue(); }

    [[nodiscard]] Object toZELObject() const;
    [[nodiscard]] ValueObject toZELValueObject() const;

    friend bool operator==(Argument const & left, Argument const & right) noexcept {
        return left.fName == right.fName && left.fValue == right.fValue;
    }
    friend std::strong_ordering operator<=>(Argument const & left, Argument const & right) noexcept {
        auto const names = left.fName <=> right.fName;
        if (std::is_neq(names) || left.fValue == right.fValue) {
            return names;
        }
        return left.fValue < right.fValue ? std::strong_ordering::less : std::strong_ordering::greater;
    }

private:
    String fName;
    Object fValue; ///< always with the null deviant
};

/// The type of `Argument`: "(" name "," value ")".
///
/// The value is printed as it prints itself, and as "()" if there is none. Reading accepts an empty text, and one whose
/// closing parenthesis is missing; of the value it checks the shape only, since the text does not tell its type: the
/// result has no value. A text of another shape throws.
class ZEL_API ArgumentTypeInfo final : public internal::TypeInfoBase<ArgumentTypeInfo> {
public:
    [[nodiscard]] HASP::any convertFromString(std::string const & text, HASP::ErrorHolder & errors) const override;
    [[nodiscard]] std::string convertToString(HASP::any const & value) const override;
    [[nodiscard]] HASP::any defaultConstruct() const override;
    [[nodiscard]] ArgumentTypeInfo * clone() const override;
};

} // namespace ZEL
