// How objects of two trees are found to correspond, see `Match`.

#include <ZEL/base/OpenTable.h>
#include <ZEL/compare/Likeness.h>
#include <ZEL/compare/Match.h>
#include <ZEL/compare/Pairs.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/serializer/ObjectId.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace ZEL::Compare {
namespace {

using Index = Tree::Index;
using Indexes = std::vector<Index>;

/// An object's id in files, in two parts, so that those of this system need no text.
struct FileId {
    std::string_view head;
    std::size_t serial = 0;
    std::uint64_t hash = 0; ///< ids that follow each other lie beside each other in a table

    friend bool operator==(FileId const & a, FileId const & b) noexcept {
        return a.serial == b.serial && a.head == b.head;
    }
};

/// The ids of the objects of one side.
class FileIds {
public:
    [[nodiscard]] FileId of(Tree::Node const & node) {
        internal::ModelCore const * const model = node.body->internal_model();
        if (model != fModel) {
            enter(model, node.deviant());
        }
        if (std::string const * const id = fHasOwn ? model->fileIdOf(node.body->internal_id()) : nullptr) {
            ObjectId const parsed(*id);
            return parsed.isRegular() ? made(parsed.head(), parsed.serial()) : made(*id, 0);
        }
        auto const serial = static_cast<std::size_t>(node.body->internal_id());
        return {fHead, serial, fHeadHash + serial};
    }

private:
    static FileId made(std::string_view head, std::size_t serial) {
        return {head, serial, std::hash<std::string_view>()(head) + serial};
    }

    void enter(internal::ModelCore const * model, Deviant deviant) {
        std::string & head = fHeads[model];
        if (head.empty() && model != nullptr) {
            head = ObjectId::of(ImmutableClassObject(model, deviant)) + '_';
        }
        fModel = model;
        fHead = head;
        fHeadHash = std::hash<std::string_view>()(head);
        fHasOwn = model != nullptr && !model->fileIds().empty();
    }

    std::unordered_map<internal::ModelCore const *, std::string> fHeads;
    internal::ModelCore const * fModel = nullptr;
    std::string_view fHead;
    std::uint64_t fHeadHash = 0;
    bool fHasOwn = false;
};

class PairFinder {
public:
    PairFinder(Pairs & pairs, MatchSettings const & settings)
        : fPairs(pairs), fSettings(settings), fLeft(pairs.left()), fRight(pairs.right()), fLikeness(pairs) {}

    void run(ImmutableClassObject const & left, ImmutableClassObject const & right);

private:
    /// How two objects must be alike to correspond, and how many of them are compared.
    static constexpr double kLeastInContainer = 1.0 / 2;
    static constexpr double kLeastElsewhere = 2.0 / 3;
    static constexpr std::size_t kAllAgainstAll = 48;
    static constexpr std::size_t kCommonFeature = 16; ///< what more objects share says nothing of any of them
    static constexpr std::size_t kCandidates = 64;
    /// Whose names judge the ids: reading those of all would take as long as all else.
    static constexpr std::size_t kAskedFirst = 256;
    static constexpr std::size_t kAskedEach = 16;

    struct Likely {
        double likeness;
        Index left;
        Index right;
    };

    /// False if one of them has a counterpart, or they are of two classes.
    bool add(Index left, Index right) {
        bool const canBe = left != Tree::kNone && right != Tree::kNone && isFree(fLeft, left) &&
                           isFree(fRight, right) && fLeft.tree[left].metaClass == fRight.tree[right].metaClass;
        if (canBe) {
            fPairs.add(left, right);
        }
        return canBe;
    }
    static bool isFree(Side const & side, Index index) { return side.counterparts[index] == Tree::kNone; }
    [[nodiscard]] static Indexes freeOf(Side const & side);
    [[nodiscard]] static Indexes freeChildrenOf(Side const & side, Index index);
    void dropPaired(Indexes & left, Indexes & right) const {
        std::erase_if(left, [this](Index index) { return !isFree(fLeft, index); });
        std::erase_if(right, [this](Index index) { return !isFree(fRight, index); });
    }

