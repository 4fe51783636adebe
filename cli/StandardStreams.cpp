#include "StandardStreams.h"

#include "Command.h"
#include "Text.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <iostream>
#include <system_error>

namespace cli {
namespace {

constexpr std::size_t kBlock = 65536;

/// The null device, opened for the wrong direction, fails as the closed stream would.
void occupyClosedStreams() {
    for (int number = STDIN_FILENO; number <= STDERR_FILENO; ++number) {
        if (::fcntl(number, F_GETFD) == -1 && errno == EBADF) {
            static_cast<void>(::open("/dev/null", number == STDIN_FILENO ? O_WRONLY : O_RDONLY));
        }
    }
}

/// Returns the system's error number, 0 for none.
int writeAll(int stream, std::string_view text) {
    while (!text.empty()) {
        ssize_t const written = ::write(stream, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) {
            pollfd waiting{stream, POLLOUT, 0};
            ::poll(&waiting, 1, -1);
        } else if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}

} // namespace

StandardStreams::StandardStreams() : fIsTerminal(false), fDiesOfBrokenPipe(false) {
    occupyClosedStreams();
    fDiesOfBrokenPipe = std::signal(SIGPIPE, SIG_IGN) == SIG_DFL;
    std::signal(SIGXFSZ, SIG_IGN);
    fIsTerminal = ::isatty(STDOUT_FILENO) == 1;
    fFormerBuffer = std::cout.rdbuf(this);
    std::cout.exceptions(std::ios::badbit);
    std::cerr.tie(nullptr);
}

StandardStreams::~StandardStreams() {
    std::cout.exceptions(std::ios::goodbit);
    std::cout.rdbuf(fFormerBuffer);
}

void StandardStreams::flush() {
    int const error = writeAll(STDOUT_FILENO, fPending);
    fPending.clear();
    if (error != 0) {
        throw OutputFailure{error};
    }
}

int StandardStreams::exitAfter(OutputFailure const & failure) {
    if (failure.error == EPIPE && fDiesOfBrokenPipe) {
        std::signal(SIGPIPE, SIG_DFL);
        std::raise(SIGPIPE);
    }
    complain("cannot write the results to standard output: " + std::generic_category().message(failure.error));
    return InTrouble;
}

StandardStreams::int_type StandardStreams::overflow(int_type character) {
    if (!traits_type::eq_int_type(character, traits_type::eof())) {
        char const text = traits_type::to_char_type(character);
        xsputn(&text, 1);
    }
    return traits_type::not_eof(character);
}

std::streamsize StandardStreams::xsputn(char const * text, std::streamsize count) {
    fPending.append(text, static_cast<std::size_t>(count));
    bool const endsLine = fIsTerminal && std::find(text, text + count, '\n') != text + count;
    if (fPending.size() >= kBlock || endsLine) {
        flush();
    }
    return count;
}

int StandardStreams::sync() {
    flush();
    return 0;
}

void complain(std::string_view text) {
    // In one piece, so that lines of several programs do not mix. If it cannot be written, there is nobody to tell.
    static_cast<void>(writeAll(STDERR_FILENO, "zel: " + printable(text) + '\n'));
}

} // namespace cli
