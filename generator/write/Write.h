#pragma once

#include "write/Emit.h"

#include <string>
#include <vector>

namespace zelgen {

struct WriteOptions {
    std::string directory;
    std::string depfile;       ///< none if empty
    std::string depfileTarget; ///< the target of the rule in the depfile; the bootstrap's source if empty
    std::string cppNamespace;
    std::string exportMacro;
    unsigned int units = 16;
    std::vector<std::string> inputs; ///< the files that the result depends on, for the depfile
};

/// All files of the family's main metamodel.
[[nodiscard]] Files emitFiles(Family const & family, WriteOptions const & options);

/// Writes them, and removes those of classes that no longer exist. A file that already has its text is not touched.
void write(Family const & family, WriteOptions const & options);

} // namespace zelgen
