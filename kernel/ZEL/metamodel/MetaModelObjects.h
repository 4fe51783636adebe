#pragma once

#include <ZEL/metamodel/AssociationDeviantImpl.h>
#include <ZEL/metamodel/AssociationImpl.h>
#include <ZEL/metamodel/CommentDeviantImpl.h>
#include <ZEL/metamodel/CommentImpl.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/metamodel/PackageDeviantImpl.h>
#include <ZEL/metamodel/PackageImpl.h>
#include <ZEL/metamodel/PropertyDeviantImpl.h>
#include <ZEL/metamodel/PropertyImpl.h>

#include <type_traits>
#include <vector>

namespace ZEL::internal {

/// An object under construction and its state in the root deviant. Both may be interfaces of theirs.
template <class Body, class State> struct ObjectInWork {
    Body * object = nullptr;
    State * state = nullptr;
};

using AssociationInWork = ObjectInWork<NSImplementation::AssociationImpl, NSImplementation::AssociationDeviantImpl>;
using ClassInWork = ObjectInWork<NSInterface::ClassIntf, NSInterface::ClassIntf>;
using CommentInWork = ObjectInWork<NSImplementation::CommentImpl, NSImplementation::CommentDeviantImpl>;
using PackageInWork = ObjectInWork<NSImplementation::PackageImpl, NSImplementation::PackageDeviantImpl>;
using PropertyInWork = ObjectInWork<NSImplementation::PropertyImpl, NSImplementation::PropertyDeviantImpl>;

/// Makes the objects of a metamodel that is being built.
///
/// Their states are written in place: nobody else knows the objects, nothing of them is to be undone, and who builds
/// sets both ends of each link. That leaves out what a write does for all others: to look for the state and for what
/// stands in the way, to save, to tell.
class MetaModelObjects {
public:
    explicit MetaModelObjects(MetaModel const & model)
        : fModel(static_cast<ModelCore &>(*model.getImplementation()->internal_body())), fRoot(model.getDeviant()) {}

    [[nodiscard]] ModelCore & model() const noexcept { return fModel; }
    [[nodiscard]] Deviant root() const noexcept { return fRoot; }

    /// The next object; it stands nowhere.
    template <class Made> [[nodiscard]] Made make() const {
        using Body = std::remove_pointer_t<decltype(Made::object)>;
        using State = std::remove_pointer_t<decltype(Made::state)>;
        BodyCore & body = fModel.create(fRoot, Body::descriptor(), fModel.nextId());
        return {static_cast<Body *>(&body), static_cast<State *>(body.readState(fRoot))};
    }

    /// What is referred to may be of another model, which must not free it then.
    void noteReferred(NSInterface::ObjectIntf & referred) const { fModel.internal_noteElement(&referred); }

private:
    ModelCore & fModel;
    Deviant fRoot;
};

} // namespace ZEL::internal
