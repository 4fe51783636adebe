#include "CompareCommand.h"

#include "Models.h"

#include <ZEL/MetaModelRegistry.h>
#include <ZEL/String.h>
#include <ZEL/Transaction.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/tools/Comparator.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <system_error>

namespace cli {
namespace {

/// The path in a URI of a local file; empty for another URI.
std::filesystem::path pathOf(std::string const & uri) {
    std::string const scheme = "file://";
    std::string path;
    for (std::size_t i = uri.starts_with(scheme) ? scheme.size() : uri.size(); i < uri.size(); ++i) {
        unsigned char code = 0;
        bool const isEscape =
            uri[i] == '%' && i + 2 < uri.size() &&
            std::from_chars(uri.data() + i + 1, uri.data() + i + 3, code, 16).ptr == uri.data() + i + 3;
        path += isEscape ? static_cast<char>(code) : uri[i];
        i += isEscape ? 2 : 0;
    }
    return path;
}

bool haveSameContent(std::filesystem::path const & a, std::filesystem::path const & b) {
    std::ifstream first(a, std::ios::binary);
    std::ifstream second(b, std::ios::binary);
    using Bytes = std::istreambuf_iterator<char>;
    return first && second && std::equal(Bytes(first), Bytes(), Bytes(second), Bytes());
}

/// The models of the files that the first file refers to. Where the second file refers to one of these files, or to a copy
/// of it, its links lead to the objects of the same models; otherwise they would lead to others, which are different.
class SharedCompanions {
public:
    SharedCompanions(std::vector<ZEL::Model> const & models, std::filesystem::path const & secondFile) {
        for (ZEL::Model const & model : models) {
            std::error_code failure;
            if (!std::filesystem::equivalent(pathOf(model.getUri()), secondFile, failure)) {
                fUris.push_back(model.getUri());
                ZEL::MetaModelRegistry::instance()->bindUriToModel(fUris.back(), model);
            }
        }
    }
    ~SharedCompanions() {
        for (std::string const & uri : fUris) {
            ZEL::MetaModelRegistry::instance()->unbindModelUri(uri);
        }
    }
    SharedCompanions(SharedCompanions const &) = delete;
    SharedCompanions & operator=(SharedCompanions const &) = delete;

    /// The file of one of the models that stands for the file; empty if there is none.
    [[nodiscard]] std::string fileFor(std::string const & uri) const {
        for (std::string const & known : fUris) {
            if (haveSameContent(pathOf(known), pathOf(uri))) {
                return pathOf(known).string();
            }
        }
        return {};
    }

private:
    std::vector<std::string> fUris;
};

} // namespace

void CompareCommand::declare(CLI::App & app) {
    app.add_option("A", fFirst, "A model file")->required();
    app.add_option("B", fSecond, "Another one")->required();
}

ExitCode CompareCommand::run() {
    OpenModel const first = readModel(fFirst);
    SharedCompanions const companions(first.companions, fSecond);
    ZEL::Serializer::XmiReaderSettings settings;
    settings.setExternalUriResolver([&companions](std::string const & uri) { return companions.fileFor(uri); });
    OpenModel const second = readModel(fSecond, settings);

    // Where a model lies is one of its values; here it is not to matter.
    ZEL::Transaction transaction(second.model.getRootDeviant(), "same place");
    second.model.setUri(first.model.getUri());
    transaction.commit();

    ZEL::Comparator comparator(first.model, second.model);
    if (comparator.compare()) {
        std::cout << "equal: " << counted(objectsOf(first.model).size(), "object") << '\n';
        return Done;
    }
    std::cout << "different: " << describe(comparator.getFailedFirst()) << "\n           "
              << describe(comparator.getFailedSecond()) << '\n';
    return No;
}

} // namespace cli
