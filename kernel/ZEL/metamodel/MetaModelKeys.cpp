#include <ZEL/metamodel/GlobalXMIIdToObjectMap.h>
#include <ZEL/metamodel/MetaModelKeys.h>
#include <ZEL/metamodel/ModelCore.h>

#include <string_view>

namespace ZEL::internal {

namespace {

using KeyMap = std::map<std::string, Object>;
using ObjectIntf = NSInterface::ObjectIntf;

/// Never freed: metamodels end after the statics of this library.
std::vector<KeyedObjects> & waiting() {
    static auto & all = *new std::vector<KeyedObjects>;
    return all;
}

/// The part of a property's key after "ZEL.X::".
std::string_view keyTail(PropertyDescriptor const & property) {
    std::string_view const key(property.key);
    return key.substr(key.find("::") + 2);
}

/// Enters the objects of one metamodel.
class KeyWriter {
public:
    KeyWriter(KeyedObjects const & keyed, KeyMap & map)
        : fKeyed(keyed), fDescriptor(*keyed.descriptor), fMap(map), fNext(keyed.objects.begin()) {}

    void enterAll() {
        auto nextClass = fDescriptor.classes.begin();
        for (char const * const declared : fDescriptor.declareOrder) {
            std::string_view const name(declared);
            if (nextClass != fDescriptor.classes.end() && name == (*nextClass)->name) {
                enterClass(**nextClass++);
                continue;
            }
            enterDataType(name, fDescriptor.enumerations);
            enterDataType(name, fDescriptor.primitives);
        }
        for (auto const & [property, end] : fKeyed.ownedEnds) {
            std::string const name(property->association);
            enter(std::string(fDescriptor.ownedEndKeyPrefix) + name + "::" + std::string(fDescriptor.ownedEndKeyInfix) +
                      name + "-" + property->ownedEnd,
                  end);
        }
    }

private:
    template <class DataTypes> void enterDataType(std::string_view name, DataTypes const & types) {
        for (auto const & type : types) {
            if (name == type.name) {
                enterType(type.registeredName, type.name, *fNext++);
            }
        }
    }

    void enterClass(ClassDescriptor const & descriptor) {
        enterType(descriptor.orcaName, descriptor.name, *fNext++);
        for (PropertyDescriptor const & property : descriptor.ownProperties) {
            enterOwnProperty(property, *fNext++);
        }
        for (PropertyDescriptor const * const property : descriptor.clones) {
            enter(std::string(descriptor.orcaName).append("::").append(keyTail(*property)), *fNext++);
        }
    }

    void enterType(char const * registeredName, char const * name, ObjectIntf * type) {
        enter(registeredName, type);
        for (char const * const uri : fDescriptor.uris) {
            enter(std::string(uri).append("#").append(name), type);
        }
    }

    void enterOwnProperty(PropertyDescriptor const & descriptor, ObjectIntf * property) {
        enter(descriptor.key, property);
        std::string const dashed = std::string(descriptor.owner->name) + "-" + descriptor.name;
        std::string const regular = std::string(descriptor.owner->orcaName) + "." + descriptor.name;
        for (char const * const uri : fDescriptor.uris) {
            enter(std::string(uri).append("#").append(dashed), property);
            if (keyTail(descriptor) != regular) {
                enter(std::string(uri).append("#").append(keyTail(descriptor)), property);
            }
        }
    }

    void enter(std::string key, ObjectIntf * object) {
        fMap.insert_or_assign(std::move(key), Object(object, fKeyed.root));
    }

    KeyedObjects const & fKeyed;
    MetaModelDescriptor const & fDescriptor;
    KeyMap & fMap;
    std::vector<ObjectIntf *>::const_iterator fNext;
};

} // namespace

void enterKeysLater(KeyedObjects & objects) {
    GlobalXMIIdToObjectMap::internal_map(); // made now, so that it goes after the metamodel
    waiting().push_back(std::move(objects));
}

void enterWaitingKeys(KeyMap & map) {
    for (KeyedObjects const & objects : waiting()) {
        KeyWriter(objects, map).enterAll();
    }
    waiting() = {};
}

void forgetKeys(MetaModelDescriptor const & descriptor, ModelCore const & model) noexcept {
    std::erase_if(waiting(), [&](KeyedObjects const & objects) { return objects.descriptor == &descriptor; });
    // Also of those that waited: without memory for all keys some have been entered.
    std::erase_if(GlobalXMIIdToObjectMap::internal_map(), [&model](auto const & entry) {
        BodyCore const * const body = entry.second.getImplementationWithoutAssert()->internal_body();
        return body != nullptr && body->internal_model() == &model;
    });
}

} // namespace ZEL::internal
