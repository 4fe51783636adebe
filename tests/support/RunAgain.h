#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <string>

namespace ZEL::tests {

struct Run {
    int status = -1;
    std::string output;
};

/// Runs tests of this executable in a process of their own; `prefix` may set variables of its environment.
inline Run runAgain(std::string const & filter, std::string const & prefix = std::string()) {
    std::array<char, 4096> text{};
    EXPECT_GT(readlink("/proc/self/exe", text.data(), text.size() - 1), 0);
    std::string const command = prefix + " '" + text.data() + "' --gtest_filter=" + filter + " 2>&1";
    Run run;
    if (std::FILE * const pipe = popen(command.c_str(), "r")) {
        while (std::fgets(text.data(), text.size(), pipe) != nullptr) {
            run.output += text.data();
        }
        run.status = pclose(pipe);
    }
    return run;
}

} // namespace ZEL::tests
