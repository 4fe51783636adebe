#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace HASP {

/// The namespaces in force at the place where an `XmlWriter` is writing.
///
/// The name of an element may be written before its prefix is declared, so a binding remembers whether its declaration
/// has been written.
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
        while (fBindings.size() > mark) {
            dropLast();
        }
    }

    /// The prefix for names of this namespace in the current tag. A namespace that has not been declared gets a new
    /// prefix. The prefix of an attribute is never empty.
    [[nodiscard]] std::string const & prefixFor(std::string_view uri, bool isAttribute);
    /// The same with a preferred prefix, which is not used where it would change the meaning of another name in the
    /// tag.
    [[nodiscard]] std::string const & prefixFor(std::string_view prefix, std::string_view uri, bool isAttribute);
    /// The prefix by which attributes of this namespace are named; null if it has not been declared.
    [[nodiscard]] std::string const * declaredPrefix(std::string_view uri) noexcept {
        Binding const * const binding = byUri(uri, true);
        return binding == nullptr ? nullptr : &binding->prefix;
    }
    /// Notes a declaration that the caller is about to write. Returns false if the tag already contains it. Throws
    /// `std::runtime_error` if the tag declares or uses the prefix for another namespace, if it declares a default
    /// namespace twice, if XML reserves the prefix or the URI, or if no document can hold the URI.
    [[nodiscard]] bool declare(std::string_view prefix, std::string_view uri);

    /// A binding of the current tag that has not been declared yet, which now counts as declared; null if there is
    /// none.
    [[nodiscard]] Binding const * takeUndeclared() noexcept {
        return fLastIncomplete == fTag ? takeUndeclaredOfTag() : nullptr;
    }

private:
    [[nodiscard]] Binding * byPrefix(std::string_view prefix) noexcept;
    [[nodiscard]] Binding * byUri(std::string_view uri, bool isAttribute) noexcept;
    [[nodiscard]] Binding const * takeUndeclaredOfTag() noexcept;
    Binding & bind(std::string_view prefix, std::string_view uri);
    Binding & add(Binding binding);
    void dropLast() noexcept;

    /// Places in `fBindings` by a text, the innermost last.
    using Places = std::map<std::string, std::vector<std::size_t>, std::less<>>;

    std::vector<Binding> fBindings;
    Places fByPrefix;
    Places fByUri;
    std::size_t fTaken = 0; ///< from this one on, bindings of the current tag have been declared
    std::uint64_t fTag = 0;
    std::uint64_t fLastIncomplete = 0; ///< the last tag with a binding that is still to be declared
};

} // namespace HASP
