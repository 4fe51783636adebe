#pragma once

#include <string>

namespace ZEL::Interchange {

/// A folder for this user alone, among those of the system for temporary files. It goes with all that is in it.
class TemporaryFolder {
public:
    /// Throws a text with the reason if it cannot be made.
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(TemporaryFolder const &) = delete;
    TemporaryFolder & operator=(TemporaryFolder const &) = delete;

    [[nodiscard]] std::string const & path() const noexcept { return fPath; }

private:
    std::string fPath;
};

} // namespace ZEL::Interchange
