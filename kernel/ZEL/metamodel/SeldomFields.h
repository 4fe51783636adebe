#pragma once

#include <ZEL/base/ObjectPool.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace ZEL::internal {

/// The values of a new state, which live as long as the process: states are read for as long as there is a handle, and
/// so after the statics have gone. Made at the first question, which throws `std::bad_alloc` without memory for them.
template <class Fields> struct InitialFields {
    [[nodiscard]] static Fields const & values() {
        static Fields const & made = *new Fields;
        return made;
    }
};

template <class Fields> constexpr bool canMakeConstant() {
    [[maybe_unused]] Fields const made{};
    return true;
}

/// A constant, which costs no question whether it is there: all but those of which one begins with a text.
template <class Fields>
requires requires { typename std::bool_constant<canMakeConstant<Fields>()>; }
struct InitialFields<Fields> {
    [[nodiscard]] static constexpr Fields const & values() noexcept { return kValues; }

private:
    static constexpr Fields kValues{};
};

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
    [[nodiscard]] Fields const & operator*() const noexcept(noexcept(InitialFields<Fields>::values())) {
        return fRecord != nullptr ? fRecord->fields : InitialFields<Fields>::values();
    }
    [[nodiscard]] Fields const * operator->() const noexcept(noexcept(InitialFields<Fields>::values())) {
        return &**this;
    }
    /// The values of this state alone, to be written. Without memory for them it throws `std::bad_alloc`, and nothing
    /// has changed.
    [[nodiscard]] Fields & write() {
        if (fRecord == nullptr || fRecord->count > 1) {
            separate();
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

    /// Makes the record this one's alone. Not inline: the many functions that write a field share it.
    [[gnu::noinline]] void separate() {
        if (fRecord == nullptr) {
            fRecord = new Record;
            return;
        }
        auto * const own = new Record{fRecord->fields};
        --fRecord->count;
        fRecord = own;
    }
    void release() noexcept {
        if (fRecord != nullptr && --fRecord->count == 0) {
            delete fRecord;
        }
    }

    Record * fRecord = nullptr;
};

} // namespace ZEL::internal
