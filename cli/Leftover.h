#pragma once

#include <string>

namespace cli {

/// Removes a file at the end of the block, or when a signal ends the program before. A file that was there before the
/// block is none of ours and stays. One at a time.
class Leftover {
public:
    explicit Leftover(std::string const & file);
    ~Leftover();
    Leftover(Leftover const &) = delete;
    Leftover & operator=(Leftover const &) = delete;

    void keep() noexcept;
};

} // namespace cli
