#pragma once

#include <ZEL/compare/Diagnostic.h>
#include <ZEL/compare/Rules.h>

#include <memory>
#include <vector>

namespace ZEL::Compare {

/// Checks objects of any metamodel, in the deviants of their handles. It may be used any number of times, and keeps
/// what it has found out about classes from one time to the next. What it is given stays as it is.
class ZEL_API Checker {
public:
    explicit Checker(Rules rules = Rules::all());
    ~Checker();
    Checker(Checker && other) noexcept;
    Checker & operator=(Checker && other) noexcept;

    /// All that is wrong with an object and what it contains: of a model, with what its file holds. The order is that
    /// of `objectsIn`, and for each object that of the rules. Linear but for rules of an application, without
    /// recursion. Throws as all operations do on a null handle, and what a rule throws.
    [[nodiscard]] Diagnostics check(ImmutableClassObject const & root);
    /// The same of each of these objects alone, in their order; after each that contains objects, those whose names
    /// clash there. Invalid handles are passed over.
    [[nodiscard]] Diagnostics checkEach(std::vector<ImmutableClassObject> const & objects);

    [[nodiscard]] Rules const & getRules() const noexcept;

private:
    class Plans;
    class Run;
    std::unique_ptr<Plans> fPlans;
};

/// Checks once; see `Checker`.
[[nodiscard]] ZEL_API Diagnostics check(ImmutableClassObject const & root, Rules const & rules = Rules::all());

} // namespace ZEL::Compare
