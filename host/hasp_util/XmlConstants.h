#pragma once

#include <hasp_util/Export.h>

#include <string>

namespace HASP {

/// Names and URIs that XML and its namespaces reserve. May be used in initialisers of static objects.
class HOST_API XmlConstants {
public:
    inline static std::string const NULL_NS_URI;
    inline static std::string const DEFAULT_NS_PREFIX;
    inline static std::string const XMLNS_ATTRIBUTE = "xmlns";
    inline static std::string const XMLNS_ATTRIBUTE_NS_URI = "http://www.w3.org/2000/xmlns/";
    inline static std::string const XML_NS_PREFIX = "xml";
    inline static std::string const XML_NS_URI = "http://www.w3.org/XML/1998/namespace";
    // Two vocabularies in common use.
    static constexpr char W3C_XML_SCHEMA_INSTANCE_NS_URI[] = "http://www.w3.org/2001/XMLSchema-instance";
    static constexpr char XHTML_NS_URI[] = "http://www.w3.org/1999/xhtml";
};

} // namespace HASP
