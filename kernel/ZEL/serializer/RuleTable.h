#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/Callback.h>
#include <ZEL/serializer/Context.h>
#include <ZEL/serializer/ContextSequence.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace ZEL::Serializer {

/// What a rule does: it returns what takes the place of a Context.
using RuleFunction = Callback<ContextSequence(Context const &)>;

/// The rules of one pass of a `Transformer`, in order of addition.
///
/// Which rule fits a Context depends on its four names alone, and a file has few combinations of them: the table
/// remembers its answers, so that nearly every Context costs one look-up however many rules there are.
class ZEL_API RuleTable {
public:
    void add(Context const & pattern, RuleFunction function);
    /// Removes every rule whose pattern equals the argument.
    void remove(Context const & pattern);

    /// The function of the rule that fits best, of equals the one added last; null if none fits. Valid until the table
    /// changes.
    [[nodiscard]] RuleFunction const * find(Context const & context) const;

    /// Whether a Context with this role may be one that a rule fits.
    [[nodiscard]] bool mayFit(QualifiedName role) const noexcept;
    /// Of all tables of the process together: who remembers what a table has answered asks again once this differs.
    [[nodiscard]] static std::uint64_t changeCount() noexcept;

    [[nodiscard]] bool empty() const noexcept;

private:
    /// An answer, for the Context with these names.
    struct Answer {
        QualifiedName parentType;
        QualifiedName parentRole;
        QualifiedName type;
        QualifiedName role;
        std::int32_t rule = Unknown;
    };
    /// Counts what gives a table other rules: additions, removals and assignments.
    struct Changes {
        Changes() noexcept = default;
        Changes(Changes const &) noexcept { note(); }
        Changes & operator=(Changes const &) noexcept {
            note();
            return *this;
        }
        void note() const noexcept;
    };
    static constexpr std::int32_t None = -1;
    static constexpr std::int32_t Unknown = -2;

    [[nodiscard]] std::int32_t search(Context const & context) const noexcept;

    Changes fChanges;
    std::vector<std::pair<Context, RuleFunction>> fRules;
    mutable std::vector<Answer> fAnswers; ///< indexed by a hash of the names; empty until the first question
};

} // namespace ZEL::Serializer
