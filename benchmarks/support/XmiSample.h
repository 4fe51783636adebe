#pragma once

#include <string>

namespace ZEL::bench {

/// The file of a `SampleModel` as the library writes it; removed by the destructor.
class XmiSample {
public:
    explicit XmiSample(int packages);
    ~XmiSample();
    XmiSample(XmiSample const &) = delete;
    XmiSample & operator=(XmiSample const &) = delete;

    /// The file made last is kept until another size is requested.
    static XmiSample const & shared(int packages);

    [[nodiscard]] int packages() const noexcept { return fPackages; }
    [[nodiscard]] std::string const & path() const noexcept { return fPath; }
    /// The bytes of the file.
    [[nodiscard]] std::string const & text() const noexcept { return fText; }

private:
    int fPackages;
    std::string fPath;
    std::string fText;
};

/// A name in the folder for temporary files that no other process uses.
[[nodiscard]] std::string temporaryPath(std::string const & name);
/// The content of the file. Throws `std::runtime_error` if it cannot be read.
[[nodiscard]] std::string fileText(std::string const & path);

} // namespace ZEL::bench