    void pairGiven();
    void pairBodies();
    void pairIds();
    [[nodiscard]] std::size_t countOfNamesOnRight(Indexes const & ofLeft) const;
    /// What is free in the pairs from `first` on, up to `end`, of which each comes before what it contains.
    void pairContents(Index first, Index end, bool isExact);
    void pairChildren(Indexes & left, Indexes & right, bool isExact);
    void pairMoved();
    /// Free objects with equal keys, in their order. `isUnique`: those alone whose keys no other has.
    template <class LeftKey, class RightKey>
    void pairEqual(Indexes & left, Indexes & right, bool isUnique, LeftKey leftKey, RightKey rightKey);
    void pairAlike(Indexes & left, Indexes & right, double least);
    void appendLikely(Indexes const & left, Indexes const & right, double least, std::vector<Likely> & likely);
    void appendLikelyByFeatures(Indexes const & left, Indexes const & right, double least,
                                std::vector<Likely> & likely);
    void appendIfLikely(Index left, Index right, double least, std::vector<Likely> & likely) {
        double const likeness = fLikeness.between(left, right);
        if (likeness >= least) {
            likely.push_back({likeness, left, right});
        }
    }
    /// Whether the object says enough to be known again elsewhere.
    [[nodiscard]] bool saysMuch(Index left) {
        bool const isNamed = !fLeft.tree.nameOf(left).empty();
        return fLeft.tree[left].end - left + fLikeness.ofLeft(left).size() + (isNamed ? 1 : 0) >= 3;
    }
    [[nodiscard]] static std::uint64_t placeOf(Tree const & tree, Index index) {
        return combined(reinterpret_cast<std::uintptr_t>(tree[index].property),
                        reinterpret_cast<std::uintptr_t>(tree[index].metaClass));
    }

