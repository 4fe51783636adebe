#pragma once

#include <ZEL/interchange/FileFinder.h>
#include <ZEL/serializer/reader/XmiReaderSettings.h>

#include <vector>

namespace cli {

/// How a command reads files, and where their links lead.
struct ReadSettings : ZEL::Serializer::XmiReaderSettings {
    std::vector<ZEL::Interchange::Place> places;
};

} // namespace cli
