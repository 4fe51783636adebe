#pragma once

#include <cstdint>
#include <string>

namespace ZEL::bench {

/// Parses a document in ISO-8859-1, by whatever name it calls that; looks at every name, value and text, and keeps
/// nothing. The result depends on all of them. Raises `std::runtime_error` for a document that is not well-formed.
std::uint64_t expatPass(std::string const & document);

} // namespace ZEL::bench
