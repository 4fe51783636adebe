#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>

/// The nodes of `PersistentSequenceTree`, and the steps on one or two of them. Not for use elsewhere.
///
/// A node is counted by the slots that hold it and may be written while it has one holder only. Slots are plain data:
/// who moves one moves its count along, who copies one has to take a count.
namespace ZEL::internal {

struct PersistentSequenceNode {
    std::uint32_t refs = 1;
    std::uint16_t count = 0;
    bool isLeaf;

    explicit PersistentSequenceNode(bool leaf) noexcept : isLeaf(leaf) {}
};

namespace nodes {

using Node = PersistentSequenceNode;
using Word = std::uint64_t;

struct Kid {
    Node * node;
    std::uint32_t size; // entries below it
};

// Keys and payload of a node, in two arrays: a search touches the keys only, an iteration the values only. The key of a
// kid is exactly the least key below it.
template <class PayloadType, unsigned CapacityValue, bool IsLeaf> struct NodeOf : Node {
    using Payload = PayloadType;
    static constexpr unsigned Capacity = CapacityValue;

    Word keys[Capacity];
    Payload payload[Capacity];

    NodeOf() noexcept : Node(IsLeaf) {} // the arrays stay unset beyond `count`
};

// The capacities make both kinds of node fill an allocation of just under 512 bytes.
using Leaf = NodeOf<Word, 31, true>;
using Inner = NodeOf<Kid, 20, false>;

inline Leaf & asLeaf(Node * node) noexcept { return *static_cast<Leaf *>(node); }

inline Inner & asInner(Node * node) noexcept { return *static_cast<Inner *>(node); }

inline bool isFull(Node const & node) noexcept {
    return node.count == (node.isLeaf ? Leaf::Capacity : Inner::Capacity);
}

// A thin node is filled up before an erase goes below it; it may then lose an entry or a kid.
inline bool isThin(Node const & node) noexcept {
    return node.count <= (node.isLeaf ? Leaf::Capacity : Inner::Capacity) / 3;
}

inline Word firstKey(Node * node) noexcept { return node->isLeaf ? asLeaf(node).keys[0] : asInner(node).keys[0]; }

// How many entries are below `node`.
std::uint32_t entriesBelow(Node * node) noexcept;
// Bytes of `node` and all below it.
std::size_t bytesBelow(Node * node) noexcept;
// Deletes the node only, not what its slots hold.
void deleteNode(Node * node) noexcept;
// Gives back a count; the last one deletes the node and gives back its kids.
void release(Node * node) noexcept;
// Puts a copy of our own in the place of a node that others hold too.
void unshare(Node *& slot);
// Splits the full kid `index` before its slot `from`. Parent and kid are ours alone, the parent has room.
void splitKid(Inner & parent, unsigned index, unsigned from);
// Joins the kids `index` and `index + 1` if one node can hold both and grow, else makes them equally full.
void mergeOrLevelKids(Inner & parent, unsigned index);

template <class N> void appendSlots(N & to, N const & from, unsigned begin, unsigned end) noexcept {
    std::copy(from.keys + begin, from.keys + end, to.keys + to.count);
    std::copy(from.payload + begin, from.payload + end, to.payload + to.count);
    to.count = static_cast<std::uint16_t>(to.count + (end - begin));
}

template <class N> void openGap(N & node, unsigned at, unsigned width) noexcept {
    std::copy_backward(node.keys + at, node.keys + node.count, node.keys + node.count + width);
    std::copy_backward(node.payload + at, node.payload + node.count, node.payload + node.count + width);
    node.count = static_cast<std::uint16_t>(node.count + width);
}

template <class N> void closeGap(N & node, unsigned at, unsigned width) noexcept {
    std::copy(node.keys + at + width, node.keys + node.count, node.keys + at);
    std::copy(node.payload + at + width, node.payload + node.count, node.payload + at);
    node.count = static_cast<std::uint16_t>(node.count - width);
}

template <class N> void insertSlot(N & node, unsigned at, Word key, typename N::Payload payload) noexcept {
    openGap(node, at, 1);
    node.keys[at] = key;
    node.payload[at] = payload;
}

// How many keys of `node` are less than `key`. Counting all has no branch to guess wrong: for so few keys that is
// faster than halving.
template <class N> unsigned countLess(N const & node, Word key) noexcept {
    unsigned less = 0;
    for (unsigned i = 0, n = node.count; i < n; ++i) {
        less += node.keys[i] < key ? 1 : 0;
    }
    return less;
}

// The kid below which `key` is or would be: the last one that begins at or before it, else the first.
inline unsigned kidFor(Inner const & node, Word key) noexcept {
    unsigned const less = countLess(node, key);
    if (less < node.count && node.keys[less] == key) {
        return less;
    }
    return less == 0 ? 0 : less - 1;
}

// The kid with `position` below it; `position` becomes relative to it.
inline unsigned kidAt(Inner const & node, std::size_t & position) noexcept {
    unsigned k = 0;
    while (position >= node.payload[k].size) {
        position -= node.payload[k].size;
        ++k;
        assert(k < node.count);
    }
    return k;
}

} // namespace nodes
} // namespace ZEL::internal
