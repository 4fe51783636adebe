#include <hasp_util/Type.h>
#include <hasp_util/TypeInfo.h>

#include <stdexcept>

namespace HASP {

TypeInfo::TypeInfo(Type * type) noexcept : fType(type) {
    if (fType != nullptr) {
        ++fType->fHandles;
    }
}

TypeInfo::~TypeInfo() {
    if (fType != nullptr && --fType->fHandles == 0) {
        delete fType;
    }
}

Type const & TypeInfo::type() const {
    if (fType == nullptr) {
        throw std::logic_error("TypeInfo: the handle is null");
    }
    return *fType;
}

any TypeInfo::convertFromString(std::string const & text, ErrorHolder & errors) const {
    return type().convertFromString(text, errors);
}

std::string TypeInfo::convertToString(any const & value) const { return type().convertToString(value); }

any TypeInfo::defaultConstruct() const { return type().defaultConstruct(); }

bool TypeInfo::isValid(any const & value) const { return type().isValid(value); }

bool TypeInfo::isEqualTo(any const & left, any const & right) const { return type().isEqualTo(left, right); }

bool TypeInfo::isLessThan(any const & left, any const & right) const { return type().isLessThan(left, right); }

} // namespace HASP
