#include <ZEL/Exception.h>
#include <ZEL/serializer/NamespaceManager.h>

#include <hasp_util/XmlConstants.h>

#include <gtest/gtest.h>

namespace ZEL::Serializer {
namespace {

TEST(NamespaceContext, NewOneKnowsTheXmlPrefixAlone) {
    NamespaceContext context;
    EXPECT_EQ(context.lookupNamespace("xml"), "http://www.w3.org/XML/1998/namespace");
    EXPECT_EQ(context.lookupPrefix("http://www.w3.org/XML/1998/namespace"), "xml");
    EXPECT_EQ(context.lookupNamespace("a"), "");
    EXPECT_EQ(context.lookupPrefix("u"), HASP::XmlConstants::DEFAULT_NS_PREFIX);
    EXPECT_EQ(context.defaultNamespace(), "");
    context.clear();
    EXPECT_EQ(context.lookupNamespace("xml"), "");
}

TEST(NamespaceContext, FirstOfSeveralBindingsCounts) {
    NamespaceContext context;
    context.addNamespace("b", "u1");
    context.addNamespace("b", "u2");
    context.addNamespace("a", "u2");
    EXPECT_EQ(context.lookupNamespace("b"), "u1");
    EXPECT_EQ(context.lookupPrefix("u2"), "a");
}

TEST(NamespaceContext, RemovalByPrefixAndUriIgnoresTheUri) {
    NamespaceContext context;
    context.addNamespace("a", "u1");
    context.addNamespace("a", "u2");
    context.removeNamespace("a", "other");
    EXPECT_EQ(context.lookupNamespace("a"), "");
}

TEST(NamespaceContext, SecondDefaultNamespaceReplacesTheFirst) {
    NamespaceContext context;
    context.addNamespace("xmlns", "u1");
    context.addNamespace("xmlns", "u2");
    EXPECT_EQ(context.defaultNamespace(), "u2");
    context.addNamespace("xmlns", "a text that is too long to lie in the string itself");
    context.addNamespace("xmlns", context.defaultNamespace());
    EXPECT_EQ(context.defaultNamespace(), "a text that is too long to lie in the string itself");
    context.removeNamespace("xmlns");
    EXPECT_EQ(context.defaultNamespace(), "");
}

TEST(NamespaceContext, ChangeOfACopyLeavesTheOriginalAlone) {
    NamespaceContext original;
    original.addNamespace("a", "u");
    NamespaceContext copy = original;
    copy.addNamespace("b", "v");
    copy.removeNamespace("a");
    EXPECT_EQ(original.lookupNamespace("a"), "u");
    EXPECT_EQ(original.lookupNamespace("b"), "");
}

TEST(NamespaceManager, InnerScopeSeesTheOuterBindingsAndTakesItsOwnAlong) {
    NamespaceManager manager;
    manager.addNamespace("a", "u");
    manager.pushContext();
    EXPECT_EQ(manager.lookupNamespace("a"), "u");
    manager.addNamespace("b", "v");
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
    EXPECT_EQ(manager.lookupNamespace("xml"), "http://www.w3.org/XML/1998/namespace");
    manager.addNamespace("b", "v");
    try {
        manager.popContext();
        FAIL() << "nothing raised";
    } catch (Exception const & exception) {
        EXPECT_STREQ(exception.what(), "popContext() invalid on empty Namespace stack");
    }
    EXPECT_EQ(manager.lookupNamespace("b"), "v");
}

} // namespace
} // namespace ZEL::Serializer
