#include <hasp_util/Type.h>
#include <hasp_util/TypeInfo.h>

namespace HASP {

any Type::convertFromByteArray(std::vector<unsigned char> const & bytes, ErrorHolder & errors) const {
    return convertFromString(std::string(bytes.begin(), bytes.end()), errors);
}

std::vector<unsigned char> Type::convertToByteArray(any const & value) const {
    std::string const text = convertToString(value);
    return {text.begin(), text.end()};
}

bool Type::isValid(any const & value) const { return !value.empty() && value.type() == defaultConstruct().type(); }

bool Type::isEqualTo(any const & left, any const & right) const {
    return convertToString(left) == convertToString(right);
}

bool Type::isLessThan(any const & left, any const & right) const {
    return convertToString(left) < convertToString(right);
}

Type::~Type() = default;

Type * Type::GetBaseType(TypeInfo const & info) noexcept { return info.fType; }

TypeInfo Type::CreateTypeInfo(Type * type) { return TypeInfo(type); }

} // namespace HASP
