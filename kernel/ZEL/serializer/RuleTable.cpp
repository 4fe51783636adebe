#include <ZEL/serializer/RuleTable.h>

#include <algorithm>
#include <atomic>

namespace ZEL::Serializer {
namespace {

constexpr std::size_t kAnswers = 1024;

std::atomic<std::uint64_t> theChanges{0};

std::size_t slotOf(Context const & context) noexcept {
    std::size_t hash = context.getRole().hash();
    hash = hash * 31U + context.getParentRole().hash();
    hash = hash * 31U + context.getType().hash();
    hash = hash * 31U + context.getParentType().hash();
    return (hash ^ (hash >> 10U)) % kAnswers;
}

} // namespace

std::uint64_t RuleTable::changeCount() noexcept { return theChanges.load(std::memory_order_relaxed); }

void RuleTable::Changes::note() const noexcept { theChanges.fetch_add(1, std::memory_order_relaxed); }

void RuleTable::add(Context const & pattern, RuleFunction function) {
    fRules.emplace_back(pattern, std::move(function));
    fChanges.note();
    fAnswers.clear();
}

void RuleTable::remove(Context const & pattern) {
    std::erase_if(fRules, [&](auto const & rule) { return rule.first == pattern; });
    fChanges.note();
    fAnswers.clear();
}

RuleFunction const * RuleTable::find(Context const & context) const {
    if (fRules.empty()) {
        return nullptr;
    }
    if (fAnswers.empty()) {
        fAnswers.resize(kAnswers);
    }
    Answer & answer = fAnswers[slotOf(context)];
    if (answer.rule == Unknown || answer.role != context.getRole() || answer.type != context.getType() ||
        answer.parentRole != context.getParentRole() || answer.parentType != context.getParentType()) {
        answer = {context.getParentType(), context.getParentRole(), context.getType(), context.getRole(),
                  search(context)};
    }
    return answer.rule == None ? nullptr : &fRules[static_cast<std::size_t>(answer.rule)].second;
}

bool RuleTable::empty() const noexcept { return fRules.empty(); }

bool RuleTable::mayFit(QualifiedName role) const noexcept {
    return std::any_of(fRules.begin(), fRules.end(),
                       [role](auto const & rule) { return !rule.first.getRole().conflictsWith(role); });
}

std::int32_t RuleTable::search(Context const & context) const noexcept {
    std::int32_t rule = None;
    int best = 0;
    for (std::size_t i = 0; i < fRules.size(); ++i) {
        int const match = fRules[i].first.weightedMatch(context);
        if (match != 0 && match >= best) {
            best = match;
            rule = static_cast<std::int32_t>(i);
        }
    }
    return rule;
}

} // namespace ZEL::Serializer
