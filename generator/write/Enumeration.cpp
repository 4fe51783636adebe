#include "write/Emit.h"

namespace zelgen {

std::string emitEnumerationShape(Emission const & emission, Type const & of) {
    return emission.print(R"(
$banner$
#pragma once

#include <$forward$>
#include <ZEL/values/EnumerationShape.h>

namespace $ns$ {

/// A value of $X$. Its texts are the literals of the definition.
class $API$ $X$ : public ZEL::EnumerationValue<$X$> {
public:
    enum Value { $values$ };

    using EnumerationValue::EnumerationValue;
    constexpr $X$() noexcept = default;
    constexpr $X$(Value value) noexcept : EnumerationValue(value) {}
    constexpr operator Value() const noexcept { return getValue(); }

    [[nodiscard]] static std::string getTypeName() { return "$P$.$X$"; }
    [[nodiscard]] static HASP::TypeInfo const & getTypeInfo();
    /// A `std::map<std::string, Value>`; complete by `<$header$>`.
    [[nodiscard]] static ZEL::internal::EnumerationLiterals<Value> const & getLiterals();
};

} // namespace $ns$
)",
                          {{"banner", emission.banner(of.mark, "write/Enumeration.cpp")},
                           {"forward", emission.path("Forward.h")},
                           {"ns", emission.metamodel.cppNamespace},
                           {"API", emission.exportMacro},
                           {"X", of.name},
                           {"P", emission.metamodel.prefix},
                           {"header", Emission::valueHeader(of)},
                           {"values", Printer::join(of.enumerators, ", ")}});
}

std::string emitEnumerationHeader(Emission const & emission, Type const & of) {
    return emission.print(
        R"(
$banner$
#pragma once

#include <$shape$>
#include <ZEL/values/EnumerationValue.h>
)",
        {{"banner", emission.banner(of.mark, "write/Enumeration.cpp")}, {"shape", Emission::shapeHeader(of)}});
}

std::string emitEnumerationSource(Emission const & emission, Type const & of) {
    std::string rows;
    for (std::size_t i = 0; i < of.literals.size(); ++i) {
        rows += '{' + Printer::quoted(of.literals[i]) + ", " + of.enumerators[i] + "},\n";
    }
    return emission.print(R"(
$banner$
#include <$header$>

namespace $ns$ {

HASP::TypeInfo const & $X$::getTypeInfo() {
    return ZEL::internal::enumerationType<$X$>();
}

ZEL::internal::EnumerationLiterals<$X$::Value> const & $X$::getLiterals() {
    static ZEL::internal::EnumerationLiterals<Value> const literals{
        $rows$
    };
    return literals;
}

} // namespace $ns$
)",
                          {{"banner", emission.banner(of.mark, "write/Enumeration.cpp")},
                           {"header", Emission::valueHeader(of)},
                           {"ns", emission.metamodel.cppNamespace},
                           {"X", of.name},
                           {"rows", rows}});
}

} // namespace zelgen
