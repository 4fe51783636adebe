#pragma once

#include <ZEL/base/SmartPtr.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/sequences/IteratorIntf.h>
#include <ZEL/sequences/Ref.h>

namespace ZEL::Generic {

/// The one contract of every multi-valued property, derived list and query result, without the type of its elements.
///
/// Storages hold elements; views stand over another sequence and find, filter or link its elements at each call. Each
/// operation takes the deviant in which the content is asked for; each element goes out with that deviant. The counting
/// operations of this class are empty: a storage is owned by what contains it. Views count (`SequenceProxy`).
///
/// Thrown by storages, and through them by views: "sequence index must be positive" for a negative index, "sequence
/// index out of bounds" for one at or, on insertion, beyond the size, "sequence is empty". A failed operation leaves
/// the sequence unchanged. A unique sequence ignores an element that it already holds, without a failure.
class ZEL_API SequenceIntf : public InSequenceDomain<SequenceIntf> {
public:
    [[nodiscard]] virtual Ref generic_at(Deviant deviant, int index) const = 0;
    [[nodiscard]] virtual Ref generic_front(Deviant deviant) const = 0;
    [[nodiscard]] virtual Ref generic_back(Deviant deviant) const = 0;
    [[nodiscard]] virtual IteratorPtr generic_begin(Deviant deviant) const = 0;
    [[nodiscard]] virtual IteratorPtr generic_end(Deviant deviant) const = 0;
    virtual void generic_clear(Deviant deviant) = 0;
    [[nodiscard]] virtual int generic_size(Deviant deviant) const = 0;
    virtual IteratorPtr generic_insert(Deviant deviant, IteratorIntf const * where, Ref element) = 0;
    /// `index` may equal the size.
    virtual void generic_insert(Deviant deviant, int index, Ref element) = 0;
    virtual void generic_erase(Deviant deviant, int index) = 0;
    virtual IteratorPtr generic_erase(Deviant deviant, IteratorIntf const * first, IteratorIntf const * last) = 0;
    virtual IteratorPtr generic_erase(Deviant deviant, IteratorIntf const * where) = 0;
    virtual void generic_pop_back(Deviant deviant) = 0;
    virtual void generic_pop_front(Deviant deviant) = 0;
    virtual void generic_push_back(Deviant deviant, Ref element) = 0;
    virtual void generic_push_front(Deviant deviant, Ref element) = 0;
    virtual void generic_replace(Deviant deviant, int index, Ref element) = 0;
    [[nodiscard]] virtual bool generic_contains(Deviant deviant, Ref element) const = 0;
    /// The registered name of the type of handles on this sequence; `fallback` where the sequence does not know.
    [[nodiscard]] virtual char const * generic_getOrcaName(bool immutableSequence, bool immutableElement,
                                                           char const * fallback) const = 0;

    // --- short cuts; the defaults do the same through the operations above ----------------------------------------
    /// Whether `generic_at` needs no walk over the elements, so that loops use an index instead of an iterator.
    [[nodiscard]] virtual bool generic_isRandomAccess() const { return false; }
    /// The iterator at `index`.
    [[nodiscard]] virtual IteratorPtr generic_iteratorAt(Deviant deviant, int index) const;
    /// Writes up to `count` bodies from `index` on into `bodies` and returns their number, 0 at the end; -1 if the
    /// sequence cannot, for instance because its elements are values.
    [[nodiscard]] virtual int generic_fetch(Deviant deviant, int index, NSInterface::ObjectIntf ** bodies,
                                            int count) const;
    /// The index of the first place of `element`, or -1.
    [[nodiscard]] virtual int generic_indexOf(Deviant deviant, Ref element) const;
    /// Erases the first place of `element`; false if there is none.
    virtual bool generic_eraseElement(Deviant deviant, Ref element);
    /// Whether an element that is there already is not taken a second time.
    [[nodiscard]] virtual bool generic_isUnique() const { return true; }
    /// False if the element could not be pushed because of what it is. Asked before anything else is written.
    [[nodiscard]] virtual bool generic_accepts(Deviant, Ref const & /*element*/) const { return true; }

    // --- places: loops over a sequence that is made of parts need no iterators on the heap ------------------------
    /// A place without a part says that the sequence has no places in this deviant. Those that follow are only for one
    /// that has, do what its iterators do, and here throw "An Internal Error has occurred".
    [[nodiscard]] virtual Place generic_beginPlace(Deviant) const { return {}; }
    [[nodiscard]] virtual Place generic_endPlace(Deviant) const { return {}; }
    [[nodiscard]] virtual Ref generic_atPlace(Deviant deviant, Place place) const;
    [[nodiscard]] virtual Place generic_placeAfter(Deviant deviant, Place place) const;
    [[nodiscard]] virtual Place generic_placeBefore(Deviant deviant, Place place) const;
    [[nodiscard]] virtual IteratorPtr generic_iteratorAtPlace(Deviant deviant, Place place) const;
};

using SequencePtr = SmartPtr<SequenceIntf, ReferenceCounted>;

} // namespace ZEL::Generic
