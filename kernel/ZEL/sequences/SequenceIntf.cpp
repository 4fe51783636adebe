#include <ZEL/base/Exception.h>
#include <ZEL/sequences/SequenceIntf.h>

namespace ZEL::Generic {

IteratorPtr SequenceIntf::generic_iteratorAt(Deviant deviant, int index) const {
    auto iterator = generic_begin(deviant);
    for (int i = 0; i < index; ++i) {
        iterator->next(deviant);
    }
    return iterator;
}

int SequenceIntf::generic_fetch(Deviant, int, NSInterface::ObjectIntf **, int) const { return -1; }

int SequenceIntf::generic_indexOf(Deviant deviant, Ref element) const {
    auto const end = generic_end(deviant);
    int index = 0;
    for (auto iterator = generic_begin(deviant); !iterator->equal(end.get()); iterator->next(deviant), ++index) {
        if (iterator->current(deviant).isSameElement(element)) {
            return index;
        }
    }
    return -1;
}

bool SequenceIntf::generic_eraseElement(Deviant deviant, Ref element) {
    int const index = generic_indexOf(deviant, std::move(element));
    if (index < 0) {
        return false;
    }
    generic_erase(deviant, index);
    return true;
}

Ref SequenceIntf::generic_atPlace(Deviant, Place) const { raiseAnInternalError(); }

Place SequenceIntf::generic_placeAfter(Deviant, Place) const { raiseAnInternalError(); }

Place SequenceIntf::generic_placeBefore(Deviant, Place) const { raiseAnInternalError(); }

IteratorPtr SequenceIntf::generic_iteratorAtPlace(Deviant, Place) const { raiseAnInternalError(); }

} // namespace ZEL::Generic
