#include <ZEL/String.h>
#include <ZEL/base/AtScopeEnd.h>
#include <ZEL/base/Exception.h>
#include <ZEL/base/SafeFile.h>
#include <ZEL/base/SharedOfHandedOver.h>
#include <ZEL/deviants/DeviantAssertions.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/TransformerRegistry.h>
#include <ZEL/serializer/dialects/MagicDrawWriteTransforms.h>
#include <ZEL/serializer/dialects/RhpWriteTransforms.h>
#include <ZEL/serializer/dialects/StandardWriteTransforms.h>
#include <ZEL/serializer/writer/FormWriter.h>
#include <ZEL/serializer/writer/WriterTraversal.h>
#include <ZEL/serializer/writer/XmiWriter.h>

#include <hasp_util/Uri.h>
#include <hasp_util/XmlWriter.h>

#include <exception>
#include <memory>
#include <optional>

namespace ZEL::Serializer {

// --- one run ---------------------------------------------------------------------------------------------------------

/// What the handles of one writer share. What belongs to one run lives in the run alone.
class XmiWriterImpl {
public:
    explicit XmiWriterImpl(XmiWriterSettings const & settings) : fSettings(settings) {}

    /// One run. Clears the Transformers at its end, however it ends. False when the file could not be produced.
    bool write(std::string const & file, ImmutableObject const & object);

    [[nodiscard]] bool keepsFileIds() const noexcept { return fSettings.getKeepFileIds(); }

    TransformerRegistry transformers;
    WriterFunctions functions;
    std::string failureReason; ///< why the last run returned false
    std::string keptFile;      ///< where the last run left the whole document because its file could not take all of it

private:
    bool run(SafeFile & file, ImmutableObject const & object);
    bool writeDocument(SafeFile const & file, ImmutableObject const & object);
    bool writeStandard(std::string const & file, ImmutableObject const & object);
    bool writeForm(std::string const & file, FileForm const & form, ImmutableObject const & object);
    void addDialect();

    XmiWriterSettings const fSettings;
};

namespace {

void logAbout(LogLevel::Setting level, unsigned long message, std::string const & file) {
    Logger::instance()->log(LogLevel(level), message, file.c_str());
}

/// Calls the function at the end of the scope. What it throws is dropped: the scope may be ending by an exception that
/// says more.
template <class Function> auto attemptAtScopeEnd(Function function) {
    return internal::AtScopeEnd([function] {
        try {
            function();
        } catch (std::exception const & exception) {
            Logger::instance()->error("%s", exception.what());
        }
    });
}

} // namespace

bool XmiWriterImpl::write(std::string const & file, ImmutableObject const & object) {
    auto const cleanUp = attemptAtScopeEnd([this] { transformers.clear(); });
    failureReason.clear();
    keptFile.clear();
    logAbout(LogLevel::info, Messages::ZEL_Serializer_XmiWriter_Prologue, file);
    try {
        SafeFile goal(file);
        if (!run(goal, object)) {
            return false;
        }
    } catch (Exception const &) {
        throw;
    } catch (std::exception const & exception) {
        throw Exception(exception.what());
    }
    logAbout(LogLevel::info, Messages::ZEL_Serializer_XmiWriter_Epilogue, file);
    return true;
}

bool XmiWriterImpl::run(SafeFile & file, ImmutableObject const & object) {
    SafeFile::Result result = SafeFile::Result::NotOpened;
    if (!file.open()) {
        failureReason = file.getReason();
    } else if (!writeDocument(file, object)) {
        result = SafeFile::Result::Failed;
    } else {
        result = file.put();
        failureReason = file.getReason();
    }
    if (result == SafeFile::Result::Done) {
        return true;
    }
    if (result == SafeFile::Result::NotOpened) {
        logAbout(LogLevel::error, Messages::ZEL_Serializer_XmiWriter_FileOpen, file.getTemporaryName());
        return false;
    }
    if (result == SafeFile::Result::Damaged) {
        keptFile = file.getTemporaryName();
    }
    logAbout(LogLevel::error, Messages::ZEL_Serializer_XmiWriter_GenericError, file.getName());
    return false;
}

/// Writes the temporary file. False if it is not whole.
bool XmiWriterImpl::writeDocument(SafeFile const & file, ImmutableObject const & object) {
    std::optional<FileForm> const & form = fSettings.getFileForm();
    bool const hasForm = form && fSettings.getOutputFormat().getFormat() == XmiFormat::Standard;
    return hasForm ? writeForm(file.getTemporaryName(), *form, object) : writeStandard(file.getTemporaryName(), object);
}

/// By way of a standard file, which goes at the end.
bool XmiWriterImpl::writeForm(std::string const & file, FileForm const & form, ImmutableObject const & object) {
    SafeFile standard(file, SafeFile::Beside::FreeName);
    if (!standard.open()) {
        failureReason = standard.getReason();
        return false;
    }
    internal::AtScopeEnd const remove([&standard] { standard.remove(); });
    if (!writeStandard(standard.getTemporaryName(), object)) {
        return false;
    }
    HASP::XmlWriter xml(file, HASP::XmlWriterSettings(true, "UTF-8", fSettings.getAutoFlush()));
    FormWriter(form, standard.getTemporaryName(), xml).write();
    if (xml.close()) {
        return true;
    }
    failureReason = xml.errorText();
    return false;
}

bool XmiWriterImpl::writeStandard(std::string const & file, ImmutableObject const & object) {
    HASP::XmlWriter xml(file, HASP::XmlWriterSettings(true, "iso8859-1", fSettings.getAutoFlush()));
    if (!object.isValid()) {
        return false;
    }
    ImmutableClassObject const top(object);
    if (!top.isValid()) {
        raiseInternalError("Internal Error: Invalid dispatch to base during XMI serialization!");
    }
    bool const isPlain = transformers.empty() && functions.areDefaults() &&
                         fSettings.getOutputFormat().getFormat() == XmiFormat::Standard;
    addDialect();
    {
        WriterTraversal traversal(xml, fSettings, transformers, functions, isPlain);
        traversal.collect(top);
        auto const endDocument = attemptAtScopeEnd([&xml] { xml.writeEndDocument(); });
        traversal.write(top);
        xml.writeEndDocument();
    }
    if (xml.close()) {
        return true;
    }
    failureReason = xml.errorText();
    return false;
}

void XmiWriterImpl::addDialect() {
    switch (fSettings.getOutputFormat().getFormat()) {
    case XmiFormat::MagicDraw:
        transformers.addTransformer(std::make_shared<MagicDrawWriteTransforms>());
        return;
    case XmiFormat::Rhapsody:
        transformers.addTransformer(std::make_shared<RhpWriteTransforms>());
        return;
    case XmiFormat::Standard:
        break;
    }
    transformers.addTransformer(std::make_shared<StandardWriteTransforms>());
}

// --- what a caller uses ----------------------------------------------------------------------------------------------

namespace {

/// Writes the model to the place of its URI. Unless ids are kept, those in that file are of this system, and what was
/// noted before is obsolete.
bool writeModel(XmiWriterImpl & writer, std::string const & file, ImmutableModel const & model) {
    if (!writer.write(file, model)) {
        return false;
    }
    if (!writer.keepsFileIds()) {
        model.getImplementation()->internal_body()->internal_model()->forgetFileIds();
    }
    return true;
}

} // namespace

/// What the copies of a writer share.
struct XmiWriter::Shared {
    explicit Shared(XmiWriterSettings const & settings) : impl(settings) {}

