#pragma once

#include <ZEL/Export.h>

namespace ZEL {

class ClassObject;
class ImmutableClassObject;
struct FALSE_TYPE;
struct TRUE_TYPE;
template <class T, class C> class ReportOfChanges;

/// Base of all listeners of a deviant.
///
/// A listener class declares operations of its own with the names of those that it wants to answer; `ListenerHolder`
/// calls them by the listener's static type, so they are not virtual here. A deviant does not own its listeners. A
/// listener must be unregistered before it dies, or outlive the deviant.
class ZEL_API ListenerBase {
public:
    virtual ~ListenerBase() = default;
    /// The deviant is being removed; called once for each list in which the listener stands. It may unregister
    /// listeners. A root deviant goes without this call.
    virtual void onDeviantDestroyed() {}

    /// Before a commit, within the transaction: may change further objects.
    void modifyOnCommit(ReportOfChanges<ClassObject, FALSE_TYPE> const &) {}
    /// After all modifiers, within the transaction: false cancels it.
    bool validateOnCommit(ReportOfChanges<ImmutableClassObject, TRUE_TYPE> const &) { return true; }
    /// After a commit, an undo or a redo, outside of a transaction.
    void observeChanges(ReportOfChanges<ImmutableClassObject, TRUE_TYPE> const &) {}

protected:
    ListenerBase() = default;
    ListenerBase(ListenerBase const &) = default;
    ListenerBase & operator=(ListenerBase const &) = default;
};

} // namespace ZEL
