#include "kernel/ZEL/metamodel/ModelFixture.h"
#include "support/OneTree.h"

namespace ZEL::tests {
namespace {

char const kNoPlace[] = "cannot insert value into the combined sequence";

struct Containment : ModelFixture {
    void TearDown() override { expectOneTree(model); }
    int unparented() const { return model.getUnparented().size(); }
};

TEST_F(Containment, OfTheSameContainerIsNoWrite) {
    Package const outer = make<Package>();
    Package const inner = make<Package>();
    change([&] { inner.setNestingPackage(outer); });
    EXPECT_NO_THROW(inner.setContainerZEL(outer));
    EXPECT_NO_THROW(inner.setOwner(outer));
    EXPECT_NO_THROW(inner.setNestingPackage(outer));
    int const length = model.getUndoStackLength();
    change([&] {
        outer.getNestedPackages().push_back(inner);
        outer.getOwnedElements().push_back(inner);
        outer.getContaineeZELs().push_back(inner);
    });
    EXPECT_EQ(length, model.getUndoStackLength());
}

TEST_F(Containment, RefusesWhatCannotBeBeforeAnythingIsWritten) {
    Package const a = make<Package>();
    Package const b = make<Package>();
    Package const c = make<Package>();
    Class const object = make<Class>();
    change([&] {
        b.setNestingPackage(a);
        c.setNestingPackage(b);
    });
    MetaModel const other = openModel();
    Package const foreign = other.getFactoryFactory().createPackage();
    other.commitTransaction();
    MetaModel const draft = model.createDeviantWithName("draft");
    draft.beginTransaction();
    Package const hidden = factory.asDeviant(draft).createPackage();
    draft.commitTransaction();
    std::string const absent =
        " Deviant 'root deviant' : \n object of type 'ZEL.Package' [id = " + std::to_string(int(hidden.getId())) +
        " ] is not present";
    struct {
        char const * name;
        char const * text;
        std::function<void()> call;
    } const rows[] = {
        {"itself", "Cyclic composition", [&] { a.setContainerZEL(a); }},
        {"a child", "Cyclic composition", [&] { a.setContainerZEL(b); }},
        {"a grandchild", "Cyclic composition", [&] { a.setContainerZEL(c); }},
        {"a grandchild as nesting package", "Cyclic composition", [&] { a.setNestingPackage(c); }},
        {"a grandchild as owner", "Cyclic composition", [&] { a.setOwner(c); }},
        {"pushed on a grandchild", "Cyclic composition", [&] { c.getPackagedElements().push_back(a); }},
        {"pushed as containee", "Cyclic composition", [&] { c.getContaineeZELs().push_back(a); }},
        {"the end alone", "Cyclic composition", [&] { a.getImplementation()->setOnlyContainerZEL(a.getDeviant(), c); }},
        {"another model", "Cross-model composition", [&] { c.setContainerZEL(foreign); }},
        {"another model's list", "Cross-model composition", [&] { foreign.getPackagedElements().push_back(c); }},
        {"another model as nesting package", "Cross-model composition", [&] { c.setNestingPackage(foreign); }},
        {"a model", "Parenting of Model", [&] { model.setContainerZEL(object); }},
        {"a model by its end alone", "Parenting of Model",
         [&] { model.getImplementation()->setOnlyContainerZEL(model.getDeviant(), a); }},
        {"another deviant's", absent.c_str(), [&] { c.setContainerZEL(hidden); }},
        {"another deviant's as nesting package", absent.c_str(), [&] { c.setNestingPackage(hidden); }},
        {"another deviant's as owner", absent.c_str(), [&] { c.setOwner(hidden); }},
        {"another deviant's, for a new object", absent.c_str(), [&] { factory.createClass().setContainerZEL(hidden); }},
        {"no place", kNoPlace, [&] { object.setContainerZEL(factory.createClass()); }},
        {"no place in a comment", kNoPlace, [&] { object.setContainerZEL(factory.createComment()); }},
    };
    for (auto const & row : rows) {
        SCOPED_TRACE(row.name);
        model.beginTransaction();
        EXPECT_RAISES(row.text, row.call());
        EXPECT_EQ(a, b.getContainerZEL());
        EXPECT_EQ(b, c.getContainerZEL());
        EXPECT_THAT(a.getContaineeZELs(), ElementsAre(b));
        EXPECT_THAT(b.getContaineeZELs(), ElementsAre(c));
        EXPECT_THAT(c.getContaineeZELs(), ElementsAre());
        EXPECT_THAT(foreign.getContaineeZELs(), ElementsAre());
        EXPECT_THAT(other.getContaineeZELs(), ElementsAre(other.getFactory()));
        EXPECT_FALSE(a.hasContainerZEL() || model.hasContainerZEL());
        expectOneTree(model);
        model.cancelTransaction();
    }
}

TEST_F(Containment, MovesAnObjectWithoutAStopAmongTheUnparented) {
    open();
    Package const first = factory.createPackage();
    Package const second = factory.createPackage();
    std::pair<char const *, std::function<void(Class const &, Package const &)>> const roads[] = {
        {"setContainerZEL", [](Class const & c, Package const & p) { c.setContainerZEL(p); }},
        {"setPackage", [](Class const & c, Package const & p) { c.setPackage(p); }},
        {"setOwner", [](Class const & c, Package const & p) { c.setOwner(p); }},
        {"packagedElement", [](Class const & c, Package const & p) { p.getPackagedElements().push_back(c); }},
        {"ownedType", [](Class const & c, Package const & p) { p.getOwnedTypes().push_back(c); }},
        {"ownedMember", [](Class const & c, Package const & p) { p.getOwnedMembers().push_back(c); }},
        {"ownedElement", [](Class const & c, Package const & p) { p.getOwnedElements().push_back(c); }},
        {"containeeZEL", [](Class const & c, Package const & p) { p.getContaineeZELs().push_back(c); }},
        {"reflection", [](Class const & c, Package const & p) { p.setOrAdd(String("packagedElement"), c); }},
        {"namespace", [](Class const & c, Package const & p) { c.setNamespace(p); }},
    };
    int index = 0;
    for (auto const & [name, place] : roads) {
        SCOPED_TRACE(name);
        Class const object = factory.createClass();
        int const roots = unparented();
        for (Package const & package : {first, second}) {
            place(object, package);
            EXPECT_EQ(package, object.getContainerZEL());
            EXPECT_EQ(package, object.getPackage());
            EXPECT_EQ(package, object.getOwner());
            EXPECT_THAT(package.getPackagedElements(), ElementsAre(object));
            EXPECT_EQ(roots - 1, unparented());
        }
        EXPECT_THAT(first.getPackagedElements(), ElementsAre());
        expectOneTree(model);
        index++ % 2 == 0 ? object.removePackage() : object.setContainerZEL(ClassObject());
        EXPECT_THAT(second.getPackagedElements(), ElementsAre());
        EXPECT_EQ(roots, unparented());
        object.removeContainerZEL();
        EXPECT_EQ(roots, unparented());
    }
}

TEST_F(Containment, PlacesAnElementInOneListOfItsOwnerOnly) {
    open();
    Operation const operation = factory.createOperation();
    Constraint const constraint = factory.createConstraint();
    NamedCall const rows[] = {
        {"precondition", [&] { constraint.setContainerZEL(operation); }},
        {"ownedRule", [&] { operation.getOwnedRules().push_back(constraint); }},
        {"postcondition", [&] { operation.getPostconditions().push_back(constraint); }},
        {"bodyCondition", [&] { operation.setBodyCondition(constraint); }},
        {"precondition", [&] { operation.getPreconditions().push_back(constraint); }},
    };
    for (auto const & row : rows) {
        row.call();
        for (std::string const name : {"precondition", "ownedRule", "postcondition", "bodyCondition"}) {
            EXPECT_EQ(name == row.name, bool(operation.has(String(name)))) << name << " after " << row.name;
        }
        EXPECT_EQ(operation, constraint.getContext());
        EXPECT_THAT(operation.getContaineeZELs(), ElementsAre(constraint));
    }
    constraint.removeContext();
    EXPECT_EQ(0, operation.getContaineeZELs().size());
    EXPECT_FALSE(constraint.hasContainerZEL());
}

TEST_F(Containment, TakesTheFormerValueOfASingleEndOut) {
    Constraint const first = make<Constraint>();
    Constraint const second = make<Constraint>();
    Expression const a = make<Expression>();
    Expression const b = make<Expression>();
    open();
    first.setSpecification(a);
    EXPECT_EQ(first, a.getContainerZEL());
    first.setSpecification(b);
    EXPECT_FALSE(a.hasContainerZEL());
    second.setSpecification(b);
    EXPECT_FALSE(first.hasSpecification());
    EXPECT_EQ(second, b.getContainerZEL());
    a.setContainerZEL(second);
    EXPECT_EQ(a, second.getSpecification());
    EXPECT_FALSE(b.hasContainerZEL());
    second.removeSpecification();
    EXPECT_FALSE(a.hasContainerZEL());
}

TEST_F(Containment, LosesOnlyTheEndThatIsMeantInTheOneEndedForms) {
    open();
    Deviant const d = model.getDeviant();
    Package const package = factory.createPackage();
    Class const object = factory.createClass();
    object.getImplementation()->setOnlyPackage(d, package);
    EXPECT_EQ(package, object.getContainerZEL());
    EXPECT_EQ(0, package.getPackagedElements().size());
    package.getImplementation()->getPackagedElementsWithoutAssociation(d).push_back(object);
    EXPECT_EQ(1, package.getPackagedElements().size());
    object.getImplementation()->removeOnlyPackage(d);
    EXPECT_FALSE(object.hasContainerZEL());
    EXPECT_EQ(1, package.getPackagedElements().size());
    package.getImplementation()->getPackagedElementsWithoutAssociation(d).remove(object);
}

TEST_F(Containment, EndsOnBothSidesByWhateverEndOfTheContainer) {
    open();
    Class const object = factory.createClass();
    Property const attribute = factory.createProperty();
    Constraint const constraint = factory.createConstraint();
    Expression const expression = factory.createExpression();
    NamedCall const rows[] = {
        {"another end", [&] { attribute.removeDatatype(); }},
        {"an invalid value", [&] { attribute.setOwningAssociation(Association()); }},
        {"reflection", [&] { attribute.removeOne(String("datatype")); }},
        {"a single value", [&] { expression.removeNamespace(); }},
        {"the owner", [&] { expression.removeOwner(); }},
    };
    for (auto const & row : rows) {
        SCOPED_TRACE(row.name);
        attribute.setClass(object);
        constraint.setSpecification(expression);
        int const roots = unparented();
        row.call();
        EXPECT_EQ(roots + 1, unparented());
        EXPECT_EQ(1, object.getOwnedAttributes().size() + (constraint.hasSpecification() ? 1 : 0));
        expectOneTree(model);
    }
}

TEST_F(Containment, DerivesTheOppositeOfAPropertyFromItsAssociation) {
    open();
    Association const association = factory.createAssociation();
    Property const a = factory.createProperty();
    Property const b = factory.createProperty();
    Property const c = factory.createProperty();
    EXPECT_RAISES("You cannot set the opposite on a Property that has no Association!", a.setOpposite(b));
    EXPECT_FALSE(a.getOpposite().isValid());
    a.setAssociation(association);
    EXPECT_FALSE(a.hasOpposite());
    EXPECT_RAISES("You cannot set the opposite on a navigable association!", a.setOpposite(b));
    association.getMemberEnds().push_back(b);
    EXPECT_RAISES(kInternalError, a.setOpposite(Property()));
    EXPECT_EQ(b, a.getOpposite());
    EXPECT_EQ(a, b.getOpposite());
    a.setOpposite(c);
    EXPECT_EQ(c, a.getOpposite());
    EXPECT_FALSE(b.hasAssociation());
    association.getOwnedEnds().push_back(c);
    EXPECT_FALSE(a.hasOpposite());
    EXPECT_FALSE(c.hasOpposite());
    association.getOwnedEnds().clear();
    association.getMemberEnds().push_back(b);
    EXPECT_FALSE(a.hasOpposite()) << "three ends";
    b.removeAssociation();
    a.removeOpposite();
    EXPECT_FALSE(association.isValid());
    EXPECT_FALSE(a.hasAssociation());
    EXPECT_FALSE(c.hasAssociation());
    EXPECT_TRUE(a.isValid());
    a.removeOpposite();

    // Both ends of the property, with none at the association.
    Association const empty = factory.createAssociation();
    a.getImplementation()->setOnlyAssociation(model.getDeviant(), empty);
    a.setOpposite(c);
    EXPECT_EQ(2, empty.getMemberEnds().size());
    EXPECT_EQ(c, a.getOpposite());
    EXPECT_EQ(a, c.getOpposite());
}

/// The elements by the three ways to walk them, which must agree.
std::vector<ImmutableClassObject> walked(ImmutableSequence<ImmutableClassObject> const & sequence) {
    std::vector<ImmutableClassObject> const fetched = sequence.toVector();
    std::vector<ImmutableClassObject> const forward(sequence.begin(), sequence.end());
    std::vector<ImmutableClassObject> backward;
    for (auto place = sequence.end(); place != sequence.begin();) {
        backward.insert(backward.begin(), *--place);
    }
    EXPECT_EQ(fetched, forward);
    EXPECT_EQ(fetched, backward);
    EXPECT_EQ(fetched.size(), static_cast<std::size_t>(sequence.size()));
    EXPECT_EQ(fetched.empty(), sequence.empty());
    return fetched;
}

TEST_F(Containment, ShowsTheContentsAsTheListsOfThePropertiesDo) {
    open();
    Class const object = factory.createClass();
    auto const contents = object.getContaineeZELs();
    auto const expectAgreement = [](ClassObject const & of) {
        EXPECT_EQ(walked(of.getContaineeZELs()),
                  walked(of.getImplementation()->getContaineeZELsWithoutAssociation(of.getDeviant())));
    };
    expectAgreement(object);
    EXPECT_TRUE(contents.empty());
    std::vector<ClassObject> children;
    for (int i = 0; i < 2; ++i) {
        children.insert(children.end(), {factory.createProperty(), factory.createOperation(), factory.createComment()});
    }
    for (ClassObject const & child : children) {
        contents.push_back(child);
    }
    expectAgreement(object);
    EXPECT_EQ(6, contents.size());
    model.setTopPackage(factory.createPackage());
    expectAgreement(model);

    // An iterator stands still while its list loses elements, and goes on in the next list after the last of one.
    auto place = contents.begin();
    auto const end = contents.end();
    for (int left = 6; left > 0; --left) {
        ASSERT_NE(place, end);
        ClassObject const erased = *place;
        place = contents.erase(place);
        EXPECT_EQ(left - 1, contents.size());
        EXPECT_FALSE(contents.contains(erased));
        EXPECT_FALSE(erased.hasContainerZEL());
        expectAgreement(object);
    }
    EXPECT_EQ(place, end);
    EXPECT_RAISES(kInternalError, *end);
    EXPECT_ANY_THROW(contents.erase(end));
}

/// The number of objects below one, counted by a loop within a loop for each level.
int countBelow(ImmutableClassObject const & object) {
    int count = 0;
    for (ImmutableClassObject const & each : object.getContaineeZELs()) {
        count += 1 + countBelow(each);
    }
    return count;
}

TEST_F(Containment, IsLoopedOverAtManyLevelsAtOnceAndLeavesNothingBehind) {
    open();
    Package const top = factory.createPackage();
    Package owner = top;
    for (int level = 0; level < 15; ++level) {
        Package const inner = factory.createPackage();
        owner.getPackagedElements().push_back(factory.createClass());
        owner.getPackagedElements().push_back(inner);
        owner = inner;
    }
    int const below = countBelow(top);
    EXPECT_EQ(30, below);
    int const held = top.getImplementation()->numRef();
    int const alive = Cleanup::numberOfActiveObjects();
    EXPECT_EQ(below, countBelow(top));
    EXPECT_EQ(alive, Cleanup::numberOfActiveObjects());
    EXPECT_EQ(held, top.getImplementation()->numRef());

    // Lists of contents that live at the same time are of their own objects, and copies are the same list.
    auto const first = top.getContaineeZELs();
    auto const copy = first;
    auto const second = ClassObject(first.at(1)).getContaineeZELs();
    EXPECT_EQ(first, copy);
    EXPECT_NE(first.at(1), second.at(1));
    EXPECT_EQ(ClassObject(first.at(1)), second.at(1).getContainerZEL());
}

TEST_F(Containment, EndsAnObjectWithAllItContainsAndBringsThemBack) {
    Package const package = make<Package>();
    Class const object = make<Class>();
    Property const attribute = make<Property>();
    Property const elsewhere = make<Property>();
    Comment const comment = make<Comment>();
    change([&] {
        object.setPackage(package);
        attribute.setClass(object);
        comment.setOwner(attribute);
        Association const association = factory.createAssociation();
        attribute.setAssociation(association);
        elsewhere.setAssociation(association);
    });
    EXPECT_THROW(object.destroy(), Exception);
    EXPECT_TRUE(object.isValid());
    change([&] { object.destroy(); });
    for (ClassObject const & gone : {ClassObject(object), ClassObject(attribute), ClassObject(comment)}) {
        EXPECT_FALSE(gone.isValid());
        EXPECT_THROW(static_cast<void>(gone.getContainerZEL()), Exception);
        EXPECT_FALSE(model.getObjectById(gone.getId()).isValid());
    }
    EXPECT_NO_THROW(object.destroy());
    EXPECT_EQ(0, package.getContaineeZELs().size());
    expectOneTree(model);
    model.undo();
    EXPECT_EQ(attribute, comment.getOwner());
    EXPECT_EQ(object, attribute.getClass());
    EXPECT_EQ(package, object.getPackage());
    EXPECT_EQ(elsewhere, attribute.getOpposite());
}

TEST_F(Containment, HoldsForDerivedContaineeListsInTheOrderOfTheProperties) {
    open();
    Operation const operation = factory.createOperation();
    Comment const comment = factory.createComment();
    Constraint const rule = factory.createConstraint();
    Constraint const post = factory.createConstraint();
    Parameter const parameter = factory.createParameter();
    comment.setOwner(operation);
    operation.getOwnedRules().push_back(rule);
    operation.getPostconditions().push_back(post);
    operation.getParameterOwnedParameters().push_back(parameter);
    EXPECT_THAT(operation.getContaineeZELs(), ElementsAre(parameter, post, comment, rule));
    EXPECT_EQ(3, operation.getOwnedMembers().size());
    EXPECT_EQ(4, operation.getOwnedElements().size());
    operation.getContaineeZELs().clear();
    EXPECT_FALSE(comment.hasContainerZEL());
    EXPECT_FALSE(post.hasContainerZEL());
}

} // namespace
} // namespace ZEL::tests
