#include "kernel/ZEL/tools/TestModel.h"
#include "support/ExpectRaises.h"

#include <ZEL/Boolean.h>
#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/ValueObject.h>
#include <ZEL/metamodel/Comment.h>
#include <ZEL/metamodel/PackageableElement.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/tools/ImmutableAccessVisitorTextWriter.h>
#include <ZEL/tools/ImmutableAccessVisitorTraversalContainment.h>
#include <ZEL/tools/ObjectsIn.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <thread>

namespace ZEL {
namespace {

using testing::ElementsAreArray;
using testsupport::TestModel;
using Traversal = ImmutableAccessVisitorTraversalContainment;

struct Stopped : std::runtime_error {
    using runtime_error::runtime_error;
};

/// Writes down what it is called for. At one of the calls it ends the walk.
struct Recorder : ImmutableAccessVisitor {
    enum class Way { False, Raise };
    struct Log {
        std::vector<std::string> calls;
        std::size_t last = SIZE_MAX;
        Way way = Way::False;
    };

    Recorder(std::string name, Log & sharedLog) : prefix(std::move(name) + ' '), log(sharedLog) {}

    bool visitClassObject(ImmutableClassObject const & o) override { return add(o.getFullyQualifiedOrcaTypeName()); }
    bool visitValueObject(ImmutableValueObject const & v) override { return add('"' + v.toString().str() + '"'); }
    bool visitStereotypeObject(ImmutableStereotypeObject const &) override { return add("stereotype instance"); }
    bool visitModel(ImmutableModel const &) override { return add("model"); }
    bool visitProperty(ImmutableClassObject const &, ImmutableProperty const & p) override { return add(p.getName()); }

    bool add(std::string const & what) {
        bool const isLast = log.calls.size() == log.last;
        log.calls.push_back(prefix + what);
        if (isLast && log.way == Way::Raise) {
            throw Stopped(what);
        }
        return !isLast;
    }

    std::string prefix;
    Log & log;
};

/// A comment with a body on a package of its model.
class ContainmentTraversal : public testing::Test {
protected:
    ContainmentTraversal() {
        comment.setBody("text");
        comment.getAnnotatedElements().push_back(sample.top);
        // Single values, of which none is a name; contained objects; references, which are not entered.
        std::istringstream text(R"(pre ZEL.ImmutableComment, pre ZEL.ImmutableComment,
            pre body, pre "text", pre "text", post "text", post "text", post body,
            pre persistence, post persistence,
            pre id, pre "ID", pre "ID", post "ID", post "ID", post id,
            pre siid, pre "SIID", pre "SIID", post "SIID", post "SIID", post siid,
            pre ownedComment, post ownedComment,
            pre appliedStereotypeInstance, post appliedStereotypeInstance,
            pre annotatedElement, pre ZEL.ImmutablePackage, pre ZEL.ImmutablePackage,
            post ZEL.ImmutablePackage, post ZEL.ImmutablePackage, post annotatedElement,
            pre modelZEL, pre model, pre model, post model, post model, post modelZEL,
            post ZEL.ImmutableComment, post ZEL.ImmutableComment)");
        for (std::string call; std::getline(text >> std::ws, call, ',');) {
            std::size_t const place = call.find("ID\"");
            expected.push_back(place == std::string::npos ? call
                               : call.find("SIID\"") == std::string::npos
                                   ? call.replace(place, 2, comment.getId().toString().str())
                                   : call.replace(place - 2, 4, comment.getSiid().str()));
        }
    }

