#pragma once

#include <ZEL/compare/Difference.h>
#include <ZEL/compare/Pairs.h>

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace ZEL::Compare {

/// Which differences others cannot do without, see `Differences::withNeeded`.
class Needs {
public:
    /// `all` are all differences of the pairs. Both must outlive this.
    Needs(Pairs const & pairs, std::vector<Difference> const & all);

    /// The chosen ones and all that they need, as ascending places in `all`.
    [[nodiscard]] std::vector<std::size_t> with(std::vector<std::size_t> const & chosen);

private:
    using Index = Tree::Index;
    static constexpr std::size_t kNone = ~std::size_t{0};

    void takeNeedsOf(Difference const & difference);
    void take(std::size_t difference);
    void takeAdditionOf(ImmutableObject const & right);
    /// What makes room for a part that comes into a single-valued property.
    void takeRoomFor(Tree::Node const & part);
    void takeAllInside(Index removed);
    void takeTargetsOf(Index added);

    Pairs const & fPairs;
    std::vector<Difference> const & fAll;
    std::vector<std::size_t> fAdditions; ///< by object of the right: the difference that adds it, or `kNone`
    std::vector<std::size_t> fMoves;     ///< by object of the left: its move or its removal
    std::unordered_multimap<Index, std::size_t> fLinksTo; ///< changes of links to objects that are removed
    std::vector<char> fIsTaken;
    std::vector<std::size_t> fTaken;
    std::vector<std::size_t> fOpen;
};

} // namespace ZEL::Compare
