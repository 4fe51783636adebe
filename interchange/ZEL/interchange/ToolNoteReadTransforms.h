#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/Transformer.h>

#include <string>

namespace ZEL::Interchange {

/// Reading of what Enterprise Architect and Visual Paradigm keep beside a model, in blocks of their own.
///
/// Documentation becomes a comment on the element, unless one of its comments says the same; a type that stands in the
/// block alone, by its name, becomes that of the attribute or parameter, unless this has one. The blocks are kept as they
/// were, so that a file that is written has both, and reading it again adds nothing. For files without such blocks it
/// does nothing, and costs nothing. Serves one run.
class ZEL_API ToolNoteReadTransforms : public Serializer::Transformer {
public:
    ToolNoteReadTransforms();
    ToolNoteReadTransforms(ToolNoteReadTransforms const &) = delete;
    ToolNoteReadTransforms & operator=(ToolNoteReadTransforms const &) = delete;

private:
    void noteTool(std::string const & name);

    bool fHasArchitect = false;
    bool fHasParadigm = false;
};

} // namespace ZEL::Interchange
