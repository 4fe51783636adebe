#include <ZEL/base/Exception.h>
#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/sequences/GenericDeviantSequence.h>
#include <ZEL/sequences/PersistentSequence.h>
#include <ZEL/sequences/PersistentTextSequence.h>
#include <ZEL/sequences/RefTraits.h>
#include <ZEL/sequences/SequenceNames.h>
#include <ZEL/values/String.h>

#include <algorithm>
#include <string>

namespace ZEL::Generic {

using NSInterface::ObjectIntf;

// --- the two kinds of storage, one shape -----------------------------------------------------------------------------

struct GenericDeviantSequence::Bodies {
    using Storage = internal::PersistentSequence;
    using Element = ObjectIntf *;

    static Storage const & read(GenericDeviantSequence const & sequence) {
        return sequence.fField->readBodies(sequence.fObject, sequence.fDeviant);
    }
    static Storage & write(GenericDeviantSequence const & sequence) {
        return sequence.fField->writeBodies(sequence.fObject, sequence.fDeviant);
    }
    static Ref refAt(Storage const & storage, std::size_t index, Deviant deviant) {
        return Ref::ofStoredBody(static_cast<ObjectIntf *>(storage.at(index)), deviant);
    }
    /// Whether a storage of the field may hold the element. A value never: nobody would keep its box alive.
    static bool fits(GenericDeviantSequence const & sequence, Ref const & element) {
        return element.body() != nullptr && element.body()->cast(sequence.fField->elementInfo()) != nullptr;
    }
    static Element elementOf(Ref const & element) { return element.body(); }
    static std::ptrdiff_t indexOf(Storage const & storage, Ref const & element) {
        return element.body() == nullptr ? -1 : storage.indexOf(element.body());
    }
    static bool hasPlaceFor(GenericDeviantSequence const &, Storage const & storage, Element element) {
        return !storage.contains(element);
    }
    static void stored(GenericDeviantSequence const & sequence, Element element) {
        sequence.fObject->internal_noteElement(element);
    }
};

struct GenericDeviantSequence::Texts {
    using Storage = internal::PersistentTextSequence;
    using Element = std::string;

