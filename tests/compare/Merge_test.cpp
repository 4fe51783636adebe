// Two changes of one model brought together, and what is told of those that cannot both be.

#include "Models.h"
#include "support/OneTree.h"

#include <ZEL/compare/Merge.h>

#include <gmock/gmock.h>

#include <optional>
#include <stdexcept>

namespace ZEL::Compare::tests {
namespace {

using Kind = Conflict::Kind;

char const * nameOf(Kind kind) {
    switch (kind) {
    case Kind::Values:
        return "values";
    case Kind::Links:
        return "links";
    case Kind::Places:
        return "places";
    case Kind::Orders:
        return "orders";
    case Kind::Ends:
        return "ends";
    case Kind::Removal:
        return "removal";
    case Kind::Additions:
        return "additions";
    }
    return "";
}

std::string conflictsOf(Merge const & merge) {
    std::string lines;
    for (Conflict const & conflict : merge.conflicts()) {
        lines += std::string(nameOf(conflict.kind)) + (conflict.allowsBoth ? " (or both): " : ": ") +
                 sentenceOf(conflict) + "\n";
    }
    return lines;
}

/// What the model is like after the merge has been applied to it; that is taken back.
void expectMerged(Merge const & merge, Model const & ours, Model const & expected, std::string const & title) {
    EXPECT_TRUE(merge.apply(ours)) << title;
    EXPECT_EQ(leftOver(ours, expected), "") << title;
    ZEL::tests::expectOneTree(ours);
    if (ours.getUndoStackLength() > 0) {
        EXPECT_EQ(ours.getUndoStackLength(), 1);
        ours.undo();
        ours.getRootDeviant().clearRedoStack();
    }
}

/// Three versions, and what they become.
struct Row {
    char const * title;
    std::string base;
    std::string ours;
    std::string theirs;
    std::string merged; ///< with ours where there is a conflict
    std::string conflicts{};
    std::string mergedWithTheirs{};
    std::optional<std::string> mergedWithBoth{};
};

void expectRow(Row const & row, Model (*modelOf)(std::string const &)) {
    SCOPED_TRACE(row.title);
    Model const base = modelOf(row.base);
    Model const ours = modelOf(row.ours);
    Model const theirs = modelOf(row.theirs);
    Merge merge(base, ours, theirs);
    EXPECT_EQ(conflictsOf(merge), row.conflicts);
    EXPECT_EQ(merge.isResolved(), row.conflicts.empty());
    expectMerged(merge, ours, modelOf(row.merged), "as it is");

    Merge const back(base, theirs, ours);
    EXPECT_EQ(back.conflicts().size(), merge.conflicts().size());
    if (row.conflicts.empty()) {
        expectMerged(back, theirs, modelOf(row.merged), "the sides exchanged");
        return;
    }
    auto const resolve = [&](Resolution resolution) {
        Merge resolved(merge);
        resolved.resolve([resolution](Conflict const &) { return resolution; });
        return resolved;
    };
    expectMerged(resolve(Resolution::Ours), ours, modelOf(row.merged), "ours");
    expectMerged(resolve(Resolution::Theirs), ours, modelOf(row.mergedWithTheirs), "theirs");
    Merge const both = resolve(Resolution::Both);
    EXPECT_EQ(both.isResolved(), row.mergedWithBoth.has_value());
    if (row.mergedWithBoth) {
        expectMerged(both, ours, modelOf(*row.mergedWithBoth), "both");
    }
}

Model houseOf(std::string const & elements) { return house(elements); }

TEST(Merge, TakesWhatOneSideAloneHasDone) {
    std::string const flush = "<book id='f' name='Flush'/>";
    std::string const ann = "<reader id='a' name='Ann'/>";
    Row const rows[] = {
        {"two values of one object", "<book id='o' name='Orlando'/>", "<book id='o' name='Orlando!'/>",
         "<book id='o' name='Orlando' isbn='1'/>", "<book id='o' name='Orlando!' isbn='1'/>"},
        {"additions to one list", flush, flush + "<book id='x' name='The Waves'/>",
         "<book id='x' name='The Years'/>" + flush,
         "<book id='x' name='The Years'/>" + flush + "<book id='x2' name='The Waves'/>"},
        {"moved by ours, changed by theirs", flush + "<book id='o' name='Orlando'><copy id='c' number='5'/></book>",
         "<book id='f' name='Flush'><copy id='c' number='5'/></book><book id='o' name='Orlando'/>",
         flush + "<book id='o' name='Orlando'><copy id='c' number='6'/></book>",
         "<book id='f' name='Flush'><copy id='c' number='6'/></book><book id='o' name='Orlando'/>"},
        {"links to many", flush + "<book id='o' name='Orlando'/>" + ann,
         flush + "<book id='o' name='Orlando'/><reader id='a' name='Ann' favourite='f'/>",
         flush + "<book id='o' name='Orlando'/><reader id='a' name='Ann' favourite='o'/>",
         flush + "<book id='o' name='Orlando'/><reader id='a' name='Ann' favourite='f o'/>"},
        {"removed by ours, another by theirs", flush + "<book id='o' name='Orlando'/>" + ann, flush + ann,
         "<book id='o' name='Orlando'/>" + ann, ann},
        {"the same done by both: changed, removed, linked", flush + "<book id='o' name='Orlando'/>" + ann,
         "<book id='f' name='Fluff'/><reader id='a' name='Ann' favourite='f'/>",
         "<book id='f' name='Fluff'/><reader id='a' name='Ann' favourite='f'/>",
         "<book id='f' name='Fluff'/><reader id='a' name='Ann' favourite='f'/>"},
        {"the same added by both, once", flush,
         flush + "<book id='x' name='The Waves'><copy id='y' number='3'/></book>",
         flush + "<book id='z' name='The Waves'><copy id='u' number='3'/></book>",
         flush + "<book id='x' name='The Waves'><copy id='y' number='3'/></book>"},
        {"put into an order by ours, added to by theirs",
         "<book id='1' name='1'/><book id='2' name='2'/><book id='3' name='3'/>",
         "<book id='3' name='3'/><book id='1' name='1'/><book id='2' name='2'/>",
         "<book id='1' name='1'/><book id='2' name='2'/><book id='4' name='4'/><book id='3' name='3'/>",
         "<book id='3' name='3'/><book id='1' name='1'/><book id='2' name='2'/><book id='4' name='4'/>"},
    };
    for (Row const & row : rows) {
        expectRow(row, &houseOf);
    }
}

TEST(Merge, TellsWhatCannotBothBeAndDoesWhatIsChosen) {
    std::string const orlando = "<book id='o' name='Orlando'/>";
    std::string const three = "<book id='1' name='1'/><book id='2' name='2'/><book id='3' name='3'/>";
    Row const rows[] = {
        {"values", orlando, "<book id='o' name='Orlando' isbn='1'/>", "<book id='o' name='Orlando' isbn='2'/>",
         "<book id='o' name='Orlando' isbn='1'/>",
         "values: ours: House 'House': book 'Orlando': isbn set to '1'; "
         "theirs: House 'House': book 'Orlando': isbn set to '2'\n",
         "<book id='o' name='Orlando' isbn='2'/>"},
        {"names, and another change of theirs", orlando, "<book id='o' name='A'/>", "<book id='o' name='B' isbn='2'/>",
         "<book id='o' name='A' isbn='2'/>",
         "values: ours: House 'House': book 'Orlando' renamed to 'A'; "
         "theirs: House 'House': book 'Orlando' renamed to 'B'\n",
         "<book id='o' name='B' isbn='2'/>"},
        {"ends: one sequel for two books", three,
         "<book id='1' name='1' sequel='3'/><book id='2' name='2'/><book id='3' name='3'/>",
         "<book id='1' name='1'/><book id='2' name='2' sequel='3'/><book id='3' name='3'/>",
         "<book id='1' name='1' sequel='3'/><book id='2' name='2'/><book id='3' name='3'/>",
         "ends: ours: House 'House': book '1': sequel set to Book 'House.3'; "
         "theirs: House 'House': book '2': sequel set to Book 'House.3'\n",
         "<book id='1' name='1'/><book id='2' name='2' sequel='3'/><book id='3' name='3'/>"},
        {"links: two sequels of one book", three,
         "<book id='1' name='1' sequel='2'/><book id='2' name='2'/><book id='3' name='3'/>",
         "<book id='1' name='1' sequel='3'/><book id='2' name='2'/><book id='3' name='3'/>",
         "<book id='1' name='1' sequel='2'/><book id='2' name='2'/><book id='3' name='3'/>",
         "links: ours: House 'House': book '1': sequel set to Book 'House.2'; "
         "theirs: House 'House': book '1': sequel set to Book 'House.3'\n",
         "<book id='1' name='1' sequel='3'/><book id='2' name='2'/><book id='3' name='3'/>"},
        {"places", three + "<book id='o' name='Orlando'><copy id='c' number='9'/></book>",
         "<book id='1' name='1'><copy id='c' number='9'/></book><book id='2' name='2'/><book id='3' name='3'/>" +
             orlando,
         "<book id='1' name='1'/><book id='2' name='2'><copy id='c' number='9'/></book><book id='3' name='3'/>" +
             orlando,
         "<book id='1' name='1'><copy id='c' number='9'/></book><book id='2' name='2'/><book id='3' name='3'/>" +
             orlando,
         "places: ours: Book 'House.Orlando': copy moved from Book 'House.Orlando' to Book 'House.1'; "
         "theirs: Book 'House.Orlando': copy moved from Book 'House.Orlando' to Book 'House.2'\n",
         "<book id='1' name='1'/><book id='2' name='2'><copy id='c' number='9'/></book><book id='3' name='3'/>" +
             orlando},
        {"orders", three, "<book id='3' name='3'/><book id='1' name='1'/><book id='2' name='2'/>",
         "<book id='2' name='2'/><book id='1' name='1'/><book id='3' name='3'/>",
         "<book id='3' name='3'/><book id='1' name='1'/><book id='2' name='2'/>",
         "orders: ours: LibraryModel: house 'House': book in another order; "
         "theirs: LibraryModel: house 'House': book in another order\n",
         "<book id='2' name='2'/><book id='1' name='1'/><book id='3' name='3'/>"},
        {"changed what theirs removed", orlando + three, "<book id='o' name='Orlando' isbn='1'/>" + three, three,
         "<book id='o' name='Orlando' isbn='1'/>" + three,
         "removal: ours: House 'House': book 'Orlando': isbn set to '1'; theirs: House 'House': book 'Orlando' "
         "removed\n",
         three},
        {"removed what theirs changed inside", "<book id='o' name='Orlando'><copy id='c' number='9'/></book>" + three,
         three, "<book id='o' name='Orlando'><copy id='c' number='8'/></book>" + three, three,
         "removal: ours: House 'House': book 'Orlando' removed with 1 object in it; "
         "theirs: Book 'House.Orlando': copy: number changed from 9 to 8\n",
         "<book id='o' name='Orlando'><copy id='c' number='8'/></book>" + three},
        {"a new object that links to what the other side removed",
         "<book id='f' name='Flush'/><book id='o' name='Orlando'/>",
         "<book id='f' name='Flush'/><book id='o' name='Orlando'/><reader id='a' name='Ann' favourite='o f'/>",
         "<book id='f' name='Flush'/>",
         "<book id='f' name='Flush'/><book id='o' name='Orlando'/><reader id='a' name='Ann' favourite='o f'/>",
         "removal: ours: House 'House': reader 'Ann' added; theirs: House 'House': book 'Orlando' removed\n",
         "<book id='f' name='Flush'/><reader id='a' name='Ann' favourite='f'/>"},
        {"linked to what theirs removed", orlando + "<reader id='a' name='Ann'/>",
         orlando + "<reader id='a' name='Ann' favourite='o'/>", "<reader id='a' name='Ann'/>",
         orlando + "<reader id='a' name='Ann' favourite='o'/>",
         "removal: ours: House 'House': reader 'Ann': favourite leads to Book 'House.Orlando', too; "
         "theirs: House 'House': book 'Orlando' removed\n",
         "<reader id='a' name='Ann'/>"},
        {"different additions of one name", orlando, orlando + "<book id='x' name='Flush' isbn='1'/>",
         orlando + "<book id='y' name='Flush' isbn='2'/>", orlando + "<book id='x' name='Flush' isbn='1'/>",
         "additions (or both): ours: House 'House': book 'Flush' added; theirs: House 'House': book 'Flush' added\n",
         orlando + "<book id='y' name='Flush' isbn='2'/>",
         orlando + "<book id='x' name='Flush' isbn='1'/><book id='y' name='Flush' isbn='2'/>"},
    };
    for (Row const & row : rows) {
        expectRow(row, &houseOf);
    }
}

TEST(Merge, OfClassesTellsWhatDoesNotFit) {
    auto const packages = [](std::string const & tree) { return tree; };
    std::string const rule = "<ownedRule id='k' name='k'>";
    Row const rows[] = {
        {"two parts for one place", rule + "</ownedRule>",
         rule + "<specification is='OpaqueExpression' id='s' name='x'/></ownedRule>",
         rule + "<specification is='Expression' id='t' name='y'/></ownedRule>",
         rule + "<specification is='OpaqueExpression' id='s' name='x'/></ownedRule>",
         "additions: ours: OpaqueExpression 'p.k.x' added; theirs: Expression 'p.k.y' added\n",
         rule + "<specification is='Expression' id='t' name='y'/></ownedRule>"},
        {"into each other",
         packages("<packagedElement is='Package' id='q' name='q'/><packagedElement is='Package' id='r' name='r'/>"),
         "<packagedElement is='Package' id='q' name='q'><packagedElement is='Package' id='r' "
         "name='r'/></packagedElement>",
         "<packagedElement is='Package' id='r' name='r'><packagedElement is='Package' id='q' "
         "name='q'/></packagedElement>",
         "<packagedElement is='Package' id='q' name='q'><packagedElement is='Package' id='r' "
         "name='r'/></packagedElement>",
         "places: ours: Package 'p.r' moved from Package 'p' to Package 'p.q'; "
         "theirs: Package 'p.q' moved from Package 'p' to Package 'p.r'\n",
         "<packagedElement is='Package' id='r' name='r'><packagedElement is='Package' id='q' "
         "name='q'/></packagedElement>"},
        {"moved out by ours of what both removed",
         "<packagedElement is='Package' id='q' name='q'><packagedElement is='Class' id='c' "
         "name='c'/></packagedElement>",
         "<packagedElement is='Class' id='c' name='c'/>", "", "<packagedElement is='Class' id='c' name='c'/>",
         "removal: ours: Class 'p.q.c' moved from Package 'p.q' to Package 'p'; "
         "theirs: Package 'p.q' removed with 1 object in it\n",
         ""},
        {"moved out by theirs of what both removed",
         "<packagedElement is='Package' id='q' name='q'><packagedElement is='Class' id='c' "
         "name='c'/></packagedElement>",
         "", "<packagedElement is='Class' id='c' name='c'/>", "",
         "removal: ours: Package 'p.q' removed with 1 object in it; "
         "theirs: Class 'p.q.c' moved from Package 'p.q' to Package 'p'\n",
         "<packagedElement is='Class' id='c' name='c'/>"},
        {"texts of which there are many",
         rule + "<specification is='OpaqueExpression' id='s'><body>x</body></specification></ownedRule>",
         rule + "<specification is='OpaqueExpression' id='s'><body>x</body><body>y</body></specification></ownedRule>",
         rule + "<specification is='OpaqueExpression' id='s'><body>x</body><body>z</body></specification></ownedRule>",
         rule + "<specification is='OpaqueExpression' id='s'><body>x</body><body>y</body></specification></ownedRule>",
         "values (or both): ours: OpaqueExpression in Constraint 'p.k': body changed from ['x'] to ['x', 'y']; "
         "theirs: OpaqueExpression in Constraint 'p.k': body changed from ['x'] to ['x', 'z']\n",
         rule + "<specification is='OpaqueExpression' id='s'><body>x</body><body>z</body></specification></ownedRule>",
         rule + "<specification is='OpaqueExpression' id='s'><body>x</body><body>y</body><body>z</body></specification>"
                "</ownedRule>"},
    };
    for (Row const & row : rows) {
        expectRow(row, &package);
    }
}

TEST(Merge, LeavesWhatIsNotResolvedAndRefusesWhatIsNot) {
    std::string const w = "<book id='w' name='The Waves'/>";
    std::string const base = "<book id='o' name='Orlando'/><book id='f' name='Flush'/>" + w;
    Model const ours = house("<book id='o' name='A' isbn='1'/><book id='f' name='Flush'/>" + w);
    Merge merge(house(base), ours, house("<book id='o' name='B' isbn='2'/><book id='f' name='Fluff'/>" + w));
    ASSERT_EQ(merge.conflicts().size(), 2U);
    EXPECT_EQ(merge.taken().size(), 1U);
    EXPECT_EQ(merge.ours().size(), 2U);
    EXPECT_EQ(merge.theirs().size(), 3U);
    EXPECT_THROW(merge.resolve(2, Resolution::Ours), std::out_of_range);
    EXPECT_THROW((void)merge.resolutionOf(2), std::out_of_range);

    merge.resolve(0, Resolution::Theirs);
    merge.resolve(1, Resolution::Both);
    EXPECT_EQ(merge.resolutionOf(0), Resolution::Theirs);
    EXPECT_EQ(merge.resolutionOf(1), std::nullopt) << "there is room for one text";
    expectMerged(merge, ours, house("<book id='o' name='A' isbn='2'/><book id='f' name='Fluff'/>" + w), "one of two");
    std::size_t asked = 0;
    merge.resolve([&](Conflict const & conflict) {
        ++asked;
        EXPECT_EQ(conflict.theirs.at(0).property.getName(), "name");
        return Resolution::Theirs;
    });
    EXPECT_EQ(asked, 1U);

    Veto const veto(ours.getRootDeviant());
    EXPECT_FALSE(merge.apply(ours));
    EXPECT_EQ(leftOver(ours, house("<book id='o' name='A' isbn='1'/><book id='f' name='Flush'/>" + w)), "");
}

TEST(Merge, InOneCall) {
    Model const ours = house("<book id='o' name='Orlando' isbn='1'/><book id='f' name='Flush'/>");
    std::vector<Conflict> const conflicts =
        merge(house("<book id='o' name='Orlando'/><book id='f' name='Flush'/>"), ours,
              house("<book id='o' name='Orlando' isbn='2'/><book id='f' name='Fluff'/>"));
    EXPECT_EQ(conflicts.size(), 1U);
    EXPECT_EQ(leftOver(ours, house("<book id='o' name='Orlando' isbn='1'/><book id='f' name='Fluff'/>")), "");
}

/// Someone's draft of a model comes into the model that has gone on meanwhile, by way of a preview.
TEST(Merge, OfDeviantsIsPreviewedAndAssignedToTheRootInOneStep) {
    std::string const base = "<book id='o' name='Orlando'/><book id='f' name='Flush'/>";
    Model const model = house(base);
    Model const before = model.createDeviantWithName("before");
    Model const draft = model.createDeviantWithName("draft");
    auto const change = [](Model const & in, char const * name, char const * property, char const * value) {
        in.beginTransaction("change");
        ClassObject const object = named(in, name);
        object.setOrAdd(String(property), Object(String(value)));
        in.commitTransaction();
    };
    change(draft, "Orlando", "isbn", "2");
    change(draft, "Flush", "name", "Fluff");
    change(model, "Orlando", "isbn", "1");
    change(model, "Orlando", "name", "Orlando: a biography");
    std::string const after = "<book id='o' name='Orlando: a biography' isbn='1'/><book id='f' name='Flush'/>";
    EXPECT_EQ(leftOver(before, house(base)), "") << "a deviant stays as it was made";

    Merge merge(before, model, draft);
    EXPECT_EQ(merge.conflicts().size(), 1U);
    Model const preview = model.createDeviantWithName("preview");
    ASSERT_TRUE(merge.apply(preview));
    EXPECT_EQ(
        leftOver(preview, house("<book id='o' name='Orlando: a biography' isbn='1'/><book id='f' name='Fluff'/>")), "");
    EXPECT_EQ(leftOver(model, house(after)), "");

    merge.resolve(0, Resolution::Theirs);
    Model const right = model.createDeviantWithName("right");
    ASSERT_TRUE(merge.apply(right));
    int const steps = model.getUndoStackLength();
    model.beginTransaction("merge");
    right.assignToRoot();
    model.commitTransaction();
    EXPECT_EQ(leftOver(model, house("<book id='o' name='Orlando: a biography' isbn='2'/><book id='f' name='Fluff'/>")),
              "");
    EXPECT_EQ(model.getUndoStackLength(), steps + 1);
    model.undo();
    EXPECT_EQ(leftOver(model, house(after)), "");
}

} // namespace
} // namespace ZEL::Compare::tests
