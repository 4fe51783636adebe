// What differs between two models, as it is told to a reader, and what comes of applying it.

#include "Models.h"
#include "support/ExpectRaises.h"
#include "support/OneTree.h"

#include <ZEL/compare/Differences.h>
#include <ZEL/metamodel/Remainder.h>

namespace ZEL::Compare::tests {
namespace {

using Kind = Difference::Kind;

/// Holds if the differences are told by these lines, make the left model the right one, and the right the left one when
/// they are turned round; in one step each, which undo takes back.
void expectDifferences(std::string const & title, Model const & left, Model const & right, std::string const & lines,
                       MatchSettings const & settings = {}) {
    SCOPED_TRACE(title);
    Differences const differences = diff(left, right, settings);
    EXPECT_EQ(told(differences), lines);
    EXPECT_EQ(told(diff(left, right, settings)), lines) << "another time";
    Differences const back = differences.turnedRound();
    EXPECT_EQ(back.size(), differences.size());
    EXPECT_EQ(told(back.turnedRound()), lines);

    struct {
        Differences const & differences;
        Model const & from;
        Model const & to;
    } const directions[] = {{differences, left, right}, {back, right, left}};
    for (auto const & [way, from, to] : directions) {
        ASSERT_TRUE(apply(way, from));
        EXPECT_EQ(leftOver(from, to), "");
        EXPECT_EQ(from.getUndoStackLength(), lines.empty() ? 0 : 1);
        ZEL::tests::expectOneTree(from);
        from.undo();
        EXPECT_EQ(told(diff(left, right, settings)), lines) << "taken back";
        from.getRootDeviant().clearRedoStack();
    }
}

struct Row {
    char const * title;
    std::string left;
    std::string right;
    std::string lines;
};

TEST(Differences, OfBooksAreToldAndApplied) {
    std::string const orlando = "<book id='o' name='Orlando'/>";
    std::string const copies = "<copy id='1' number='1'/><copy id='2' number='2'/>";
    Row const rows[] = {
        {"nothing", orlando, orlando, ""},
        {"text, number, truth, enumeration",
         "<book id='o' name='Orlando'><copy id='1' number='3'/></book><reader id='r' name='Ann'><loan "
         "id='l'/></reader>",
         "<book id='o' name='Orlando' isbn='1'><copy id='1' number='4' isLendable='false' condition=''/></book>"
         "<reader id='r' name='Ann' language='fi'><loan id='l' state='overdue' fee='2.5'/></reader>",
         "House 'House': book 'Orlando': isbn set to '1'\n"
         "Book 'House.Orlando': copy: number changed from 3 to 4\n"
         "Book 'House.Orlando': copy: isLendable changed from true to false\n"
         "Book 'House.Orlando': copy: condition changed from 'good' to ''\n"
         "House 'House': reader 'Ann': language changed from 'en' to 'fi'\n"
         "Reader 'House.Ann': loan: state changed from requested to overdue\n"
         "Reader 'House.Ann': loan: fee set to 2.5\n"},
        {"names", "<book id='1' name='Orlando'/><book id='2'/><book id='3' name='Flush'/>",
         "<book id='1' name='Orlando: a biography'/><book id='2' name='The Waves'/><book id='3'/>",
         "House 'House': book 'Orlando' renamed to 'Orlando: a biography'\n"
         "House 'House': book 2 named 'The Waves'\n"
         "House 'House': book 'Flush' has no name any more\n"},
        {"a long text is cut between two characters", orlando,
         "<book id='o' name='Orlando' isbn='" + std::string(59, '1') + "\xc3\xa9 and more'/>",
         "House 'House': book 'Orlando': isbn set to '" + std::string(59, '1') + "...'\n"},
        {"added with content", orlando, orlando + "<book id='f' name='Flush'>" + copies + "</book>",
         "House 'House': book 'Flush' added with 2 objects in it\n"},
        {"removed with content", orlando + "<reader id='r' name='Ann'><loan id='l'/></reader>", orlando,
         "House 'House': reader 'Ann' removed with 1 object in it\n"},
        {"moved out of what is removed", "<book id='o' name='Orlando'>" + copies + "</book><book id='f' name='Flush'/>",
         "<book id='f' name='Flush'>" + copies + "</book>",
         "House 'House': book 'Orlando' removed\n"
         "Book 'House.Orlando': copy 1 moved from Book 'House.Orlando' to Book 'House.Flush'\n"
         "Book 'House.Orlando': copy 2 moved from Book 'House.Orlando' to Book 'House.Flush'\n"},
        {"order of parts", "<book id='o' name='Orlando'>" + copies + "<copy id='3' number='3'/></book>",
         "<book id='o' name='Orlando'><copy id='3' number='3'/>" + copies + "</book>",
         "House 'House': book 'Orlando': copy in another order\n"},
        {"put in between changes no order", "<book id='o' name='Orlando'>" + copies + "</book>",
         "<book id='o' name='Orlando'><copy id='1' number='1'/><copy id='3' number='3'/><copy id='2' "
         "number='2'/></book>",
         "Book 'House.Orlando': copy 2 added\n"},
        {"links told from one end",
         "<book id='o' name='Orlando'/><book id='f' name='Flush'/><book id='w' name='Waves'/>",
         "<book id='o' name='Orlando' sequel='f'/><book id='f' name='Flush'/><book id='w' name='Waves'/>",
         "House 'House': book 'Orlando': sequel set to Book 'House.Flush'\n"},
        {"a single link and the many at its other end",
         "<book id='o' name='Orlando'><copy id='1' loan='l'/><copy id='2'/></book>"
         "<reader id='r' name='Ann'><loan id='l' copy='1'/></reader>",
         "<book id='o' name='Orlando'><copy id='1'/><copy id='2' loan='l'/></book>"
         "<reader id='r' name='Ann'><loan id='l' copy='2'/></reader>",
         "Reader 'House.Ann': loan: copy changed from Copy in Book 'House.Orlando' to Copy in Book 'House.Orlando'\n"},
        {"links to many", orlando + "<book id='f' name='Flush'/><reader id='r' name='Ann' favourite='o'/>",
         orlando + "<book id='f' name='Flush'/><reader id='r' name='Ann' favourite='f'/>",
         "House 'House': reader 'Ann': favourite does not lead to Book 'House.Orlando' any more\n"
         "House 'House': reader 'Ann': favourite leads to Book 'House.Flush', too\n"},
        {"links to what is new, and to what goes", orlando + "<reader id='r' name='Ann' favourite='o'/>",
         "<book id='f' name='Flush'/><reader id='r' name='Ann' favourite='f'/>",
         "House 'House': book 'Orlando' removed\n"
         "House 'House': book 'Flush' added\n"
         "House 'House': reader 'Ann': favourite does not lead to Book 'House.Orlando' any more\n"
         "House 'House': reader 'Ann': favourite leads to Book 'House.Flush', too\n"},
    };
    for (Row const & row : rows) {
        MatchSettings settings;
        settings.ids = MatchSettings::Ids::Use;
        expectDifferences(row.title, house(row.left), house(row.right), row.lines, settings);
    }
}

TEST(Differences, OfClassesAreToldAndApplied) {
    std::string const title = "<ownedAttribute id='t' name='title'/>";
    auto const inPackages = [](std::string const & first, std::string const & second) {
        return "<packagedElement is='Package' id='q' name='q'>" + first +
               "</packagedElement><packagedElement is='Package' id='r' name='r'>" + second + "</packagedElement>";
    };
    auto const book = [](std::string const & content) {
        return "<packagedElement is='Class' id='b' name='Book'>" + content + "</packagedElement>";
    };
    Row const rows[] = {
        {"renamed", book(title), book("<ownedAttribute id='t' name='heading'/>"),
         "Class 'p.Book': attribute 'title' renamed to 'heading'\n"},
        {"moved", inPackages(book(title), ""), inPackages("", book(title)),
         "Class 'p.q.Book' moved from Package 'p.q' to Package 'p.r'\n"},
        {"moved and renamed, with a part that is moved out",
         inPackages(book(title), "<packagedElement is='Class' id='c' name='Copy'/>"),
         inPackages("", "<packagedElement is='Class' id='c' name='Copy'>" + title +
                            "</packagedElement>"
                            "<packagedElement is='Class' id='b' name='Volume'/>"),
         "Class 'p.q.Book' moved from Package 'p.q' to Package 'p.r'\n"
         "Class 'p.q.Book' renamed to 'Volume'\n"
         "Class 'p.q.Book': attribute 'title' moved from Class 'p.q.Book' to Class 'p.r.Copy'\n"},
        {"a container and its content exchanged",
         "<packagedElement is='Package' id='q' name='q'><packagedElement is='Package' id='r' name='r'>"
         "<packagedElement is='Package' id='s' name='s'/></packagedElement></packagedElement>",
         "<packagedElement is='Package' id='s' name='s'><packagedElement is='Package' id='r' name='r'>"
         "<packagedElement is='Package' id='q' name='q'/></packagedElement></packagedElement>",
         "Package 'p.q' moved from Package 'p' to Package 'p.s.r'\n"
         "Package 'p.q.r' moved from Package 'p.q' to Package 'p.s'\n"
         "Package 'p.q.r.s' moved from Package 'p.q.r' to Package 'p'\n"},
        {"into another property", "<packagedElement is='Constraint' id='k' name='k'/>", "<ownedRule id='k' name='k'/>",
         "Constraint 'p.k' moved from packagedElement of Package 'p' to ownedRule of Package 'p'\n"},
        {"texts of which there are many",
         "<ownedRule id='k' name='k'><specification is='OpaqueExpression' "
         "id='s'><body>x</body></specification></ownedRule>",
         "<ownedRule id='k' name='k'><specification is='OpaqueExpression' id='s'><body>y</body><body>x</body>"
         "</specification></ownedRule>",
         "OpaqueExpression in Constraint 'p.k': body changed from ['x'] to ['y', 'x']\n"},
        {"superclasses", book("") + "<packagedElement is='Class' id='c' name='C'/>",
         "<packagedElement is='Class' id='b' name='Book' superClass='c'/><packagedElement is='Class' id='c' name='C'/>",
         "Class 'p.Book': superClass leads to Class 'p.C', too\n"},
    };
    for (Row const & row : rows) {
        expectDifferences(row.title, package(row.left), package(row.right), row.lines);
    }
}

TEST(Differences, OfStereotypesAndOfWhatAFileKeepsAreApplied) {
    std::string const books = "<book id='o' name='Orlando'/><book id='f' name='Flush'/>";
    auto const rare = [&](std::string const & attributes) {
        return house(books, attributes.empty() ? "" : "<library:Rare id='r' " + attributes + "/>");
    };
    expectDifferences("added", rare(""), rare("base_Book='o' reason='signed'"), "Rare in Book 'House.Orlando' added\n");
    expectDifferences("changed", rare("base_Book='o' reason='signed'"), rare("base_Book='o' reason='stained'"),
                      "Rare in Book 'House.Orlando': reason changed from 'signed' to 'stained'\n");
    expectDifferences("moved", rare("base_Book='o' reason='signed'"), rare("base_Book='f' reason='signed'"),
                      "Rare in Book 'House.Orlando' moved from Book 'House.Orlando' to Book 'House.Flush'\n");

    Model const kept = rare("");
    kept.beginTransaction("keep");
    Remainder rest;
    rest.attributes.push_back({"", "", "colour", "red"});
    setRemainder(named(kept, "Orlando"), rest);
    kept.commitTransaction();
    kept.getRootDeviant().clearUndoStack();
    expectDifferences("kept", rare(""), kept,
                      "House 'House': book 'Orlando': what is kept of the file without being understood changed\n");
}

TEST(Differences, OfUmlFollowAssociationsAndStereotypes) {
    std::string const classes =
        "<packagedElement of='Class' id='c' name='Customer'/><packagedElement of='Class' id='o' name='Order'/>";
    auto const association = [](std::string const & ends) {
        return "<packagedElement of='Association' id='a' name='places' memberEnd='e f'><ownedEnd id='e' "
               "name='customer' type='c'"
               " association='a'/>" +
               ends + "</packagedElement>";
    };
    std::string const order = " id='f' name='order' type='o' association='a'/>";
    Model const plain = umlModel(classes);
    Model const associated = umlModel(classes + association("<ownedEnd" + order));
    expectDifferences("an association comes with its ends", plain, associated,
                      "Association 'places' added with 2 objects in it\n");
    expectDifferences(
        "an end becomes an attribute", associated,
        umlModel("<packagedElement of='Class' id='c' name='Customer'><ownedAttribute" + order +
                 "</packagedElement>"
                 "<packagedElement of='Class' id='o' name='Order'/>" +
                 association("")),
        "Association 'places': end 'order' moved from ownedEnd of Association 'places' to ownedAttribute of "
        "Class 'Customer'\n");

    expectDifferences("an end renamed", associated,
                      umlModel(classes + association("<ownedEnd id='f' name='orders' type='o'/>")),
                      "Association 'places': end 'order' renamed to 'orders'\n");

    std::string const components = "<packagedElement of='Component' id='c' name='Till'><ownedOperation id='n' "
                                   "name='open'/><ownedOperation id='x' name='close'/>"
                                   "</packagedElement><packagedElement of='Component' id='d' name='Store'/>";
    Model const stereotyped =
        umlModel(components, "<Rhapsody:rhapsodyComponent id='s' base_Component='c' constructor='n'/>");
    expectDifferences("applied", umlModel(components), stereotyped, "rhapsodyComponent in Component 'Till' added\n");
    expectDifferences("a link of it changed", stereotyped,
                      umlModel(components, "<Rhapsody:rhapsodyComponent id='s' base_Component='c' constructor='x'/>"),
                      "rhapsodyComponent in Component 'Till': constructor changed from Operation 'Till.open' to "
                      "Operation 'Till.close'\n");
    expectDifferences("applied to another", stereotyped,
                      umlModel(components, "<Rhapsody:rhapsodyComponent id='s' base_Component='d' constructor='n'/>"),
                      "rhapsodyComponent in Component 'Till' moved from Component 'Till' to Component 'Store'\n");
    expectDifferences("gone with its element", stereotyped,
                      umlModel("<packagedElement of='Component' id='d' name='Store'/>"),
                      "Component 'Till' removed with 3 objects in it\n");
}

TEST(Differences, StandContainerByContainerAndWhatChangedOfAnObjectBeforeWhatChangedBelow) {
    Differences const differences =
        diff(house("<book id='1' name='a'><copy id='2' number='2'/></book><book id='3' name='b' isbn='1'><copy "
                   "id='4'/></book>"),
             house("<book id='1' name='a' isbn='5'><copy id='2' number='3'/></book>"
                   "<book id='3' name='b' isbn='2'><copy id='4' number='9'/></book><reader id='5' name='Ann'/>"));
    EXPECT_EQ(told(differences), "House 'House': reader 'Ann' added\n"
                                 "House 'House': book 'a': isbn set to '5'\n"
                                 "Book 'House.a': copy: number changed from 2 to 3\n"
                                 "House 'House': book 'b': isbn changed from '1' to '2'\n"
                                 "Book 'House.b': copy: number changed from 1 to 9\n");
    Difference const & isbn = differences[1];
    EXPECT_EQ(isbn.kind, Kind::ValueChanged);
    EXPECT_EQ(isbn.left.getId(), isbn.right.getId());
    EXPECT_NE(isbn.left, isbn.right);
    EXPECT_EQ(isbn.property.getName(), "isbn");
    EXPECT_TRUE(isbn.before.empty());
    EXPECT_EQ(isbn.after.at(0).toString(), "5");
    EXPECT_FALSE(differences[0].left.isValid());
}

/// Holds if those that begin with `chosen` need these lines, in which they are told themselves.
void expectNeeds(Model const & left, Model const & right, std::string const & chosen, std::string const & lines) {
    Differences const all = diff(left, right);
    Differences const some =
        all.filtered([&](Difference const & difference) { return sentenceOf(difference).starts_with(chosen); });
    EXPECT_EQ(some.size(), 1U) << chosen << "\n" << told(all);
    EXPECT_EQ(told(some.withNeeded()), lines);
    // Those that they need come along.
    Differences const needed = some.withNeeded();
    std::size_t const others = all.size() - needed.size();
    ASSERT_TRUE(apply(some, left));
    ZEL::tests::expectOneTree(left);
    EXPECT_EQ(diff(left, right).size(), others) << told(diff(left, right));
    left.undo();
    EXPECT_EQ(told(diff(left, right)), told(all));
}

TEST(Differences, BringAlongWhatTheyCannotBeAppliedWithout) {
    std::string const orlando = "<book id='o' name='Orlando'><copy id='c' number='7'/></book>";
    std::string const flush = "<book id='f' name='Flush'/>";
    expectNeeds(house(orlando + "<reader id='r' name='Ann'/>"),
                house(orlando + flush + "<reader id='r' name='Ann' favourite='f'/>"),
                "House 'House': reader 'Ann': favourite",
                "House 'House': book 'Flush' added\n"
                "House 'House': reader 'Ann': favourite leads to Book 'House.Flush', too\n");
    expectNeeds(house(orlando),
                house("<book id='o' name='Orlando'/><book id='f' name='Flush'><copy id='c' number='7'/></book>"),
                "Book 'House.Orlando': copy moved",
                "House 'House': book 'Flush' added\n"
                "Book 'House.Orlando': copy moved from Book 'House.Orlando' to Book 'House.Flush'\n");
    expectNeeds(house(orlando + flush + "<reader id='r' name='Ann' favourite='o'/>"),
                house("<book id='f' name='Flush'><copy id='c' number='7'/></book><reader id='r' name='Ann'/>"),
                "House 'House': book 'Orlando' removed",
                "House 'House': book 'Orlando' removed\n"
                "Book 'House.Orlando': copy moved from Book 'House.Orlando' to Book 'House.Flush'\n"
                "House 'House': reader 'Ann': favourite does not lead to Book 'House.Orlando' any more\n");
    expectNeeds(
        package("<ownedRule id='k' name='k'><specification is='OpaqueExpression' id='s' name='x'/></ownedRule>"),
        package("<ownedRule id='k' name='k'><specification is='Expression' id='t' name='y'/></ownedRule>"),
        "Expression 'p.k.y' added", "OpaqueExpression 'p.k.x' removed\nExpression 'p.k.y' added\n");
}

TEST(Differences, AreAppliedToACopyToAVariantAndToWhatHasMoreOrLess) {
    std::string const left = "<book id='o' name='Orlando'><copy id='1' number='1'/><copy id='2' number='2'/></book>"
                             "<book id='f' name='Flush'/><reader id='a' name='Ann' favourite='o'/>";
    std::string const right =
        "<book id='o' name='Orlando' isbn='1'><copy id='2' number='2'/><copy id='1' number='1'/></book>"
        "<book id='f' name='Fluff'/><reader id='a' name='Ann' favourite='f'/>"
        "<reader id='b' name='Ben'/>";
    Model const from = house(left);
    Differences const differences = diff(from, house(right));

    Model const copy = house(left);
    ASSERT_TRUE(apply(differences, copy));
    EXPECT_EQ(leftOver(copy, house(right)), "");

    Model const draft = from.createDeviantWithName("draft");
    ASSERT_TRUE(apply(differences, draft));
    EXPECT_EQ(leftOver(draft, house(right)), "");
    EXPECT_EQ(leftOver(from, house(left)), "") << "the root follows when it is told to";

    // Flush has gone, and there are a third copy and another favourite.
    Model const other = house("<book id='o' name='Orlando'><copy id='1' number='1'/><copy id='3' number='3'/>"
                              "<copy id='2' number='2'/></book><book id='w' name='Waves'/>"
                              "<reader id='a' name='Ann' favourite='o w'/>");
    ASSERT_TRUE(apply(differences, other));
    EXPECT_EQ(other.getUndoStackLength(), 1);
    EXPECT_EQ(
        leftOver(other, house("<book id='o' name='Orlando' isbn='1'><copy id='2' number='2'/><copy id='1' number='1'/>"
                              "<copy id='3' number='3'/></book><book id='w' name='Waves'/>"
                              "<reader id='a' name='Ann' favourite='w'/><reader id='b' name='Ben'/>")),
        "");
}

TEST(Differences, ThatAreRefusedOrCannotBeLeaveTheModelAsItWas) {
    std::string const left =
        "<packagedElement is='Package' id='q' name='q'><packagedElement is='Package' id='r' name='r'/>"
        "</packagedElement>";
    std::string const right =
        "<packagedElement is='Package' id='r' name='r'><packagedElement is='Package' id='q' name='q'/>"
        "</packagedElement>";
    Model const model = package(left);
    Differences const differences = diff(model, package(right));
    {
        Veto const veto(model.getRootDeviant());
        EXPECT_FALSE(apply(differences, model));
        EXPECT_EQ(model.getRootDeviant().getRefusingListener(), &veto);
    }
    EXPECT_EQ(leftOver(model, package(left)), "");

    Differences const downwards = differences.filtered(
        [](Difference const & difference) { return sentenceOf(difference).starts_with("Package 'p.q' moved"); });
    EXPECT_NE("(nothing)", ZEL::tests::raisedText<Exception>([&] { (void)apply(downwards, model); }));
    EXPECT_EQ(leftOver(model, package(left)), "");
    EXPECT_EQ(model.getUndoStackLength(), 0);
    EXPECT_FALSE(model.getRootDeviant().isWithinTransaction());
    EXPECT_TRUE(apply(differences, model));
}

TEST(Differences, LeaveAddedObjectsTheirIdsInTheFile) {
    Model const model = house("<book id='o' name='Orlando'/><reader id='taken' name='Ann'/>");
    Model const right = house("<book id='o' name='Orlando'/><book id='new' name='Flush'><copy id='part'/></book>"
                              "<book id='taken' name='Waves'/>");
    Differences const additions =
        diff(model, right).filtered([](Difference const & difference) { return difference.kind == Kind::Added; });
    ASSERT_TRUE(apply(additions, model));
    Serializer::XmiWriterSettings settings;
    settings.setKeepFileIds(true);
    TemporaryFolder const folder;
    ASSERT_TRUE(Serializer::XmiWriter(settings).write(folder.path("out.xmi"), model));
    std::string const text = folder.content("out.xmi");
    for (char const * const part : {"<book xmi:id=\"new\" xmi:type=\"library:Book\" name=\"Flush\"",
                                    "<copy xmi:id=\"part\"", "<reader xmi:id=\"taken\""}) {
        EXPECT_NE(text.find(part), std::string::npos) << part << "\n" << text;
    }
    EXPECT_EQ(text.find("<book xmi:id=\"taken\""), std::string::npos) << "the reader has it";

    model.undo();
    ASSERT_TRUE(Serializer::XmiWriter(settings).write(folder.path("out.xmi"), model));
    EXPECT_EQ(folder.content("out.xmi").find("\"new\""), std::string::npos);
}

} // namespace
} // namespace ZEL::Compare::tests
