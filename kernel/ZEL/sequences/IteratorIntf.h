#pragma once

#include <ZEL/base/ReferenceCountingIntf.h>
#include <ZEL/base/SoleOwner.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/sequences/Ref.h>

#include <climits>

namespace ZEL::Generic {

/// The tag space of sequences and their iterators.
class ZEL_API SequenceDomain : public CooperativeVisitor::VisitationDomain {};

/// What visitors learn of a sequence or an iterator: that it is an `Intf`.
template <class Intf> class ZEL_API InSequenceDomain : public ReferenceCountingIntf {
public:
    static CooperativeVisitor::internal::ClassInfo const & classInfo() {
        static auto const info = CooperativeVisitor::internal::makeClassInfo<Intf, SequenceDomain>();
        return info;
    }
    CooperativeVisitor::internal::MethodInfo
    getVisitMethod(CooperativeVisitor::internal::VisitTable const & table) const override {
        return conversions().visitMethod(table, self());
    }
    void * cast(CooperativeVisitor::internal::ClassInfo const & info) const override {
        return conversions().cast(info, self());
    }

private:
    static auto const & conversions() { return CooperativeVisitor::internal::castTable<Intf, Intf>(); }
    [[nodiscard]] Intf * self() const { return const_cast<Intf *>(static_cast<Intf const *>(this)); }
};

/// A place in a sequence that is made of parts: the number of a part, and an index in it.
struct Place {
    static constexpr int kNoPart = -1;

    int part = kNoPart;
    int index = 0;

    [[nodiscard]] bool hasPart() const noexcept { return part != kNoPart; }
    friend bool operator==(Place const &, Place const &) = default;
};

class IteratorIntf;
using IteratorPtr = internal::SoleOwner<IteratorIntf>;

/// A place in a sequence without the type of its elements. Made by the sequence, owned by whoever asked for it.
///
/// It stays usable when the sequence is written to. Its end is not guarded: reading there throws what the sequence
/// throws for that index.
class ZEL_API IteratorIntf : public InSequenceDomain<IteratorIntf> {
public:
    /// Answer of `position` when the place is no plain number.
    static constexpr int kNoPosition = INT_MIN;

    [[nodiscard]] virtual Ref current(Deviant deviant) const = 0;
    virtual void next(Deviant deviant) = 0;
    virtual void previous(Deviant deviant) = 0;
    [[nodiscard]] virtual IteratorPtr clone() const = 0;
    [[nodiscard]] virtual bool equal(IteratorIntf const * other) const = 0;

    /// The index at which `generic_at` of the sequence returns the current element, or `kNoPosition`.
    [[nodiscard]] virtual int position() const { return kNoPosition; }
    /// The same as a place, of a sequence that has such; without a part for all others.
    [[nodiscard]] virtual Place place() const { return {}; }
};

} // namespace ZEL::Generic
