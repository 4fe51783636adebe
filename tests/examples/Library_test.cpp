// A metamodel outside of the library: generated, registered and used as an application does it.

#include "host/TemporaryFolder.h"
#include "support/ExpectRaises.h"

#include <ZEL/ZEL.h>

#include <gmock/gmock.h>
#include <library/Book.h>
#include <library/Copy.h>
#include <library/House.h>
#include <library/ImmutableVisitorEmpty.h>
#include <library/LibraryFactory.h>
#include <library/LibraryModel.h>
#include <library/Loan.h>
#include <library/MetaModelRegistration.h>
#include <library/Rare.h>
#include <library/Reader.h>
#include <library/VisitorEmpty.h>

#include <array>
#include <memory>
#include <sstream>
#include <vector>

namespace Library {
namespace {

using testing::ElementsAre;

/// A model with an open transaction, and a few objects in it.
class LibraryTest : public testing::Test {
protected:
    LibraryTest() {
        ZEL::Logger::instance()->setDefaultHandlerLevel(ZEL::LogLevel::off);
        registerMetaModel();
        model = LibraryFactory::createNewModel();
        factory = LibraryFactory(model.getFactory());
        model.beginTransaction("test");
        house = factory.createHouse();
        house.setName("Harbour Street");
        model.getHouses().push_back(house);
        orlando = makeBook("Orlando");
        waves = makeBook("The Waves");
        copy = factory.createCopy();
        copy.setBook(orlando);
        loan = factory.createLoan();
        loan.setCopy(copy);
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
    Loan loan;
};

TEST_F(LibraryTest, BothEndsOfAnAssociationStayInStep) {
    orlando.setSequel(waves);
    Book const third = makeBook("Flush");
    third.setSequel(waves);
    EXPECT_FALSE(orlando.hasSequel()) << "a book is the sequel of one book alone";
    EXPECT_EQ(waves.getPrequel(), third);
    waves.getCopies().push_back(copy);
    EXPECT_TRUE(orlando.getCopies().empty());

    waves.destroy();
    EXPECT_FALSE(third.hasSequel());
    EXPECT_FALSE(copy.isValid()) << "what a book contains goes with it";
    EXPECT_FALSE(loan.hasCopy());
}

TEST_F(LibraryTest, AStereotypeIsAttachedToAnElement) {
    Rare const rare = makeRare(orlando, "signed");
    EXPECT_EQ(rare.getBase_Book(), orlando);
    EXPECT_EQ(rare.getBaseElement(), orlando);
    EXPECT_EQ(rare.getContainerZEL(), orlando);
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

TEST_F(LibraryTest, EnumerationsHaveTheTextsOfTheirLiterals) {
    EXPECT_EQ(LoanState(factory.createFromString("LoanState", "returned")), LoanState::Returned);
    EXPECT_EQ(LoanState(factory.createFromString("library.LoanState", "running")).toString(), "running");
    EXPECT_RAISES("Can't convert string 'lost' to an enumeration literal",
                  factory.createFromString("LoanState", "lost"));
    ZEL::ImmutableEnumeration const type(ZEL::TypeInfoRegistry::getMetaType("library.LoanState"));
    EXPECT_EQ(type.getOwnedLiterals().size(), 4);
    EXPECT_EQ(type.getOwnedLiterals().at(2).getName(), "overdue");
}

TEST_F(LibraryTest, TheMetaclassesDescribeTheDefinition) {
    ZEL::ImmutableClass const book = orlando.getMetaClass();
    EXPECT_EQ(book, Book::MetaClass());
    EXPECT_EQ(book.getQualifiedName(), "library.Book");
    EXPECT_EQ(book.getRootModel(), getMetaModel());
    EXPECT_EQ(getMetaModel().getUri(), "http://example.org/library/1.0");
    ZEL::ImmutableProperty const copies = book.getProperty("copy");
    EXPECT_TRUE(copies.isComposite() && copies.getUpper().isUnlimited());
    EXPECT_EQ(copies.getOpposite(), Copy::MetaClass().getProperty("book"));
    EXPECT_EQ(copies.getAssociation().getName(), "A_copy_book");
    EXPECT_EQ(Copy::MetaClass().getProperty("number").getDefault(), "1");
    EXPECT_TRUE(House::MetaClass().getProperty("holding").isDerived());
    EXPECT_FALSE(book.getProperty("reader").isValid()) << "the association's own end";

    // Each class has inherited properties of its own.
    ZEL::ImmutableProperty const name = book.getProperty("name");
    EXPECT_EQ(name.getClass(), book);
    EXPECT_EQ(name.getRootModel(), getMetaModel());
    EXPECT_NE(name, Reader::MetaClass().getProperty("name"));
    EXPECT_EQ(name.getStorage().getOne(ZEL::ImmutableClassObject(orlando)).toString(), "Orlando");

    EXPECT_TRUE(ZEL::ImmutableStereotype(Rare::MetaClass()).isValid());
    EXPECT_FALSE(ZEL::ImmutableStereotype(book).isValid());
    EXPECT_FALSE(Rare::MetaClass().getProperty("base_Book").getOpposite().isValid());
}

// --- walks -----------------------------------------------------------------------------------------------------------

std::string idOf(ZEL::ImmutableClassObject const & object) {
    return "id=\"" + object.getId().toString().str() + " {readonly}\"";
}

TEST_F(LibraryTest, AStereotypeInstanceIsPrintedOnce) {
    loan.destroy();
    orlando.setSequel(waves);
    makeRare(orlando, "signed");
    makeRare(orlando, "stained");
    std::ostringstream text;
    EXPECT_TRUE(ZEL::ImmutableAccessVisitorTextWriter(text).visitObject(orlando));
    EXPECT_EQ(text.str(), "\n  [ Book name=\"Orlando\" " + idOf(orlando) +
                              "\n    [ copy number=\"1\" isLendable=\"true\" condition=\"good\" " + idOf(copy) +
                              " book=\"Orlando:Book\" modelZEL=\":LibraryModel\""
                              "\n    ]"
                              "\n    [ appliedStereotypeInstance"
                              "\n    ]"
                              "\n    [ appliedStereotypeInstance"
                              "\n    ] house=\"Harbour Street:House\" sequel=\"The Waves:Book\""
                              " modelZEL=\":LibraryModel\""
                              "\n  ]");
}

/// Writes down through which property it meets a stereotype instance.
struct InstanceRecorder : ZEL::ImmutableAccessVisitorEmpty {
    bool visitObject(ZEL::ImmutableObject const & object) override {
        return ZEL::ImmutableAccessVisitor::visitObject(object);
    }
    bool visitStereotypeObject(ZEL::ImmutableStereotypeObject const & instance) override {
        ZEL::ImmutableProperty const property = traversal->getCurrentMetaProperty();
        log.push_back(instance.getMetaClass().getName().str() + " by " +
                      (property.isValid() ? property.getName().str() : "itself"));
        return true;
    }
    std::vector<std::string> log;
    ZEL::ImmutableAccessVisitorTraversal * traversal = nullptr;
};

TEST_F(LibraryTest, AStereotypeInstanceIsVisitedAsAValueAndAfterAllProperties) {
    makeRare(orlando, "signed");
    InstanceRecorder pre;
    InstanceRecorder post;
    ZEL::ImmutableAccessVisitorTraversalContainment walk(&pre, &post);
    pre.traversal = post.traversal = &walk;
    EXPECT_TRUE(walk.visitObject(orlando));
    EXPECT_THAT(pre.log, ElementsAre("Rare by appliedStereotypeInstance", "Rare by appliedStereotypeInstance",
                                     "Rare by itself"));
    EXPECT_EQ(post.log, pre.log);
}

/// Visits books, for reading and for writing, and nothing else.
struct BookVisitor : VisitorEmpty {
    bool visitBook(Book book) override {
        book.setName("seen");
        return false;
    }
    bool visitBook(ImmutableBook book) override { return book.getName() != "seen"; }
};

struct BookReader : ImmutableVisitorEmpty {
    bool visitBook(ImmutableBook book) override { return book.getName() == "Orlando"; }
};

TEST_F(LibraryTest, AVisitorOfTheMetamodelIsCalledForTheClassOfAnObject) {
    BookVisitor visitor;
    EXPECT_TRUE(visitor.visit(ZEL::ImmutableObject(orlando)));
    EXPECT_FALSE(visitor.visit(orlando)) << "by the form of the handle";
    EXPECT_FALSE(visitor.visit(ZEL::ImmutableClassObject(orlando)));
    EXPECT_FALSE(visitor.visit(ZEL::Object(waves)));
    EXPECT_EQ(waves.getName(), "seen");
    EXPECT_TRUE(visitor.visit(copy) && visitor.visit(Book::MetaClass()) && visitor.visit(ZEL::Object(ZEL::String("x"))))
        << "other classes, those of other metamodels too";
    EXPECT_RAISES("Cannot access NULL ref. Use isValid() before calling methods", visitor.visit(Book()));

    orlando.setName("Orlando");
    BookReader reader;
    ImmutableVisitor & any = reader;
    EXPECT_TRUE(any.visit(orlando) && any.visit(ZEL::ImmutableObject(loan)));
    EXPECT_FALSE(any.visit(ZEL::ImmutableObject(waves)));
}

/// The visitor of the built-in metamodel meets a class of an application as the nearest superclass that it knows.
TEST_F(LibraryTest, AVisitorOfAnotherMetamodelIsCalledForASuperclass) {
    struct : ZEL::ImmutableVisitorEmpty {
        bool visitStereotype(ZEL::ImmutableStereotype) override { return false; }
        bool visitMetaModel(ZEL::ImmutableMetaModel) override { return false; }
    } visitor;
    EXPECT_FALSE(visitor.visit(Rare::MetaClass()));
    EXPECT_FALSE(visitor.visit(getMetaModel()));
    EXPECT_TRUE(visitor.visit(orlando)) << "of its superclasses none has instances";
}

// --- texts with a default --------------------------------------------------------------------------------------------

/// The attribute as it stands in the text, with the blank before its name; empty if it is not there.
std::string attributeIn(std::string const & text, std::string const & name) {
    std::size_t const at = text.find(name);
    return at == std::string::npos ? "" : text.substr(at, text.find('"', at + name.size() + 1) + 1 - at);
}

TEST_F(LibraryTest, ATextKeepsItsDefaultAndWhatDiffersFromIt) {
    loan.destroy();
    Reader const reader = factory.createReader();
    reader.setHouse(house);
    copy.setBook(orlando);
    EXPECT_EQ(reader.getLanguage(), "en");
    EXPECT_EQ(copy.getCondition(), "good");
    EXPECT_TRUE(reader.hasLanguage() && copy.hasCondition());
    model.commitTransaction();

    TemporaryFolder const folder;
    // The values, and what the file says of each.
    std::array<char const *, 4> const rows[] = {
        {"en", "good", "", ""},
        {"", "", " language=\"\"", " condition=\"\""},
        {"fi", "torn", " language=\"fi\"", " condition=\"torn\""},
        {"en", "torn", "", " condition=\"torn\""},
    };
    for (auto const & [language, condition, writtenLanguage, writtenCondition] : rows) {
        model.beginTransaction(language);
        reader.setLanguage(language);
        copy.setCondition(condition);
        model.commitTransaction();
        EXPECT_EQ(reader.getLanguage(), language);
        EXPECT_TRUE(reader.hasLanguage() && copy.hasCondition());

        ASSERT_TRUE(ZEL::Serializer::XmiWriter().write(folder.path("library.xmi"), model));
        std::string const file = folder.content("library.xmi");
        EXPECT_EQ(attributeIn(file, " language="), writtenLanguage);
        EXPECT_EQ(attributeIn(file, " condition="), writtenCondition);
        LibraryModel const again(ZEL::Serializer::XmiReader().read(folder.path("library.xmi")));
        EXPECT_TRUE(ZEL::compare(model.getHouses().at(0), again.getHouses().at(0))) << language;

        // Merged over a model with other values, the file has its way.
        again.beginTransaction();
        again.getHouses().at(0).getReaders().at(0).setLanguage("sv");
        again.getHouses().at(0).getBooks().at(0).getCopies().at(0).setCondition("lost");
        again.commitTransaction();
        ZEL::Serializer::XmiReader merging;
        auto const merger = std::make_shared<ZEL::Serializer::Merger>();
        merger->addReferredModel(again);
        merging.setMerger(merger);
        (void)merging.read(folder.path("library.xmi"));
        EXPECT_TRUE(ZEL::compare(model.getHouses().at(0), again.getHouses().at(0))) << language;
    }
    for (char const * const before : {"fi", "", "en"}) {
        model.undo();
        EXPECT_EQ(reader.getLanguage(), before);
    }
    EXPECT_EQ(copy.getCondition(), "good");

    model.beginTransaction();
    reader.removeLanguage();
    EXPECT_FALSE(reader.hasLanguage());
    EXPECT_EQ(reader.getLanguage(), "en") << "what is absent reads as the default";
    reader.setLanguage("en");
    EXPECT_TRUE(reader.hasLanguage());
}

} // namespace
} // namespace Library
