#pragma once

#include <ZEL/Export.h>

#include <cstddef>
#include <map>
#include <string>

namespace ZEL::Serializer {

/// What the files of a run hold that did not reach a model: counts by name.
///
/// A name of an element is its local name in the file, after its namespace in braces if it has one, and "of type" with
/// what its `xmi:type` says; attributes, values and links are named "Class.property". All counts are zero for files
/// that were read without loss.
class ZEL_API ReadReport {
public:
    using Counts = std::map<std::string, std::size_t>;

    /// Elements left out with all they contain: of unknown name, of a class that cannot be made or that may not stand
    /// there, of another version of XMI, or by a rule. `xmi:Documentation` is not counted.
    [[nodiscard]] Counts const & skippedElements() const noexcept { return fSkippedElements; }
    /// Elements inside these, at any depth.
    [[nodiscard]] Counts const & skippedContents() const noexcept { return fSkippedContents; }
    /// Of the skipped elements those that are of another version of XMI, by that version.
    [[nodiscard]] Counts const & otherVersions() const noexcept { return fOtherVersions; }
    /// Attributes that name no property of the object, or one that attributes cannot set: a composition, or what is
    /// derived.
    [[nodiscard]] Counts const & ignoredAttributes() const noexcept { return fIgnoredAttributes; }
    /// Values that the property did not take: no text of its type, or the target of a link that may not stand there.
    [[nodiscard]] Counts const & rejectedValues() const noexcept { return fRejectedValues; }
    /// Values, links and parts that gave way to a later one, since the property takes one only.
    [[nodiscard]] Counts const & replacedValues() const noexcept { return fReplacedValues; }
    /// Objects that were made and that nothing contains, with all that they contain, by class: further elements at the
    /// top, stereotypes that stand on nothing, parts that gave way to others. They are in the model, in `unparented`,
    /// but in no file that is made of it.
    [[nodiscard]] Counts const & uncontainedObjects() const noexcept { return fUncontainedObjects; }
    /// Links whose target was not found.
    [[nodiscard]] Counts const & unresolvedReferences() const noexcept { return fUnresolvedReferences; }
    /// Files that links lead to and that were not read, by URI.
    [[nodiscard]] Counts const & unreadFiles() const noexcept { return fUnreadFiles; }
    [[nodiscard]] bool isEmpty() const noexcept {
        // What lies in skipped elements, and their versions, come with those alone.
        return fSkippedElements.empty() && fIgnoredAttributes.empty() && fRejectedValues.empty() &&
               fReplacedValues.empty() && fUncontainedObjects.empty() && fUnresolvedReferences.empty() &&
               fUnreadFiles.empty();
    }

private:
    friend class LinkedFiles;
    friend class ReadFile;
    friend class ValueSetter;
    friend class XmiReaderImpl;

    Counts fSkippedElements;
    Counts fSkippedContents;
    Counts fOtherVersions;
    Counts fIgnoredAttributes;
    Counts fRejectedValues;
    Counts fReplacedValues;
    Counts fUncontainedObjects;
    Counts fUnresolvedReferences;
    Counts fUnreadFiles;
};

} // namespace ZEL::Serializer
