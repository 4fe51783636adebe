#include "Progress.h"

#include "Text.h"

#include <sys/ioctl.h>
#include <sys/time.h>
#include <unistd.h>
#include <utf8.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace cli {
namespace {

constexpr std::size_t kRoomForTime = 16; // " ... 123456789 s"

/// What the signal's handler needs. It is changed only while there is no timer.
struct Line {
    bool isInUse = false;
    std::array<char, 512> text{}; ///< "\r" and the work
    std::size_t length = 0;
    Progress::Clock clock = nullptr;
    std::chrono::steady_clock::time_point start;
    volatile sig_atomic_t isShown = 0;
};

Line & theLine() {
    static Line line;
    return line;
}

/// The handler: nothing here allocates or locks.
void show(int /*signal*/) {
    int const formerError = errno;
    Line & line = theLine();
    auto const seconds = std::chrono::duration_cast<std::chrono::seconds>(line.clock() - line.start).count();
    if (seconds < 1) {
        errno = formerError;
        return; // a signal that somebody else has sent
    }
    std::array<char, 600> text{};
    char * end = std::copy_n(line.text.data(), line.length, text.data());
    end = std::copy_n(" ... ", 5, end);
    end = std::to_chars(end, text.data() + text.size(), seconds).ptr;
    end = std::copy_n(" s\033[K", 5, end);
    line.isShown = 1;
    static_cast<void>(!::write(STDERR_FILENO, text.data(), static_cast<std::size_t>(end - text.data())));
    errno = formerError;
}

void setTimer(int seconds) {
    itimerval interval{};
    interval.it_value.tv_sec = seconds;
    interval.it_interval.tv_sec = seconds;
    ::setitimer(ITIMER_REAL, &interval, nullptr);
}

void handleTimer(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGALRM, &action, nullptr);
}

bool isTerminal() {
    char const * const kind = std::getenv("TERM");
    return ::isatty(STDERR_FILENO) == 1 && kind != nullptr && std::string_view(kind) != "dumb";
}

/// How much of the text fits into one line of the terminal; more could not be erased.
std::size_t fitting(std::string const & text) {
    winsize size{};
    std::size_t const columns = ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0 ? size.ws_col : 80U;
    std::size_t length = std::min(columns > kRoomForTime ? columns - kRoomForTime - 1 : 0, theLine().text.size() - 1);
    if (length >= text.size()) {
        return text.size();
    }
    char const * const end = text.data() + length;
    return static_cast<std::size_t>(utf8::find_invalid(text.data(), end) - text.data()); // not into a character
}

} // namespace

Progress::Progress(std::string const & work, Clock clock) : fIsOn(isTerminal() && !theLine().isInUse) {
    if (!fIsOn) {
        return;
    }
    Line & line = theLine();
    std::string const text = printable(work);
    line.isInUse = true;
    line.isShown = 0;
    line.clock = clock;
    line.start = clock();
    line.text.front() = '\r';
    line.length = 1 + text.copy(line.text.data() + 1, fitting(text));
    handleTimer(show);
    setTimer(1);
}

Progress::~Progress() {
    if (!fIsOn) {
        return;
    }
    setTimer(0);
    handleTimer(SIG_IGN);
    Line & line = theLine();
    if (line.isShown != 0) {
        static_cast<void>(!::write(STDERR_FILENO, "\r\033[K", 4));
    }
    line.isInUse = false;
}

} // namespace cli
