#include <libvx/MessageCatalogue.h>

#include <algorithm>
#include <string>
#include <vector>

struct VxContext {
    struct Language {
        std::string name;
        VxMessageTable const * table;
    };

    std::vector<VxMessageTable const *> tables;
    std::vector<Language> languages;
    std::string current = "en";
};

namespace {

// Never destroyed: tables are removed by destructors of static objects, in whatever order these die.
VxContext & catalogue() {
    static auto & context = *new VxContext;
    return context;
}

char const * textInCurrentLanguage(VxContext const & context, VxMessageTable const & table, std::uint32_t row) {
    for (VxContext::Language const & language : context.languages) {
        if (language.table == &table && language.name == context.current && table.languageFormats != nullptr) {
            return table.languageFormats[row + 1];
        }
    }
    return nullptr;
}

} // namespace

VxContext * vxGetMemoryContext() { return &catalogue(); }

VxContext * vxGetMessageContext() { return &catalogue(); }

int vx_mem_add_primary_message_table(VxContext * context, VxMessageTable const * table) {
    if (std::find(context->tables.begin(), context->tables.end(), table) == context->tables.end()) {
        context->tables.push_back(table);
    }
    return 0;
}

int vx_mem_add_language(VxContext * context, char const * language, VxMessageTable const * table) {
    context->languages.push_back({language, table});
    return 0;
}

int vx_mem_remove_primary_message_table(VxContext * context, VxMessageTable const * table) {
    std::erase(context->tables, table);
    std::erase_if(context->languages,
                  [table](VxContext::Language const & language) { return language.table == table; });
    return 0;
}

namespace vx {

void setCurrentLanguage(char const * language) { catalogue().current = language; }

char const * findMessage(std::uint32_t identifier) {
    VxContext const & context = catalogue();
    for (VxMessageTable const * table : context.tables) {
        std::uint32_t const * const end = table->identifiers + table->count;
        std::uint32_t const * const found = std::find(table->identifiers, end, identifier);
        if (found != end) {
            auto const row = static_cast<std::uint32_t>(found - table->identifiers);
            char const * const text = textInCurrentLanguage(context, *table, row);
            return text != nullptr && *text != '\0' ? text : table->formats[row];
        }
    }
    return nullptr;
}

} // namespace vx
