#pragma once

#include <functional>
#include <string>

namespace peers {

using Step = std::function<void()>;

/// Measures how much wall time `timed` takes and prints its cost for each of `count` in nanoseconds, in a line with the
/// name. `before` and `after` are done with each round and not timed; they may be empty.
///
/// The cost is the median of the rounds that fit into the budget, five at least. The environment variable BUDGET sets
/// the budget of a measure in seconds; without it, 0.7.
void measure(std::string const & name, double count, Step const & before, Step const & timed, Step const & after);
void measure(std::string const & name, double count, Step const & timed);
/// Prints a cost in a line with its name.
void report(std::string const & name, double cost);

} // namespace peers
