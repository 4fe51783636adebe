#pragma once

#include "support/Castable.h"
#include "support/ExpectRaises.h"

#include <ZEL/deviants/DeviantManager.h>
#include <ZEL/metamodel/MetaModel.h>

#include <memory>
#include <ostream>
#include <vector>

namespace ZEL::tests {

using NSInterface::ClassObjectIntf;
using NSInterface::ObjectIntf;

/// State of a `Thing`: a number and a container.
class ThingState : public Castable<ThingState, NSInterface::ClassObjectOperations, ThingState> {
public:
    void internal_deviationAssign(Deviant target, ObjectIntf * source, Deviant sourceDeviant) override;
    static ClassInfo const & classInfo() { return classInfoOf<ThingState>(); }

    int value = 0;
    ClassObjectIntf const * container = nullptr;
};

/// A client's object outside the generated classes: a body that follows the state protocol step by step, with a plain
/// count. It deletes itself at count 0.
class Thing : public Castable<Thing, NSInterface::ClassObjectOperations, Thing> {
public:
    Thing() = default;
    ~Thing() override;
    static ClassInfo const & classInfo() { return classInfoOf<Thing>(); }

    // --- counting ----------------------------------------------------------------------------------------------------
    void incRef() override { ++fCount; }
    void decRef() override;
    int numRef() override { return fCount; }

    // --- state protocol ----------------------------------------------------------------------------------------------
    void internal_destroyContents(Deviant deviant) override;
    [[nodiscard]] bool deviant_isValid(Deviant deviant) const override;
    void deviant_destroyState(ObjectIntf * state) override;
    void deviant_commitTransientState(Deviant deviant) override;
    [[nodiscard]] ObjectIntf * deviant_getCopyOfDeviation(Deviant deviant) const override;
    [[nodiscard]] ObjectIntf * internal_getDeviation(Deviant deviant) const override;
    void internal_setDeviation(Deviant deviant, ObjectIntf * state) override;
    ObjectIntf * internal_createDeviation(Deviant deviant) override;
    void internal_destroyDeviation(Deviant deviant) override;
    [[nodiscard]] ObjectIntf * getReadDeviant(Deviant deviant) const override;
    [[nodiscard]] ObjectIntf * getWriteDeviant(Deviant deviant) const override;
    [[nodiscard]] ClassObjectIntf const * internal_container(Deviant deviant) const override;

private:
    [[nodiscard]] ObjectIntf * observedState(Deviant deviant) const;
    [[nodiscard]] ObjectIntf * readStateFromRoot(Deviant deviant) const;
    void store(Deviant deviant, ObjectIntf * state) const;
    void saveOldState(Deviant deviant, ObjectIntf * state) const;

    int fCount = 0;
    mutable ObjectIntf * fRootState = nullptr;
};

/// A class of things that a listener can tell from the others.
class SpecialThing : public Castable<SpecialThing, Thing, SpecialThing, Thing> {
public:
    static ClassInfo const & classInfo() { return classInfoOf<SpecialThing>(); }
};

/// The number of bodies, states and boxed values in the process.
[[nodiscard]] int numberAlive();

/// A sentinel in the place of a state.
inline ObjectIntf * asState(void * sentinel) { return static_cast<ObjectIntf *>(sentinel); }

// --- what a test works on --------------------------------------------------------------------------------------------

/// What the objects of a test are: things, or packages of a model.
enum class Kind { Things, Packages };

inline std::ostream & operator<<(std::ostream & out, Kind kind) {
    return out << (kind == Kind::Things ? "Things" : "Packages");
}

/// An object of either kind, as a client knows it: with a value, which is a package's name, and a container.
class Subject {
public:
    explicit Subject(ClassObjectIntf & body) : fBody(&body) {}
    operator ClassObjectIntf *() const { return fBody; } // for where bodies are passed
    ClassObjectIntf * operator->() const { return fBody; }

    [[nodiscard]] int valueIn(Deviant deviant) const;
    void set(Deviant deviant, int value) const;
    void setContainer(Deviant deviant, Subject container) const;
    /// Ends the object in the deviant, saving what was.
    void end(Deviant deviant) const { fBody->internal_destroyContents(deviant); }

private:
    [[nodiscard]] NSInterface::PackageIntf * package() const;

    ClassObjectIntf * fBody;
};

/// A manager, alone or in a model, and some objects, all counted once by the fixture. At the end of each test none
/// of their states and bodies may be left.
class DeviantFixture : public testing::Test {
protected:
    explicit DeviantFixture(Kind kind);
    ~DeviantFixture() override;

    /// An object that exists in `deviant`, made in a transaction of its own unless one is open. A special one is of a
    /// class of its own: `SpecialThing` or `Profile`.
    Subject make(Deviant deviant, int value, bool isSpecial = false);
    /// One that no deviant knows.
    [[nodiscard]] Subject makeBody(bool isSpecial = false);
    /// A commit that sets one number.
    static void commitValue(Deviant deviant, Subject object, int value, std::string const & name = std::string());
    Deviant createDeviant(std::string const & name) const { return manager->createDeviantWithName(name); }
    /// Ends the manager and all objects.
    void endAll();

private:
    int fAliveBefore;
    MetaModel fModel; ///< of packages
    std::unique_ptr<DeviantManager> fManager;
    std::vector<ClassObjectIntf *> fBodies;

protected:
    DeviantManager * const manager; ///< until `endAll`
    Deviant const root = manager->getRootDeviant();
};

} // namespace ZEL::tests
