// A user's program that tells what differs between two models, merges two changes, and takes both back.
#include <ZEL/ZEL.h>
#include <ZEL/compare/Merge.h>
#include <ZEL/compare/Sentence.h>

#include <iostream>

int main() {
    ZEL::MetaModel const model(ZEL::FactoryRegistry::instance()->createModel("http://schema.omg.org/spec/MOF/2.0"));
    model.beginTransaction("a package");
    ZEL::Package const package = model.getFactoryFactory().createPackage("library");
    model.setTopPackage(package);
    model.commitTransaction();
    ZEL::MetaModel const base = model.createDeviantWithName("base");
    ZEL::MetaModel const theirs = model.createDeviantWithName("theirs");

    theirs.beginTransaction("rename");
    package.asDeviant(theirs).setName("archive");
    theirs.commitTransaction();
    for (ZEL::Compare::Difference const & difference : ZEL::Compare::diff(base, theirs)) {
        std::cout << sentenceOf(difference) << '\n';
    }
    bool const isMerged = ZEL::Compare::merge(base, model, theirs).empty() && package.getName() == "archive";
    model.undo();
    return isMerged && package.getName() == "library" ? 0 : 1;
}
