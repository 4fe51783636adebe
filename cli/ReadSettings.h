#pragma once

#include <ZEL/interchange/FileFinder.h>
#include <ZEL/serializer/reader/XmiReaderSettings.h>

#include <string>
#include <vector>

namespace cli {

/// How a command reads files, and where their links lead.
struct ReadSettings : ZEL::Serializer::XmiReaderSettings {
    std::vector<ZEL::Interchange::Place> places;
    /// The file of which those that are read are versions, so that their links lead where its links do; empty if they
    /// lead where the files lie.
    std::string versionsOf;
};

} // namespace cli
