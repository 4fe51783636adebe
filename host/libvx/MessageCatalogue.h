#pragma once

#include <hasp_util/Export.h>

#include <cstdint>

/// The messages of one library, as constants that outlive their stay in the catalogue.
///
/// `identifiers` holds `count` numbers and then 0xFFFFFFFF; `names` and `formats` (English) stand beside it, slot for
/// slot. `languageFormats` are the same messages in one further language, or null: there slot 0 is the empty string and
/// slot n belongs to identifier n - 1 of the others.
struct VxMessageTable {
    std::uint32_t count;
    std::uint32_t facility;
    std::uint32_t const * identifiers;
    char const * const * names;
    char const * const * formats;
    char const * const * languageFormats;
};

/// The process's catalogue of messages; only its address is of use.
struct VxContext;

extern "C" {

/// The catalogue as one changes it.
[[nodiscard]] HOST_API VxContext * vxGetMemoryContext();
/// The catalogue as one looks messages up in it.
[[nodiscard]] HOST_API VxContext * vxGetMessageContext();

/// Adds a table, which stays the caller's. A table that is there already is not added twice. Returns 0.
HOST_API int vx_mem_add_primary_message_table(VxContext * context, VxMessageTable const * table);
/// Adds a table's `languageFormats` as its texts in a language. Returns 0.
HOST_API int vx_mem_add_language(VxContext * context, char const * language, VxMessageTable const * table);
/// Removes a table and its texts in all languages; an unknown one is ignored. Returns 0.
HOST_API int vx_mem_remove_primary_message_table(VxContext * context, VxMessageTable const * table);
}

namespace vx {

/// Chooses the language of messages: "en", with which a process starts, or one added with a table. A message that the
/// language lacks is given in English.
HOST_API void setCurrentLanguage(char const * language);

/// The format of a message in the current language, null for an unknown number.
[[nodiscard]] HOST_API char const * findMessage(std::uint32_t identifier);

} // namespace vx
