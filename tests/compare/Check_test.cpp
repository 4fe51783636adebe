#include "Soups.h"

#include <ZEL/metamodel/Remainder.h>

namespace ZEL::Compare::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Check = Soups;

TEST_F(Check, FindsNothingInAModelThatIsAsItShouldBe) { EXPECT_THAT(lines(), IsEmpty()); }

TEST_F(Check, TellsOfTooFewAndTooManyValuesAndTakesADefaultForOne) {
    leek.setCook("");
    salt.destroy();
    for (char const * const name : {"fish", "game", "cheese"}) {
        kitchen::Roast const roast = factory.createRoast();
        roast.setName(name);
        roast.setCook("Ada");
        menu.getMeals().push_back(roast);
        leek.getAfters().push_back(roast);
    }
    EXPECT_THAT(lines(),
                ElementsAre("error: Soup 'leek': has no value of 'ingredient', expected at least 1 [multiplicity]",
                            "error: Soup 'leek': has no value of 'cook', expected at least 1 [multiplicity]",
                            "error: Soup 'leek': has 3 values of 'after', expected at most 2 [multiplicity]"));
    Diagnostics const diagnostics = check(menu, Rules::ofMetamodels());
    EXPECT_TRUE(diagnostics.at(0).object == leek);
    EXPECT_EQ(diagnostics.at(0).property.getName(), "ingredient");
}

TEST_F(Check, TellsOfAnEndThatDoesNotLeadBack) {
    kitchen::Soup const pea = makeSoup("pea");
    pea.getIngredients().push_back(makeIngredient("pea"));
    leek.getBefores().push_back(pea);
    EXPECT_THAT(lines(), IsEmpty());
    pea.getImplementation()->getAftersWithoutAssociation(pea.getDeviant()).clear();
    EXPECT_THAT(lines(), ElementsAre("error: Soup 'leek': 'before' leads to Soup 'pea', whose 'after' does not lead "
                                     "back [oppositeEnds]"));
}

TEST_F(Check, TellsOfAPartThatBelongsElsewhereAndOfOneThatIsHeldTwice) {
    kitchen::Soup const pea = makeSoup("pea");
    pea.getImplementation()->getIngredientsWithoutAssociation(pea.getDeviant()).push_back(salt);
    leek.getImplementation()->setOnlyBase(leek.getDeviant(), salt);
    EXPECT_THAT(lines(Rules::all().only({"containment"})),
                ElementsAre("error: Soup 'leek': holds Ingredient 'leek.salt' twice [containment]",
                            "error: Soup 'pea': 'ingredient' holds Ingredient 'leek.salt', whose container is Soup "
                            "'leek' [containment]"));
}

TEST_F(Check, ComparesNamesAmongThePartsOfOneProperty) {
    leek.getIngredients().push_back(makeIngredient("pepper"));
    leek.getIngredients().push_back(makeIngredient("salt"));
    leek.getIngredients().push_back(makeIngredient(""));
    leek.getIngredients().push_back(makeIngredient(""));
    leek.setBase(makeIngredient("pepper"));
    Diagnostics const diagnostics = check(menu, Rules::ofMetamodels());
    EXPECT_THAT(linesOf(diagnostics), ElementsAre("warning: Ingredient 'leek.salt': another Ingredient in Soup 'leek' "
                                                  "has the same name [uniqueNames]"));
    EXPECT_TRUE(diagnostics.at(0).object == leek.getIngredients().at(2)) << "the later one";
}

TEST(CheckOfNamespaces, TellsOperationsApartByTheirParametersAndClassesByTheirKind) {
    MetaModel const model(FactoryRegistry::instance()->createModel("http://schema.omg.org/spec/MOF/2.0"));
    Factory const factory = model.getFactoryFactory();
    model.beginTransaction("names");
    Package const library = factory.createPackage("library");
    model.setTopPackage(library);
    Class const book = factory.createClass();
    Enumeration const kind = factory.createEnumeration();
    library.getPackagedElements().push_back(book);
    library.getPackagedElements().push_back(kind);
    library.getPackagedElements().push_back(factory.createPackage("library"));
    book.setName("Book");
    kind.setName("Book");
    auto const addOperation = [&](Type const & type) {
        Operation const operation = factory.createOperation();
        operation.setName("lend");
        Parameter const parameter = factory.createParameter();
        parameter.setType(type);
        operation.getOwnedParameters().push_back(parameter);
        book.getOwnedOperations().push_back(operation);
        return operation;
    };
    addOperation(book);
    addOperation(kind);
    EXPECT_THAT(linesOf(check(model)), IsEmpty());
    addOperation(kind);
    kind.setName("Kind");
    Class const other = factory.createClass();
    other.setName("Book");
    library.getPackagedElements().push_back(other);
    EXPECT_THAT(linesOf(check(model)),
                ElementsAre("warning: Operation 'library.Book.lend': another Operation in Class 'library.Book' has the "
                            "same name and parameters [uniqueNames]",
                            "warning: Class 'library.Book': another Class in Package 'library' has the same name "
                            "[uniqueNames]"));
    model.commitTransaction();
}

