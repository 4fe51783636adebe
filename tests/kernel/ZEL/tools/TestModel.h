#pragma once

#include <ZEL/deviants/Transaction.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Constants.h>
#include <ZEL/metamodel/Factory.h>
#include <ZEL/metamodel/FactoryRegistry.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/Property.h>

#include <string>

namespace ZEL::tests {

/// A model of the built-in metamodel, open for writing, with a package at its top.
struct TestModel {
    explicit TestModel(std::string const & topName = "top")
        : model(FactoryRegistry::instance()->createModel(METAMODEL_URI)),
          factory(model.getFactoryFactory()),
          transaction(model.getRootDeviant()) {
        top = factory.createPackage(topName);
        model.setTopPackage(top);
    }

    Package package(Package const & owner, std::string const & name) const {
        Package const made = factory.createPackage(name);
        owner.getPackagedElements().push_back(made);
        return made;
    }
    Class classIn(Package const & owner, std::string const & name) const {
        Class const made = factory.createClass();
        made.setName(name);
        owner.getPackagedElements().push_back(made);
        return made;
    }
    Property attribute(Class const & owner, std::string const & name) const {
        Property const made = factory.createProperty();
        made.setName(name);
        owner.getOwnedAttributes().push_back(made);
        return made;
    }

    MetaModel model;
    Factory factory;
    Transaction transaction;
    Package top;
};

} // namespace ZEL::tests
