#pragma once

#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/ListenerBase.h>
#include <ZEL/deviants/ListenerHolderBase.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/ReportBuilder.h>

namespace ZEL {

/// Lets a plain listener class take part in commits.
///
/// `L` derives from `ListenerBase` and declares those of `modifyOnCommit`, `validateOnCommit` and `observeChanges`
/// that it wants to answer. A holder is made for one deviant and one role and belongs to the deviant from its
/// registration on; the listener stays the client's. It is shown all changed objects, or, after `handleOnly<I>()`,
/// those of the named interfaces only; with nothing to tell it is called all the same, with an empty report.
///
///     class Printer : public ListenerBase {
///     public:
///         void observeChanges(ReportOfChanges<ImmutableClassObject, TRUE_TYPE> const & report) { ... }
///     };
///     registerObservingListener(deviant, printer);
template <class L> class ListenerHolder final : public internal::ListenerHolderBase {
public:
    explicit ListenerHolder(L & listener) : fListener(listener) { handle<NSInterface::ClassObjectIntf>(); }

    /// Restricts the holder to objects with interface `I`, beside those of earlier calls.
    template <class I> ListenerHolder & handleOnly() {
        if (fHandlesAll) {
            fTable = CooperativeVisitor::DispatchTable();
            fHandlesAll = false;
        }
        handle<I>();
        return *this;
    }

    [[nodiscard]] ListenerBase * getListener() override { return &fListener; }

    void reset(Deviant deviant, Deviant view) override {
        fDeviant = deviant;
        fView = view;
        fChanged = internal::ChangedBodies();
    }
    void callModifier() override { fListener.modifyOnCommit(internal::makeWritableReport(fChanged, fDeviant, fView)); }
    bool callValidator() override { return fListener.validateOnCommit(readableReport()); }
    void callObserver() override { fListener.observeChanges(readableReport()); }

private:
    template <class I> void handle() {
        fTable.add(I::classInfo(), [](void * holder, void * object, Deviant) {
            auto * const base = static_cast<internal::ListenerHolderBase *>(holder);
            static_cast<ListenerHolder *>(base)->collect(static_cast<I *>(object));
            return true;
        });
    }
    void collect(NSInterface::ClassObjectIntf * body) {
        fChanged.add(
            internal::classifyChange(body->internal_getDeviation(fView), body->internal_getDeviation(fDeviant)), body);
    }
    [[nodiscard]] ReportOfChanges<ImmutableClassObject, TRUE_TYPE> readableReport() const {
        return internal::makeReadableReport(fChanged, fDeviant, fView);
    }

    L & fListener;
    bool fHandlesAll = true;
    Deviant fDeviant;
    Deviant fView;
    internal::ChangedBodies fChanged;
};

/// Registers `listener` for the role; it must be unregistered before it dies, or outlive the deviant. Throws "listener
/// already registered with deviant" if it stands in the list of this role.
template <class L> void registerModifierOnCommit(Deviant deviant, L & listener) {
    deviant.registerModifierOnCommit(deviant.getImpl() != nullptr ? new ListenerHolder<L>(listener) : nullptr);
}
template <class L> void registerValidatorOnCommit(Deviant deviant, L & listener) {
    deviant.registerValidatorOnCommit(deviant.getImpl() != nullptr ? new ListenerHolder<L>(listener) : nullptr);
}
template <class L> void registerObservingListener(Deviant deviant, L & listener) {
    deviant.registerObservingListener(deviant.getImpl() != nullptr ? new ListenerHolder<L>(listener) : nullptr);
}

} // namespace ZEL
