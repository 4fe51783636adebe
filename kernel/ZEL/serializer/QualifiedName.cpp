#include <ZEL/serializer/QualifiedName.h>

#include <array>
#include <mutex>
#include <unordered_set>

namespace ZEL::Serializer {
namespace {

std::size_t hashOf(std::string_view uri, std::string_view name) noexcept {
    std::hash<std::string_view> const hash;
    return hash(name) * 31U + hash(uri);
}

} // namespace

struct QualifiedName::Table {
    struct Pair {
        std::string_view uri;
        std::string_view name;
    };
    struct Hash {
        using is_transparent = void;
        template <class Names> std::size_t operator()(Names const & names) const noexcept {
            return hashOf(names.uri, names.name);
        }
    };
    struct Equal {
        using is_transparent = void;
        template <class Left, class Right> bool operator()(Left const & left, Right const & right) const noexcept {
            return left.name == right.name && left.uri == right.uri;
        }
    };

    std::mutex mutex;
    std::unordered_set<Entry, Hash, Equal> entries; ///< each stays at its address

    Entry const * enter(std::string_view uri, std::string_view name) {
        std::lock_guard<std::mutex> const lock(mutex);
        auto const found = entries.find(Pair{uri, name});
        return found != entries.end() ? &*found : &*entries.insert({std::string(uri), std::string(name)}).first;
    }
};

QualifiedName::Entry const * QualifiedName::intern(std::string_view uri, std::string_view name) {
    if (uri.empty() && name.empty()) {
        return nullptr;
    }
    // A few of the entries used last stand in front of the table, so that the names of a file seldom take the lock.
    thread_local std::array<Entry const *, 512> recent{};
    Entry const *& slot = recent[hashOf(uri, name) % recent.size()];
    if (slot == nullptr || slot->name != name || slot->uri != uri) {
        // Never destroyed: names in objects with static lifetime must stay readable to the very end.
        static Table & table = *new Table;
        slot = table.enter(uri, name);
    }
    return slot;
}

std::string const & QualifiedName::noText() noexcept {
    static std::string const & text = *new std::string;
    return text;
}

int QualifiedName::compare(QualifiedName other) const noexcept {
    int const uris = getUri().compare(other.getUri());
    return uris != 0 ? uris : getName().compare(other.getName());
}

} // namespace ZEL::Serializer
