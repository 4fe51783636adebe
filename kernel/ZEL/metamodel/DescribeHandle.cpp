#include <ZEL/String.h>
#include <ZEL/base/LiveObjectTable.h>
#include <ZEL/deviants/DeviantImpl.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/DescribeHandle.h>
#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/sequences/PropertyToSequenceMethods.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

namespace ZEL::internal {
namespace {

/// The object that the address lies in. Looks only at memory that is known to be an object.
ObjectIntf const * objectAt(void const * address) {
    auto const * const object = dynamic_cast<ObjectIntf const *>(liveObjectBefore(address));
    if (object == nullptr) {
        return nullptr;
    }
    auto const * const begin = static_cast<char const *>(dynamic_cast<void const *>(object));
    return static_cast<char const *>(address) < begin + object->getByteSize() ? object : nullptr;
}

PropertyDescriptor const * nameProperty(ClassDescriptor const & descriptor) {
    auto const isName = [](PropertyDescriptor const & property) {
        return PropertyView::roleOf(property.name) == PropertyView::Role::Name &&
               property.typeName == std::string_view("ZEL.String") && property.storage == Storage::Field &&
               !property.isMany();
    };
    auto const & own = descriptor.ownProperties;
    if (auto const found = std::find_if(own.begin(), own.end(), isName); found != own.end()) {
        return &*found;
    }
    auto const & clones = descriptor.clones;
    auto const clone = std::find_if(clones.begin(), clones.end(), [&](auto const * each) { return isName(*each); });
    return clone == clones.end() ? nullptr : *clone;
}

std::optional<std::string> nameOf(BodyCore & body, Deviant deviant) {
    PropertyDescriptor const * const property = nameProperty(body.internal_descriptor());
    if (property == nullptr || !property->single->has(&body, deviant)) {
        return std::nullopt;
    }
    return Generic::RefTraits<String>::fromRef(property->single->get(&body, deviant)).str();
}

std::string describeBody(BodyCore & body, Deviant deviant) {
    std::string text = body.internal_descriptor().orcaName;
    text += " [id = " + std::to_string(body.internal_id()) + "]";
    if (body.internal_getDeviation(Deviant()) == Deviant::ModelDestroyed || deviant.hasModelBeenDestroyed()) {
        return text + ", its model has been destroyed";
    }
    std::string const inDeviant = deviant.isRootDeviant() ? "" : " in deviant \"" + deviant.getName() + '"';
    if (!deviant.isValid()) {
        return text + inDeviant + ", which has been removed";
    }
    if (!body.deviant_isValid(deviant)) {
        return text + ", not present" + inDeviant;
    }
    if (std::optional<std::string> const name = nameOf(body, deviant)) {
        text += " \"" + *name + '"';
    }
    return text + inDeviant;
}

std::string describe(void const * address, void const * deviant) {
    if (address == nullptr) {
        return "null";
    }
    ObjectIntf const * const object = objectAt(address);
    if (object == nullptr) {
        return "not a live object";
    }
    BodyCore * const body = object->internal_body();
    if (body == nullptr) {
        return std::string(object->getOrcaName(false)) + " \"" + object->toString(Deviant()).str() + '"';
    }
    DeviantIdentity * const identity = knownIdentity(deviant);
    return deviant != nullptr && identity == nullptr ? "not a handle's deviant"
                                                     : describeBody(*body, Deviant(identity));
}

} // namespace
} // namespace ZEL::internal

char const * zel_describe_handle(void const * body, void const * deviant) noexcept {
    static std::string text;
    try {
        text = ZEL::internal::describe(body, deviant);
        return text.c_str();
    } catch (...) {
        return "cannot be described";
    }
}