    Pairs & fPairs;
    MatchSettings const & fSettings;
    Side & fLeft;
    Side & fRight;
    Likeness fLikeness;
};

Indexes PairFinder::freeOf(Side const & side) {
    Indexes found;
    for (Index index = 0; index < side.end; ++index) {
        if (isFree(side, index)) {
            found.push_back(index);
        }
    }
    return found;
}

Indexes PairFinder::freeChildrenOf(Side const & side, Index index) {
    Indexes found;
    side.tree.forEachChild(index, [&](Index child) {
        if (isFree(side, child)) {
            found.push_back(child);
        }
    });
    return found;
}

void PairFinder::pairGiven() {
    for (auto const & [left, right] : fSettings.pairs) {
        add(fLeft.tree.indexOf(ImmutableObject(left).getImplementationWithoutAssert()),
            fRight.tree.indexOf(ImmutableObject(right).getImplementationWithoutAssert()));
    }
}

void PairFinder::pairBodies() {
    if (fLeft.tree[0].body->internal_model() != fRight.tree[0].body->internal_model()) {
        return; // no object is in both
    }
    for (Index left = 0; left < fLeft.tree.size(); ++left) {
        add(left, fRight.tree.indexOf(fLeft.tree[left].object()));
    }
}

void PairFinder::pairIds() {
    FileIds ids;
    std::vector<FileId> ofRight(fRight.tree.size());
    internal::OpenTable<std::uint32_t> table; // place and 1
    auto const homeOf = [&](std::uint32_t slot) { return ofRight[slot - 1].hash; };
    table.makeRoom(ofRight.size() + 1, homeOf);
    for (Index right = 0; right < fRight.tree.size(); ++right) {
        ofRight[right] = ids.of(fRight.tree[right]);
        std::uint32_t & slot =
            table.find(ofRight[right].hash, [&](std::uint32_t other) { return ofRight[other - 1] == ofRight[right]; });
        if (slot == 0) {
            slot = right + 1;
        }
    }
    std::vector<std::pair<Index, Index>> equal;
    std::size_t alike = 0;
    Indexes renamed;
    FileIds idsOfLeft;
    for (Index left = 0; left < fLeft.tree.size(); ++left) {
        FileId const id = idsOfLeft.of(fLeft.tree[left]);
        std::uint32_t const slot = table.find(id.hash, [&](std::uint32_t other) { return ofRight[other - 1] == id; });
        if (slot == 0) {
            continue;
        }
        equal.emplace_back(left, slot - 1);
        bool const isAsked = equal.size() <= kAskedFirst || equal.size() % kAskedEach == 0;
        if (std::string_view const name = isAsked ? fLeft.tree.nameOf(left) : std::string_view(); !name.empty()) {
            bool const isOfClass = fLeft.tree[left].metaClass == fRight.tree[slot - 1].metaClass;
            if (isOfClass && name == fRight.tree.nameOf(slot - 1)) {
                ++alike;
            } else {
                renamed.push_back(left);
            }
        }
    }
    if (fSettings.ids == MatchSettings::Ids::Use || alike >= renamed.size() || alike >= countOfNamesOnRight(renamed)) {
        for (auto const & [left, right] : equal) {
            add(left, right);
        }
    }
}

/// How many of the objects have a class and a name that an object of the right has, too.
std::size_t PairFinder::countOfNamesOnRight(Indexes const & ofLeft) const {
    std::unordered_set<std::uint64_t> names;
    for (Index right = 0; right < fRight.tree.size(); ++right) {
        names.insert(nameHashOf(fRight.tree, right));
    }
    return static_cast<std::size_t>(std::count_if(
        ofLeft.begin(), ofLeft.end(), [&](Index left) { return names.count(nameHashOf(fLeft.tree, left)) != 0; }));
}

template <class LeftKey, class RightKey>
void PairFinder::pairEqual(Indexes & left, Indexes & right, bool isUnique, LeftKey leftKey, RightKey rightKey) {
    using Keyed = std::vector<std::pair<std::uint64_t, Index>>;
    Keyed a;
    Keyed b;
    for (Index const index : left) {
        a.emplace_back(leftKey(index), index);
    }
    for (Index const index : right) {
        b.emplace_back(rightKey(index), index);
    }
    std::sort(a.begin(), a.end());
    std::sort(b.begin(), b.end());
    auto const endOfKey = [](Keyed const & keyed, std::size_t at) {
        std::size_t end = at;
        while (end < keyed.size() && keyed[end].first == keyed[at].first) {
            ++end;
        }
        return end;
    };
    std::vector<std::pair<Index, Index>> found;
    for (std::size_t i = 0, j = 0; i < a.size() && j < b.size();) {
        if (a[i].first != b[j].first) {
            ++(a[i].first < b[j].first ? i : j);
            continue;
        }
        std::size_t const endOfA = endOfKey(a, i);
        std::size_t const endOfB = endOfKey(b, j);
        if (!isUnique || (endOfA == i + 1 && endOfB == j + 1)) {
            for (std::size_t n = 0; n < std::min(endOfA - i, endOfB - j); ++n) {
                found.emplace_back(a[i + n].second, b[j + n].second);
            }
        }
        i = endOfA;
        j = endOfB;
    }
    std::sort(found.begin(), found.end()); // what contains comes before what it contains
    for (auto const & [l, r] : found) {
        if (add(l, r) && isUnique) {
            pairContents(l, fLeft.tree[l].end, true);
        }
    }
    dropPaired(left, right);
}

void PairFinder::appendLikely(Indexes const & left, Indexes const & right, double least, std::vector<Likely> & likely) {
    if (left.size() > kAllAgainstAll || right.size() > kAllAgainstAll) {
        appendLikelyByFeatures(left, right, least, likely);
        return;
    }
    for (Index const l : left) {
        for (Index const r : right) {
            if (fLeft.tree[l].metaClass == fRight.tree[r].metaClass) {
                appendIfLikely(l, r, least, likely);
            }
        }
    }
}

/// Compares each object to those that share with it what few others have.
void PairFinder::appendLikelyByFeatures(Indexes const & left, Indexes const & right, double least,
                                        std::vector<Likely> & likely) {
    std::unordered_map<std::uint64_t, Indexes> withFeature;
    for (Index const r : right) {
        for (std::uint64_t const feature : fLikeness.ofRight(r)) {
            Indexes & found = withFeature[feature];
            if (found.size() <= kCommonFeature) {
                found.push_back(r);
            }
        }
    }
    Indexes candidates;
    for (Index const l : left) {
        candidates.clear();
        for (std::uint64_t const feature : fLikeness.ofLeft(l)) {
            auto const found = withFeature.find(feature);
            if (found != withFeature.end() && found->second.size() <= kCommonFeature &&
                candidates.size() < kCandidates) {
                candidates.insert(candidates.end(), found->second.begin(), found->second.end());
            }
        }
        std::sort(candidates.begin(), candidates.end());
        candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
        for (Index const r : candidates) {
            if (fLeft.tree[l].metaClass == fRight.tree[r].metaClass) {
                appendIfLikely(l, r, least, likely);
            }
        }
    }
}

void PairFinder::pairAlike(Indexes & left, Indexes & right, double least) {
    if (left.empty() || right.empty()) {
        return;
    }
    std::vector<Likely> likely;
    appendLikely(left, right, least, likely);
    std::sort(likely.begin(), likely.end(), [](Likely const & a, Likely const & b) {
        return std::tuple(-a.likeness, a.left, a.right) < std::tuple(-b.likeness, b.left, b.right);
    });
    for (Likely const & each : likely) {
        add(each.left, each.right);
    }
    dropPaired(left, right);
}

void PairFinder::pairChildren(Indexes & left, Indexes & right, bool isExact) {
    Tree const & a = fLeft.tree;
    Tree const & b = fRight.tree;
    pairEqual(
        left, right, false, [&](Index i) { return combined(placeOf(a, i), fLikeness.contentOfLeft(i)); },
        [&](Index i) { return combined(placeOf(b, i), fLikeness.contentOfRight(i)); });
    auto const isNamed = [](Tree const & tree) { return [&tree](Index i) { return !tree.nameOf(i).empty(); }; };
    auto const unnamedOfLeft = std::stable_partition(left.begin(), left.end(), isNamed(a));
    auto const unnamedOfRight = std::stable_partition(right.begin(), right.end(), isNamed(b));
    Indexes namedLeft(left.begin(), unnamedOfLeft);
    Indexes namedRight(right.begin(), unnamedOfRight);
    pairEqual(
        namedLeft, namedRight, false, [&](Index i) { return combined(placeOf(a, i), nameHashOf(a, i)); },
        [&](Index i) { return combined(placeOf(b, i), nameHashOf(b, i)); });
    pairEqual(
        namedLeft, namedRight, false, [&](Index i) { return nameHashOf(a, i); },
        [&](Index i) { return nameHashOf(b, i); });
    dropPaired(left, right);
    if (isExact) {
        return;
    }
    pairAlike(left, right, kLeastInContainer);
    // Those without a name, and the only ones there can be, are known by their place.
    auto const isKnownByPlace = [](Tree const & tree) {
        return [&tree](Index i) { return tree.nameOf(i).empty() || !tree[i].property->isMany; };
    };
    left.erase(std::stable_partition(left.begin(), left.end(), isKnownByPlace(a)), left.end());
    right.erase(std::stable_partition(right.begin(), right.end(), isKnownByPlace(b)), right.end());
    pairEqual(
        left, right, false, [&](Index i) { return placeOf(a, i); }, [&](Index i) { return placeOf(b, i); });
}

void PairFinder::pairContents(Index first, Index end, bool isExact) {
    for (Index left = first; left < end; ++left) {
        Index const right = fLeft.counterparts[left];
        if (right == Tree::kNone) {
            continue;
        }
        Indexes children = freeChildrenOf(fLeft, left);
        if (children.empty()) {
            continue;
        }
        Indexes childrenOfRight = freeChildrenOf(fRight, right);
        if (!childrenOfRight.empty()) {
            pairChildren(children, childrenOfRight, isExact);
        }
    }
}

void PairFinder::pairMoved() {
    Indexes left = freeOf(fLeft);
    Indexes right = freeOf(fRight);
    std::erase_if(left, [this](Index index) { return !saysMuch(index); });
    pairEqual(
        left, right, true, [this](Index i) { return fLikeness.contentOfLeft(i); },
        [this](Index i) { return fLikeness.contentOfRight(i); });
}

void PairFinder::run(ImmutableClassObject const & left, ImmutableClassObject const & right) {
    fLeft.tree.add(left);
    fRight.tree.add(right);
    fLeft.end = fLeft.tree.size();
    fRight.end = fRight.tree.size();
    std::vector<std::pair<Index, Index>> roots{{0, 0}};
    for (auto const & [ofLeft, ofRight] : fSettings.companions) {
        if (ofLeft.isValid() && ofRight.isValid()) {
            Index const root = fLeft.tree.add(ofLeft);
            roots.emplace_back(root, fRight.tree.add(ofRight));
        }
    }
    fLeft.counterparts.assign(fLeft.tree.size(), Tree::kNone);
    fRight.counterparts.assign(fRight.tree.size(), Tree::kNone);

    for (auto const & [ofLeft, ofRight] : roots) {
        add(ofLeft, ofRight);
    }
    pairGiven();
    pairBodies();
    if (fSettings.ids != MatchSettings::Ids::Ignore) {
        pairIds();
    }
    auto const isDone = [this] { return fPairs.size() == fLeft.tree.size() || fPairs.size() == fRight.tree.size(); };
    auto const pairAll = [this](bool isExact) { pairContents(0, fLeft.tree.size(), isExact); };
    if (!isDone()) {
        pairAll(true);
    }
    if (!isDone()) {
        fLikeness.forget();
        pairMoved();
        fLikeness.forget();
        pairAll(false);
    }
    if (!isDone()) {
        fLikeness.forget();
        Indexes ofLeft = freeOf(fLeft);
        Indexes ofRight = freeOf(fRight);
        std::erase_if(ofLeft, [this](Index index) { return !saysMuch(index); });
        std::size_t const before = fPairs.size();
        pairAlike(ofLeft, ofRight, kLeastElsewhere);
        if (fPairs.size() != before) {
            pairAll(false);
        }
    }
}

} // namespace

Pairs pairsOf(ImmutableClassObject const & left, ImmutableClassObject const & right, MatchSettings const & settings) {
    Pairs pairs;
    PairFinder(pairs, settings).run(left, right);
    return pairs;
}

} // namespace ZEL::Compare
