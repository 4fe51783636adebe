#pragma once

#include <hasp_util/XmlReader.h>

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace ZEL::Serializer {

/// A prefix and its namespace, in force from the element at a depth on.
struct PrefixBinding {
    std::size_t depth;
    std::string const * prefix;
    std::string const * uri;
};

/// Puts together the text of an element from its events, with all that it contains.
///
/// Prefixes are those of the file as far as it has one for the namespace, and are declared in the outermost tag: the text
/// can stand anywhere where "xmi" is bound to the namespace of XMI. References to characters are resolved, and comments
/// left out, as the events have neither.
class ElementText {
public:
    /// The element at hand in `xml` begins, under these bindings, its own ones included.
    void start(HASP::XmlReader const & xml, std::vector<PrefixBinding> const & bindings);
    void characters(std::string_view text);
    void end();
    /// Whether elements are open.
    [[nodiscard]] bool isOpen() const noexcept { return !fOpen.empty(); }
    /// The text of the element that has ended last, which is forgotten.
    [[nodiscard]] std::string take();

    /// An element without a namespace that holds a text.
    [[nodiscard]] static std::string of(std::string_view name, std::string_view text);

private:
    [[nodiscard]] std::string nameOf(std::string const & uri, std::string const & localName,
                                     std::vector<PrefixBinding> const & bindings);
    [[nodiscard]] std::string const & prefixOf(std::string const & uri, std::vector<PrefixBinding> const & bindings);
    [[nodiscard]] std::string typeNameOf(std::string_view value, std::vector<PrefixBinding> const & bindings);
    void closeTag();

    std::string fText;
    std::size_t fDeclarations = 0; ///< where in the text they belong
    bool fIsInTag = false;
    std::vector<std::string> fOpen;
    std::map<std::string, std::string> fPrefixes; ///< by namespace
};

} // namespace ZEL::Serializer
