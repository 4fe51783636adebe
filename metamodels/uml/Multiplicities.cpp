// What values say of multiplicities and aggregations: bounds are literals, which other tools write as texts as well.

#include "OwnFactory.h"

#include <ZEL/Boolean.h>
#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/UnlimitedNatural.h>

#include <uml/AggregationKind.h>
#include <uml/LiteralInteger.h>
#include <uml/LiteralString.h>
#include <uml/LiteralUnlimitedNatural.h>
#include <uml/MultiplicityElement.h>
#include <uml/MultiplicityElementIntf.h>
#include <uml/PropertyIntf.h>
#include <uml/ValueSpecification.h>

#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace uml::NSInterface {

namespace {

constexpr std::int64_t kUnlimited = -1;

std::int64_t numberOf(ZEL::UnlimitedNatural const & value) {
    return value.isUnlimited() ? kUnlimited : std::int64_t{static_cast<std::uint32_t>(value)};
}

std::optional<std::int64_t> numberOf(std::string const & text) {
    if (text == "*") {
        return kUnlimited;
    }
    std::int64_t number = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

/// The bound that a value states; none for an expression, or without a value.
std::optional<std::int64_t> numberOf(ImmutableValueSpecification const & value) {
    if (ImmutableLiteralInteger const literal(value); literal.isValid()) {
        return static_cast<std::int32_t>(literal.getValue());
    }
    if (ImmutableLiteralUnlimitedNatural const literal(value); literal.isValid()) {
        return numberOf(literal.getValue());
    }
    if (ImmutableLiteralString const literal(value); literal.isValid()) {
        return numberOf(literal.getValue().str());
    }
    return std::nullopt;
}

/// Writes the bound into a literal that can hold it; false if `value` is none.
bool setNumber(ValueSpecification const & value, std::int64_t number) {
    if (LiteralInteger const literal(value); literal.isValid() && number <= std::numeric_limits<std::int32_t>::max()) {
        literal.setValue(ZEL::Integer(static_cast<std::int32_t>(number)));
        return true;
    }
    if (LiteralUnlimitedNatural const literal(value); literal.isValid() && number >= kUnlimited) {
        literal.setValue(ZEL::UnlimitedNatural(static_cast<std::uint32_t>(number)));
        return true;
    }
    if (LiteralString const literal(value); literal.isValid()) {
        literal.setValue(ZEL::String(number == kUnlimited ? "*" : std::to_string(number)));
        return true;
    }
    return false;
}

void destroyIfAny(ValueSpecification const & value) {
    if (value.isValid()) {
        value.destroy();
    }
}

} // namespace

// --- bounds ----------------------------------------------------------------------------------------------------------

ZEL::Boolean MultiplicityElementIntf::hasIntegerLower(ZEL::Deviant deviant) const { return hasLowerValue(deviant); }

ZEL::Integer MultiplicityElementIntf::getIntegerLower(ZEL::Deviant deviant) const {
    std::int64_t const number = numberOf(getLowerValue(deviant)).value_or(1);
    bool const fits =
        number >= std::numeric_limits<std::int32_t>::min() && number <= std::numeric_limits<std::int32_t>::max();
    return ZEL::Integer(fits ? static_cast<std::int32_t>(number) : 1);
}

void MultiplicityElementIntf::setIntegerLower(ZEL::Deviant deviant, ZEL::Integer const & value) {
    if (getIntegerLower(deviant) == value) {
        return;
    }
    ValueSpecification const present = getLowerValue(deviant);
    if (!setNumber(present, static_cast<std::int32_t>(value))) {
        LiteralInteger const literal =
            internal::factoryBeside(MultiplicityElement(this, deviant)).createLiteralInteger();
        literal.setValue(value);
        setLowerValue(deviant, literal);
        destroyIfAny(present);
    }
}

void MultiplicityElementIntf::removeIntegerLower(ZEL::Deviant deviant) { destroyIfAny(getLowerValue(deviant)); }

ZEL::Boolean MultiplicityElementIntf::hasUnlimitedNaturalUpper(ZEL::Deviant deviant) const {
    return hasUpperValue(deviant);
}

ZEL::UnlimitedNatural MultiplicityElementIntf::getUnlimitedNaturalUpper(ZEL::Deviant deviant) const {
    std::int64_t const number = numberOf(getUpperValue(deviant)).value_or(1);
    bool const fits = number >= kUnlimited && number <= std::numeric_limits<std::uint32_t>::max();
    return ZEL::UnlimitedNatural(fits ? static_cast<std::uint32_t>(number) : 1U);
}

void MultiplicityElementIntf::setUnlimitedNaturalUpper(ZEL::Deviant deviant, ZEL::UnlimitedNatural const & value) {
    if (getUnlimitedNaturalUpper(deviant) == value) {
        return;
    }
    ValueSpecification const present = getUpperValue(deviant);
    if (!setNumber(present, numberOf(value))) {
        LiteralUnlimitedNatural const literal =
            internal::factoryBeside(MultiplicityElement(this, deviant)).createLiteralUnlimitedNatural();
        literal.setValue(value);
        setUpperValue(deviant, literal);
        destroyIfAny(present);
    }
}

void MultiplicityElementIntf::removeUnlimitedNaturalUpper(ZEL::Deviant deviant) {
    destroyIfAny(getUpperValue(deviant));
}

bool MultiplicityElementIntf::satisfiesLowerGe0(ZEL::Deviant deviant) const {
    return numberOf(getLowerValue(deviant)).value_or(0) >= 0;
}

bool MultiplicityElementIntf::satisfiesUpperGeLower(ZEL::Deviant deviant) const {
    std::int64_t const upper = numberOf(getUpperValue(deviant)).value_or(1);
    return upper == kUnlimited || upper >= numberOf(getLowerValue(deviant)).value_or(1);
}

bool MultiplicityElementIntf::satisfiesLowerIsInteger(ZEL::Deviant deviant) const {
    ValueSpecification const value = getLowerValue(deviant);
    return !value.isValid() || numberOf(value).has_value();
}

bool MultiplicityElementIntf::satisfiesUpperIsUnlimitedNatural(ZEL::Deviant deviant) const {
    ValueSpecification const value = getUpperValue(deviant);
    return !value.isValid() || numberOf(value).has_value();
}

// --- aggregation -----------------------------------------------------------------------------------------------------

ZEL::Boolean PropertyIntf::hasBooleanIsComposite(ZEL::Deviant) const { return ZEL::Boolean(true); }

ZEL::Boolean PropertyIntf::getBooleanIsComposite(ZEL::Deviant deviant) const {
    return ZEL::Boolean(getAggregation(deviant) == AggregationKind::Composite);
}

void PropertyIntf::setBooleanIsComposite(ZEL::Deviant deviant, ZEL::Boolean const & value) {
    if (getBooleanIsComposite(deviant) != value) {
        setAggregation(deviant, value ? AggregationKind::Composite : AggregationKind::None);
    }
}

void PropertyIntf::removeBooleanIsComposite(ZEL::Deviant) {}

} // namespace uml::NSInterface
