#pragma once

#include <hasp_util/Export.h>

#include <string>

namespace HASP {

/// Names and URIs that XML itself reserves. Usable in the initialisers of static objects.
class HOST_API XmlConstants {
public:
    inline static std::string const NULL_NS_URI;
    inline static std::string const DEFAULT_NS_PREFIX;
    inline static std::string const XMLNS_ATTRIBUTE = "xmlns";
    inline static std::string const XMLNS_ATTRIBUTE_NS_URI = "http://www.w3.org/2000/xmlns/";
    inline static std::string const XML_NS_PREFIX = "xml";
    inline static std::string const XML_NS_URI = "http://www.w3.org/XML/1998/namespace";
};

} // namespace HASP
