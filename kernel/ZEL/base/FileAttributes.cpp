#include <ZEL/base/Descriptor.h>
#include <ZEL/base/FileAttributes.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <new>
#include <optional>
#include <vector>

namespace ZEL {
namespace {

constexpr char kAccessList[] = "system.posix_acl_access";

/// The result of a call that returns the size if it is given no buffer. Nothing if it fails.
template <class Call> std::optional<std::vector<char>> bytesOf(Call call) {
    for (;;) {
        ssize_t const size = call(nullptr, 0);
        if (size < 0) {
            return std::nullopt;
        }
        std::vector<char> bytes(static_cast<std::size_t>(size));
        ssize_t const count = call(bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.resize(static_cast<std::size_t>(count));
            return bytes;
        }
        if (errno != ERANGE) { // which means that it has grown meanwhile
            return std::nullopt;
        }
    }
}

std::optional<std::vector<char>> extendedAttribute(int file, char const * name) {
    return bytesOf([=](char * bytes, std::size_t size) { return ::fgetxattr(file, name, bytes, size); });
}

bool copyExtendedAttributes(int from, int to) {
    auto const names = bytesOf([=](char * bytes, std::size_t size) { return ::flistxattr(from, bytes, size); });
    if (!names) {
        return errno == ENOTSUP;
    }
    bool hasAccessList = false;
    for (std::size_t place = 0; place < names->size(); place += std::strlen(names->data() + place) + 1) {
        char const * const name = names->data() + place;
        hasAccessList = hasAccessList || std::strcmp(name, kAccessList) == 0;
        auto const value = extendedAttribute(from, name);
        if (!value ||
            (value != extendedAttribute(to, name) && ::fsetxattr(to, name, value->data(), value->size(), 0) != 0)) {
            return false;
        }
    }
    // A new file may have one from its folder.
    return hasAccessList || ::fremovexattr(to, kAccessList) == 0 || errno == ENODATA || errno == ENOTSUP;
}

} // namespace

bool copyFileAttributes(int from, int to) noexcept {
    struct stat wanted {};
    struct stat present {};
    if (::fstat(from, &wanted) != 0 || ::fstat(to, &present) != 0) {
        return false;
    }
    if ((wanted.st_uid != present.st_uid || wanted.st_gid != present.st_gid) &&
        ::fchown(to, wanted.st_uid, wanted.st_gid) != 0) {
        return false;
    }
    try {
        // The access list comes first: if there is one, the mode's bits for the group cover more than the group.
        return copyExtendedAttributes(from, to) && ::fchmod(to, wanted.st_mode & 07777) == 0;
    } catch (std::bad_alloc const &) {
        errno = ENOMEM;
        return false;
    }
}

void makeFileLike(std::string const & name, std::string const & earlier) noexcept {
    Descriptor const from(::open(earlier.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (!from.isOpen() || ::fstat(from.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return;
    }
    Descriptor const to(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (to.isOpen() && !copyFileAttributes(from.get(), to.get())) {
        ::fchmod(to.get(), S_IRUSR | S_IWUSR);
    }
}

} // namespace ZEL
