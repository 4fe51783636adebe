#pragma once

#include <ZEL/metamodel/Constants.h>

#include <string_view>

namespace ZEL::Serializer {

/// The namespaces of profiles in files of MagicDraw, and that of this system's own profile of units.
struct MagicDrawConstants {
    static constexpr char MD_NUMERIC_TYPES[] = "http://www.magicdraw.com/schemas/NumericTypes.xmi";
    static constexpr char MD_PROFILE[] = "http://www.magicdraw.com/schemas/MagicDraw_Profile.xmi";
    static constexpr char MD_STANDARD_PROFILE[] = "http://www.magicdraw.com/schemas/UML_Standard_Profile.xmi";
    static constexpr char ZEL_NUMERIC_TYPES[] = "http://www.quillon.example/schemas/NumericTypes.xmi";
};

static_assert(std::string_view(MagicDrawConstants::MD_NUMERIC_TYPES).starts_with(MAGICDRAW_SCHEMA_BASE));
static_assert(std::string_view(MagicDrawConstants::MD_PROFILE).starts_with(MAGICDRAW_SCHEMA_BASE));
static_assert(std::string_view(MagicDrawConstants::MD_STANDARD_PROFILE).starts_with(MAGICDRAW_SCHEMA_BASE));
static_assert(std::string_view(MagicDrawConstants::ZEL_NUMERIC_TYPES).starts_with(QUILLON_SCHEMA_BASE));

} // namespace ZEL::Serializer
