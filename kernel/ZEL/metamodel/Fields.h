#pragma once

#include <ZEL/Export.h>
#include <ZEL/String.h>

#include <cstdint>
#include <string_view>
#include <utility>

namespace ZEL::internal {

/// A text in a state: one pointer to a counted, immutable record, null for the empty text, so that copying a state and
/// holding its history cost a counter and not a copy.
class ZEL_API TextField {
public:
    TextField() noexcept = default;
    explicit TextField(std::string_view text) { set(text); }
    TextField(TextField const & other) noexcept : fRecord(other.fRecord) { retain(); }
    TextField(TextField && other) noexcept : fRecord(std::exchange(other.fRecord, nullptr)) {}
    TextField & operator=(TextField const & other) noexcept {
        TextField(other).swap(*this);
        return *this;
    }
    TextField & operator=(TextField && other) noexcept {
        swap(other);
        return *this;
    }
    ~TextField() { release(); }

    void set(std::string_view text);
    void clear() noexcept { TextField().swap(*this); }
    [[nodiscard]] bool isEmpty() const noexcept { return fRecord == nullptr; }
    [[nodiscard]] std::string_view view() const noexcept {
        return fRecord == nullptr ? std::string_view() : std::string_view(fRecord->text(), fRecord->size);
    }
    [[nodiscard]] String get() const { return String(view()); }
    void swap(TextField & other) noexcept { std::swap(fRecord, other.fRecord); }

private:
    struct Record {
        std::uint32_t count;
        std::uint32_t size;
        [[nodiscard]] char const * text() const noexcept { return reinterpret_cast<char const *>(this + 1); }
        [[nodiscard]] char * text() noexcept { return reinterpret_cast<char *>(this + 1); }
    };
    void retain() noexcept {
        if (fRecord != nullptr) {
            ++fRecord->count;
        }
    }
    void release() noexcept {
        if (fRecord != nullptr && --fRecord->count == 0) {
            destroy(fRecord);
        }
    }
    static void destroy(Record * record) noexcept;

    Record * fRecord = nullptr;
};

} // namespace ZEL::internal
