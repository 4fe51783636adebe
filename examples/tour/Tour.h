#pragma once

#include "Narrator.h"

#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/metamodel/Model.h>

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

/// The main job, shown step by step on a model file: what a modelling application does with a model from opening to
/// saving it.
namespace tour {

/// Runs all steps on the file, which must contain a model of the built-in metamodel with two classes that have
/// attributes, and prints them on `out`. The file is only read. Throws a `Failure` for the first claim that does not
/// hold or for which the library throws; what the library throws for the file itself is passed on.
void run(std::string const & file, std::ostream & out);

/// What the steps work on.
struct Session {
    ZEL::MetaModel library;             ///< the model of the file
    std::vector<ZEL::Model> companions; ///< the models of the files that it refers to
    std::filesystem::path folder;       ///< for the tour's own files, which are removed with it
    std::filesystem::path savedFile;    ///< where the model is saved
};

// Each leaves the model as it found it, except for the place where it is saved.
void readFiles(Narrator & narrator, Session & session, std::string const & file);
void makeSecondModel(Narrator & narrator);
void editInTransaction(Narrator & narrator, Session & session);
void vetoCommit(Narrator & narrator, Session & session);
void undoAndRedo(Narrator & narrator, Session & session);
void undoCreation(Narrator & narrator, Session & session);
void workInDeviant(Narrator & narrator, Session & session);
void saveAndReadAgain(Narrator & narrator, Session & session);
void mergeFile(Narrator & narrator, Session & session);
void refuseMalformedFile(Narrator & narrator, Session & session);

} // namespace tour
