// Any bytes as the definition of a metamodel: what zelgen accepts, it can also write.

#include "check/Check.h"
#include "family/Family.h"
#include "load/Definition.h"
#include "write/Write.h"

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size) {
    std::string const text(reinterpret_cast<char const *>(data), size);
    zelgen::Diagnostics diagnostics;
    zelgen::Definition const definition = zelgen::parseDefinition(text, "input.yaml", diagnostics);
    if (diagnostics.empty()) {
        zelgen::check({&definition}, diagnostics);
    }
    if (diagnostics.empty()) {
        zelgen::WriteOptions options;
        options.cppNamespace = "fuzz";
        options.exportMacro = "FUZZ_API";
        static_cast<void>(zelgen::emitFiles(zelgen::Family({&definition}), options));
    }
    return 0;
}