TEST(CheckOfGenerals, TellsOfTheClassesInACycleAndNotOfThoseBelowIt) {
    MetaModel const model(FactoryRegistry::instance()->createModel("http://schema.omg.org/spec/MOF/2.0"));
    Factory const factory = model.getFactoryFactory();
    model.beginTransaction("generals");
    Package const top = factory.createPackage("p");
    model.setTopPackage(top);
    std::vector<Class> classes;
    for (char const * const name : {"A", "B", "C", "D", "E"}) {
        classes.push_back(factory.createClass());
        classes.back().setName(name);
        top.getPackagedElements().push_back(classes.back());
    }
    // E and D below C, and D below both B and C: a diamond is no cycle.
    classes[1].getSuperClasses().push_back(classes[0]);
    classes[2].getSuperClasses().push_back(classes[0]);
    classes[3].getSuperClasses().push_back(classes[1]);
    classes[3].getSuperClasses().push_back(classes[2]);
    classes[4].getSuperClasses().push_back(classes[3]);
    EXPECT_THAT(linesOf(check(model)), IsEmpty());
    classes[0].getSuperClasses().push_back(classes[2]);
    EXPECT_THAT(linesOf(check(model)), ElementsAre("error: Class 'p.A': inherits from itself [generalizationCycle]",
                                                   "error: Class 'p.C': inherits from itself [generalizationCycle]"));
    model.commitTransaction();
}

TEST_F(Check, TellsOfLinksThatWereKeptAndNotOfTheAbsenceOfWhatTheFileHas) {
    leek.getIngredients().erase(0);
    salt.destroy();
    Remainder kept;
    kept.links.push_back({.property = "after", .target = "nowhere", .typeUri = {}, .typeName = {}, .content = {}});
    kept.elements.push_back({.xml = "<ingredients/>"});
    setRemainder(leek, kept);
    std::string const link = "warning: Soup 'leek': 'after' leads to 'nowhere', which was not found [unresolvedLink]";
    EXPECT_THAT(
        lines(),
        ElementsAre("error: Soup 'leek': has no value of 'ingredient', expected at least 1 [multiplicity]", link));
    kept.elements.push_back({.xml = "<ingredient type=\"Spice\"/>"});
    setRemainder(leek, kept);
    EXPECT_THAT(lines(), ElementsAre(link));
}

TEST_F(Check, AsksTheConstraintsOfSuperclassesUnlessASubclassReplacesThem) {
    kitchen::Roast const roast = factory.createRoast();
    roast.setCook("Ada");
    roast.setServes(Integer(11));
    menu.getMeals().push_back(roast);
    leek.setServes(Integer(101));
    leek.setName("");
    EXPECT_THAT(lines(), ElementsAre("note: Soup in Menu: a soup serves a hundred at most [modest]",
                                     "error: Soup in Menu: a dish has a name [named]",
                                     "error: Roast in Menu: a dish has a name [named]",
                                     "warning: Roast in Menu: a dish serves ten at most [modest]"));
    leek.setServes(Integer(11));
    leek.setName("leek");
    EXPECT_THAT(linesOf(check(leek)), IsEmpty());
    EXPECT_THAT(linesOf(check(roast)).size(), 2U) << "a subtree alone";
}

TEST_F(Check, SeesObjectsAsTheirDeviantDoes) {
    menu.commitTransaction();
    kitchen::Menu const draft(menu.createDeviantWithName("draft"));
    draft.beginTransaction("no cook");
    leek.asDeviant(draft).setCook("");
    draft.commitTransaction();
    EXPECT_THAT(lines(), IsEmpty());
    Diagnostics const diagnostics = check(draft);
    ASSERT_EQ(diagnostics.size(), 1U);
    EXPECT_TRUE(diagnostics[0].object.getDeviant() == draft.getDeviant());
}

TEST_F(Check, OfSingleObjectsLeavesOutWhatTheyContain) {
    leek.setCook("");
    leek.getIngredients().push_back(makeIngredient("salt"));
    Checker checker;
    EXPECT_THAT(linesOf(checker.checkEach({menu, ImmutableClassObject(), salt})), IsEmpty());
    EXPECT_THAT(linesOf(checker.checkEach({leek, leek.getIngredients().at(1)})).size(), 2U);
    EXPECT_THAT(linesOf(checker.checkEach({leek})).size(), 2U) << "names clash in it";
}

TEST_F(Check, MeetsAPartThatIsHeldTwiceOnce) {
    kitchen::Ingredient const pepper = makeIngredient("pepper");
    leek.setBase(pepper);
    menu.getImplementation()->getSpecialsWithoutAssociation(menu.getDeviant()).push_back(leek);
    EXPECT_THAT(linesOf(check(menu, Rules::all().only({"containment"}))),
                ElementsAre("error: Menu: holds Soup 'leek' twice [containment]"));
    EXPECT_EQ(check(menu, Rules().add({"all", "ZEL.ClassObject", Severity::Note, "",
                                       [](ImmutableClassObject const &) { return false; }}))
                  .size(),
              4U)
        << "each object once";
}

TEST_F(Check, OfAnInvalidHandleThrows) { EXPECT_THROW((void)check(ImmutableClassObject()), Exception); }

} // namespace
} // namespace ZEL::Compare::tests
