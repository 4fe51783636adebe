#pragma once

#include <hasp_util/Export.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace HASP {

/// A URI reference: absolute or relative, with or without a fragment. An immutable value.
///
/// A text that is not a URI makes an invalid one, whose parts are empty and whose `error` says why; nothing is thrown.
/// Characters beyond ASCII are replaced by their percent escapes. Parts are returned as written, escapes included.
class HOST_API Uri {
public:
    /// Invalid.
    Uri();
    explicit Uri(std::string_view text);
    /// From its parts; `host` is everything between "//" and the path. Characters that a part cannot hold are escaped;
    /// "%" only where it does not begin an escape.
    Uri(std::string_view scheme, std::string_view host, std::string_view path, std::string_view fragment);

    /// The file URI of a local file. A relative name is resolved against the current folder; "." and ".." are removed,
    /// after a symbolic link as the system would. Invalid for an empty name.
    [[nodiscard]] static Uri fromLocalFile(std::string const & fileName);
    /// The local file of a file URI without a host, or with the host "localhost", whatever its fragment; empty for any
    /// other URI.
    [[nodiscard]] std::string toLocalFile() const;

    [[nodiscard]] bool isValid() const noexcept { return fError.empty(); }
    /// Why it is invalid; empty if it is valid.
    [[nodiscard]] std::string const & error() const noexcept { return fError; }
    /// Empty if it is invalid.
    [[nodiscard]] std::string const & toString() const noexcept { return fText; }

    [[nodiscard]] std::string getScheme() const { return std::string(part(fScheme)); }
    /// Everything between "//" and the path: the host, and the user and port if there are any.
    [[nodiscard]] std::string getHost() const { return std::string(part(fHost)); }
    [[nodiscard]] std::string getPath() const { return std::string(part(fPath)); }
    [[nodiscard]] bool hasFragment() const noexcept { return fHasFragment; }
    [[nodiscard]] std::string getFragment() const { return std::string(part(fFragment)); }
    [[nodiscard]] Uri withoutFragment() const;

    /// The shortest reference that resolves against `base` to this URI; this URI itself if there is no shorter one.
    /// Invalid unless both are absolute.
    [[nodiscard]] Uri relativize(Uri const & base) const;
    /// What a reference means in the document of this URI. Invalid unless this URI is absolute.
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
