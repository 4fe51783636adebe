#pragma once

#include <ZEL/compare/Pairs.h>

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace ZEL::Compare {

/// How much objects of the two sides have in common.
///
/// What is known of an object is kept, and takes links to objects without a counterpart for links to their names:
/// forget it when there are more pairs.
class Likeness {
public:
    using Index = Tree::Index;
    using Features = std::vector<std::uint64_t>; ///< sorted

    explicit Likeness(Pairs const & pairs) : fPairs(pairs) {}

    void forget() {
        fLeft = {};
        fRight = {};
    }

    /// From 0 to 1: the share of values, links and parts that both have.
    [[nodiscard]] double between(Index left, Index right);
    /// Each stands for a value, for a link, or for a part by its name.
    [[nodiscard]] Features const & ofLeft(Index index) { return featuresOf(fPairs.left(), fLeft, index); }
    [[nodiscard]] Features const & ofRight(Index index) { return featuresOf(fPairs.right(), fRight, index); }

    /// Of an object and all that it contains: equal for equal content, and hardly ever for other content.
    [[nodiscard]] std::uint64_t contentOfLeft(Index index) { return contentOf(fPairs.left(), fLeft, index); }
    [[nodiscard]] std::uint64_t contentOfRight(Index index) { return contentOf(fPairs.right(), fRight, index); }

private:
    struct Known {
        std::unordered_map<Index, Features> features;
        std::unordered_map<Index, std::uint64_t> content;
    };

    [[nodiscard]] Features const & featuresOf(Side const & side, Known & known, Index index);
    [[nodiscard]] std::uint64_t contentOf(Side const & side, Known & known, Index index);
    void appendOwn(Side const & side, Index index, Features & features) const;
    [[nodiscard]] std::uint64_t targetOf(Side const & side, ObjectIntf const * target) const;

    Pairs const & fPairs;
    Known fLeft;
    Known fRight;
};

/// Of class and name; the same for those without a name.
[[nodiscard]] std::uint64_t nameHashOf(Tree const & tree, Tree::Index index);

[[nodiscard]] constexpr std::uint64_t combined(std::uint64_t a, std::uint64_t b) noexcept {
    std::uint64_t const mixed = (a ^ (b + 0x9E3779B97F4A7C15u + (a << 6) + (a >> 2))) * 0xFF51AFD7ED558CCDu;
    return mixed ^ (mixed >> 32);
}

} // namespace ZEL::Compare
