#include <ZEL/String.h>
#include <ZEL/base/AtScopeEnd.h>
#include <ZEL/base/Exception.h>
#include <ZEL/deviants/DeviantAssertions.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/serializer/writer/XmiWriter.h>
#include <ZEL/serializer/writer/XmiWriterImpl.h>
#include <ZEL/values/Object.h>

#include <hasp_util/Uri.h>

#include <utility>

namespace ZEL::Serializer {
namespace {

/// Writes the model to where its URI says; from then on its objects have the ids in that file that a writer gives.
bool writeModel(XmiWriterImpl & writer, std::string const & file, ImmutableModel const & model) {
    if (!writer.write(file, model)) {
        return false;
    }
    model.getImplementation()->internal_body()->internal_model()->forgetFileIds();
    return true;
}

} // namespace

XmiWriter::XmiWriter(XmiWriterSettings const & settings) : fImpl(std::make_shared<XmiWriterImpl>(settings)) {}

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
    return writeModel(*fImpl, file, model);
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
    return writeModel(*fImpl, file, model);
}

bool XmiWriter::writeObject(std::string const & file, ImmutableObject const & object) {
    if (!object.isValid()) {
        raiseInternalError("Attempt to serialize invalid object!");
    }
    return fImpl->write(file, object);
}

std::string const & XmiWriter::failureReason() const { return fImpl->failureReason; }

std::string const & XmiWriter::keptFile() const { return fImpl->keptFile; }

void XmiWriter::addTransformer(Transformer * transformer) { fImpl->transformers.addTransformer(transformer); }

void XmiWriter::addTransformer(std::shared_ptr<Transformer> transformer) {
    fImpl->transformers.addTransformer(std::move(transformer));
}

void XmiWriter::removeTransformer(Transformer * transformer) { fImpl->transformers.removeTransformer(transformer); }

void XmiWriter::setContextSequenceCreator(ContextSequenceCreator creator) {
    fImpl->functions.createContexts = std::move(creator);
}

void XmiWriter::setPreVisitableGenerator(VisitableGenerator generator) {
    fImpl->functions.before = std::move(generator);
}

void XmiWriter::setVisitableGenerator(VisitableGenerator generator) {
    fImpl->functions.children = std::move(generator);
}

void XmiWriter::setPostVisitableGenerator(VisitableGenerator generator) {
    fImpl->functions.after = std::move(generator);
}

} // namespace ZEL::Serializer
