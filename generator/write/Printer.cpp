#include "write/Printer.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <sstream>
#include <stdexcept>

namespace zelgen {
namespace {

constexpr std::size_t kColumns = 120;

bool isNamePart(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; }

/// Calls `line(text)` for each line of `text`, without its end.
template <class Function> void forEachLine(std::string_view text, Function line) {
    while (!text.empty()) {
        std::size_t const end = text.find('\n');
        line(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
}

/// Fills one text.
class Filler {
public:
    using Known = std::map<std::string, std::string, std::less<>>;

    Filler(Printer::Values const & values, Known const & known) : fValues(values), fKnown(known) {}

    void addLine(std::string_view line) {
        std::string filled;
        std::string_view rest = line;
        bool dropped = false;
        for (std::size_t start = rest.find('$'); start != std::string_view::npos; start = rest.find('$')) {
            std::size_t const end = rest.find('$', start + 1);
            if (end == std::string_view::npos) {
                throw std::logic_error("found a lone $ in the line '" + std::string(line) + "', expected $name$");
            }
            std::string const & value = take(rest.substr(start + 1, end - start - 1));
            filled += rest.substr(0, start);
            bool const alone = filled.find_first_not_of(' ') == std::string::npos && end + 1 == rest.size();
            dropped = dropped || (alone && value.empty());
            append(filled, value, alone ? filled : std::string());
            rest.remove_prefix(end + 1);
        }
        if (!dropped) {
            fResult += filled + std::string(rest) + '\n';
        }
    }

    [[nodiscard]] std::string finish() const {
        for (auto const & [name, value] : fValues) {
            if (fUsed.count(name) == 0) {
                throw std::logic_error("found a value for '" + std::string(name) +
                                       "', expected a place for it in the text");
            }
        }
        return fResult;
    }

private:
    std::string const & take(std::string_view name) {
        for (auto const & [given, value] : fValues) {
            if (given == name) {
                fUsed.insert(given);
                return value;
            }
        }
        if (auto const known = fKnown.find(name); known != fKnown.end()) {
            return known->second;
        }
        throw std::logic_error("found '$" + std::string(name) + "$' in a text, expected a value for it");
    }
    static void append(std::string & filled, std::string const & value, std::string const & indent) {
        std::string separator;
        std::string_view text = value;
        if (!text.empty() && text.back() == '\n') {
            text.remove_suffix(1);
        }
        forEachLine(text, [&](std::string_view line) {
            filled += separator;
            filled += separator.empty() || line.empty() ? "" : indent;
            filled += line;
            separator = "\n";
        });
    }

    Printer::Values const & fValues;
    Known const & fKnown;
    std::set<std::string_view> fUsed; ///< of the values
    std::string fResult;
};

} // namespace

Printer::Printer(std::string const & cppNamespace) {
    for (std::string rest = cppNamespace; !rest.empty();) {
        fQualifiers.push_back(rest + "::");
        std::size_t const end = rest.rfind("::");
        rest.erase(end == std::string::npos ? 0 : end);
    }
}

Printer Printer::within(std::string const & cppNamespace) const {
    Printer result(cppNamespace);
    result.fKnown = fKnown;
    return result;
}

Printer Printer::knowing(Values const & values) const {
    Printer result = *this;
    for (auto const & [name, value] : values) {
        result.fKnown.insert_or_assign(std::string(name), value);
    }
    return result;
}

std::string Printer::operator()(std::string_view text, Values const & values) const {
    if (!text.empty() && text.front() == '\n') {
        text.remove_prefix(1);
    }
    Filler filler(values, fKnown);
    forEachLine(text, [&](std::string_view line) { filler.addLine(line); });
    return shortened(filler.finish());
}

std::string Printer::shortened(std::string text) const {
    constexpr std::string_view kNamespace = "namespace ";
    for (std::string const & qualifier : fQualifiers) {
        for (std::size_t at = text.find(qualifier); at != std::string::npos; at = text.find(qualifier, at)) {
            char const before = at == 0 ? ' ' : text[at - 1];
            bool const isNamespace =
                at >= kNamespace.size() && text.compare(at - kNamespace.size(), kNamespace.size(), kNamespace) == 0;
            if (isNamePart(before) || before == ':' || before == '"' || isNamespace) {
                at += qualifier.size();
            } else {
                text.erase(at, qualifier.size());
            }
        }
    }
    return text;
}

std::string Printer::blocks(std::vector<std::string> const & blocks) {
    std::vector<std::string> present;
    std::copy_if(blocks.begin(), blocks.end(), std::back_inserter(present),
                 [](std::string const & b) { return !b.empty(); });
    return join(present, "\n");
}

std::string Printer::join(std::vector<std::string> const & items, std::string_view separator) {
    std::string result;
    for (std::size_t i = 0; i < items.size(); ++i) {
        result += i == 0 ? "" : separator;
        result += items[i];
    }
    return result;
}

std::string Printer::comment(std::string_view mark, std::string_view text, std::size_t indent) {
    std::string result;
    std::string line(mark);
    std::istringstream words{std::string(text)};
    for (std::string word; words >> word;) {
        if (line.size() > mark.size() && indent + line.size() + 1 + word.size() > kColumns) {
            result += line + (line.back() == '\\' ? ".\n" : "\n");
            line = mark;
        }
        line += ' ' + word;
    }
    if (line.size() == mark.size()) {
        return result;
    }
    if (line.back() == '\\') {
        line += '.'; // the next line does not belong to the comment
    }
    return result + line + '\n';
}

std::string Printer::quoted(std::string_view text) {
    std::string result = "\"";
    for (char const c : text) {
        if (c == '"' || c == '\\' || c == '\n') {
            result += '\\';
        }
        result += c == '\n' ? 'n' : c;
    }
    return result + '"';
}

} // namespace zelgen
