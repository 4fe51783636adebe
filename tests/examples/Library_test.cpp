// A metamodel outside of the library: generated, registered and used as an application does it.

#include "host/TemporaryFolder.h"
#include "support/ExpectRaises.h"

#include <ZEL/Boolean.h>
#include <ZEL/Cleanup.h>
#include <ZEL/FactoryRegistry.h>
#include <ZEL/LeakChecker.h>
#include <ZEL/Logger.h>
#include <ZEL/MetaModelRegistry.h>
#include <ZEL/Transaction.h>
#include <ZEL/TypeInfoRegistry.h>
#include <ZEL/metamodel/Association.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Enumeration.h>
#include <ZEL/metamodel/EnumerationLiteral.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/PropertyStorage.h>
#include <ZEL/metamodel/Stereotype.h>
#include <ZEL/serializer/XmiReader.h>
#include <ZEL/serializer/XmiWriter.h>
#include <ZEL/tools/Comparator.h>
#include <ZEL/tools/RandomModelGenerator.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <library/Book.h>
#include <library/Copy.h>
#include <library/House.h>
#include <library/LibraryFactory.h>
#include <library/LibraryModel.h>
#include <library/Loan.h>
#include <library/LoanState.h>
#include <library/MetaModelRegistration.h>
#include <library/Rare.h>
#include <library/Reader.h>

#include <string>
#include <vector>

namespace Library {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char const * kUri = "http://example.org/library/1.0";

template <class S> std::vector<std::string> namesOf(S const & elements) {
    std::vector<std::string> names;
    for (auto const & element : elements) {
        names.push_back(element.getName().str());
    }
    return names;
}

std::vector<std::string> namesOfSubClasses(ZEL::ImmutableClass const & metaClass) {
    return namesOf(metaClass.getSubClasses());
}

/// A model with an open transaction, and a few objects in it.
class LibraryTest : public testing::Test {
protected:
    LibraryTest() {
        ZEL::Logger::instance()->setDefaultHandlerLevel(ZEL::LogLevel::off);
        registerMetaModel();
        model = LibraryFactory::createNewModel();
        factory = LibraryFactory(model.getFactory());
        model.beginTransaction("setup");
        house = factory.createHouse();
        house.setName("Harbour Street");
        model.getHouses().push_back(house);
        orlando = makeBook("Orlando");
        waves = makeBook("The Waves");
        copy = factory.createCopy();
        copy.setBook(orlando);
        reader = factory.createReader();
        reader.setName("Clarissa");
        reader.setHouse(house);
        loan = factory.createLoan();
        loan.setReader(reader);
        loan.setCopy(copy);
        model.commitTransaction();
        model.clearUndoStack();
        model.beginTransaction("test");
    }

    Book makeBook(std::string const & name) const {
        Book const book = factory.createBook();
        book.setName(name);
        house.getBooks().push_back(book);
        return book;
    }
    Rare makeRare(Book const & book, std::string const & reason) const {
        Rare const rare = factory.createRare();
        rare.setReason(reason);
        rare.setBase_Book(book);
        return rare;
    }

