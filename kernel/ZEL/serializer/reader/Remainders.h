#pragma once

#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Remainder.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ZEL::Serializer {

class LinkedFiles;

/// What a run has read and no property could hold, by object, until it is set on the objects at the end of the run.
class Remainders {
public:
    /// Of the object, which must be valid. References stay valid until the next call.
    [[nodiscard]] Remainder & of(ClassObject const & object);
    /// A text that a property did not take: as an attribute, if one can stand for it.
    void keepText(ClassObject const & object, std::string_view property, std::string_view text, bool isFurther);
    /// The file declares a namespace. The first prefix of each counts.
    void noteNamespace(std::string const & prefix, std::string const & uri);
    /// Sets what is kept, in place of what objects have; passes over objects that have been destroyed. Targets of links
    /// get the names by which files are to name them.
    void settle(LinkedFiles const & files);
    /// Gives up all handles.
    void clear() noexcept;

private:
    struct Kept {
        ClassObject object;
        Remainder remainder;
    };

    std::vector<Kept> fKept;
    std::unordered_map<NSInterface::ObjectIntf const *, std::size_t> fPlaces; ///< in `fKept`
    std::unordered_map<std::string, std::string> fPrefixes;                   ///< by namespace
};

} // namespace ZEL::Serializer
