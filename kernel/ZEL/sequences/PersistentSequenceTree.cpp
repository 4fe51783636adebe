#include <ZEL/sequences/PersistentSequenceNode.h>
#include <ZEL/sequences/PersistentSequenceTree.h>

#include <algorithm>
#include <array>
#include <cassert>

namespace ZEL::internal {

using namespace nodes;

namespace {

// Enough for 2^32 entries: a node away from the two edges has at least six kids.
constexpr unsigned MaximalHeight = 24;

Leaf & leafFor(Node * node, Word key) noexcept {
    while (!node->isLeaf) {
        node = asInner(node).payload[kidFor(asInner(node), key)].node;
    }
    return asLeaf(node);
}

// The way from the root down to a leaf, to carry a new least key of the leaf back up.
class Path {
public:
    void add(Inner & node, unsigned kid) noexcept {
        assert(height_ < MaximalHeight);
        steps_[height_++] = {&node, kid};
    }
    void setFirstKey(Word key) noexcept {
        for (unsigned h = height_; h > 0; --h) {
            steps_[h - 1].node->keys[steps_[h - 1].kid] = key;
            if (steps_[h - 1].kid != 0) {
                return;
            }
        }
    }

private:
    struct Step {
        Inner * node;
        unsigned kid;
    };
    std::array<Step, MaximalHeight> steps_;
    unsigned height_ = 0;
};

// The nodes of one level while a tree is built from the leaves up. Owns them until they hang below their parents.
class Level {
public:
    Level() noexcept = default;
    Level(Level const &) = delete;
    Level & operator=(Level const &) = delete;
    ~Level() {
        for (Node * node : nodes_) {
            release(node);
        }
    }

    // Makes the nodes for `count` slots, all nearly equally full; `fill(node, begin, end)` sets each one's slots.
    template <class N, class Fill> void make(std::size_t count, Fill fill) {
        std::size_t const nodes = (count + N::Capacity - 1) / N::Capacity;
        nodes_.reserve(nodes);
        for (std::size_t i = 0; i < nodes; ++i) {
            N * node = new N;
            nodes_.push_back(node);
            fill(*node, count * i / nodes, count * (i + 1) / nodes);
        }
    }
    // Leaves this level with the parents of its nodes, or throws and leaves it as it is.
    void rise() {
        Level parents;
        parents.make<Inner>(nodes_.size(), [this](Inner & parent, std::size_t begin, std::size_t end) {
            for (std::size_t i = begin; i < end; ++i) {
                Node * kid = nodes_[i];
                insertSlot(parent, parent.count, firstKey(kid), Kid{kid, entriesBelow(kid)});
                ++kid->refs;
            }
        });
        nodes_.swap(parents.nodes_);
    }
    std::size_t size() const noexcept { return nodes_.size(); }
    Node * takeRoot() noexcept {
        Node * root = nodes_.front();
        nodes_.clear();
        return root;
    }

private:
    std::vector<Node *> nodes_;
};

} // namespace

PersistentSequenceTree::PersistentSequenceTree(PersistentSequenceTree const & other) noexcept
    : root_(other.root_), size_(other.size_) {
    if (root_ != nullptr) {
        ++root_->refs;
    }
}

PersistentSequenceTree::PersistentSequenceTree(std::vector<Entry> const & entries) {
    if (entries.empty()) {
        return;
    }
    Level level;
    level.make<Leaf>(entries.size(), [&entries](Leaf & leaf, std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            insertSlot(leaf, leaf.count, entries[i].key, entries[i].value);
        }
    });
    while (level.size() > 1) {
        level.rise();
    }
    root_ = level.takeRoot();
    size_ = entries.size();
}

PersistentSequenceTree::~PersistentSequenceTree() {
    if (root_ != nullptr) {
        release(root_);
    }
}

Word const * PersistentSequenceTree::find(Word key) const noexcept {
    if (root_ == nullptr) {
        return nullptr;
    }
    Leaf const & leaf = leafFor(root_, key);
    unsigned const i = countLess(leaf, key);
    return i < leaf.count && leaf.keys[i] == key ? &leaf.payload[i] : nullptr;
}

PersistentSequenceTree::Entry PersistentSequenceTree::at(std::size_t position) const noexcept {
    assert(position < size_);
    Node * node = root_;
    while (!node->isLeaf) {
        node = asInner(node).payload[kidAt(asInner(node), position)].node;
    }
    return {asLeaf(node).keys[position], asLeaf(node).payload[position]};
}

PersistentSequenceTree::Run PersistentSequenceTree::runAt(std::size_t position) const noexcept {
    assert(position < size_);
    std::size_t offset = position;
    Node * node = root_;
    while (!node->isLeaf) {
        node = asInner(node).payload[kidAt(asInner(node), offset)].node;
    }
    return {asLeaf(node).payload, position - offset, node->count};
}

