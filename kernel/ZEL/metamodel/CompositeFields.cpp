#include <ZEL/metamodel/CompositeFields.h>

#include <array>
#include <cstdint>
#include <unordered_map>
#include <utility>

namespace ZEL::internal {

CompositeFields const & compositeFieldsOf(ClassDescriptor const & descriptor) {
    static std::array<std::pair<ClassDescriptor const *, CompositeFields const *>, 256> lately{};
    auto & known = lately[(reinterpret_cast<std::uintptr_t>(&descriptor) >> 4) % lately.size()];
    if (known.first == &descriptor) [[likely]] {
        return *known.second;
    }
    // Never freed: objects are read after the statics of this library have gone.
    static auto & all = *new std::unordered_map<ClassDescriptor const *, CompositeFields>;
    auto entry = all.find(&descriptor);
    if (entry == all.end()) {
        CompositeFields composites;
        for (FieldDescriptor const & field : descriptor.fields) {
            PropertyDescriptor const & property = *field.property;
            if (property.isComposite && !property.isDerived && property.typeClass != nullptr) {
                composites.push_back(&field);
            }
        }
        entry = all.emplace(&descriptor, std::move(composites)).first;
    }
    known = {&descriptor, &entry->second};
    return entry->second;
}

} // namespace ZEL::internal
