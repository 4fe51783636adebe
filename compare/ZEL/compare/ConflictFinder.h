#pragma once

#include <ZEL/compare/MergePlan.h>
#include <ZEL/compare/Needs.h>
#include <ZEL/compare/Pairs.h>

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ZEL::Compare {

/// Finds what of theirs has been done by ours already, and what cannot be done beside it.
class ConflictFinder {
public:
    explicit ConflictFinder(MergePlan & plan);

    void run();

private:
    using Index = Tree::Index;
    using Kind = Difference::Kind;
    static constexpr std::size_t kNone = ~std::size_t{0};

    /// One of the two sides.
    struct View {
        explicit View(Differences const & all);

        /// The base's object for one of this side; null for one that it has not.
        [[nodiscard]] ObjectIntf * baseOf(ImmutableObject const & object) const {
            return pairs.leftOf(object.getImplementationWithoutAssert());
        }
        /// The place in the base of what contains a new or moved object. Goes up as long as that is new.
        [[nodiscard]] Index baseAround(ImmutableClassObject const & object) const;
        /// What contained an object that this side has removed, or that itself, in the base.
        [[nodiscard]] std::vector<Index> concerned(Difference const & difference) const;

        Differences const & differences;
        Pairs const & pairs;
        Tree const & base;
        std::vector<std::size_t> removals; ///< by place in the base: the difference that removes it, or `kNone`
        std::unordered_map<Index, std::size_t> moves;
    };
    /// By object of the base and property.
    using OfProperty = std::map<std::pair<ObjectIntf const *, ObjectIntf const *>, std::vector<std::size_t>>;

    void enterOurs();
    void findSameAdditions();
    void judge(std::size_t theirs);
    void judgeValues(std::size_t theirs);
    void judgeLink(std::size_t theirs);
    void judgeOrder(std::size_t theirs);
    void judgeMove(std::size_t theirs);
    void judgeAddition(std::size_t theirs);
    /// Whether there is room in a single-valued property for what theirs puts there.
    void judgeRoom(std::size_t theirs);
    void judgeRemovals();
    void judgeRings();
    void judgeNeeds();

    [[nodiscard]] Difference const & ours(std::size_t index) const { return fOurs.differences[index]; }
    [[nodiscard]] Difference const & theirs(std::size_t index) const { return fTheirs.differences[index]; }
    [[nodiscard]] static std::pair<ObjectIntf const *, ObjectIntf const *> keyOf(ObjectIntf const * object,
                                                                                 ImmutableProperty const & property) {
        return {object, ImmutableObject(property).getImplementationWithoutAssert()};
    }
    [[nodiscard]] std::vector<std::size_t> const & oursAt(OfProperty const & index, ObjectIntf const * object,
                                                          ImmutableProperty const & property) const;
    /// Whether a link or a container of ours and one of theirs are the same object.
    [[nodiscard]] bool areSame(ImmutableObject const & ofOurs, ImmutableObject const & ofTheirs) const;
    void drop(std::size_t theirs) { fFate[theirs] = kDropped; }
    void conflict(Conflict::Kind kind, std::vector<std::size_t> const & ours, std::size_t theirs,
                  bool allowsBoth = false);
    /// What contains an object of the base after both sides' moves.
    [[nodiscard]] Index containerAfterBoth(Index base) const;

    static constexpr std::size_t kTaken = kNone;
    static constexpr std::size_t kDropped = kNone - 1;

    MergePlan & fPlan;
    View fOurs;
    View fTheirs;
    OfProperty fChanges;            ///< of ours: values, links and orders
    OfProperty fArrivals;           ///< of ours: what comes into a property of a container
    OfProperty fLinksTo;            ///< of ours: by target, in the base, and property
    std::vector<std::size_t> fFate; ///< of each of theirs: `kTaken`, `kDropped`, or its conflict
};

} // namespace ZEL::Compare