    int writers = 0;
    XmiWriterImpl impl;
};

struct XmiWriter::Counting {
    static void retain(Shared * shared) noexcept { ++shared->writers; }
    static void release(Shared * shared) noexcept {
        if (--shared->writers == 0) {
            delete shared;
        }
    }
};

XmiWriter::XmiWriter(XmiWriterSettings const & settings) : fShared(new Shared(settings)) {}

XmiWriter::XmiWriter(XmiWriter const & other) = default;

XmiWriter::XmiWriter(XmiWriter && other) noexcept = default;

XmiWriter & XmiWriter::operator=(XmiWriter const & other) = default;

XmiWriter & XmiWriter::operator=(XmiWriter && other) noexcept = default;

XmiWriter::~XmiWriter() = default;

XmiWriterImpl & XmiWriter::impl() const noexcept { return fShared->impl; }

bool XmiWriter::write(std::string const & file, Model model) {
    if (!model.isValid()) {
        raiseInternalError("Attempt to serialize invalid model!");
    }
    HASP::Uri const uri = HASP::Uri::fromLocalFile(file);
    if (!uri.isValid()) {
        raiseInternalError("Unable to create URI from output file " + file);
    }
    // The URI may be set outside of a transaction.
    internal::AtScopeEnd const restore(
        [former = DeviantAssertions::enableAssertions(false)] { DeviantAssertions::enableAssertions(former); });
    model.setUri(uri.toString());
    return writeModel(impl(), file, model);
}

bool XmiWriter::write(ImmutableModel const & model) {
    if (!model.isValid()) {
        raiseInternalError("Attempt to serialize invalid model!");
    }
    std::string const text = model.getUri();
    std::string const file = HASP::Uri(text).toLocalFile();
    if (file.empty()) {
        raiseInternalError("Unable to create URI from output file " + text);
    }
    return writeModel(impl(), file, model);
}

bool XmiWriter::writeObject(std::string const & file, ImmutableObject const & object) {
    if (!object.isValid()) {
        raiseInternalError("Attempt to serialize invalid object!");
    }
    return impl().write(file, object);
}

std::string const & XmiWriter::failureReason() const { return impl().failureReason; }

std::string const & XmiWriter::keptFile() const { return impl().keptFile; }

void XmiWriter::addTransformer(Transformer * transformer) { impl().transformers.addTransformer(transformer); }

void XmiWriter::addTransformer(internal::HandedOver<Transformer> transformer) {
    impl().transformers.addTransformer(internal::shared(std::move(transformer)));
}

void XmiWriter::removeTransformer(Transformer * transformer) { impl().transformers.removeTransformer(transformer); }

void XmiWriter::setContextSequenceCreator(ContextSequenceCreator creator) {
    impl().functions.createContexts = std::move(creator);
}

void XmiWriter::setPreVisitableGenerator(VisitableGenerator generator) {
    impl().functions.before = std::move(generator);
}

void XmiWriter::setVisitableGenerator(VisitableGenerator generator) {
    impl().functions.children = std::move(generator);
}

void XmiWriter::setPostVisitableGenerator(VisitableGenerator generator) {
    impl().functions.after = std::move(generator);
}

} // namespace ZEL::Serializer
