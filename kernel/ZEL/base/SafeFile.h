#pragma once

#include <ZEL/Export.h>

#include <memory>
#include <string>

namespace ZEL {

/// A file on its way: written beside its place and put there when it is whole, so that its place holds the earlier
/// content or the new one, however the writing ends.
///
/// An earlier plain file is replaced in one step by one of the same owner, group, mode, access list and extended
/// attributes; the new one has them before it has content, or is its writer's alone until it is whole, so that it is at
/// no time open to more readers. What must not be replaced takes a copy instead: a symbolic link, a file of several
/// names, anything that is no plain file, and a file whose attributes the system does not let the writer give to another
/// one.
///
/// Of two writers of one file, in one process or in two, the second one is refused until the first has ended.
class ZEL_API SafeFile {
public:
    /// What the file is called until it is put in its place.
    enum class Beside {
        Tilde,   ///< the name with "~" after it; what was left there by an earlier writer goes
        FreeName ///< the first of these that nobody has: the name with "~", "~2", "~3"... after it
    };

    explicit SafeFile(std::string name, Beside beside = Beside::Tilde);
    /// Leaves a file that was neither put nor removed under its temporary name.
    ~SafeFile();
    SafeFile(SafeFile const &) = delete;
    SafeFile & operator=(SafeFile const &) = delete;

    /// Makes the empty temporary file, which the caller then writes by its name. False, with the reason, if it cannot be
    /// made, or if another writer is at work on it. Once for each object.
    [[nodiscard]] bool open();

    [[nodiscard]] std::string const & getName() const noexcept { return fName; }
    /// Known once the file is open.
    [[nodiscard]] std::string const & getTemporaryName() const noexcept { return fTemporaryName; }

    enum class Result {
        Done,
        NotOpened, ///< the temporary file is not the opened one any more, or its place takes no file; that is as it was
        Failed,    ///< its place is as it was
        Damaged    ///< a plain file in its place was to take a copy and has part of it; the temporary file is whole
    };
    /// Brings the file onto the disk and puts it in its place. The temporary file stays unless the result is `Done`.
    [[nodiscard]] Result put();
    /// Removes the temporary file, if it is still the one that was opened.
    void remove() noexcept;
    /// Why the last of these operations failed, in the system's words.
    [[nodiscard]] std::string const & getReason() const noexcept { return fReason; }

    /// Removes what a writer that has ended left under the temporary name; does nothing while another one is at work on
    /// it. For `Beside::Tilde`, in place of `open`.
    void removeLeftover() noexcept;
    /// Removes the temporary files that are open in this process. May be called by the handler of a signal that then
    /// ends it.
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
