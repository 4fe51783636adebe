#pragma once

#include "host/TemporaryFolder.h"
#include "support/Texts.h"

#include <ZEL/ZEL.h>
#include <ZEL/compare/Differences.h>
#include <ZEL/compare/Label.h>
#include <ZEL/compare/Sentence.h>
#include <ZEL/interchange/Interchange.h>

#include <gtest/gtest.h>
#include <library/MetaModelRegistration.h>

#include <string>

namespace ZEL::Compare::tests {

/// What a file with these elements at its top is read as, without a history. In them `id` stands for `xmi:id`, and
/// `is='Class'` for `xmi:type='ZEL:Class'`.
inline Model read(std::string const & elements) {
    Library::registerMetaModel();
    Logger::instance()->setDefaultHandlerLevel(LogLevel::off);
    std::string const content =
        ZEL::tests::replaced(ZEL::tests::replaced(elements, " id=", " xmi:id="), " is='", " xmi:type='ZEL:");
    TemporaryFolder const folder;
    std::string const file = folder.file(
        "m.xmi", "<xmi:XMI xmi:version='2.1' xmlns:xmi='http://schema.omg.org/spec/XMI/2.1'"
                 " xmlns:ZEL='http://schema.omg.org/spec/MOF/2.0' xmlns:library='http://example.org/library/1.0'"
                 " xmlns:uml='http://schema.omg.org/spec/UML/2.1'"
                 " xmlns:Rhapsody='http://www.quillon.example/schemas/RhapsodyPlatform.xmi'>" +
                     content + "</xmi:XMI>");
    Serializer::XmiReader reader;
    Interchange::addReadTransforms(reader);
    Model const model(reader.read(file));
    EXPECT_TRUE(reader.report().isEmpty()) << elements;
    model.beginTransaction("forget the file");
    model.setUri("m");
    model.commitTransaction();
    model.getRootDeviant().clearUndoStack();
    return model;
}

/// A model of one house that contains the elements; others stand beside it.
inline Model house(std::string const & elements, std::string const & beside = "") {
    return read("<library:LibraryModel id='m'><house id='h' name='House'>" + elements +
                "</house></library:LibraryModel>" + beside);
}

/// A model of one package that contains the elements.
inline Model package(std::string const & elements) {
    return read("<ZEL:MetaModel id='m'><topPackage is='Package' id='p' name='p'>" + elements +
                "</topPackage></ZEL:MetaModel>");
}

/// A model of UML that contains the elements; stereotypes stand beside it.
inline Model umlModel(std::string const & elements, std::string const & beside = "") {
    Interchange::registerMetaModels();
    return read("<uml:Model id='m' name='uml'>" + ZEL::tests::replaced(elements, " of='", " xmi:type='uml:") +
                "</uml:Model>" + beside);
}

/// The only object of this name, or the model; invalid if there is none.
inline ClassObject named(Model const & model, std::string const & name) {
    for (ImmutableClassObject const & object : objectsIn(model)) {
        if (nameOf(object) == name) {
            return ClassObject(object.getImplementation(), object.getDeviant());
        }
    }
    return ClassObject();
}

inline std::string told(Differences const & differences) {
    std::string lines;
    for (Difference const & difference : differences) {
        lines += sentenceOf(difference) + "\n";
    }
    return lines;
}

/// What differs; empty for equal models.
inline std::string leftOver(ImmutableClassObject const & a, ImmutableClassObject const & b) {
    return ZEL::compare(a, b) ? "" : "different:\n" + told(diff(a, b));
}

/// Refuses everything while it lives.
class Veto : public ListenerBase {
public:
    explicit Veto(Deviant deviant) : fDeviant(deviant) { registerValidatorOnCommit(fDeviant, *this); }
    ~Veto() override { fDeviant.unregisterValidatorOnCommit(this); }
    Veto(Veto const &) = delete;
    Veto & operator=(Veto const &) = delete;
    bool validateOnCommit(ReportOfChanges<ImmutableClassObject, TRUE_TYPE> const &) { return false; }

private:
    Deviant fDeviant;
};

} // namespace ZEL::Compare::tests
