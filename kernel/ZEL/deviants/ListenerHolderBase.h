#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/CooperativeVisitor.h>
#include <ZEL/deviants/Deviant.h>

namespace ZEL {

class ListenerBase;

namespace internal {

/// Stands between a deviant and one of its listeners, in one role.
///
/// Each phase of a commit begins with `reset`; then the holder is shown the changed objects, through the methods that
/// it has entered in its dispatch table; then it is called, and reset again. A method gets the address of the holder
/// as a `ListenerHolderBase *`, the object adjusted to the class that the method was entered for, and the deviant. The
/// deviant owns its holders.
class ZEL_API ListenerHolderBase {
public:
    virtual ~ListenerHolderBase() = default;
    ListenerHolderBase(ListenerHolderBase const &) = delete;
    ListenerHolderBase & operator=(ListenerHolderBase const &) = delete;

    [[nodiscard]] virtual ListenerBase * getListener() = 0;
    /// Starts a fresh report for `deviant`, with `view` as the state before, or ends one.
    virtual void reset(Deviant deviant, Deviant view) = 0;
    virtual void callModifier() = 0;
    virtual bool callValidator() = 0;
    virtual void callObserver() = 0;

    [[nodiscard]] CooperativeVisitor::DispatchTable const & getDispatchTable() const noexcept { return fTable; }

protected:
    ListenerHolderBase() = default;

    CooperativeVisitor::DispatchTable fTable;
};

} // namespace internal
} // namespace ZEL
