#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace HASP {

/// The names of one document, each kept once, and the namespaces in force where the parser is.
///
/// A qualified name is split once and then found by its text; its prefix holds the URI that it is bound to at present,
/// so resolving a name means reading a pointer. Texts live as long as this object.
class XmlNames {
public:
    struct Prefix {
        std::string const * name;
        std::string const * uri; ///< null: not bound
    };
    enum class Kind { Plain, Declaration, Broken };
    struct Name {
        std::string raw;           ///< as written
        Kind kind;                 ///< `Declaration`: "xmlns" or "xmlns:p"; `Broken`: two colons, or one at an end
        Prefix * prefix;           ///< before the colon, or the declared one; the default one if there is neither
        std::string const * local; ///< after the colon
    };

    XmlNames();
    XmlNames(XmlNames const &) = delete;
    XmlNames & operator=(XmlNames const &) = delete;

    [[nodiscard]] std::string const & intern(std::string_view text);
    [[nodiscard]] Name const & find(char const * raw);
    /// As `find`, but faster for a text at the same address as last time, where the parser keeps attribute names.
    [[nodiscard]] Name const & findCached(char const * raw);
    [[nodiscard]] std::string const & emptyText() const noexcept { return *fEmpty; }

    /// Binds a prefix until `unbindTo` is called with a mark taken before.
    void bind(Prefix & prefix, std::string const & uri);
    [[nodiscard]] std::size_t bindingMark() const noexcept { return fUndo.size(); }
    void unbindTo(std::size_t mark) noexcept;

private:
    struct CacheSlot {
        char const * address = nullptr;
        Name const * name = nullptr;
    };
    struct Undo {
        Prefix * prefix;
        std::string const * uri;
    };
    [[nodiscard]] Name const & enter(std::string_view raw);
    [[nodiscard]] Prefix & prefix(std::string_view name);

    std::unordered_set<std::string> fTexts;
    std::string const * fEmpty;
    std::unordered_map<std::string const *, std::unique_ptr<Prefix>> fPrefixes;
    std::unordered_map<std::string_view, std::unique_ptr<Name>> fNames; ///< keys look into the values
    std::vector<CacheSlot> fCache;
    std::vector<Undo> fUndo;
};

} // namespace HASP
