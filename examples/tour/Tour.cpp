#include "Tour.h"

#include <ZEL/String.h>
#include <ZEL/base/LeakChecker.h>
#include <ZEL/metamodel/MetaModelRegistry.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace tour {
namespace {

/// A folder that goes, with all that is in it, at the end of the block.
class WorkFolder {
public:
    WorkFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "zel-tour-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            throw std::system_error(errno, std::generic_category(), "cannot make a folder " + pattern);
        }
        fPath = pattern;
    }
    ~WorkFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(fPath, ignored);
    }
    WorkFolder(WorkFolder const &) = delete;
    WorkFolder & operator=(WorkFolder const &) = delete;

    [[nodiscard]] std::filesystem::path const & path() const noexcept { return fPath; }

private:
    std::filesystem::path fPath;
};

/// Makes the models that files refer to known under their URIs, so that whoever reads such a file gets a link to the open
/// model and no copy of it.
class KnownModels {
public:
    explicit KnownModels(std::vector<ZEL::Model> const & models) {
        for (ZEL::Model const & model : models) {
            fUris.push_back(model.getUri());
            ZEL::MetaModelRegistry::instance()->bindUriToModel(fUris.back(), model);
        }
    }
    ~KnownModels() {
        for (std::string const & uri : fUris) {
            ZEL::MetaModelRegistry::instance()->unbindModelUri(uri);
        }
    }
    KnownModels(KnownModels const &) = delete;
    KnownModels & operator=(KnownModels const &) = delete;

private:
    std::vector<std::string> fUris;
};

void runSteps(Narrator & narrator, std::string const & file) {
    WorkFolder const folder;
    Session session;
    session.folder = folder.path();
    readFiles(narrator, session, file);
    makeSecondModel(narrator);
    editInTransaction(narrator, session);
    vetoCommit(narrator, session);
    undoAndRedo(narrator, session);
    undoCreation(narrator, session);
    workInDeviant(narrator, session);
    saveAndReadAgain(narrator, session);
    KnownModels const known(session.companions);
    mergeFile(narrator, session);
    refuseMalformedFile(narrator, session);
}

} // namespace

void run(std::string const & file, std::ostream & out) {
    Narrator narrator(out);
    try {
        ZEL::LeakChecker checker;
        checker.beginTrackLifetime();
        runSteps(narrator, file);
        narrator.step("Close everything");
        checker.endTrackLifetime();
        narrator.claim(true, "no object of any model is left: the leak account stands at zero");
    } catch (Failure const &) {
        throw;
    } catch (std::exception const & exception) {
        if (narrator.numberOfSteps() == 1) {
            throw; // the file, not the tour
        }
        throw Failure(narrator.place() + ": " + exception.what());
    }
    out << '\n' << narrator.numberOfClaims() << " claims held.\n";
}

} // namespace tour
