#pragma once

#include <unistd.h>

#include <utility>

namespace ZEL {

/// An open file of the system's. Closes it.
class Descriptor {
public:
    Descriptor() = default;
    /// Takes what `open` returned, a failure too.
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
    /// False if the system could not take what was written.
    bool close() noexcept { return !isOpen() || ::close(std::exchange(fNumber, -1)) == 0; }

private:
    int fNumber = -1;
};

} // namespace ZEL
