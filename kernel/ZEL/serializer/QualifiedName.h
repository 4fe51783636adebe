#pragma once

#include <ZEL/Export.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace ZEL::Serializer {

/// A namespace URI and a name in it, as one pointer.
///
/// Equal pairs are one entry of a process-wide table, so a comparison is one of pointers and a copy costs nothing.
/// Entries live to the end of the process. The table is guarded: pairs may be made on several threads.
class ZEL_API QualifiedName {
public:
    /// Both halves empty.
    QualifiedName() noexcept = default;
    /// A look-up in the table; the first use of a pair enters it.
    QualifiedName(std::string_view uri, std::string_view name) : fEntry(intern(uri, name)) {}

    [[nodiscard]] std::string const & getUri() const noexcept { return fEntry != nullptr ? fEntry->uri : noText(); }
    [[nodiscard]] std::string const & getName() const noexcept { return fEntry != nullptr ? fEntry->name : noText(); }
    [[nodiscard]] bool hasUri() const noexcept { return fEntry != nullptr && !fEntry->uri.empty(); }
    [[nodiscard]] bool hasName() const noexcept { return fEntry != nullptr && !fEntry->name.empty(); }
    /// Whether both halves are empty.
    [[nodiscard]] bool isEmpty() const noexcept { return fEntry == nullptr; }

    /// Whether the pairs differ, and have a half that is set in both.
    [[nodiscard]] bool conflictsWith(QualifiedName other) const noexcept {
        return fEntry != other.fEntry && ((hasUri() && other.hasUri()) || (hasName() && other.hasName()));
    }
    [[nodiscard]] std::size_t hash() const noexcept { return reinterpret_cast<std::uintptr_t>(fEntry) >> 4U; }

    friend bool operator==(QualifiedName, QualifiedName) noexcept = default;
    /// By URI, then by name.
    friend bool operator<(QualifiedName left, QualifiedName right) noexcept {
        return left.fEntry != right.fEntry && left.compare(right) < 0;
    }

private:
    struct Entry {
        std::string uri;
        std::string name;
    };
    struct Table;

    static Entry const * intern(std::string_view uri, std::string_view name);
    static std::string const & noText() noexcept;
    [[nodiscard]] int compare(QualifiedName other) const noexcept;

    Entry const * fEntry = nullptr; ///< null for the empty pair
};

} // namespace ZEL::Serializer

template <> struct std::hash<ZEL::Serializer::QualifiedName> {
    std::size_t operator()(ZEL::Serializer::QualifiedName name) const noexcept { return name.hash(); }
};
