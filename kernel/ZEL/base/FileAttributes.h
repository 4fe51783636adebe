#pragma once

#include <string>

/// Who owns a file and who may do what with it.
namespace ZEL {

/// Copies owner, group, mode, access list and extended attributes from the open file `from` to the open file `to`.
/// Returns false, with the reason in `errno`, if the system does not allow one of them. Meanwhile `to` is open to
/// nobody who could open neither file.
[[nodiscard]] bool copyFileAttributes(int from, int to) noexcept;

/// Creates the empty file `name`, which must not exist, with the attributes of the plain file `earlier`, or for its
/// owner only if they cannot be copied. Does nothing if the file cannot be created.
void makeFileLike(std::string const & name, std::string const & earlier) noexcept;

} // namespace ZEL
