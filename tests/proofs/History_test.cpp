// What undo and redo give back is what was there.

#include "Changes.h"
#include "support/LongRuns.h"

#include <gtest/gtest.h>

#include <deque>
#include <set>

namespace ZEL::tests::proofs {
namespace {

constexpr int kTransactions = 4;
constexpr int kChanges = 40;

ClassObject rootOf(Subject const & subject, Model const & model) { return ClassObject(model.getOne(subject.root)); }

/// Whether all links with two ends stay within the tree. A copy cannot keep others: the object outside would have to
/// know of it.
bool isClosed(ClassObject const & root) {
    std::vector<ClassObject> const content = contentOf(root);
    std::set<ClassObject> const inside(content.begin(), content.end());
    for (ClassObject const & object : content) {
        for (ImmutableProperty const & property : object.getMetaClass().getOwnedAttributes()) {
            ImmutableProperty const opposite = property.getOpposite();
            if (property.isDerived() || !opposite.isValid() || opposite.isDerived() || isContainerEnd(property)) {
                continue;
            }
            for (Object const & value : object.get(property)) {
                if (inside.count(ClassObject(value)) == 0) {
                    return false;
                }
            }
        }
    }
    return true;
}

/// What a model is at one time: a copy of its tree in a model of its own, which shares nothing with the kernel's
/// history, and a deviant, which holds what is in no container, too.
class Snapshot {
public:
    Snapshot(Subject const & subject, Model const & model, std::string const & name)
        : fSubject(subject), fKeeper(emptyModel(subject)), fDeviant(model.createDeviantWithName(name)) {
        if (isClosed(rootOf(subject, model))) {
            fKeeper.getRootDeviant().beginTransaction("copy");
            fCopy = rootOf(subject, model).clone(fKeeper);
            fKeeper.getRootDeviant().commitTransaction();
        }
    }

    [[nodiscard]] bool hasCopy() const { return fCopy.isValid(); }
    void expectEqual(Model const & model) const {
        if (hasCopy()) {
            EXPECT_EQ("", difference(fCopy, rootOf(fSubject, model)));
        }
        EXPECT_EQ("", difference(fDeviant, model));
    }

private:
    Subject fSubject;
    Model fKeeper;
    Model fDeviant;
    ClassObject fCopy;
};

class History : public testing::TestWithParam<Subject> {
protected:
    void runSeed(unsigned int seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Model const model = randomModel(GetParam(), seed);
        Changes changes(GetParam(), model, seed);
        std::deque<Snapshot> snapshots;
        snapshots.emplace_back(GetParam(), model, "0");
        for (int i = 1; i <= kTransactions; ++i) {
            model.getRootDeviant().beginTransaction("change");
            changes.makeAny(kChanges);
            model.getRootDeviant().commitTransaction();
            snapshots.emplace_back(GetParam(), model, std::to_string(i));
            fCopies += snapshots.back().hasCopy() ? 1 : 0;
        }
        for (int i = kTransactions; i > 0; --i) {
            snapshots[static_cast<std::size_t>(i)].expectEqual(model);
            model.undo();
        }
        for (int i = 0; i < kTransactions; ++i) {
            snapshots[static_cast<std::size_t>(i)].expectEqual(model);
            model.redo();
        }
        snapshots.back().expectEqual(model);
    }

    int fCopies = 0; ///< made after a transaction
};
class HistoryLong : public History {};

TEST_P(History, UndoAndRedoGiveBackWhatACopyHolds) {
    for (unsigned int seed = 1; seed <= 12 && !HasFailure(); ++seed) {
        runSeed(seed);
    }
    EXPECT_GE(fCopies, 12 * kTransactions / 4);
}

TEST_P(HistoryLong, UndoAndRedoGiveBackWhatACopyHolds) {
    for (int i = 0; i < longRun(300) && !HasFailure(); ++i) {
        runSeed(1000U + static_cast<unsigned int>(i));
    }
}

INSTANTIATE_TEST_SUITE_P(Of, History, testing::ValuesIn(subjects()), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Of, HistoryLong, testing::ValuesIn(subjects()), testing::PrintToStringParamName());

} // namespace
} // namespace ZEL::tests::proofs
