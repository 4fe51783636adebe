#pragma once

#include "host/TemporaryFolder.h"

#include <ZEL/Constants.h>
#include <ZEL/FactoryRegistry.h>
#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/Transaction.h>
#include <ZEL/metamodel/Factory.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/Package.h>

#include <gtest/gtest.h>

#include <string>

namespace ZEL::testsupport {

/// A model of the built-in metamodel in an open transaction, with a package "p" (id 2) at its top, and a folder to
/// write to.
class WriterFixture : public testing::Test {
protected:
    static constexpr char kUuid[] = "5376c05e-df72-49a6-85e0-5388c3fca417";

    WriterFixture()
        : model(FactoryRegistry::instance()->createModel(METAMODEL_URI)),
          factory(model.getFactory()),
          transaction(model.getDeviant()) {
        model.setUuidBase(kUuid);
        package = factory.createPackage();
        package.setName("p");
        model.setTopPackage(package);
    }

    /// "_zel_" and the model's uuid, and the object's number if it is not 0.
    [[nodiscard]] static std::string id(int number = 0) {
        return std::string("_zel_") + kUuid + (number == 0 ? "" : "_" + std::to_string(number));
    }

    /// The text with "@1" for the prefixed uuid and "@2" for the model's URI.
    [[nodiscard]] std::string filled(std::string text) const {
        replaceAll(text, "@1", id());
        replaceAll(text, "@2", "file://" + folder.path("m.xmi"));
        return text;
    }

    static void replaceAll(std::string & text, std::string const & from, std::string const & to) {
        for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
            text.replace(at, from.size(), to);
        }
    }

    TemporaryFolder folder;
    MetaModel model;
    Factory factory;
    Package package;
    Transaction transaction;
};

} // namespace ZEL::testsupport
