#pragma once

#include <ZEL/Export.h>
#include <ZEL/String.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>
#include <utility>

namespace ZEL::internal {

/// A text in a state. A short one, as most names are, stands in the field itself. A longer one is a counted record, so
/// that copying a state and holding its history cost a counter and not a copy; a record that several hold does not
/// change.
class ZEL_API TextField {
public:
    /// A text of more bytes has a record.
    static constexpr std::size_t kShort = 15;

    TextField() noexcept = default;
    explicit TextField(std::string_view text) { set(text); }
    TextField(TextField const & other) noexcept : fBytes(other.fBytes) {
        if (isLong()) {
            ++record()->count;
        }
    }
    TextField(TextField && other) noexcept : fBytes(std::exchange(other.fBytes, Bytes{})) {}
    constexpr ~TextField() { // so that there are constants with empty ones
        if (isLong()) {
            release();
        }
    }
    TextField & operator=(TextField other) noexcept {
        fBytes.swap(other.fBytes);
        return *this;
    }

    /// `text` may be a part of this text. Throws `std::length_error` at 4 GiB; nothing has changed then, nor if there
    /// is no memory.
    void set(std::string_view text);
    void clear() noexcept { *this = TextField(); }
    [[nodiscard]] bool isEmpty() const noexcept { return tag() == 0; }
    /// Good until the text changes, or the field ends.
    [[nodiscard]] std::string_view view() const noexcept {
        return isLong() ? std::string_view(record()->text(), longSize()) : std::string_view(fBytes.data(), tag());
    }
    [[nodiscard]] String get() const { return String(view()); }

private:
    struct Record {
        std::uint32_t count;
        std::uint32_t size;
        [[nodiscard]] char const * text() const noexcept { return reinterpret_cast<char const *>(this + 1); }
        [[nodiscard]] char * text() noexcept { return reinterpret_cast<char *>(this + 1); }
    };
    using Bytes = std::array<char, kShort + 1>;

    static constexpr unsigned char kLong = 0xFF;
    static constexpr std::size_t kSizeAt = sizeof(void *);

    /// The size of a short text, or `kLong`.
    [[nodiscard]] constexpr unsigned char tag() const noexcept { return static_cast<unsigned char>(fBytes[kShort]); }
    [[nodiscard]] constexpr bool isLong() const noexcept { return tag() == kLong; }
    [[nodiscard]] Record * record() const noexcept {
        Record * record = nullptr;
        std::memcpy(&record, fBytes.data(), kSizeAt);
        return record;
    }
    [[nodiscard]] std::uint32_t longSize() const noexcept {
        std::uint32_t size = 0;
        std::memcpy(&size, fBytes.data() + kSizeAt, sizeof(size));
        return size;
    }
    void setLong(std::string_view text);
    void release() noexcept;

    /// A short text, or the address of a record and then its size, which a reader needs first; the tag is last.
    alignas(Record *) Bytes fBytes{};
};

// States are copied where nothing may fail.
static_assert(std::is_nothrow_copy_constructible_v<TextField> && std::is_nothrow_copy_assignable_v<TextField>);
static_assert(sizeof(TextField) == 16);

} // namespace ZEL::internal
