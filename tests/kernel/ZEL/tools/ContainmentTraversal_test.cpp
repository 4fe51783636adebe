#include "kernel/ZEL/tools/TestModel.h"
#include "support/LongRuns.h"
#include "support/Texts.h"

#include <pthread.h>

#include <algorithm>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace ZEL::tests {
namespace {

using testing::ElementsAreArray;
using Traversal = ImmutableAccessVisitorTraversalContainment;

struct Stopped : std::runtime_error {
    using runtime_error::runtime_error;
};

/// Writes down its calls. At one of them it ends the walk, by returning false or by an exception.
struct Recorder : ImmutableAccessVisitor {
    struct Log {
        std::vector<std::string> calls;
        std::size_t last = SIZE_MAX;
        bool raises = false;
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
        if (isLast && log.raises) {
            throw Stopped(what);
        }
        return !isLast;
    }

    std::string prefix;
    Log & log;
};

/// A comment on a package of its model.
struct ContainmentTraversal : testing::Test {
    ContainmentTraversal() {
        comment.setBody("text");
        comment.getAnnotatedElements().push_back(sample.top);
        // Single values, of which none is a name; contained objects; references, which are not entered.
        std::string text = R"(pre ZEL.ImmutableComment, pre ZEL.ImmutableComment,
            pre body, pre "text", pre "text", post "text", post "text", post body,
            pre persistence, post persistence,
            pre id, pre "@id", pre "@id", post "@id", post "@id", post id,
            pre siid, pre "@siid", pre "@siid", post "@siid", post "@siid", post siid,
            pre ownedComment, post ownedComment,
            pre appliedStereotypeInstance, post appliedStereotypeInstance,
            pre annotatedElement, pre ZEL.ImmutablePackage, pre ZEL.ImmutablePackage,
            post ZEL.ImmutablePackage, post ZEL.ImmutablePackage, post annotatedElement,
            pre modelZEL, pre model, pre model, post model, post model, post modelZEL,
            post ZEL.ImmutableComment, post ZEL.ImmutableComment)";
        text = replaced(text, "@id", comment.getId().toString().str());
        std::istringstream calls(replaced(text, "@siid", comment.getSiid().str()));
        for (std::string call; std::getline(calls >> std::ws, call, ',');) {
            expected.push_back(call);
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
        log = {{}, last, false};
        EXPECT_FALSE(traversal.visitObject(comment));
        EXPECT_EQ(log.calls.size(), last + 1);
        EXPECT_FALSE(traversal.getCurrentMetaProperty().isValid());
        EXPECT_FALSE(traversal.getCurrentClassObject().isValid());
    }
    log = {};
    EXPECT_TRUE(traversal.visitObject(comment));
    EXPECT_THAT(log.calls, ElementsAreArray(expected)) << "by the same traversal, after all the walks that ended early";
}

TEST_F(ContainmentTraversal, AnExceptionPassesAndTheWayStaysAsItWas) {
    auto const place = std::find(expected.begin(), expected.end(), "post \"text\"");
    log.last = static_cast<std::size_t>(place - expected.begin());
    log.raises = true;
    EXPECT_THROW(static_cast<void>(traversal.visitObject(comment)), Stopped);
    EXPECT_EQ(log.calls.size(), log.last + 1);
    EXPECT_EQ(traversal.getCurrentMetaProperty().getName(), "body");
    EXPECT_EQ(traversal.getCurrentClassObject(), comment);
}

TEST_F(ContainmentTraversal, WhatIsNotThereIsAnError) {
    EXPECT_RAISES("Attempt to traverse invalid object!", traversal.visitObject(ImmutableObject()));
    comment.destroy();
    EXPECT_RAISES("Attempt to traverse invalid object!", traversal.visitObject(comment));
    EXPECT_RAISES("Attempt to traverse invalid object!", pre.visitObject(comment)) << "by any visitor";
    EXPECT_RAISES(kInternalError, Traversal(&pre, nullptr));
    EXPECT_TRUE(log.calls.empty());
}

TEST_F(ContainmentTraversal, TheTreeBelowAnObjectIsListedInItsOrder) {
    Package const inner = sample.package(sample.top, "inner");
    Class const a = sample.classIn(inner, "A");
    Class const b = sample.classIn(sample.top, "B");
    Property const x = sample.attribute(a, "x");
    x.setType(b);
    Property const y = sample.attribute(a, "y");
    y.setType(a); // a circle of references
    sample.top.getOwnedComments().push_back(comment);
    EXPECT_THAT(objectsIn(sample.top), ElementsAre(sample.top, inner, a, x, y, b, comment));

    std::vector<ImmutableClassObject> met;
    ContentsWalk walk(sample.top);
    for (ImmutableClassObject const & object : walk) {
        met.push_back(object);
        if (object == inner) {
            walk.skipContents();
        }
    }
    EXPECT_THAT(met, ElementsAre(sample.top, inner, b, comment)) << "without the contents of one";
    EXPECT_TRUE(walk.isAtEnd());
    EXPECT_FALSE(walk.current().isValid());
    EXPECT_FALSE(walk.next()) << "and stays there";
}

TEST_F(ContainmentTraversal, AWalkTakesContentsAsTheyAreWhenItComesToThem) {
    Class const a = sample.classIn(sample.top, "A");
    Property const x = sample.attribute(a, "x");
    Class const b = sample.classIn(sample.top, "B");
    Property const y = sample.attribute(b, "y");
    Class const c = sample.classIn(sample.top, "C");
    ContentsWalk walk(sample.top);
    ASSERT_TRUE(walk.next());
    Class const late = sample.classIn(sample.top, "late"); // into a list that the walk is in
    Property const z = sample.attribute(c, "z");           // and into one that it is still to reach
    x.destroy();
    b.destroy();
    std::vector<ImmutableClassObject> met{walk.current()};
    while (walk.next()) {
        met.push_back(walk.current());
    }
    EXPECT_THAT(met, ElementsAre(a, c, z));
    EXPECT_EQ(late.getContainerZEL(), sample.top);
    EXPECT_FALSE(y.isValid());
    EXPECT_RAISES(kNullRef, ContentsWalk{ImmutableClassObject()});
}

TEST_F(ContainmentTraversal, AWalkGoesOnBehindAContainerThatHasEnded) {
    Class const a = sample.classIn(sample.top, "A");
    Property const x = sample.attribute(a, "x");
    Property const y = sample.attribute(a, "y");
    Class const b = sample.classIn(sample.top, "B");
    Class const c = sample.classIn(sample.top, "C");
    ContentsWalk walk(sample.top);
    ASSERT_TRUE(walk.next() && walk.next());
    ASSERT_EQ(walk.current(), x);
    c.getOwnedAttributes().push_back(x);
    a.destroy();
    ASSERT_TRUE(walk.next());
    EXPECT_EQ(walk.current(), b);
    b.destroy();
    ASSERT_TRUE(walk.next()) << "also behind the present object";
    EXPECT_EQ(walk.current(), c);
    EXPECT_FALSE(y.isValid());
}

/// The root deviant and another one have each moved an object: together that makes a ring.
TEST(ContentsWalkOfADeviant, EndsThoughObjectsContainEachOther) {
    MetaModel const model = Factory::createNewModel();
    Factory const factory = model.getFactoryFactory();
    auto const packageIn = [&](Package const & owner, char const * name) {
        Package const made = factory.createPackage(name);
        owner.getPackagedElements().push_back(made);
        return made;
    };
    Deviant const root = model.getRootDeviant();
    root.setMaximumUndoStackLength(0); // so that other deviants see what is written to the root
    root.beginTransaction();
    Package const top = factory.createPackage("top");
    model.setTopPackage(top);
    Package const a = packageIn(top, "a");
    Package const c = packageIn(top, "c");
    Package const f = packageIn(a, "f");
    Package const e = packageIn(c, "e");
    root.commitTransaction();
    ImmutableMetaModel const seen = model.createDeviantWithName("other");
    Deviant const other = seen.getDeviant();
    other.beginTransaction();
    Package(e.asDeviant(seen)).getPackagedElements().push_back(a.asDeviant(seen));
    other.commitTransaction();
    root.beginTransaction();
    f.getPackagedElements().push_back(c);
    root.commitTransaction();

    ContentsWalk walk(ImmutableClassObject(top.asDeviant(seen)));
    std::size_t met = 0;
    constexpr std::size_t kObjects = 5;
    while (walk.next() && met <= 2 * kObjects) {
        ++met;
    }
    EXPECT_TRUE(walk.isAtEnd());
    EXPECT_LE(met, 2 * kObjects) << "no object again within itself";
}

TEST_F(ContainmentTraversal, AWalkThatLosesItsModelSaysSo) {
    auto other = std::make_unique<TestModel>();
    static_cast<void>(other->attribute(other->classIn(other->top, "A"), "x"));
    ContentsWalk walk(other->top);
    ASSERT_TRUE(walk.next());
    other.reset();
    EXPECT_RAISES("object accessed after its model has been destroyed", walk.next());
    EXPECT_TRUE(walk.isAtEnd());
    EXPECT_FALSE(walk.current().isValid());
}

// --- any model -----------------------------------------------------------------------------------------------------

/// Goes by operations that might be overridden.
struct DerivedTraversal : Traversal {
    using Traversal::Traversal;
};

/// Writes down what it is shown, each object once, and the way by which it has come.
struct WayRecorder : Recorder {
    using Recorder::Recorder;
    bool visitObject(ImmutableObject const & o) override {
        ImmutableProperty const property = walk->getCurrentMetaProperty();
        ImmutableClassObject const object = walk->getCurrentClassObject();
        return add("object " + o.toString().str() + " by " + (property.isValid() ? property.getName().str() : "-") +
                   " of " + (object.isValid() ? object.toString().str() : "-"));
    }
    Traversal const * walk = nullptr;
};

/// The position of a property's group in the order of a walk; -1 for one that is not visited.
int groupOf(ImmutableProperty const & property) {
    if (property.getName() == "name") {
        return 0;
    }
    if (property.getPersistence() == PersistenceKind::Extension) {
        return 5;
    }
    if (ImmutableDataType(property.getType()).isValid()) {
        return property.getUpper() > UnlimitedNatural(1) ? 2 : 1;
    }
    return property.isDerived() ? -1 : property.isComposite() ? 3 : 4;
}

/// What `WayRecorder` should write down, found out by reflection.
void listCalls(ImmutableObject const & o, ImmutableProperty const & property, ImmutableClassObject const & owner,
               std::vector<std::string> & calls) {
    calls.push_back("pre object " + o.toString().str() + " by " +
                    (property.isValid() ? property.getName().str() : "-") + " of " +
                    (owner.isValid() ? owner.toString().str() : "-"));
    if (ImmutableValueObject const value(o); value.isValid()) {
        calls.push_back("pre \"" + value.toString().str() + '"');
        return;
    }
    ImmutableClassObject const object(o);
    bool const isModel = ImmutableModel(o).isValid();
    calls.push_back("pre " + (isModel ? "model" : object.getFullyQualifiedOrcaTypeName().str()));
    if (property.isValid() && (!property.isComposite() || property.isDerived())) {
        return;
    }
    for (int group = 0; group <= 5; ++group) {
        for (ImmutableProperty const & each : object.getMetaClass().getOwnedAttributes()) {
            if (groupOf(each) == group) {
                calls.push_back("pre " + each.getName().str());
                for (ImmutableObject const & value : object.get(each)) {
                    listCalls(value, each, object, calls);
                }
            }
        }
    }
}

TEST(ContainmentTraversalOfAnyModel, ShowsWhatReflectionFindsWhetherOperationsMayBeOverriddenOrNot) {
    TestModel sample;
    sample.attribute(sample.classIn(sample.top, "A"), "x");
    createRandomModel(sample.top, 4, 4, 300, 7);
    sample.transaction.commit();
    MetaModel const draft = sample.model.createDeviantWithName("draft");
    draft.beginTransaction();
    draft.getTopPackage().getPackagedElements().erase(0);
    for (ImmutableClassObject const & top : {ImmutableClassObject(sample.model), ImmutableClassObject(draft)}) {
        std::vector<std::string> expected;
        listCalls(top, ImmutableProperty(), ImmutableClassObject(), expected);
        ASSERT_GT(expected.size(), 2000U);
        Recorder::Log log;
        WayRecorder pre("pre", log);
        ImmutableAccessVisitorEmpty post;
        Traversal plain(&pre, &post);
        DerivedTraversal derived(&pre, &post);
        for (Traversal * const walk : {&plain, static_cast<Traversal *>(&derived)}) {
            log = {};
            pre.walk = walk;
            EXPECT_TRUE(walk->visitObject(top));
            EXPECT_TRUE(log.calls == expected)
                << "from call "
                << std::mismatch(log.calls.begin(), log.calls.end(), expected.begin(), expected.end()).first -
                       log.calls.begin();
        }
    }
    draft.cancelTransaction();
}

// --- depth ---------------------------------------------------------------------------------------------------------

/// Walks the structure alone. The actions before and after the operation of the base must pair up.
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

TEST(ContainmentTraversalDepth, ManyLevelsNestTrulyAndComeBack) {
    constexpr int levels = longRun(100000, 5);
    TestModel const sample;
    Package const bottom = sample.nestedPackage(levels);
    AtObject pre;
    ImmutableAccessVisitorEmpty post;
    Nested walk(&pre, &post);
    EXPECT_TRUE(walk.visitObject(sample.top));
    EXPECT_EQ(walk.deepest, levels + 1);
    EXPECT_EQ(walk.depth, 0);

    pre.place = bottom;
    EXPECT_FALSE(walk.visitObject(sample.top));
    EXPECT_EQ(walk.depth, 0);
    EXPECT_FALSE(walk.getCurrentMetaProperty().isValid());

    pre.raises = true;
    EXPECT_THROW(walk.visitObject(sample.top), Stopped);
    EXPECT_EQ(walk.depth, levels + 1) << "an exception passes the actions after";

    std::ostream nowhere(nullptr);
    EXPECT_TRUE(ImmutableAccessVisitorTextWriter(nowhere).visitObject(sample.top));
}

TEST(ContainmentTraversalDepth, AThreadWithALittleStackCanWalk) {
    TestModel const sample;
    sample.nestedPackage(1000);
    ImmutableAccessVisitorEmpty visitor;
    Nested walk(&visitor, &visitor);
    std::pair<Nested *, Package> job{&walk, sample.top};
    auto const run = [](void * given) -> void * {
        auto const & [nested, top] = *static_cast<decltype(job) *>(given);
        nested->thread = std::this_thread::get_id();
        nested->visitObject(top);
        return nullptr;
    };
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, std::size_t(256) << 10U);
    pthread_t thread{};
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &job), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    EXPECT_EQ(walk.deepest, 1001);
}

} // namespace
} // namespace ZEL::tests
