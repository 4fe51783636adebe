#pragma once

#include "support/Castable.h"

#include <ZEL/deviants/DeviantManager.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace ZEL::testsupport {

/// State of a `Thing`: a number and a container.
class ThingState : public Test::Castable<ThingState, NSInterface::ClassObjectOperations, ThingState> {
public:
    ThingState() { ++numberAlive; }
    ~ThingState() override { --numberAlive; }
    void internal_deviationAssign(Deviant target, NSInterface::ObjectIntf * source, Deviant sourceDeviant) override;
    static Test::ClassInfo const & classInfo() { return Test::classInfoOf<ThingState>(); }

    static inline int numberAlive = 0;

    int value = 0;
    NSInterface::ClassObjectIntf const * container = nullptr;
};

/// A body that follows the state protocol step by step, with a plain count. It deletes itself at count 0.
class Thing : public Test::Castable<Thing, NSInterface::ClassObjectOperations, Thing> {
public:
    Thing() = default;
    ~Thing() override;
    static Test::ClassInfo const & classInfo() { return Test::classInfoOf<Thing>(); }

    // --- what a client does ----------------------------------------------------------------------------------------
    [[nodiscard]] int valueIn(Deviant deviant) const;
    void set(Deviant deviant, int value);
    void setContainer(Deviant deviant, Thing const * container);
    /// Ends the object in the deviant, saving what was.
    void end(Deviant deviant);

    // --- counting ----------------------------------------------------------------------------------------------------
    void incRef() override { ++fCount; }
    void decRef() override;
    int numRef() override { return fCount; }

    // --- state protocol ----------------------------------------------------------------------------------------------
    [[nodiscard]] bool deviant_isValid(Deviant deviant) const override;
    void deviant_destroyState(NSInterface::ObjectIntf * state) override;
    void deviant_commitTransientState(Deviant deviant) override;
    [[nodiscard]] NSInterface::ObjectIntf * deviant_getCopyOfDeviation(Deviant deviant) const override;
    [[nodiscard]] NSInterface::ObjectIntf * internal_getDeviation(Deviant deviant) const override;
    void internal_setDeviation(Deviant deviant, NSInterface::ObjectIntf * state) override;
    NSInterface::ObjectIntf * internal_createDeviation(Deviant deviant) override;
    void internal_destroyDeviation(Deviant deviant) override;
    [[nodiscard]] NSInterface::ObjectIntf * getReadDeviant(Deviant deviant) const override;
    [[nodiscard]] NSInterface::ObjectIntf * getWriteDeviant(Deviant deviant) const override;
    [[nodiscard]] NSInterface::ClassObjectIntf const * internal_container(Deviant deviant) const override;

    static inline int numberAlive = 0;

private:
    [[nodiscard]] NSInterface::ObjectIntf * observedState(Deviant deviant) const;
    [[nodiscard]] NSInterface::ObjectIntf * readStateFromRoot(Deviant deviant) const;
    void store(Deviant deviant, NSInterface::ObjectIntf * state) const;
    void saveOldState(Deviant deviant, NSInterface::ObjectIntf * state) const;

    struct Counted {
        Counted() { ++numberAlive; }
        ~Counted() { --numberAlive; }
    } fAlive;
    int fCount = 0;
    mutable NSInterface::ObjectIntf * fRootState = nullptr;
};

/// A class of things that a listener can tell from the others.
class SpecialThing : public Test::Castable<SpecialThing, Thing, SpecialThing, Thing> {
public:
    static Test::ClassInfo const & classInfo() { return Test::classInfoOf<SpecialThing>(); }
};

/// Puts a sentinel where a state stands.
inline NSInterface::ObjectIntf * asState(void * sentinel) { return static_cast<NSInterface::ObjectIntf *>(sentinel); }

/// The text of the exception that `action` raises; "(nothing)" if it raises none.
template <class Action> std::string raisedBy(Action action) {
    try {
        action();
    } catch (std::exception const & failure) {
        return failure.what();
    }
    return "(nothing)";
}

/// A manager with some things, all counted once by the fixture. Each test ends with a look for states and bodies that
/// nobody has given back.
class DeviantFixture : public testing::Test {
protected:
    DeviantFixture();
    ~DeviantFixture() override;

    /// A thing that exists in `deviant`, made in a transaction of its own unless one is open.
    template <class T = Thing> T & make(Deviant deviant, int value) {
        T & thing = makeBody<T>();
        enter(thing, deviant, value);
        return thing;
    }
    /// A body that no deviant knows.
    template <class T = Thing> T & makeBody() {
        auto * const thing = new T;
        thing->incRef();
        fThings.push_back(thing);
        return *thing;
    }
    /// A root commit that sets one number.
    void commitValue(Deviant deviant, Thing & thing, int value, std::string const & name = std::string());
    Deviant createDeviant(std::string const & name) { return manager->createDeviantWithName(name); }
    /// Ends the manager and all things.
    void endAll();

    std::unique_ptr<DeviantManager> manager = std::make_unique<DeviantManager>();
    Deviant root = manager->getRootDeviant();

private:
    static void enter(Thing & thing, Deviant deviant, int value);

    std::vector<Thing *> fThings;
    int fStatesBefore;
    int fThingsBefore;
};

} // namespace ZEL::testsupport
