#include <ZEL/interchange/CmofReadTransforms.h>
#include <ZEL/metamodel/Constants.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/dialects/DialectContexts.h>

#include <sstream>

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

/// A tag is applied to one element: to the first of several. That one is put last, since a property that takes one
/// value keeps the last one; the reader reports the others.
ContextSequence attach(Context const & elements) {
    std::istringstream ids(elements.getFirstValue());
    std::string reversed;
    for (std::string id; ids >> id;) {
        reversed = reversed.empty() ? id : id + ' ' + reversed;
    }
    Context base = elements;
    base.setRole({}, "base_Element");
    base.setAttribute(reversed);
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
}

} // namespace ZEL::Interchange
