#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/base/SafeFile.h>
#include <ZEL/deviants/Transaction.h>
#include <ZEL/interchange/TemporaryFolder.h>
#include <ZEL/interchange/UmlForm.h>
#include <ZEL/interchange/UmlFormWriter.h>
#include <ZEL/interchange/WriteTransforms.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/writer/XmiWriter.h>

#include <hasp_util/Uri.h>
#include <hasp_util/XmlWriter.h>

namespace ZEL::Interchange {
namespace {

[[noreturn]] void raise(std::string const & reason) { throw Exception(reason); }

/// Links are made relative to it.
void setPlace(Model model, std::string const & file) {
    HASP::Uri const uri = HASP::Uri::fromLocalFile(file);
    if (!uri.isValid()) {
        raise(uri.error());
    }
    Transaction transaction(model.getRootDeviant(), "place of the model");
    model.setUri(uri.toString());
    transaction.commit();
}

/// The model in the form of this system, in the folder.
std::string writePlain(Model const & model, TemporaryFolder const & folder) {
    Serializer::XmiWriterSettings settings;
    settings.setElementPerValue(true);
    settings.setKeepFileIds(true);
    Serializer::XmiWriter writer(settings);
    addWriteTransforms(writer, model);
    std::string plain = folder.path() + "/model.xmi";
    if (!writer.writeObject(plain, model)) {
        raise(writer.failureReason());
    }
    return plain;
}

} // namespace

void writeAs(UmlForm form, std::string const & file, Model model) {
    if (!model.isValid() ||
        model.getMetaClass().getRootModel().getUri() != String(NamespaceRegistry::instance()->getMetaUri("uml"))) {
        raise("the model is not one of UML");
    }
    SafeFile goal(file);
    if (!goal.open()) {
        raise(goal.getReason());
    }
    try {
        setPlace(model, file);
        TemporaryFolder const folder;
        std::string const plain = writePlain(model, folder);
        HASP::XmlWriter xml(goal.getTemporaryName(), HASP::XmlWriterSettings(true, "UTF-8", false));
        UmlFormWriter(form, plain, xml).write();
        if (!xml.close()) {
            raise(xml.errorText());
        }
    } catch (...) {
        goal.remove();
        throw;
    }
    SafeFile::Result const result = goal.put();
    if (result == SafeFile::Result::Damaged) {
        raise(goal.getReason() + "; what was written is in " + goal.getTemporaryName());
    }
    if (result != SafeFile::Result::Done) {
        std::string const reason = goal.getReason();
        goal.remove();
        raise(reason);
    }
}

} // namespace ZEL::Interchange
