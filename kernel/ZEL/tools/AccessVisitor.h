#pragma once

#include <ZEL/Export.h>
#include <ZEL/metamodel/Forward.h>

namespace ZEL {

class ValueObject;

/// What is done with the parts of a model as reflection sees them, through handles for writing; see
/// `ImmutableAccessVisitor`. Each operation returns true to go on.
class ZEL_API AccessVisitor {
public:
    virtual ~AccessVisitor();

    /// Passes the object on to the first that fits of `visitModel`, `visitStereotypeObject`, `visitClassObject` and
    /// `visitValueObject`. False for a null handle and for an object that is not valid: a visitor that writes may have
    /// destroyed what comes next.
    virtual bool visitObject(Object object);
    virtual bool visitClassObject(ClassObject object) = 0;
    virtual bool visitValueObject(ValueObject value) = 0;
    virtual bool visitStereotypeObject(StereotypeObject instance) = 0;
    virtual bool visitModel(Model model) = 0;
    virtual bool visitProperty(ClassObject object, Property property) = 0;
};

/// Does nothing and goes on, for visitors of some kinds only. An object is not passed on by its kind either.
class ZEL_API AccessVisitorEmpty : public AccessVisitor {
public:
    bool visitObject(Object object) override;
    bool visitClassObject(ClassObject object) override;
    bool visitValueObject(ValueObject value) override;
    bool visitStereotypeObject(StereotypeObject instance) override;
    bool visitModel(Model model) override;
    bool visitProperty(ClassObject object, Property property) override;
};

/// A visitor that goes on from an object to others, and knows the way by which it has come. A base for applications,
/// which decide how to go on while the model changes.
class ZEL_API AccessVisitorTraversal : public AccessVisitor {
public:
    /// The property through which the present object has been reached; a null handle at the beginning.
    [[nodiscard]] virtual Property getCurrentMetaProperty() const = 0;
    /// The object whose property that is; a null handle at the beginning.
    [[nodiscard]] virtual ClassObject getCurrentClassObject() const = 0;
};

} // namespace ZEL
