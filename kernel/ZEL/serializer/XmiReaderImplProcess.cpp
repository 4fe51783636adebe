// What comes out of the rules, applied to objects.

#include <ZEL/Exception.h>
#include <ZEL/Logger.h>
#include <ZEL/Messages.h>
#include <ZEL/NamespaceRegistry.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/XmiReaderImpl.h>

#include <string>
#include <utility>

namespace ZEL::Serializer {
namespace {

std::string labelOf(QualifiedName name) {
    return name.hasUri() ? "{" + name.getUri() + "}" + name.getName() : name.getName();
}

/// An element by its name and, where the file gives one, by its type with the usual prefix.
std::string labelOf(Context const & element) {
    QualifiedName const type = element.getType();
    if (type.isEmpty() || type == element.getRole()) {
        return labelOf(element.getRole());
    }
    std::string const prefix = NamespaceRegistry::instance()->getPrefixFromMetaUri(type.getUri());
    return labelOf(element.getRole()) + " of type " + (prefix.empty() ? labelOf(type) : prefix + ":" + type.getName());
}

} // namespace

void XmiReaderImpl::process(ParseState & state, ContextSequence && sequence) {
    ContextSequence applied = fTransformers.apply(std::move(sequence));
    Context skipped;
    bool entered = false;
    bool isFirst = true;
    for (Context & context : applied) {
        if (context.skipContext() && (context.isExtension() || context.isElement())) {
            state.isForeign = state.isForeign || context.isExtension();
            skipped = context;
            // The first element stands for the one in the file, even if rules have given it other names.
            if (isFirst || context == state.currentElement) {
                startSkipping(state, context);
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

void XmiReaderImpl::startSkipping(ParseState & state, Context const & context) {
    if (state.isSkipping) {
        raiseInternalError("Invalid skip state in XmiReaderImpl");
    }
    // By the name in the file: a rule may have given the Context another one, which no end of an element has.
    state.skipName = state.currentElement.getRole();
    state.isSkipping = true;
    state.skipDepth = 0;
    // What a file says of itself is no part of a model.
    if (context.getRole() != QualifiedName(XmiConstants::XMI_NS_URI, "Documentation")) {
        fReport.addSkippedElement(labelOf(context));
    }
}

// --- objects on the way ------------------------------------------------------------------------------------------------

void XmiReaderImpl::enter(ParseState & state, Made && made, Context && context) {
    ++state.objectDepth;
    // Bindings of this element went in before, so they are in the copy too and stay when the object is left.
    state.types.pushContext();
    state.cursors.push_back(std::move(state.cursor));
    state.cursor = {std::move(made.object), made.metaClass, std::move(context)};
}

void XmiReaderImpl::leave(ParseState & state) {
    if (state.cursors.empty()) {
        raiseInternalError("Invalid empty Cursor stack in XmiReaderImpl");
    }
    fTransformers.onCreate(state.cursor.context, state.cursor.object);
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
        bool const isOfFile = property->name == "id" || (property->name == "uri" && metaClass.isModel());
        if (!isOfFile && !fMerger->setProperty(state.cursor.object, *property, context.getFirstValue())) {
            reportRejected(state.cursor.object, *property);
        }
    } else if (!property->isComposite && !property->isDerived) {
        recordReference(state, context.getFirstValue(), state.cursor.object, *property);
    } else {
        fReport.addIgnoredAttribute(metaClass.name() + "." + property->name);
    }
}

void XmiReaderImpl::applyReference(ParseState & state, Context const & context) {
    if (MetaProperty const * const property = state.cursor.metaClass->find(context.getRole())) {
        recordReference(state, context.getFirstValue(), state.cursor.object, *property);
    } else {
        fReport.addIgnoredAttribute(state.cursor.metaClass->name() + "." + labelOf(context.getRole()));
    }
}

} // namespace ZEL::Serializer
