#pragma once

#include "support/SampleModel.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace ZEL::bench {

/// The least that an object of a model can cost: a struct on the heap with a virtual function, a name and a place in a
/// tree.
struct PlainNode {
    virtual ~PlainNode() = default;
    [[nodiscard]] virtual int kind() const { return 1; }

    std::string name;
    std::vector<PlainNode *> children;
    PlainNode * parent = nullptr;
};

/// A tree of plain nodes with the shape and the names of a `SampleModel`.
class PlainTree {
public:
    explicit PlainTree(int packages);
    PlainTree(PlainTree const & other);
    PlainTree & operator=(PlainTree const &) = delete;
    ~PlainTree() = default;

    [[nodiscard]] PlainNode const & root() const noexcept { return *fNodes.front(); }
    [[nodiscard]] std::size_t size() const noexcept { return fNodes.size(); }
    /// Bytes that this object uses to own its nodes, which the nodes themselves do not need.
    [[nodiscard]] std::size_t overhead() const noexcept { return fNodes.capacity() * sizeof(fNodes[0]); }

private:
    PlainNode * add(PlainNode * parent, std::string && name);
    void copyContents(PlainNode const & source, PlainNode & target);

    std::vector<std::unique_ptr<PlainNode>> fNodes;
};

} // namespace ZEL::bench
