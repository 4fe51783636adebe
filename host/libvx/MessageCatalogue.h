#pragma once

#include <hasp_util/Export.h>

#include <cstdint>

/// The messages of one library, as constants that outlive their registration in the catalogue.
///
/// `identifiers` holds `count` numbers, followed by 0xFFFFFFFF; `names` and `formats` (English) are parallel to it.
/// `languageFormats` holds the same messages in one more language, or is null; its slot 0 is the empty string, and its
/// slot n belongs to `identifiers[n - 1]`.
struct VxMessageTable {
    std::uint32_t count;
    std::uint32_t facility;
    std::uint32_t const * identifiers;
    char const * const * names;
    char const * const * formats;
    char const * const * languageFormats;
};

/// The catalogue of messages of the process; opaque.
struct VxContext;

extern "C" {

/// The catalogue for changing it.
[[nodiscard]] HOST_API VxContext * vxGetMemoryContext();
/// The catalogue for looking messages up.
[[nodiscard]] HOST_API VxContext * vxGetMessageContext();

/// Adds a table, which stays the caller's. A table is not added twice. Returns 0.
HOST_API int vx_mem_add_primary_message_table(VxContext * context, VxMessageTable const * table);
/// Makes a table's `languageFormats` its texts in a language. Returns 0.
HOST_API int vx_mem_add_language(VxContext * context, char const * language, VxMessageTable const * table);
/// Removes a table and its texts in all languages; an unknown one is ignored. Returns 0.
HOST_API int vx_mem_remove_primary_message_table(VxContext * context, VxMessageTable const * table);
}

namespace vx {

/// Sets the language of messages: "en", which is the default, or a language added with a table. A message that is
/// missing in the language is used in English.
HOST_API void setCurrentLanguage(char const * language);

/// The format of a message in the current language; null for an unknown number.
[[nodiscard]] HOST_API char const * findMessage(std::uint32_t identifier);

} // namespace vx
