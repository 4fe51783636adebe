#pragma once

#include <ZEL/Export.h>
#include <ZEL/deviants/Replay.h>

namespace ZEL {

class ClassObject;
struct FALSE_TYPE;
template <class T, class C> class ReportOfChanges;

/// Carries out every replay of state in the deviants of one manager: cancel, undo, redo, and assignment to the root.
///
/// Each report says how its target must change to become its source. A client that has work to do around a replay puts
/// a helper of its own into the manager; it calls `doTheJob` once, and neither begins a transaction in the target nor
/// runs its history.
class ZEL_API DeviantManagerHelper : public internal::Replayer {
public:
    virtual void cancelTransaction(ReportOfChanges<ClassObject, FALSE_TYPE> const & report);
    virtual void undo(ReportOfChanges<ClassObject, FALSE_TYPE> const & report);
    virtual void redo(ReportOfChanges<ClassObject, FALSE_TYPE> const & report);
    virtual void assignToRoot(ReportOfChanges<ClassObject, FALSE_TYPE> const & report);
    ~DeviantManagerHelper() override;

    // --- for the kernel's own use ----------------------------------------------------------------------------------
    void replay(internal::ReplayKind kind, internal::ChangedBodies const & bodies, Deviant target,
                Deviant source) final;
    [[nodiscard]] bool isPlain() const noexcept final;

protected:
    /// Makes the target equal to the source for the objects of the report: creates the states of new objects, ends the
    /// deleted ones, then fills the new and the modified. An invalid handle in it throws "Cannot access NULL ref. Use
    /// isValid() before calling methods".
    void doTheJob(ReportOfChanges<ClassObject, FALSE_TYPE> const & report);
};

} // namespace ZEL
