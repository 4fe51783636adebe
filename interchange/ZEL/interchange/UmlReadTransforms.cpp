#include <ZEL/interchange/UmlReadTransforms.h>
#include <ZEL/metamodel/Constants.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/dialects/DialectContexts.h>

#include <algorithm>
#include <string_view>

namespace ZEL::Interchange {

using Serializer::Context;
using Serializer::ContextSequence;
using Serializer::Pattern;
using Serializer::XmiConstants;

namespace {

/// Of digits and dots alone.
bool isVersion(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c == '.' || (c >= '0' && c <= '9'); });
}

/// What stands between the two; empty if `text` does not begin and end with them.
std::string_view between(std::string_view text, std::string const & begin, std::string_view end) {
    if (text.size() < begin.size() + end.size() || !text.starts_with(begin) || !text.ends_with(end)) {
        return {};
    }
    return text.substr(begin.size(), text.size() - begin.size() - end.size());
}

} // namespace

bool isUmlNamespace(std::string const & uri) {
    std::string_view const version = between(uri, std::string(OMG_SCHEMA_BASE) + "/spec/UML/", "");
    return (isVersion(version) && version.starts_with("2")) ||
           isVersion(between(uri, "http://www.omg.org/spec/UML/", "")) ||
           isVersion(between(uri, std::string(EMF_SCHEMA_BASE) + "/uml2/", "/UML"));
}

bool isXmiNamespace(std::string const & uri) {
    std::string_view const version = between(uri, std::string(OMG_SCHEMA_BASE) + "/spec/XMI/", "");
    return (isVersion(version) && version.starts_with("2")) || uri == "http://www.omg.org/XMI" ||
           isVersion(between(uri, "http://www.omg.org/spec/XMI/", ""));
}

UmlReadTransforms::UmlReadTransforms() : fUml(NamespaceRegistry::instance()->getMetaUri("uml")) {
    setKeepsRemainder(true);
    setTranslateNamespace([this](std::string const & uri) { return translated(uri); });
    // Those that can be read are told apart by their namespaces.
    addTransform(Pattern().role(XmiConstants::XMI_NS_URI, "version"), [](Context const & version) {
        return isVersion(version.getFirstValue()) && version.getFirstValue().starts_with("2")
                   ? ContextSequence()
                   : ContextSequence(version);
    });
    if (fUml.empty()) {
        return;
    }
    addTransform(Pattern().role(fUml, "Diagram"), [](Context const & diagram) {
        Context skipped = diagram;
        skipped.setSkipState(true);
        return ContextSequence(skipped);
    });
    addTransform(Pattern().parentType(fUml, "LiteralUnlimitedNatural").role("value"), [](Context const & value) {
        Context bound = value;
        if (value.getFirstValue() == "-1") {
            bound.setAttribute("*");
        }
        return ContextSequence(bound);
    });
    addTransform(Pattern().parentType(fUml, "LiteralBoolean").role("value"), [](Context const & value) {
        Context truth = value;
        std::string const & text = value.getFirstValue();
        if (text == "1" || text == "True" || text == "0" || text == "False") {
            truth.setAttribute(text == "1" || text == "True" ? "true" : "false");
        }
        return ContextSequence(truth);
    });
}

std::string UmlReadTransforms::translated(std::string const & uri) const {
    if (isXmiNamespace(uri)) {
        return XmiConstants::XMI_NS_URI;
    }
    std::string_view const mof = between(uri, "http://www.omg.org/spec/MOF/", "");
    if (isVersion(mof.substr(0, mof.find('/')))) {
        return METAMODEL_CMOF_URI;
    }
    return !fUml.empty() && isUmlNamespace(uri) ? fUml : uri;
}

} // namespace ZEL::Interchange
