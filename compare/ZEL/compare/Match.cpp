#include <ZEL/base/Exception.h>
#include <ZEL/compare/Label.h>
#include <ZEL/compare/Match.h>
#include <ZEL/compare/Pairs.h>

namespace ZEL::Compare {
namespace {

Pairs checkedPairsOf(ImmutableClassObject const & left, ImmutableClassObject const & right,
                     MatchSettings const & settings) {
    if (!left.isValid() || !right.isValid()) {
        raiseInternalError("cannot compare " + labelOf(left) + " with " + labelOf(right));
    }
    if (left.getMetaClass() != right.getMetaClass()) {
        raiseInternalError("cannot compare " + labelOf(left) + " with " + labelOf(right) + ": they are of two classes");
    }
    return pairsOf(left, right, settings);
}

ImmutableClassObject counterpartOf(ImmutableClassObject const & object, Side const & from, Side const & to) {
    Tree::Index const index = from.tree.indexOf(ImmutableObject(object).getImplementationWithoutAssert());
    Tree::Index const counterpart = index == Tree::kNone ? Tree::kNone : from.counterparts[index];
    return counterpart == Tree::kNone ? ImmutableClassObject() : to.tree.handleOf(counterpart);
}

} // namespace

Match::Match(ImmutableClassObject const & left, ImmutableClassObject const & right, MatchSettings const & settings)
    : Match(left, right, std::make_shared<Pairs const>(checkedPairsOf(left, right, settings))) {}

ImmutableClassObject Match::rightOf(ImmutableClassObject const & object) const {
    return counterpartOf(object, fPairs->left(), fPairs->right());
}

ImmutableClassObject Match::leftOf(ImmutableClassObject const & object) const {
    return counterpartOf(object, fPairs->right(), fPairs->left());
}

std::size_t Match::size() const noexcept { return fPairs->size(); }

Match Match::turnedRound() const { return Match(fRight, fLeft, std::make_shared<Pairs const>(fPairs->turnedRound())); }

} // namespace ZEL::Compare
