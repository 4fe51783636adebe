#pragma once

#include <ZEL/serializer/reader/XmiReaderSettings.h>

#include <string>

/// Which metamodels are registered. UML and its profiles are only when something needs them, since loading them takes
/// longer than most commands.
namespace cli {

/// Registers the metamodels that the program always knows.
void registerSmallMetaModels();
/// Registers all that there are. Throws `Trouble` if those of UML cannot be loaded.
void registerAllMetaModels();
/// Registers all, unless it is certain that the file, with all files that it has links to, is read no differently
/// without those of UML. Goes over the bytes of these files once. Throws as `registerAllMetaModels` does.
void registerMetaModelsFor(std::string const & file, ZEL::Serializer::XmiReaderSettings const & settings);

} // namespace cli
