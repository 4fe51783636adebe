#include "Soups.h"

namespace ZEL::Compare::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;

class RulesOfAnApplication : public Soups {
protected:
    ~RulesOfAnApplication() override { static_cast<void>(unregisterRule("salty")); }

    /// That a soup has salt in it.
    [[nodiscard]] static Rule salty(std::string const & className = "kitchen.Soup") {
        return {"salty", className, Severity::Warning, "a soup is salty", [](ImmutableClassObject const & object) {
                    return kitchen::ImmutableSoup(object).getIngredientByName("salt").isValid();
                }};
    }
};

TEST_F(RulesOfAnApplication, AreAskedOfAClassAndItsSubclasses) {
    Rule rule{"short", "ZEL.NamedElement", Severity::Note, "a name is short", [](ImmutableClassObject const & object) {
                  return ImmutableNamedElement(object).getName().str().size() < 5;
              }};
    salt.setName("pepper");
    EXPECT_THAT(lines(Rules().add(salty()).add(rule)),
                ElementsAre("warning: Soup 'leek': a soup is salty [salty]",
                            "note: Ingredient 'leek.pepper': a name is short [short]"));
    EXPECT_EQ(registeredNameOf(kitchen::Soup::MetaClass()), "kitchen.Soup");
}

TEST_F(RulesOfAnApplication, AreRegisteredForTheProcessAndTakenBack) {
    salt.setName("pepper");
    registerRule(salty());
    EXPECT_THAT(lines(Rules::all()), ElementsAre("warning: Soup 'leek': a soup is salty [salty]"));
    EXPECT_THAT(lines(Rules::ofMetamodels()), IsEmpty());
    EXPECT_THROW(registerRule(salty()), Exception) << "twice";
    EXPECT_TRUE(unregisterRule("salty"));
    EXPECT_FALSE(unregisterRule("salty"));
    EXPECT_THAT(lines(Rules::all()), IsEmpty());
}

TEST_F(RulesOfAnApplication, ThrowThroughTheCheck) {
    Rule rule = salty();
    rule.isSatisfied = [](ImmutableClassObject const &) -> bool { throw std::runtime_error("no salt"); };
    EXPECT_THROW(static_cast<void>(lines(Rules().add(rule))), std::runtime_error);
    rule.isSatisfied = nullptr;
    EXPECT_THROW(Rules().add(rule), Exception);
}

TEST_F(RulesOfAnApplication, AreChosenByName) {
    salt.setName("pepper");
    leek.setCook("");
    leek.setServes(Integer(101));
    Rules const all = Rules::all().add(salty());
    EXPECT_THAT(all.names(), IsSupersetOf({"containment", "modest", "multiplicity", "named", "salty"}));
    EXPECT_THAT(lines(all.only({"salty", "modest"})),
                ElementsAre("note: Soup 'leek': a soup serves a hundred at most [modest]",
                            "warning: Soup 'leek': a soup is salty [salty]"));
    EXPECT_THAT(lines(all.without({"salty", "modest"})).size(), 1U);
    EXPECT_THAT(lines(all.only({"salty"}).only({"modest"})), IsEmpty());
    EXPECT_THAT(all.only({"salty"}).names(), ElementsAre("salty"));
}

TEST_F(RulesOfAnApplication, AreKeptByTheCheckerThatHasThem) {
    Rules rules;
    rules.add(salty());
    Checker checker(rules);
    EXPECT_TRUE(rules.remove("salty"));
    salt.setName("pepper");
    EXPECT_EQ(checker.check(menu).size(), 1U);
    EXPECT_EQ(checker.check(menu).size(), 1U) << "again";
}

} // namespace
} // namespace ZEL::Compare::tests
