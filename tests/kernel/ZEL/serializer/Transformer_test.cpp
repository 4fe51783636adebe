#include <ZEL/base/Exception.h>
#include <ZEL/serializer/TransformerRegistry.h>

#include <boost/function.hpp>
#include <gtest/gtest.h>
#include <kernel/ZEL/serializer/ContextText.h>

#include <algorithm>
#include <ctime>
#include <limits>
#include <memory>
#include <random>

namespace ZEL::tests {
namespace {

using Serializer::QualifiedName;
using Serializer::RuleFunction;
using Serializer::TransformerRegistry;

Context attribute(std::string const & name, std::string const & value = {}) {
    Context context = role(name);
    context.setAttribute(value);
    return context;
}

ContextSequence sequenceOf(std::initializer_list<Context> contexts) {
    ContextSequence sequence;
    for (Context const & context : contexts) {
        sequence.addContext(context);
    }
    return sequence;
}

/// "a=1 b=2", with "!" after the value of a Context to skip.
std::string textOf(ContextSequence const & sequence) {
    std::string text;
    for (Context const & context : sequence) {
        text += (text.empty() ? "" : " ") + context.getRoleName() + "=" + context.getFirstValue() +
                (context.skipContext() ? "!" : "");
    }
    return text;
}

RuleFunction give(std::initializer_list<Context> contexts) {
    return [given = sequenceOf(contexts)](Context const &) { return given; };
}

struct TransformerTest : testing::Test {
    std::string applied(std::initializer_list<Context> contexts) { return textOf(rules.apply(sequenceOf(contexts))); }

