#include <ZEL/base/Exception.h>
#include <ZEL/deviants/Transaction.h>

namespace ZEL {

Transaction::Transaction(Deviant deviant, std::string const & name) : fDeviant(deviant) {
    fDeviant.beginTransaction(name);
    fNumber = fDeviant.getIdentity()->openTransaction;
}

Transaction::~Transaction() {
    if (fIsCommitted || !isOpen()) {
        return;
    }
    try {
        if (fDeviant.hasUndoStack()) {
            fDeviant.cancelTransaction();
        } else {
            fDeviant.commitTransaction();
        }
    } catch (...) {
        // A destructor cannot tell of it. The transaction is open as before, for the caller to see.
    }
}

bool Transaction::commit() {
    if (fIsCommitted || !isOpen()) {
        raiseInternalError("transaction not started");
    }
    fDeviant.commitTransaction();
    fIsCommitted = true;
    return fDeviant.getRefusingListener() == nullptr;
}

bool Transaction::isOpen() const noexcept { return fDeviant.getIdentity()->openTransaction == fNumber; }

} // namespace ZEL
