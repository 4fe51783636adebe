#include <ZEL/compare/RulesValidator.h>
#include <ZEL/sequences/Sequence.h>

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace ZEL::Compare {

RulesValidator::RulesValidator(Rules rules, Severity refused) : fChecker(std::move(rules)), fRefused(refused) {}

bool RulesValidator::validateOnCommit(ReportOfChanges<ImmutableClassObject, TRUE_TYPE> const & report) {
    std::vector<ImmutableClassObject> objects;
    std::unordered_set<NSInterface::ObjectIntf const *> seen;
    auto const enter = [&](ImmutableClassObject const & object) {
        if (object.isValid() && seen.insert(object.getImplementation()).second) {
            objects.push_back(object);
        }
    };
    report.created.forEach(enter);
    report.modified.forEach(enter);
    std::size_t const changed = objects.size();
    for (std::size_t i = 0; i < changed; ++i) {
        enter(objects[i].getContainerZEL());
    }
    fDiagnostics.clear(); // what it holds of the last commit is not wanted if a rule throws
    fDiagnostics = fChecker.checkEach(objects);
    return std::none_of(fDiagnostics.begin(), fDiagnostics.end(),
                        [this](Diagnostic const & diagnostic) { return diagnostic.severity <= fRefused; });
}

} // namespace ZEL::Compare
