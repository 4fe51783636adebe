#pragma once

#include <ZEL/Export.h>
#include <ZEL/values/BoxedType.h>
#include <ZEL/values/Object.h>

#include <hasp_util/TypeInfo.h>

#include <cstdint>
#include <map>
#include <string>

namespace ZEL {

class ImmutableDataType;

namespace internal {
class LateTypes;
} // namespace internal

/// The process's types by name: of "ZEL.Integer" how its values are read and printed, and the metamodel's object for
/// it.
///
/// Filled when a metamodel is built and emptied when it goes: of the first one at the first question. Holds a count on
/// each metamodel object that is registered. "An Internal Error has occurred" is the text of all its errors.
class ZEL_API TypeInfoRegistry {
public:
    TypeInfoRegistry() = delete;

    /// Throws if the name is taken.
    static void registerTypeInfo(std::string const & name, HASP::TypeInfo const & info);
    /// `type` is a `DataType`. Throws if the name is taken, or if `type` is not valid; in the latter case the type info
    /// stays registered.
    static void registerMetaType(std::string const & name, HASP::TypeInfo const & info, ImmutableObject const & type);
    /// Both do nothing for an unknown name; the first leaves the metamodel's object in place.
    static void unregisterTypeInfo(std::string const & name);
    static void unregisterMetaType(std::string const & name);

    /// Throws if the name is unknown.
    [[nodiscard]] static HASP::TypeInfo getTypeInfo(std::string const & name);
    /// Null if there is none.
    template <class DataType = ImmutableDataType> [[nodiscard]] static DataType getMetaType(std::string const & name) {
        return DataType(getMetaTypeObject(name));
    }
    [[nodiscard]] static bool hasType(std::string const & name);

    // --- for the kernel's own use ----------------------------------------------------------------------------------
    /// Null if the name is unknown; good until it is unregistered.
    [[nodiscard]] static HASP::TypeInfo const * findTypeInfo(std::string const & name);
    /// `getMetaType` as the most general handle.
    [[nodiscard]] static ImmutableObject getMetaTypeObject(std::string const & name);
    /// What is made of both at the first question; null if the name is unknown. Good until it is unregistered, for who
    /// holds no count.
    [[nodiscard]] static internal::BoxedType * findBoxedType(std::string const & name);
    /// Another number after each change of what is registered, never 0: as long as it stays, so do the answers.
    [[nodiscard]] static std::uint64_t generation() noexcept { return fGeneration; }
    /// Has `types` registered before the first question or change. False, and nothing done, unless nothing is registered
    /// and nobody else waits: only then it is certain that no name will be found to be taken.
    [[nodiscard]] static bool internal_registerLater(internal::LateTypes const & types);
    /// Whether `types` still waited; it does no longer.
    [[nodiscard]] static bool internal_forgetLater(internal::LateTypes const & types) noexcept;

private:
    /// The maps, with what has waited.
    static std::map<std::string, HASP::TypeInfo> & getTypeInfoMap();
    static std::map<std::string, ImmutableObject> & getMetaTypeMap();
    /// To be called when what is registered under the name changes.
    static void forget(std::string const & name);

    static void registerWaiting();

    static std::uint64_t fGeneration;
};

} // namespace ZEL
