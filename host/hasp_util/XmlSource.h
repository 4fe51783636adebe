#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace HASP {

/// What an `XmlReader` reads: a file, or texts in memory. Only a plain file is opened: never a folder, a device or a
/// pipe, which could keep the reader waiting for ever. Nothing is thrown for the file; failures are kept as a text.
class XmlSource {
public:
    explicit XmlSource(std::string fileName);
    /// One after the other; they must outlive this object.
    explicit XmlSource(std::vector<std::string_view> texts) noexcept;
    ~XmlSource();
    XmlSource(XmlSource const &) = delete;
    XmlSource & operator=(XmlSource const &) = delete;

    [[nodiscard]] std::string const & fileName() const noexcept { return fFileName; }
    /// Returns the number of bytes read, which is less than `size` only at the end and after a failure.
    [[nodiscard]] std::size_t read(char * buffer, std::size_t size);
    /// What failed, with the name of the file; empty if nothing has.
    [[nodiscard]] std::string const & error() const noexcept { return fError; }

private:
    void open();
    [[nodiscard]] std::size_t readTexts(char * buffer, std::size_t size) noexcept;
    void fail(char const * what, char const * why);

    std::string fFileName;
    std::string fError;
    int fDescriptor = -1; ///< stays so where texts are read
    std::vector<std::string_view> fTexts;
    std::size_t fText = 0;  ///< the one at hand
    std::size_t fPlace = 0; ///< in it
};

} // namespace HASP
