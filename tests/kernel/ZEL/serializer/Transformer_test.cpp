#include <ZEL/Exception.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/serializer/LinkedElement.h>
#include <ZEL/serializer/Reference.h>
#include <ZEL/serializer/Transformer.h>
#include <ZEL/serializer/TransformerRegistry.h>

#include <boost/function.hpp>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <random>
#include <string>

namespace ZEL::Serializer {
namespace {

Context attribute(std::string const & name, std::string const & value = {}) {
    Context context;
    context.setRole("", name);
    context.setAttribute(value);
    return context;
}

Context role(std::string const & name) {
    Context pattern;
    pattern.setRole("", name);
    return pattern;
}

ContextSequence sequenceOf(std::initializer_list<Context> contexts) {
    ContextSequence sequence;
    for (Context const & context : contexts) {
        sequence.addContext(context);
    }
    return sequence;
}

/// "a=1 b=2", with "!" behind the value of a Context to skip.
std::string textOf(ContextSequence const & sequence) {
    std::string text;
    for (Context const & context : sequence) {
        text += (text.empty() ? "" : " ") + context.getRoleName() + "=" + context.getFirstValue() +
                (context.skipContext() ? "!" : "");
    }
    return text;
}

/// A Transformer whose rules a test adds.
class Rules : public Transformer {
public:
    using Transformer::addPostTransform;
    using Transformer::addPreTransform;
    using Transformer::addTransform;
    using Transformer::setOnCreate;
    using Transformer::setPostTransform;
    using Transformer::setResolveReference;

    ~Rules() override {
        if (died != nullptr) {
            *died += name;
        }
    }

