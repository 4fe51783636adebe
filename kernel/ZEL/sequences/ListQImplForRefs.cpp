#include <ZEL/base/Exception.h>
#include <ZEL/base/GiveBackCount.h>
#include <ZEL/sequences/ListQImplForRefs.h>
#include <ZEL/values/ValueObjectIntf.h>

#include <algorithm>
#include <utility>

namespace ZEL::Generic::ListQImplInternal {

using NSInterface::ObjectIntf;

namespace {

ObjectIntf * bodyOf(void const * element) { return static_cast<ObjectIntf *>(const_cast<void *>(element)); }

void giveBack(void const * element) noexcept { ZEL::internal::giveBackCount(*bodyOf(element)); }

} // namespace

ListQImplForRefs::~ListQImplForRefs() {
    for (void const * const element : fList) {
        giveBack(element);
    }
}

ListQImplForRefs::ListQImplForRefs(ListQImplForRefs const & other)
    : IndexedSequence(other), fList(other.fList), fAccepts(other.fAccepts) {
    for (void const * const element : fList) {
        bodyOf(element)->incRef();
    }
}

ListQImplForRefs & ListQImplForRefs::operator=(ListQImplForRefs const & other) {
    // The new elements first: giving up an old one may be what keeps a new one alive.
    HASP::GList<void const *> old = other.fList;
    for (void const * const element : old) {
        bodyOf(element)->incRef();
    }
    std::swap(old, fList);
    for (void const * const element : old) {
        giveBack(element);
    }
    return *this;
}

// --- steps -----------------------------------------------------------------------------------------------------------

Ref ListQImplForRefs::checkedBody(Ref const & element) const {
    Ref boxed = element.boxed();
    if (boxed.body() == nullptr || !fAccepts(boxed.body())) {
        raiseAnInternalError();
    }
    return boxed;
}

ObjectIntf * ListQImplForRefs::bodyAt(std::size_t index) const { return bodyOf(fList[index]); }

bool ListQImplForRefs::isAt(std::size_t index, Ref const & element) const {
    return Ref::ofStoredBody(bodyAt(index), Deviant()).isSameElement(element);
}

void ListQImplForRefs::insertAt(int index, Ref const & element) {
    std::size_t const place = internal::checkedInsertIndex(index, fList.size());
    Ref const boxed = checkedBody(element);
    fList.insert(place, boxed.body());
    boxed.body()->incRef();
}

void ListQImplForRefs::eraseAt(int index) {
    std::size_t const place = internal::checkedIndex(index, fList.size());
    void const * const element = fList[place];
    fList.erase(place);
    giveBack(element);
}

void ListQImplForRefs::eraseRange(int begin, int end) {
    auto const place = static_cast<std::size_t>(begin);
    for (int i = begin; i < end; ++i) {
        // A count is taken here, not given back: on purpose, see the class.
        bodyAt(place)->incRef();
        fList.erase(place);
    }
}

// --- reads -----------------------------------------------------------------------------------------------------------

bool ListQImplForRefs::generic_contains(Deviant, Ref element) const {
    // From the back: what was put in last is asked for most.
    for (std::size_t i = fList.size(); i-- > 0;) {
        if (isAt(i, element)) {
            return true;
        }
    }
    return false;
}

int ListQImplForRefs::generic_fetch(Deviant, int index, ObjectIntf ** bodies, int count) const {
    int const fetched = std::clamp(static_cast<int>(fList.size()) - index, 0, count);
    for (int i = 0; i < fetched; ++i) {
        bodies[i] = bodyAt(static_cast<std::size_t>(index + i));
    }
    return fetched;
}

int ListQImplForRefs::generic_indexOf(Deviant, Ref element) const {
    for (std::size_t i = 0; i < fList.size(); ++i) {
        if (isAt(i, element)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

bool ListQImplForRefs::generic_accepts(Deviant, Ref const & element) const {
    Ref const boxed = element.boxed();
    return boxed.body() != nullptr && fAccepts(boxed.body());
}

// --- writes ----------------------------------------------------------------------------------------------------------

void ListQImplForRefs::generic_clear(Deviant) {
    HASP::GList<void const *> old;
    std::swap(old, fList);
    for (void const * const element : old) {
        giveBack(element);
    }
}

void ListQImplForRefs::generic_replace(Deviant, int index, Ref element) {
    std::size_t const place = internal::checkedIndex(index, fList.size());
    Ref const boxed = checkedBody(element);
    ObjectIntf * const body = boxed.body();
    if (body->cast(NSInterface::ValueObjectIntf::classInfo()) != nullptr) {
        // No model keeps a value alive.
        body->incRef();
    }
    void const * const old = fList[place];
    fList.set(place, body); // without a count: on purpose, see the class
    giveBack(old);
}

} // namespace ZEL::Generic::ListQImplInternal

template class ZEL::Generic::IndexedSequence<ZEL::Generic::ListQImplInternal::ListQImplForRefs,
                                             ZEL::Generic::SequenceIntf>;
