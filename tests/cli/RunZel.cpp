#include "cli/RunZel.h"

#include "host/TemporaryFolder.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <stdexcept>

extern char ** environ;

namespace clitest {

Outcome runZel(std::vector<std::string> const & arguments, std::string const & standardOutput) {
    TemporaryFolder const folder;
    std::string const out = standardOutput.empty() ? folder.path("out") : standardOutput;

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, folder.path("error").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);

    std::vector<std::string> texts{ZEL_PROGRAM};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char *> pointers;
    for (std::string & text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);

    pid_t process = 0;
    int const failure = ::posix_spawn(&process, ZEL_PROGRAM, &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (failure != 0 || ::waitpid(process, &status, 0) != process) {
        throw std::runtime_error("cannot run " ZEL_PROGRAM);
    }
    int const code = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return {code, standardOutput.empty() ? folder.content("out") : std::string(), folder.content("error")};
}

} // namespace clitest
