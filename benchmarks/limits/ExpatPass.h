#pragma once

#include <cstdint>
#include <string>

namespace ZEL::bench {

/// Parses a document in ISO-8859-1, whatever it calls its encoding; looks at every name, value and text, on which the
/// result depends, and keeps nothing. Throws `std::runtime_error` for a document that is not well-formed.
std::uint64_t expatPass(std::string const & document);

} // namespace ZEL::bench
