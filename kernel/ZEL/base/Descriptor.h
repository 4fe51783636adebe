#pragma once

#include <unistd.h>

#include <utility>

namespace ZEL {

/// Owner of an open file descriptor of the system.
class Descriptor {
public:
    Descriptor() = default;
    /// Takes the result of `open`, even a failure.
    explicit Descriptor(int number) noexcept : fNumber(number) {}
    ~Descriptor() { close(); }
    Descriptor(Descriptor && other) noexcept : fNumber(std::exchange(other.fNumber, -1)) {}
    Descriptor & operator=(Descriptor && other) noexcept {
        std::swap(fNumber, other.fNumber);
        return *this;
    }
    Descriptor(Descriptor const &) = delete;
    Descriptor & operator=(Descriptor const &) = delete;

    [[nodiscard]] bool isOpen() const noexcept { return fNumber >= 0; }
    [[nodiscard]] int get() const noexcept { return fNumber; }
    /// False if the system could not store what was written.
    bool close() noexcept { return !isOpen() || ::close(std::exchange(fNumber, -1)) == 0; }

private:
    int fNumber = -1;
};

} // namespace ZEL
