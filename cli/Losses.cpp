#include "Losses.h"

#include "Text.h"

#include <array>
#include <cstddef>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <string_view>

namespace cli {
namespace {

using ZEL::Serializer::ReadReport;

struct Kind {
    char const * heading;
    char const * noun;
    ReadReport::Counts const & (ReadReport::*counts)() const noexcept;
};

constexpr std::array<Kind, 8> kKinds{{
    {"elements skipped", "element", &ReadReport::skippedElements},
    {"elements in them", "element", &ReadReport::skippedContents},
    {"attributes ignored", "attribute", &ReadReport::ignoredAttributes},
    {"values refused", "value", &ReadReport::rejectedValues},
    {"values replaced by a later one", "value", &ReadReport::replacedValues},
    {"objects that nothing contains", "object", &ReadReport::uncontainedObjects},
    {"links without target", "link", &ReadReport::unresolvedReferences},
    {"files not read", "file", &ReadReport::unreadFiles},
}};

} // namespace

std::string summaryOf(ReadReport const & report) {
    std::string text;
    std::size_t total = 0;
    for (auto kind = kKinds.begin(); kind != kKinds.end(); ++kind) {
        for (auto const & [name, count] : (report.*kind->counts)()) {
            total += count;
        }
        auto const next = std::next(kind);
        bool const isLastOfNoun = next == kKinds.end() || std::string_view(next->noun) != kind->noun;
        if (isLastOfNoun && total != 0) {
            text += (text.empty() ? "" : ", ") + counted(total, kind->noun);
            total = 0;
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
