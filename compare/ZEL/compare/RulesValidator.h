#pragma once

#include <ZEL/compare/Check.h>
#include <ZEL/deviants/ListenerBase.h>
#include <ZEL/metamodel/ListenerHolder.h>

namespace ZEL::Compare {

/// Refuses commits after which rules are broken.
///
///     Compare::RulesValidator validator(rules);
///     registerValidatorOnCommit(deviant, validator);
///
/// Each commit checks the objects that it made or changed, and those that contain them, since what is said of an object
/// often depends on its parts; it takes time for these alone. What was wrong elsewhere before does not count. It must
/// be unregistered before it dies, or outlive the deviant.
class ZEL_API RulesValidator : public ListenerBase {
public:
    /// A diagnostic of this severity, or of a graver one, makes the validator refuse.
    explicit RulesValidator(Rules rules = Rules::all(), Severity refused = Severity::Error);

    bool validateOnCommit(ReportOfChanges<ImmutableClassObject, TRUE_TYPE> const & report);

    /// What the last commit was told, be it refused or not. After a refusal, objects that it had made are no longer
    /// valid; their labels still name them.
    [[nodiscard]] Diagnostics const & getDiagnostics() const noexcept { return fDiagnostics; }

private:
    Checker fChecker;
    Severity fRefused;
    Diagnostics fDiagnostics;
};

} // namespace ZEL::Compare