std::size_t PersistentSequenceTree::countBelow(Word key) const noexcept {
    if (root_ == nullptr) {
        return 0;
    }
    std::size_t sum = 0;
    Node * node = root_;
    while (!node->isLeaf) {
        Inner const & inner = asInner(node);
        unsigned const k = kidFor(inner, key);
        for (unsigned i = 0; i < k; ++i) {
            sum += inner.payload[i].size;
        }
        node = inner.payload[k].node;
    }
    return sum + countLess(asLeaf(node), key);
}

void PersistentSequenceTree::prepareInsert(Word key) {
    if (root_ == nullptr) {
        root_ = new Leaf;
        return;
    }
    unshare(root_);
    if (isFull(*root_)) {
        Inner * top = new Inner;
        insertSlot(*top, 0, firstKey(root_), Kid{root_, entriesBelow(root_)});
        root_ = top;
    }
    // Full nodes are split on the way down, so that the parent of each has room. On the outermost ways only one slot is
    // split off: a sequence that grows at one end gets full nodes.
    bool atFront = true;
    bool atBack = true;
    for (Node * node = root_; !node->isLeaf;) {
        Inner & inner = asInner(node);
        unsigned k = kidFor(inner, key);
        atFront = atFront && k == 0;
        atBack = atBack && k == inner.count - 1u;
        unshare(inner.payload[k].node);
        if (Node const & kid = *inner.payload[k].node; isFull(kid)) {
            splitKid(inner, k, atBack ? kid.count - 1u : atFront ? 1u : kid.count / 2u);
            k = kidFor(inner, key);
        }
        node = inner.payload[k].node;
    }
}

void PersistentSequenceTree::insert(Word key, Word value) noexcept {
    Node * node = root_;
    while (!node->isLeaf) {
        Inner & inner = asInner(node);
        unsigned const k = kidFor(inner, key);
        inner.keys[k] = std::min(inner.keys[k], key);
        ++inner.payload[k].size;
        node = inner.payload[k].node;
    }
    Leaf & leaf = asLeaf(node);
    assert(leaf.refs == 1 && leaf.count < Leaf::Capacity);
    insertSlot(leaf, countLess(leaf, key), key, value);
    ++size_;
}

void PersistentSequenceTree::prepareErase(Word key) {
    unshare(root_);
    while (!root_->isLeaf && root_->count == 1) {
        Node * kid = asInner(root_).payload[0].node;
        deleteNode(root_);
        root_ = kid;
        unshare(root_);
    }
    for (Node * node = root_; !node->isLeaf;) {
        Inner & inner = asInner(node);
        unsigned k = kidFor(inner, key);
        if (isThin(*inner.payload[k].node)) {
            mergeOrLevelKids(inner, k > 0 ? k - 1 : k);
            k = kidFor(inner, key);
        }
        unshare(inner.payload[k].node);
        node = inner.payload[k].node;
    }
}

void PersistentSequenceTree::erase(Word key) noexcept {
    Path path;
    Node * node = root_;
    while (!node->isLeaf) {
        Inner & inner = asInner(node);
        unsigned const k = kidFor(inner, key);
        --inner.payload[k].size;
        path.add(inner, k);
        node = inner.payload[k].node;
    }
    Leaf & leaf = asLeaf(node);
    unsigned const i = countLess(leaf, key);
    assert(leaf.refs == 1 && i < leaf.count && leaf.keys[i] == key);
    closeGap(leaf, i, 1);
    --size_;
    if (i == 0 && leaf.count > 0) {
        path.setFirstKey(leaf.keys[0]);
    }
}

void PersistentSequenceTree::prepareChange(Word key) {
    unshare(root_);
    for (Node * node = root_; !node->isLeaf;) {
        Node *& kid = asInner(node).payload[kidFor(asInner(node), key)].node;
        unshare(kid);
        node = kid;
    }
}

void PersistentSequenceTree::setValue(Word key, Word value) noexcept {
    Leaf & leaf = leafFor(root_, key);
    unsigned const i = countLess(leaf, key);
    assert(leaf.refs == 1 && i < leaf.count && leaf.keys[i] == key);
    leaf.payload[i] = value;
}

void PersistentSequenceTree::setKeyAt(std::size_t position, Word key) noexcept {
    Path path;
    Node * node = root_;
    while (!node->isLeaf) {
        unsigned const k = kidAt(asInner(node), position);
        path.add(asInner(node), k);
        node = asInner(node).payload[k].node;
    }
    assert(node->refs == 1);
    asLeaf(node).keys[position] = key;
    if (position == 0) {
        path.setFirstKey(key);
    }
}

std::size_t PersistentSequenceTree::heapBytes() const noexcept { return root_ == nullptr ? 0 : bytesBelow(root_); }

} // namespace ZEL::internal
