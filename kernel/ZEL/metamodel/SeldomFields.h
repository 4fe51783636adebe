#pragma once

#include <ZEL/base/ObjectPool.h>

#include <cstddef>
#include <cstdint>
#include <utility>

namespace ZEL::internal {

/// The fields of a state that few objects have values in, behind one pointer: they take room only with objects that
/// have written one of them.
///
/// `Fields` is a struct whose initial values are those of a new state. Copies share their values until one of them is
/// written, so that copying a state costs one counter, and never fails.
template <class Fields> class SeldomFields {
public:
    SeldomFields() noexcept = default;
    SeldomFields(SeldomFields const & other) noexcept : fRecord(other.fRecord) {
        if (fRecord != nullptr) {
            ++fRecord->count;
        }
    }
    SeldomFields(SeldomFields && other) noexcept : fRecord(std::exchange(other.fRecord, nullptr)) {}
    ~SeldomFields() { release(); }
    SeldomFields & operator=(SeldomFields other) noexcept {
        std::swap(fRecord, other.fRecord);
        return *this;
    }

    /// False as long as all values are the initial ones since none has been written.
    [[nodiscard]] bool isWritten() const noexcept { return fRecord != nullptr; }
    [[nodiscard]] Fields const & operator*() const noexcept { return fRecord != nullptr ? fRecord->fields : initial(); }
    [[nodiscard]] Fields const * operator->() const noexcept { return &**this; }
    /// The values of this state alone, to be written. Without memory for them it throws `std::bad_alloc`, and nothing
    /// has changed.
    [[nodiscard]] Fields & write() {
        if (fRecord == nullptr) {
            fRecord = new Record;
        } else if (fRecord->count > 1) {
            auto * const own = new Record{fRecord->fields};
            --fRecord->count;
            fRecord = own;
        }
        return fRecord->fields;
    }

private:
    struct Record {
        static void * operator new(std::size_t size) { return takeFromPool(size); }
        static void operator delete(void * memory, std::size_t size) noexcept { giveToPool(memory, size); }

        Fields fields;
        std::uint32_t count = 1;
    };

    /// Never destroyed: states are read for as long as there is a handle, and so after the statics have gone.
    [[nodiscard]] static Fields const & initial() noexcept {
        static Fields const & values = *new Fields;
        return values;
    }
    void release() noexcept {
        if (fRecord != nullptr && --fRecord->count == 0) {
            delete fRecord;
        }
    }

    Record * fRecord = nullptr;
};

} // namespace ZEL::internal
