#pragma once

#include <ZEL/compare/Difference.h>
#include <ZEL/compare/Match.h>

#include <cstddef>
#include <functional>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

namespace ZEL::Compare {

/// What is different on the right of a match, or a part of that, in an order that is the same in every run: container
/// by container, what changed of an object before what changed below it.
///
/// A value; copies share the differences. It holds the objects of both sides, which say what an added object is like
/// and where things stand in a list: so both models are to stay as they are until the differences have been applied.
class ZEL_API Differences {
public:
    class const_iterator;

    /// All differences of the matched trees. Linear, but for the lists that changed.
    explicit Differences(Match match);

    [[nodiscard]] Match const & match() const noexcept { return fMatch; }
    [[nodiscard]] std::size_t size() const noexcept { return fChosen.size(); }
    [[nodiscard]] bool empty() const noexcept { return fChosen.empty(); }
    [[nodiscard]] const_iterator begin() const noexcept;
    [[nodiscard]] const_iterator end() const noexcept;
    /// `index` is below the size.
    [[nodiscard]] Difference const & operator[](std::size_t index) const { return (*fAll)[fChosen[index]]; }

    /// Those for which `isTaken` is true.
    [[nodiscard]] Differences filtered(std::function<bool(Difference const &)> const & isTaken) const;
    /// These, and those without which they cannot be applied: the additions of what a link or a move leads to, the
    /// moves out of what is removed and the ends of the links to it, and what makes room in a property for one part.
    [[nodiscard]] Differences withNeeded() const;
    /// What is different on the left: what is applied to the left by these is taken back by the result.
    [[nodiscard]] Differences turnedRound() const;

    /// Of the match, whether chosen or not. For this library's own use.
    [[nodiscard]] std::vector<Difference> const & all() const noexcept { return *fAll; }

private:
    using All = std::vector<Difference>;

    Differences(Match match, std::shared_ptr<All const> all, std::vector<std::size_t> chosen) noexcept
        : fMatch(std::move(match)), fAll(std::move(all)), fChosen(std::move(chosen)) {}

    Match fMatch;
    std::shared_ptr<All const> fAll;
    std::vector<std::size_t> fChosen; ///< ascending places in `fAll`
};

class Differences::const_iterator {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = Difference;
    using difference_type = std::ptrdiff_t;
    using pointer = Difference const *;
    using reference = Difference const &;

    const_iterator() noexcept = default;
    const_iterator(Differences const & differences, std::size_t index) noexcept
        : fDifferences(&differences), fIndex(index) {}

    [[nodiscard]] reference operator*() const { return (*fDifferences)[fIndex]; }
    [[nodiscard]] pointer operator->() const { return &(*fDifferences)[fIndex]; }
    const_iterator & operator++() noexcept {
        ++fIndex;
        return *this;
    }
    const_iterator operator++(int) noexcept {
        const_iterator const before(*this);
        ++fIndex;
        return before;
    }
    friend bool operator==(const_iterator const & a, const_iterator const & b) noexcept { return a.fIndex == b.fIndex; }

private:
    Differences const * fDifferences = nullptr;
    std::size_t fIndex = 0;
};

inline Differences::const_iterator Differences::begin() const noexcept { return {*this, 0}; }
inline Differences::const_iterator Differences::end() const noexcept { return {*this, size()}; }

/// What is different in `right`. Throws as the constructor of `Match` does.
[[nodiscard]] ZEL_API Differences diff(ImmutableClassObject const & left, ImmutableClassObject const & right,
                                       MatchSettings const & settings = {});

/// Changes the tree of `target`, the left root or its like, by the differences and what they need, in one transaction
/// of the target's deviant. After all have been applied to the left root, it equals the right one.
///
/// `target` is the left root in any of its deviants, or the root of a tree like it, such as a copy; a difference at an
/// object that has no counterpart there has no effect. An added object gets the id that it has on the right, if that is
/// free. Lists keep what the target has more than the left.
///
/// Returns false, and nothing has changed, if a validator of the transaction refuses it. Throws what the changes throw,
/// such as that an object would contain itself; nothing has changed then, either.
[[nodiscard]] ZEL_API bool apply(Differences const & differences, ClassObject const & target);

} // namespace ZEL::Compare
