#pragma once

#include <hasp_util/XmlBytes.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace HASP {

/// The file that an `XmlWriter` writes, with a buffer that grows while a tag is open.
///
/// Errors of the file are not thrown: the first one is remembered, and all later output is discarded.
class XmlOutputFile {
public:
    /// Creates or empties the file. A symbolic link is refused.
    explicit XmlOutputFile(std::string const & fileName);
    ~XmlOutputFile();
    XmlOutputFile(XmlOutputFile const &) = delete;
    XmlOutputFile & operator=(XmlOutputFile const &) = delete;

    void put(std::string_view text) { fEnd += text.copy(room(text.size()), text.size()); }
    void put(char c) {
        *room(1) = c;
        ++fEnd;
    }
    void putBlanks(std::size_t count) {
        std::memset(room(count), ' ', count);
        fEnd += count;
    }
    /// Room for `size` more bytes at the end of the buffer, and for a whole `XmlBytes` from any of them on. What is
    /// written there counts once `advance` says so.
    [[nodiscard]] char * room(std::size_t size) {
        if (static_cast<std::size_t>(fLimit - fEnd) < size) {
            grow(size);
        }
        return fEnd;
    }
    void advance(std::size_t size) noexcept { fEnd += size; }

    /// Places in the buffer, valid until it is flushed.
    [[nodiscard]] std::size_t position() const noexcept { return static_cast<std::size_t>(fEnd - fBuffer.get()); }
    [[nodiscard]] std::string_view since(std::size_t position) const noexcept {
        return {fBuffer.get() + position, this->position() - position};
    }
    [[nodiscard]] std::string_view slice(std::size_t position, std::size_t size) const noexcept {
        return {fBuffer.get() + position, size};
    }
    void rewindTo(std::size_t position) noexcept { fEnd = fBuffer.get() + position; }

    [[nodiscard]] bool isFull() const noexcept { return position() >= flushSize; }
    void flush() noexcept;
    void close() noexcept;
    [[nodiscard]] bool good() const noexcept { return fError == 0; }
    /// The system's error number, 0 for none.
    [[nodiscard]] int error() const noexcept { return fError; }

private:
    static constexpr std::size_t flushSize = 128 * 1024;

    void grow(std::size_t size);

    std::unique_ptr<char[]> fBuffer;
    char * fEnd;
    char * fLimit; ///< from where on the buffer has but the room that `room` promises beyond its size
    int fDescriptor;
    int fError = 0;
};

} // namespace HASP
