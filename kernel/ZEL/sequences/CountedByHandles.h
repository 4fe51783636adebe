#pragma once

#include <ZEL/base/Exception.h>
#include <ZEL/sequences/ShortLived.h>

#include <cstdint>

namespace ZEL::Generic {

/// An object of interface `Intf` that lives by a count. `numRef` stays 0: the count is private.
template <class Intf> class ZEL_API CountedByHandles : public Intf, public internal::ShortLived {
public:
    /// Throws "An Internal Error has occurred" on a negative count.
    void incRef() override {
        if (fCount < 0) {
            raiseAnInternalError();
        }
        ++fCount;
    }
    /// Deletes the object at 0; throws "An Internal Error has occurred" below it.
    void decRef() override {
        if (--fCount < 0) {
            raiseAnInternalError();
        }
        if (fCount == 0) {
            released();
        }
    }

protected:
    CountedByHandles() = default;
    CountedByHandles(CountedByHandles const & other) : Intf(other) {} ///< a copy is a new object: its count is 0
    CountedByHandles & operator=(CountedByHandles const &) = delete;

    /// What is done at 0. A class of which many objects are needed, each for a moment, may keep some instead.
    virtual void released() { delete this; }

private:
    std::int32_t fCount = 0;
};

} // namespace ZEL::Generic
