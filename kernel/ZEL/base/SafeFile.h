#pragma once

#include <ZEL/Export.h>

#include <memory>
#include <string>

namespace ZEL {

/// A file that is written beside its place and put there when it is complete, so that its place holds either the
/// earlier or the new content, however the writing ends.
///
/// An earlier plain file is replaced in one step by one with the same owner, group, mode, access list and extended
/// attributes. The new file has them before it has content, or belongs to its writer alone until it is complete, so it
/// is never open to more readers. A file that must not be replaced is overwritten with a copy instead: a symbolic link,
/// a file with several names, anything that is not a plain file, and a file whose attributes the system does not let
/// the writer copy.
///
/// Of two writers of one file, in one process or in two, the second is refused until the first has finished.
class ZEL_API SafeFile {
public:
    /// The name of the file until it is put in its place.
    enum class Beside {
        Tilde,   ///< the name followed by "~"; what an earlier writer left there is removed
        FreeName ///< the first of these that is free: the name followed by "~", "~2", "~3"...
    };

    explicit SafeFile(std::string name, Beside beside = Beside::Tilde);
    /// A file that was neither put nor removed stays under its temporary name.
    ~SafeFile();
    SafeFile(SafeFile const &) = delete;
    SafeFile & operator=(SafeFile const &) = delete;

    /// Creates the empty temporary file, which the caller then writes by its name. Returns false, and sets the reason,
    /// if it cannot be created or another writer is using it. To be called once.
    [[nodiscard]] bool open();

    [[nodiscard]] std::string const & getName() const noexcept { return fName; }
    /// Known once the file is open.
    [[nodiscard]] std::string const & getTemporaryName() const noexcept { return fTemporaryName; }

    enum class Result {
        Done,
        NotOpened, ///< the temporary file was replaced, or its place cannot be written; its place is unchanged
        Failed,    ///< its place is unchanged
        Damaged    ///< a plain file in its place holds part of a copy; the temporary file is complete
    };
    /// Flushes the file to the disk and puts it in its place. The temporary file stays unless the result is `Done`.
    [[nodiscard]] Result put();
    /// Removes the temporary file, if it is still the one that was opened.
    void remove() noexcept;
    /// Why the last of these operations failed, in the system's words.
    [[nodiscard]] std::string const & getReason() const noexcept { return fReason; }

    /// Removes what an earlier writer left under the temporary name; does nothing while another writer is using it. For
    /// `Beside::Tilde`, instead of `open`.
    void removeLeftover() noexcept;
    /// Removes the temporary files that are open in this process. May be called by the handler of a signal that ends
    /// the process.
    static void removeAllOpen() noexcept;

private:
    struct File;

    [[nodiscard]] bool makeTemporary();
    [[nodiscard]] bool clearTheWay();
    [[nodiscard]] bool refuse(int error);
    Result fail(Result result, int error);
    [[nodiscard]] Result replace(int goal);
    [[nodiscard]] Result copy();

    std::string fName;
    std::string fTemporaryName;
    Beside fBeside;
    std::string fReason;
    std::unique_ptr<File> fFile; ///< null until it is open
};

} // namespace ZEL
