#pragma once

#include <ZEL/Export.h>

#include <cstdint>
#include <span>
#include <string_view>

namespace ZEL::Interchange {

/// The forms of UML in which something is called otherwise than in this system's metamodel of UML.
enum class UmlForm : std::uint8_t {
    Version20,  ///< 2.0, as Eclipse has it in the namespace .../uml2/1.0.0/UML
    Version24,  ///< 2.4 and later
    Version25,  ///< 2.5 and later
    Version251, ///< 2.5.1
    Eclipse,    ///< all versions of Eclipse
    Ecore,      ///< as Eclipse's, by tools that do not know how it names elements in files
};

struct UmlClassName {
    UmlForm form;
    std::string_view otherName;
    std::string_view name;
};

/// Of a property of the class and its subclasses.
struct UmlPropertyName {
    UmlForm form;
    std::string_view metaClass;
    std::string_view otherName;
    std::string_view name;
};

/// The form keeps parts in `container`, and says by a link to them which of them are those of `property`; this system
/// keeps these in `property` itself.
struct UmlSubset {
    UmlForm form;
    std::string_view metaClass;
    std::string_view property;
    std::string_view container;
};

/// An element that is named after the property and states no type has this one.
struct UmlImpliedType {
    UmlForm form;
    std::string_view metaClass;
    std::string_view property;
    std::string_view type;
};

/// What an object has of which the file says nothing, where this system's metamodel has another default.
struct UmlDefault {
    UmlForm form;
    std::string_view metaClass;
    std::string_view property;
    bool value;
};

// All names are those of the metamodel; each function returns a table that is there for good.
[[nodiscard]] ZEL_API std::span<UmlClassName const> umlClassNames() noexcept;
[[nodiscard]] ZEL_API std::span<UmlPropertyName const> umlPropertyNames() noexcept;
[[nodiscard]] ZEL_API std::span<UmlSubset const> umlSubsets() noexcept;
[[nodiscard]] ZEL_API std::span<UmlImpliedType const> umlImpliedTypes() noexcept;
[[nodiscard]] ZEL_API std::span<UmlDefault const> umlDefaults() noexcept;

} // namespace ZEL::Interchange
