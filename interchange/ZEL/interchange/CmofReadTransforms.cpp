#include <ZEL/interchange/CmofReadTransforms.h>
#include <ZEL/metamodel/Constants.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/dialects/DialectContexts.h>

namespace ZEL::Interchange {

using Serializer::Context;
using Serializer::ContextSequence;
using Serializer::Pattern;
using Serializer::XmiConstants;

namespace {

/// The model, and within it the package.
ContextSequence wrap(Context const & package) {
    Context model = package;
    model.setRole(package.getUri(), "MetaModel");
    model.setType(package.getTypeUri(), "MetaModel");
    model.setElement({});
    ContextSequence sequence(model);
    Context top = package;
    top.setRole({}, "topPackage");
    top.setParent(model);
    sequence.addContext(top);
    return sequence;
}

/// A tag is applied to one element: to the first of several. The links to the others are kept.
ContextSequence attach(Context const & elements) {
    Context base = elements;
    base.setRole({}, "base_Element");
    return base;
}

/// The link of a tag that has an element of its own.
ContextSequence attachElement(Context const & link) {
    Context base;
    base.setRole({}, "base_Element");
    base.setReference(link.getFirstValue());
    return base;
}

} // namespace

CmofReadTransforms::CmofReadTransforms() {
    std::string const foreign = NamespaceRegistry::instance()->getMetaUri("Foreign");
    for (char const * const cmof : {METAMODEL_URI, METAMODEL_CMOF_URI, METAMODEL_EMOF_URI}) {
        addTransform(Pattern().parentRole(XmiConstants::XMI_NS_URI, "XMI").role(cmof, "Package"), wrap);
        if (foreign.empty()) {
            continue;
        }
        addTransform(Pattern().parentRole(XmiConstants::XMI_NS_URI, "XMI").role(cmof, "Tag"),
                     [foreign](Context const & element) -> ContextSequence {
                         Context application = element;
                         application.setRole(foreign, "Tag");
                         application.setType(foreign, "Tag");
                         return application;
                     });
        addTransform(Pattern().parentRole(cmof, "Tag").role("element"), attach);
    }
    if (!foreign.empty()) {
        addTransform(Pattern().parentRole("", "element").role(XmiConstants::XMI_NS_URI, "idref"), attachElement);
        addTransform(Pattern().parentRole("", "element").role("href"), attachElement);
    }
}

} // namespace ZEL::Interchange
