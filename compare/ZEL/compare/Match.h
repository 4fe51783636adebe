#pragma once

#include <ZEL/Export.h>
#include <ZEL/metamodel/ClassObject.h>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace ZEL::Compare {

class Pairs;

/// How objects of two trees are found to correspond.
struct ZEL_API MatchSettings {
    enum class Ids {
        /// They are used unless more objects with equal ids have lost their names to objects with other ids than have
        /// kept them.
        Judge,
        Use,    ///< an object corresponds to that with its id, if that is of the same class
        Ignore, ///< for tools that number objects anew each time they write a file
    };
    using Pair = std::pair<ImmutableClassObject, ImmutableClassObject>;

    Ids ids = Ids::Judge;
    /// Objects of the left and the right tree that correspond, whatever their ids and contents say. Those that are not
    /// in the trees, or of two classes, have no effect, nor has an object's second pair.
    std::vector<Pair> pairs;
    /// Further trees, beside those that are compared, whose objects correspond: links to these are equal. Of two models
    /// that are read from files these are the models that both refer to.
    std::vector<Pair> companions;
};

/// Which objects of two trees correspond: of two models, of an object and its copy, of two deviants of one model.
///
/// The roots do. An object in two deviants corresponds to itself; others to those with their ids, that is the ids of
/// the files from which they were read. What is left is found by structure, container by container: same class and
/// name, else the same content under another name, else the content that is most alike; and then among all that is
/// left, wherever it stands. Two objects are alike by the share of values, links and names of parts that they have in
/// common, which must be half at least within one container, and two thirds elsewhere.
///
/// Of more than a few dozen unnamed objects of a class in one container, and of objects without a name that have moved,
/// each is compared only to some of the others: so the time does not grow with the square of their number. Linear
/// in the size of the trees.
///
/// A value: copies share what was found. It holds the roots, and so their models.
class ZEL_API Match {
public:
    /// Throws if one of the roots is not valid, or they are of two classes: the message names them.
    Match(ImmutableClassObject const & left, ImmutableClassObject const & right, MatchSettings const & settings = {});

    [[nodiscard]] ImmutableClassObject const & left() const noexcept { return fLeft; }
    [[nodiscard]] ImmutableClassObject const & right() const noexcept { return fRight; }

    /// What corresponds to the object, in the deviant of the other root; null handles if there is none, or the object
    /// is not in the tree.
    [[nodiscard]] ImmutableClassObject rightOf(ImmutableClassObject const & object) const;
    [[nodiscard]] ImmutableClassObject leftOf(ImmutableClassObject const & object) const;
    /// How many pairs there are, those of companions among them.
    [[nodiscard]] std::size_t size() const noexcept;

    /// With left and right exchanged.
    [[nodiscard]] Match turnedRound() const;

    /// For this library's own use.
    [[nodiscard]] Pairs const & pairs() const noexcept { return *fPairs; }

private:
    Match(ImmutableClassObject left, ImmutableClassObject right, std::shared_ptr<Pairs const> pairs) noexcept
        : fLeft(std::move(left)), fRight(std::move(right)), fPairs(std::move(pairs)) {}

    ImmutableClassObject fLeft;
    ImmutableClassObject fRight;
    std::shared_ptr<Pairs const> fPairs;
};

} // namespace ZEL::Compare
