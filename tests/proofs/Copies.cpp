#include "Copies.h"

#include "Changes.h"
#include "host/TemporaryFolder.h"

#include <ZEL/compare/Sentence.h>

#include <gtest/gtest.h>

namespace ZEL::tests::proofs {

Model copyOf(Model const & model) {
    TemporaryFolder const folder;
    EXPECT_TRUE(Serializer::XmiWriter().write(folder.path("m.xmi"), model));
    Model const copy(Serializer::XmiReader().read(folder.path("m.xmi")));
    tidy(copy);
    return copy;
}

void tidy(Model const & model) {
    model.beginTransaction("tidy");
    model.setUri("m");
    for (ClassObject const & object : model.getUnparented().toVector()) {
        object.destroy();
    }
    model.commitTransaction();
    model.getRootDeviant().clearUndoStack();
}

Model changedCopyOf(Subject const & subject, Model const & model, unsigned int seed, int changeCount) {
    Model const changed = copyOf(model);
    Changes changes(subject, changed, seed);
    changed.getRootDeviant().beginTransaction("change");
    changes.makeAny(changeCount);
    changed.getRootDeviant().commitTransaction();
    return copyOf(changed);
}

std::string told(Compare::Differences const & differences) {
    std::string lines;
    for (Compare::Difference const & difference : differences) {
        lines += Compare::sentenceOf(difference) + "\n";
    }
    return lines;
}

} // namespace ZEL::tests::proofs
