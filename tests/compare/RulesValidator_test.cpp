#include "Soups.h"

#include <ZEL/compare/RulesValidator.h>
#include <ZEL/deviants/Transaction.h>

namespace ZEL::Compare::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Validation : public Soups {
protected:
    Validation() { menu.commitTransaction(); }

    /// Does it in a transaction; returns whether that was kept.
    template <class Action> bool isKept(Action action) const {
        Transaction transaction(menu.getDeviant(), "an edit");
        action();
        return transaction.commit();
    }
};

TEST_F(Validation, RefusesACommitWithErrorsAndHasThemAtHand) {
    RulesValidator validator;
    registerValidatorOnCommit(menu.getDeviant(), validator);
    EXPECT_FALSE(isKept([this] { static_cast<void>(makeSoup("pea")); }));
    EXPECT_TRUE(menu.getDeviant().getRefusingListener() == &validator);
    EXPECT_EQ(menu.getMeals().size(), 1);
    ASSERT_THAT(linesOf(validator.getDiagnostics()),
                ElementsAre("error: Soup 'pea': has no value of 'ingredient', expected at least 1 [multiplicity]"));
    EXPECT_FALSE(validator.getDiagnostics().front().object.isValid()) << "it has never been";

    EXPECT_TRUE(isKept([this] { makeSoup("pea").getIngredients().push_back(makeIngredient("pea")); }));
    EXPECT_THAT(validator.getDiagnostics(), IsEmpty());
    menu.getDeviant().unregisterValidatorOnCommit(&validator);
}

TEST_F(Validation, LetsPassWhatIsLessGraveAndTellsIt) {
    RulesValidator lenient;
    registerValidatorOnCommit(menu.getDeviant(), lenient);
    auto const serve = [this] { leek.setServes(Integer(101)); };
    EXPECT_TRUE(isKept(serve));
    EXPECT_EQ(lenient.getDiagnostics().size(), 1U);
    menu.getDeviant().unregisterValidatorOnCommit(&lenient);

    RulesValidator strict(Rules::all(), Severity::Note);
    registerValidatorOnCommit(menu.getDeviant(), strict);
    EXPECT_FALSE(isKept([this] { leek.setServes(Integer(102)); }));
    EXPECT_EQ(leek.getServes(), Integer(101));
    menu.getDeviant().unregisterValidatorOnCommit(&strict);
}

TEST_F(Validation, SeesTheNamesBesideAndPassesOverWhatWasNotTouched) {
    menu.beginTransaction("a second ingredient, and a soup that is wrong");
    kitchen::Ingredient const pepper = makeIngredient("pepper");
    leek.getIngredients().push_back(pepper);
    static_cast<void>(makeSoup("pea"));
    menu.commitTransaction();

    RulesValidator validator(Rules::all(), Severity::Warning);
    registerValidatorOnCommit(menu.getDeviant(), validator);
    EXPECT_FALSE(isKept([&] { pepper.setName("salt"); })) << "the clash is with an object that stays as it is";
    EXPECT_TRUE(isKept([&] { pepper.setName("paprika"); }));
    menu.getDeviant().unregisterValidatorOnCommit(&validator);
}

} // namespace
} // namespace ZEL::Compare::tests
