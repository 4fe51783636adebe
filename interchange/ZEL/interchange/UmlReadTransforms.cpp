#include <ZEL/interchange/UmlReadTransforms.h>
#include <ZEL/metamodel/Constants.h>
#include <ZEL/metamodel/NamespaceRegistry.h>

#include <algorithm>
#include <string_view>

namespace ZEL::Interchange {

using Serializer::Context;
using Serializer::ContextSequence;
using Serializer::QualifiedName;

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
           isVersion(between(uri, std::string(EMF_SCHEMA_BASE) + "/uml2/", "/UML"));
}

UmlReadTransforms::UmlReadTransforms() : fUml(NamespaceRegistry::instance()->getMetaUri("uml")) {
    if (!fUml.empty()) {
        addTransform(Context(), [this](Context const & context) { return translate(context); });
    }
}

ContextSequence UmlReadTransforms::translate(Context const & context) {
    Context result = context;
    result.setRole(translated(context.getRole()));
    result.setType(translated(context.getType()));
    result.setParentRole(translated(context.getParentRole()));
    result.setParentType(translated(context.getParentType()));
    if (result.isElement()) {
        bool const isDiagram = result.getUri() == fUml && result.getRoleName() == "Diagram";
        result.setSkipState(result.skipContext() || isDiagram);
        if (result.getType() == QualifiedName(fUml, "Model") && !result.getRole().hasUri()) {
            result.setType(fUml, "Package"); // a model can only be the whole
        }
    } else if (result.getRoleName() == "value") {
        std::string const & type = result.getParentTypeName();
        std::string const & value = result.getFirstValue();
        if (type == "LiteralUnlimitedNatural" && value == "-1") {
            result.setAttribute("*");
        } else if (type == "LiteralBoolean" && (value == "1" || value == "0")) {
            result.setAttribute(value == "1" ? "true" : "false");
        }
    }
    return result;
}

QualifiedName UmlReadTransforms::translated(QualifiedName name) {
    if (!name.hasUri()) {
        return name;
    }
    auto const [entry, isNew] = fNames.try_emplace(name, name);
    if (isNew && isUmlNamespace(name.getUri())) {
        entry->second = QualifiedName(fUml, name.getName());
    }
    return entry->second;
}

} // namespace ZEL::Interchange
