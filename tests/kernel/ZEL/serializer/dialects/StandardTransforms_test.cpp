#include "DialectTest.h"

#include <ZEL/serializer/dialects/StandardReadTransforms.h>
#include <ZEL/serializer/dialects/StandardWriteTransforms.h>

namespace ZEL::tests {
namespace {

using Serializer::StandardReadTransforms;
using Serializer::StandardWriteTransforms;

std::string const kZel = "http://schema.omg.org/spec/MOF/2.0";

/// An element with an attribute.
ContextSequence with(Context const & parent, std::string const & uri, std::string const & name,
                     std::string const & value) {
    return both(parent, attributeOf(parent, uri, name, value));
}

struct StandardTransforms : DialectTest {};

TEST_F(StandardTransforms, ReadRulesRewriteTheEnvelope) {
    Context const xmi = element(kXmi, "XMI");
    Context const extension = element(kXmi, "Extension");
    Context const model = element(kUml, "Model", "m");
    Context const model20 = element(kUml20, "Model", "m");
    Context const zelModel = element(kZel, "MetaModel", "m");
    Context const link = nested("type", kUml, "Class");
    std::string const x = "{" + kXmi + "}";

    std::pair<ContextSequence, std::string> const rows[] = {
        {xmi, ""},
        {with(xmi, kXmi, "version", "2.1"), ""},
        {with(xmi, kXmi, "version", "2.0"), "e!* " + x + "XMI=2.0 a " + x + "version=2.0"},
        {element(kXmi, "Documentation"), "e! " + x + "Documentation="},
        {with(model, "", "nextIdValue", "_zel_u_9"), "e {" + kUml + "}Model=m"},
        {with(model20, "", "nextIdValue", "_zel_u_9"), "e {" + kUml20 + "}Model=m"},
        {with(zelModel, "", "nextIdValue", "9"), "e {" + kZel + "}MetaModel=m a {}nextIdValue=9"},
        {extension, ""},
        {with(extension, "", "nextIdValue", "_zel_u_9"), ""},
        {with(extension, "", "extender", "The Quillon Inc."), ""},
        {with(extension, "", "extender", "Another Tool"), "e!* " + x + "Extension=Another Tool"},
        {element(kUml, "Profile", "p"), "e! {" + kUml + "}Profile=p"},
        {nested("packagedElement", kUml20, "Profile", "p"), "e! {}packagedElement=p"},
        {with(model, "", "uri", "file:///old"), "e {" + kUml + "}Model=m"},
        {with(model20, "", "uri", "file:///old"), "e {" + kUml20 + "}Model=m"},
        {with(zelModel, "", "uri", "u"), "e {" + kZel + "}MetaModel=m a {}uri=u"},
        {with(link, "", "href", "f.xmi#1"), "r {}type=f.xmi#1"},
        {with(link, kXmi, "idref", "1"), "r {}type=1"},
        {with(model, "", "name", "n"), "e {" + kUml + "}Model=m a {}name=n"},
    };
    for (auto const & [input, expected] : rows) {
        EXPECT_EQ(textOf(StandardReadTransforms().apply(input)), expected) << textOf(input);
    }
}

TEST_F(StandardTransforms, MetaUriIsTakenWhenTheTransformerIsMade) {
    NamespaceRegistry::instance()->unbindPrefixMetaUri(kUml);
    StandardReadTransforms without;
    NamespaceRegistry::instance()->bindMetaUriToPrefix(kUml, "uml");
    StandardReadTransforms with;
    Context const profile = element(kUml, "Profile");
    EXPECT_FALSE(without.apply(profile).front().skipContext());
    EXPECT_TRUE(with.apply(profile).front().skipContext());
}

TEST_F(StandardTransforms, DocumentationIsWrittenBeforeAModelAlone) {
    StandardWriteTransforms transforms;
    std::string const x = "{" + kXmi + "}";
    ContextSequence const head = transforms.preApply(element(kUml, "Model", "m"));
    EXPECT_EQ(textOf(head), "e " + x + "Documentation= a {}exporter=The Quillon Inc. a {}exporterVersion=1.0");
    EXPECT_EQ(head.elementCount(), 1U);
    EXPECT_TRUE(head.front().isParentOf(head.back()));
    EXPECT_TRUE(transforms.preApply(element(kUml, "Package", "p")).empty());
    EXPECT_TRUE(transforms.preApply(element(kZel, "MetaModel", "m")).empty());
    EXPECT_TRUE(transforms.postApply(element(kUml, "Model", "m")).empty());
    EXPECT_EQ(textOf(transforms.apply(element(kUml, "Model", "m"))), "e {" + kUml + "}Model=m");
}

} // namespace
} // namespace ZEL::tests
