// Operations of models: one to one on the deviant, or on the numbers of the objects.

#include <ZEL/Boolean.h>
#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/deviants/StateMap.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/ModelIntf.h>
#include <ZEL/metamodel/ReflectionErrors.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/sequences/SequenceBuilder.h>

namespace ZEL::NSInterface {

namespace {

int number(Integer const & value) { return static_cast<std::int32_t>(value); }

} // namespace

// --- transactions, history, deviants ---------------------------------------------------------------------------------

void ModelIntf::beginTransaction(Deviant deviant) { deviant.beginTransaction(); }
void ModelIntf::beginTransaction(Deviant deviant, String const & name) { deviant.beginTransaction(name.str()); }
void ModelIntf::commitTransaction(Deviant deviant) { deviant.commitTransaction(); }
void ModelIntf::cancelTransaction(Deviant deviant) { deviant.cancelTransaction(); }
void ModelIntf::undo(Deviant deviant) { deviant.undo(); }
void ModelIntf::undoToChangeLevel(Deviant deviant, Integer const & level) { deviant.undoToChangeLevel(number(level)); }
void ModelIntf::redo(Deviant deviant) { deviant.redo(); }
void ModelIntf::redoToChangeLevel(Deviant deviant, Integer const & level) { deviant.redoToChangeLevel(number(level)); }
Integer ModelIntf::getCurrentChangeLevel(Deviant deviant) const { return Integer(deviant.getCurrentChangeLevel()); }
Integer ModelIntf::getDefaultMaximumUndoStackLength(Deviant) const {
    return Integer(Deviant::getDefaultMaximumUndoStackLength());
}
Integer ModelIntf::getMaximumUndoStackLength(Deviant deviant) const {
    return Integer(deviant.getMaximumUndoStackLength());
}
Integer ModelIntf::getUndoStackLength(Deviant deviant) const { return Integer(deviant.getUndoStackLength()); }
Integer ModelIntf::getRedoStackLength(Deviant deviant) const { return Integer(deviant.getRedoStackLength()); }
Integer ModelIntf::getUndoChangeLevelAt(Deviant deviant, Integer const & index) const {
    return Integer(deviant.getUndoChangeLevelAt(number(index)));
}
Integer ModelIntf::getRedoChangeLevelAt(Deviant deviant, Integer const & index) const {
    return Integer(deviant.getRedoChangeLevelAt(number(index)));
}
String ModelIntf::getUndoNameAt(Deviant deviant, Integer const & index) const {
    return String(deviant.getUndoNameAt(number(index)));
}
String ModelIntf::getRedoNameAt(Deviant deviant, Integer const & index) const {
    return String(deviant.getRedoNameAt(number(index)));
}
void ModelIntf::setMaximumUndoStackLength(Deviant deviant, Integer const & length) {
    deviant.setMaximumUndoStackLength(number(length));
}
void ModelIntf::clearUndoStack(Deviant deviant) { deviant.clearUndoStack(); }
void ModelIntf::clearRedoStack(Deviant deviant) { deviant.clearRedoStack(); }
void ModelIntf::assignToRoot(Deviant deviant) { deviant.assignToRoot(); }
void ModelIntf::syncFromRoot(Deviant deviant) { deviant.syncFromRoot(); }
String ModelIntf::getDeviantName(Deviant deviant) const { return String(deviant.getName()); }
void ModelIntf::removeDeviantWithName(Deviant, String const &) { raiseAnInternalError(); }
Deviant ModelIntf::createDeviantWithName(Deviant, String const &) { return Deviant(); }
Deviant ModelIntf::getRootDeviant(Deviant) const { return Deviant(); }

ImmutableSequence<ImmutableClassObject> ModelIntf::getObjectsDeviatingFromRoot(Deviant deviant) const {
    Sequence<ImmutableClassObject> result =
        Generic::SequenceBuilder{deviant, 0, false, true}.create<ImmutableClassObject>();
    StateMap const * const states = deviant.getObjectsDeviatingFromRoot();
    if (states != nullptr) {
        Deviant const root = deviant.getRootDeviant();
        for (auto const & entry : *states) {
            bool const follows = entry.state == nullptr || entry.state == Deviant::FallbackToRoot;
            if (!follows && entry.state != entry.key->internal_getDeviation(root)) {
                result.push_back(ImmutableClassObject(entry.key, deviant));
            }
        }
    }
    return result;
}

// --- numbers ---------------------------------------------------------------------------------------------------------

ClassObject ModelIntf::handleObjectById(Deviant, Integer const &, ClassObject const &, Integer const &) {
    return ClassObject();
}

ClassObject ModelIntf::getObjectById(Deviant deviant, Integer const & id) {
    return handleObjectById(deviant, id, ClassObject(), Integer(1));
}

void ModelIntf::setObjectId(Deviant, ClassObject const &, Integer const &) {}
Boolean ModelIntf::hasNextIdValue(Deviant) const { return Boolean(true); }
void ModelIntf::removeNextIdValue(Deviant) {}
void ModelIntf::setNextIdValue(Deviant, Integer const &) {}
Integer ModelIntf::getNextIdValue(Deviant) const { return Integer(1); }

// --- siid: the model's uuid ------------------------------------------------------------------------------------------

Boolean ModelIntf::hasStringSiid(Deviant deviant) const { return Boolean(!getStringSiid(deviant).empty()); }

String ModelIntf::getStringSiid(Deviant deviant) const { return getUuidBase(deviant); }

void ModelIntf::setStringSiid(Deviant, String const &) { internal::raiseReadOnly("stringSiid"); }

void ModelIntf::removeStringSiid(Deviant) { internal::raiseNotRemovable("stringSiid"); }

} // namespace ZEL::NSInterface
