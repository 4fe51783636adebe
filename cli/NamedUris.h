#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace cli {

/// Whether all absolute URIs in the file, be they names of namespaces or targets of links, are known, and all relative
/// links lead to files of which the same is true.
///
/// False wherever it takes a parser of XML to tell, or where a file cannot be read; also false for any relative link
/// unless `mayFollowLinks`. Takes one pass over the bytes of each file.
[[nodiscard]] bool namesOnlyKnownUris(std::string const & file, bool mayFollowLinks,
                                      std::function<bool(std::string_view uri)> const & isKnown);

} // namespace cli
