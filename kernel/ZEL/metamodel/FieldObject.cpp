#include <ZEL/Boolean.h>
#include <ZEL/Double.h>
#include <ZEL/Integer.h>
#include <ZEL/Real.h>
#include <ZEL/Single.h>
#include <ZEL/String.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/FieldObject.h>
#include <ZEL/metamodel/FieldValue.h>
#include <ZEL/values/ValueObjectImpl.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace ZEL::internal {
namespace {

/// The value that `content` of the field makes, made where it is to lie.
template <class Value, auto content> NSInterface::ValueObjectIntf * boxed(FieldValue const & value) {
    static constinit BoxedTypeMemory memory{[] { return std::string(Value::getTypeName()); }};
    BoxedType * const type = boxedType(memory);
    if (type == nullptr) {
        raiseNullReference();
    }
    return new NSImplementation::ValueObjectImpl(BoxedTypePtr(type), std::in_place_type<Value>, (value.*content)());
}

constexpr std::pair<std::string_view, Boxer> kBoxers[] = {
    {"ZEL.Boolean", &boxed<Boolean, &FieldValue::flag>},
    {"ZEL.Double", &boxed<Double, &FieldValue::asDouble>},
    {"ZEL.Integer", &boxed<Integer, &FieldValue::integer>},
    {"ZEL.Real", &boxed<Real, &FieldValue::asDouble>},
    {"ZEL.Single", &boxed<Single, &FieldValue::asSingle>},
    {"ZEL.String", &boxed<String, &FieldValue::text>},
    {"ZEL.UnlimitedNatural", &boxed<UnlimitedNatural, &FieldValue::number>},
};

} // namespace

Boxer boxerOf(std::string_view typeName) noexcept {
    auto const * const found = std::find_if(std::begin(kBoxers), std::end(kBoxers),
                                            [typeName](auto const & entry) { return entry.first == typeName; });
    return found == std::end(kBoxers) ? nullptr : found->second;
}

} // namespace ZEL::internal
