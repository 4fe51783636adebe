// A metamodel of one's own at work: `example-library FILE`. The classes in the namespace Library are generated from
// library.metamodel.yaml, beside this file.

#include <ZEL/deviants/Transaction.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/serializer/reader/XmiReader.h>
#include <ZEL/serializer/writer/XmiWriter.h>
#include <ZEL/tools/Comparator.h>

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

#include <exception>
#include <iostream>
#include <string>

namespace {

Library::Loan fill(Library::LibraryModel const & model) {
    Library::LibraryFactory const factory(model.getFactory());
    ZEL::Transaction transaction(model.getRootDeviant(), "open the house");

    Library::House const house = factory.createHouse();
    house.setName("Harbour Street");
    model.getHouses().push_back(house);

    Library::Book const book = factory.createBook();
    book.setName("The Voyage Out");
    house.getBooks().push_back(book); // book.getHouse() is the house from now on
    Library::Copy const copy = factory.createCopy();
    copy.setBook(book); // the same from the other end: the copy is in book.getCopies()

    Library::Reader const reader = factory.createReader();
    reader.setName("Clarissa");
    reader.setHouse(house);
    Library::Loan const loan = factory.createLoan();
    loan.setReader(reader);
    loan.setCopy(copy);

    // A stereotype is attached from outside; the class of books does not change for it.
    Library::Rare const rare = factory.createRare();
    rare.setReason("first edition");
    rare.setBase_Book(book);

    transaction.commit();
    return loan;
}

void show(std::string const & title, Library::ImmutableLoan const & loan) {
    std::cout << title << ": " << loan.getReader().getName().str() << " and '"
              << loan.getCopy().getBook().getName().str() << "', " << loan.getState().toString().str() << '\n';
}

bool run(std::string const & file) {
    Library::registerMetaModel();
    Library::LibraryModel model = Library::LibraryFactory::createNewModel();
    Library::Loan const loan = fill(model);
    show("asked for", loan);

    // What if? A deviant holds an answer beside the model, until it is taken over or dropped.
    Library::LibraryModel const late = model.createDeviantWithName("late");
    late.beginTransaction("the day after");
    loan.asDeviant(late).setState(Library::LoanState::Overdue);
    late.commitTransaction();
    show("in the model", loan);
    show("in the deviant", loan.asDeviant(late));
    model.removeDeviantWithName("late");

    std::cout << "rare for:";
    for (Library::ImmutableRare const & rare : loan.getCopy().getBook().getRarities()) {
        std::cout << ' ' << rare.getReason().str();
    }
    std::cout << "\na loan has:";
    for (ZEL::ImmutableProperty const & property : loan.getMetaClass().getOwnedAttributes()) {
        std::cout << ' ' << property.getName().str();
    }
    std::cout << '\n';

    bool const isWritten = ZEL::Serializer::XmiWriter().write(file, model);
    ZEL::Object const again = ZEL::Serializer::XmiReader().read(file);
    bool const isEqual = isWritten && ZEL::compare(model, again);
    std::cout << (isEqual ? "saved, read again and equal\n" : "what was read differs from what was saved\n");
    return isEqual;
}

} // namespace

int main(int argc, char ** argv) {
    if (argc != 2) {
        std::cerr << "usage: example-library FILE\n";
        return 2;
    }
    ZEL::Logger::instance()->setDefaultHandlerLevel(ZEL::LogLevel::warning);
    try {
        return run(argv[1]) ? 0 : 1;
    } catch (std::exception const & exception) {
        std::cerr << exception.what() << '\n';
        return 1;
    }
}
