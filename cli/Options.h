#pragma once

#include <ZEL/serializer/XmiFormat.h>
#include <ZEL/serializer/reader/XmiReaderSettings.h>

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

/// Options whose wrong values are reported as "--option: found ..., expected ...".
namespace cli {

// Each adds an option for a whole number that is not negative.
CLI::Option & addNumber(CLI::App & app, std::string const & name, int & number, std::string const & description);
CLI::Option & addNumber(CLI::App & app, std::string const & name, unsigned int & number,
                        std::string const & description);

/// Adds an option for the name of a format of files.
void addFormat(CLI::App & app, std::string const & name, ZEL::Serializer::XmiFormat & format,
               std::vector<std::string> const & formats, std::string const & description);

/// Adds the option for the folder outside of which links may not open files.
void addRoot(CLI::App & app, ZEL::Serializer::XmiReaderSettings & settings);

/// The file that a command reads, and how it is read.
struct Input {
    std::string file;
    ZEL::Serializer::XmiReaderSettings settings;
};
/// Adds the argument for the file and the option for the root.
void addInput(CLI::App & app, Input & input);

} // namespace cli
