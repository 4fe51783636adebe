#pragma once

#include <ZEL/sequences/IndexedSequence.h>

#include <hasp_util/GList.h>

#include <cstddef>

namespace ZEL::Generic::ListQImplInternal {

/// List of bodies, with duplicates, for results of queries. Holds a count on each element; `ListQImpl` adds the type.
///
/// Two operations count differently than one expects, on purpose: `generic_replace` takes no count on the new element,
/// unless it is a value, and the erasing of a range takes counts instead of giving them back. A count that an element
/// has lost that way is not missed when the element leaves the list. `generic_contains` searches linearly. No
/// uniqueness is checked. A copy has the same elements and counts of its own on them.
class ZEL_API ListQImplForRefs : public IndexedSequence<ListQImplForRefs, SequenceIntf> {
public:
    class Iterator;

    ~ListQImplForRefs() override;

    void generic_clear(Deviant deviant) override;
    [[nodiscard]] int generic_size(Deviant) const override { return static_cast<int>(fList.size()); }
    void generic_replace(Deviant deviant, int index, Ref element) override;
    [[nodiscard]] bool generic_contains(Deviant deviant, Ref element) const override;
    [[nodiscard]] int generic_fetch(Deviant deviant, int index, NSInterface::ObjectIntf ** bodies,
                                    int count) const override;
    [[nodiscard]] int generic_indexOf(Deviant deviant, Ref element) const override;
    [[nodiscard]] bool generic_isUnique() const override { return false; }
    [[nodiscard]] bool generic_accepts(Deviant deviant, Ref const & element) const override;

protected:
    using Accepts = bool (*)(NSInterface::ObjectIntf * body);

    explicit ListQImplForRefs(Accepts accepts) : fAccepts(accepts) {}
    // Between lists of one element class, as the subclasses have it.
    ListQImplForRefs(ListQImplForRefs const & other);
    ListQImplForRefs & operator=(ListQImplForRefs const & other);

private:
    friend IndexedSequence;

    template <class Place> [[nodiscard]] Ref refAt(Deviant deviant, Place place) const {
        return Ref::ofStoredBody(bodyAt(place(fList.size())), deviant);
    }
    void insertAt(int index, Ref const & element);
    void eraseAt(int index);
    void eraseRange(int begin, int end);

    /// The element as a body. Throws "An Internal Error has occurred" for one that the list cannot hold.
    [[nodiscard]] Ref checkedBody(Ref const & element) const;
    [[nodiscard]] NSInterface::ObjectIntf * bodyAt(std::size_t index) const;
    [[nodiscard]] bool isAt(std::size_t index, Ref const & element) const;

    HASP::GList<void const *> fList;
    Accepts fAccepts;
};

/// A list and an index; steps are not checked.
class ZEL_API ListQImplForRefs::Iterator final : public IteratorOf<ListQImplForRefs::Iterator> {
public:
    Iterator(ListQImplForRefs const * list, int index) : fList(list), fIndex(index) {}

    [[nodiscard]] Ref current(Deviant deviant) const override { return fList->generic_at(deviant, fIndex); }
    void next(Deviant) override { ++fIndex; }
    void previous(Deviant) override { --fIndex; }
    [[nodiscard]] int position() const override { return fIndex; }

private:
    friend IteratorOf;

    [[nodiscard]] bool isAt(Iterator const & other) const noexcept {
        return other.fList == fList && other.fIndex == fIndex;
    }

    ListQImplForRefs const * fList;
    int fIndex;
};

} // namespace ZEL::Generic::ListQImplInternal

extern template class ZEL::Generic::IndexedSequence<ZEL::Generic::ListQImplInternal::ListQImplForRefs,
                                                    ZEL::Generic::SequenceIntf>;
