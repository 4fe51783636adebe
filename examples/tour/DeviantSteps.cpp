// A deviant: a second version of the model beside the root.

#include "Look.h"
#include "Tour.h"

#include <ZEL/deviants/Transaction.h>

namespace tour {
namespace {

void rename(ZEL::Class const & subject, std::string const & name) {
    ZEL::Transaction transaction(subject.getDeviant(), "rename");
    subject.setName(name);
    transaction.commit();
}

/// One object in both versions.
struct Pair {
    Pair(ZEL::Class const & subject, ZEL::MetaModel const & draft)
        : name(subject.getName()), root(subject), inDraft(subject.asDeviant(draft)) {}

    [[nodiscard]] bool isCalled(std::string const & inRootName, std::string const & inDraftName) const {
        return root.getName() == inRootName && inDraft.getName() == inDraftName;
    }

    std::string name; ///< at the beginning
    ZEL::Class root;
    ZEL::Class inDraft;
};

void assignAndUndo(Narrator & narrator, ZEL::MetaModel const & model, ZEL::MetaModel const & draft, Pair const & edited,
                   Pair const & isolated) {
    ZEL::Transaction transaction(model.getRootDeviant(), "take the draft over");
    draft.assignToRoot();
    transaction.commit();
    narrator.claim(edited.isCalled("Drafted", "Drafted"), "assigned to the root, the draft's name stands there too");
    narrator.claim(isolated.isCalled(isolated.name, isolated.name),
                   "and so does all else that the draft had of its own");
    model.undo();
    narrator.claim(edited.isCalled(edited.name, "Drafted") && isolated.isCalled("Changed", isolated.name),
                   "one undo in the root takes the assignment back, and leaves the draft alone");
}

} // namespace

void workInDeviant(Narrator & narrator, Session & session) {
    narrator.step("Work in a deviant, a version of the model beside the root");
    ZEL::MetaModel const & model = session.library;
    ZEL::MetaModel const draft = model.createDeviantWithName("draft");
    Pair const edited(classesOf(model).front(), draft);
    Pair const isolated(classesOf(model).back(), draft);
    narrator.claim(draft == model && draft.getDeviantName() == "draft" && draft.getObjectsDeviatingFromRoot().empty(),
                   "'draft' is the same model, and does not differ from the root yet");

    rename(edited.inDraft, "Drafted");
    narrator.claim(edited.isCalled(edited.name, "Drafted"),
                   "a class is called 'Drafted' there, and '" + edited.name + "' in the root");
    narrator.claim(draft.getObjectsDeviatingFromRoot().size() == 1, "one object differs");

    rename(isolated.root, "Changed");
    narrator.claim(isolated.isCalled("Changed", isolated.name),
                   "a commit in the root does not reach the draft: '" + isolated.name + "' keeps its name there");

    assignAndUndo(narrator, model, draft, edited, isolated);

    ZEL::Transaction transaction(draft.getDeviant(), "follow the root");
    draft.syncFromRoot();
    transaction.commit();
    narrator.claim(edited.isCalled(edited.name, edited.name) && isolated.isCalled("Changed", "Changed") &&
                       draft.getObjectsDeviatingFromRoot().empty(),
                   "synchronised, the draft follows the root again");
    model.removeDeviantWithName("draft");
    narrator.claim(!draft.getDeviant().isValid() && !edited.inDraft.isValid(),
                   "removed, it is gone, and its handles say so");
    model.undo();
}

} // namespace tour
