#pragma once

#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/serializer/XmiFormat.h>
#include <ZEL/serializer/XmiReaderSettings.h>

#include <string>
#include <vector>

namespace CLI {
class App;
}

/// Models and the files they are in.
namespace cli {

struct OpenModel {
    ZEL::Model model;
    std::vector<ZEL::Model> companions; ///< of the files that it refers to
};

/// Reads the file. Files that it refers to and that cannot be read are left out; what did not reach a model is told on
/// standard error. Raises `Trouble` if there is no model in the file.
[[nodiscard]] OpenModel readModel(std::string const & file, ZEL::Serializer::XmiReaderSettings settings = {});

/// Raises `Trouble` if the file could not be written.
void writeModel(std::string const & file, ZEL::Model const & model,
                ZEL::Serializer::XmiFormat format = ZEL::Serializer::XmiFormat::Standard);

/// Adds an option that takes the name of a format of files.
void addFormatOption(CLI::App & app, std::string const & name, ZEL::Serializer::XmiFormat & format,
                     std::vector<std::string> const & formats, std::string const & description);

/// The object and all that it contains, containers first.
[[nodiscard]] std::vector<ZEL::ImmutableClassObject> objectsOf(ZEL::ImmutableClassObject const & root);

/// The class of the object, its name if it has one, and its identity: "Class 'library.Book' (..._17)".
[[nodiscard]] std::string describe(ZEL::ImmutableClassObject const & object);

/// "1 object", "2 objects".
[[nodiscard]] std::string counted(std::size_t count, std::string const & noun);

} // namespace cli