    Rules rules;
};

TEST_F(TransformerTest, WithoutRulesApplyKeepsAndTheOthersDropEverything) {
    ContextSequence const input = sequenceOf({attribute("a", "1"), attribute("a", "2")});
    EXPECT_EQ(textOf(rules.apply(input)), "a=1 a=2");
    EXPECT_TRUE(rules.preApply(input).empty());
    EXPECT_TRUE(rules.postApply(input).empty());
}

TEST_F(TransformerTest, BestRuleWinsAndOfEqualsTheLast) {
    Context below = attribute("a");
    below.setParentRole("u", "p");
    rules.addTransform(below, give({attribute("x", "precise")}));
    rules.addTransform(role("a"), give({attribute("x", "first")}));
    rules.addTransform(role("a"), give({attribute("x", "last")}));
    EXPECT_EQ(applied({attribute("a")}), "x=last");
    EXPECT_EQ(applied({below}), "x=precise");

    rules.addTransform(Context(), give({attribute("x", "all")}));
    EXPECT_EQ(applied({below}), "x=all");
    EXPECT_EQ(applied({attribute("unknown")}), "x=all");
    rules.removeTransform(Context());
    // The empty pattern equals every pattern with an empty role, here only itself.
    EXPECT_EQ(applied({below}), "x=precise");
    // Removal takes patterns that differ in an open pair too.
    rules.removeTransform(role("a"));
    EXPECT_EQ(applied({below, attribute("a")}), "a= a=");
}

TEST_F(TransformerTest, OutputTakesThePlaceOfEqualEarlierContexts) {
    rules.addTransform(role("r"), give({attribute("n", "new"), attribute("a", "replaced")}));
    EXPECT_EQ(applied({attribute("a", "1"), attribute("b", "2"), attribute("a", "3"), attribute("r")}),
              "a=replaced b=2 a=replaced n=new");
    // A later one that no rule fits is simply appended.
    EXPECT_EQ(applied({attribute("r"), attribute("a", "1")}), "n=new a=replaced a=1");

    rules.addTransform(role("s"), give({skipped(attribute("a", "first"))}));
    EXPECT_EQ(applied({attribute("s"), attribute("r")}), "a=first! n=new") << "what is skipped blocks later equal ones";
}

TEST_F(TransformerTest, ManyContextsAreRewrittenLikeFewAndAtLinearCost) {
    rules.addTransform(role("r"), give({attribute("n", "new"), attribute("a0", "replaced"), attribute("a7", "too")}));
    rules.addTransform(role("s"), give({skipped(attribute("a9", "last")), attribute("a9", "blocked")}));
    auto const costOf = [this](int count) {
        ContextSequence many = sequenceOf({attribute("r"), attribute("a0", "appended")});
        for (int i = 1; i < count; ++i) {
            many.addContext(attribute("a" + std::to_string(i), std::to_string(i)));
        }
        many.append(sequenceOf({attribute("r"), attribute("s")}));
        std::clock_t least = std::numeric_limits<std::clock_t>::max();
        for (int run = 0; run < 3; ++run) {
            std::clock_t const begin = std::clock(); // of the processor: others may be at work beside the test
            std::string const text = textOf(rules.apply(many));
            least = std::min(least, std::clock() - begin);
            EXPECT_TRUE(text.starts_with("n=new a0=replaced a7=too a0=replaced a1=1 a2=2 a3=3 a4=4 a5=5 a6=6 a7=too "
                                         "a8=8 a9=last! a10=10 "))
                << text.substr(0, 200);
            EXPECT_TRUE(text.ends_with("=" + std::to_string(count - 1)));
        }
        return least;
    };
    EXPECT_LT(costOf(40'000), 9 * costOf(10'000)) << "quadratic is 16 times";
}

TEST_F(TransformerTest, LinkTakesThePlaceOfItsElement) {
    // The output has no parent pairs and the element has; what both have is equal.
    Context element = role("type");
    element.setType("u", "Class");
    element.setParentRole("", "ownedAttribute");
    element.setParentType("u", "Property");
    element.setElement("");
    Context href = attribute("href", "f.xmi#1");
    href.setParent(element);
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

TEST_F(TransformerTest, GeneratingPassesGiveWhatRulesGiveAndRepeatEqualOnes) {
    rules.addPreTransform(role("a"), give({attribute("x", "1"), attribute("y", "2")}));
    rules.addPostTransform(role("b"), give({attribute("z", "3")}));
    ContextSequence const input = sequenceOf({attribute("a"), attribute("b"), attribute("a")});
    EXPECT_EQ(textOf(rules.preApply(input)), "x=1 y=2 x=1 y=2");
    EXPECT_EQ(textOf(rules.postApply(input)), "z=3");
    EXPECT_EQ(textOf(rules.apply(input)), "a= b= a=");

    rules.addPostTransform(role("a"), give({skipped(attribute("z", "s"))}));
    EXPECT_EQ(textOf(rules.postApply(input)), "z=s!");
    rules.removePostTransform(role("a"));
    rules.removePreTransform(role("a"));
    EXPECT_EQ(textOf(rules.postApply(input)), "z=3");
    EXPECT_TRUE(rules.preApply(input).empty());
}

TEST_F(TransformerTest, RulesMayChangeTheTableTheyStandIn) {
    std::string large(1000, 'x');
    rules.addTransform(role("a"), [this, large](Context const &) {
        rules.removeTransform(role("a"));
        for (int i = 0; i < 100; ++i) {
            rules.addTransform(role("b"), give({attribute("b", std::to_string(i))}));
        }
        return ContextSequence(attribute("a", large.substr(0, 2)));
    });
    EXPECT_EQ(applied({attribute("b", "before"), attribute("a"), attribute("a", "again"), attribute("b")}),
              "b=99 a=xx a=again");
}

void setTypeOf(Context & context, QualifiedName name) { context.setType(name); }
void setRoleOf(Context & context, QualifiedName name) { context.setRole(name); }
void setParentTypeOf(Context & context, QualifiedName name) { context.setParentType(name); }
void setParentRoleOf(Context & context, QualifiedName name) { context.setParentRole(name); }

TEST_F(TransformerTest, RememberedAnswersAreThoseOfAFullSearch) {
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
    for (int i = 0; i < 20; ++i) {
        patterns.push_back(make());
        rules.addTransform(patterns.back(), give({attribute("x", std::to_string(i))}));
    }
    std::vector<Context> questions;
    for (int i = 0; i < 3000; ++i) {
        questions.push_back(make());
    }
    // So many that differ in one name only that some share a place among the answers.
    for (auto const set : {&setTypeOf, &setRoleOf, &setParentTypeOf, &setParentRoleOf}) {
        for (int i = 0; i < 400; ++i) {
            Context context;
            set(context, QualifiedName("", "n" + std::to_string(i)));
            questions.push_back(context);
            patterns.push_back(context);
            rules.addTransform(context, give({attribute("x", std::to_string(patterns.size() - 1))}));
        }
    }
    for (Context const & context : questions) {
        std::string expected = context.getRoleName() + "=";
        int best = 0;
        for (std::size_t rule = 0; rule < patterns.size(); ++rule) {
            int const match = patterns[rule].weightedMatch(context);
            if (match != 0 && match >= best) {
                best = match;
                expected = "x=" + std::to_string(rule);
            }
        }
        ASSERT_EQ(applied({context}), expected);
        ASSERT_EQ(applied({context}), expected);
    }
}

TEST_F(TransformerTest, EmptyFunctionRaisesWhenItsRuleIsTaken) {
    rules.addTransform(role("a"), RuleFunction());
    EXPECT_EQ(applied({attribute("b")}), "b=");
    EXPECT_THROW(applied({attribute("a")}), boost::bad_function_call);
}

struct TransformerRegistryTest : testing::Test {
    /// A Transformer with one rule, that takes note of its end.
    class Mortal : public Rules {
    public:
        Mortal(std::string const & pattern, Context const & given, std::string & died) : fName(pattern), fDied(died) {
            addTransform(role(pattern), give({given}));
        }
        ~Mortal() override { fDied += fName; }

    private:
        std::string fName;
        std::string & fDied;
    };

    std::string applied() { return textOf(registry.apply(attribute("a"))); }

    std::string died;
    TransformerRegistry registry;
    Mortal * const first = new Mortal("a", attribute("b", "1"), died);
    std::shared_ptr<Mortal> const second = std::make_shared<Mortal>("b", attribute("c", "2"), died);
};

TEST_F(TransformerRegistryTest, PassesTheResultOfOneToTheNext) {
    EXPECT_EQ(textOf(registry.preApply(attribute("a"))), "a=");
    registry.addTransformer(first);
    registry.addTransformer(second);
    EXPECT_EQ(applied(), "c=2");
    EXPECT_TRUE(registry.preApply(attribute("a")).empty());
    second->addPreTransform(role("a"), give({attribute("d", "3")}));
    EXPECT_EQ(textOf(registry.preApply(attribute("a"))), "d=3"); // the first has no say in what comes before
    EXPECT_TRUE(registry.postApply(attribute("a")).empty());
    first->addPreTransform(role("a"), give({attribute("e", "4")}));
    EXPECT_TRUE(registry.preApply(attribute("a")).empty());
    registry.setSerializePhase(true);
    EXPECT_TRUE(first->isSerializePhase() && second->isSerializePhase());
    registry.removeTransformer(first);
    EXPECT_EQ(applied(), "a=");
}

TEST_F(TransformerRegistryTest, OwnsWhatItIsGivenByRawPointer) {
    {
        TransformerRegistry brief;
        brief.addTransformer(first);
        brief.addTransformer(first);
        brief.removeTransformer(first);
        EXPECT_EQ(died, "a");
        brief.addTransformer(new Mortal("b", attribute("b"), died));
        brief.clear();
        EXPECT_EQ(died, "ab");
        brief.addTransformer(new Mortal("c", attribute("c"), died));
        EXPECT_THROW(brief.addTransformer(static_cast<Transformer *>(nullptr)), Exception);
    }
    EXPECT_EQ(died, "abc");
}

TEST_F(TransformerRegistryTest, MayBeChangedByTheRulesOfItsTransformers) {
    first->addTransform(role("a"), [&](Context const & context) {
        for (int i = 0; i < 9; ++i) {
            registry.addTransformer(std::make_shared<Mortal>("a", attribute("b", "1"), died));
        }
        registry.removeTransformer(first);
        EXPECT_EQ(died, "") << "it is still at work";
        return ContextSequence(context);
    });
    registry.addTransformer(first);
    EXPECT_EQ(applied(), "a=");
    EXPECT_EQ(died, "a");
    EXPECT_EQ(applied(), "b=1");
}

} // namespace
} // namespace ZEL::tests
