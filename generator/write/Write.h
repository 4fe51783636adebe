#pragma once

#include "write/Emit.h"

#include <string>
#include <vector>

namespace zelgen {

struct WriteOptions {
    std::string directory;
    std::string depfile;       ///< none if empty
    std::string depfileTarget; ///< the file that the depfile is about; the bootstrap's source if empty
    std::string cppNamespace;
    std::string exportMacro;
    unsigned int units = 16;
    std::vector<std::string> inputs; ///< what the result depends on, for the depfile
};

/// All files of the family's main metamodel.
[[nodiscard]] Files emitFiles(Family const & family, WriteOptions const & options);

/// Writes them, and takes away those of classes that are no more. A file that holds its text already is left alone.
void write(Family const & family, WriteOptions const & options);

} // namespace zelgen
