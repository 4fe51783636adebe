#pragma once

#include <ZEL/serializer/Context.h>
#include <ZEL/serializer/XmiConstants.h>

#include <hasp_util/XmlConstants.h>

#include <string>
#include <string_view>
#include <utility>

namespace ZEL::Serializer {

/// The pattern of a rule, put together pair by pair. A name without a URI is one in no namespace.
class Pattern {
public:
    Pattern & role(std::string_view uri, std::string_view name) {
        fContext.setRole(uri, name);
        return *this;
    }
    Pattern & role(std::string_view name) { return role(HASP::XmlConstants::NULL_NS_URI, name); }
    Pattern & type(std::string_view uri, std::string_view name) {
        fContext.setType(uri, name);
        return *this;
    }
    Pattern & parentRole(std::string_view uri, std::string_view name) {
        fContext.setParentRole(uri, name);
        return *this;
    }
    Pattern & parentRole(std::string_view name) { return parentRole(HASP::XmlConstants::NULL_NS_URI, name); }
    Pattern & parentType(std::string_view uri, std::string_view name) {
        fContext.setParentType(uri, name);
        return *this;
    }

    explicit(false) operator Context const &() const noexcept { return fContext; }

private:
    Context fContext;
};

/// A rule, and its result: the Context is left out, with all that lies below it.
inline Context skipped(Context const & context) {
    Context copy = context;
    copy.setSkipState(true);
    return copy;
}

/// An element that a rule makes. Without an id it gets no `xmi:id`.
inline Context makeElement(QualifiedName role, QualifiedName type, std::string id) {
    Context element;
    element.setRole(role);
    element.setType(type);
    element.setElement(std::move(id));
    return element;
}

/// The element around this one, by its names alone.
inline Context parentOf(Context const & context) {
    return makeElement(context.getParentRole(), context.getParentType(), {});
}

/// A block for what only one tool understands.
inline Context makeExtension() {
    Context extension = makeElement({XmiConstants::XMI_NS_URI, "Extension"}, {}, {});
    extension.setExtension(true);
    return extension;
}

/// An attribute, in no namespace, of an element that a rule makes.
inline Context makeAttribute(Context const & parent, std::string_view name, std::string value) {
    Context attribute;
    attribute.setRole(HASP::XmlConstants::NULL_NS_URI, name);
    attribute.setParent(parent);
    attribute.setAttribute(std::move(value));
    attribute.setExtension(parent.isExtension());
    return attribute;
}

/// A link, by id, of an element that a rule makes.
inline Context makeReference(Context const & parent, std::string_view name, QualifiedName type, std::string value) {
    Context reference;
    reference.setRole(HASP::XmlConstants::NULL_NS_URI, name);
    reference.setType(type);
    reference.setParent(parent);
    reference.setReference(std::move(value));
    return reference;
}

} // namespace ZEL::Serializer
