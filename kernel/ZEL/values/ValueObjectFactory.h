#pragma once

#include <ZEL/values/ValueObject.h>

#include <string>

namespace ZEL {

/// Makes boxed values by the registered name of their type, such as "ZEL.Integer".
///
/// An unknown name is not an error: the result is a null handle. The handles have a null deviant.
class ZEL_API ValueObjectFactory {
public:
    ValueObjectFactory() = delete;

    /// With the type's default value.
    [[nodiscard]] static ValueObject create(std::string const & typeName);
    /// With a copy of `value`, which is not checked: a value of another class is found when it is read.
    [[nodiscard]] static ValueObject create(std::string const & typeName, HASP::any const & value);
    /// Throws the conversion error's text if the text is no value of the type.
    [[nodiscard]] static ValueObject createFromString(std::string const & typeName, std::string const & text);
    [[nodiscard]] static bool isValueObjectType(std::string const & typeName);
};

} // namespace ZEL
