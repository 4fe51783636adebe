#include "Losses.h"

#include "Text.h"

#include <array>
#include <cstddef>
#include <iomanip>
#include <iostream>

namespace cli {
namespace {

using ZEL::Serializer::ReadReport;

struct Kind {
    char const * heading;
    char const * noun;
    ReadReport::Counts const & (ReadReport::*counts)() const noexcept;
};

constexpr std::array<Kind, 5> kKinds{{
    {"elements skipped", "element", &ReadReport::skippedElements},
    {"attributes ignored", "attribute", &ReadReport::ignoredAttributes},
    {"values refused", "value", &ReadReport::rejectedValues},
    {"links without target", "link", &ReadReport::unresolvedReferences},
    {"files not read", "file", &ReadReport::unreadFiles},
}};

} // namespace

std::string summaryOf(ReadReport const & report) {
    std::string text;
    for (Kind const & kind : kKinds) {
        std::size_t total = 0;
        for (auto const & [name, count] : (report.*kind.counts)()) {
            total += count;
        }
        if (total != 0) {
            text += (text.empty() ? "" : ", ") + counted(total, kind.noun);
        }
    }
    return text;
}

void print(ReadReport const & report) {
    for (Kind const & kind : kKinds) {
        ReadReport::Counts const & counts = (report.*kind.counts)();
        std::cout << (counts.empty() ? std::string() : '\n' + std::string(kind.heading) + '\n');
        for (auto const & [name, count] : counts) {
            std::cout << std::right << std::setw(8) << count << ' ' << printable(name) << '\n';
        }
    }
}

} // namespace cli
