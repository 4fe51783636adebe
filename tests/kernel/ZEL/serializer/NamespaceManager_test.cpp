#include <ZEL/serializer/NamespaceManager.h>

#include <hasp_util/XmlConstants.h>

#include <support/ExpectRaises.h>

namespace ZEL::tests {
namespace {

using Serializer::NamespaceContext;
using Serializer::NamespaceManager;

constexpr char kXml[] = "http://www.w3.org/XML/1998/namespace";

TEST(NamespaceContext, NewOneKnowsTheXmlPrefixAlone) {
    NamespaceContext context;
    EXPECT_EQ(context.lookupNamespace("xml"), kXml);
    EXPECT_EQ(context.lookupPrefix(kXml), "xml");
    EXPECT_EQ(context.lookupNamespace("a"), "");
    EXPECT_EQ(context.lookupPrefix("u"), HASP::XmlConstants::DEFAULT_NS_PREFIX);
    EXPECT_EQ(context.defaultNamespace(), "");
    context.clear();
    EXPECT_EQ(context.lookupNamespace("xml"), "");
}

TEST(NamespaceContext, FirstOfSeveralBindingsCountsAndRemovalIgnoresTheUri) {
    NamespaceContext context;
    context.addNamespace("b", "u1");
    context.addNamespace("b", "u2");
    context.addNamespace("a", "u2");
    EXPECT_EQ(context.lookupNamespace("b"), "u1");
    EXPECT_EQ(context.lookupPrefix("u2"), "a");
    context.removeNamespace("b", "other");
    EXPECT_EQ(context.lookupNamespace("b"), "");
    EXPECT_EQ(context.lookupNamespace("a"), "u2");
}

TEST(NamespaceContext, SecondDefaultNamespaceReplacesTheFirst) {
    NamespaceContext context;
    context.addNamespace("xmlns", "u1");
    context.addNamespace("xmlns", "a text that is too long to lie in the string itself");
    context.addNamespace("xmlns", context.defaultNamespace());
    EXPECT_EQ(context.defaultNamespace(), "a text that is too long to lie in the string itself");
    context.removeNamespace("xmlns");
    EXPECT_EQ(context.defaultNamespace(), "");
}

TEST(NamespaceManager, InnerScopeSeesTheOuterBindingsAndTakesItsOwnAlong) {
    NamespaceManager manager;
    manager.addNamespace("a", "u");
    manager.pushContext();
    EXPECT_EQ(manager.lookupNamespace("a"), "u");
    manager.addNamespace("b", "v");
    manager.removeNamespace("a", "u");
    EXPECT_EQ(manager.lookupNamespace("b"), "v");
    manager.popContext();
    EXPECT_EQ(manager.lookupNamespace("a"), "u");
    EXPECT_EQ(manager.lookupNamespace("b"), "");
}

TEST(NamespaceManager, PopOfAnEmptyStackRaisesAndChangesNothing) {
    NamespaceManager manager;
    manager.pushContext();
    manager.addNamespace("a", "u");
    manager.clear();
    EXPECT_EQ(manager.lookupNamespace("a"), "");
    EXPECT_EQ(manager.lookupNamespace("xml"), kXml);
    manager.addNamespace("b", "v");
    EXPECT_RAISES("popContext() invalid on empty Namespace stack", manager.popContext());
    EXPECT_EQ(manager.lookupNamespace("b"), "v");
}

} // namespace
} // namespace ZEL::tests
