#pragma once

#include <ZEL/Export.h>
#include <ZEL/deviants/ChangeReport.h>
#include <ZEL/deviants/Deviant.h>

namespace ZEL::internal {

enum class ReplayKind { CancelTransaction, Undo, Redo, AssignToRoot };

/// Carries out the replays of states in the deviants of one manager, when a client has work to do around them. Without
/// one in the manager, the deviants do it themselves.
class ZEL_API Replayer {
public:
    Replayer() = default;
    Replayer(Replayer const &) = delete;
    Replayer & operator=(Replayer const &) = delete;
    virtual ~Replayer();

    /// Makes `target` equal to `source` for the objects of `bodies`.
    virtual void replay(ReplayKind kind, ChangedBodies const & bodies, Deviant target, Deviant source) = 0;
    /// Whether it adds nothing of its own, so that the deviants may do without it.
    [[nodiscard]] virtual bool isPlain() const noexcept = 0;
};

/// Makes `target` equal to `source` for the objects of `bodies`: gives the new and the modified ones copies of their
/// states in `source`, and ends the deleted ones. All that can fail comes first.
ZEL_API void carryOut(ChangedBodies const & bodies, Deviant target, Deviant source);

/// The same by the replayer of the target's manager, if it has one.
void replay(ReplayKind kind, ChangedBodies const & bodies, Deviant target, Deviant source);

} // namespace ZEL::internal
