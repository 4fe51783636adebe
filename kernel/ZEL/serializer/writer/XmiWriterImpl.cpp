#include <ZEL/base/AtScopeEnd.h>
#include <ZEL/base/Exception.h>
#include <ZEL/base/SafeFile.h>
#include <ZEL/logging/LogLevel.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/dialects/MagicDrawWriteTransforms.h>
#include <ZEL/serializer/dialects/RhpWriteTransforms.h>
#include <ZEL/serializer/dialects/StandardWriteTransforms.h>
#include <ZEL/serializer/writer/XmiWriterImpl.h>
#include <ZEL/values/Object.h>

#include <hasp_util/XmlWriter.h>

#include <exception>
#include <memory>
#include <string>
#include <utility>

namespace ZEL::Serializer {
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
    switch (result) {
    case SafeFile::Result::Done:
        return true;
    case SafeFile::Result::NotOpened:
        logAbout(LogLevel::error, Messages::ZEL_Serializer_XmiWriter_FileOpen, file.getTemporaryName());
        return false;
    case SafeFile::Result::Damaged:
        keptFile = file.getTemporaryName();
        break;
    case SafeFile::Result::Failed:
        break;
    }
    logAbout(LogLevel::error, Messages::ZEL_Serializer_XmiWriter_GenericError, file.getName());
    return false;
}

/// Writes the temporary file. False if it is not whole.
bool XmiWriterImpl::writeDocument(SafeFile const & file, ImmutableObject const & object) {
    HASP::XmlWriter xml(file.getTemporaryName(), HASP::XmlWriterSettings(true, "iso8859-1", fSettings.getAutoFlush()));
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

} // namespace ZEL::Serializer
