#pragma once

#include <ZEL/base/Cleanup.h>
#include <ZEL/base/CooperativeVisitor.h>

namespace ZEL {

/// Counting and dispatch interface of all bodies. A body that is not counted, such as a singleton, keeps the empty
/// operations of this class. Its destructor retracts the body from the host's binding registry and calls the listener
/// of `internal_tellOfEnds`.
class ZEL_API ReferenceCountingIntf : public Cleanup {
public:
    ~ReferenceCountingIntf() override;

    virtual void incRef();
    virtual void decRef();
    virtual int numRef();
    /// The method of a visitor's table for the first class of this body, in base order, that has one; null if none has.
    virtual CooperativeVisitor::internal::MethodInfo
    getVisitMethod(CooperativeVisitor::internal::VisitTable const & table) const;
    /// The address of the part of this body that `info` names; null if the body is not of that class.
    virtual void * cast(CooperativeVisitor::internal::ClassInfo const & info) const;

    /// Sets the function that is called by the destructor of every body. There is one: that of the registry of
    /// deviants.
    static void internal_tellOfEnds(void (*listener)(ReferenceCountingIntf *) noexcept) noexcept;

protected:
    ReferenceCountingIntf() = default;
    ReferenceCountingIntf(ReferenceCountingIntf const &) = default;
    ReferenceCountingIntf & operator=(ReferenceCountingIntf const &) = default;
};

} // namespace ZEL
