// Walks over models of a metamodel of one's own, with stereotype instances.

#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/Transaction.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/tools/ImmutableAccessVisitorTextWriter.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <library/Book.h>
#include <library/Copy.h>
#include <library/House.h>
#include <library/LibraryFactory.h>
#include <library/LibraryModel.h>
#include <library/MetaModelRegistration.h>
#include <library/Rare.h>
#include <library/VisitorEmpty.h>

#include <sstream>
#include <string>
#include <vector>

namespace Library {
namespace {

/// A book with a copy, a sequel, and what makes it rare.
class Walk : public testing::Test {
protected:
    Walk() {
        book.setName("Orlando");
        house.setName("Harbour Street");
        house.getBooks().push_back(book);
        Book const sequel = factory.createBook();
        sequel.setName("Flush");
        book.setSequel(sequel);
        copy.setBook(book);
        makeRare("signed");
    }
    void makeRare(char const * reason) const {
        Rare const rare = factory.createRare();
        rare.setReason(reason);
        rare.setBase_Book(book);
    }

    struct Registration {
        Registration() { registerMetaModel(); }
    } registration;
    LibraryModel model = LibraryFactory::createNewModel();
    ZEL::Transaction transaction{model.getRootDeviant()};
    LibraryFactory factory{model.getFactory()};
    House house = factory.createHouse();
    Book book = factory.createBook();
    Copy copy = factory.createCopy();
};

std::string idOf(ZEL::ImmutableClassObject const & object) {
    return "id=\"" + object.getId().toString().str() + " {readonly}\"";
}

TEST_F(Walk, AStereotypeInstanceIsWrittenOnce) {
    makeRare("stained");
    std::ostringstream text;
    EXPECT_TRUE(ZEL::ImmutableAccessVisitorTextWriter(text).visitObject(book));
    EXPECT_EQ(text.str(), "\n  [ Book name=\"Orlando\" " + idOf(book) +
                              "\n    [ copy number=\"1\" isLendable=\"true\" " + idOf(copy) +
                              " book=\"Orlando:Book\" modelZEL=\":LibraryModel\""
                              "\n    ]"
                              "\n    [ appliedStereotypeInstance"
                              "\n    ]"
                              "\n    [ appliedStereotypeInstance"
                              "\n    ] house=\"Harbour Street:House\" sequel=\"Flush:Book\" modelZEL=\":LibraryModel\""
                              "\n  ]");
}

/// Writes down when it meets a stereotype instance, and through which property.
struct InstanceRecorder : ZEL::ImmutableAccessVisitorEmpty {
    InstanceRecorder(std::string name, std::vector<std::string> & sharedLog)
        : prefix(std::move(name)), log(sharedLog) {}
    bool visitObject(ZEL::ImmutableObject const & object) override {
        return ZEL::ImmutableAccessVisitor::visitObject(object);
    }
    bool visitStereotypeObject(ZEL::ImmutableStereotypeObject const & instance) override {
        ZEL::ImmutableProperty const property = traversal->getCurrentMetaProperty();
        log.push_back(prefix + ' ' + instance.getMetaClass().getName().str() + " by " +
                      (property.isValid() ? property.getName().str() : "itself"));
        return true;
    }
    std::string prefix;
    std::vector<std::string> & log;
    ZEL::ImmutableAccessVisitorTraversal * traversal = nullptr;
};

TEST_F(Walk, AStereotypeInstanceIsVisitedAsAValueAndBehindAllProperties) {
    std::vector<std::string> log;
    InstanceRecorder pre("pre", log);
    InstanceRecorder post("post", log);
    ZEL::ImmutableAccessVisitorTraversalContainment walk(&pre, &post);
    pre.traversal = post.traversal = &walk;
    EXPECT_TRUE(walk.visitObject(book));
    EXPECT_THAT(log,
                testing::ElementsAre("pre Rare by appliedStereotypeInstance", "pre Rare by appliedStereotypeInstance",
                                     "post Rare by appliedStereotypeInstance", "post Rare by appliedStereotypeInstance",
                                     "pre Rare by itself", "post Rare by itself"));
}

struct BookVisitor : VisitorEmpty {
    using VisitorEmpty::visitBook;
    bool visitBook(ImmutableBook object) override { return object.getName() == "Orlando"; }
};

TEST_F(Walk, AMetamodelHasAVisitorOfItsOwnClasses) {
    BookVisitor visitor;
    Visitor & any = visitor;
    EXPECT_TRUE(any.visitBook(book) && any.visitBook(ImmutableBook(book)) && any.visitRare(Rare()));
    EXPECT_FALSE(any.visitBook(ImmutableBook(book.getSequel())));
}

} // namespace
} // namespace Library
