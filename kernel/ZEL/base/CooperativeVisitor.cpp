#include <ZEL/base/CooperativeVisitor.h>

#include <map>
#include <string>
#include <string_view>
#include <typeindex>
#include <unordered_map>

namespace ZEL::CooperativeVisitor {

VisitationDomain::~VisitationDomain() = default;

namespace internal {

namespace {

/// The tags of one domain, dense from 1.
using Domain = std::unordered_map<std::type_index, unsigned int>;

// Neither registry is ever freed: bodies that outlive the library's shut-down still ask for tags.
std::unordered_map<std::type_index, Domain> & domains() {
    static auto & registry = *new std::unordered_map<std::type_index, Domain>;
    return registry;
}

std::map<std::string, ClassInfo, std::less<>> & names() {
    static auto & registry = *new std::map<std::string, ClassInfo, std::less<>>;
    return registry;
}

std::string withDots(std::string const & name) {
    std::string result;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name.compare(i, 2, "::") == 0) {
            result += '.';
            ++i;
        } else {
            result += name[i];
        }
    }
    return result;
}

VisitThunk methodFor(VisitTable const & table, ClassInfo const & info) noexcept {
    if (info.domainTag >= table.size() || info.classTag >= table[info.domainTag].size()) {
        return nullptr;
    }
    return table[info.domainTag][info.classTag];
}

} // namespace

unsigned int GetTag(std::type_info const & cls, std::type_info const & domain) {
    Domain & tags = domains()[domain];
    return tags.try_emplace(cls, static_cast<unsigned int>(tags.size()) + 1).first->second;
}

void BindTagToName(char const * name, ClassInfo const & info) {
    names()[name] = info;
    names()[withDots(name)] = info;
}

std::pair<char const *, ClassInfo> GetTagFromName(char const * name) {
    auto const found = name != nullptr ? names().find(std::string_view(name)) : names().end();
    if (found == names().end()) {
        return {nullptr, ClassInfo()};
    }
    return {found->first.c_str(), found->second};
}

struct CastTable::Tables {
    std::vector<Entry> entries;
    std::vector<Thunk> thunks; ///< by class tag
};

CastTable::CastTable(std::initializer_list<Entry> entries)
    : fTables(new Tables{entries, {}}), fDomain(entries.size() == 0 ? 0 : entries.begin()->info.domainTag) {
    std::vector<Thunk> & thunks = fTables->thunks;
    for (Entry const & entry : entries) {
        if (entry.info.classTag >= thunks.size()) {
            thunks.resize(entry.info.classTag + 1, nullptr);
        }
        thunks[entry.info.classTag] = entry.thunk;
    }
    fThunks = {thunks.data(), static_cast<unsigned int>(thunks.size())};
}

CastTable::~CastTable() = default;

MethodInfo CastTable::visitMethod(VisitTable const & table, void * self) const noexcept {
    for (Entry const & entry : fTables->entries) {
        if (VisitThunk const method = methodFor(table, entry.info)) {
            return {method, entry.thunk(self)};
        }
    }
    return {};
}

} // namespace internal

DispatchTable::DispatchTable() = default;

// The rows point into the table that made them.
DispatchTable::DispatchTable(DispatchTable const & other) : fThunks(other.fThunks) {}

DispatchTable & DispatchTable::operator=(DispatchTable const & other) {
    fThunks = other.fThunks;
    fRows.clear();
    return *this;
}

DispatchTable::~DispatchTable() = default;

void DispatchTable::add(internal::ClassInfo const & info, internal::VisitThunk thunk) {
    if (info.domainTag >= fThunks.size()) {
        fThunks.resize(info.domainTag + 1);
    }
    std::vector<internal::VisitThunk> & row = fThunks[info.domainTag];
    if (info.classTag >= row.size()) {
        row.resize(info.classTag + 1, nullptr);
    }
    row[info.classTag] = thunk;
    fRows.clear();
}

internal::VisitTable DispatchTable::table() const {
    if (fRows.empty()) {
        fRows.reserve(fThunks.size());
        for (std::vector<internal::VisitThunk> const & row : fThunks) {
            fRows.push_back({row.data(), static_cast<unsigned int>(row.size())});
        }
    }
    return {fRows.data(), static_cast<unsigned int>(fRows.size())};
}

} // namespace ZEL::CooperativeVisitor
