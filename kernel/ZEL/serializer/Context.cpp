#include <ZEL/serializer/Context.h>

#include <cassert>

namespace ZEL::Serializer {

std::string const & Context::getValue(std::size_t index) const noexcept {
    assert(index < getValueCount());
    return index == 0 ? fFirstValue : fMoreValues[index - 1];
}

void Context::addKind(Flag kind, std::string && text) {
    if (has(kind)) {
        fMoreValues.push_back(std::move(text));
    } else {
        setKind(kind, std::move(text));
    }
    set(MultiValued, true);
}

int Context::weightedMatch(Context const & other) const noexcept {
    constexpr int emptyBeatsAll = 8;
    constexpr int allPairsBlank = 4;
    if (isEmpty() || other.isEmpty()) {
        return emptyBeatsAll;
    }
    int score = 0;
    int blank = 0;
    QualifiedName const pairs[3][2] = {{fType, other.fType}, {fRole, other.fRole}, {fParentType, other.fParentType}};
    for (auto const & [mine, theirs] : pairs) {
        if (mine == theirs) {
            ++(mine.isEmpty() ? blank : score);
        } else if (mine.conflictsWith(theirs)) {
            return 0;
        }
    }
    if (fParentRole == other.fParentRole) {
        // Unlike in the other pairs, a parent role without a name counts as blank even if it has a URI.
        ++(other.fParentRole.hasName() ? score : blank);
    } else if (fParentRole.conflictsWith(other.fParentRole)) {
        return 0;
    }
    return blank == allPairsBlank ? allPairsBlank : score;
}

bool operator<(Context const & left, Context const & right) noexcept {
    if (left.fParentType.conflictsWith(right.fParentType)) {
        return left.fParentType < right.fParentType;
    }
    if (left.fParentRole.conflictsWith(right.fParentRole)) {
        return left.fParentRole < right.fParentRole;
    }
    if (left.fType.conflictsWith(right.fType)) {
        return left.fType < right.fType;
    }
    return left.fRole < right.fRole;
}

} // namespace ZEL::Serializer
