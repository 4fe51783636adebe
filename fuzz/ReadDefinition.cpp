// Any bytes as the definition of a metamodel that builds on the built-in one: zelgen can write whatever it accepts.

#include "check/Check.h"
#include "family/Family.h"
#include "load/Definition.h"
#include "write/Write.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

zelgen::Definition loadBuiltIn() {
    zelgen::Diagnostics diagnostics;
    zelgen::Definition definition = zelgen::loadDefinition(ZEL_METAMODEL_DEFINITION, diagnostics);
    if (!diagnostics.empty()) {
        std::fprintf(stderr, "%s\n", diagnostics.messages().front().c_str());
        std::abort();
    }
    return definition;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size) {
    static zelgen::Definition const builtIn = loadBuiltIn();
    std::string const text(reinterpret_cast<char const *>(data), size);
    zelgen::Diagnostics diagnostics;
    zelgen::Definition const definition = zelgen::parseDefinition(text, "input.yaml", diagnostics);
    if (diagnostics.empty()) {
        zelgen::check({&definition, &builtIn}, diagnostics);
    }
    if (diagnostics.empty()) {
        zelgen::WriteOptions options;
        options.cppNamespace = "fuzz";
        options.exportMacro = "FUZZ_API";
        static_cast<void>(zelgen::emitFiles(zelgen::Family({&definition, &builtIn}), options));
    }
    return 0;
}
