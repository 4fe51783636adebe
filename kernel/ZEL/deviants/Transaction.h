#pragma once

#include <ZEL/Export.h>
#include <ZEL/deviants/Deviant.h>

#include <cstdint>
#include <string>

namespace ZEL {

/// A transaction for the length of a block: begun by the constructor, cancelled by the destructor unless committed.
///
/// Blocks may nest; then only the outermost commit acts. But one cancel ends the transaction at all levels: when an
/// inner block is left without a commit, its changes and those of the blocks around it are undone, and their `commit`
/// throws "transaction not started". The same holds after a commit that a validator has refused.
///
///     Transaction transaction(model.getDeviant(), "rename");
///     comment.setBody("text");
///     if (!transaction.commit()) { ... }
class ZEL_API Transaction {
public:
    explicit Transaction(Deviant deviant, std::string const & name = std::string());
    /// Cancels, unless committed or ended by other means. A deviant without undo stack cannot cancel; there it ends
    /// this level with what has been written.
    ~Transaction();
    Transaction(Transaction const &) = delete;
    Transaction & operator=(Transaction const &) = delete;

    /// False if a validator has refused, or another listener has cancelled, so that nothing is kept:
    /// `Deviant::getRefusingListener` says who. An inner block always gets true, since only the outermost end commits.
    /// What a listener throws passes through; if the transaction is still open then, the destructor cancels it.
    bool commit();

private:
    /// Whether the transaction that was begun or joined is still the running one.
    [[nodiscard]] bool isOpen() const noexcept;

    Deviant fDeviant;
    std::uint64_t fNumber;
    bool fIsCommitted = false;
};

} // namespace ZEL
