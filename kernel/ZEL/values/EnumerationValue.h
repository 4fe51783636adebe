#pragma once

#include <ZEL/values/EnumerationShape.h>

#include <hasp_util/SpecificEnumType.h>

#include <map>
#include <string>

namespace ZEL::internal {

/// The literals of a kind by their texts.
template <class Value> class EnumerationLiterals : public std::map<std::string, Value> {
public:
    using std::map<std::string, Value>::map;
};

template <class Kind> HASP::TypeInfo const & enumerationType() {
    static HASP::TypeInfo const info = HASP::SpecificEnumType<Kind>::Create(Kind::getLiterals());
    return info;
}

} // namespace ZEL::internal
