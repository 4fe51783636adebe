#include <ZEL/logging/LogLevel.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/writer/ContextPrinter.h>

#include <hasp_util/XmlConstants.h>
#include <hasp_util/XmlWriter.h>

#include <algorithm>

namespace ZEL::Serializer {

using HASP::XmlConstants;

std::size_t ContextPrinter::write(ContextSequence const & sequence, Elements elements, Level level) {
    static Context const none;
    Context const * skipped = &none;
    fPath.clear();
    for (Context const & context : sequence) {
        if (context.skipContext()) {
            skipped = &context;
            continue;
        }
        if (skipped->isParentOf(context)) {
            continue;
        }
        if (context.isElement()) {
            while (!fPath.empty() && !pathLeadsTo(context)) {
                end(elements == Elements::Open ? 1 : 0);
                fPath.pop_back();
            }
            fPath.push_back(&context);
            startElement(context, elements, level);
        } else if (context.isReference()) {
            writeReference(context);
        } else if (context.isAttribute()) {
            writeAttribute(context);
        }
    }
    return elements == Elements::Open ? fPath.size() : 0;
}

bool ContextPrinter::pathLeadsTo(Context const & element) const {
    return element.getDepth() != 0 ? fPath.size() < element.getDepth() : fPath.back()->isParentOf(element);
}

void ContextPrinter::end(std::size_t elements) {
    for (; elements != 0; --elements) {
        fXml.writeEndElement();
    }
}

void ContextPrinter::writeWhole(ContextSequence const & sequence, Level level) {
    bool const hasChildElements =
        sequence.elementCount() > 1 ||
        std::any_of(sequence.begin(), sequence.end(), [](Context const & context) { return context.isMultiValued(); });
    end(write(sequence, hasChildElements ? Elements::Open : Elements::Empty, level));
}

void ContextPrinter::startElement(Context const & context, Elements elements, Level level) {
    if (elements == Elements::Open) {
        fXml.writeStartElement(context.getRoleName(), context.getUri());
    } else {
        fXml.writeEmptyElement(context.getRoleName(), context.getUri());
    }
    if (!context.getFirstValue().empty()) {
        fXml.writeAttribute("id", XmiConstants::XMI_NS_URI, context.getFirstValue());
    }
    if (level == Level::Nested && context.getUri() != XmiConstants::XMI_NS_URI) {
        writeType(context.getType());
    }
}

std::string const & ContextPrinter::typeNameOf(QualifiedName type) {
    std::string & name = fTypeNames[type];
    if (name.empty()) {
        name = makeTypeName(type);
    }
    return name;
}

void ContextPrinter::writeType(QualifiedName type) {
    std::string const & name = typeNameOf(type);
    if (!name.empty()) {
        fXml.writeAttribute("type", XmiConstants::XMI_NS_URI, name);
    }
}

void ContextPrinter::writeReference(Context const & context) {
    if (!context.isMultiValued()) {
        fXml.writeAttribute(context.getRoleName(), context.getUri(), context.getFirstValue());
        return;
    }
    for (std::size_t i = 0; i < context.getValueCount(); ++i) {
        std::string const & href = context.getValue(i);
        std::string const * const content = fLinkContents ? fLinkContents(context.getRoleName(), href) : nullptr;
        if (content == nullptr) {
            fXml.writeEmptyElement(context.getRoleName(), context.getUri());
        } else {
            fXml.writeStartElement(context.getRoleName(), context.getUri());
        }
        writeType(context.getType());
        fXml.writeAttribute("href", XmlConstants::NULL_NS_URI, href);
        if (content != nullptr) {
            fXml.writeMarkup(*content);
            fXml.writeEndElement();
        }
    }
}

void ContextPrinter::writeAttribute(Context const & context) {
    if (context.isMultiValued()) {
        writeValues(context);
    } else if (context.getUri() == XmlConstants::XMLNS_ATTRIBUTE_NS_URI) {
        fXml.writeNamespace(context.getRoleName(), context.getFirstValue());
        fNamespaces.emplace(context.getFirstValue(), context.getRoleName());
    } else {
        fXml.writeAttribute(context.getRoleName(), context.getUri(), context.getFirstValue());
    }
}

void ContextPrinter::writeValues(Context const & context) {
    if (!fIsElementPerValue && context.getValueCount() > 1) {
        ++fJoinedValues[context.getParentTypeName() + "." + context.getRoleName()];
    }
    fXml.writeStartElement(context.getRoleName(), context.getUri());
    for (std::size_t i = 0; i < context.getValueCount(); ++i) {
        if (fIsElementPerValue && i != 0) {
            fXml.writeEndElement();
            fXml.writeStartElement(context.getRoleName(), context.getUri());
        }
        fXml.writeValue(context.getValue(i));
    }
    fXml.writeEndElement();
}

void ContextPrinter::logJoinedValues() const {
    for (auto const & [property, count] : fJoinedValues) {
        Logger::instance()->warning(
            "Objects whose values of property %s stand in one element, to be read back as one: %s", property.c_str(),
            std::to_string(count).c_str());
    }
}

std::string ContextPrinter::makeTypeName(QualifiedName type) {
    std::string prefix = NamespaceRegistry::instance()->getPrefixFromMetaUri(type.getUri());
    if (prefix.empty()) {
        auto const found = fNamespaces.find(type.getUri());
        if (found != fNamespaces.end()) {
            prefix = found->second;
        }
    }
    if (prefix.empty()) {
        Logger::instance()->log(LogLevel(LogLevel::error), Messages::ZEL_Serializer_XmiWriter_UriLookup,
                                type.getUri().c_str(), type.getUri().c_str(), type.getName().c_str());
        return {};
    }
    return prefix + ":" + type.getName();
}

} // namespace ZEL::Serializer
