#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ZEL::Interchange {

/// What the blocks of tools say of the elements of a model, as far as it is a part of the model: texts about them, and the
/// names of their types.
struct ToolNotes {
    struct Note {
        std::string id; ///< of the element; empty if the block stands in the element itself
        std::size_t block;
        std::string text;
    };

    std::vector<Note> documentation; ///< none blank
    std::vector<Note> typeNames;
    std::unordered_map<std::string, std::string> primitiveTypes; ///< names by ids

    /// Reads the texts of blocks, each a whole element `xmi:Extension`. Takes nothing from blocks of unknown tools, and is
    /// linear in their size.
    [[nodiscard]] static ToolNotes of(std::vector<std::string_view> const & blocks);
};

/// The tools whose blocks are understood, by what they call themselves.
[[nodiscard]] bool isEnterpriseArchitect(std::string_view tool);
[[nodiscard]] bool isVisualParadigm(std::string_view tool);

} // namespace ZEL::Interchange
