#include <ZEL/sequences/MultiIndexImplForRefsHelper.h>

#include <algorithm>
#include <bit>
#include <limits>
#include <utility>

namespace ZEL::Generic::MultiIndexImplInternal {

// --- steps -----------------------------------------------------------------------------------------------------------

MultiIndexImplForRefsHelper::Node const * MultiIndexImplForRefsHelper::nodeAt(std::size_t index) const {
    return index < fByPosition.size() ? &*fByPosition[index] : nullptr;
}

void MultiIndexImplForRefsHelper::renumberFrom(std::size_t index) const {
    for (; index < fByPosition.size(); ++index) {
        fByPosition[index]->index = index;
    }
}

int MultiIndexImplForRefsHelper::positionOf(IteratorIntf const * iterator) const {
    auto const & own = ownIterator<Iterator>(iterator);
    if (own.fStorage != this) {
        raiseAnInternalError();
    }
    return own.position();
}

MultiIndexImplForRefsHelper::Node const & MultiIndexImplForRefsHelper::insertNode(int index, Ref const & element) {
    std::size_t const place = internal::checkedInsertIndex(index, fByPosition.size());
    Ref stored = fToElement(element);
    if (fIsUnique) {
        if (auto const found = fByKey.find(stored); found != fByKey.end()) {
            return *found;
        }
    }
    fByPosition.reserve(std::bit_ceil(fByPosition.size() + 1)); // so that a failure comes before the first change
    auto const node = fByKey.insert(Node{std::move(stored), place});
    fByPosition.insert(fByPosition.begin() + index, node);
    renumberFrom(place + 1);
    return *node;
}

void MultiIndexImplForRefsHelper::eraseAt(int index) {
    static_cast<void>(internal::checkedIndex(index, fByPosition.size()));
    eraseRange(index, index + 1);
}

void MultiIndexImplForRefsHelper::eraseRange(int begin, int end) {
    auto const first = fByPosition.begin() + begin;
    auto const last = fByPosition.begin() + end;
    std::for_each(first, last, [this](Nodes::const_iterator node) { fByKey.erase(node); });
    fByPosition.erase(first, last);
    renumberFrom(static_cast<std::size_t>(begin));
}

// --- reads -----------------------------------------------------------------------------------------------------------

bool MultiIndexImplForRefsHelper::generic_contains(Deviant deviant, Ref element) const {
    return generic_accepts(deviant, element) && fByKey.contains(fToElement(element));
}

int MultiIndexImplForRefsHelper::generic_indexOf(Deviant deviant, Ref element) const {
    if (!generic_accepts(deviant, element)) {
        return -1;
    }
    // Among elements with equal keys the one that stands first.
    std::size_t constexpr none = std::numeric_limits<std::size_t>::max();
    std::size_t least = none;
    auto const [first, last] = fByKey.equal_range(fToElement(element));
    for (auto node = first; node != last; ++node) {
        if (node->element.isSameElement(element)) {
            least = std::min(least, node->index);
        }
    }
    return least == none ? -1 : static_cast<int>(least);
}

// --- writes ----------------------------------------------------------------------------------------------------------

void MultiIndexImplForRefsHelper::generic_clear(Deviant) {
    fByPosition.clear();
    fByKey.clear();
}

IteratorPtr MultiIndexImplForRefsHelper::generic_insert(Deviant, IteratorIntf const * where, Ref element) {
    return std::make_unique<Iterator>(this, insertNode(positionOf(where), element));
}

void MultiIndexImplForRefsHelper::generic_replace(Deviant, int index, Ref element) {
    auto & node = fByPosition[internal::checkedIndex(index, fByPosition.size())];
    Ref stored = fToElement(element);
    if (auto const found = fByKey.find(stored); fIsUnique && found != fByKey.end() && found != node) {
        return;
    }
    // The node stays, as do the iterators at it.
    auto moved = fByKey.extract(node);
    moved.value().element = std::move(stored);
    node = fByKey.insert(std::move(moved));
}

// --- iterator --------------------------------------------------------------------------------------------------------

MultiIndexImplForRefsHelper::Iterator::Iterator(MultiIndexImplForRefsHelper const * storage, int index)
    : fStorage(storage), fNode(storage->nodeAt(internal::checkedInsertIndex(index, storage->fByPosition.size()))) {}

Ref MultiIndexImplForRefsHelper::Iterator::current(Deviant deviant) const {
    if (fNode == nullptr) {
        internal::raiseSequenceIndexIsTooLarge();
    }
    return fNode->element.withDeviant(deviant);
}

void MultiIndexImplForRefsHelper::Iterator::next(Deviant) {
    if (fNode != nullptr) {
        fNode = fStorage->nodeAt(fNode->index + 1);
    }
}

void MultiIndexImplForRefsHelper::Iterator::previous(Deviant) {
    if (int const index = position(); index > 0) {
        fNode = fStorage->nodeAt(static_cast<std::size_t>(index - 1));
    }
}

int MultiIndexImplForRefsHelper::Iterator::position() const {
    return static_cast<int>(fNode == nullptr ? fStorage->fByPosition.size() : fNode->index);
}

} // namespace ZEL::Generic::MultiIndexImplInternal

template class ZEL::Generic::IndexedSequence<ZEL::Generic::MultiIndexImplInternal::MultiIndexImplForRefsHelper,
                                             ZEL::Generic::SequenceIntf>;
