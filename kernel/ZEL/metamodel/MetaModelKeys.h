#pragma once

#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/values/Object.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace ZEL::internal {

class ModelCore;

/// The objects of a metamodel that have keys in `GlobalXMIIdToObjectMap`. Not counted: their model owns them.
struct KeyedObjects {
    MetaModelDescriptor const * descriptor;
    Deviant root;
    /// In the order of declaration: an enumeration or primitive type; a class, its own properties and its clones.
    std::vector<NSInterface::ObjectIntf *> objects;
    /// Each with the property from which it leads away.
    std::vector<std::pair<PropertyDescriptor const *, NSInterface::ObjectIntf *>> ownedEnds;
};

/// Enters the objects in the map, but not before somebody asks for it: the keys of a metamodel are thousands of texts,
/// and most programs never do. `objects` is given up.
void enterKeysLater(KeyedObjects & objects);
/// Enters all that wait. If it throws, they still wait.
void enterWaitingKeys(std::map<std::string, Object> & map);
/// Takes the keys of the model's objects out of the map.
void forgetKeys(MetaModelDescriptor const & descriptor, ModelCore const & model) noexcept;

} // namespace ZEL::internal
