#pragma once

#include <ZEL/serializer/writer/PropertyPartition.h>

#include <hasp_util/XmlName.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace HASP {
class XmlWriter;
} // namespace HASP

namespace ZEL::Serializer {

/// How the objects of one metaclass are written straight from their states: what is the same for all of them, found
/// once.
struct WritePlan {
    /// A single value of a data type.
    struct Value {
        WrittenProperty const * property;
        internal::ValueDescriptor const * place; ///< null if the value is reached by the property's storage alone
        HASP::XmlName name;
        std::vector<std::optional<std::string>> literals; ///< texts by index, as far as met
    };
    /// Links to objects that stand elsewhere.
    struct Links {
        WrittenProperty const * property;
        internal::FieldDescriptor const * field; ///< null as above
        HASP::XmlName name;
    };
    /// Objects that are written within.
    struct Part {
        WrittenProperty const * property;
        internal::FieldDescriptor const * field; ///< null as above
        HASP::XmlName name;
        bool isContainment; ///< whether the objects in the field are contained
    };

    /// Looks at all names. Throws `std::runtime_error` if XML cannot hold one of them.
    WritePlan(PropertyPartition const & thePartition, WrittenProperty const * stereotypeProperty,
              HASP::XmlWriter & xml);

    PropertyPartition const & partition;
    std::vector<Value> values;
    std::vector<Links> links;
    std::vector<Part> parts;
    std::vector<internal::FieldDescriptor const *> otherContainments; ///< of what is contained and not written within
    std::optional<Part> stereotypes; ///< those applied to it, whose parts are looked at before anything is written
    bool isCollected = false;
    std::string typeName; ///< of the class with its prefix; empty until an object has been written
};

} // namespace ZEL::Serializer
