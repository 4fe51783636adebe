#include <ZEL/base/Exception.h>
#include <ZEL/base/GiveBackCount.h>
#include <ZEL/sequences/IndexChecks.h>
#include <ZEL/sequences/ListQImplForRefs.h>
#include <ZEL/values/ValueObjectIntf.h>

#include <algorithm>
#include <utility>

namespace ZEL::Generic::ListQImplInternal {

using NSInterface::ObjectIntf;

ListQImplForRefs::~ListQImplForRefs() {
    for (void const * const element : fList) {
        giveBack(element);
    }
}

ListQImplForRefs::ListQImplForRefs(ListQImplForRefs const & other)
    : SequenceIntf(other),
      fList(other.fList),
      fFlag(other.fFlag),
      fToInterface(other.fToInterface),
      fAccepts(other.fAccepts) {
    for (void const * const element : fList) {
        fToInterface(element)->incRef();
    }
}

ListQImplForRefs & ListQImplForRefs::operator=(ListQImplForRefs const & other) {
    // The new elements first: giving up an old one may be what keeps a new one alive.
    HASP::GList<void const *> old = other.fList;
    for (void const * const element : old) {
        fToInterface(element)->incRef();
    }
    std::swap(old, fList);
    for (void const * const element : old) {
        giveBack(element);
    }
    return *this;
}

// --- steps -----------------------------------------------------------------------------------------------------------

ObjectIntf * ListQImplForRefs::checkedBody(Ref const & element, Ref & boxed) const {
    boxed = element.boxed();
    ObjectIntf * const body = boxed.body();
    if (body == nullptr || !fAccepts(body)) {
        raiseAnInternalError();
    }
    return body;
}

ObjectIntf * ListQImplForRefs::bodyAt(int index) const {
    return static_cast<ObjectIntf *>(const_cast<void *>(fList[static_cast<std::size_t>(index)]));
}

std::size_t ListQImplForRefs::checkedIndex(int index) const { return internal::checkedIndex(index, fList.size()); }

void ListQImplForRefs::checkNotEmpty() const {
    if (fList.empty()) {
        internal::raiseSequenceIsEmpty();
    }
}

void ListQImplForRefs::giveBack(void const * element) const noexcept {
    ZEL::internal::giveBackCount(*fToInterface(element));
}

void ListQImplForRefs::insertAt(int index, Ref const & element) {
    std::size_t const place = internal::checkedInsertIndex(index, fList.size());
    Ref boxed;
    ObjectIntf * const body = checkedBody(element, boxed);
    fList.insert(place, body);
    fToInterface(body)->incRef();
}

void ListQImplForRefs::eraseAt(std::size_t index) {
    void const * const element = fList[index];
    fList.erase(index);
    giveBack(element);
}

// --- reads -----------------------------------------------------------------------------------------------------------

Ref ListQImplForRefs::generic_at(Deviant deviant, int index) const {
    static_cast<void>(checkedIndex(index));
    return Ref::ofStoredBody(bodyAt(index), deviant);
}

Ref ListQImplForRefs::generic_front(Deviant deviant) const {
    checkNotEmpty();
    return generic_at(deviant, 0);
}

Ref ListQImplForRefs::generic_back(Deviant deviant) const {
    checkNotEmpty();
    return generic_at(deviant, generic_size(deviant) - 1);
}

std::unique_ptr<IteratorIntf> ListQImplForRefs::generic_begin(Deviant) const {
    return std::make_unique<Iterator>(this, 0);
}

std::unique_ptr<IteratorIntf> ListQImplForRefs::generic_end(Deviant deviant) const {
    return std::make_unique<Iterator>(this, generic_size(deviant));
}

int ListQImplForRefs::generic_size(Deviant) const { return static_cast<int>(fList.size()); }

bool ListQImplForRefs::generic_contains(Deviant, Ref element) const {
    // From the back: what was put in last is asked for most.
    for (int i = static_cast<int>(fList.size()); i-- > 0;) {
        if (Ref::ofStoredBody(bodyAt(i), Deviant()).isSameElement(element)) {
            return true;
        }
    }
    return false;
}

bool ListQImplForRefs::generic_isRandomAccess() const { return true; }

std::unique_ptr<IteratorIntf> ListQImplForRefs::generic_iteratorAt(Deviant, int index) const {
    return std::make_unique<Iterator>(this, index);
}

int ListQImplForRefs::generic_fetch(Deviant, int index, ObjectIntf ** bodies, int count) const {
    int const fetched = std::clamp(static_cast<int>(fList.size()) - index, 0, count);
    for (int i = 0; i < fetched; ++i) {
        bodies[i] = bodyAt(index + i);
    }
    return fetched;
}

int ListQImplForRefs::generic_indexOf(Deviant, Ref element) const {
    for (int i = 0; i < static_cast<int>(fList.size()); ++i) {
        if (Ref::ofStoredBody(bodyAt(i), Deviant()).isSameElement(element)) {
            return i;
        }
    }
    return -1;
}

bool ListQImplForRefs::generic_isUnique() const { return false; }

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

std::unique_ptr<IteratorIntf> ListQImplForRefs::generic_insert(Deviant, IteratorIntf const * where, Ref element) {
    insertAt(where->position(), element);
    return std::make_unique<Iterator>(this, where->position());
}

void ListQImplForRefs::generic_insert(Deviant, int index, Ref element) { insertAt(index, element); }

void ListQImplForRefs::generic_erase(Deviant, int index) { eraseAt(checkedIndex(index)); }

std::unique_ptr<IteratorIntf> ListQImplForRefs::generic_erase(Deviant, IteratorIntf const * first,
                                                              IteratorIntf const * last) {
    int const begin = first->position();
    int const end = last->position();
    if (begin < end) {
        static_cast<void>(checkedIndex(begin));
        static_cast<void>(checkedIndex(end - 1));
    }
    for (int i = begin; i < end; ++i) {
        // A count is taken here, not given back: this is meant, see the class.
        fToInterface(bodyAt(begin))->incRef();
        fList.erase(static_cast<std::size_t>(begin));
    }
    return std::make_unique<Iterator>(this, begin);
}

std::unique_ptr<IteratorIntf> ListQImplForRefs::generic_erase(Deviant, IteratorIntf const * where) {
    eraseAt(checkedIndex(where->position()));
    return std::make_unique<Iterator>(this, where->position());
}

void ListQImplForRefs::generic_pop_back(Deviant) {
    checkNotEmpty();
    eraseAt(fList.size() - 1);
}

void ListQImplForRefs::generic_pop_front(Deviant) {
    checkNotEmpty();
    eraseAt(0);
}

void ListQImplForRefs::generic_push_back(Deviant deviant, Ref element) { insertAt(generic_size(deviant), element); }

void ListQImplForRefs::generic_push_front(Deviant, Ref element) { insertAt(0, element); }

void ListQImplForRefs::generic_replace(Deviant, int index, Ref element) {
    std::size_t const place = checkedIndex(index);
    Ref boxed;
    ObjectIntf * const body = checkedBody(element, boxed);
    if (body->cast(NSInterface::ValueObjectIntf::classInfo()) != nullptr) {
        // No model keeps a value alive.
        body->incRef();
    }
    void const * const old = fList[place];
    fList.set(place, body); // without a count: this is meant, see the class
    giveBack(old);
}

// --- iterator --------------------------------------------------------------------------------------------------------

Ref ListQImplForRefs::Iterator::current(Deviant deviant) const { return fList->generic_at(deviant, fIndex); }

void ListQImplForRefs::Iterator::next(Deviant) { ++fIndex; }

void ListQImplForRefs::Iterator::previous(Deviant) { --fIndex; }

std::unique_ptr<IteratorIntf> ListQImplForRefs::Iterator::clone() const { return std::make_unique<Iterator>(*this); }

bool ListQImplForRefs::Iterator::equal(IteratorIntf const * other) const {
    auto const * const that = dynamic_cast<Iterator const *>(other);
    return that != nullptr && that->fList == fList && that->fIndex == fIndex;
}

int ListQImplForRefs::Iterator::position() const { return fIndex; }

} // namespace ZEL::Generic::ListQImplInternal
