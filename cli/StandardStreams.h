#pragma once

#include <streambuf>
#include <string>
#include <string_view>

namespace cli {

/// Ends the program when its results cannot be printed. Not a `std::exception`, so that no handler on the way takes it
/// for another failure.
struct OutputFailure {
    int error; ///< the system's number
};

/// The program's standard streams; exists during `main`.
///
/// It is the buffer of `std::cout` and throws an `OutputFailure` as soon as output cannot be written, so that a command
/// does not go on for nothing; unwinding removes its temporary files.
class StandardStreams : private std::streambuf {
public:
    /// Also makes sure that no file that is opened later gets the number of a closed stream, and that a failing write
    /// is reported as an error and does not end the program by a signal.
    StandardStreams();
    /// Discards what has not been flushed.
    ~StandardStreams() override;
    StandardStreams(StandardStreams const &) = delete;
    StandardStreams & operator=(StandardStreams const &) = delete;

    /// Writes what has been printed so far.
    void flush();
    /// Reports the failure and returns the exit code. If nobody reads the output any more, ends the program by a
    /// signal, as other programs do.
    [[nodiscard]] int exitAfter(OutputFailure const & failure);

private:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(char const * text, std::streamsize count) override;
    int sync() override;

    std::string fPending;
    std::streambuf * fFormerBuffer;
    bool fIsTerminal;
    bool fDiesOfBrokenPipe;
};

/// Prints a line on standard error: "zel: " and the text, made printable.
void complain(std::string_view text);

} // namespace cli
