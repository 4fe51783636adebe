#include "load/Diagnostics.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <tuple>
#include <utility>

namespace zelgen {

void Diagnostics::add(std::string const & file, Mark mark, std::string const & text) {
    fMessages.push_back({file, mark, text});
}

std::vector<std::string> Diagnostics::messages() const {
    std::vector<Message> sorted = fMessages;
    std::stable_sort(sorted.begin(), sorted.end(), [](Message const & a, Message const & b) {
        return std::tie(a.file, a.mark.line, a.mark.column) < std::tie(b.file, b.mark.line, b.mark.column);
    });
    std::vector<std::string> texts;
    for (Message const & message : sorted) {
        std::string const place = message.mark.line == 0 ? ""
                                                         : std::to_string(message.mark.line) + ':' +
                                                               std::to_string(message.mark.column) + ':';
        texts.push_back(message.file + ':' + place + ' ' + message.text);
    }
    return texts;
}

namespace {

/// Number of characters to insert, drop or replace on the way from `a` to `b`; case does not count.
std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < b.size(); ++j) {
            bool const same =
                std::tolower(static_cast<unsigned char>(a[i])) == std::tolower(static_cast<unsigned char>(b[j]));
            std::size_t const replaced = diagonal + (same ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

} // namespace

std::string suggestion(std::string_view name, std::vector<std::string> const & candidates) {
    std::string const * nearest = nullptr;
    std::size_t least = std::max<std::size_t>(1, name.size() / 3) + 1;
    for (std::string const & candidate : candidates) {
        std::size_t const distance = editDistance(name, candidate);
        if (distance < least) {
            least = distance;
            nearest = &candidate;
        }
    }
    return nearest == nullptr ? std::string() : ", did you mean '" + *nearest + "'?";
}

} // namespace zelgen
