#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace HASP {

/// The namespaces in force where an `XmlWriter` stands.
///
/// An element's name may be written before its prefix is declared, and so a binding remembers whether the declaration
/// stands in the document yet.
class XmlScopes {
public:
    struct Binding {
        std::string prefix;
        std::string uri;
        std::uint64_t tag;     ///< the number of the tag that it was made in
        std::uint64_t lastUse; ///< the number of the last tag that uses it for a name
        bool isWritten;
    };

    XmlScopes();

    /// Begins the next tag.
    void startTag() noexcept { ++fTag; }
    [[nodiscard]] std::size_t mark() const noexcept { return fBindings.size(); }
    void leaveTo(std::size_t mark) noexcept {
        fBindings.erase(fBindings.begin() + static_cast<std::ptrdiff_t>(mark), fBindings.end());
    }

    /// The prefix that a name of this namespace takes in the current tag. A namespace that nothing declares gets a
    /// prefix of its own. An attribute's prefix is never the empty one.
    [[nodiscard]] std::string const & prefixFor(std::string_view uri, bool isAttribute);
    /// As `prefixFor`, with a wish. It is not granted where it would give another name in the tag another meaning.
    [[nodiscard]] std::string const & prefixFor(std::string_view prefix, std::string_view uri, bool isAttribute);
    /// Notes a declaration that the caller writes now. Returns false if it stands in this tag already, word for word.
    /// Throws if the tag declares or uses the prefix for another namespace, if it declares a default one twice, if XML
    /// reserves one of the two, or if no document can hold the URI.
    [[nodiscard]] bool declare(std::string_view prefix, std::string_view uri);

    /// A binding of the current tag that is still to be declared, null if there is none. It counts as declared then.
    [[nodiscard]] Binding const * takeUndeclared() noexcept;

private:
    [[nodiscard]] Binding * byPrefix(std::string_view prefix) noexcept;
    [[nodiscard]] Binding * byUri(std::string_view uri, bool isAttribute) noexcept;
    Binding & bind(std::string_view prefix, std::string_view uri);

    std::vector<Binding> fBindings;
    std::uint64_t fTag = 0;
    std::uint64_t fLastIncomplete = 0; ///< the last tag with a binding that is still to be declared
};

} // namespace HASP
