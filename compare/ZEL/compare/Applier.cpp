#include <ZEL/compare/Applier.h>
#include <ZEL/compare/Label.h>
#include <ZEL/compare/ListOrder.h>
#include <ZEL/deviants/Transaction.h>
#include <ZEL/metamodel/FactorySupport.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/metamodel/Remainder.h>
#include <ZEL/serializer/ObjectId.h>
#include <ZEL/values/ValueObject.h>

#include <algorithm>
#include <cstdint>
#include <tuple>
#include <utility>

namespace ZEL::Compare {
namespace {

using Kind = Difference::Kind;

/// What tells an object from others beside it, whatever its id.
std::string contentOf(ImmutableClassObject const & object) {
    std::string content;
    MetaClassView const & view = MetaClassView::ofInstance(object);
    for (PropertyView const & property : view.properties()) {
        if (property.isDataType && !property.isDerived && !property.isIdentity()) {
            object.get(property.property).forEach([&content](ImmutableObject const & value) {
                ImmutableValueObject const text(value);
                content += (text.isValid() ? text.toString().str() : std::string()) + '\n';
            });
        }
    }
    return content;
}

/// An order of objects that both sides of a merge see in the same way.
bool isLess(ImmutableClassObject const & a, ImmutableClassObject const & b) {
    if (!a.isValid() || !b.isValid()) {
        return a.isValid() < b.isValid(); // a link may have outlived its target
    }
    auto const keyOf = [](ImmutableClassObject const & object) {
        return std::tuple(MetaClassView::ofInstance(object).name(), nameOf(object));
    };
    auto const keyOfA = keyOf(a);
    auto const keyOfB = keyOf(b);
    return keyOfA != keyOfB ? keyOfA < keyOfB : contentOf(a) < contentOf(b);
}

} // namespace

Applier::Applier(Match const & match, ClassObject const & target, TargetOf targetOfLeft)
    : fPairs(match.pairs()),
      fTarget(target),
      fModel(*target.getImplementation()->internal_body()->internal_model()),
      fTargetOfLeft(std::move(targetOfLeft)) {}

ObjectIntf * Applier::targetOfLeft(ObjectIntf * left) const {
    return fPairs.left().tree.indexOf(left) == Tree::kNone ? left : fTargetOfLeft(left);
}

ObjectIntf * Applier::targetOfRight(ObjectIntf * right) const {
    if (auto const created = fCreated.find(right); created != fCreated.end()) {
        return created->second;
    }
    ObjectIntf * const left = fPairs.leftOf(right);
    return left == nullptr ? nullptr : targetOfLeft(left);
}

// --- objects ---------------------------------------------------------------------------------------------------------

/// With the number or the file's id that the object has on the right, unless the model has an object of that.
internal::BodyCore & Applier::makeBody(Tree::Node const & node) {
    constexpr std::int32_t kFarthest = 1 << 20; // from the numbers in use, which must not run out
    internal::ClassDescriptor const & descriptor = node.body->internal_descriptor();
    Deviant const deviant = fTarget.getDeviant();
    internal::ModelCore const & source = *node.body->internal_model();
    std::string const * const noted = source.fileIdOf(node.body->internal_id());
    std::string const idText =
        noted != nullptr ? *noted : ObjectId::of(ImmutableClassObject(node.body, node.deviant()));
    ObjectId const id(idText);
    if (id.number() > 0) { // an id of this system, whose number a reader takes whatever model it is of
        bool const isOfModel = id.head() == ObjectId::of(ImmutableClassObject(&fModel, deviant)) + '_';
        bool const isFree = isOfModel && fModel.bodyById(deviant, id.number()) == nullptr &&
                            id.number() - fModel.nextId() < kFarthest && fModel.fileIdOf(id.number()) == nullptr;
        return isFree ? internal::createObject(fModel, deviant, descriptor, id.number())
                      : internal::createObject(fModel, deviant, descriptor);
    }
    internal::BodyCore & body = internal::createObject(fModel, deviant, descriptor);
    if (!fTakenIds.has_value()) {
        fTakenIds.emplace();
        for (auto const & entry : fModel.fileIds()) {
            fTakenIds->insert(entry.second);
        }
    }
    if (fTakenIds->count(idText) == 0) {
        fModel.noteFileId(body.internal_id(), idText);
        fTakenIds->insert(*fModel.fileIdOf(body.internal_id()));
    }
    return body;
}

void Applier::create(Index added) {
    Side const & right = fPairs.right();
    for (Index index = added; index < right.tree[added].end; ++index) {
        if (right.counterparts[index] != Tree::kNone) {
            index = right.tree[index].end - 1; // it moves here, and what is new in it is told on its own
            continue;
        }
        Tree::Node const & node = right.tree[index];
        internal::BodyCore & body = makeBody(node);
        fCreated.insert_or_assign(node.object(), static_cast<ObjectIntf *>(&body));
        fAdded.push_back(index);
        fPlaced.push_back(index);
    }
}

void Applier::place(Index right) {
    Tree const & tree = fPairs.right().tree;
    Tree::Node const & node = tree[right];
    ObjectIntf * const object = targetOfRight(node.object());
    ObjectIntf * const container = targetOfRight(tree[node.container].object());
    if (object == nullptr || container == nullptr || !handleOf(object).isValid() || !handleOf(container).isValid()) {
        return;
    }
    touch(container, *node.property, node.container);
    handleOf(container).setOrAdd(node.property->property, Object(object, fTarget.getDeviant()));
}

void Applier::destroy(Difference const & difference) const {
    Side const & left = fPairs.left();
    left.forEachUnmatched(left.tree.indexOf(ImmutableObject(difference.left).getImplementation()), [&](Index index) {
        ObjectIntf * const object = targetOfLeft(left.tree[index].object());
        if (object != nullptr && handleOf(object).isValid()) { // not gone with what contained it
            handleOf(object).destroy();
        }
    });
}

// --- values and links ------------------------------------------------------------------------------------------------

void Applier::setValues(ClassObject const & object, PropertyView const & property,
                        std::vector<ImmutableObject> const & values) const {
    auto const boxed = [this](ImmutableObject const & value) {
        return Object(value.getImplementation(), fTarget.getDeviant());
    };
    if (!property.isMany) {
        if (values.empty()) {
            object.removeOne(property.property);
        } else {
            object.setOrAdd(property.property, boxed(values.front()));
        }
        return;
    }
    Sequence<Object> const list = object.get(property.property);
    list.clear();
    for (ImmutableObject const & value : values) {
        list.push_back(boxed(value));
    }
}

void Applier::setValuesOf(Index added) {
    Tree const & tree = fPairs.right().tree;
    Tree::Node const & node = tree[added];
    ImmutableClassObject const source = tree.handleOf(added);
    ClassObject const made = handleOf(targetOfRight(node.object()));
    for (PropertyView const * const property : node.metaClass->values) {
        if (property->value == nullptr) {
            std::vector<ImmutableObject> const values = source.get(property->property).toVector();
            if (!values.empty() || made.has(property->property)) {
                setValues(made, *property, values);
            }
            continue;
        }
        FieldValue const value = property->value->get(tree.stateOf(added));
        if (!(value == property->valueOf(made))) {
            setValues(made, *property,
                      value.isSet() ? std::vector<ImmutableObject>{source.getOne(property->property)}
                                    : std::vector<ImmutableObject>());
        }
    }
    if (Remainder const & remainder = remainderOf(source); !remainder.empty()) {
        setRemainder(made, remainder);
    }
}

void Applier::addLink(ObjectIntf * owner, PropertyView const & property, Index right, ObjectIntf * source) {
    ObjectIntf * const target = targetOfRight(source);
    Object const value(target, fTarget.getDeviant());
    if (target != nullptr && value.isValid()) {
        touch(owner, property, right);
        touchOtherEnd(property, source);
        handleOf(owner).setOrAdd(property.property, value);
    }
}

void Applier::setLinksOf(Index added) {
    Side const & right = fPairs.right();
    Tree::Node const & node = right.tree[added];
    ObjectIntf * const made = targetOfRight(node.object());
    for (PropertyView const * const property : node.metaClass->links) {
        for (ObjectIntf * const source : targetsOf(*property, *node.body, node.deviant())) {
            if (isTellingEnd(*property) || right.tree.indexOf(source) >= right.end) {
                addLink(made, *property, added, source);
            }
        }
    }
}

void Applier::removeLink(Difference const & difference) {
    ObjectIntf * const owner = targetOfLeft(ImmutableObject(difference.left).getImplementation());
    ObjectIntf * const target =
        difference.before.empty() ? nullptr : targetOfLeft(difference.before.front().getImplementation());
    if (owner == nullptr || !handleOf(owner).isValid() || target == nullptr) {
        return;
    }
    ClassObject const object = handleOf(owner);
    Object const value(target, fTarget.getDeviant());
    if (!value.isValid()) {
        return; // the link went with it
    }
    if (difference.kind == Kind::LinkRemoved) {
        object.remove(difference.property, value);
    } else if (difference.after.empty() && object.getOne(difference.property) == value) {
        object.removeOne(difference.property);
    }
}

void Applier::setLink(Difference const & difference) {
    ObjectIntf * const owner = targetOfRight(ImmutableObject(difference.right).getImplementation());
    if (owner != nullptr && !difference.after.empty() && handleOf(owner).isValid()) {
        Index const right = indexOfRight(difference.right);
        addLink(owner, viewOf(right, difference.property), right, difference.after.front().getImplementation());
    }
}

// --- the order of lists ----------------------------------------------------------------------------------------------

void Applier::touch(ObjectIntf * owner, PropertyView const & property, Index right, bool hasNewOrder) {
    if (!property.isMany) {
        return;
    }
    std::vector<std::size_t> & known = fListsOf[owner];
    auto const found =
        std::find_if(known.begin(), known.end(), [&](std::size_t list) { return fLists[list].property == &property; });
    if (found != known.end()) {
        fLists[*found].hasNewOrder |= hasNewOrder;
        return;
    }
    List list{owner, &property, right, {}, hasNewOrder};
    Index const left = fPairs.right().counterparts[right];
    if (left != Tree::kNone) {
        Tree::Node const & node = fPairs.left().tree[left];
        forEachTarget(property, *node.body, node.deviant(), [&](ObjectIntf * before) {
            if (ObjectIntf * const target = targetOfLeft(before)) {
                list.before.push_back(target);
            }
        });
    }
    known.push_back(fLists.size());
    fLists.push_back(std::move(list));
}

void Applier::touchOtherEnd(PropertyView const & property, ObjectIntf * source) {
    internal::PropertyDescriptor const * const own = property.descriptor;
    Index const right = fPairs.right().tree.indexOf(source);
    if (own == nullptr || own->otherEnd != internal::OtherEnd::Property || right == Tree::kNone) {
        return;
    }
    PropertyView const * const other = fPairs.right().tree[right].metaClass->view->find(own->opposite->name);
    if (other != nullptr && other->descriptor == own->opposite && other->links != nullptr) {
        touch(targetOfRight(source), *other, right);
    }
}

void Applier::arrange(List const & list) const {
    if (list.property->descriptor == nullptr || !handleOf(list.owner).isValid()) {
        return;
    }
    ClassObject const owner = handleOf(list.owner);
    ListStates states;
    states.before = list.before;
    states.ours = targetsOf(*list.property, *list.owner->internal_body(), fTarget.getDeviant());
    std::unordered_set<ObjectIntf const *> const present(states.ours.begin(), states.ours.end());
    Tree::Node const & right = fPairs.right().tree[list.right];
    forEachTarget(*list.property, *right.body, right.deviant(), [&](ObjectIntf * source) {
        if (ObjectIntf * const target = targetOfRight(source); present.count(target) != 0) {
            states.theirs.push_back(target);
        }
    });
    Targets const wanted = inOrder(states, list.hasNewOrder,
                                   [this](ObjectIntf * a, ObjectIntf * b) { return isLess(handleOf(a), handleOf(b)); });
    if (wanted == states.ours) {
        return;
    }
    // By the field alone: who links back, or is contained, stays so.
    Sequence<Object> const elements = list.property->descriptor->manyWithoutAssociation(owner);
    auto const [changed, ignored] = std::mismatch(wanted.begin(), wanted.end(), states.ours.begin());
    auto const unchangedBack = std::mismatch(wanted.rbegin(), wanted.rend(), states.ours.rbegin()).first.base();
    int const first = static_cast<int>(changed - wanted.begin());
    int const last = static_cast<int>(unchangedBack - wanted.begin());
    for (int i = last; i-- > first;) {
        elements.erase(i);
    }
    for (int i = first; i < last; ++i) {
        elements.insert(i, Object(wanted[static_cast<std::size_t>(i)], fTarget.getDeviant()));
    }
}

// --- all -------------------------------------------------------------------------------------------------------------

void Applier::makeObjects(Differences const & differences) {
    Tree const & right = fPairs.right().tree;
    for (Difference const & difference : differences) {
        if (difference.kind != Kind::Added && difference.kind != Kind::Moved) {
            continue;
        }
        Index const index = indexOfRight(difference.right);
        ObjectIntf * const container = targetOfRight(right[right[index].container].object());
        if (difference.kind == Kind::Moved) {
            fPlaced.push_back(index);
        } else if (container != nullptr && handleOf(container).isValid()) {
            create(index);
        }
    }
    // What contains before what it contains: then nothing is put into what it contains itself as yet.
    std::sort(fPlaced.begin(), fPlaced.end());
    std::for_each(fPlaced.begin(), fPlaced.end(), [this](Index index) { place(index); });
    std::for_each(fAdded.begin(), fAdded.end(), [this](Index index) { setValuesOf(index); });
}

void Applier::makeLinks(Differences const & differences) {
    for (Difference const & difference : differences) {
        if (difference.kind == Kind::LinkRemoved || difference.kind == Kind::LinkChanged) {
            removeLink(difference);
        }
    }
    // A new link can take away one that was made ahead of it, which is then made again.
    for (int round = 0; round < 2; ++round) {
        for (Difference const & difference : differences) {
            if (difference.kind == Kind::LinkAdded || difference.kind == Kind::LinkChanged) {
                setLink(difference);
            }
        }
        std::for_each(fAdded.begin(), fAdded.end(), [this](Index index) { setLinksOf(index); });
    }
}

void Applier::apply(Differences const & differences) {
    for (Difference const & difference : differences) {
        if (difference.kind == Kind::OrderChanged) {
            Index const right = indexOfRight(difference.right);
            ObjectIntf * const owner = targetOfRight(ImmutableObject(difference.right).getImplementation());
            if (owner != nullptr) {
                touch(owner, viewOf(right, difference.property), right, true);
            }
        }
    }
    makeObjects(differences);
    makeLinks(differences);
    for (Difference const & difference : differences) {
        bool const isOfObject = difference.kind == Kind::ValueChanged || difference.kind == Kind::RemainderChanged;
        ObjectIntf * const target =
            isOfObject ? targetOfRight(ImmutableObject(difference.right).getImplementation()) : nullptr;
        if (target == nullptr || !handleOf(target).isValid()) {
            continue;
        }
        if (difference.kind == Kind::RemainderChanged) {
            setRemainder(handleOf(target), remainderOf(difference.right));
        } else {
            setValues(handleOf(target), viewOf(indexOfRight(difference.right), difference.property), difference.after);
        }
    }
    for (Difference const & difference : differences) {
        if (difference.kind == Kind::Removed) {
            destroy(difference);
        }
    }
    std::for_each(fLists.begin(), fLists.end(), [this](List const & list) { arrange(list); });
}

bool apply(Differences const & differences, ClassObject const & target) {
    Match const & match = differences.match();
    Transaction transaction(target.getDeviant(), "apply differences");
    auto const changeBy = [&](Applier::TargetOf targetOf) {
        Applier(match, target, std::move(targetOf)).apply(differences.withNeeded());
    };
    if (target == match.left()) {
        changeBy([](ObjectIntf * left) { return left; });
    } else {
        Match const toTarget(match.left(), target);
        changeBy([&toTarget](ObjectIntf * left) { return toTarget.pairs().rightOf(left); });
    }
    return transaction.commit();
}

} // namespace ZEL::Compare
