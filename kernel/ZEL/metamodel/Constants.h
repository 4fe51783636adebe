#pragma once

#include <string_view>

namespace ZEL {

/// Where the names of metamodels, formats and tools begin; a path follows.
inline constexpr char OMG_SCHEMA_BASE[] = "http://schema.omg.org";
inline constexpr char QUILLON_SCHEMA_BASE[] = "http://www.quillon.example";
inline constexpr char MAGICDRAW_SCHEMA_BASE[] = "http://www.magicdraw.com";
inline constexpr char RHP_SCHEMA_BASE[] = "http:";
inline constexpr char EMF_SCHEMA_BASE[] = "http://www.eclipse.org";

/// The names of the built-in metamodel. The first is the URI of its model and of the package in it.
inline constexpr char METAMODEL_URI[] = "http://schema.omg.org/spec/MOF/2.0";
inline constexpr char METAMODEL_CMOF_URI[] = "http://schema.omg.org/spec/MOF/2.0/cmof.xml";
inline constexpr char METAMODEL_EMOF_URI[] = "http://schema.omg.org/spec/MOF/2.0/emof.xml";

static_assert(std::string_view(METAMODEL_URI).starts_with(OMG_SCHEMA_BASE));
static_assert(std::string_view(METAMODEL_CMOF_URI).starts_with(METAMODEL_URI));
static_assert(std::string_view(METAMODEL_EMOF_URI).starts_with(METAMODEL_URI));

} // namespace ZEL
