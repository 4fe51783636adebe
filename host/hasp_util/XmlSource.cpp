#include <hasp_util/XmlSource.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace HASP {

XmlSource::XmlSource(std::string fileName) : fFileName(std::move(fileName)) { open(); }

XmlSource::XmlSource(std::vector<std::string_view> texts) noexcept : fTexts(std::move(texts)) {}

XmlSource::~XmlSource() {
    if (fDescriptor >= 0) {
        ::close(fDescriptor);
    }
}

void XmlSource::open() {
    if (fFileName.find('\0') != std::string::npos) {
        fail("open", "the name holds a zero byte");
        return;
    }
    // Without O_NONBLOCK, opening a pipe that nobody writes to would not return.
    fDescriptor = ::open(fFileName.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    struct stat status {};
    if (fDescriptor < 0 || ::fstat(fDescriptor, &status) != 0) {
        fail("open", std::generic_category().message(errno).c_str());
    } else if (!S_ISREG(status.st_mode)) {
        fail("open", "not a plain file");
    }
}

std::size_t XmlSource::read(char * buffer, std::size_t size) {
    if (fDescriptor < 0) {
        return readTexts(buffer, size);
    }
    std::size_t total = 0;
    while (total < size && fError.empty()) {
        ssize_t const got = ::read(fDescriptor, buffer + total, size - total);
        if (got == 0) {
            break;
        }
        if (got > 0) {
            total += static_cast<std::size_t>(got);
        } else if (errno != EINTR) {
            fail("read", std::generic_category().message(errno).c_str());
        }
    }
    return total;
}

std::size_t XmlSource::readTexts(char * buffer, std::size_t size) noexcept {
    std::size_t total = 0;
    while (total < size && fText < fTexts.size()) {
        std::size_t const copied = fTexts[fText].copy(buffer + total, size - total, fPlace);
        total += copied;
        fPlace += copied;
        if (fPlace == fTexts[fText].size()) {
            ++fText;
            fPlace = 0;
        }
    }
    return total;
}

void XmlSource::fail(char const * what, char const * why) {
    fError = std::string("cannot ") + what + " '" + fFileName + "': " + why;
}

} // namespace HASP
