// The loop over the events of a file, and what an element becomes.

#include <ZEL/base/Exception.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/reader/XmiReaderImpl.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace ZEL::Serializer {
namespace {

Context makeAttribute(ParseState & state, HASP::XmlReader::Attribute const & attribute) {
    Context context;
    context.setParent(state.currentElement);
    context.setRole(state.roles.of(attribute.uri, attribute.localName));
    context.setAttribute(std::string(attribute.value));
    return context;
}

} // namespace

void XmiReaderImpl::pushState(std::string const & localFile) {
    HASP::XmlReaderSettings settings;
    settings.setDepthLimit(static_cast<std::uint32_t>(
        std::min<std::size_t>(fSettings.getMaximumElementDepth(), std::numeric_limits<std::uint32_t>::max())));
    fStates.emplace_back(localFile, settings);
}

void XmiReaderImpl::popState() {
    if (fStates.empty()) {
        raiseInternalError("Invalid popState() on empty stack in XmiReaderImpl");
    }
    fStates.pop_back();
}

Model XmiReaderImpl::run() {
    // The stack of states keeps its elements in place, so this reference outlives files that are read on the way.
    ParseState & current = state();
    while (current.xml.hasNext()) {
        switch (current.xml.next()) {
        case HASP::XmlReader::StartElement:
            startElement(current);
            break;
        case HASP::XmlReader::EndElement:
            endElement(current);
            break;
        case HASP::XmlReader::Characters:
            characters(current);
            break;
        default:
            break;
        }
    }
    if (current.xml.hasError()) {
        raiseParseError(current);
    }
    if (!isInLinkedFile()) {
        fLinks.resolve();
    }
    fResult = current.model;
    fTransformers.postTransform(fResult);
    return fResult;
}

void XmiReaderImpl::raiseParseError(ParseState const & state) {
    HASP::Location const place = state.xml.getLocation();
    raiseInternalError("Error encountered while parsing " + place.getSystemId() + " at line " +
                       std::to_string(place.getLineNumber()) + ", column " + std::to_string(place.getColumnNumber()) +
                       " : " + parseErrorOf(state));
}

/// What is wrong with the XML. Nobody may learn what is in a file by a link to it, so what is quoted of such a file is
/// left out; errors without a line are those of the file itself.
std::string XmiReaderImpl::parseErrorOf(ParseState const & state) const {
    std::string text = state.xml.error();
    std::size_t const first = text.find('\'');
    if (&state != &fStates.front() && state.xml.getLocation().getLineNumber() != 0 && first != std::string::npos) {
        text.replace(first + 1, text.rfind('\'') - first - 1, "...");
    }
    return text;
}

void XmiReaderImpl::startElement(ParseState & state) {
    QualifiedName const name = state.roles.of(&state.xml.getNamespaceURI(), &state.xml.getLocalName());
    state.elements.push_back({state.currentElement, state.objectDepth});
    state.hasRoot = true;
    if (state.isSkipping) {
        if (name == state.skipName && ++state.skipDepth == 0) {
            raiseInternalError("Invalid state in XmiReaderImpl (Too many levels of skipping)");
        }
        if (state.countsSkipped) {
            fReport.addSkippedContent(labelOfElement(state));
        }
        return;
    }
    for (HASP::XmlReader::Namespace const & binding : state.xml.namespaces()) {
        state.types.addNamespace(*binding.prefix, *binding.uri);
    }
    ContextSequence sequence = std::move(state.sequence);
    sequence.clear();
    makeContexts(state, sequence);
    process(state, std::move(sequence));
}

void XmiReaderImpl::makeContexts(ParseState & state, ContextSequence & sequence) {
    auto const attributes = state.xml.attributes();
    HASP::XmlReader::Attribute const * id = nullptr;
    HASP::XmlReader::Attribute const * type = nullptr;
    for (HASP::XmlReader::Attribute const & attribute : attributes) {
        if (attribute.uri == &state.xmiUri) {
            id = attribute.localName == &state.xmiId ? &attribute : id;
            type = attribute.localName == &state.xmiType ? &attribute : type;
        }
        state.hasVersion |= attribute.localName == &state.xmiVersion ||
                            (attribute.uri != &state.xmiUri && !attribute.uri->empty() && state.elements.size() == 1);
    }

    Context element;
    element.setParent(state.currentElement);
    element.setRole(state.roles.of(&state.xml.getNamespaceURI(), &state.xml.getLocalName()));
    element.setType(type == nullptr ? element.getRole() : state.types.of(type->value));
    state.currentElement = element;
    element.setElement(id == nullptr ? std::string() : std::string(id->value));

    sequence.reserve(attributes.size() + 1);
    sequence.addContext(std::move(element));
    for (HASP::XmlReader::Attribute const & attribute : attributes) {
        if (&attribute != id && &attribute != type) {
            sequence.addContext(makeAttribute(state, attribute));
        }
    }
}

void XmiReaderImpl::endElement(ParseState & state) {
    if (state.isInText) {
        applyText(state);
    }
    if (state.isSkipping && state.roles.of(&state.xml.getNamespaceURI(), &state.xml.getLocalName()) == state.skipName) {
        if (state.skipDepth > 0) {
            --state.skipDepth;
        } else {
            state.isSkipping = false;
        }
    }
    ParseState::OpenElement & open = state.elements.back();
    while (state.objectDepth > open.objectDepth) {
        leave(state);
    }
    state.currentElement = std::move(open.names);
    state.elements.pop_back();
}

void XmiReaderImpl::characters(ParseState & state) {
    if (state.isInText && !state.isSkipping) {
        state.text += state.xml.getText();
    }
}

} // namespace ZEL::Serializer
