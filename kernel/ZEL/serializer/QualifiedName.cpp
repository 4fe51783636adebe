#include <ZEL/serializer/QualifiedName.h>

#include <array>
#include <memory>
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
        std::size_t operator()(Pair const & pair) const noexcept { return hashOf(pair.uri, pair.name); }
        std::size_t operator()(std::unique_ptr<Entry> const & entry) const noexcept {
            return hashOf(entry->uri, entry->name);
        }
    };
    struct Equal {
        using is_transparent = void;
        bool operator()(Pair const & left, std::unique_ptr<Entry> const & right) const noexcept {
            return left.name == right->name && left.uri == right->uri;
        }
        bool operator()(std::unique_ptr<Entry> const & left, Pair const & right) const noexcept {
            return (*this)(right, left);
        }
        bool operator()(std::unique_ptr<Entry> const & left, std::unique_ptr<Entry> const & right) const noexcept {
            return left->name == right->name && left->uri == right->uri;
        }
    };

    std::mutex mutex;
    std::unordered_set<std::unique_ptr<Entry>, Hash, Equal> entries;

    Entry const * enter(std::string_view uri, std::string_view name) {
        std::lock_guard<std::mutex> const lock(mutex);
        auto const found = entries.find(Pair{uri, name});
        if (found != entries.end()) {
            return found->get();
        }
        return entries.insert(std::make_unique<Entry>(Entry{std::string(uri), std::string(name)})).first->get();
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
