#pragma once

#include <ZEL/serializer/Context.h>
#include <ZEL/serializer/ContextSequence.h>

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace ZEL::Serializer {

/// The data types that leave their components in files of Rhapsody, and the places to which they can go.
///
/// They are collected in the first traversal, and written before the first port that has a type. A part of the model
/// that is left out takes its ports with it, and so does a data type; such ports do not count.
class RhpMovedDataTypes {
public:
    /// Begins with a data type; what comes then, up to the end of the type, belongs to it.
    void beginType(Context const & dataType);
    void add(Context context);
    /// The end of an element, which may be the type's own.
    void endElement(std::string const & id);
    [[nodiscard]] bool isInType() const noexcept { return fKey.has_value(); }

    /// A component that may be left out, and what lies in it; without an id what is left out in any case.
    void beginPart(std::optional<std::string> id);
    /// The end of the part that was begun last.
    void endPart() noexcept { fCurrent = fParts[fCurrent].around; }
    /// A port that has a type, at the place at hand.
    void notePort() noexcept { fParts[fCurrent].hasPort |= !isInType(); }

    /// Whether a place is left if the components with these ids are left out.
    [[nodiscard]] bool havePlace(std::set<std::string> const & droppedIds) const;
    /// In the order of their names and ids. Elements know their depth, since names that recur do not show it.
    [[nodiscard]] ContextSequence all() const;

private:
    using Key = std::pair<Context, std::string>; ///< the id tells types apart that are equal as Contexts

    /// What begins the list stands for the model.
    struct Part {
        std::optional<std::string> id; ///< none if the part is left out in any case
        std::size_t around;            ///< the index of the part in which it lies
        bool hasPort;                  ///< one with a type
    };

    std::optional<Key> fKey; ///< of the type at hand
    ContextSequence fContexts;
    std::vector<std::string> fPath;      ///< ids of the elements around what comes next
    std::optional<std::size_t> fLeftOut; ///< the length of the path at the element that is left out
    std::map<Key, ContextSequence> fTypes;
    std::vector<Part> fParts{{std::string(), 0, false}}; ///< each after the one in which it lies
    std::size_t fCurrent = 0;                            ///< the index of the part at hand
};

} // namespace ZEL::Serializer
