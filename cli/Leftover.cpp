#include "Leftover.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <csignal>
#include <cstddef>

namespace cli {
namespace {

constexpr std::array<int, 3> kEndings{SIGHUP, SIGINT, SIGTERM};

/// The file's name, where the handler of a signal finds it; empty for none.
std::array<char, PATH_MAX> & fileToRemove() {
    static std::array<char, PATH_MAX> name{};
    return name;
}

void removeFile() noexcept {
    if (fileToRemove().front() != '\0') {
        ::unlink(fileToRemove().data());
    }
}

/// The handler stands for one signal only: raised again, it ends the program as it would have without.
void removeAndDie(int signal) {
    removeFile();
    ::raise(signal);
}

void handleEndings(void (*from)(int), void (*to)(int), int flags) {
    for (int const signal : kEndings) {
        struct sigaction present {};
        ::sigaction(signal, nullptr, &present);
        if (present.sa_handler == from) { // one that is ignored stays ignored
            struct sigaction action {};
            action.sa_handler = to;
            action.sa_flags = flags;
            ::sigaction(signal, &action, nullptr);
        }
    }
}

} // namespace

Leftover::Leftover(std::string const & file) {
    struct stat status {};
    bool const isNew = ::lstat(file.c_str(), &status) != 0;
    if (isNew && file.size() < fileToRemove().size()) {
        fileToRemove()[file.copy(fileToRemove().data(), file.size())] = '\0';
        handleEndings(SIG_DFL, removeAndDie, static_cast<int>(SA_RESETHAND));
    }
}

Leftover::~Leftover() {
    handleEndings(removeAndDie, SIG_DFL, 0);
    removeFile();
    keep();
}

void Leftover::keep() noexcept { fileToRemove().front() = '\0'; }

} // namespace cli
