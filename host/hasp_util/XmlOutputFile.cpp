#include <hasp_util/XmlOutputFile.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace HASP {

namespace {

int openForWriting(std::string const & fileName) {
    if (fileName.find('\0') != std::string::npos) {
        errno = EINVAL;
        return -1;
    }
    // Without O_NONBLOCK, opening a pipe that nobody reads would not return.
    return ::open(fileName.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY,
                  0666);
}

} // namespace

XmlOutputFile::XmlOutputFile(std::string const & fileName)
    : fBuffer(new char[flushSize * 5 / 4 + XmlBytes::size]),
      fEnd(fBuffer.get()),
      fLimit(fEnd + flushSize * 5 / 4),
      fDescriptor(openForWriting(fileName)) {
    if (fDescriptor < 0) {
        fError = errno;
    }
}

XmlOutputFile::~XmlOutputFile() { close(); }

void XmlOutputFile::grow(std::size_t size) {
    std::size_t const used = position();
    std::size_t const capacity = std::max(2 * static_cast<std::size_t>(fLimit - fBuffer.get()), used + size);
    std::unique_ptr<char[]> bigger(new char[capacity + XmlBytes::size]);
    std::memcpy(bigger.get(), fBuffer.get(), used);
    fBuffer = std::move(bigger);
    fEnd = fBuffer.get() + used;
    fLimit = fBuffer.get() + capacity;
}

void XmlOutputFile::flush() noexcept {
    char const * at = fBuffer.get();
    while (at < fEnd && fError == 0) {
        ssize_t const written = ::write(fDescriptor, at, static_cast<std::size_t>(fEnd - at));
        if (written >= 0) {
            at += written;
        } else if (errno != EINTR) {
            fError = errno;
        }
    }
    fEnd = fBuffer.get();
}

void XmlOutputFile::close() noexcept {
    if (fDescriptor < 0) {
        return;
    }
    flush();
    if (::close(fDescriptor) != 0 && fError == 0 && errno != EINTR) {
        fError = errno;
    }
    fDescriptor = -1;
}

} // namespace HASP
