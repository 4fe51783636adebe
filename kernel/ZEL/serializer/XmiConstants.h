#pragma once

#include <ZEL/metamodel/Constants.h>
#include <ZEL/serializer/ObjectId.h>

#include <string_view>

namespace ZEL::Serializer {

/// Names and texts of the file format.
struct XmiConstants {
    static constexpr char XMI_NS_PREFIX[] = "xmi";
    static constexpr char XMI_NS_URI[] = "http://schema.omg.org/spec/XMI/2.1";
    static constexpr char XMI_VERSION[] = "2.1";
    static constexpr char ZEL_EXTENDER[] = "The Quillon Inc.";
    static constexpr char ZEL_EXPORTER[] = "The Quillon Inc.";
    static constexpr char ZEL_EXPORTER_VERSION[] = "1.0";
    static constexpr auto & ZEL_ID_PREFIX = ID_PREFIX;
    static constexpr char UML_2_0_NS_URI[] = "http://schema.omg.org/spec/UML/2.0";
};

static_assert(std::string_view(XmiConstants::XMI_NS_URI).starts_with(OMG_SCHEMA_BASE));
static_assert(std::string_view(XmiConstants::UML_2_0_NS_URI).starts_with(OMG_SCHEMA_BASE));

} // namespace ZEL::Serializer
