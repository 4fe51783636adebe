#pragma once

#include <ZEL/Export.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/metamodel/Property.h>

#include <cstddef>
#include <string>
#include <vector>

namespace ZEL::Compare {

/// `Error`: the model is wrong. `Warning`: it may be meant, and other tools may refuse it. `Note`: a hint.
using Severity = ZEL::internal::Severity;

/// What is wrong with one object.
struct Diagnostic {
    Severity severity = Severity::Error;
    ImmutableClassObject object; ///< invalid once the object has gone, as after a commit that made it was refused
    ImmutableProperty property;  ///< invalid if it is about the object as a whole
    std::string rule;            ///< its name
    std::string text;
    std::string label; ///< the object for readers, as `labelOf` named it when it was checked
};

using Diagnostics = std::vector<Diagnostic>;

/// "error", "warning", "note".
[[nodiscard]] ZEL_API std::string nameOf(Severity severity);

/// In a line: "error: Class 'library.Book': inherits from itself [generalizationCycle]".
[[nodiscard]] ZEL_API std::string lineOf(Diagnostic const & diagnostic);

/// How many are of the severity.
[[nodiscard]] ZEL_API std::size_t countOf(Diagnostics const & diagnostics, Severity severity) noexcept;

} // namespace ZEL::Compare
