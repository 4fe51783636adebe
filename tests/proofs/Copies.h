#pragma once

#include "Subjects.h"

#include <ZEL/compare/Differences.h>

#include <string>

namespace ZEL::tests::proofs {

/// The model as a file holds it: without links to what has ended or stands in no container, and without a history.
Model copyOf(Model const & model);

/// The place of its file, and stereotypes whose elements have gone, are no part of what differences tell.
void tidy(Model const & model);

/// The same, changed at random.
Model changedCopyOf(Subject const & subject, Model const & model, unsigned int seed, int changeCount);

/// A line for each.
std::string told(Compare::Differences const & differences);

} // namespace ZEL::tests::proofs
