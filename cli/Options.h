#pragma once

#include "ReadSettings.h"

#include <ZEL/serializer/XmiFormat.h>

#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

/// Arguments of commands, and options, whose wrong values are reported as "--option: found ..., expected ...". They
/// keep the parser's header, which is long to compile, out of the commands.
namespace cli {

/// Adds an argument that must be there.
void addArgument(CLI::App & app, std::string const & name, std::string & text, std::string const & description);
/// Adds an argument or, if the name begins with two hyphens, an option, that may be missing. What `text` holds before
/// is the default. The help shows it, and `kind`, which says what the text is.
void addText(CLI::App & app, std::string const & name, std::string & text, std::string const & kind,
             std::string const & description);
/// Adds an option that must be there.
void addRequiredText(CLI::App & app, std::string const & name, std::string & text, std::string const & kind,
                     std::string const & description);
/// Adds an argument without a default that may be missing.
void addOptionalArgument(CLI::App & app, std::string const & name, std::optional<std::string> & text,
                         std::string const & description);

/// Adds an option for a text that can be given several times. The help shows `kind`, which says what the texts are.
void addTexts(CLI::App & app, std::string const & name, std::vector<std::string> & texts, std::string const & kind,
              std::string const & description);
/// Adds an option without a value: whether it is given.
void addFlag(CLI::App & app, std::string const & name, bool & isGiven, std::string const & description);

// Each adds an option for a whole number that is not negative. Unless it must be there, what `number` holds before is
// the default, which the help shows.
enum class Presence { Optional, Required };
void addNumber(CLI::App & app, std::string const & name, int & number, std::string const & description,
               Presence presence = Presence::Optional);
void addNumber(CLI::App & app, std::string const & name, unsigned int & number, std::string const & description,
               Presence presence = Presence::Optional);

/// Adds an option for one of these names of formats of files. What `format` holds before is the default.
void addFormat(CLI::App & app, std::string const & name, std::string & format, std::vector<std::string> const & formats,
               std::string const & description);

/// Adds the options for where links lead, and for the folder outside of which they may not open files.
void addLinks(CLI::App & app, ReadSettings & settings);

/// Adds the option for the file of which those that are read are versions.
void addVersionsOf(CLI::App & app, ReadSettings & settings);

/// The file that a command reads, and how it is read.
struct Input {
    std::string file;
    ReadSettings settings;
};
/// Adds the argument for the file and those for links.
void addInput(CLI::App & app, Input & input);

} // namespace cli
