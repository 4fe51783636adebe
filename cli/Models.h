#pragma once

#include "Text.h"

#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/serializer/XmiFormat.h>
#include <ZEL/serializer/reader/ReadReport.h>
#include <ZEL/serializer/reader/XmiReaderSettings.h>

#include <string>
#include <vector>

/// Models and the files they are in.
namespace cli {

struct OpenModel {
    ZEL::Model model;
    std::vector<ZEL::Model> companions; ///< of the files that it refers to
    ZEL::Serializer::ReadReport losses; ///< what of all these files did not reach a model
};

/// Reads the file, one of another tool too. Files that it refers to and that cannot be read are left out. Raises
/// `Trouble` if there is no model in the file.
[[nodiscard]] OpenModel openModel(std::string const & file, ZEL::Serializer::XmiReaderSettings settings = {});
/// The same; what was lost is summed up in a line on standard error.
[[nodiscard]] OpenModel readModel(std::string const & file, ZEL::Serializer::XmiReaderSettings const & settings = {});

/// Raises `Trouble` if the file could not be written; it is as it was then, and there is no other one.
void writeModel(std::string const & file, ZEL::Model const & model,
                ZEL::Serializer::XmiFormat format = ZEL::Serializer::XmiFormat::Standard);

/// The metamodel that is registered under the URI or the prefix. Raises `Trouble` if there is none.
[[nodiscard]] ZEL::Model metamodelOf(std::string const & uriOrPrefix);

/// The class of the object, its name if it has one, and its identity: "Class 'library.Book' (..._17)".
[[nodiscard]] std::string describe(ZEL::ImmutableClassObject const & object);

} // namespace cli
