#pragma once

#include <string>
#include <vector>

namespace clitest {

/// What a run of the program leaves behind.
struct Outcome {
    int exitCode = -1; ///< minus the signal's number if the program was ended by one
    std::string out;
    std::string error;
};

/// Runs the program as a user does. `standardOutput` names a file to write to in place of what `Outcome::out` gives.
[[nodiscard]] Outcome runZel(std::vector<std::string> const & arguments,
                             std::string const & standardOutput = std::string());

} // namespace clitest
