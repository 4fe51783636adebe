#pragma once

#include "support/ExpectRaises.h"

#include <ZEL/ZEL.h>

#include <gmock/gmock.h>

#include <functional>

namespace ZEL::tests {

using testing::ElementsAre;

/// The names of the elements, in order.
template <class Sequence> std::vector<std::string> namesOf(Sequence const & elements) {
    std::vector<std::string> names;
    for (auto const & element : elements) {
        names.push_back(element.getName().str());
    }
    return names;
}

/// A row of a table of calls.
struct NamedCall {
    char const * name;
    std::function<void()> call;
};

/// An empty model in an open transaction.
inline MetaModel openModel() {
    MetaModel const made = Factory::createNewModel();
    made.beginTransaction();
    return made;
}

/// An empty model of the built-in metamodel.
struct ModelFixture : testing::Test {
    /// Runs `operation` in a transaction of its own. An exception cancels the transaction and passes on.
    template <class Change> void change(Change operation) {
        Transaction transaction(model.getDeviant());
        operation();
        transaction.commit();
    }
    /// Opens a transaction that ends with the test.
    void open() { model.beginTransaction(); }
    /// A new object; in a transaction of its own unless one is open.
    template <class T> T make() {
        T object;
        change([&] { object = factory.create<T>(); });
        return object;
    }

    MetaModel model = Factory::createNewModel();
    Factory factory = model.getFactoryFactory();
};

/// An empty model in which a transaction is open to the end of the test.
struct OpenModelFixture : ModelFixture {
    OpenModelFixture() { open(); }
};

/// Each reflective operation throws: the readers one text, the writers another. `property` is a name or a property.
template <class H, class P>
void expectRefused(H const & object, P const & property, char const * readText, char const * writeText) {
    typename H::ImmutableForm const immutable(object);
    Object const value;
    EXPECT_RAISES(readText, object.get(property));
    EXPECT_RAISES(readText, object.getOne(property));
    EXPECT_RAISES(readText, object.has(property));
    EXPECT_RAISES(readText, immutable.get(property));
    EXPECT_RAISES(readText, immutable.getOne(property));
    EXPECT_RAISES(readText, immutable.has(property));
    EXPECT_RAISES(writeText, object.setOrAdd(property, value));
    EXPECT_RAISES(writeText, object.setOrAddOnly(property, value));
    EXPECT_RAISES(writeText, object.remove(property, value));
    EXPECT_RAISES(writeText, object.removeOnly(property, value));
    EXPECT_RAISES(writeText, object.removeOne(property));
    EXPECT_RAISES(writeText, object.removeOneOnly(property));
}

} // namespace ZEL::tests