    LibraryModel model;
    LibraryFactory factory;
    House house;
    Book orlando;
    Book waves;
    Copy copy;
    Reader reader;
    Loan loan;
};

TEST_F(LibraryTest, BothEndsOfAnAssociationStayInStep) {
    EXPECT_THAT(namesOf(house.getBooks()), ElementsAre("Orlando", "The Waves"));
    EXPECT_EQ(orlando.getHouse(), house);
    EXPECT_EQ(copy.getContainerZEL(), orlando);

    waves.getCopies().push_back(copy);
    EXPECT_EQ(copy.getBook(), waves);
    EXPECT_TRUE(orlando.getCopies().empty());

    EXPECT_TRUE(copy.getLoans().contains(loan));
    loan.removeCopy();
    EXPECT_TRUE(copy.getLoans().empty());
    copy.getLoans().push_back(loan);
    EXPECT_EQ(loan.getCopy(), copy);

    orlando.setSequel(waves);
    Book const third = makeBook("Flush");
    third.setSequel(waves);
    EXPECT_FALSE(orlando.hasSequel()) << "a book is the sequel of one book alone";
    EXPECT_EQ(waves.getPrequel(), third);

    waves.destroy();
    EXPECT_FALSE(third.hasSequel());
    EXPECT_FALSE(copy.isValid()) << "what a book contains goes with it";
    EXPECT_FALSE(loan.hasCopy());
}

TEST_F(LibraryTest, AnEndOfTheAssociationIsKeptOnOneSideAlone) {
    reader.getFavourites().push_back(orlando);
    EXPECT_TRUE(reader.getFavourites().contains(orlando));
    EXPECT_EQ(orlando.getContainerZEL(), house);
    EXPECT_FALSE(Book::MetaClass().getProperty("reader").isValid());
}

TEST_F(LibraryTest, ADerivedEndShowsTheStoredOnes) {
    EXPECT_THAT(namesOf(house.getHoldings()), ElementsAre("Orlando", "The Waves", "Clarissa"));
    orlando.destroy();
    EXPECT_THAT(namesOf(house.getHoldings()), ElementsAre("The Waves", "Clarissa"));
}

TEST_F(LibraryTest, UndoAndRedoCoverAllOfATransaction) {
    Book const flush = makeBook("Flush");
    Rare const rare = makeRare(flush, "signed");
    loan.setState(LoanState::Overdue);
    orlando.destroy();
    model.commitTransaction();

    model.undo();
    EXPECT_FALSE(flush.isValid());
    EXPECT_FALSE(rare.isValid());
    EXPECT_EQ(loan.getState(), LoanState::Requested);
    EXPECT_EQ(loan.getCopy().getBook(), orlando);
    model.redo();
    EXPECT_EQ(flush.getRarities().at(0), rare);
    EXPECT_EQ(loan.getState(), LoanState::Overdue);
    EXPECT_FALSE(orlando.isValid());
    EXPECT_FALSE(loan.hasCopy());
}

TEST_F(LibraryTest, DeviantsHoldVersionsSideBySide) {
    model.commitTransaction();
    LibraryModel const draft = model.createDeviantWithName("draft");
    draft.beginTransaction("draft");
    LibraryFactory const draftFactory(draft.getFactory());
    draftFactory.createBook().setHouse(house.asDeviant(draft));
    draftFactory.createRare().setBase_Book(orlando.asDeviant(draft));
    loan.asDeviant(draft).setState(LoanState::Returned);
    draft.commitTransaction();

    EXPECT_EQ(house.getBooks().size(), 2);
    EXPECT_EQ(house.asDeviant(draft).getBooks().size(), 3);
    EXPECT_EQ(loan.getState(), LoanState::Requested);
    EXPECT_TRUE(orlando.getRarities().empty());

    model.beginTransaction("take the draft over");
    draft.assignToRoot();
    model.commitTransaction();
    EXPECT_EQ(house.getBooks().size(), 3);
    EXPECT_EQ(loan.getState(), LoanState::Returned);
    EXPECT_EQ(orlando.getRarities().size(), 1);
    model.removeDeviantWithName("draft");
}

TEST_F(LibraryTest, EnumerationsHaveTheTextsOfTheirLiterals) {
    EXPECT_EQ(loan.getState(), LoanState::Requested) << "the default";
    EXPECT_EQ(LoanState(LoanState::Overdue).toString(), "overdue");
    EXPECT_EQ(LoanState(factory.createFromString("LoanState", "returned")), LoanState::Returned);
    EXPECT_RAISES("Can't convert string 'lost' to an enumeration literal",
                  factory.createFromString("LoanState", "lost"));

    ZEL::PropertyStorage const storage = Loan::MetaClass().getProperty("state").getStorage();
    storage.setOrAdd(loan, factory.createFromString("library.LoanState", "running"));
    EXPECT_EQ(loan.getState(), LoanState::Running);
    EXPECT_EQ(storage.getOne(ZEL::ImmutableClassObject(loan)).toString(), "running");

    ZEL::ImmutableEnumeration const type(ZEL::TypeInfoRegistry::getMetaType("library.LoanState"));
    EXPECT_THAT(namesOf(type.getOwnedLiterals()), ElementsAre("requested", "running", "overdue", "returned"));
}

TEST_F(LibraryTest, AStereotypeIsAttachedToAnElement) {
    Rare const rare = makeRare(orlando, "signed");
    EXPECT_EQ(rare.getBase_Book(), orlando);
    EXPECT_EQ(rare.getBaseElement(), orlando);
    EXPECT_TRUE(orlando.getAppliedStereotypeInstances().contains(rare));
    EXPECT_EQ(orlando.getRarities().at(0), rare);

    rare.setBase_Book(waves);
    EXPECT_TRUE(orlando.getRarities().empty());
    EXPECT_TRUE(waves.getRarities().contains(rare));
    rare.removeBase_Book();
    EXPECT_FALSE(rare.hasBaseElement());
    EXPECT_TRUE(waves.getAppliedStereotypeInstances().empty());
    EXPECT_TRUE(model.getUnparented().contains(rare));

    rare.setBase_Book(waves);
    waves.destroy();
    EXPECT_FALSE(rare.isValid());
}

TEST_F(LibraryTest, MakesObjectsByTheNamesOfTheirClasses) {
    EXPECT_TRUE(Book(factory.createFromString("Book")).isValid());
    EXPECT_TRUE(Book(factory.createFromString("library.Book")).isValid());
    EXPECT_EQ(Copy(factory.createFromString("Copy", ZEL::Integer(500))).getId(), 500);
    EXPECT_FALSE(factory.createFromString("LibraryModel").isValid());
    EXPECT_FALSE(factory.createFromString("Comment").isValid()) << "a class of another metamodel";
    EXPECT_TRUE(factory.create<Loan>().isValid());
}

TEST_F(LibraryTest, TheMetaclassesDescribeTheDefinition) {
    ZEL::ImmutableClass const book = orlando.getMetaClass();
    EXPECT_EQ(book, Book::MetaClass());
    EXPECT_EQ(book.getQualifiedName(), "library.Book");
    EXPECT_EQ(book.getRootModel(), getMetaModel());
    EXPECT_EQ(getMetaModel().getUri(), kUri);
    EXPECT_THAT(namesOf(book.getSuperClasses()), ElementsAre("NamedElement"));

    ZEL::ImmutableProperty const copies = book.getProperty("copy");
    EXPECT_EQ(copies.getType(), Copy::MetaClass());
    EXPECT_TRUE(copies.isComposite());
    EXPECT_TRUE(copies.getUpper().isUnlimited());
    EXPECT_EQ(copies.getOpposite(), Copy::MetaClass().getProperty("book"));
    EXPECT_EQ(copies.getAssociation().getName(), "A_copy_book");
    EXPECT_EQ(Copy::MetaClass().getProperty("number").getDefault(), "1");
    EXPECT_TRUE(House::MetaClass().getProperty("holding").isDerived());
    EXPECT_FALSE(book.getProperty("shelf").isValid());
}

TEST_F(LibraryTest, InheritedPropertiesAreTheClassesOwn) {
    ZEL::ImmutableProperty const name = Book::MetaClass().getProperty("name");
    ASSERT_TRUE(name.isValid());
    EXPECT_EQ(name.getClass(), Book::MetaClass());
    EXPECT_NE(name, Reader::MetaClass().getProperty("name"));
    EXPECT_EQ(name.getStorage().getOne(ZEL::ImmutableClassObject(orlando)).toString(), "Orlando");
    EXPECT_EQ(name.getRootModel(), getMetaModel());
    for (char const * const inherited : {"ownedComment", "persistence", "containerZEL", "id", "qualifiedName"}) {
        EXPECT_TRUE(Book::MetaClass().getProperty(inherited).isValid()) << inherited;
    }
}

TEST_F(LibraryTest, AStereotypeIsDescribedByOneAndLeavesTheBuiltInClassesAlone) {
    EXPECT_TRUE(ZEL::ImmutableStereotype(Rare::MetaClass()).isValid());
    EXPECT_FALSE(ZEL::ImmutableStereotype(Book::MetaClass()).isValid());
    EXPECT_FALSE(Rare::MetaClass().getProperty("base_Book").getOpposite().isValid());

    ZEL::ImmutableProperty const instances = ZEL::ClassObject::MetaClass().getProperty("appliedStereotypeInstance");
    EXPECT_EQ(instances.getAssociation().getName(), "A_appliedStereotype_baseElement");
    EXPECT_EQ(instances.getOpposite().getName(), "baseElement");
}

TEST_F(LibraryTest, IsEqualAfterSavingAndReading) {
    orlando.setIsbn("0-15-670160-X");
    orlando.setSequel(waves);
    reader.getFavourites().push_back(waves);
    loan.setState(LoanState::Overdue);
    loan.setFee(ZEL::Double(2.5));
    copy.setIsLendable(ZEL::Boolean(false));
    makeRare(orlando, "signed & \"first\"");
    model.commitTransaction();
    TemporaryFolder const folder;
    std::string const file = folder.path("library.xmi");
    ASSERT_TRUE(ZEL::Serializer::XmiWriter().write(file, model));
    std::string const content = folder.content("library.xmi");
    EXPECT_THAT(content, HasSubstr("state=\"overdue\""));
    EXPECT_THAT(content, HasSubstr("<library:Rare "));
    EXPECT_THAT(content, HasSubstr("base_Book=\"_zel_" + orlando.getSiid().str() + "\""));

    ZEL::Serializer::XmiReader xmiReader;
    LibraryModel const again(xmiReader.read(file));
    ASSERT_TRUE(again.isValid());
    EXPECT_TRUE(xmiReader.report().isEmpty());
    EXPECT_TRUE(ZEL::compare(model, again));
    Book const book(again.getHouses().at(0).getBooks().at(0));
    EXPECT_EQ(book.getId(), orlando.getId());
    EXPECT_EQ(book.getRarities().at(0).getReason(), "signed & \"first\"");
    EXPECT_EQ(book.getCopies().at(0).getLoans().at(0).getState(), LoanState::Overdue);

    ASSERT_TRUE(ZEL::Serializer::XmiWriter().write(file, again));
    EXPECT_EQ(folder.content("library.xmi"), content);

    again.beginTransaction("differ");
    book.getRarities().at(0).setReason("none");
    again.commitTransaction();
    EXPECT_FALSE(ZEL::compare(model, again));
}

/// Begins without the metamodel.
class LibraryRegistration : public testing::Test {
protected:
    LibraryRegistration() {
        ZEL::Logger::instance()->setDefaultHandlerLevel(ZEL::LogLevel::off);
        unregisterMetaModel();
    }
};

bool canMakeModels() { return ZEL::FactoryRegistry::instance()->createModel(kUri).isValid(); }

TEST_F(LibraryRegistration, CanBeTakenBackAndRepeated) {
    std::vector<std::string> const subClasses = namesOfSubClasses(ZEL::NamedElement::MetaClass());
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(getMetaModel().isValid());
        EXPECT_FALSE(canMakeModels());
        EXPECT_FALSE(ZEL::TypeInfoRegistry::hasType("library.LoanState"));
        EXPECT_FALSE(ZEL::MetaModelRegistry::instance()->getModelFromUri(kUri).isValid());
        EXPECT_EQ(namesOfSubClasses(ZEL::NamedElement::MetaClass()), subClasses);

        registerMetaModel();
        registerMetaModel();
        EXPECT_TRUE(getMetaModel().isValid());
        EXPECT_TRUE(canMakeModels());
        EXPECT_EQ(ZEL::MetaModelRegistry::instance()->getModelFromUri(kUri), getMetaModel());
        EXPECT_EQ(namesOfSubClasses(ZEL::NamedElement::MetaClass()).size(), subClasses.size() + 3);
        EXPECT_THAT(namesOfSubClasses(Book::MetaClass()), IsEmpty());
        unregisterMetaModel();
    }
}

TEST_F(LibraryRegistration, LeavesNoObjectBehind) {
    registerMetaModel();
    unregisterMetaModel();
    int const before = ZEL::Cleanup::numberOfActiveObjects();
    registerMetaModel();
    EXPECT_GT(ZEL::Cleanup::numberOfActiveObjects(), before);
    unregisterMetaModel();
    EXPECT_EQ(ZEL::Cleanup::numberOfActiveObjects(), before);
}

TEST_F(LibraryRegistration, ModelsLeaveNoObjectBehind) {
    registerMetaModel();
    ZEL::LeakChecker checker;
    checker.beginTrackLifetime();
    {
        LibraryModel const model = LibraryFactory::createNewModel();
        model.beginTransaction("fill");
        ZEL::createRandomModel(model, 4, 4, 200, 7);
        model.commitTransaction();
        LibraryModel const draft = model.createDeviantWithName("draft");
        draft.beginTransaction("empty");
        draft.getHouses().at(0).destroy();
        draft.commitTransaction();
        model.undo();
        model.redo();
    }
    EXPECT_NO_THROW(checker.endTrackLifetime());
}

} // namespace
} // namespace Library
