#include <ZEL/compare/DifferenceFinder.h>
#include <ZEL/compare/Differences.h>
#include <ZEL/compare/Needs.h>
#include <ZEL/compare/Pairs.h>

#include <algorithm>
#include <numeric>

namespace ZEL::Compare {
namespace {

Difference turned(Difference const & difference) {
    using Kind = Difference::Kind;
    Difference result = difference;
    std::swap(result.left, result.right);
    std::swap(result.before, result.after);
    switch (difference.kind) {
    case Kind::Added:
        result.kind = Kind::Removed;
        break;
    case Kind::Removed:
        result.kind = Kind::Added;
        break;
    case Kind::LinkAdded:
        result.kind = Kind::LinkRemoved;
        break;
    case Kind::LinkRemoved:
        result.kind = Kind::LinkAdded;
        break;
    case Kind::Moved:
        std::swap(result.property, result.propertyBefore);
        break;
    default:
        break;
    }
    return result;
}

} // namespace

Differences::Differences(Match match)
    : fMatch(std::move(match)),
      fAll(std::make_shared<All const>(differencesOf(fMatch.pairs()))),
      fChosen(fAll->size()) {
    std::iota(fChosen.begin(), fChosen.end(), std::size_t{0});
}

Differences Differences::filtered(std::function<bool(Difference const &)> const & isTaken) const {
    std::vector<std::size_t> chosen;
    std::copy_if(fChosen.begin(), fChosen.end(), std::back_inserter(chosen),
                 [&](std::size_t index) { return isTaken((*fAll)[index]); });
    return Differences(fMatch, fAll, std::move(chosen));
}

Differences Differences::withNeeded() const {
    return fChosen.size() == fAll->size() ? *this
                                          : Differences(fMatch, fAll, Needs(fMatch.pairs(), *fAll).with(fChosen));
}

Differences Differences::turnedRound() const {
    All all;
    all.reserve(fAll->size());
    std::transform(fAll->begin(), fAll->end(), std::back_inserter(all), turned);
    return Differences(fMatch.turnedRound(), std::make_shared<All const>(std::move(all)), fChosen);
}

Differences diff(ImmutableClassObject const & left, ImmutableClassObject const & right,
                 MatchSettings const & settings) {
    return Differences(Match(left, right, settings));
}

} // namespace ZEL::Compare
