#include <hasp_util/StringID.h>

#include <mutex>
#include <unordered_set>

namespace HASP {

namespace {

struct Table {
    std::mutex mutex;
    std::unordered_set<std::string> texts;
};

// Never destroyed: ids may be static objects, which die in no known order.
Table & table() {
    static auto & instance = *new Table;
    return instance;
}

std::string const * enter(std::string_view text) {
    Table & all = table();
    std::lock_guard const lock(all.mutex);
    return &*all.texts.emplace(text).first;
}

} // namespace

StringID::StringID() : StringID(std::string_view()) {}

StringID::StringID(std::string_view text) : fText(enter(text)) {}

} // namespace HASP
