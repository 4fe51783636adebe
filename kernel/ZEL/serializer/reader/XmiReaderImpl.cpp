// A run, and the loop over the events of a file.

#include <ZEL/base/Exception.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/dialects/MagicDrawReadTransforms.h>
#include <ZEL/serializer/dialects/StandardReadTransforms.h>
#include <ZEL/serializer/reader/ReadFile.h>
#include <ZEL/serializer/reader/XmiReaderImpl.h>

#include <hasp_util/Uri.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <limits>
#include <memory>

namespace ZEL::Serializer {
namespace {

Context makeAttribute(ParseState & state, HASP::XmlReader::Attribute const & attribute) {
    Context context;
    context.setParentType(state.currentElement.type);
    context.setParentRole(state.currentElement.role);
    context.setRole(state.roles.of(attribute.uri, attribute.localName));
    context.setAttribute(std::string(attribute.value));
    return context;
}

void noteBindings(ParseState & state) {
    for (HASP::XmlReader::Namespace const & binding : state.xml.namespaces()) {
        state.bindings.add(state.elements.size(), *binding.prefix, *binding.uri);
    }
}

} // namespace

XmiReaderImpl::XmiReaderImpl(XmiReaderSettings const & settings)
    : fSettings(settings),
      fMerger(std::make_shared<Merger>()),
      fValues(fReport),
      fLinks(fTransformers, fValues),
      fFiles(fSettings, fReport, [this](std::string const & localFile) { return readLinked(localFile); }) {}

XmiReaderImpl::~XmiReaderImpl() = default;

Object XmiReaderImpl::read(std::string const & file) {
    HASP::Uri const uri = HASP::Uri::fromLocalFile(file);
    if (!uri.isValid()) {
        Logger::instance()->log(LogLevel::error, Messages::ZEL_Serializer_XmiReader_InvalidInputFile, file);
        return Object();
    }
    Logger::instance()->log(LogLevel::info, Messages::ZEL_Serializer_XmiReader_Prologue, file);
    discard();
    fReport = ReadReport();
    try {
        readInto(uri.toLocalFile());
    } catch (...) {
        // Nothing of a failed read stays, nor can it be asked for.
        end();
        discard();
        throw;
    }
    end();
    Logger::instance()->log(LogLevel::info, Messages::ZEL_Serializer_XmiReader_Epilogue, file);
    return fResult;
}

void XmiReaderImpl::readInto(std::string const & localFile) {
    pushState(localFile);
    // The dialect of Rhapsody is one of writing only: its files are read as plain ones.
    if (fSettings.getInputFormat().getFormat() == XmiFormat::MagicDraw) {
        fTransformers.addTransformer(std::make_shared<MagicDrawReadTransforms>());
    }
    fStandardRules = std::make_shared<StandardReadTransforms>();
    fTransformers.addTransformer(fStandardRules);
    if (fTransformers.keepsRemainder()) {
        fStandardRules->readProfiles();
    }
    fValues.begin(*fMerger, fTransformers.keepsRemainder() ? &fRemainders : nullptr);
    state().keeps = keeps();
    if (keeps()) {
        fFiles.wait();
    }
    fMerger->initialize();
    noteUncontained();
    Model const result = run();
    popState();
    if (result.isValid()) {
        fRemainders.settle(fFiles);
        showModels();
        std::vector<Model> const models = fMerger->getReferredModels();
        fMerger->teardown();
        reportUncontained(models);
    } else {
        // Without a model there is nothing to merge: what the present models hold must not count as missing.
        fFiles.forgetModels();
    }
    forgetObjects();
}

void XmiReaderImpl::showModels() {
    for (Model const & model : fMerger->getReferredModels()) {
        ReadFile file(model, fMerger->getReferredModels(), fLinks, fFiles, fReport);
        fTransformers.onRead(file);
    }
}

std::optional<Model> XmiReaderImpl::readLinked(std::string const & localFile) {
    pushState(localFile);
    try {
        Model model = run();
        popState();
        return model;
    } catch (Exception const &) {
        // Whatever else has gone wrong is nothing that doing without this file would mend.
        if (!fSettings.getSkipUnreadableExternalFiles() || !state().xml.hasError()) {
            throw;
        }
        if (state().model.isValid() && !fMerger->giveUp(state().model)) {
            throw; // a model that was there before, and is half changed
        }
    }
    if (state().hasRoot) {
        fTransformers.postTransform(Model());
    }
    if (state().links != nullptr) {
        state().links->forget();
    }
    fFiles.forgetWaiting();
    logUnreadable(localFile);
    popState();
    return std::nullopt;
}

void XmiReaderImpl::logUnreadable(std::string const & localFile) const {
    Logger::instance()->warning("Unable to read %s : %s", localFile, parseErrorOf(fStates.back()));
}

/// Releases the handles on all objects that the run has met.
void XmiReaderImpl::forgetObjects() noexcept {
    fLinks.clear();
    fRemainders.clear();
    fFormerlyUncontained.clear();
}

void XmiReaderImpl::noteUncontained() {
    for (Model const & model : fMerger->getReferredModels()) {
        model.getUnparented().forEach(
            [&](Object const & object) { fFormerlyUncontained.insert(object.getImplementation()); });
    }
}

void XmiReaderImpl::reportUncontained(std::vector<Model> const & models) {
    std::vector<ImmutableClassObject> found;
    for (Model const & model : models) {
        if (model.isValid()) {
            model.getUnparented().forEach([&](ClassObject const & object) {
                if (fFormerlyUncontained.count(object.getImplementation()) == 0) {
                    found.emplace_back(object);
                }
            });
        }
    }
    for (std::size_t i = 0; i < found.size(); ++i) {
        ImmutableClassObject const object = found[i]; // the list grows on the way
        std::string const name = object.getMetaClass().getName();
        ++fReport.fUncontainedObjects[name];
        object.getContaineeZELs().forEach([&](ImmutableClassObject const & part) { found.push_back(part); });
    }
    for (auto const & [name, count] : fReport.uncontainedObjects()) {
        Logger::instance()->warning("Objects of class %s that nothing contains, and no file will hold: %s", name,
                                    std::to_string(count));
    }
}

/// However a read ends: the rules have served, and what the Merger still has open is cancelled.
void XmiReaderImpl::end() noexcept {
    fTransformers.clear();
    try {
        try {
            fMerger->abort();
        } catch (std::exception const & failure) {
            Logger::instance()->error("Unable to cancel the read: %s", failure.what());
        }
    } catch (...) {
        return; // there is nowhere left to report it
    }
}

void XmiReaderImpl::discard() noexcept {
    fStates.clear();
    forgetObjects();
    fResult = Model();
    fFiles.clear();
}

// --- the events of a file --------------------------------------------------------------------------------------------

void XmiReaderImpl::pushState(std::string const & localFile) {
    HASP::XmlReaderSettings settings;
    settings.setDepthLimit(static_cast<std::uint32_t>(
        std::min<std::size_t>(fSettings.getMaximumElementDepth(), std::numeric_limits<std::uint32_t>::max())));
    if (fTransformers.translatesNamespaces()) {
        settings.setNamespaceTranslation(
            [this](std::string const & uri) { return fTransformers.translateNamespace(uri); });
    }
    fStates.emplace_back(localFile, settings).keeps = keeps();
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
    keepBeside(current);
    if (current.fragment.host == nullptr) {
        fFiles.readWaiting();
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
    QualifiedName const name = state.elementName();
    state.elements.push_back({state.currentElement, state.objectDepth});
    state.hasRoot = true;
    if (state.isSkipping) {
        if (name == state.skipName && ++state.skipDepth == 0) {
            raiseInternalError("Invalid state in XmiReaderImpl (Too many levels of skipping)");
        }
        if (state.countsSkipped) {
            ++fReport.fSkippedContents[labelOfElement(state)];
        }
        if (state.skipped.isOpen()) {
            noteBindings(state);
            state.skipped.start(state.xml, state.bindings);
        }
        return;
    }
    if (state.keeps) {
        noteBindings(state);
    }
    for (HASP::XmlReader::Namespace const & binding : state.xml.namespaces()) {
        if (state.keeps) {
            fRemainders.noteNamespace(*binding.prefix, *binding.uri);
        }
        state.types.addNamespace(*binding.prefix, *binding.uri);
        fTransformers.onNamespace(*binding.prefix, *binding.uri);
    }
    Head const head = headOf(state);
    QualifiedName const type = head.type == nullptr ? name : state.types.of(head.type->value);
    state.currentElement = state.currentElement.within(name, type);
    if (startPart(state, head)) {
        return;
    }
    ContextSequence sequence = std::move(state.sequence);
    sequence.clear();
    makeContexts(state, head, sequence);
    process(state, std::move(sequence));
}

XmiReaderImpl::Head XmiReaderImpl::headOf(ParseState & state) {
    Head head;
    for (HASP::XmlReader::Attribute const & attribute : state.xml.attributes()) {
        if (attribute.uri == &state.xmiUri) {
            head.id = attribute.localName == &state.xmiId ? &attribute : head.id;
            head.type = attribute.localName == &state.xmiType ? &attribute : head.type;
        } else if (state.keeps && attribute.uri == &state.xsiUri && attribute.localName == &state.xmiType) {
            head.type = &attribute; // as XMI 2.0 names the classes of elements
        }
        state.hasVersion |= attribute.localName == &state.xmiVersion ||
                            (attribute.uri != &state.xmiUri && !attribute.uri->empty() && state.elements.size() == 1);
    }
    return head;
}

void XmiReaderImpl::makeContexts(ParseState & state, Head const & head, ContextSequence & sequence) {
    auto const attributes = state.xml.attributes();
    Context element = state.currentElement.asContext();
    element.setElement(head.id == nullptr ? std::string() : std::string(head.id->value));
    sequence.reserve(attributes.size() + 1);
    sequence.addContext(std::move(element));
    for (HASP::XmlReader::Attribute const & attribute : attributes) {
        if (!head.holds(attribute)) {
            sequence.addContext(makeAttribute(state, attribute));
        }
    }
}

void XmiReaderImpl::endElement(ParseState & state) {
    if (state.isInText) {
        applyText(state);
    }
    if (state.skipped.isOpen()) {
        state.skipped.end();
    }
    state.bindings.leave(state.elements.size());
    if (state.isSkipping && state.elementName() == state.skipName) {
        if (state.skipDepth > 0) {
            --state.skipDepth;
        } else {
            state.isSkipping = false;
            keepSkipped(state);
        }
    }
    if (state.linkDepth == state.elements.size()) {
        state.linkDepth = 0;
    }
    ParseState::OpenElement & open = state.elements.back();
    while (state.objectDepth > open.objectDepth) {
        leave(state);
    }
    state.currentElement = open.names;
    state.elements.pop_back();
}

void XmiReaderImpl::characters(ParseState & state) {
    if (state.isInText && !state.isSkipping) {
        state.text += state.xml.getText();
    } else if (state.skipped.isOpen()) {
        state.skipped.characters(state.xml.getText());
    }
}

} // namespace ZEL::Serializer
