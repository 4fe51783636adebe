#pragma once

#include <ZEL/base/ReferenceCountingIntf.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/sequences/Ref.h>

#include <limits>
#include <memory>

namespace ZEL::Generic {

/// The tag space of sequences and their iterators.
class ZEL_API SequenceDomain : public CooperativeVisitor::VisitationDomain {};

class IteratorIntf;
using IteratorPtr = std::unique_ptr<IteratorIntf>;

/// A place in a sequence without the type of its elements. Made by the sequence, owned by whoever asked for it.
///
/// It need not be told of writes to the sequence, and its end is not guarded: reading there throws what the sequence
/// throws for such an index.
class ZEL_API IteratorIntf : public ReferenceCountingIntf {
public:
    /// Answer of `position` when the place is no plain number.
    static constexpr int kNoPosition = std::numeric_limits<int>::min();

    static CooperativeVisitor::internal::ClassInfo const & classInfo();

    CooperativeVisitor::internal::MethodInfo
    getVisitMethod(CooperativeVisitor::internal::VisitTable const & table) const override;
    void * cast(CooperativeVisitor::internal::ClassInfo const & info) const override;

    [[nodiscard]] virtual Ref current(Deviant deviant) const = 0;
    virtual void next(Deviant deviant) = 0;
    virtual void previous(Deviant deviant) = 0;
    [[nodiscard]] virtual IteratorPtr clone() const = 0;
    [[nodiscard]] virtual bool equal(IteratorIntf const * other) const = 0;

    /// The index at which `generic_at` of the sequence returns the current element, or `kNoPosition`.
    [[nodiscard]] virtual int position() const { return kNoPosition; }
};

} // namespace ZEL::Generic
