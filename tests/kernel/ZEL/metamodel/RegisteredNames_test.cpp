// The names of types that the built-in metamodel registers: these and no others.

#include "kernel/ZEL/metamodel/ExpectedMetaModel.h"

#include <ZEL/metamodel/DataType.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/values/TypeInfoRegistry.h>

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace ZEL::tests {
namespace {

using TypeInfoMap = std::map<std::string, HASP::TypeInfo> & (*)();

// The registry has no listing, and no client needs one. An explicit instantiation may name what is private.
template <TypeInfoMap map> struct Listing {
    friend TypeInfoMap registeredTypes() { return map; }
};
TypeInfoMap registeredTypes();
template struct Listing<&TypeInfoRegistry::getTypeInfoMap>;

TEST(RegisteredNames, AreFourHundredAndTwo) {
    std::set<std::string> expected{"ZEL.Factory"};
    for (char const * const value :
         {"Integer", "Single", "Real", "String", "Double", "Boolean", "UnlimitedNatural", "Argument", "PersistenceKind",
          "PackageMergeKind", "ParameterDirectionKind", "VisibilityKind", "PropertyStorage"}) {
        std::string const name = value;
        EXPECT_TRUE(TypeInfoRegistry::getMetaType("ZEL." + name).isValid()) << name;
        for (std::string const & form :
             {name, name + "Iterator", name + "ImmutableIterator", "SequenceOf" + name, "ImmutableSequenceOf" + name}) {
            expected.insert("ZEL." + form);
        }
    }
    for (ExpectedClass const & row : expectedClasses()) {
        std::string const name = row.name;
        for (std::string const & element : {name, "Immutable" + name}) {
            for (std::string const & form : {element + "Iterator", element + "ImmutableIterator",
                                             "SequenceOf" + element, "ImmutableSequenceOf" + element}) {
                expected.insert("ZEL." + form);
            }
        }
    }
    EXPECT_EQ(402U, expected.size());

    std::set<std::string> registered;
    for (auto const & [name, info] : registeredTypes()()) {
        registered.insert(name);
    }
    EXPECT_EQ(expected, registered);
}

} // namespace
} // namespace ZEL::tests
