#pragma once

#include "support/SampleModel.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace ZEL::bench {

/// What an object of a model costs at least: a struct on the heap with a virtual function, a name and its place in a tree.
struct PlainNode {
    virtual ~PlainNode() = default;
    [[nodiscard]] virtual int kind() const { return 1; }

    std::string name;
    std::vector<PlainNode *> children;
    PlainNode * parent = nullptr;
};

/// A tree of plain nodes of the shape and with the names of a `SampleModel`.
class PlainTree {
public:
    explicit PlainTree(int packages);

    [[nodiscard]] std::size_t size() const noexcept { return fNodes.size(); }
    /// Bytes that this object takes to know its nodes, and that the nodes themselves do without.
    [[nodiscard]] std::size_t overhead() const noexcept { return fNodes.capacity() * sizeof(fNodes[0]); }

private:
    PlainNode * add(PlainNode * parent, char const * kind, int number);

    std::vector<std::unique_ptr<PlainNode>> fNodes;
};

} // namespace ZEL::bench
