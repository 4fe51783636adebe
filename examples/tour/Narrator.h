#pragma once

#include <ostream>
#include <stdexcept>
#include <string>

namespace tour {

/// A claim of the tour that did not hold: which step, and what was claimed.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Prints the steps of the tour, and checks each claim.
class Narrator {
public:
    explicit Narrator(std::ostream & out) : fOut(out) {}

    void step(std::string const & title);
    /// In one line.
    void tell(std::string text);
    /// Prints the claim; throws a `Failure` if it does not hold.
    void claim(bool holds, std::string const & text);
    /// "step 3 (Edit in a named transaction)"; "the beginning" before the first step.
    [[nodiscard]] std::string place() const;
    [[nodiscard]] int numberOfSteps() const noexcept { return fStep; }
    [[nodiscard]] int numberOfClaims() const noexcept { return fClaims; }

private:
    std::ostream & fOut;
    std::string fTitle;
    int fStep = 0;
    int fClaims = 0;
};

} // namespace tour
