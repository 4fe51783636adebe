#pragma once

#include "Json.h"
#include "Models.h"

#include <ZEL/compare/Differences.h>

/// Differences of the models of files.
namespace cli {

/// What corresponds beside the models themselves: the files that both refer to.
[[nodiscard]] ZEL::Compare::MatchSettings matchSettingsOf(OpenModel const & first, OpenModel const & second);
[[nodiscard]] ZEL::Compare::Differences differencesOf(OpenModel const & first, OpenModel const & second);

/// `kind`, `object` and where they are not the same `objectAfter`, `property`, `before` and `after`, and the line that
/// people read as `text`.
[[nodiscard]] Json jsonOf(ZEL::Compare::Difference const & difference);

} // namespace cli
