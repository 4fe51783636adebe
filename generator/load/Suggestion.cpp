#include "load/Suggestion.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

namespace zelgen {
namespace {

char lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

/// The number of characters to insert, delete, replace or swap with the next one to get from `a` to `b`, ignoring case.
std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> beforeLast(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::vector<std::size_t> row{i};
        for (std::size_t j = 1; j <= b.size(); ++j) {
            std::size_t const replaced = last[j - 1] + (lower(a[i - 1]) == lower(b[j - 1]) ? 0 : 1);
            row.push_back(std::min({replaced, last[j] + 1, row[j - 1] + 1}));
            if (i > 1 && j > 1 && lower(a[i - 1]) == lower(b[j - 2]) && lower(a[i - 2]) == lower(b[j - 1])) {
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
            }
        }
        beforeLast = std::exchange(last, std::move(row));
    }
    return last.back();
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

std::string anyOf(std::vector<std::string> const & names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        text += i == 0 ? "" : i + 1 == names.size() ? " or " : ", ";
        text += names[i];
    }
    return text;
}

} // namespace zelgen
