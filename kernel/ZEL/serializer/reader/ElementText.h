#pragma once

#include <hasp_util/XmlReader.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace ZEL::Serializer {

/// The prefixes of namespaces in force at a place of a file.
class PrefixBindings {
public:
    /// In force from the element at this depth on.
    void add(std::size_t depth, std::string const & prefix, std::string const & uri) {
        fBindings.push_back({depth, &prefix, &uri});
    }
    /// The element at this depth ends.
    void leave(std::size_t depth) {
        while (!fBindings.empty() && fBindings.back().depth == depth) {
            fBindings.pop_back();
        }
    }
    /// One that is not empty; null if none is known. Of very many bindings only the innermost are searched, so that no
    /// file can make a look-up slow.
    [[nodiscard]] std::string const * prefixOf(std::string const & uri) const;
    /// Null if none is known, as above.
    [[nodiscard]] std::string const * uriOf(std::string_view prefix) const;

private:
    struct Binding {
        std::size_t depth;
        std::string const * prefix;
        std::string const * uri;
    };
    static constexpr std::size_t kSearched = 256;

    [[nodiscard]] std::vector<Binding>::const_reverse_iterator last() const {
        return fBindings.rbegin() + static_cast<std::ptrdiff_t>(std::min(fBindings.size(), kSearched));
    }

    std::vector<Binding> fBindings;
};

/// Puts together the text of an element from its events, with all that it contains.
///
/// Prefixes are those of the file as far as it has one for the namespace, and are declared in the outermost tag: the text
/// can stand anywhere where "xmi" is bound to the namespace of XMI. References to characters are resolved, and comments
/// left out, as the events have neither.
class ElementText {
public:
    /// The element at hand in `xml` begins, under these bindings, its own ones included.
    void start(HASP::XmlReader const & xml, PrefixBindings const & bindings);
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
                                     PrefixBindings const & bindings);
    [[nodiscard]] std::string const & prefixOf(std::string const & uri, PrefixBindings const & bindings);
    [[nodiscard]] std::string typeNameOf(std::string_view value, PrefixBindings const & bindings);
    void closeTag();

    std::string fText;
    std::size_t fDeclarations = 0; ///< where in the text they belong
    bool fIsInTag = false;
    std::vector<std::string> fOpen;
    std::map<std::string, std::string> fPrefixes; ///< by namespace
    std::unordered_set<std::string> fUsed;        ///< of these
};

} // namespace ZEL::Serializer
