// Each operation with each of its allocations failing: it happens or it does not, and the model lives on.

#include "FailingHeap.h"
#include "World.h"
#include "support/LongRuns.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <ostream>
#include <vector>

namespace ZEL::tests::memory {
namespace {

using How = FailingHeap::How;

struct Operation {
    std::string name;
    std::function<void(World &)> prepare; ///< with memory
    std::function<void(World &)> run;
    bool isTransaction = false; ///< cancelled afterwards, unless it has been committed
    bool needsNoMemory = false;
    bool isWhole = true; ///< what it leaves behind is one of two pictures

    friend std::ostream & operator<<(std::ostream & out, Operation const & operation) { return out << operation.name; }
};

std::filesystem::path scratch() {
    std::filesystem::path const folder =
        std::filesystem::temp_directory_path() / ("zel-memory-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    return folder;
}

void begin(World & world) { world.model.beginTransaction("begun"); }

void changeWithin(World & world) {
    begin(world);
    world.change(world.model);
}

void beginInDraft(World & world) { world.draft.beginTransaction("begun"); }

void writeFile(World & world) {
    static_cast<void>(Serializer::XmiWriter().write((scratch() / "model.xmi").string(), world.model));
}

void nothing(World &) {}

std::vector<Operation> operations() {
    return {
        {"create", begin, [](World & world) { static_cast<void>(world.factory.createClass()); }, true},
        {"change", begin, [](World & world) { world.change(world.model); }, true},
        {"changeInDeviant", beginInDraft, [](World & world) { world.change(world.draft); }, true},
        {"destroy", begin, [](World & world) { world.package.destroy(); }, true},
        {"clone", begin, [](World & world) { static_cast<void>(world.package.clone(world.model)); }, true},
        {"commit", changeWithin, [](World & world) { world.model.commitTransaction(); }, true},
        {"cancel", changeWithin, [](World & world) { world.model.cancelTransaction(); }, false, true},
        {"cancelInDeviant",
         [](World & world) {
             beginInDraft(world);
             world.change(world.draft);
         },
         [](World & world) { world.draft.cancelTransaction(); }, false, true},
        {"undo", nothing, [](World & world) { world.model.undo(); }},
        {"redo", nothing, [](World & world) { world.model.redo(); }},
        {"jump", nothing, [](World & world) { world.model.getDeviant().undoToChangeLevel(2); }, false, false, false},
        {"assign", begin, [](World & world) { world.draft.assignToRoot(); }, true},
        {"sync", beginInDraft, [](World & world) { world.draft.syncFromRoot(); }, true},
        {"addDeviant", nothing, [](World & world) { static_cast<void>(world.model.createDeviantWithName("new")); }},
        {"removeDeviant",
         [](World & world) {
             world.other.cancelTransaction();
             world.other = world.model;
         },
         [](World & world) { world.model.removeDeviantWithName("other"); }, false, true},
        {"write", nothing, writeFile},
        {"read", writeFile,
         [](World &) { static_cast<void>(Serializer::XmiReader().read((scratch() / "model.xmi").string())); }},
        {"merge",
         [](World & world) {
             writeFile(world);
             Transaction transaction(world.model.getDeviant(), "not in the file");
             world.first.setName("renamed");
             world.package.getPackagedElements().push_back(world.factory.createClass());
             transaction.commit();
         },
         [](World & world) {
             Serializer::XmiReader reader;
             reader.setMerger(std::make_shared<Serializer::Merger>(world.model));
             static_cast<void>(reader.read((scratch() / "model.xmi").string()));
         }},
        {"end", changeWithin, [](World & world) { world.drop(); }, false, true},
    };
}

class WithoutMemory : public testing::TestWithParam<Operation> {
protected:
    static void SetUpTestSuite() {
        Logger::instance()->setDefaultHandlerLevel(LogLevel::off);
        static_cast<void>(World().useOn()); // what a process makes once is no leak
    }
    static void TearDownTestSuite() { std::filesystem::remove_all(scratch()); }

    /// What the operation leaves behind when it happens.
    static std::string pictureAfter(Operation const & operation) {
        World world;
        operation.prepare(world);
        operation.run(world);
        return world.model.isValid() ? world.picture() : "";
    }

    /// False once the operation gets by with the allocations that it is granted.
    bool failsAt(long number, How how, std::string const & after) {
        Operation const & operation = GetParam();
        SCOPED_TRACE((how == How::Once ? "without allocation " : "without allocations from ") + std::to_string(number));
        LeakChecker leaks;
        leaks.beginTrackLifetime();
        bool hasFailed = false;
        {
            World world;
            std::string const outside = world.picture();
            operation.prepare(world);
            std::string const before = world.picture();
            bool hasThrown = false;
            {
                FailingHeap const heap(number, how);
                try {
                    operation.run(world);
                } catch (std::exception const &) {
                    hasThrown = true; // readers and writers say it in words of their own
                }
                hasFailed = FailingHeap::hasFailed();
            }
            EXPECT_FALSE(hasThrown && (!hasFailed || operation.needsNoMemory));
            if (world.model.isValid()) {
                std::string const found = world.picture();
                if (!operation.isTransaction && operation.isWhole) {
                    EXPECT_TRUE(found == after || (hasThrown && found == before)) << found << before;
                }
                if (operation.isTransaction) {
                    bool const isOpen = world.model.getDeviant().isWithinTransaction() ||
                                        world.draft.getDeviant().isWithinTransaction();
                    for (MetaModel const & each : {world.model, world.draft}) {
                        each.cancelTransaction();
                    }
                    EXPECT_EQ(isOpen ? outside : after, world.picture());
                }
                EXPECT_EQ("", world.useOn());
            }
        }
        EXPECT_NO_THROW(leaks.endTrackLifetime());
        return hasFailed;
    }

    /// `next` says which allocation fails after one.
    template <class Next> void failAtEach(Next next) {
        std::string const after = pictureAfter(GetParam());
        for (How const how : {How::Once, How::FromThen}) {
            for (long number = 1; failsAt(number, how, after) && !HasFailure(); number = next(number)) {
            }
        }
    }
};
class WithoutMemoryLong : public WithoutMemory {};

TEST_P(WithoutMemory, AnOperationHappensOrDoesNot) {
    failAtEach([](long number) { return number + 1 + number / 2; });
}

TEST_P(WithoutMemoryLong, AnOperationHappensOrDoesNot) {
    failAtEach([](long number) { return kIsSanitized ? number + 1 + number / 50 : number + 1; });
}

std::string nameOf(testing::TestParamInfo<Operation> const & info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(Of, WithoutMemory, testing::ValuesIn(operations()), nameOf);
INSTANTIATE_TEST_SUITE_P(Of, WithoutMemoryLong, testing::ValuesIn(operations()), nameOf);

} // namespace
} // namespace ZEL::tests::memory
