#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/SoleOwner.h>

#include <initializer_list>
#include <typeinfo>
#include <utility>
#include <vector>

namespace ZEL {

class Deviant;

/// Dispatch by small numbers instead of run-time type information.
///
/// A tag stands for a class within a domain; a domain is itself a class, tagged in the domain of domains. `cast` and
/// `getVisitMethod` of every counted body index tables by these two tags, so a conversion or a dispatch takes two array
/// reads, and works across libraries and for classes that the metamodel of an application adds.
namespace CooperativeVisitor {

/// Base of the classes that name a space of tags.
class ZEL_API VisitationDomain {
public:
    virtual ~VisitationDomain();
};

/// The domain of domains.
class ZEL_API RootVisitationDomain : public VisitationDomain {};

namespace internal {

/// The two tags of a class; 0 never stands for a class.
struct ClassInfo {
    unsigned int domainTag = 0;
    unsigned int classTag = 0;

    friend bool operator==(ClassInfo const &, ClassInfo const &) = default;
};

/// What a visitor registers for a class. Called with the visitor, the body as that class, and the deviant through which
/// the body is seen.
using VisitThunk = bool (*)(void * visitor, void * object, Deviant deviant);

/// Result of `getVisitMethod`; `method` is null if the visitor handles neither the class nor a base of it.
struct MethodInfo {
    VisitThunk method = nullptr;
    void * object = nullptr;
};

/// Pointer and size of a table that is indexed often; owns nothing.
template <class T> struct LightVector {
    T const * data = nullptr;
    unsigned int count = 0;

    [[nodiscard]] unsigned int size() const noexcept { return count; }
    [[nodiscard]] T const & operator[](unsigned int index) const noexcept { return data[index]; }
};

/// A visitor's dispatch table, indexed by the tag of the domain, then by that of the class.
using VisitTable = LightVector<LightVector<VisitThunk>>;

/// The tag of `cls` in `domain`. Tags are assigned from 1 at first use and never change.
ZEL_API unsigned int GetTag(std::type_info const & cls, std::type_info const & domain);

/// Enters `name`, and `name` with "." for "::", so that both spellings find the class.
ZEL_API void BindTagToName(char const * name, ClassInfo const & info);

/// The stored name and its tags; for an unknown name, null and zero tags.
ZEL_API std::pair<char const *, ClassInfo> GetTagFromName(char const * name);

/// The tags of `Class` in `Domain`.
template <class Class, class Domain> ClassInfo makeClassInfo() {
    return {GetTag(typeid(Domain), typeid(RootVisitationDomain)), GetTag(typeid(Class), typeid(Domain))};
}

/// The conversions of one concrete class, in base order: the class itself, then its bases depth first, left to right.
class ZEL_API CastTable {
public:
    using Thunk = void * (*)(void * self);
    struct Entry {
        ClassInfo info;
        Thunk thunk;
    };

    explicit CastTable(std::initializer_list<Entry> entries);
    ~CastTable();
    CastTable(CastTable const &) = delete;
    CastTable & operator=(CastTable const &) = delete;

    /// The address of the part of `self` that `info` names, null if it has none.
    [[nodiscard]] void * cast(ClassInfo const & info, void * self) const noexcept {
        if (info.domainTag != fDomain || info.classTag >= fThunks.size()) {
            return nullptr;
        }
        Thunk const thunk = fThunks[info.classTag];
        return thunk != nullptr ? thunk(self) : nullptr;
    }

    /// The first entry, in base order, for which `table` has a method.
    [[nodiscard]] MethodInfo visitMethod(VisitTable const & table, void * self) const noexcept;

private:
    struct Tables;

    ZEL::internal::SoleOwner<Tables> fTables;
    LightVector<Thunk> fThunks; ///< by class tag; in the tables
    unsigned int fDomain;       ///< all entries of a table share one domain
};

/// The table of `Concrete` for the given interfaces, in base order. Each interface has `static ClassInfo const &
/// classInfo()`. Never freed, as bodies are asked for conversions to the very end of the process.
template <class Concrete, class... Interfaces> CastTable const & castTable() {
    static auto const & table =
        *new CastTable({CastTable::Entry{Interfaces::classInfo(), [](void * self) -> void * {
                                             return static_cast<Interfaces *>(static_cast<Concrete *>(self));
                                         }}...});
    return table;
}

} // namespace internal

/// Collects what a visitor or listener handles; its table is the argument of `getVisitMethod`.
class ZEL_API DispatchTable {
public:
    DispatchTable();
    DispatchTable(DispatchTable const & other);
    DispatchTable & operator=(DispatchTable const & other);
    ~DispatchTable();

    /// Registers `thunk` for the class; a second registration of one class replaces the first.
    void add(internal::ClassInfo const & info, internal::VisitThunk thunk);
    /// Valid until the next `add`.
    [[nodiscard]] internal::VisitTable table() const;

private:
    std::vector<std::vector<internal::VisitThunk>> fThunks;
    mutable std::vector<internal::LightVector<internal::VisitThunk>> fRows;
};

} // namespace CooperativeVisitor
} // namespace ZEL
