#include "cli/RunZel.h"

#include "host/TemporaryFolder.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace clitest {
namespace {

constexpr int kPatience = 20'000; // milliseconds

/// A program that is to run with the streams and in the folder that the caller sets.
class Spawn {
public:
    Spawn() {
        ::posix_spawn_file_actions_init(&fActions);
        ::posix_spawnattr_init(&fAttributes);
        ::posix_spawn_file_actions_addopen(&fActions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        sigset_t signals;
        ::sigemptyset(&signals);
        ::sigaddset(&signals, SIGPIPE); // as in a shell, whatever it is here
        ::posix_spawnattr_setsigdefault(&fAttributes, &signals);
        ::posix_spawnattr_setflags(&fAttributes, POSIX_SPAWN_SETSIGDEF);
    }
    ~Spawn() {
        ::posix_spawn_file_actions_destroy(&fActions);
        ::posix_spawnattr_destroy(&fAttributes);
    }
    Spawn(Spawn const &) = delete;
    Spawn & operator=(Spawn const &) = delete;

    void runIn(std::string const & folder) { ::posix_spawn_file_actions_addchdir_np(&fActions, folder.c_str()); }
    void open(int stream, std::string const & file) {
        ::posix_spawn_file_actions_addopen(&fActions, stream, file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    }
    void take(int stream, int descriptor) { ::posix_spawn_file_actions_adddup2(&fActions, descriptor, stream); }

    [[nodiscard]] pid_t start(std::string const & program, std::vector<std::string> arguments) {
        std::string const path = std::filesystem::path(ZEL_PROGRAM).parent_path().string() + ":/usr/bin:/bin";
        std::vector<std::string> environment{"PATH=" + path, "TERM=xterm", "LC_ALL=C"};
        for (char const * name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "TMPDIR"}) {
            if (char const * const value = std::getenv(name)) {
                environment.push_back(std::string(name) + '=' + value);
            }
        }
        arguments.insert(arguments.begin(), program);
        pid_t process = 0;
        if (::posix_spawn(&process, program.c_str(), &fActions, &fAttributes, pointersTo(arguments).data(),
                          pointersTo(environment).data()) != 0) {
            throw std::runtime_error("cannot run " + program);
        }
        return process;
    }

private:
    static std::vector<char *> pointersTo(std::vector<std::string> & texts) {
        std::vector<char *> pointers;
        for (std::string & text : texts) {
            pointers.push_back(text.data());
        }
        pointers.push_back(nullptr);
        return pointers;
    }

    posix_spawn_file_actions_t fActions{};
    posix_spawnattr_t fAttributes{};
};

int waitFor(pid_t process) {
    int status = 0;
    if (::waitpid(process, &status, 0) != process) {
        throw std::runtime_error("the program is lost");
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

} // namespace

Outcome runZel(std::vector<std::string> const & arguments, std::string const & standardOutput) {
    TemporaryFolder const folder;
    Spawn spawn;
    spawn.open(STDOUT_FILENO, standardOutput.empty() ? folder.path("out") : standardOutput);
    spawn.open(STDERR_FILENO, folder.path("error"));
    int const code = waitFor(spawn.start(ZEL_PROGRAM, arguments));
    return {code, folder.content("out"), folder.content("error")};
}

Outcome runShell(std::string const & line, std::string const & folder) {
    TemporaryFolder const results;
    Spawn spawn;
    spawn.runIn(folder);
    spawn.open(STDOUT_FILENO, results.path("out"));
    spawn.open(STDERR_FILENO, results.path("error"));
    int const code = waitFor(spawn.start("/bin/sh", {"-c", line}));
    return {code, results.content("out"), results.content("error")};
}

Outcome runZelUnread(std::vector<std::string> const & arguments) {
    TemporaryFolder const folder;
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("cannot make a pipe");
    }
    ::close(ends[0]);
    Spawn spawn;
    spawn.take(STDOUT_FILENO, ends[1]);
    spawn.open(STDERR_FILENO, folder.path("error"));
    int const code = waitFor(spawn.start(ZEL_PROGRAM, arguments));
    ::close(ends[1]);
    return {code, std::string(), folder.content("error")};
}

LiveRun::LiveRun(std::vector<std::string> const & arguments) {
    int program = -1;
    if (::openpty(&fTerminal, &program, nullptr, nullptr, nullptr) != 0) {
        throw std::runtime_error("cannot make a terminal");
    }
    ::fcntl(fTerminal, F_SETFD, FD_CLOEXEC);
    ::fcntl(program, F_SETFD, FD_CLOEXEC);
    Spawn spawn;
    spawn.open(STDOUT_FILENO, "/dev/null");
    spawn.take(STDERR_FILENO, program);
    fProcess = spawn.start(ZEL_PROGRAM, arguments);
    ::close(program);
}

LiveRun::~LiveRun() {
    if (fProcess != 0) {
        send(SIGKILL);
        ::waitpid(fProcess, nullptr, 0);
    }
    ::close(fTerminal);
}

std::string const & LiveRun::waitFor(std::string const & text) {
    pollfd waiting{fTerminal, POLLIN, 0};
    std::array<char, 256> buffer{};
    while (fSent.find(text) == std::string::npos && ::poll(&waiting, 1, kPatience) == 1) {
        ssize_t const count = ::read(fTerminal, buffer.data(), buffer.size());
        if (count <= 0) {
            break; // the program has closed its side
        }
        fSent.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return fSent;
}

void LiveRun::send(int signal) const { ::kill(fProcess, signal); }

Outcome LiveRun::finish() {
    static_cast<void>(waitFor("\n\n\n")); // which never comes
    int const code = clitest::waitFor(fProcess);
    fProcess = 0;
    return {code, std::string(), fSent};
}

} // namespace clitest
