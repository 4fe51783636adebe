#include <ZEL/sequences/PersistentSequenceNode.h>

namespace ZEL::internal::nodes {

std::uint32_t entriesBelow(Node * node) noexcept {
    if (node->isLeaf) {
        return node->count;
    }
    std::uint32_t sum = 0;
    for (unsigned k = 0; k < node->count; ++k) {
        sum += asInner(node).payload[k].size;
    }
    return sum;
}

std::size_t bytesBelow(Node * node) noexcept {
    if (node->isLeaf) {
        return sizeof(Leaf);
    }
    std::size_t sum = sizeof(Inner);
    for (unsigned k = 0; k < node->count; ++k) {
        sum += bytesBelow(asInner(node).payload[k].node);
    }
    return sum;
}

void deleteNode(Node * node) noexcept {
    if (node->isLeaf) {
        delete &asLeaf(node);
    } else {
        delete &asInner(node);
    }
}

void release(Node * node) noexcept {
    if (--node->refs != 0) {
        return;
    }
    if (!node->isLeaf) {
        for (unsigned k = 0; k < node->count; ++k) {
            release(asInner(node).payload[k].node);
        }
    }
    deleteNode(node);
}

void unshare(Node *& slot) {
    if (slot->refs == 1) {
        return;
    }
    Node * copy;
    if (slot->isLeaf) {
        Leaf * leaf = new Leaf;
        appendSlots(*leaf, asLeaf(slot), 0, slot->count);
        copy = leaf;
    } else {
        Inner * inner = new Inner;
        appendSlots(*inner, asInner(slot), 0, slot->count);
        for (unsigned k = 0; k < inner->count; ++k) {
            ++inner->payload[k].node->refs;
        }
        copy = inner;
    }
    --slot->refs;
    slot = copy;
}

namespace {

template <class N> N * takeRightPart(N & node, unsigned from) {
    N * right = new N;
    appendSlots(*right, node, from, node.count);
    node.count = static_cast<std::uint16_t>(from);
    return right;
}

// Moves slots between neighbours: all into the left one if that leaves it room to grow, else half of them to each.
template <class N> void mergeOrLevel(N & left, N & right) noexcept {
    unsigned const total = left.count + right.count;
    unsigned const wanted = total <= N::Capacity * 3 / 4 ? total : total / 2;
    if (wanted >= left.count) {
        unsigned const moved = wanted - left.count;
        appendSlots(left, right, 0, moved);
        closeGap(right, 0, moved);
    } else {
        unsigned const moved = left.count - wanted;
        openGap(right, 0, moved);
        std::copy(left.keys + wanted, left.keys + left.count, right.keys);
        std::copy(left.payload + wanted, left.payload + left.count, right.payload);
        left.count = static_cast<std::uint16_t>(wanted);
    }
}

} // namespace

void splitKid(Inner & parent, unsigned index, unsigned from) {
    Kid & kid = parent.payload[index];
    Node * right = kid.node->isLeaf ? static_cast<Node *>(takeRightPart(asLeaf(kid.node), from))
                                    : takeRightPart(asInner(kid.node), from);
    std::uint32_t const rightSize = entriesBelow(right);
    kid.size -= rightSize;
    insertSlot(parent, index + 1, firstKey(right), Kid{right, rightSize});
}

void mergeOrLevelKids(Inner & parent, unsigned index) {
    Kid & left = parent.payload[index];
    Kid & right = parent.payload[index + 1];
    unshare(left.node);
    unshare(right.node);
    if (left.node->isLeaf) {
        mergeOrLevel(asLeaf(left.node), asLeaf(right.node));
    } else {
        mergeOrLevel(asInner(left.node), asInner(right.node));
    }
    left.size = entriesBelow(left.node);
    if (right.node->count == 0) {
        deleteNode(right.node);
        closeGap(parent, index + 1, 1);
    } else {
        right.size = entriesBelow(right.node);
        parent.keys[index + 1] = firstKey(right.node);
    }
}

} // namespace ZEL::internal::nodes
