#include "cli/CliTest.h"

#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>

namespace ZEL::tests::cli {
namespace {

constexpr int kPatience = 20'000; // milliseconds

std::string scriptOf(std::string const & line, std::string const & folder) {
    return "cd '" + folder + "' && export PATH='" ZEL_PROGRAM_FOLDER ":/usr/bin:/bin' TERM=xterm LC_ALL=C\n" + line;
}

int codeOf(int status) { return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status); }

} // namespace

Outcome runShell(std::string const & line, std::string const & folder) {
    TemporaryFolder const results;
    ::signal(SIGPIPE, SIG_DFL); // as in a terminal, whatever it is here
    std::string const streams = "exec </dev/null >'" + results.path("out") + "' 2>'" + results.path("error") + "'\n";
    int const code = codeOf(std::system((streams + scriptOf(line, folder)).c_str()));
    return {code, results.content("out"), results.content("error")};
}

LiveRun::LiveRun(std::string const & command, std::string const & folder) {
    std::string const script = scriptOf("exec " + command + " >/dev/null", folder);
    fProcess = ::forkpty(&fTerminal, nullptr, nullptr, nullptr);
    if (fProcess == 0) {
        ::execl("/bin/sh", "sh", "-c", script.c_str(), nullptr);
        ::_exit(127);
    }
    if (fProcess < 0) {
        throw std::runtime_error("cannot make a terminal");
    }
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
    int status = 0;
    ::waitpid(fProcess, &status, 0);
    fProcess = 0;
    return {codeOf(status), std::string(), fSent};
}

} // namespace ZEL::tests::cli
