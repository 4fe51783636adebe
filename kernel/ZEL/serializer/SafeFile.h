#pragma once

#include <string>

namespace ZEL::Serializer {

/// Puts a file that was written under another name in the place of an earlier one, so that the earlier one is whole
/// until the new one is.
///
/// An earlier plain file is replaced in one step, and gives the new one its access rights. What must not be replaced,
/// that is a symbolic link, a file of several names and anything that is no plain file, takes a copy; if the copy
/// fails, the written file is left as the only good one.
class SafeFile {
public:
    /// The file is written as `name` with "~" behind it.
    explicit SafeFile(std::string name);

    [[nodiscard]] std::string const & getName() const noexcept { return fName; }
    [[nodiscard]] std::string const & getTemporaryName() const noexcept { return fTemporaryName; }
    /// Whether the written file is there.
    [[nodiscard]] bool canBeRead() const;

    enum class Result {
        Done,
        NotOpened, ///< the written file or its goal; the goal is as it was
        Failed,    ///< the goal is as it was unless it took a copy
    };
    /// Puts the written file, which must be on the disk already, in its place.
    [[nodiscard]] Result put() const;

private:
    [[nodiscard]] Result replace(int temporary, int goal) const;
    [[nodiscard]] Result copy(int temporary) const;
    void syncFolder() const;

    std::string fName;
    std::string fTemporaryName;
};

} // namespace ZEL::Serializer
