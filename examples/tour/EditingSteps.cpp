// Transactions: commit, veto, undo and redo.

#include "Look.h"
#include "Tour.h"

#include <ZEL/deviants/Transaction.h>
#include <ZEL/metamodel/Comment.h>
#include <ZEL/metamodel/Factory.h>
#include <ZEL/metamodel/ListenerHolder.h>
#include <ZEL/metamodel/NamedElement.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/ReportOfChanges.h>
#include <ZEL/metamodel/Type.h>

namespace tour {
namespace {

/// Lets no element lose its name.
class NameGuard : public ZEL::ListenerBase {
public:
    bool validateOnCommit(ZEL::ReportOfChanges<ZEL::ImmutableClassObject, ZEL::TRUE_TYPE> const & report) {
        for (ZEL::ImmutableClassObject const & object : report.modified) {
            ZEL::ImmutableNamedElement const element(object);
            if (element.isValid() && element.getName().empty()) {
                return false;
            }
        }
        return true;
    }
};

void rename(ZEL::Class const & subject, std::string const & name) {
    ZEL::Transaction transaction(subject.getDeviant(), "rename to " + name);
    subject.setName(name);
    transaction.commit();
}

} // namespace

void editInTransaction(Narrator & narrator, Session & session) {
    narrator.step("Edit in a named transaction");
    ZEL::MetaModel const & model = session.library;
    ZEL::Class const subject = classesOf(model).front();
    int const steps = model.getUndoStackLength();
    int const attributes = subject.getOwnedAttributes().size();

    ZEL::Transaction transaction(model.getRootDeviant(), "add a remark");
    ZEL::Factory const factory = model.getFactoryFactory();
    ZEL::Property const remark = factory.createProperty();
    remark.setName("remark");
    remark.setType(subject.getOwnedAttributes().front().getType());
    remark.setLower(0);
    subject.getOwnedAttributes().push_back(remark);
    ZEL::Comment const comment = factory.createComment();
    comment.setBody("Added on the tour.");
    comment.getAnnotatedElements().push_back(remark);
    remark.getOwnedComments().push_back(comment);
    transaction.commit();

    narrator.claim(subject.getOwnedAttributes().size() == attributes + 1 && remark.getContainerZEL() == subject,
                   "'" + subject.getName().str() + "' has a new attribute, with a comment");
    narrator.claim(model.getUndoStackLength() == steps + 1 && model.getUndoNameAt(0) == "add a remark",
                   "the history has one step more, 'add a remark'");
    model.undo();
    narrator.claim(!remark.isValid() && !comment.isValid() && subject.getOwnedAttributes().size() == attributes,
                   "and one undo takes all of it back");
}

void vetoCommit(Narrator & narrator, Session & session) {
    narrator.step("A veto turns a commit back");
    ZEL::MetaModel const & model = session.library;
    ZEL::Class const subject = classesOf(model).front();
    std::string const name = subject.getName();
    int const level = model.getCurrentChangeLevel();

    NameGuard guard;
    ZEL::registerValidatorOnCommit(model.getRootDeviant(), guard);
    bool isCommitted = true;
    {
        ZEL::Transaction transaction(model.getRootDeviant(), "take the name away");
        subject.setName("");
        isCommitted = transaction.commit();
    }
    bool const isRefusedByGuard = model.getRootDeviant().getRefusingListener() == &guard;
    model.getRootDeviant().unregisterValidatorOnCommit(&guard);

    narrator.claim(!isCommitted && isRefusedByGuard, "a validator refuses a class without a name");
    narrator.claim(subject.getName() == name && model.getCurrentChangeLevel() == level,
                   "the class is called '" + name + "' as before, at the same change level");
}

void undoAndRedo(Narrator & narrator, Session & session) {
    narrator.step("Undo and redo, by step and by change level");
    ZEL::MetaModel const & model = session.library;
    ZEL::Class const subject = classesOf(model).front();
    std::string const name = subject.getName();
    int const first = model.getCurrentChangeLevel();
    rename(subject, "One");
    rename(subject, "Two");
    int const second = model.getCurrentChangeLevel();
    rename(subject, "Three");
    narrator.tell("three commits take the change level from " + std::to_string(first) + " to " +
                  std::to_string(static_cast<int>(model.getCurrentChangeLevel())));

    model.undo();
    narrator.claim(subject.getName() == "Two" && model.getCurrentChangeLevel() == second, "undo gives 'Two'");
    model.redo();
    narrator.claim(subject.getName() == "Three", "redo gives 'Three'");
    model.undoToChangeLevel(first);
    narrator.claim(subject.getName() == name && model.getRedoNameAt(0) == "rename to One",
                   "undo to level " + std::to_string(first) + " gives '" + name + "', with three steps to redo");
    model.redoToChangeLevel(second);
    narrator.claim(subject.getName() == "Two" && model.getRedoStackLength() == 1,
                   "redo to level " + std::to_string(second) + " gives 'Two'");
    model.undoToChangeLevel(first);
}

void undoCreation(Narrator & narrator, Session & session) {
    narrator.step("What was created and undone comes back under the same handle");
    ZEL::MetaModel const & model = session.library;
    ZEL::Transaction transaction(model.getRootDeviant(), "new class");
    ZEL::Class const created = model.getFactoryFactory().createClass();
    created.setName("Bookmark");
    model.getTopPackage().getPackagedElements().push_back(created);
    transaction.commit();
    int const id = created.getId();
    narrator.tell(created.getQualifiedName().str() + " has the id " + std::to_string(id));

    model.undo();
    narrator.claim(!created.isValid(), "after an undo its handle is not valid");
    model.redo();
    narrator.claim(created.isValid() && created.getName() == "Bookmark" && created.getId() == id &&
                       model.getObjectById(id) == created,
                   "after a redo it is, with the same name and id");
    model.undo();
}

} // namespace tour
