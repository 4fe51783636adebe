#pragma once

#include <ZEL/compare/Differences.h>
#include <ZEL/compare/Pairs.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ZEL::internal {
class ModelCore;
} // namespace ZEL::internal

namespace ZEL::Compare {

/// Makes differences true of a tree.
class Applier {
public:
    /// The object of the target that stands for one of the left side; null for none.
    using TargetOf = std::function<ObjectIntf *(ObjectIntf *)>;

    /// Changes objects in the model and the deviant of `target`, in which a transaction is open as long as this lives.
    Applier(Match const & match, ClassObject const & target, TargetOf targetOfLeft);

    /// All at once. Throws what the changes throw: the transaction is to be cancelled then.
    void apply(Differences const & differences);

    /// Says that the target has an object already for a new one of the right side.
    void standFor(ObjectIntf const * right, ObjectIntf * target) { fCreated.emplace(right, target); }
    /// The object of the target that stands for one of the right side, those that were added among them; null for none.
    [[nodiscard]] ObjectIntf * targetOfRight(ObjectIntf * right) const;

private:
    using Index = Tree::Index;
    using Targets = std::vector<ObjectIntf *>;

    /// A list of the target that is to be put in order.
    struct List {
        ObjectIntf * owner;
        PropertyView const * property;
        Index right;    ///< the owner's counterpart, whose list it follows
        Targets before; ///< what it held on the left
        bool hasNewOrder = false;
    };

    [[nodiscard]] ClassObject handleOf(ObjectIntf * target) const {
        return ClassObject(Object(target, fTarget.getDeviant()));
    }
    [[nodiscard]] ObjectIntf * targetOfLeft(ObjectIntf * left) const;
    [[nodiscard]] Index indexOfRight(ImmutableClassObject const & right) const {
        return fPairs.right().tree.indexOf(ImmutableObject(right).getImplementation());
    }
    [[nodiscard]] PropertyView const & viewOf(Index right, ImmutableProperty const & property) const {
        return *fPairs.right().tree[right].metaClass->view->find(property);
    }

    void create(Index added);
    void makeObjects(Differences const & differences);
    void makeLinks(Differences const & differences);
    [[nodiscard]] internal::BodyCore & makeBody(Tree::Node const & node);
    void place(Index right);
    void setValues(ClassObject const & object, PropertyView const & property,
                   std::vector<ImmutableObject> const & values) const;
    void setValuesOf(Index added);
    void setLinksOf(Index added);
    void setLink(Difference const & difference);
    void removeLink(Difference const & difference);
    /// `source` is the link's target on the right.
    void addLink(ObjectIntf * owner, PropertyView const & property, Index right, ObjectIntf * source);
    void destroy(Difference const & difference) const;

    /// Notes that a list is about to change.
    void touch(ObjectIntf * owner, PropertyView const & property, Index right, bool hasNewOrder = false);
    void touchOtherEnd(PropertyView const & property, ObjectIntf * source);
    void arrange(List const & list) const;

    Pairs const & fPairs;
    ClassObject fTarget;
    internal::ModelCore & fModel;
    TargetOf fTargetOfLeft;
    std::unordered_map<ObjectIntf const *, ObjectIntf *> fCreated; ///< by object of the right
    std::vector<Index> fAdded;  ///< objects of the right for which there are new ones
    std::vector<Index> fPlaced; ///< those and the moved ones
    std::vector<List> fLists;
    std::unordered_map<ObjectIntf const *, std::vector<std::size_t>> fListsOf; ///< places in `fLists` by owner
    /// Of the files of the target's model, once one is asked for.
    std::optional<std::unordered_set<std::string_view>> fTakenIds;
};

} // namespace ZEL::Compare
