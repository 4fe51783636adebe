#pragma once

#include <cstddef>
#include <string>

namespace HASP {

/// The file that an `XmlReader` reads. Only a plain file is opened: never a folder, a device or a pipe, which could
/// keep the reader waiting for ever. Nothing is thrown for the file; failures are kept as a text.
class XmlSource {
public:
    explicit XmlSource(std::string fileName);
    ~XmlSource();
    XmlSource(XmlSource const &) = delete;
    XmlSource & operator=(XmlSource const &) = delete;

    [[nodiscard]] std::string const & fileName() const noexcept { return fFileName; }
    /// Returns the number of bytes read, which is less than `size` only at the end of the file and after a failure.
    [[nodiscard]] std::size_t read(char * buffer, std::size_t size);
    /// What failed, with the name of the file; empty if nothing has.
    [[nodiscard]] std::string const & error() const noexcept { return fError; }

private:
    void open();
    void fail(char const * what, char const * why);

    std::string fFileName;
    std::string fError;
    int fDescriptor = -1;
};

} // namespace HASP
