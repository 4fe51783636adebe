#include "support/XmiSample.h"

#include "support/SampleModel.h"

#include <ZEL/serializer/writer/XmiWriter.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <system_error>

namespace ZEL::bench {

std::string temporaryPath(std::string const & name) {
    return (std::filesystem::temp_directory_path() / ("zel-benchmarks-" + std::to_string(getpid()) + "-" + name))
        .string();
}

std::string fileText(std::string const & path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    std::string text(file ? static_cast<std::size_t>(file.tellg()) : 0, '\0');
    if (!file.seekg(0).read(text.data(), static_cast<std::streamsize>(text.size()))) {
        throw std::runtime_error("cannot read " + path);
    }
    return text;
}

XmiSample::XmiSample(int packages) : fPackages(packages), fPath(temporaryPath("sample.xmi")) {
    SampleModel & sample = SampleModel::shared(packages);
    if (!Serializer::XmiWriter().write(fPath, sample.model)) {
        throw std::runtime_error("cannot write " + fPath);
    }
    fText = fileText(fPath);
}

XmiSample::~XmiSample() {
    std::error_code ignored;
    std::filesystem::remove(fPath, ignored);
}

XmiSample const & XmiSample::shared(int packages) {
    static std::unique_ptr<XmiSample> kept;
    if (kept == nullptr || kept->packages() != packages) {
        kept.reset();
        kept = std::make_unique<XmiSample>(packages);
    }
    return *kept;
}

} // namespace ZEL::bench
