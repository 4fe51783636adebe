#pragma once

#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/serializer/TransformerRegistry.h>
#include <ZEL/serializer/writer/WriterTraversal.h>
#include <ZEL/serializer/writer/XmiWriterSettings.h>

#include <string>

namespace ZEL {
class ImmutableObject;
class SafeFile;
} // namespace ZEL

namespace ZEL::Serializer {

/// What the handles of one writer share. What belongs to one run lives in the run alone.
class XmiWriterImpl {
public:
    explicit XmiWriterImpl(XmiWriterSettings const & settings) : fSettings(settings) {}

    /// One run. Clears the Transformers at its end, however it ends. False when the file could not be produced.
    bool write(std::string const & file, ImmutableObject const & object);

    TransformerRegistry transformers;
    WriterFunctions functions;
    std::string failureReason; ///< why the last run returned false
    std::string keptFile;      ///< where the last run left the whole document because its file could not take all of it

private:
    bool run(SafeFile & file, ImmutableObject const & object);
    bool writeDocument(SafeFile const & file, ImmutableObject const & object);
    void addDialect();

    XmiWriterSettings const fSettings;
};

} // namespace ZEL::Serializer