    TestModel sample;
    Comment comment = sample.factory.createComment();
    std::vector<std::string> expected;
    Recorder::Log log;
    Recorder pre{"pre", log};
    Recorder post{"post", log};
    Traversal traversal{&pre, &post};
};

TEST_F(ContainmentTraversal, BothVisitorsAreCalledAroundEachPartInAFixedOrder) {
    EXPECT_TRUE(traversal.visitObject(comment));
    EXPECT_THAT(log.calls, ElementsAreArray(expected));
}

TEST_F(ContainmentTraversal, TheFirstFalseEndsTheWalkAndLeavesNothingBehind) {
    for (std::size_t last = 0; last < expected.size(); ++last) {
        log = {{}, last, Recorder::Way::False};
        EXPECT_FALSE(traversal.visitObject(comment));
        EXPECT_EQ(log.calls.size(), last + 1);
        EXPECT_FALSE(traversal.getCurrentMetaProperty().isValid());
        EXPECT_FALSE(traversal.getCurrentClassObject().isValid());
    }
    log = {};
    EXPECT_TRUE(traversal.visitObject(comment));
    EXPECT_THAT(log.calls, ElementsAreArray(expected))
        << "by the same traversal, behind all the walks that ended early";
}

TEST_F(ContainmentTraversal, AnExceptionPassesAndTheWayStaysAsItWas) {
    auto const place = std::find(expected.begin(), expected.end(), "post \"text\"");
    log.last = static_cast<std::size_t>(place - expected.begin());
    log.way = Recorder::Way::Raise;
    EXPECT_THROW(static_cast<void>(traversal.visitObject(comment)), Stopped);
    EXPECT_EQ(log.calls.size(), log.last + 1);
    EXPECT_EQ(traversal.getCurrentMetaProperty().getName(), "body");
    EXPECT_EQ(traversal.getCurrentClassObject(), comment);
}

TEST_F(ContainmentTraversal, WhatIsNotThereIsAnError) {
    EXPECT_RAISES("Attempt to traverse invalid object!", traversal.visitObject(ImmutableObject()));
    comment.destroy();
    EXPECT_RAISES("Attempt to traverse invalid object!", traversal.visitObject(comment));
    EXPECT_RAISES("An Internal Error has occurred", Traversal(&pre, nullptr));
    EXPECT_TRUE(log.calls.empty());
}

/// Says the way to each object that is visited.
struct WayRecorder : ImmutableAccessVisitorEmpty {
    bool visitClassObject(ImmutableClassObject const & object) override {
        ImmutableProperty const property = traversal->getCurrentMetaProperty();
        if (!property.isValid() || property.isComposite()) {
            ImmutableClassObject const owner = traversal->getCurrentClassObject();
            ways.push_back((owner.isValid() ? nameOf(owner) + '.' + property.getName().str() + '.' : "") +
                           nameOf(object));
        }
        return true;
    }
    static std::string nameOf(ImmutableClassObject const & object) {
        return object.getFullyQualifiedOrcaTypeName() == "ZEL.ImmutableComment" ? "comment"
                                                                                : object.getOne("name").toString();
    }
    Traversal * traversal = nullptr;
    std::vector<std::string> ways;
};

TEST_F(ContainmentTraversal, TheTreeBelowAnObjectIsWalkedAndTheWayIsTold) {
    Package const inner = sample.package(sample.top, "inner");
    Class const a = sample.classIn(inner, "A");
    Class const b = sample.classIn(sample.top, "B");
    b.getSuperClasses().push_back(a);
    sample.attribute(a, "x").setType(b);
    sample.attribute(a, "y").setType(a); // circles of references
    sample.top.getOwnedComments().push_back(comment);

    WayRecorder ways;
    ImmutableAccessVisitorEmpty nothing;
    Traversal walk(&ways, &nothing);
    ways.traversal = &walk;
    EXPECT_TRUE(walk.visitObject(sample.top));
    EXPECT_THAT(ways.ways,
                ElementsAreArray({"top", "top.packagedElement.inner", "inner.packagedElement.A", "A.ownedAttribute.x",
                                  "A.ownedAttribute.y", "top.packagedElement.B", "top.ownedComment.comment"}));

    std::vector<ImmutableClassObject> const objects = objectsIn(sample.top);
    std::vector<std::string> names;
    std::transform(objects.begin(), objects.end(), std::back_inserter(names), WayRecorder::nameOf);
    EXPECT_THAT(names, ElementsAreArray({"top", "inner", "A", "x", "y", "B", "comment"}));
}

// --- depth ---------------------------------------------------------------------------------------------------------

constexpr int kDeep = 100000;

/// A stream that keeps nothing but how much there was.
class Counter : public std::streambuf {
public:
    std::size_t brackets = 0;
    std::size_t longestBlank = 0;

protected:
    int overflow(int c) override {
        brackets += c == ']' ? 1U : 0U;
        return c;
    }
    std::streamsize xsputn(char const * text, std::streamsize count) override {
        if (count > 0 &&
            std::all_of(text, text + std::min<std::streamsize>(count, 3), [](char c) { return c == ' '; })) {
            longestBlank = std::max(longestBlank, static_cast<std::size_t>(count));
        }
        return count;
    }
};

/// Walks the structure alone. An action before the operation of the base and one behind it must pair up.
struct Nested : Traversal {
    using Traversal::Traversal;
    bool visitClassObject(ImmutableClassObject const & object) override {
        EXPECT_EQ(std::this_thread::get_id(), thread);
        ++depth;
        deepest = std::max(deepest, depth);
        bool const result = Traversal::visitClassObject(object);
        --depth;
        return result;
    }
    bool visitProperty(ImmutableClassObject const & object, ImmutableProperty const & property) override {
        return property.getName() != "packagedElement" || Traversal::visitProperty(object, property);
    }
    std::thread::id thread = std::this_thread::get_id();
    int depth = 0;
    int deepest = 0;
};

struct AtObject : ImmutableAccessVisitorEmpty {
    bool visitClassObject(ImmutableClassObject const & object) override {
        if (object == place && raises) {
            throw Stopped("at the bottom");
        }
        return object != place;
    }
    ImmutableClassObject place;
    bool raises = false;
};

TEST(ContainmentTraversalDepth, AHundredThousandLevelsNestTrulyAndComeBack) {
    TestModel const sample;
    Package bottom = sample.top;
    for (int i = 0; i < kDeep; ++i) {
        bottom = sample.package(bottom, "p");
    }

    AtObject pre;
    ImmutableAccessVisitorEmpty post;
    Nested walk(&pre, &post);
    EXPECT_TRUE(walk.visitObject(sample.top));
    EXPECT_EQ(walk.deepest, kDeep + 1);
    EXPECT_EQ(walk.depth, 0);

    pre.place = bottom;
    EXPECT_FALSE(walk.visitObject(sample.top));
    EXPECT_EQ(walk.depth, 0);
    EXPECT_FALSE(walk.getCurrentMetaProperty().isValid());

    pre.raises = true;
    try {
        walk.visitObject(sample.top);
        ADD_FAILURE() << "nothing came";
    } catch (Stopped const & stopped) {
        EXPECT_STREQ(stopped.what(), "at the bottom");
    }
    EXPECT_EQ(walk.depth, kDeep + 1) << "an exception passes the actions behind";

    Counter counter;
    std::ostream stream(&counter);
    EXPECT_TRUE(ImmutableAccessVisitorTextWriter(stream).visitObject(sample.top));
    EXPECT_EQ(counter.brackets, static_cast<std::size_t>(kDeep) + 1);
    EXPECT_EQ(counter.longestBlank, 2000U) << "indentation ends at a thousand levels";
}

TEST(ContainmentTraversalDepth, AThreadWithALittleStackCanWalk) {
    TestModel const sample;
    Package bottom = sample.top;
    for (int i = 0; i < 1000; ++i) {
        bottom = sample.package(bottom, "p");
    }
    ImmutableAccessVisitorEmpty visitor;
    int deepest = 0;
    auto walkOnce = [&] {
        Nested walk(&visitor, &visitor);
        walk.visitObject(sample.top);
        deepest = walk.deepest;
    };
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, std::size_t(256) << 10U);
    pthread_t thread{};
    using Walk = decltype(walkOnce);
    auto const run = [](void * walk) -> void * {
        (*static_cast<Walk *>(walk))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &walkOnce), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    EXPECT_EQ(deepest, 1001);
}

} // namespace
} // namespace ZEL
