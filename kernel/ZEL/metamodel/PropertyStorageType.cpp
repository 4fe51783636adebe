#include <ZEL/metamodel/PropertyStorage.h>
#include <ZEL/metamodel/PropertyStorageType.h>

namespace ZEL {

HASP::any PropertyStorageType::convertFromString(std::string const &, HASP::ErrorHolder & errors) const {
    internal::requireNoError(errors);
    return PropertyStorage();
}

std::string PropertyStorageType::convertToString(HASP::any const & value) const {
    (void)HASP::any_cast<PropertyStorage const &>(value);
    return {};
}

HASP::any PropertyStorageType::defaultConstruct() const { return PropertyStorage(); }

PropertyStorageType * PropertyStorageType::clone() const { return new PropertyStorageType(*this); }

} // namespace ZEL
