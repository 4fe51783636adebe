#pragma once

#include "kernel/ZEL/metamodel/ModelFixture.h"

namespace ZEL::tests {

/// A model of the built-in metamodel, open for writing, with a package at its top.
struct TestModel {
    explicit TestModel(std::string const & topName = "top")
        : model(Factory::createNewModel()), factory(model.getFactoryFactory()), transaction(model.getRootDeviant()) {
        top = factory.createPackage(topName);
        model.setTopPackage(top);
    }

    Package package(Package const & owner, std::string const & name) const {
        Package const made = factory.createPackage(name);
        owner.getPackagedElements().push_back(made);
        return made;
    }
    /// A package at the bottom of as many others.
    Package nestedPackage(int levels) const {
        Package bottom = top;
        for (int level = 0; level < levels; ++level) {
            bottom = package(bottom, "p");
        }
        return bottom;
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
