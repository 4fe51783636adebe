#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/QualifiedName.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ZEL::Serializer {

/// An XML element, attribute or link in the neutral form between objects and files.
///
/// The writer makes Contexts from objects, the reader makes them from XML events, and rules rewrite them in between. A
/// Context has a role and a type, those of its parent, and values: for an element the object's id, otherwise the text.
/// The same record serves as the pattern of a rule; a pattern sets only the pairs on which it is to match, always both
/// halves of each, and its flags and values are ignored. A plain value: names are interned, so a
/// copy costs little more than its first value, and a move nearly nothing.
class ZEL_API Context {
public:
    /// One value, the empty text; no flag, no name.
    Context() noexcept = default;

    [[nodiscard]] bool isElement() const noexcept { return has(Element); }
    [[nodiscard]] bool isAttribute() const noexcept { return has(Attribute); }
    [[nodiscard]] bool isReference() const noexcept { return has(Link); }
    /// Whether the Context belongs to an `xmi:Extension` block.
    [[nodiscard]] bool isExtension() const noexcept { return has(Extension); }
    /// Whether each value is a logical value of its own, written as a child element.
    [[nodiscard]] bool isMultiValued() const noexcept { return has(MultiValued); }
    /// Whether the Context, and what lies beneath it, is to be left out.
    [[nodiscard]] bool skipContext() const noexcept { return has(Skip); }
    void setExtension(bool extension) noexcept { set(Extension, extension); }
    void setSkipState(bool skip) noexcept { set(Skip, skip); }

    // The three setters replace the first value and keep any further ones, the extension and the skip state.
    void setElement(std::string text) noexcept { setKind(Element, std::move(text)); }
    void setAttribute(std::string text) noexcept { setKind(Attribute, std::move(text)); }
    void setReference(std::string text) noexcept { setKind(Link, std::move(text)); }
    /// Like `setAttribute` on a Context that is not an attribute yet; otherwise appends the value. Multi-valued in
    /// either case.
    void addAttribute(std::string text) { addKind(Attribute, std::move(text)); }
    /// The same for a link.
    void addReference(std::string text) { addKind(Link, std::move(text)); }
    /// Replaces the first value and leaves all flags alone.
    void setFirstValue(std::string text) noexcept { fFirstValue = std::move(text); }

    void setType(std::string_view uri, std::string_view name) { fType = QualifiedName(uri, name); }
    void setType(QualifiedName type) noexcept { fType = type; }
    void setRole(std::string_view uri, std::string_view name) { fRole = QualifiedName(uri, name); }
    void setRole(QualifiedName role) noexcept { fRole = role; }
    void setParentType(std::string_view uri, std::string_view name) { fParentType = QualifiedName(uri, name); }
    void setParentType(QualifiedName type) noexcept { fParentType = type; }
    void setParentRole(std::string_view uri, std::string_view name) { fParentRole = QualifiedName(uri, name); }
    void setParentRole(QualifiedName role) noexcept { fParentRole = role; }
    /// Takes the role and the type of `parent` as parent pairs.
    void setParent(Context const & parent) noexcept {
        fParentType = parent.fType;
        fParentRole = parent.fRole;
    }

    [[nodiscard]] std::string const & getUri() const noexcept { return fRole.getUri(); }
    [[nodiscard]] std::string const & getRoleName() const noexcept { return fRole.getName(); }
    [[nodiscard]] std::string const & getTypeUri() const noexcept { return fType.getUri(); }
    [[nodiscard]] std::string const & getTypeName() const noexcept { return fType.getName(); }
    [[nodiscard]] std::string const & getParentUri() const noexcept { return fParentRole.getUri(); }
    [[nodiscard]] std::string const & getParentRoleName() const noexcept { return fParentRole.getName(); }
    [[nodiscard]] std::string const & getParentTypeUri() const noexcept { return fParentType.getUri(); }
    [[nodiscard]] std::string const & getParentTypeName() const noexcept { return fParentType.getName(); }
    [[nodiscard]] QualifiedName getRole() const noexcept { return fRole; }
    [[nodiscard]] QualifiedName getType() const noexcept { return fType; }
    [[nodiscard]] QualifiedName getParentRole() const noexcept { return fParentRole; }
    [[nodiscard]] QualifiedName getParentType() const noexcept { return fParentType; }

    /// At least 1.
    [[nodiscard]] std::size_t getValueCount() const noexcept { return 1 + fMoreValues.size(); }
    /// `index` must be below the count.
    [[nodiscard]] std::string const & getValue(std::size_t index) const noexcept;
    [[nodiscard]] std::string const & getFirstValue() const noexcept { return fFirstValue; }

    /// Whether all names are empty; flags and values do not count.
    [[nodiscard]] bool isEmpty() const noexcept {
        return fType.isEmpty() && fRole.isEmpty() && fParentType.isEmpty() && fParentRole.isEmpty();
    }
    /// Whether `other`'s parent pairs are this Context's role and type, of which one at least is not empty.
    [[nodiscard]] bool isParentOf(Context const & other) const noexcept {
        return (!fRole.isEmpty() || !fType.isEmpty()) && fRole == other.fParentRole && fType == other.fParentType;
    }
    /// How deeply an element that a rule returns is nested in those of its sequence, from 1 on, where elements recur
    /// and their names do not show it; 0 where they do. A parent's depth is one less.
    [[nodiscard]] std::size_t getDepth() const noexcept { return fDepth; }
    void setDepth(std::size_t depth) noexcept { fDepth = static_cast<std::uint32_t>(depth); }
    /// How well the pattern, this, fits `other`: 0 if they conflict or have nothing in common, 8 if either is empty,
    /// otherwise the number of pairs that agree; 4 also if all pairs are empty in both.
    [[nodiscard]] int weightedMatch(Context const & other) const noexcept;

    /// An order by parent type, parent role, type and role, in which a pair that is set on one side only is passed over
    /// in the first three. Not transitive between Contexts that set different pairs.
    friend ZEL_API bool operator<(Context const & left, Context const & right) noexcept;
    /// Neither less than the other.
    friend bool operator==(Context const & left, Context const & right) noexcept {
        return left.fRole == right.fRole && !left.fType.conflictsWith(right.fType) &&
               !left.fParentType.conflictsWith(right.fParentType) && !left.fParentRole.conflictsWith(right.fParentRole);
    }

private:
    enum Flag : unsigned char { Element = 1, Attribute = 2, Link = 4, Extension = 8, MultiValued = 16, Skip = 32 };

    [[nodiscard]] bool has(Flag flag) const noexcept { return (fFlags & flag) != 0; }
    void set(Flag flag, bool on) noexcept { fFlags = static_cast<unsigned char>(on ? fFlags | flag : fFlags & ~flag); }
    void clearFlags() noexcept { fFlags &= Extension | Skip; }
    void setKind(Flag kind, std::string && text) noexcept {
        clearFlags();
        set(kind, true);
        fFirstValue = std::move(text);
    }
    void addKind(Flag kind, std::string && text);

    std::string fFirstValue;
    std::vector<std::string> fMoreValues;
    unsigned char fFlags = 0;
    std::uint32_t fDepth = 0;
    QualifiedName fParentType;
    QualifiedName fParentRole;
    QualifiedName fType;
    QualifiedName fRole;
};

} // namespace ZEL::Serializer
