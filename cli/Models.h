#pragma once

#include "ReadSettings.h"
#include "Text.h"

#include <ZEL/interchange/ToolForm.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/serializer/XmiFormat.h>
#include <ZEL/serializer/reader/ReadReport.h>

#include <string>
#include <utility>
#include <vector>

/// Models and their files.
namespace cli {

struct OpenModel {
    ZEL::Model model;
    std::vector<ZEL::Model> companions;      ///< the models of the files that it refers to
    std::vector<std::string> companionPaths; ///< where these files lie; empty for those that are no local files
    ZEL::Serializer::ReadReport losses;      ///< the content of all these files that did not reach a model
};

/// Reads the file, which may be that of another tool, and packed. Files that it refers to and that cannot be read are
/// left out. Throws `Trouble` if there is no model in the file.
[[nodiscard]] OpenModel openModel(std::string const & file, ReadSettings settings = {});
/// The same; also prints a line on standard error that sums up what was lost.
[[nodiscard]] OpenModel readModel(std::string const & file, ReadSettings const & settings = {});

/// Those that two models of files refer to both: the same file, or a copy of it. The first model's first.
[[nodiscard]] std::vector<std::pair<ZEL::Model, ZEL::Model>> companionsOfBoth(OpenModel const & first,
                                                                              OpenModel const & second);

/// Makes links of the model, once it is written to `output`, lead from the folder of `versionOf` to where they lead
/// now.
void linkFrom(OpenModel const & opened, std::string const & output, std::string const & versionOf);

/// Throws `Trouble` if the file cannot be written. It is then unchanged, and no other file is left, unless the text
/// says so.
void writeModel(std::string const & file, ZEL::Model const & model,
                ZEL::Serializer::XmiFormat format = ZEL::Serializer::XmiFormat::Standard);
/// The same in the form of another tool. The model must be one of UML.
void writeModel(std::string const & file, ZEL::Model const & model, ZEL::Interchange::ToolForm form);
/// The same in one of `outputFormats`.
void writeModelAs(std::string const & format, std::string const & file, ZEL::Model const & model);
[[nodiscard]] std::vector<std::string> const & outputFormats();
[[nodiscard]] ZEL::Serializer::XmiFormat dialectOf(std::string const & format);

/// The metamodel of that URI or prefix, registered. Throws `Trouble` if there is none.
[[nodiscard]] ZEL::Model metamodelOf(std::string const & uriOrPrefix);

/// The class of the object, its name if it has one, and its identity: "Class 'library.Book' (..._17)".
[[nodiscard]] std::string describe(ZEL::ImmutableClassObject const & object);

} // namespace cli
