#pragma once

#include <ZEL/Export.h>
#include <ZEL/compare/Conflict.h>
#include <ZEL/compare/Difference.h>

#include <string>

namespace ZEL::Compare {

/// The difference for a reader, in one line without an end: "Class 'library.Book': attribute 'title' renamed to
/// 'heading'". Long texts are cut. To be called before the difference is applied: it throws if an object has ended.
/// Linear in the depth of the object; for a part without a name also in the number of parts beside it.
[[nodiscard]] ZEL_API std::string sentenceOf(Difference const & difference);

/// The conflict for a reader: what ours does, and what theirs does instead.
[[nodiscard]] ZEL_API std::string sentenceOf(Conflict const & conflict);

} // namespace ZEL::Compare
