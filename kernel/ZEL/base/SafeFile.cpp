#include <ZEL/base/Descriptor.h>
#include <ZEL/base/FileAttributes.h>
#include <ZEL/base/SafeFile.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <system_error>
#include <utility>

namespace ZEL {
namespace {

/// The error of a file that another writer is using. No system call below reports it.
constexpr int kBusy = EWOULDBLOCK;

constexpr mode_t kForItsOwner = S_IRUSR | S_IWUSR;

bool writeAll(int goal, char const * bytes, std::size_t count) noexcept {
    while (count != 0) {
        ssize_t const written = ::write(goal, bytes, count);
        if (written >= 0) {
            bytes += written;
            count -= static_cast<std::size_t>(written);
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool copyAll(int source, int goal) noexcept {
    std::array<char, 65536> buffer;
    for (off_t place = 0;;) {
        ssize_t const count = ::pread(source, buffer.data(), buffer.size(), place);
        if (count == 0) {
            return true;
        }
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            return false;
        }
        if (!writeAll(goal, buffer.data(), static_cast<std::size_t>(count))) {
            return false;
        }
        place += count;
    }
}

/// Pipes and devices have nothing to sync.
bool sync(int file) noexcept { return ::fsync(file) == 0 || errno == EINVAL || errno == EROFS || errno == ENOTSUP; }

/// The new name is safe only once the folder is on the disk. A folder that cannot be synced is not a failure: the file
/// is complete under its name.
void syncFolderOf(std::string const & name) {
    std::size_t const slash = name.rfind('/');
    std::string const folder = slash == std::string::npos ? "." : slash == 0 ? "/" : name.substr(0, slash);
    Descriptor const handle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.isOpen()) {
        ::fsync(handle.get());
    }
}

/// False if another writer holds the file. Where the system has no locks, only the name is checked.
bool lock(int file) noexcept { return ::flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK; }

bool isNameOf(int file, std::string const & name) noexcept {
    struct stat present {};
    struct stat named {};
    return ::fstat(file, &present) == 0 && ::lstat(name.c_str(), &named) == 0 && present.st_dev == named.st_dev &&
           present.st_ino == named.st_ino;
}

bool isReplaceable(struct stat const & status) noexcept { return S_ISREG(status.st_mode) && status.st_nlink == 1; }

} // namespace

/// Entered in a table while it is open, where the handler of a signal finds it.
struct SafeFile::File {
    File(Descriptor open, std::string const & itsName) : descriptor(std::move(open)), name(itsName) {
        for (std::atomic<File *> & place : table()) {
            File * none = nullptr;
            if (place.compare_exchange_strong(none, this)) {
                return;
            }
        }
    }
    ~File() {
        for (std::atomic<File *> & place : table()) {
            File * self = this;
            place.compare_exchange_strong(self, nullptr);
        }
    }
    File(File const &) = delete;
    File & operator=(File const &) = delete;

    void remove() const noexcept {
        if (isNameOf(descriptor.get(), name)) {
            ::unlink(name.c_str());
        }
    }

    /// As many as are ever written at a time; a file without a place is not seen by the handler.
    static std::array<std::atomic<File *>, 64> & table() noexcept {
        static constinit std::array<std::atomic<File *>, 64> files{};
        return files;
    }

