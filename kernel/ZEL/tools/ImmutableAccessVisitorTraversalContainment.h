#pragma once

#include <ZEL/base/SoleOwner.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/tools/ImmutableAccessVisitor.h>

namespace ZEL {

namespace internal {
class BodyCore;
} // namespace internal

/// Walks the containment tree below an object and calls one visitor before and one after each part.
///
/// The properties of an object come in a fixed order: its name, single values, lists of values, contained objects,
/// references, extensions. Derived values are visited, derived links are not. After the properties come the stereotype
/// instances on the object, which `appliedStereotypeInstance` has shown already. An object reached by a reference is
/// visited, not entered, and neither is a stereotype instance.
///
/// `visitObject` calls the same operation of both visitors, and so does the operation for the kind of the object, so a
/// visitor that passes objects on by their kind sees each object twice: override its `visitObject`, or begin with
/// `ImmutableAccessVisitorEmpty`.
///
/// The first false from any operation ends the walk. After an exception the traversal must not be used any more.
/// Operations nest as the objects do and overrides may act around them, whatever the depth: models of a million levels
/// need memory, no large stack. The order of the properties of a metaclass is found once in a walk. Linear, save what
/// the values cost: a qualified name is as long as the way up. For one walk at a time.
class ZEL_API ImmutableAccessVisitorTraversalContainment : public ImmutableAccessVisitorTraversal {
public:
    /// The visitors stay those of the caller, and must live as long as walks go on. Throws "An Internal Error has
    /// occurred" if one is null.
    ImmutableAccessVisitorTraversalContainment(ImmutableAccessVisitor * pre, ImmutableAccessVisitor * post);
    ~ImmutableAccessVisitorTraversalContainment() override;

    /// Throws "Attempt to traverse invalid object!" for a null handle and for an object that is not valid.
    bool visitObject(ImmutableObject const & object) override;
    bool visitClassObject(ImmutableClassObject const & object) override;
    bool visitValueObject(ImmutableValueObject const & value) override;
    bool visitStereotypeObject(ImmutableStereotypeObject const & instance) override;
    bool visitModel(ImmutableModel const & model) override;
    /// The values of the property, each as the present one.
    bool visitProperty(ImmutableClassObject const & object, ImmutableProperty const & property) override;

    [[nodiscard]] ImmutableProperty getCurrentMetaProperty() const override;
    [[nodiscard]] ImmutableClassObject getCurrentClassObject() const override;

protected:
    /// The properties of the object and the stereotype instances on it, unless it has been reached by a reference.
    virtual bool traverseClassObject(ImmutableClassObject const & object);
    /// The last part of it.
    virtual bool traverseStereotypeInstances(ImmutableClassObject const & object);
    /// The property "name" of the class of the object; a null handle if it has none.
    [[nodiscard]] ImmutableProperty getNameProperty(ImmutableClassObject const & object) const;

private:
    class Walk;
    struct VisitedProperty;

    /// How the present object has been reached. What it points to belongs to the operations that are under way.
    struct Way {
        ImmutableProperty const * property = nullptr;
        ImmutableClassObject const * object = nullptr;
        bool isEntered = true; ///< an object at the end of it is entered: it is contained, or the first
    };

    /// From the outermost operation to its end there is a walk: as long as what this returns lives.
    auto beginWalk();
    /// `visitProperty` for one whose values can be read after the visit before it. `body` is the object's, here as below.
    bool visitKnown(ImmutableClassObject const & object, internal::BodyCore const & body,
                    ImmutableProperty const & property, VisitedProperty const & known);
    /// Of a property that is not empty, as far as its place shows it.
    bool visitValuesOf(ImmutableClassObject const & object, internal::BodyCore const & body,
                       VisitedProperty const & visited);
    /// Calls `visit` with this as the present way.
    template <class Visit> bool onWay(Way const & way, Visit visit);
    /// Visits one of the values to which the present way leads.
    bool visitValue(ImmutableObject const & value, bool isDataType);
    /// The same for a value that has just been boxed.
    bool visitBox(ImmutableValueObject const & value);
    /// `ImmutableAccessVisitor::visitObject` for a walk of which nobody overrides an operation.
    bool visitKind(ImmutableObject const & object, bool isDataType);

    Way fWay;
    ImmutableProperty fLastProperty; ///< where the way ended with an exception
    ImmutableClassObject fLastObject;
    ImmutableAccessVisitor * fPreVisitor;
    ImmutableAccessVisitor * fPostVisitor;
    internal::SoleOwner<Walk> fWalk; ///< what is kept from the outermost operation to its end
};

} // namespace ZEL
