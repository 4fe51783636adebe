#pragma once

#include <ZEL/metamodel/NamespaceRegistry.h>

#include <gtest/gtest.h>
#include <kernel/ZEL/serializer/ContextText.h>

#include <map>

namespace ZEL::tests {

inline std::string const kUml = "http://example.org/uml";
inline std::string const kUml20 = "http://schema.omg.org/spec/UML/2.0";
inline std::string const kXmi = "http://schema.omg.org/spec/XMI/2.1";

/// With metamodels of the prefixes registered on which the rules of a dialect depend.
struct DialectTest : testing::Test {
    using Prefixes = std::map<std::string, std::string>; ///< by the URI of the metamodel

    explicit DialectTest(Prefixes prefixes = {{kUml, "uml"}}) : registered(std::move(prefixes)) {
        for (auto const & [uri, prefix] : registered) {
            NamespaceRegistry::instance()->bindMetaUriToPrefix(uri, prefix);
        }
    }
    ~DialectTest() override {
        for (auto const & [uri, prefix] : registered) {
            NamespaceRegistry::instance()->unbindPrefixMetaUri(uri);
        }
    }

    Prefixes const registered;
};

} // namespace ZEL::tests
