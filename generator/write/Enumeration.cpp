#include "write/Emit.h"

namespace zelgen {

std::string emitEnumerationHeader(Emission const & emission, Type const & of) {
    return emission.print(R"(
$banner$
#pragma once

#include <$forward$>
#include <ZEL/values/EnumerationValue.h>

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
    [[nodiscard]] static std::map<std::string, Value> const & getLiterals();
};

} // namespace $ns$
)",
                          {{"banner", emission.banner(of.mark, "write/Enumeration.cpp")},
                           {"forward", emission.path("Forward.h")},
                           {"ns", emission.metamodel.cppNamespace},
                           {"API", emission.exportMacro},
                           {"X", of.name},
                           {"P", emission.metamodel.prefix},
                           {"values", Printer::join(of.enumerators, ", ")}});
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

std::map<std::string, $X$::Value> const & $X$::getLiterals() {
    static std::map<std::string, Value> const literals{
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
