#pragma once

#include <hasp_util/Export.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace HASP {

/// A URI reference: absolute or relative, with or without a fragment. A plain value, which never changes.
///
/// A text that is none makes an invalid one, whose parts are empty and whose `error` says why; it throws nothing.
/// Characters beyond ASCII are taken in as their percent escapes. All parts are given as they stand, escapes included.
class HOST_API Uri {
public:
    /// Invalid.
    Uri();
    explicit Uri(std::string_view text);
    /// From parts; `host` is all between "//" and the path. What may not stand in a part is escaped, "%" only where it
    /// begins no escape.
    Uri(std::string_view scheme, std::string_view host, std::string_view path, std::string_view fragment);

    /// The file URI of a local file. A relative name counts from the current folder; "." and ".." are taken out, after
    /// a symbolic link as the system would. Invalid for an empty name.
    [[nodiscard]] static Uri fromLocalFile(std::string const & fileName);
    /// The local file of a file URI without host or with the host "localhost", whatever its fragment; empty for all
    /// else.
    [[nodiscard]] std::string toLocalFile() const;

    [[nodiscard]] bool isValid() const noexcept { return fError.empty(); }
    /// Why it is invalid; empty if it is valid.
    [[nodiscard]] std::string const & error() const noexcept { return fError; }
    /// Empty if it is invalid.
    [[nodiscard]] std::string const & toString() const noexcept { return fText; }

    [[nodiscard]] std::string getScheme() const { return std::string(part(fScheme)); }
    /// All between "//" and the path: the host, and user and port where they are given.
    [[nodiscard]] std::string getHost() const { return std::string(part(fHost)); }
    [[nodiscard]] std::string getPath() const { return std::string(part(fPath)); }
    [[nodiscard]] bool hasFragment() const noexcept { return fHasFragment; }
    [[nodiscard]] std::string getFragment() const { return std::string(part(fFragment)); }
    [[nodiscard]] Uri withoutFragment() const;

    /// The shortest reference that, resolved against `base`, is this URI again; this URI itself where there is no
    /// shorter one. Invalid unless both are absolute.
    [[nodiscard]] Uri relativize(Uri const & base) const;
    /// What a reference that stands in the document of this URI means. Invalid unless this URI is absolute.
    [[nodiscard]] Uri resolve(Uri const & reference) const;

    friend bool operator==(Uri const & left, Uri const & right) noexcept { return left.fText == right.fText; }
    friend bool operator<(Uri const & left, Uri const & right) noexcept { return left.fText < right.fText; }

private:
    struct Part {
        std::size_t begin = 0;
        std::size_t size = 0;
    };
    [[nodiscard]] std::string_view part(Part const & part) const noexcept {
        return std::string_view(fText).substr(part.begin, part.size);
    }
    [[nodiscard]] static Uri invalid(std::string error);
    void split();

    std::string fText;
    std::string fError;
    Part fScheme;
    Part fHost;
    Part fPath;
    Part fFragment;
    bool fHasQuery = false;
    bool fHasFragment = false;
};

} // namespace HASP
