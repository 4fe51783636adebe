#pragma once

#include <streambuf>
#include <string>
#include <string_view>

namespace cli {

/// What ends the program when its results cannot be printed. No `std::exception`, so that nobody on the way takes it for
/// a failure of his own.
struct OutputFailure {
    int error; ///< the system's number
};

/// The program's standard streams, made for the length of `main`.
///
/// It stands behind `std::cout` and raises an `OutputFailure` as soon as what is printed there cannot be written, so that
/// a command does not work on for nobody; the temporary files of the command go on the way.
class StandardStreams : private std::streambuf {
public:
    /// Also sees to it that no file that is opened later takes the number of a closed stream, and that a write that
    /// fails is an error to be told and no signal that ends the program.
    StandardStreams();
    /// Drops what was not flushed.
    ~StandardStreams() override;
    StandardStreams(StandardStreams const &) = delete;
    StandardStreams & operator=(StandardStreams const &) = delete;

    /// Writes what was printed so far.
    void flush();
    /// How the program ends after the failure: as other programs do, by the signal, if it is that nobody reads its
    /// results any more.
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

/// A line on standard error: "zel: " and the text, made printable.
void complain(std::string_view text);

} // namespace cli
