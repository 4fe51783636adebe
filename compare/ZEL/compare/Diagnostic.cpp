#include <ZEL/compare/Diagnostic.h>

#include <algorithm>

namespace ZEL::Compare {

std::string nameOf(Severity severity) {
    return severity == Severity::Error ? "error" : severity == Severity::Warning ? "warning" : "note";
}

std::string lineOf(Diagnostic const & diagnostic) {
    return nameOf(diagnostic.severity) + ": " + diagnostic.label + ": " + diagnostic.text + " [" + diagnostic.rule +
           ']';
}

std::size_t countOf(Diagnostics const & diagnostics, Severity severity) noexcept {
    return static_cast<std::size_t>(
        std::count_if(diagnostics.begin(), diagnostics.end(),
                      [severity](Diagnostic const & diagnostic) { return diagnostic.severity == severity; }));
}

} // namespace ZEL::Compare
