#pragma once

#include <chrono>
#include <string>

namespace cli {

/// Says on standard error what is being done, and for how many seconds, from the first second until the end of the block;
/// only if that is a terminal. The line is gone at the end. Of several at a time the first one is shown.
///
/// A timer's signal writes the line, so the work neither knows of it nor pays for it.
class Progress {
public:
    using Clock = std::chrono::steady_clock::time_point (*)();

    /// The clock is asked within the signal's handler.
    explicit Progress(
        std::string const & work, Clock clock = [] { return std::chrono::steady_clock::now(); });
    ~Progress();
    Progress(Progress const &) = delete;
    Progress & operator=(Progress const &) = delete;

private:
    bool fIsOn;
};

} // namespace cli
