#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/writer/WriterTraversal.h>

#include <hasp_util/XmlConstants.h>
#include <hasp_util/XmlWriter.h>

#include <algorithm>
#include <string>
#include <unordered_map>

namespace ZEL::Serializer {

using HASP::XmlConstants;

namespace {

/// Whether this is the URI of the model, which every model has.
bool saysWhereItIs(PropertyPartition const & partition, Context const & context) {
    return std::any_of(
        partition.singleValues.begin(), partition.singleValues.end(), [&context](WrittenProperty const * property) {
            return property->role == internal::PropertyView::Role::Uri && property->attribute == context.getRole();
        });
}

} // namespace

WriterTraversal::WriterTraversal(HASP::XmlWriter & xml, XmiWriterSettings const & settings,
                                 TransformerRegistry const & transformers, WriterFunctions const & functions,
                                 bool isPlain)
    : fXml(xml),
      fSettings(settings),
      fTransformers(transformers),
      fFunctions(functions),
      fIsPlain(isPlain),
      fHasDefaults(functions.areDefaults()),
      fContexts(fPartitions, settings.getKeepFileIds()),
      fPrinter(xml, fNamespaces, settings.getElementPerValue()),
      fRemainders(xml, fContexts, fPrinter),
      fStraight(xml, transformers, fPartitions, fContexts, fPrinter) {}

void WriterTraversal::collect(ImmutableClassObject const & object) {
    if (!fIsPlain || !fStraight.collect(object, {fNamespaces, fKept, fStereotypeInstances})) {
        fIsPlain = false;
        fNamespaces.clear();
        fKept = {};
        fStereotypeInstances.clear();
        visit(object);
    }
    // Prefixes of metamodels come first: types are named by them.
    for (auto const & kept : fKept.namespaces) {
        bool const isTaken = std::any_of(fNamespaces.begin(), fNamespaces.end(),
                                         [&kept](auto const & other) { return other.second == kept.second; });
        if (!isTaken) {
            fNamespaces.insert(kept);
        }
    }
    if (fKept.hasWideNames || fTransformers.hasWideNames()) {
        fXml.setEncoding("UTF-8");
        fStraight.forgetNames();
    }
}

void WriterTraversal::write(ImmutableClassObject const & object) {
    fIsWriting = true;
    fContexts.setWarnings(true);
    fTransformers.setSerializePhase(true);
    visit(object);
    fRemainders.writeBeside(remainderOf(object));
    fPrinter.logJoinedValues();
}

void WriterTraversal::visit(ImmutableClassObject const & object) {
    push(object, nullptr, nullptr);
    while (fDepth != 0) {
        Frame & frame = *fFrames[fDepth - 1];
        if (frame.nextChild != frame.children.size()) {
            push(frame.children[frame.nextChild++], frame.childProperty, &frame.visitable.context);
        } else if (frame.step != nullptr) {
            (this->*frame.step)(frame);
        } else {
            --fDepth;
        }
    }
}

void WriterTraversal::push(ImmutableClassObject const & object, WrittenProperty const * property,
                           Context const * parent) {
    if (fDepth == fFrames.size()) {
        fFrames.push_back(std::make_unique<Frame>());
    }
    Frame & frame = *fFrames[fDepth++];
    frame.object = object;
    frame.object.setDeviant(object.getDeviant());
    frame.property = property;
    frame.parent = parent;
    frame.partition = nullptr;
    frame.visitable = VisitableContext();
    frame.sequence.clear();
    frame.openElements = 0;
    frame.startChildren({});
    frame.childProperty = nullptr;
    frame.nextProperty = 0;
    frame.step = &WriterTraversal::create;
}

void WriterTraversal::create(Frame & frame) {
    VisitableContext & visitable = frame.visitable;
    if (fFunctions.createContexts) {
        frame.sequence = fFunctions.createContexts(frame.object, visitable);
    } else {
        createContextSequence(frame);
    }
    if (visitable.skipObject) {
        frame.step = nullptr;
        return;
    }
    if (isRootAtWork(frame)) {
        findElementsAtTop(frame);
    }
    ContextSequence const ahead = fTransformers.preApply(frame.sequence);
    if (fIsWriting) {
        fPrinter.writeWhole(ahead, levelOf(frame));
    }
    frame.step = &WriterTraversal::runElement;
    if (fFunctions.before) {
        showOwnPlace(frame);
        generate(frame, fFunctions.before);
    }
}

void WriterTraversal::runElement(Frame & frame) {
    frame.step = &WriterTraversal::runNextProperty;
    // The rules that generate what comes after the object look at what it was before any rule.
    ContextSequence applied = fTransformers.apply(frame.sequence);
    Context * const element = elementOf(applied);
    if (isRootAtWork(frame) && fElementsAtTop.areAll()) {
        frame.step = &WriterTraversal::runAfter;
    } else if (fIsWriting) {
        if (element != nullptr && element->skipContext()) {
            frame.step = nullptr;
            return;
        }
        auto const elements =
            frame.visitable.hasContent ? ContextPrinter::Elements::Open : ContextPrinter::Elements::Empty;
        frame.openElements = frame.partition != nullptr
                                 ? fRemainders.write(remainderOf(frame.object), applied, elements, levelOf(frame))
                                 : fPrinter.write(applied, elements, levelOf(frame));
    }
    if (element != nullptr) {
        frame.visitable.context = std::move(*element);
    } else if (frame.parent != nullptr) {
        frame.visitable.context = *frame.parent;
    }
}

void WriterTraversal::runNextProperty(Frame & frame) {
    if (fIsPlain) {
        fStraight.writeParts(frame.object, fElementsAtTop);
        endElement(frame);
        return;
    }
    ObjectView const view(frame.object);
    while (selectNextProperty(frame, view)) {
        if (fFunctions.children) {
            generate(frame, fFunctions.children);
            return;
        }
        if (frame.childProperty == nullptr) {
            // Reading an invalid property throws, and that must not be passed over.
            static_cast<void>(frame.object.get(ImmutableProperty()));
        }
        std::vector<ImmutableClassObject> objects = view.objectsOf(*frame.childProperty);
        if (frame.property == nullptr) {
            fElementsAtTop.removeFrom(objects);
        }
        if (!objects.empty()) {
            frame.startChildren(std::move(objects));
            return;
        }
    }
    endElement(frame);
}

void WriterTraversal::endElement(Frame & frame) {
    if (frame.openElements != 0 && frame.partition != nullptr) {
        fRemainders.writeChildren(frame.object, remainderOf(frame.object));
    }
    fPrinter.end(std::exchange(frame.openElements, 0));
    frame.step = &WriterTraversal::runAfter;
}

bool WriterTraversal::isRootAtWork(Frame const & frame) const noexcept {
    return fIsWriting && !fIsRootDone && frame.property == nullptr;
}

bool WriterTraversal::selectNextProperty(Frame & frame, ObjectView const & view) {
    std::size_t const index = frame.nextProperty++;
    if (!fHasDefaults) {
        ImmutableSequence<ImmutableProperty> const & properties = frame.visitable.visitableProperties;
        if (!properties.isValid() || index >= static_cast<std::size_t>(properties.size())) {
            return false;
        }
        ImmutableProperty const property = properties.at(static_cast<int>(index));
        frame.visitable.property = property;
        frame.childProperty = fPartitions.find(property);
        return true;
    }
    std::vector<WrittenProperty const *> const & properties = frame.partition->visitable;
    if (index < properties.size()) {
        frame.childProperty = properties[index];
        return true;
    }
    if (index == properties.size() && !fIsWriting && view.hasStereotypes()) {
        frame.childProperty = fPartitions.find(frame.partition->appliedStereotypeInstance);
        return frame.childProperty != nullptr;
    }
    return false;
}

void WriterTraversal::runAfter(Frame & frame) {
    frame.step = nullptr;
    ContextSequence const following = fTransformers.postApply(frame.sequence);
    if (fIsWriting) {
        fPrinter.writeWhole(following, levelOf(frame));
    }
    if (fFunctions.after) {
        showOwnPlace(frame);
        generate(frame, fFunctions.after);
    } else if (isRootAtWork(frame)) {
        fIsRootDone = true;
        frame.childProperty = nullptr;
        std::vector<ImmutableClassObject> others = fElementsAtTop.objects();
        others.insert(others.end(), fStereotypeInstances.begin(), fStereotypeInstances.end());
        frame.startChildren(std::move(others));
    }
}

void WriterTraversal::showOwnPlace(Frame & frame) const {
    frame.visitable.context = frame.parent != nullptr ? *frame.parent : Context();
    frame.visitable.property = frame.property != nullptr ? frame.property->property : ImmutableProperty();
}

void WriterTraversal::generate(Frame & frame, XmiWriter::VisitableGenerator const & generator) {
    ImmutableSequence<ImmutableClassObject> const objects = generator(frame.object, frame.visitable);
    frame.childProperty = fPartitions.find(frame.visitable.property);
    frame.startChildren(objects.isValid() ? objects.toVector() : std::vector<ImmutableClassObject>());
}

void WriterTraversal::createContextSequence(Frame & frame) {
    if (frame.property != nullptr && !frame.property->isPart()) {
        frame.visitable.skipObject = true;
        return;
    }
    ObjectView const view(frame.object);
    frame.partition = &fPartitions.partitionOf(*frame.object.getImplementation());
    if (!fIsWriting) {
        collectObject(frame, view);
    } else if (isRootAtWork(frame)) {
        writePrologue(frame.object);
    }
    if (!fHasDefaults) {
        frame.visitable.visitableProperties =
            fIsWriting ? frame.partition->visitableProperties : frame.partition->collectedProperties;
    }
    bool const hasChildElements =
        fContexts.append(view, *frame.partition, {frame.property, frame.parent}, frame.sequence);
    frame.visitable.hasContent = hasChildElements || view.hasContainees(*frame.partition);
}

void WriterTraversal::collectObject(Frame const & frame, ObjectView const & view) {
    if (fCollected.insert(frame.partition).second) {
        std::string const & uri = frame.partition->type.getUri();
        fNamespaces.emplace(uri, NamespaceRegistry::instance()->getPrefixFromMetaUri(uri));
    }
    RemainderWriter::collect(remainderOf(frame.object), fKept);
    fContexts.noteNumber(*frame.object.getImplementation()->internal_body());
    if (view.hasStereotypes()) {
        frame.object.getAppliedStereotypeInstances().forEach(
            [this](ImmutableClassObject const & instance) { fStereotypeInstances.push_back(instance); });
    }
}

void WriterTraversal::findElementsAtTop(Frame & frame) {
    bool const isAsRead =
        fSettings.getKeepFileIds() && fHasDefaults && fSettings.getOutputFormat().getFormat() == XmiFormat::Standard;
    if (isAsRead && frame.partition != nullptr) {
        ObjectView const view(frame.object);
        bool const hasValues =
            RemainderWriter::hasChildren(remainderOf(frame.object)) ||
            std::any_of(frame.sequence.begin(), frame.sequence.end(), [&frame](Context const & context) {
                return !context.isElement() && !saysWhereItIs(*frame.partition, context);
            });
        fElementsAtTop.find(view, *frame.partition, hasValues);
        frame.visitable.hasContent = hasValues || fElementsAtTop.leaveParts();
    }
}

void WriterTraversal::writePrologue(ImmutableClassObject const & object) {
    fXml.writeStartDocument("1.0");
    fXml.writeStartElement(XmiConstants::XMI_NS_PREFIX, "XMI", XmiConstants::XMI_NS_URI);
    fXml.writeAttribute("version", XmiConstants::XMI_NS_URI, fSettings.getXmiVersion());
    fXml.writeNamespace(XmiConstants::XMI_NS_PREFIX, XmiConstants::XMI_NS_URI);
    ContextSequence sequence;
    for (auto const & [uri, prefix] : fNamespaces) {
        Context declaration;
        declaration.setRole(XmlConstants::XMLNS_ATTRIBUTE_NS_URI, prefix);
        declaration.setAttribute(uri);
        sequence.addContext(std::move(declaration));
    }
    RemainderWriter::appendBeside(remainderOf(object), sequence);
    if (fSettings.getOutputFormat().getFormat() == XmiFormat::Standard) {
        fContexts.appendHead(object, sequence);
    }
    static_cast<void>(fPrinter.write(withOneNamespaceEach(fTransformers.apply(std::move(sequence))),
                                     ContextPrinter::Elements::Empty, ContextPrinter::Level::Top));
}

/// The declarations with one namespace for each prefix: what has another at the root of the file gets one where it is
/// used.
ContextSequence WriterTraversal::withOneNamespaceEach(ContextSequence && sequence) {
    ContextSequence result;
    std::unordered_map<std::string, std::string> uris;
    for (Context & context : sequence) {
        if (context.getUri() == XmlConstants::XMLNS_ATTRIBUTE_NS_URI) {
            auto const [declared, isNew] = uris.try_emplace(context.getRoleName(), context.getFirstValue());
            if (!isNew) {
                if (declared->second != context.getFirstValue()) {
                    fNamespaces.erase(context.getFirstValue());
                }
                continue;
            }
        }
        result.addContext(std::move(context));
    }
    return result;
}

/// The last element; while writing, the first one to skip before it. Null if there is none.
Context * WriterTraversal::elementOf(ContextSequence & sequence) const {
    Context * element = nullptr;
    for (Context & context : sequence) {
        if (context.isElement()) {
            element = &context;
            if (fIsWriting && context.skipContext()) {
                break;
            }
        }
    }
    return element;
}

ContextPrinter::Level WriterTraversal::levelOf(Frame const & frame) noexcept {
    return frame.property != nullptr ? ContextPrinter::Level::Nested : ContextPrinter::Level::Top;
}

} // namespace ZEL::Serializer
