#pragma once

#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/metamodel/Model.h>

#include <string>
#include <vector>

/// What the steps of the tour find out about a model, by reflection.
namespace tour {

/// The classes of the model that have attributes.
[[nodiscard]] std::vector<ZEL::Class> classesOf(ZEL::MetaModel const & model);

/// A line for each object: its identity, its class, its container and all its values. Two models are the same,
/// including ids, if these are.
[[nodiscard]] std::vector<std::string> snapshotOf(ZEL::ImmutableModel const & model);

/// "12 Class, 80 Property, ...", the most frequent classes first.
[[nodiscard]] std::string censusOf(ZEL::ImmutableModel const & model);

} // namespace tour
