#include "load/Signature.h"

#include <cctype>
#include <string_view>

namespace zelgen {
namespace {

/// Reads a signature from left to right. A reader that fails sets `failed`.
class Scanner {
public:
    explicit Scanner(std::string_view text) : fRest(text) {}

    bool failed = false;

    [[nodiscard]] bool atEnd() {
        skipBlanks();
        return fRest.empty();
    }
    /// Letters, digits, underscores and dots; dots join the parts of a qualified type name.
    std::string name() {
        skipBlanks();
        std::size_t length = 0;
        while (length < fRest.size() && isNamePart(fRest[length])) {
            ++length;
        }
        std::string result(fRest.substr(0, length));
        fRest.remove_prefix(length);
        failed = failed || result.empty() || std::isdigit(static_cast<unsigned char>(result[0])) != 0;
        return result;
    }
    bool accept(std::string_view token) {
        skipBlanks();
        if (fRest.substr(0, token.size()) != token) {
            return false;
        }
        fRest.remove_prefix(token.size());
        return true;
    }
    void expect(std::string_view token) { failed = !accept(token) || failed; }

private:
    static bool isNamePart(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '.'; }
    void skipBlanks() {
        while (!fRest.empty() && fRest.front() == ' ') {
            fRest.remove_prefix(1);
        }
    }

    std::string_view fRest;
};

/// Removes `Immutable` from the last part of a name. Returns whether it was there.
bool dropImmutable(std::string & name) {
    constexpr std::string_view kImmutable = "Immutable";
    std::size_t const dot = name.rfind('.');
    std::size_t const start = dot == std::string::npos ? 0 : dot + 1;
    if (name.compare(start, kImmutable.size(), kImmutable) != 0 || name.size() == start + kImmutable.size()) {
        return false;
    }
    name.erase(start, kImmutable.size());
    return true;
}

SignatureType readType(Scanner & scanner) {
    SignatureType type;
    type.name = scanner.name();
    if (scanner.accept("<")) {
        type.sequence = true;
        scanner.failed = scanner.failed || (type.name != "Sequence" && type.name != "ImmutableSequence");
        type.name = scanner.name();
        scanner.expect(">");
    }
    type.immutable = dropImmutable(type.name);
    return type;
}

} // namespace

std::optional<Signature> parseSignature(std::string const & text) {
    Scanner scanner(text);
    Signature signature;
    signature.result = readType(scanner);
    signature.name = scanner.name();
    scanner.expect("(");
    if (!scanner.accept(")")) {
        do {
            Signature::Parameter parameter;
            parameter.type = readType(scanner);
            parameter.name = scanner.name();
            signature.parameters.push_back(parameter);
        } while (!scanner.failed && scanner.accept(","));
        scanner.expect(")");
    }
    signature.isConst = scanner.accept("const");
    if (scanner.failed || !scanner.atEnd()) {
        return std::nullopt;
    }
    return signature;
}

} // namespace zelgen