    std::string name;
    std::string * died = nullptr;
};

RuleFunction give(std::initializer_list<Context> contexts) {
    return [given = sequenceOf(contexts)](Context const &) { return given; };
}

TEST(Transformer, WithoutRulesApplyKeepsAndTheOthersDropEverything) {
    Rules rules;
    Context element = role("e");
    element.setElement("7");
    ContextSequence input = sequenceOf({element, attribute("a", "1"), attribute("a", "2")});
    input.removeContext(role("none"));
    EXPECT_EQ(textOf(rules.apply(input)), "e=7 a=1 a=2");
    EXPECT_EQ(rules.apply(input).elementCount(), 1U);
    EXPECT_TRUE(rules.preApply(input).empty());
    EXPECT_TRUE(rules.postApply(input).empty());
}

TEST(Transformer, BestRuleWinsAndOfEqualsTheLast) {
    Rules rules;
    Context precise = role("a");
    precise.setParentRole("u", "p");
    rules.addTransform(precise, give({attribute("x", "precise")}));
    rules.addTransform(role("a"), give({attribute("x", "first")}));
    rules.addTransform(role("a"), give({attribute("x", "last")}));

    EXPECT_EQ(textOf(rules.apply(attribute("a"))), "x=last");
    Context below = attribute("a");
    below.setParentRole("u", "p");
    EXPECT_EQ(textOf(rules.apply(below)), "x=precise");

    rules.addTransform(Context(), give({attribute("x", "all")}));
    EXPECT_EQ(textOf(rules.apply(below)), "x=all");
    EXPECT_EQ(textOf(rules.apply(attribute("unknown"))), "x=all");
    rules.removeTransform(Context());
    // The empty pattern equals every pattern with an empty role, here only itself.
    EXPECT_EQ(textOf(rules.apply(below)), "x=precise");
}

TEST(Transformer, RemovalTakesPatternsThatDifferInAnOpenPairToo) {
    Rules rules;
    Context precise = role("a");
    precise.setParentRole("u", "p");
    rules.addTransform(precise, give({}));
    rules.addTransform(role("b"), give({}));
    rules.removeTransform(role("a"));
    EXPECT_EQ(textOf(rules.apply(sequenceOf({precise, role("b")}))), "a=");
}

TEST(Transformer, OutputTakesThePlaceOfAnEqualEarlierContext) {
    Rules rules;
    rules.addTransform(role("r"), give({attribute("n", "new"), attribute("a", "replaced")}));
    EXPECT_EQ(textOf(rules.apply(
                  sequenceOf({attribute("a", "1"), attribute("b", "2"), attribute("r"), attribute("c", "3")}))),
              "a=replaced b=2 n=new c=3");
    // All equal ones are replaced.
    EXPECT_EQ(textOf(rules.apply(sequenceOf({attribute("a", "1"), attribute("a", "2"), attribute("r")}))),
              "a=replaced a=replaced n=new");
    // A later one that no rule fits is simply appended.
    EXPECT_EQ(textOf(rules.apply(sequenceOf({attribute("r"), attribute("a", "1")}))), "n=new a=replaced a=1");
}

TEST(Transformer, LinkTakesThePlaceOfItsElement) {
    // The output has no parent pairs, the element has: they are equal for all that both give.
    Context element = role("type");
    element.setType("u", "Class");
    element.setParentRole("", "ownedAttribute");
    element.setParentType("u", "Property");
    element.setElement("");
    Context href = role("href");
    href.setParent(element);
    href.setAttribute("f.xmi#1");
    Rules rules;
    rules.addTransform(role("href"), [](Context const & context) {
        Context link;
        link.setRole(context.getParentRole());
        link.setType(context.getParentType());
        link.setReference(context.getFirstValue());
        return ContextSequence(link);
    });
    ContextSequence const result = rules.apply(sequenceOf({element, href}));
    EXPECT_EQ(textOf(result), "type=f.xmi#1");
    EXPECT_TRUE(result.front().isReference());
    EXPECT_EQ(result.elementCount(), 0U);
}

TEST(Transformer, SkippedContextBlocksLaterEqualOnes) {
    Rules rules;
    Context skipped = attribute("a", "first");
    skipped.setSkipState(true);
    rules.addTransform(role("s"), give({skipped}));
    rules.addTransform(role("r"), give({attribute("a", "late")}));
    EXPECT_EQ(textOf(rules.apply(sequenceOf({attribute("s"), attribute("r")}))), "a=first!");
}

TEST(Transformer, GeneratingPassesGiveWhatRulesGiveAndRepeatEqualOnes) {
    Rules rules;
    rules.addPreTransform(role("a"), give({attribute("x", "1"), attribute("y", "2")}));
    rules.addPostTransform(role("b"), give({attribute("z", "3")}));
    ContextSequence const input = sequenceOf({attribute("a"), attribute("b"), attribute("a")});
    EXPECT_EQ(textOf(rules.preApply(input)), "x=1 y=2 x=1 y=2");
    EXPECT_EQ(textOf(rules.postApply(input)), "z=3");
    EXPECT_EQ(textOf(rules.apply(input)), "a= b= a=");

    Context skipped = attribute("z", "s");
    skipped.setSkipState(true);
    rules.addPostTransform(role("a"), give({skipped}));
    EXPECT_EQ(textOf(rules.postApply(input)), "z=s!");
    rules.removePostTransform(role("a"));
    rules.removePreTransform(role("a"));
    EXPECT_EQ(textOf(rules.postApply(input)), "z=3");
    EXPECT_TRUE(rules.preApply(input).empty());
}

TEST(Transformer, RulesMayChangeTheTableTheyStandIn) {
    Rules rules;
    std::string large(1000, 'x');
    rules.addTransform(role("a"), [&rules, large](Context const & context) {
        rules.removeTransform(role("a"));
        for (int i = 0; i < 100; ++i) {
            rules.addTransform(role("b"), give({attribute("b", std::to_string(i))}));
        }
        Context result = context;
        result.setAttribute(large.substr(0, 2));
        return ContextSequence(result);
    });
    EXPECT_EQ(textOf(rules.apply(
                  sequenceOf({attribute("b", "before"), attribute("a"), attribute("a", "again"), attribute("b")}))),
              "b=99 a=xx a=again");
}

TEST(Transformer, RememberedAnswersAreThoseOfAFullSearch) {
    // Every question is put twice to a table, and to a table asked for the first time.
    std::mt19937 random(7);
    auto const pick = [&random] {
        char const * const parts[] = {"", "", "a", "b"};
        return QualifiedName(parts[random() % 4], parts[random() % 4]);
    };
    auto const make = [&] {
        Context context;
        context.setType(pick());
        context.setRole(pick());
        context.setParentType(pick());
        context.setParentRole(pick());
        return context;
    };
    std::vector<Context> patterns;
    Rules rules;
    for (int i = 0; i < 20; ++i) {
        patterns.push_back(make());
        rules.addTransform(patterns.back(), give({attribute("x", std::to_string(i))}));
    }
    for (int i = 0; i < 3000; ++i) {
        Context const context = make();
        std::string expected = context.getRoleName() + "=";
        int best = 0;
        for (std::size_t rule = 0; rule < patterns.size(); ++rule) {
            int const match = patterns[rule].weightedMatch(context);
            if (match != 0 && match >= best) {
                best = match;
                expected = "x=" + std::to_string(rule);
            }
        }
        ASSERT_EQ(textOf(rules.apply(context)), expected);
        ASSERT_EQ(textOf(rules.apply(context)), expected);
    }
}

TEST(Transformer, HooksAreCalledIfThereAreAny) {
    Rules rules;
    EXPECT_FALSE(rules.resolveReference("u", Reference()).isValid());
    rules.onCreate(Context(), ClassObject());
    rules.postTransform(Model());

    std::string calls;
    rules.setOnCreate(
        [&](Context const & context, ClassObject const &) { calls += "create " + context.getRoleName(); });
    rules.setResolveReference([&](std::string const & uri, Reference const & reference) {
        calls += " resolve " + uri + reference.id;
        return LinkedElement();
    });
    rules.setPostTransform([&](Model const &) { calls += " post"; });
    rules.onCreate(attribute("a"), ClassObject());
    static_cast<void>(rules.resolveReference("u", Reference{{}, {}, "#1"}));
    rules.postTransform(Model());
    EXPECT_EQ(calls, "create a resolve u#1 post");
}

TEST(Transformer, EmptyFunctionRaisesWhenItsRuleIsTaken) {
    Rules rules;
    rules.addTransform(role("a"), RuleFunction());
    EXPECT_EQ(textOf(rules.apply(attribute("b"))), "b=");
    EXPECT_THROW(static_cast<void>(rules.apply(attribute("a"))), boost::bad_function_call);
}

TEST(TransformerRegistry, PassesTheResultOfOneToTheNext) {
    TransformerRegistry registry;
    EXPECT_EQ(textOf(registry.preApply(attribute("a"))), "a=");
    auto first = std::make_shared<Rules>();
    first->addTransform(role("a"), give({attribute("b", "1")}));
    auto second = std::make_shared<Rules>();
    second->addTransform(role("b"), give({attribute("c", "2")}));
    registry.addTransformer(first);
    registry.addTransformer(second);
    EXPECT_EQ(textOf(registry.apply(attribute("a"))), "c=2");
    EXPECT_TRUE(registry.preApply(attribute("a")).empty());
    second->addPreTransform(role("a"), give({attribute("d", "3")}));
    EXPECT_EQ(textOf(registry.preApply(attribute("a"))), "d=3"); // the first has no say in what comes before
    EXPECT_TRUE(registry.postApply(attribute("a")).empty());
    first->addPreTransform(role("a"), give({attribute("e", "4")}));
    EXPECT_TRUE(registry.preApply(attribute("a")).empty());
    registry.setSerializePhase(true);
    EXPECT_TRUE(first->isSerializePhase() && second->isSerializePhase());
    registry.removeTransformer(first.get());
    EXPECT_EQ(textOf(registry.apply(attribute("a"))), "a=");
}

TEST(TransformerRegistry, OwnsWhatItIsGivenByRawPointer) {
    std::string died;
    auto make = [&](char const * name) {
        auto * const rules = new Rules;
        rules->name = name;
        rules->died = &died;
        return rules;
    };
    {
        TransformerRegistry registry;
        Rules * const a = make("a");
        registry.addTransformer(a);
        registry.addTransformer(a);
        registry.removeTransformer(a);
        EXPECT_EQ(died, "a");
        registry.addTransformer(make("b"));
        registry.clear();
        EXPECT_EQ(died, "ab");
        registry.addTransformer(make("c"));
        EXPECT_THROW(registry.addTransformer(static_cast<Transformer *>(nullptr)), Exception);
    }
    EXPECT_EQ(died, "abc");
}

TEST(TransformerRegistry, MayBeChangedByTheRulesOfItsTransformers) {
    TransformerRegistry registry;
    auto * const first = new Rules;
    std::string died;
    first->name = "first";
    first->died = &died;
    first->addTransform(role("a"), [&](Context const & context) {
        for (int i = 0; i < 9; ++i) {
            auto more = std::make_shared<Rules>();
            more->addTransform(role("a"), give({attribute("b", "1")}));
            registry.addTransformer(more);
        }
        registry.removeTransformer(first);
        EXPECT_EQ(died, "") << "it is still at work";
        return ContextSequence(context);
    });
    registry.addTransformer(first);
    EXPECT_EQ(textOf(registry.apply(attribute("a"))), "a=");
    EXPECT_EQ(died, "first");
    EXPECT_EQ(textOf(registry.apply(attribute("a"))), "b=1");
}

} // namespace
} // namespace ZEL::Serializer
