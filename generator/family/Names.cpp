#include "family/Names.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace zelgen {
namespace {

bool endsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

char upper(char c) { return static_cast<char>(std::toupper(static_cast<unsigned char>(c))); }

} // namespace

std::string Names::capital(std::string_view name) {
    std::string result(name);
    if (!result.empty()) {
        result[0] = upper(result[0]);
    }
    return result;
}

std::string Names::uncapital(std::string_view name) {
    std::string result(name);
    if (!result.empty()) {
        result[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(result[0])));
    }
    return result;
}

std::string Names::plural(std::string_view name) {
    std::string singular(name);
    if (capital(name) == "Unparented") { // "the unparented": an adjective, so it has no plural
        return singular;
    }
    if (endsWith(name, "y")) {
        return singular.substr(0, singular.size() - 1) + "ies";
    }
    return singular + (endsWith(name, "ss") ? "es" : "s");
}

std::string Names::prefixed(std::string_view type, std::string_view property) {
    return uncapital(type) + capital(property);
}

std::string Names::satisfies(std::string_view constraint) {
    std::string result = "satisfies";
    for (std::size_t begin = 0; begin < constraint.size();) {
        std::size_t const end = std::min(constraint.find('_', begin), constraint.size());
        result += capital(constraint.substr(begin, end - begin));
        begin = end + 1;
    }
    return result;
}

bool Names::readsAsFlag(std::string_view property) {
    return property.size() > 2 && property.substr(0, 2) == "is" &&
           std::isupper(static_cast<unsigned char>(property[2])) != 0;
}

std::string Names::field(std::string_view property) { return std::string(property) + (isKeyword(property) ? "_" : ""); }

std::string Names::enumerator(std::string_view literal) {
    std::string result = capital(literal);
    std::replace_if(
        result.begin(), result.end(), [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
    return std::isdigit(static_cast<unsigned char>(result[0])) != 0 ? '_' + result : result;
}

std::string Names::enumerator(TypeDefinition const & enumeration, std::string_view literal) {
    for (auto const & [of, name] : enumeration.enumerators) {
        if (of.text == literal) {
            return name.text;
        }
    }
    return enumerator(literal);
}

bool Names::isKeyword(std::string_view name) {
    static constexpr auto kWords = std::to_array<std::string_view>(
        {"alignas",     "alignof",  "and",        "and_eq",    "asm",       "auto",         "bitand",
         "bitor",       "bool",     "break",      "case",      "catch",     "char",         "char16_t",
         "char32_t",    "char8_t",  "class",      "co_await",  "co_return", "co_yield",     "compl",
         "concept",     "const",    "const_cast", "consteval", "constexpr", "constinit",    "continue",
         "decltype",    "default",  "delete",     "do",        "double",    "dynamic_cast", "else",
         "enum",        "explicit", "export",     "extern",    "false",     "float",        "for",
         "friend",      "goto",     "if",         "inline",    "int",       "long",         "mutable",
         "namespace",   "new",      "noexcept",   "not",       "not_eq",    "nullptr",      "operator",
         "or",          "or_eq",    "private",    "protected", "public",    "register",     "reinterpret_cast",
         "requires",    "return",   "short",      "signed",    "sizeof",    "static",       "static_assert",
         "static_cast", "struct",   "switch",     "template",  "this",      "thread_local", "throw",
         "true",        "try",      "typedef",    "typeid",    "typename",  "union",        "unsigned",
         "using",       "virtual",  "void",       "volatile",  "wchar_t",   "while",        "xor",
         "xor_eq"});
    return std::find(kWords.begin(), kWords.end(), name) != kWords.end();
}

bool Names::isIdentifier(std::string_view name) {
    return !name.empty() && std::isdigit(static_cast<unsigned char>(name[0])) == 0 &&
           std::all_of(name.begin(), name.end(),
                       [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; });
}

} // namespace zelgen