    static Storage const & read(GenericDeviantSequence const & sequence) {
        return sequence.fField->readTexts(sequence.fObject, sequence.fDeviant);
    }
    static Storage & write(GenericDeviantSequence const & sequence) {
        return sequence.fField->writeTexts(sequence.fObject, sequence.fDeviant);
    }
    static Ref refAt(Storage const & storage, std::size_t index, Deviant deviant) {
        return Ref::ofValue(String(storage.at(index)), deviant);
    }
    static bool fits(GenericDeviantSequence const &, Ref const & element) { return RefTraits<String>::fits(element); }
    static Element elementOf(Ref const & element) { return RefTraits<String>::fromRef(element).str(); }
    static std::ptrdiff_t indexOf(Storage const & storage, Ref const & element) {
        return RefTraits<String>::fits(element) ? storage.indexOf(elementOf(element)) : -1;
    }
    static bool hasPlaceFor(GenericDeviantSequence const & sequence, Storage const & storage, Element const & element) {
        return !sequence.fField->isUnique || !storage.contains(element);
    }
    static void stored(GenericDeviantSequence const &, Element const &) {}
};

template <class Function> auto GenericDeviantSequence::visit(Function function) const {
    checkModel();
    return fField->hasTexts() ? function(Texts(), Texts::read(*this)) : function(Bodies(), Bodies::read(*this));
}

void GenericDeviantSequence::checkModel() const {
    // The deviant can always be asked; the object may have gone with its model.
    if (fDeviant.hasModelBeenDestroyed()) [[unlikely]] {
        raiseInternalError("object accessed after its model has been destroyed");
    }
}

void GenericDeviantSequence::checkWritable() const {
    checkModel();
    if (fDeviant.isNotNull() && !fDeviant.isWithinTransaction()) {
        // Throws, with the text for this object; passes where such writes are allowed.
        fField->hasTexts() ? static_cast<void>(Texts::write(*this)) : static_cast<void>(Bodies::write(*this));
    }
}

GenericDeviantSequence::~GenericDeviantSequence() { orphanIterators(0); }

void GenericDeviantSequence::orphanIterators(int from) const {
    std::vector<Iterator *> const iterators = fIterators;
    for (Iterator * const iterator : iterators) {
        if (iterator->index() >= from) {
            iterator->orphan();
        }
    }
}

// --- reads -----------------------------------------------------------------------------------------------------------

template <class Place> Ref GenericDeviantSequence::refAt(Deviant deviant, Place place) const {
    return visit([&](auto kind, auto const & storage) { return kind.refAt(storage, place(storage.size()), deviant); });
}

int GenericDeviantSequence::generic_size(Deviant) const {
    return visit([](auto, auto const & storage) { return static_cast<int>(storage.size()); });
}

char const * GenericDeviantSequence::generic_getOrcaName(bool immutableSequence, bool immutableElement,
                                                         char const *) const {
    return SequenceNames::of(fField->elementTypeName, fField->hasTexts()).get(immutableSequence, immutableElement);
}

int GenericDeviantSequence::generic_fetch(Deviant, int index, ObjectIntf ** bodies, int count) const {
    if (fField->hasTexts()) {
        return -1;
    }
    checkModel();
    internal::PersistentSequence const & storage = Bodies::read(*this);
    int const fetched = std::clamp(static_cast<int>(storage.size()) - index, 0, count);
    internal::PersistentSequence::Cursor cursor(storage, static_cast<std::size_t>(index));
    for (int i = 0; i < fetched; ++i, ++cursor) {
        bodies[i] = static_cast<ObjectIntf *>(*cursor);
    }
    return fetched;
}

int GenericDeviantSequence::generic_indexOf(Deviant, Ref element) const {
    return visit([&](auto kind, auto const & storage) { return static_cast<int>(kind.indexOf(storage, element)); });
}

bool GenericDeviantSequence::generic_accepts(Deviant, Ref const & element) const {
    return fField->hasTexts() ? Texts::fits(*this, element) : Bodies::fits(*this, element);
}

// --- writes: what can fail is asked of the storage to read, so that a failure leaves no trace in the change set ------

void GenericDeviantSequence::insertAt(int index, Ref const & element) {
    checkWritable();
    visit([&](auto kind, auto const & storage) {
        if (!kind.fits(*this, element)) {
            raiseAnInternalError();
        }
        std::size_t const position = internal::checkedInsertIndex(index, storage.size());
        auto value = kind.elementOf(element);
        if (kind.hasPlaceFor(*this, storage, value)) {
            kind.write(*this).insert(position, value);
            kind.stored(*this, value);
        }
    });
}

void GenericDeviantSequence::eraseAt(int index) {
    checkWritable();
    visit([&](auto kind, auto const & storage) {
        std::size_t const position = internal::checkedIndex(index, storage.size());
        kind.write(*this).eraseAt(position);
    });
}

void GenericDeviantSequence::generic_clear(Deviant) {
    checkWritable();
    visit([&](auto kind, auto const & storage) {
        if (!storage.empty()) {
            kind.write(*this).clear();
        }
    });
}

void GenericDeviantSequence::generic_replace(Deviant, int index, Ref element) {
    checkWritable();
    visit([&](auto kind, auto const & storage) {
        std::size_t const position = internal::checkedIndex(index, storage.size());
        if (!kind.fits(*this, element)) {
            raiseAnInternalError();
        }
        auto value = kind.elementOf(element);
        if (storage.at(position) != value && kind.hasPlaceFor(*this, storage, value)) {
            kind.write(*this).replaceAt(position, value);
            kind.stored(*this, value);
        }
    });
}

// --- iterator --------------------------------------------------------------------------------------------------------

GenericDeviantSequence::Iterator::Iterator(GenericDeviantSequence const * sequence, int position)
    : fSequence(sequence), fPosition(position) {
    requireSequence("null sequence for iterator constructor");
    fSequence->fIterators.push_back(this);
}

GenericDeviantSequence::Iterator::~Iterator() {
    if (fSequence != nullptr) {
        auto & iterators = fSequence->fIterators;
        auto const own = std::find(iterators.begin(), iterators.end(), this);
        if (own != iterators.end()) {
            iterators.erase(own);
        }
    }
}

void GenericDeviantSequence::Iterator::requireSequence(char const * text) const {
    if (fSequence == nullptr) {
        raiseInternalError(text);
    }
}

IteratorPtr GenericDeviantSequence::Iterator::clone() const {
    requireSequence("cloning an invalid iterator");
    return IteratorPtr(new Iterator(*this));
}

bool GenericDeviantSequence::Iterator::equal(IteratorIntf const * other) const {
    auto const * const that = dynamic_cast<Iterator const *>(other);
    if (fSequence == nullptr || that == nullptr || that->fSequence == nullptr) {
        raiseInternalError("comparision of an invalid iterator");
    }
    return fPosition == that->fPosition;
}

template class IndexedSequence<GenericDeviantSequence, SequenceProxy>;

} // namespace ZEL::Generic
