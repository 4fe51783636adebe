#pragma once

#include <functional>
#include <string>

/// Checks of the files of a command before it begins.
namespace cli {

/// Throws `Trouble` if no model can be read from the file: it is not a plain file, or may not be read.
void requireReadable(std::string const & file);
/// Throws `Trouble` if the name cannot be that of a file to write, or if its folder does not exist or may not be
/// written.
void requireWritable(std::string const & file);

/// The name without ".html" at its end.
[[nodiscard]] std::string withoutPageEnding(std::string const & page);
/// The file of the page of that name: the name with ".html". Throws `Trouble` as `requireWritable` does.
[[nodiscard]] std::string writablePage(std::string const & name);

/// Puts a page into place that `write` writes into the file of the name that it is given. Throws `Trouble` if that
/// fails; what was there before is still there then.
void putPage(std::string const & page, std::function<void(std::string const &)> const & write);

/// Whether both are names of the same existing file.
[[nodiscard]] bool areSameFile(std::string const & a, std::string const & b);
/// Whether both files can be read and contain the same bytes.
[[nodiscard]] bool haveSameContent(std::string const & a, std::string const & b);

} // namespace cli
