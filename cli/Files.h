#pragma once

#include <string>

/// What can be said of the files that a command is to work on before it begins.
namespace cli {

/// Raises `Trouble` if a model cannot be read from there: no plain file, or none that may be read.
void requireReadable(std::string const & file);
/// Raises `Trouble` for what is no name of a file to write, and for a folder that is not there or takes no files.
void requireWritable(std::string const & file);

/// The file of the page of that name, which ends in ".html". Throws `Trouble` as `requireWritable` does.
[[nodiscard]] std::string writablePage(std::string const & name);

/// The path in a URI of a local file; empty for another URI.
[[nodiscard]] std::string pathOf(std::string const & uri);
/// Whether both are names of one file that exists.
[[nodiscard]] bool areSameFile(std::string const & a, std::string const & b);
/// Whether both files can be read and hold the same bytes.
[[nodiscard]] bool haveSameContent(std::string const & a, std::string const & b);

} // namespace cli
