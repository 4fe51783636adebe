#pragma once

#include <array>
#include <cstdio>
#include <filesystem>
#include <string>

namespace ZEL::tests {

struct Run {
    int status = -1;
    std::string output;
};

/// Runs a command of the shell. Its standard error is not kept unless it says so itself.
inline Run run(std::string const & command) {
    Run result;
    if (std::FILE * const pipe = popen(command.c_str(), "r")) {
        std::array<char, 4096> text{};
        while (std::fgets(text.data(), text.size(), pipe) != nullptr) {
            result.output += text.data();
        }
        result.status = pclose(pipe);
    }
    return result;
}

/// Runs tests of this executable in a process of their own; `prefix` may set variables of its environment.
inline Run runAgain(std::string const & filter, std::string const & prefix = std::string()) {
    std::string const program = std::filesystem::read_symlink("/proc/self/exe").string();
    return run(prefix + " '" + program + "' --gtest_filter=" + filter + " 2>&1");
}

} // namespace ZEL::tests
