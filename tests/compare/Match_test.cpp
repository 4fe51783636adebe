// Which objects of two models are one and the same to their reader.

#include "Models.h"
#include "support/ExpectRaises.h"

#include <ZEL/compare/Match.h>

#include <library/LibraryFactory.h>

namespace ZEL::Compare::tests {
namespace {

using Ids = MatchSettings::Ids;

/// Class and name; what has none is called after its number or its text, operations after their parameters, too.
std::string called(ImmutableClassObject const & object) {
    std::string text = object.getMetaClass().getName().str() + " " + nameOf(object);
    for (char const * const property : {"number", "body", "alias"}) {
        if (object.getMetaClass().getProperty(property).isValid()) {
            text += object.getOne(String(property)).toString().str();
        }
    }
    if (ImmutableOperation const operation(object); operation.isValid()) {
        for (ImmutableParameter const & parameter : operation.getOwnedParameters()) {
            text += "," + parameter.getName().str();
        }
    }
    return text;
}

/// A line for each object whose counterpart is called otherwise, or is missing, in the order of the left tree.
std::string pairsOf(Match const & match) {
    std::string lines;
    std::size_t count = 0;
    for (ImmutableClassObject const & left : objectsIn(match.left())) {
        ImmutableClassObject const right = match.rightOf(left);
        if (!right.isValid()) {
            lines += called(left) + " =\n";
            continue;
        }
        ++count;
        EXPECT_EQ(match.leftOf(right), left);
        lines += called(left) == called(right) ? "" : called(left) + " = " + called(right) + "\n";
    }
    for (ImmutableClassObject const & right : objectsIn(match.right())) {
        lines += match.leftOf(right).isValid() ? "" : "= " + called(right) + "\n";
    }
    EXPECT_EQ(match.size(), count);
    return lines;
}

struct Row {
    char const * title;
    Model left;
    Model right;
    std::string pairs;
    Ids ids = Ids::Judge;
};

void expectPairs(std::vector<Row> const & rows) {
    for (Row const & row : rows) {
        MatchSettings settings;
        settings.ids = row.ids;
        EXPECT_EQ(pairsOf(Match(row.left, row.right, settings)), row.pairs) << row.title;
    }
}

TEST(Match, TakesObjectsWithTheSameIdForTheSameAsLongAsIdsAreWorthTheName) {
    Model const books = house("<book id='1' name='Orlando'/><book id='2' name='Flush'><copy id='3' number='7'/></book>"
                              "<book id='4' name='The Waves'/><reader id='5' name='Ann'/>");
    // The same, but written by a tool that numbers objects as they come, after a book was put in front.
    Model const numbered =
        house("<book id='1' name='The Years'/><book id='2' name='Orlando'/>"
              "<book id='3' name='Flush'><copy id='4' number='7'/></book><book id='5' name='The Waves'/>"
              "<reader id='6' name='Ann'/>");
    Model const letters = house("<book id='1' name='a'/><book id='2' name='b'/><book id='3' name='c'/>");
    expectPairs({
        {"renamed, moved and changed at once", books,
         house("<book id='4' name='Die Wellen'><copy id='3' number='8'/></book>"
               "<book id='1' name='Orlando'/><book id='2' name='Flush'/><reader id='5' name='Ann'/>"),
         "Copy 7 = Copy 8\nBook The Waves = Book Die Wellen\n"},
        {"numbered anew", books, numbered, "= Book The Years\n"},
        {"numbered anew, and believed", books, numbered,
         "Book Orlando = Book The Years\nBook Flush = Book Orlando\n= Book Flush\n", Ids::Use},
        {"two have kept their names, that of the house among them, and two have lost them to others", letters,
         house("<book id='1' name='a'/><book id='2' name='x'/><book id='3' name='b'/><book id='4' name='c'/>"),
         "Book b = Book x\nBook c = Book b\n= Book c\n"},
        {"all are renamed, to what nobody was called", letters,
         house("<book id='3' name='z'/><book id='1' name='x'/><book id='2' name='y'/>"),
         "Book a = Book x\nBook b = Book y\nBook c = Book z\n"},
        {"more have lost them", letters,
         house("<book id='1' name='x'/><book id='2' name='a'/><book id='3' name='b'/><book id='4' name='c'/>"),
         "= Book x\n"},
        {"not asked for", house("<book id='1' name='a' isbn='3'/><book id='2' name='b' isbn='4'/>"),
         house("<book id='1' name='b' isbn='4'/><book id='2' name='a' isbn='3'/>"), "", Ids::Ignore},
        {"of two classes", house("<book id='1' name='Ann'/>"), house("<reader id='1' name='Ann'/>"),
         "Book Ann =\n= Reader Ann\n", Ids::Use},
    });
}

TEST(Match, FindsWithoutIdsWhatIsRenamedMovedOrBoth) {
    std::string const copies = "<copy number='31' condition='torn'/><copy number='32' isLendable='false'/>";
    expectPairs({
        {"renamed, the content tells it",
         house("<book name='Orlando' isbn='1'>" + copies + "</book><book name='Flush'/>"),
         house("<book name='Flush'/><book name='Orlando: a biography' isbn='1'>" + copies + "</book>"),
         "Book Orlando = Book Orlando: a biography\n"},
        {"renamed and changed, the most alike",
         house("<book name='a' isbn='1'>" + copies + "</book><book name='b' isbn='2'/>"),
         house("<book name='c' isbn='2'/><book name='d' isbn='1'>" + copies + "<copy number='33'/></book>"),
         "Book a = Book d\nBook b = Book c\n= Copy 33\n"},
        {"nothing in common", house("<book name='a' isbn='1'/>"),
         house("<book name='b' isbn='2'><copy number='3'/></book>"), "Book a =\n= Book b\n= Copy 3\n"},
        {"moved",
         package("<packagedElement is='Package' name='q'><packagedElement is='Class' name='Book'/>"
                 "</packagedElement><packagedElement is='Package' name='r'/>"),
         package("<packagedElement is='Package' name='q'/><packagedElement is='Package' name='r'>"
                 "<packagedElement is='Class' name='Book'/></packagedElement>"),
         ""},
        {"moved and renamed",
         package("<packagedElement is='Package' name='q'><packagedElement is='Class' name='Book' isAbstract='true'>"
                 "<ownedAttribute name='title'/><ownedAttribute name='isbn'/></packagedElement></packagedElement>"
                 "<packagedElement is='Package' name='r'/>"),
         package("<packagedElement is='Package' name='q'/><packagedElement is='Package' name='r'>"
                 "<packagedElement is='Class' name='Volume' isAbstract='true'>"
                 "<ownedAttribute name='title'/><ownedAttribute name='isbn'/></packagedElement></packagedElement>"),
         "Class Book = Class Volume\n"},
        {"its package renamed, too",
         package("<packagedElement is='Package' name='q'><packagedElement is='Class' name='A'/>"
                 "<packagedElement is='Class' name='B'/></packagedElement>"),
         package("<packagedElement is='Package' name='r'><packagedElement is='Class' name='A'/>"
                 "<packagedElement is='Class' name='B'/></packagedElement>"),
         "Package q = Package r\n"},
    });
}

TEST(Match, FindsUnnamedPartsByTheirContentAndElseByTheirPlace) {
    expectPairs({
        {"in another order", house("<book name='b'><copy number='1'/><copy number='2'/><copy number='3'/></book>"),
         house("<book name='b'><copy number='3'/><copy number='1'/><copy number='2'/></book>"), ""},
        {"one in the middle gone",
         house("<book name='b'><copy number='1'/><copy number='2'/><copy number='3'/></book>"),
         house("<book name='b'><copy number='1'/><copy number='3'/></book>"), "Copy 2 =\n"},
        {"one changed", house("<book name='b'><copy number='1'/><copy number='2'/></book>"),
         house("<book name='b'><copy number='1'/><copy number='5'/></book>"), "Copy 2 = Copy 5\n"},
        {"moved", house("<book name='a'><copy number='41' condition='torn'/></book><book name='b'/>"),
         house("<book name='a'/><book name='b'><copy number='41' condition='torn'/></book>"), ""},
        {"overloads",
         package(
             "<packagedElement is='Class' name='C'><ownedOperation name='f'><ownedParameter name='x'/></ownedOperation>"
             "<ownedOperation name='f'><ownedParameter name='y'/><ownedParameter name='z'/></ownedOperation>"
             "</packagedElement>"),
         package("<packagedElement is='Class' name='C'>"
                 "<ownedOperation name='f'><ownedParameter name='y'/><ownedParameter name='z'/></ownedOperation>"
                 "<ownedOperation name='f'><ownedParameter name='x'/></ownedOperation></packagedElement>"),
         ""},
    });
}

TEST(Match, TakesPairsOfTheClientFirst) {
    Model const left = house("<book id='1' name='Orlando'/><book id='2' name='Flush'/><reader id='3' name='Ann'/>");
    Model const right = house("<book id='1' name='Orlando'/><book id='2' name='Flush'/><reader id='3' name='Ann'/>");
    MatchSettings settings;
    settings.pairs = {{named(left, "Orlando"), named(right, "Flush")},
                      {named(left, "Orlando"), named(right, "Orlando")}, // the second pair of one object
                      {named(left, "Ann"), named(right, "Orlando")},     // of two classes
                      {named(right, "Ann"), named(left, "Ann")},         // each in the other tree
                      {ImmutableClassObject(), named(right, "Ann")}};
    EXPECT_EQ(pairsOf(Match(left, right, settings)).substr(0, 28), "Book Orlando = Book Flush\nBo");
    EXPECT_EQ(Match(left, right, settings).rightOf(named(left, "Ann")), named(right, "Ann"));
}

TEST(Match, TakesLinksToCompanionsForEqual) {
    Model const types = package("<packagedElement is='PrimitiveType' id='t' name='Text'/>");
    Model const sameTypes = package("<packagedElement is='PrimitiveType' id='t' name='Text'/>");
    std::string const book = "<packagedElement is='Class' name='Book'><ownedAttribute name='title'/></packagedElement>";
    Model const left = package(book);
    Model const right = package(book);
    auto const setType = [](Model const & model, Model const & of) {
        model.beginTransaction("type");
        Property(named(model, "title")).setType(Type(named(of, "Text")));
        model.commitTransaction();
    };
    setType(left, types);
    setType(right, sameTypes);
    MatchSettings settings;
    EXPECT_EQ(
        told(diff(left, right, settings)),
        "Class 'p.Book': attribute 'title': type changed from PrimitiveType 'p.Text' to PrimitiveType 'p.Text'\n");
    settings.companions = {{types, sameTypes}};
    EXPECT_EQ(told(diff(left, right, settings)), "");
}

TEST(Match, LeadsFromOneDeviantToTheOtherAndFromAnObjectToItsCopy) {
    Model const model = house("<book id='1' name='Orlando'/><book id='2' name='Flush'/>");
    Model const draft = model.createDeviantWithName("draft");
    draft.beginTransaction("draft");
    NamedElement const orlando(named(draft, "Orlando"));
    NamedElement(named(draft, "Flush")).setName("Orlando");
    orlando.setName("Flush"); // each has the other's name now
    draft.commitTransaction();

    Match const match(model, draft);
    ImmutableClassObject const found = match.rightOf(named(model, "Orlando"));
    EXPECT_EQ(found, orlando);
    EXPECT_EQ(nameOf(found), "Flush") << "as it is in the deviant of the right root";
    EXPECT_EQ(nameOf(match.turnedRound().rightOf(found)), "Orlando");
    EXPECT_FALSE(match.rightOf(ImmutableClassObject()).isValid());
    EXPECT_FALSE(match.rightOf(Package::MetaClass()).isValid()) << "not in the tree";

    model.beginTransaction("copy");
    ClassObject const house = named(model, "House");
    ClassObject const copy(house.clone(model));
    model.commitTransaction();
    EXPECT_EQ(pairsOf(Match(house, copy)), "");
}

TEST(Match, RefusesWhatCannotBeCompared) {
    Model const library = house("<book name='Orlando'/>");
    Model const classes = package("");
    std::string const text = ZEL::tests::raisedText<Exception>([&] { (void)Match(library, classes); });
    EXPECT_NE(text.find("LibraryModel"), std::string::npos) << text;
    EXPECT_NE(text.find("MetaModel"), std::string::npos) << text;
    EXPECT_NE("(nothing)", ZEL::tests::raisedText<Exception>([&] { (void)Match(library, ImmutableClassObject()); }));
    EXPECT_EQ(pairsOf(Match(named(library, "Orlando"), named(house("<book name='Flush'/>"), "Flush"))),
              "Book Orlando = Book Flush\n");
}

/// Parts of one container that are hard to tell apart, and a chain as deep as files may be.
TEST(Match, TakesLittleTimeForLongListsAndDeepTrees) {
    auto const comments = [](int from, int to) {
        std::string text;
        for (int i = from; i < to; ++i) {
            text += "<ownedComment body='" + std::to_string(i) + "'/>";
        }
        return text;
    };
    auto const classes = [](std::string const & prefix, int step) {
        std::string text;
        for (int i = 0; i < 5000; ++i) {
            int const k = i * step % 5000;
            text += "<packagedElement is='Class' name='" + prefix + std::to_string(k) + "'><ownedAttribute name='a" +
                    std::to_string(k) + "'/></packagedElement>";
        }
        return text;
    };
    EXPECT_EQ(pairsOf(Match(package(comments(0, 20000)), package(comments(2, 20001)))),
              "Comment 0 = Comment 20000\nComment 1 =\n");
    Model const renamed = package(classes("C", 1));
    Match const match(renamed, package(classes("D", 7)));
    EXPECT_EQ(match.size(), 10002U);
    for (ImmutableClassObject const & left : objectsIn(renamed)) {
        if (ImmutableClass const metaClass(left); metaClass.isValid() && metaClass.hasName()) {
            ASSERT_EQ(nameOf(match.rightOf(left)), "D" + nameOf(left).substr(1));
        }
    }

    auto const chain = [] {
        Model const model = package("");
        model.beginTransaction("deep");
        Package at(named(model, "p"));
        for (int i = 0; i < 50000; ++i) {
            Package const inner = Factory(model.getFactory()).createPackage("p" + std::to_string(i));
            at.getPackagedElements().push_back(inner);
            at = inner;
        }
        model.commitTransaction();
        return model;
    };
    EXPECT_EQ(Match(chain(), chain()).size(), 50002U);
}

} // namespace
} // namespace ZEL::Compare::tests
