#include "write/Fit.h"

#include <string_view>

namespace zelgen {
namespace {

constexpr std::size_t kColumns = 120;

std::string_view trimmed(std::string_view text) {
    std::size_t const start = text.find_first_not_of(' ');
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

/// The last place at which a line may be broken: after a comma, or else after an opening bracket, outside string
/// literals.
std::size_t breakPlace(std::string_view line) {
    std::size_t comma = std::string_view::npos;
    std::size_t bracket = std::string_view::npos;
    bool inText = false;
    for (std::size_t i = 0; i + 1 < line.size() && i < kColumns; ++i) {
        if (line[i] == '"' && (i == 0 || line[i - 1] != '\\')) {
            inText = !inText;
        }
        if (!inText && line[i] == ',' && line[i + 1] == ' ') {
            comma = i + 1;
        } else if (!inText && line[i] == '(' && line[i + 1] != ')') {
            bracket = i + 1;
        }
    }
    return comma != std::string_view::npos ? comma : bracket;
}

/// Where the head of a template ends with which the line begins; 0 if it begins with none.
std::size_t templateHeadEnd(std::string_view line) {
    std::size_t const begin = line.find_first_not_of(' ');
    int depth = 0;
    for (std::size_t i = begin; line.substr(begin).starts_with("template <") && i < line.size(); ++i) {
        depth += line[i] == '<' ? 1 : line[i] == '>' ? -1 : 0;
        if (line[i] == '>' && depth == 0) {
            return i + 1;
        }
    }
    return 0;
}

void addWrapped(std::string & result, std::string line) {
    std::size_t const indent = line.find_first_not_of(' ');
    if (std::size_t const place = templateHeadEnd(line); place != 0 && line.size() > kColumns) {
        result += line.substr(0, place) + '\n';
        line = std::string(indent, ' ') + std::string(trimmed(std::string_view(line).substr(place)));
    }
    if (std::size_t const base = line.find(" : public "); base != std::string::npos && line.size() > kColumns) {
        result += line.substr(0, base) + '\n';
        line = std::string(indent + 4, ' ') + line.substr(base + 1);
    }
    while (line.size() > kColumns) {
        std::size_t const place = breakPlace(line);
        if (place == std::string_view::npos || place <= indent) {
            break;
        }
        result += line.substr(0, place) + '\n';
        line = std::string(indent + 4, ' ') + std::string(trimmed(std::string_view(line).substr(place)));
    }
    result += line + '\n';
}

void addLine(std::string & result, std::string const & line) {
    constexpr std::string_view kBodyStart = " { ";
    constexpr std::string_view kBodyEnd = "; }";
    std::string_view const start = trimmed(line);
    if (line.size() <= kColumns || start.rfind("//", 0) == 0 || start.rfind('#', 0) == 0) {
        result += line + '\n';
        return;
    }
    std::size_t const body = line.find(kBodyStart);
    bool const isFunction = body != std::string::npos && line.size() > kBodyEnd.size() &&
                            line.compare(line.size() - kBodyEnd.size(), kBodyEnd.size(), kBodyEnd) == 0;
    if (!isFunction) {
        addWrapped(result, line);
        return;
    }
    std::string const indent = line.substr(0, line.size() - start.size());
    std::string const statement = line.substr(body + kBodyStart.size(), line.size() - body - kBodyStart.size() - 2);
    addWrapped(result, line.substr(0, body) + " {");
    addWrapped(result, indent + "    " + statement);
    result += indent + "}\n";
}

} // namespace

std::string fitted(std::string const & text) {
    std::string result;
    for (std::size_t start = 0; start < text.size();) {
        std::size_t const end = text.find('\n', start);
        addLine(result, text.substr(start, end - start));
        start = end == std::string::npos ? text.size() : end + 1;
    }
    return result;
}

} // namespace zelgen
