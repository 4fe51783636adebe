#pragma once

#include <ZEL/compare/Conflict.h>
#include <ZEL/compare/Differences.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace ZEL::Compare {

class MergePlan;

/// What becomes of two changed variants of a model, or of any object: all that only one side has changed, and once what
/// both have changed alike. The rest are conflicts, in which ours stays until they are resolved.
///
/// The three may be models read from files, or deviants of one model. New objects of both sides with the same class and
/// name in the same place are the same object if their contents are equal, and in conflict otherwise. Where no conflict
/// is left, the sides may be exchanged: the results are equal, but for the ids of objects with an id that both sides
/// gave away.
///
///     Merge merge(base, ours, theirs);
///     merge.resolve([](Conflict const &) { return Resolution::Theirs; });
///     bool const isDone = merge.apply(ours);
///
/// To look at the result ahead of time apply it to `ours` in a deviant of its own, resolve what is left, apply it to
/// another one, and call `assignToRoot` on the deviant that is right: one undo takes it all back.
class ZEL_API Merge {
public:
    using Resolver = std::function<Resolution(Conflict const &)>;

    /// Throws as the constructor of `Match` does. The models are to stay as they are until the result is applied.
    /// Linear, as two comparisons.
    Merge(ImmutableClassObject const & base, ImmutableClassObject const & ours, ImmutableClassObject const & theirs,
          MatchSettings const & settings = {})
        : Merge(base, ours, theirs, settings, settings) {}
    /// With settings for the match of the base with each side.
    Merge(ImmutableClassObject const & base, ImmutableClassObject const & ours, ImmutableClassObject const & theirs,
          MatchSettings const & settingsOfOurs, MatchSettings const & settingsOfTheirs);

    /// What each side has done to the base.
    [[nodiscard]] Differences const & ours() const noexcept;
    [[nodiscard]] Differences const & theirs() const noexcept;
    /// What of theirs comes into ours without a conflict.
    [[nodiscard]] std::vector<Difference> taken() const;

    /// In the order of what theirs has done.
    [[nodiscard]] std::vector<Conflict> const & conflicts() const noexcept;
    /// How the conflict is resolved; nothing as long as it is not.
    [[nodiscard]] std::optional<Resolution> resolutionOf(std::size_t conflict) const;
    [[nodiscard]] bool isResolved() const;
    /// `Both` where it cannot be leaves the conflict unresolved. Throws `std::out_of_range` if there is no such
    /// conflict.
    void resolve(std::size_t conflict, Resolution resolution);
    /// Asks for each conflict that is not resolved yet.
    void resolve(Resolver const & resolver);

    /// Makes the tree of `target`, which is ours or its like in the sense of `apply` for differences, the result of the
    /// merge, in one transaction. Unresolved conflicts leave ours as it is. Returns false, and nothing has changed, if
    /// a validator refuses it. Throws what the changes throw; nothing has changed then.
    [[nodiscard]] bool apply(ClassObject const & target) const;

private:
    std::shared_ptr<MergePlan const> fPlan;
    std::vector<std::optional<Resolution>> fResolutions;
};

/// Puts what `theirs` has done to `base` into `ours`, and returns what could not be. Both in one: see `Merge`. Nothing
/// is changed if a validator refuses it, which the deviant of `ours` tells.
[[nodiscard]] ZEL_API std::vector<Conflict> merge(ImmutableClassObject const & base, ClassObject const & ours,
                                                  ImmutableClassObject const & theirs);

} // namespace ZEL::Compare
