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
/// They are taken up in the first traversal, and written before the first port that has a type. A component that is
/// left out takes its ports along, so such a port counts only if it stands in no component of that kind.
class RhpMovedDataTypes {
public:
    /// Begins with a data type; what comes then, up to `endType`, belongs to it.
    void beginType(Context const & dataType);
    void add(Context const & context);
    void endType();

    // A component that may be left out, and what lies in it.
    void beginComponent(std::string const & id);
    void endComponent() noexcept { fCurrent = fComponents[fCurrent].around; }
    /// A port that has a type, in the component at hand.
    void notePort() noexcept { fComponents[fCurrent].hasPort = true; }

    /// Whether a place is left if the components with these ids are left out.
    [[nodiscard]] bool havePlace(std::set<std::string> const & droppedIds) const;
    /// In the order of their names and ids.
    [[nodiscard]] ContextSequence all() const;

private:
    using Key = std::pair<Context, std::string>; ///< the id tells types apart that are equal as Contexts

    /// What begins the list stands for the model.
    struct Component {
        std::string id;
        std::size_t around; ///< the index of the component in which it lies
        bool hasPort;       ///< one with a type
    };

    bool enterElement(Context const & element);

    std::optional<Key> fKey; ///< of the type at hand
    ContextSequence fContexts;
    std::vector<Context> fPath;          ///< the elements around what comes next
    std::optional<std::size_t> fLeftOut; ///< the length of the path at the element that is left out
    std::map<Key, ContextSequence> fTypes;
    std::vector<Component> fComponents{{{}, 0, false}}; ///< each behind the one in which it lies
    std::size_t fCurrent = 0;                           ///< the index of the component at hand
};

} // namespace ZEL::Serializer
