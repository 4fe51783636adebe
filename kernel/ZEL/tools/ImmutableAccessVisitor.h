#pragma once

#include <ZEL/Export.h>
#include <ZEL/metamodel/Forward.h>

namespace ZEL {

class ImmutableValueObject;

/// What is done with the parts of a model as reflection sees them: objects and values, whatever their metaclass, and
/// the properties of an object. Each operation returns true to go on.
class ZEL_API ImmutableAccessVisitor {
public:
    virtual ~ImmutableAccessVisitor();

    /// Passes the object on to the first that fits of `visitModel`, `visitStereotypeObject`, `visitClassObject` and
    /// `visitValueObject`. Throws "Attempt to traverse invalid object!" for a null handle and for an object that is not
    /// valid.
    virtual bool visitObject(ImmutableObject const & object);
    virtual bool visitClassObject(ImmutableClassObject const & object) = 0;
    virtual bool visitValueObject(ImmutableValueObject const & value) = 0;
    virtual bool visitStereotypeObject(ImmutableStereotypeObject const & instance) = 0;
    virtual bool visitModel(ImmutableModel const & model) = 0;
    virtual bool visitProperty(ImmutableClassObject const & object, ImmutableProperty const & property) = 0;
};

/// Does nothing and goes on, for visitors of some kinds only. An object is not passed on by its kind either.
class ZEL_API ImmutableAccessVisitorEmpty : public ImmutableAccessVisitor {
public:
    bool visitObject(ImmutableObject const &) override { return true; }
    bool visitClassObject(ImmutableClassObject const &) override { return true; }
    bool visitValueObject(ImmutableValueObject const &) override { return true; }
    bool visitStereotypeObject(ImmutableStereotypeObject const &) override { return true; }
    bool visitModel(ImmutableModel const &) override { return true; }
    bool visitProperty(ImmutableClassObject const &, ImmutableProperty const &) override { return true; }
};

/// A visitor that goes on from an object to others, and knows the way by which it has come.
class ZEL_API ImmutableAccessVisitorTraversal : public ImmutableAccessVisitor {
public:
    /// The property through which the present object has been reached; a null handle at the beginning.
    [[nodiscard]] virtual ImmutableProperty getCurrentMetaProperty() const = 0;
    /// The object whose property that is; a null handle at the beginning.
    [[nodiscard]] virtual ImmutableClassObject getCurrentClassObject() const = 0;
};

} // namespace ZEL
