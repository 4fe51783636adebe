#include "Stopwatch.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <vector>

namespace peers {

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point begin) { return std::chrono::duration<double>(Clock::now() - begin).count(); }

double budget() {
    char const * const text = std::getenv("BUDGET");
    return text == nullptr ? 0.7 : std::strtod(text, nullptr);
}

double median(std::vector<double> values) {
    auto const middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void runIfAny(Step const & step) {
    if (step) {
        step();
    }
}

double secondsOf(Step const & before, Step const & timed, Step const & after) {
    constexpr std::size_t least = 5;
    constexpr std::size_t most = 2000;
    double const limit = budget();
    std::vector<double> rounds;
    double total = 0;
    Clock::time_point const begin = Clock::now();
    // What is around the timed part may take its time too, but not without end.
    while (rounds.size() < least || (rounds.size() < most && total < limit && secondsSince(begin) < 4 * limit)) {
        runIfAny(before);
        Clock::time_point const roundBegin = Clock::now();
        timed();
        rounds.push_back(secondsSince(roundBegin));
        total += rounds.back();
        runIfAny(after);
    }
    return median(rounds);
}

} // namespace

void measure(std::string const & name, double count, Step const & before, Step const & timed, Step const & after) {
    report(name, secondsOf(before, timed, after) * 1e9 / count);
}

void measure(std::string const & name, double count, Step const & timed) { measure(name, count, {}, timed, {}); }

void report(std::string const & name, double cost) { std::cout << name << ' ' << cost << std::endl; }

} // namespace peers
