#pragma once

#include <ZEL/sequences/IteratorProxy.h>
#include <ZEL/sequences/SequenceIntf.h>

#include <hasp_util/GList.h>

#include <cstddef>

namespace ZEL::Generic::ListQImplInternal {

/// List of bodies, with duplicates, for results of queries. Holds a count on each element; `ListQImpl` adds the type.
///
/// Two operations count against expectation, on purpose: `generic_replace` takes no count on the new element, unless
/// it is a value, and the erasing of a range takes counts instead of giving them back. A count that an element has lost
/// that way is not missed when the element leaves the list. Contains searches linearly. No uniqueness is checked. A copy
/// has the same elements and counts of its own on them.
class ZEL_API ListQImplForRefs : public SequenceIntf {
public:
    class Iterator;

    ~ListQImplForRefs() override;

    [[nodiscard]] Ref generic_at(Deviant deviant, int index) const override;
    [[nodiscard]] Ref generic_front(Deviant deviant) const override;
    [[nodiscard]] Ref generic_back(Deviant deviant) const override;
    [[nodiscard]] std::unique_ptr<IteratorIntf> generic_begin(Deviant deviant) const override;
    [[nodiscard]] std::unique_ptr<IteratorIntf> generic_end(Deviant deviant) const override;
    void generic_clear(Deviant deviant) override;
    [[nodiscard]] int generic_size(Deviant deviant) const override;
    std::unique_ptr<IteratorIntf> generic_insert(Deviant deviant, IteratorIntf const * where, Ref element) override;
    void generic_insert(Deviant deviant, int index, Ref element) override;
    void generic_erase(Deviant deviant, int index) override;
    std::unique_ptr<IteratorIntf> generic_erase(Deviant deviant, IteratorIntf const * first,
                                                IteratorIntf const * last) override;
    std::unique_ptr<IteratorIntf> generic_erase(Deviant deviant, IteratorIntf const * where) override;
    void generic_pop_back(Deviant deviant) override;
    void generic_pop_front(Deviant deviant) override;
    void generic_push_back(Deviant deviant, Ref element) override;
    void generic_push_front(Deviant deviant, Ref element) override;
    void generic_replace(Deviant deviant, int index, Ref element) override;
    [[nodiscard]] bool generic_contains(Deviant deviant, Ref element) const override;
    [[nodiscard]] bool generic_isRandomAccess() const override;
    [[nodiscard]] std::unique_ptr<IteratorIntf> generic_iteratorAt(Deviant deviant, int index) const override;
    [[nodiscard]] int generic_fetch(Deviant deviant, int index, NSInterface::ObjectIntf ** bodies,
                                    int count) const override;
    [[nodiscard]] int generic_indexOf(Deviant deviant, Ref element) const override;
    [[nodiscard]] bool generic_isUnique() const override;
    [[nodiscard]] bool generic_accepts(Deviant deviant, Ref const & element) const override;

protected:
    using ToInterface = ReferenceCountingIntf * (*)(void const * element);
    using Accepts = bool (*)(NSInterface::ObjectIntf * body);

    ListQImplForRefs(bool flag, ToInterface toInterface, Accepts accepts)
        : fFlag(flag), fToInterface(toInterface), fAccepts(accepts) {}
    // Between lists of one element class, as the subclasses have it.
    ListQImplForRefs(ListQImplForRefs const & other);
    ListQImplForRefs & operator=(ListQImplForRefs const & other);

private:
    /// Raises "An Internal Error has occurred" for an element that the list cannot hold. A boxed value goes into `boxed`.
    [[nodiscard]] NSInterface::ObjectIntf * checkedBody(Ref const & element, Ref & boxed) const;
    [[nodiscard]] NSInterface::ObjectIntf * bodyAt(int index) const;
    [[nodiscard]] std::size_t checkedIndex(int index) const;
    void checkNotEmpty() const;
    void giveBack(void const * element) const noexcept;
    void insertAt(int index, Ref const & element);
    void eraseAt(std::size_t index);

    HASP::GList<void const *> fList;
    [[maybe_unused]] bool fFlag; ///< no caller gives true
    ToInterface fToInterface;
    Accepts fAccepts;
};

/// A list and an index; steps are not checked.
class ZEL_API ListQImplForRefs::Iterator final : public IteratorProxy {
public:
    Iterator(ListQImplForRefs const * list, int index) : fList(list), fIndex(index) {}

    [[nodiscard]] Ref current(Deviant deviant) const override;
    void next(Deviant deviant) override;
    void previous(Deviant deviant) override;
    [[nodiscard]] std::unique_ptr<IteratorIntf> clone() const override;
    [[nodiscard]] bool equal(IteratorIntf const * other) const override;
    [[nodiscard]] int position() const override;

private:
    ListQImplForRefs const * fList;
    int fIndex;
};

} // namespace ZEL::Generic::ListQImplInternal
