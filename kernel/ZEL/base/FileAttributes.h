#pragma once

#include <string>

/// Who owns a file and who may do what with it.
namespace ZEL {

/// Gives the open file `to` the owner, group, mode, access list and extended attributes of the open file `from`. False,
/// with the reason in `errno`, if the system does not allow one of them. On the way `to` is open to nobody for whom
/// neither file was.
[[nodiscard]] bool copyFileAttributes(int from, int to) noexcept;

/// Makes the empty file `name`, which must not be there, with the attributes of the plain file `earlier`; for its owner
/// alone where they cannot be kept. Does nothing if it cannot be made.
void makeFileLike(std::string const & name, std::string const & earlier) noexcept;

} // namespace ZEL
