#include "ModelFixture.h"

#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/metamodel/ModelIntf.h>
#include <ZEL/metamodel/StateCore.h>
#include <ZEL/sequences/PersistentSequence.h>

#include <memory>

namespace ZEL::tests {
namespace {

using NSInterface::ClassObjectIntf;

/// A state without a body, as a change set has it.
struct StateCoreTest : OpenModelFixture {
    static std::unique_ptr<internal::StateCore> makeState() {
        return std::unique_ptr<internal::StateCore>(NSInterface::PackageIntf::descriptor().createState());
    }

    Package const container = factory.createPackage();
    ClassObjectIntf * const containerBody = container.getImplementation();
    NSInterface::ModelIntf * const modelBody = model.getImplementation();
    std::unique_ptr<internal::StateCore> const state = makeState();
};

TEST_F(StateCoreTest, KeepsModelAndContainerApart) {
    state->setContainer(containerBody);
    EXPECT_FALSE(state->hasModel());
    EXPECT_EQ(nullptr, state->model());
    state->setContainer(nullptr);
    EXPECT_EQ(nullptr, state->container());
    EXPECT_FALSE(state->hasModel());

    state->setModel(modelBody);
    EXPECT_EQ(nullptr, state->container());
    state->setContainer(containerBody);
    EXPECT_EQ(containerBody, state->container());
    EXPECT_EQ(modelBody, state->model());
    state->setContainer(nullptr);
    EXPECT_EQ(modelBody, state->model());

    state->setContainer(containerBody);
    state->setModel(nullptr);
    EXPECT_EQ(containerBody, state->container());
    EXPECT_EQ(nullptr, state->model());
    state->setModel(modelBody);
    state->setContainer(nullptr);
    state->setModel(nullptr);
    EXPECT_FALSE(state->hasModel());
    EXPECT_EQ(nullptr, state->model());
}

TEST_F(StateCoreTest, AssignsWhatFewStatesHave) {
    state->setModel(modelBody);
    state->setPersistence(2);
    state->writableStereotypeInstances().push_back(containerBody);
    auto const assign = NSInterface::PackageIntf::descriptor().assignState;

    auto const copy = makeState();
    assign(*copy, *state);
    EXPECT_EQ(modelBody, copy->model());
    EXPECT_EQ(2u, copy->persistence());
    copy->setPersistence(1);
    copy->writableStereotypeInstances().clear();
    EXPECT_EQ(2u, state->persistence());
    EXPECT_TRUE(state->stereotypeInstances().contains(containerBody));

    assign(*state, *makeState());
    EXPECT_EQ(0u, state->persistence());
    EXPECT_TRUE(state->stereotypeInstances().empty());
    EXPECT_FALSE(state->hasModel());
}

} // namespace
} // namespace ZEL::tests