    Descriptor const descriptor;
    std::string const name;
};

SafeFile::SafeFile(std::string name, Beside beside)
    : fName(std::move(name)), fTemporaryName(fName + '~'), fBeside(beside) {}

SafeFile::~SafeFile() = default;

bool SafeFile::refuse(int error) {
    fReason = error == kBusy ? "another program is writing it" : std::generic_category().message(error);
    return false;
}

SafeFile::Result SafeFile::fail(Result result, int error) {
    static_cast<void>(refuse(error));
    return result;
}

bool SafeFile::open() {
    if (fName.find('\0') != std::string::npos) {
        return refuse(EINVAL);
    }
    constexpr int kMostNames = 1000;
    for (int number = 1; number <= kMostNames; ++number) {
        if (makeTemporary()) {
            return true;
        }
        if (errno != EEXIST) {
            return refuse(errno);
        }
        if (fBeside == Beside::FreeName) {
            fTemporaryName = fName + '~' + std::to_string(number + 1);
        } else if (!clearTheWay()) {
            return refuse(errno);
        }
    }
    return refuse(fBeside == Beside::Tilde ? kBusy : EEXIST);
}

/// Returns false, with the reason in `errno`, which is EEXIST if the name is taken.
bool SafeFile::makeTemporary() {
    struct stat status {};
    bool const isNew = ::lstat(fName.c_str(), &status) != 0;
    mode_t const mode = isNew ? 0666 : kForItsOwner;
    Descriptor file(::open(fTemporaryName.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (!file.isOpen()) {
        return false;
    }
    // Between the two calls, another writer may have taken the file for a leftover.
    if (!lock(file.get())) {
        errno = kBusy;
        return false;
    }
    if (!isNameOf(file.get(), fTemporaryName)) {
        errno = EEXIST;
        return false;
    }
    // For another user's file the owner changes only at the end: in a shared folder nobody may open the files of
    // others.
    if (!isNew && isReplaceable(status) && status.st_uid == ::geteuid()) {
        Descriptor const goal(::open(fName.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        bool const isLikeGoal = goal.isOpen() && copyFileAttributes(goal.get(), file.get());
        // Until it is put in its place the file must be writable, even if the earlier one is not.
        ::fchmod(file.get(), (isLikeGoal ? status.st_mode & 07777 : 0) | kForItsOwner);
    }
    fFile = std::make_unique<File>(std::move(file), fTemporaryName);
    return true;
}

/// Removes what an earlier writer left under the temporary name. Returns false, with the reason in `errno`, if it is
/// not a leftover.
bool SafeFile::clearTheWay() {
    Descriptor const file(::open(fTemporaryName.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (!file.isOpen()) {
        return errno == ENOENT;
    }
    if (::fstat(file.get(), &status) != 0) {
        return false;
    }
    if (!S_ISREG(status.st_mode)) {
        errno = S_ISDIR(status.st_mode) ? EISDIR : EEXIST;
        return false;
    }
    if (!lock(file.get())) {
        errno = kBusy;
        return false;
    }
    return !isNameOf(file.get(), fTemporaryName) || ::unlink(fTemporaryName.c_str()) == 0 || errno == ENOENT;
}

SafeFile::Result SafeFile::put() {
    if (!fFile || !isNameOf(fFile->descriptor.get(), fTemporaryName)) {
        return fail(Result::NotOpened, fFile ? kBusy : ENOENT);
    }
    if (!sync(fFile->descriptor.get())) {
        return fail(Result::Failed, errno);
    }
    struct stat status {};
    if (::lstat(fName.c_str(), &status) != 0) {
        return errno == ENOENT ? replace(-1) : fail(Result::NotOpened, errno);
    }
    if (!isReplaceable(status)) {
        return copy();
    }
    // Nothing is written to it, but a file that may not be written must not be replaced either.
    Descriptor const goal(::open(fName.c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW));
    return goal.isOpen() ? replace(goal.get()) : fail(Result::NotOpened, errno);
}

SafeFile::Result SafeFile::replace(int goal) {
    if (goal >= 0 && !copyFileAttributes(goal, fFile->descriptor.get())) {
        ::fchmod(fFile->descriptor.get(), kForItsOwner);
        return copy();
    }
    if (::rename(fTemporaryName.c_str(), fName.c_str()) != 0) {
        return fail(Result::Failed, errno);
    }
    fFile.reset();
    syncFolderOf(fName);
    return Result::Done;
}

SafeFile::Result SafeFile::copy() {
    // Without O_NONBLOCK, opening a pipe that nobody reads would not return.
    Descriptor goal(::open(fName.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666));
    struct stat status {};
    if (!goal.isOpen() || ::fstat(goal.get(), &status) != 0) {
        return fail(Result::NotOpened, errno);
    }
    bool const isPlain = S_ISREG(status.st_mode);
    if (isPlain && !lock(goal.get())) { // by another of its names
        return fail(Result::NotOpened, kBusy);
    }
    if (::fcntl(goal.get(), F_SETFL, 0) != 0) {
        return fail(Result::Failed, errno);
    }
    if (isPlain && ::ftruncate(goal.get(), 0) != 0) {
        return fail(Result::Failed, errno);
    }
    if (!copyAll(fFile->descriptor.get(), goal.get()) || !sync(goal.get()) || !goal.close()) {
        return fail(isPlain ? Result::Damaged : Result::Failed, errno);
    }
    remove();
    return Result::Done;
}

void SafeFile::remove() noexcept {
    if (fFile) {
        fFile->remove();
        fFile.reset();
    }
}

void SafeFile::removeLeftover() noexcept {
    // One that cannot be removed stays: nobody asked for it.
    static_cast<void>(clearTheWay());
}

void SafeFile::removeAllOpen() noexcept {
    for (std::atomic<File *> const & place : File::table()) {
        if (File const * const file = place.load()) {
            file->remove();
        }
    }
}

} // namespace ZEL
