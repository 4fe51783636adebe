#pragma once

#include <ZEL/serializer/Context.h>
#include <ZEL/serializer/ContextSequence.h>
#include <ZEL/serializer/Transformer.h>

namespace ZEL::tests {

using Serializer::Context;
using Serializer::ContextSequence;
using Serializer::Transformer;

/// A Transformer whose rules and hooks a test adds.
struct Rules : Transformer {
    using Transformer::addPostTransform;
    using Transformer::addPreTransform;
    using Transformer::addTransform;
    using Transformer::setOnCreate;
    using Transformer::setPostTransform;
    using Transformer::setResolveReference;
};

/// The pattern of a rule for elements and attributes of a name.
inline Context role(std::string const & name, std::string const & uri = "") {
    Context context;
    context.setRole(uri, name);
    return context;
}

inline Context skipped(Context context) {
    context.setSkipState(true);
    return context;
}

/// What the reader makes of an element without `xmi:type`, which is its own type.
inline Context element(std::string const & uri, std::string const & name, std::string const & id = "") {
    Context context = role(name, uri);
    context.setType(uri, name);
    context.setElement(id);
    return context;
}

/// A nested element, in no namespace, of the given type.
inline Context nested(std::string const & name, std::string const & typeUri, std::string const & typeName,
                      std::string const & id = "") {
    Context context = role(name);
    context.setType(typeUri, typeName);
    context.setElement(id);
    return context;
}

inline Context below(Context const & parent, Context context) {
    context.setParent(parent);
    return context;
}

inline Context attributeOf(Context const & parent, std::string const & uri, std::string const & name,
                           std::string const & value) {
    Context context = role(name, uri);
    context.setParent(parent);
    context.setAttribute(value);
    return context;
}

inline Context linkOf(Context const & parent, std::string const & name, std::string const & value) {
    Context context = role(name);
    context.setParent(parent);
    context.setReference(value);
    return context;
}

inline ContextSequence both(Context const & first, Context const & second) {
    ContextSequence sequence(first);
    sequence.addContext(second);
    return sequence;
}

/// For each Context its kind, "!" if it is to be skipped, "*" if it is of an extension, its role and its values. "+" stands
/// for values that become elements.
inline std::string textOf(ContextSequence const & sequence) {
    std::string text;
    for (Context const & context : sequence) {
        text += text.empty() ? "" : " ";
        text += context.isElement() ? "e" : context.isAttribute() ? "a" : context.isReference() ? "r" : "?";
        text += context.skipContext() ? "!" : "";
        text += context.isExtension() ? "*" : "";
        text += context.isMultiValued() ? "+" : "";
        text += " {" + context.getUri() + "}" + context.getRoleName() + "=" + context.getFirstValue();
    }
    return text;
}

} // namespace ZEL::tests
