#include <ZEL/serializer/SafeFile.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <utility>

namespace ZEL::Serializer {
namespace {

/// Closes what it holds.
class Descriptor {
public:
    explicit Descriptor(int number) noexcept : fNumber(number) {}
    ~Descriptor() { close(); }
    Descriptor(Descriptor const &) = delete;
    Descriptor & operator=(Descriptor const &) = delete;

    [[nodiscard]] bool isOpen() const noexcept { return fNumber >= 0; }
    [[nodiscard]] int get() const noexcept { return fNumber; }
    /// False if the system could not take what was written.
    bool close() noexcept { return !isOpen() || ::close(std::exchange(fNumber, -1)) == 0; }

private:
    int fNumber;
};

bool writeAll(int goal, char const * bytes, std::size_t count) noexcept {
    while (count != 0) {
        ssize_t const written = ::write(goal, bytes, count);
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            return false;
        }
        bytes += written;
        count -= static_cast<std::size_t>(written);
    }
    return true;
}

bool copyAll(int source, int goal) noexcept {
    std::array<char, 65536> buffer;
    for (;;) {
        ssize_t const count = ::read(source, buffer.data(), buffer.size());
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
    }
}

/// The disk may hold what it is given; pipes and devices have nothing to sync.
bool sync(int file) noexcept { return ::fsync(file) == 0 || errno == EINVAL || errno == EROFS || errno == ENOTSUP; }

} // namespace

SafeFile::SafeFile(std::string name) : fName(std::move(name)), fTemporaryName(fName + "~") {}

bool SafeFile::canBeRead() const {
    return Descriptor(::open(fTemporaryName.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW)).isOpen();
}

SafeFile::Result SafeFile::put() const {
    Descriptor const temporary(::open(fTemporaryName.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    if (!temporary.isOpen()) {
        return Result::NotOpened;
    }
    struct stat goalStatus {};
    if (::lstat(fName.c_str(), &goalStatus) != 0) {
        return errno == ENOENT ? replace(temporary.get(), -1) : Result::NotOpened;
    }
    if (!S_ISREG(goalStatus.st_mode) || goalStatus.st_nlink != 1) {
        return copy(temporary.get());
    }
    // Not to write to it, but because a file that may not be written must not be replaced either.
    Descriptor const goal(::open(fName.c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW));
    return goal.isOpen() ? replace(temporary.get(), goal.get()) : Result::NotOpened;
}

SafeFile::Result SafeFile::replace(int temporary, int goal) const {
    struct stat goalStatus {};
    if (goal >= 0 && (::fstat(goal, &goalStatus) != 0 || ::fchmod(temporary, goalStatus.st_mode & 07777) != 0)) {
        return Result::Failed;
    }
    if (::rename(fTemporaryName.c_str(), fName.c_str()) != 0) {
        return Result::Failed;
    }
    syncFolder();
    return Result::Done;
}

SafeFile::Result SafeFile::copy(int temporary) const {
    // Not to hang on a pipe that nobody reads.
    Descriptor goal(::open(fName.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666));
    if (!goal.isOpen()) {
        return Result::NotOpened;
    }
    struct stat status {};
    if (::fstat(goal.get(), &status) != 0 || ::fcntl(goal.get(), F_SETFL, 0) != 0) {
        return Result::Failed;
    }
    if (S_ISREG(status.st_mode) && ::ftruncate(goal.get(), 0) != 0) {
        return Result::Failed;
    }
    if (!copyAll(temporary, goal.get()) || !sync(goal.get()) || !goal.close()) {
        return Result::Failed;
    }
    ::unlink(fTemporaryName.c_str());
    return Result::Done;
}

/// The new name is only certain once the folder is on the disk. A folder that cannot be synced is no failure: the file
/// is whole under its name.
void SafeFile::syncFolder() const {
    std::size_t const slash = fName.rfind('/');
    std::string const folder = slash == std::string::npos ? "." : slash == 0 ? "/" : fName.substr(0, slash);
    Descriptor const handle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.isOpen()) {
        ::fsync(handle.get());
    }
}

} // namespace ZEL::Serializer
