#pragma once

#include <ZEL/Boolean.h>
#include <ZEL/String.h>
#include <ZEL/metamodel/Factory.h>
#include <ZEL/metamodel/MetaModel.h>

#include <gtest/gtest.h>

namespace ZEL::Test {

/// An empty model of the built-in metamodel.
class ModelFixture : public testing::Test {
protected:
    /// Runs `change` in a transaction of its own; an exception cancels it and passes.
    template <class Change> void change(Change operation) {
        model.beginTransaction();
        try {
            operation();
        } catch (...) {
            model.cancelTransaction();
            throw;
        }
        model.commitTransaction();
    }
    /// Opens a transaction that ends with the test.
    void open() { model.beginTransaction(); }

    MetaModel model = Factory::createNewModel();
    Factory factory = model.getFactoryFactory();
};

} // namespace ZEL::Test
