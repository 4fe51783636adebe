// What comes out of the rules, applied to objects.

#include <ZEL/base/Exception.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/metamodel/Constants.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/reader/XmiReaderImpl.h>

#include <hasp_util/Uri.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace ZEL::Serializer {
namespace {

std::string labelOf(std::string const & uri, std::string const & name) {
    return uri.empty() ? name : "{" + uri + "}" + name;
}
std::string labelOf(QualifiedName name) { return labelOf(name.getUri(), name.getName()); }

/// Whether the namespace is that of a version of XMI.
bool isXmiNamespace(std::string_view uri) {
    static std::string const earlier = std::string(OMG_SCHEMA_BASE) + "/spec/XMI/";
    return uri.starts_with(earlier) || uri.starts_with("http://www.omg.org/spec/XMI/") ||
           uri == "http://www.omg.org/XMI";
}

bool isBlank(char c) noexcept { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

/// The text up to the next blank, taken off `rest`; empty if nothing but blanks is left. Links are so many that a
/// general tokenizer shows in the time of a read.
std::string_view takeToken(std::string_view & rest) noexcept {
    std::size_t begin = 0;
    while (begin < rest.size() && isBlank(rest[begin])) {
        ++begin;
    }
    std::size_t end = begin;
    while (end < rest.size() && !isBlank(rest[end])) {
        ++end;
    }
    std::string_view const token = rest.substr(begin, end - begin);
    rest.remove_prefix(end);
    return token;
}

} // namespace

void XmiReaderImpl::process(ParseState & state, ContextSequence && sequence) {
    ContextSequence applied = fTransformers.apply(std::move(sequence));
    Context skipped;
    bool entered = false;
    bool isFirst = true;
    if (isOfOtherVersion(state, applied)) {
        startSkipping(state);
        applied.clear();
    }
    for (Context & context : applied) {
        if (context.skipContext() && (context.isExtension() || context.isElement())) {
            state.isForeign = state.isForeign || context.isExtension();
            skipped = context;
            // The first element stands for the one in the file, even if rules have given it other names.
            if (isFirst || context == state.currentElement) {
                startSkipping(state);
            }
        } else if ((context.isAttribute() || context.isReference()) && skipped.isParentOf(context)) {
            continue;
        } else {
            applyContext(state, context, entered);
            if (state.isSkipping) {
                skipped = context;
            }
        }
        isFirst = isFirst && !context.isElement();
    }
    state.sequence = std::move(applied);
}

void XmiReaderImpl::applyContext(ParseState & state, Context & context, bool & entered) {
    bool const isInObject = state.cursor.metaClass != nullptr;
    if (context.isElement()) {
        Made made = isInObject ? makeChild(state, context) : makeTopLevel(state, context);
        if (made.metaClass != nullptr) {
            if (entered && isInObject) {
                leave(state);
            }
            entered = isInObject;
            enter(state, std::move(made), std::move(context));
        }
    } else if (isInObject && context.isAttribute()) {
        applyAttribute(state, context);
    } else if (isInObject && context.isReference()) {
        applyReference(state, context);
    }
}

/// Whether the element says, after all rules, that it is of another version of XMI. The root of a file does so, too, by
/// any attribute in the namespace of another version: ids and types could not be told there.
bool XmiReaderImpl::isOfOtherVersion(ParseState & state, ContextSequence const & applied) {
    if (!std::exchange(state.hasVersion, false)) {
        return false;
    }
    for (Context const & context : applied) {
        bool const isOfThis = context.getUri() == XmiConstants::XMI_NS_URI;
        if (!context.isAttribute() || !isXmiNamespace(context.getUri())) {
            continue;
        }
        bool const isVersion = context.getRoleName() == "version";
        if (isVersion ? !(isOfThis && context.getFirstValue() == XmiConstants::XMI_VERSION)
                      : !isOfThis && state.elements.size() == 1) {
            fReport.addOtherVersion(isVersion ? context.getFirstValue() : context.getUri());
            return true;
        }
    }
    return false;
}

void XmiReaderImpl::startSkipping(ParseState & state) {
    if (state.isSkipping) {
        raiseInternalError("Invalid skip state in XmiReaderImpl");
    }
    // By the name in the file: a rule may have given the Context another one, which no end of an element has.
    state.skipName = state.currentElement.getRole();
    state.isSkipping = true;
    state.skipDepth = 0;
    // What a file says of itself is no part of a model.
    state.countsSkipped = state.skipName != QualifiedName(XmiConstants::XMI_NS_URI, "Documentation");
    if (state.countsSkipped) {
        fReport.addSkippedElement(labelOfElement(state));
    }
}

/// The element at hand as the file names it, whatever rules have made of it.
std::string XmiReaderImpl::labelOfElement(ParseState const & state) {
    std::string label = labelOf(state.xml.getNamespaceURI(), state.xml.getLocalName());
    for (HASP::XmlReader::Attribute const & attribute : state.xml.attributes()) {
        if (attribute.uri == &state.xmiUri && attribute.localName == &state.xmiType) {
            label.append(" of type ").append(attribute.value);
        }
    }
    return label;
}

// --- objects on the way ------------------------------------------------------------------------------------------------

void XmiReaderImpl::enter(ParseState & state, Made && made, Context && context) {
    ++state.objectDepth;
    // Bindings of this element went in before, so they are in the copy too and stay when the object is left.
    state.types.pushContext();
    state.cursors.push_back(std::move(state.cursor));
    state.cursor = {std::move(made.object), made.metaClass, std::move(context), state.given.size()};
}

void XmiReaderImpl::leave(ParseState & state) {
    if (state.cursors.empty()) {
        raiseInternalError("Invalid empty Cursor stack in XmiReaderImpl");
    }
    fTransformers.onCreate(state.cursor.context, state.cursor.object);
    state.given.resize(state.cursor.firstGiven);
    state.cursor = std::move(state.cursors.back());
    state.cursors.pop_back();
    state.types.popContext();
    --state.objectDepth;
}

// --- values ------------------------------------------------------------------------------------------------------------

void XmiReaderImpl::applyText(ParseState & state) {
    if (state.text.empty()) {
        Logger::instance()->log(LogLevel::warning, Messages::ZEL_Serializer_XmiReader_EmptyValueElement,
                                state.textProperty->name, metaClasses().nameOf(state.cursor.object));
    }
    Context value;
    value.setParent(state.cursor.context);
    value.setRole(state.textRole);
    value.setAttribute(std::move(state.text));
    state.text.clear();
    process(state, ContextSequence(std::move(value)));
    state.isInText = false;
}

void XmiReaderImpl::applyAttribute(ParseState & state, Context const & context) {
    if (context.getParentRole().hasUri() && context.getParentUri() == XmiConstants::XMI_NS_URI) {
        return; // of the envelope or of a block in it, which is read as if it were not there
    }
    MetaClass & metaClass = *state.cursor.metaClass;
    MetaProperty const * const property = metaClass.find(context.getRole());
    if (property == nullptr) {
        fReport.addIgnoredAttribute(metaClass.name() + "." + labelOf(context.getRole()));
    } else if (property->isDataType) {
        // A number given behind the back of the model would be lost for its look-up; and the place of a model is where
        // it was read from, not where it lay when it was written.
        using Role = internal::PropertyView::Role;
        bool const isOfFile = property->role == Role::Id || (property->role == Role::Uri && metaClass.isModel());
        if (!isOfFile &&
            fValues.setText(state.cursor.object, *property, context.getFirstValue(), isGiven(state, *property))) {
            noteGiven(state, *property);
        }
    } else if (!property->isComposite && !property->isDerived) {
        noteLinks(state, context.getFirstValue(), *property);
    } else {
        fReport.addIgnoredAttribute(metaClass.name() + "." + property->name);
    }
}

void XmiReaderImpl::applyReference(ParseState & state, Context const & context) {
    if (MetaProperty const * const property = state.cursor.metaClass->find(context.getRole())) {
        noteLinks(state, context.getFirstValue(), *property);
    } else {
        fReport.addIgnoredAttribute(state.cursor.metaClass->name() + "." + labelOf(context.getRole()));
    }
}

bool XmiReaderImpl::isGiven(ParseState const & state, MetaProperty const & property) {
    auto const first = state.given.begin() + static_cast<std::ptrdiff_t>(state.cursor.firstGiven);
    return !property.isMany && std::find(first, state.given.end(), &property) != state.given.end();
}

void XmiReaderImpl::noteGiven(ParseState & state, MetaProperty const & property) {
    if (!property.isMany) {
        state.given.push_back(&property);
    }
}

// --- links -------------------------------------------------------------------------------------------------------------

void XmiReaderImpl::noteLinks(ParseState & state, std::string const & text, MetaProperty const & property) {
    ClassObject const & object = state.cursor.object;
    std::string_view rest(text);
    bool isFurther = isGiven(state, property);
    for (std::string_view token = takeToken(rest); !token.empty(); token = takeToken(rest)) {
        std::string external;
        std::size_t const sign = token.find('#');
        // Without this sign there is no fragment, and nothing but a URI with a fragment leads out of the file.
        if (sign != std::string_view::npos) {
            if (HASP::Uri const reference(token); reference.isValid()) {
                Model const root = object.getRootModel();
                std::optional<std::string> const uri =
                    fFiles.follow(reference, root.isValid() ? root.getUri().str() : std::string());
                if (!uri.has_value()) {
                    fValues.reportUnresolved(object, property);
                    continue;
                }
                external = *uri;
                external += token.substr(sign); // as it stands in the file, as ids do
            }
        }
        FileLinks & links = state.links != nullptr ? *state.links : linksOf(state, object);
        links.add(object, property, external.empty() ? token : std::string_view(external), isFurther);
        noteGiven(state, property);
        isFurther = !property.isMany;
    }
}

} // namespace ZEL::Serializer
