#pragma once

#include <ZEL/Export.h>

#include <cstddef>
#include <map>
#include <string>

namespace ZEL::Serializer {

/// What of the files of a run did not reach a model: counts by name.
///
/// A name of an element is its local name, behind its namespace in braces if it has one, and "of type" with what its
/// `xmi:type` says; attributes, values and links are named "Class.property". Each loss is counted once. All counts are
/// zero for files that were read without loss.
class ZEL_API ReadReport {
public:
    using Counts = std::map<std::string, std::size_t>;

    /// Elements left out with all they contain: of unknown name, of a class that cannot be made or that may not stand
    /// there, or by a rule. What lies inside is not counted on its own, and `xmi:Documentation` not at all.
    [[nodiscard]] Counts const & skippedElements() const noexcept { return fSkippedElements; }
    /// Attributes that name no property of the object, or one that attributes cannot set: a composition, or what is
    /// derived.
    [[nodiscard]] Counts const & ignoredAttributes() const noexcept { return fIgnoredAttributes; }
    /// Values that the property did not take: no text of its type, or the target of a link that may not stand there.
    [[nodiscard]] Counts const & rejectedValues() const noexcept { return fRejectedValues; }
    /// Links whose target was not found.
    [[nodiscard]] Counts const & unresolvedReferences() const noexcept { return fUnresolvedReferences; }
    /// Files that links lead to and that were not read, by URI.
    [[nodiscard]] Counts const & unreadFiles() const noexcept { return fUnreadFiles; }
    [[nodiscard]] bool isEmpty() const noexcept;

    void addSkippedElement(std::string const & name) { ++fSkippedElements[name]; }
    void addIgnoredAttribute(std::string const & name) { ++fIgnoredAttributes[name]; }
    void addRejectedValue(std::string const & name) { ++fRejectedValues[name]; }
    void addUnresolvedReference(std::string const & name) { ++fUnresolvedReferences[name]; }
    void addUnreadFile(std::string const & uri) { ++fUnreadFiles[uri]; }

private:
    Counts fSkippedElements;
    Counts fIgnoredAttributes;
    Counts fRejectedValues;
    Counts fUnresolvedReferences;
    Counts fUnreadFiles;
};

} // namespace ZEL::Serializer
