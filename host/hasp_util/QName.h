#pragma once

#include <hasp_util/Export.h>

#include <string>
#include <utility>

namespace HASP {

/// A name together with the URI of its namespace. A default-constructed one is the null name: both texts are empty.
class HOST_API QName {
public:
    QName() = default;
    QName(std::string namespaceUri, std::string localName)
        : fNamespaceUri(std::move(namespaceUri)), fLocalName(std::move(localName)) {}

    [[nodiscard]] std::string const & getNamespaceURI() const noexcept { return fNamespaceUri; }
    [[nodiscard]] std::string const & getLocalName() const noexcept { return fLocalName; }

    friend bool operator==(QName const &, QName const &) = default;
    friend auto operator<=>(QName const &, QName const &) = default;

private:
    std::string fNamespaceUri;
    std::string fLocalName;
};

} // namespace HASP
