#pragma once

#include <ZEL/Export.h>
#include <ZEL/String.h>
#include <ZEL/base/SmartPtr.h>

#include <cstdint>
#include <string_view>
#include <type_traits>

namespace ZEL::internal {

/// A text in a state: one pointer to a counted record, null for the empty text, so that copying a state and holding its
/// history cost a counter and not a copy. A record that several hold does not change.
class ZEL_API TextField {
public:
    TextField() noexcept = default;
    explicit TextField(std::string_view text) { set(text); }

    void set(std::string_view text);
    void clear() noexcept { fRecord = nullptr; }
    [[nodiscard]] bool isEmpty() const noexcept { return !fRecord; }
    [[nodiscard]] std::string_view view() const noexcept {
        return isEmpty() ? std::string_view() : std::string_view(fRecord->text(), fRecord->size);
    }
    [[nodiscard]] String get() const { return String(view()); }

private:
    struct Record {
        std::uint32_t count;
        std::uint32_t size;
        [[nodiscard]] char const * text() const noexcept { return reinterpret_cast<char const *>(this + 1); }
        [[nodiscard]] char * text() noexcept { return reinterpret_cast<char *>(this + 1); }
    };
    struct Counting {
        static void retain(Record * record) noexcept { ++record->count; }
        static void release(Record * record) noexcept {
            if (--record->count == 0) {
                destroy(record);
            }
        }
    };
    static void destroy(Record * record) noexcept;

    Generic::SmartPtr<Record, Counting> fRecord;
};

// States are copied where nothing may fail.
static_assert(std::is_nothrow_copy_constructible_v<TextField> && std::is_nothrow_copy_assignable_v<TextField>);

} // namespace ZEL::internal
