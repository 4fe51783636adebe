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
    Fate fate;
};

constexpr std::array<Kind, 8> kKinds{{
    {"elements skipped", "element", &ReadReport::skippedElements, Fate::Kept},
    {"elements in them", "element", &ReadReport::skippedContents, Fate::Kept},
    {"attributes ignored", "attribute", &ReadReport::ignoredAttributes, Fate::Kept},
    {"values refused", "value", &ReadReport::rejectedValues, Fate::Kept},
    {"values beside a single one", "value", &ReadReport::replacedValues, Fate::Kept},
    {"objects that nothing contains", "object", &ReadReport::uncontainedObjects, Fate::LeftOut},
    {"links without target", "link", &ReadReport::unresolvedReferences, Fate::Kept},
    {"files not read", "file", &ReadReport::unreadFiles, Fate::LeftOut},
}};

} // namespace

std::string summaryOf(ReadReport const & report, Fate fate) {
    std::string text;
    std::size_t total = 0;
    for (auto kind = kKinds.begin(); kind != kKinds.end(); ++kind) {
        if (kind->fate == fate) {
            for (auto const & [name, count] : (report.*kind->counts)()) {
                total += count;
            }
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
