#pragma once

#include <ZEL/Export.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Property.h>

#include <string>
#include <utility>
#include <vector>

namespace ZEL::Interchange {

/// A value of a stereotype that no registered metamodel has, as its file states it.
struct ZEL_API StereotypeTag {
    std::string name;
    std::string text;    ///< of a link: what it names
    bool isLink = false; ///< whether the file says that it is one
    ImmutableProperty
        property; ///< of the stereotype; invalid if the stereotype is not in memory, or has none of the name
    std::vector<ImmutableClassObject> objects; ///< that it names

    /// Whether the text names objects: it is a link, or the property is of a class, not of a type of values.
    [[nodiscard]] bool isOfObjects() const;
};

/// The values of a `Foreign::StereotypeApplication`, be they attributes or elements: attributes first, each in the
/// order of the file. None for any other object. Linear in the size of the values.
///
/// Objects are those of `getTargets`, found by the ids of their files: none once the model has been written with other
/// ids.
[[nodiscard]] ZEL_API std::vector<StereotypeTag> stereotypeTagsOf(ImmutableClassObject const & application);

/// The text of values as an object holds it, a line for each, and what a line says.
class ZEL_API StereotypeValues {
public:
    static void append(std::string & lines, std::string const & name, std::string const & value);
    [[nodiscard]] static std::vector<std::pair<std::string, std::string>> of(std::string const & lines);
};

} // namespace ZEL::Interchange
