#include "limits/PlainTree.h"

#include "support/Names.h"

#include <utility>

namespace ZEL::bench {

PlainTree::PlainTree(int packages) {
    fNodes.reserve(SampleModel::objectCountOf(packages));
    PlainNode * const root = add(nullptr, numberedName("model", 0));
    for (int p = 0; p < packages; ++p) {
        PlainNode * const package = add(root, numberedName("package", p));
        for (int c = 0; c < SampleModel::kClasses; ++c) {
            PlainNode * const added = add(package, numberedName("Class", c));
            for (int a = 0; a < SampleModel::kProperties; ++a) {
                add(added, numberedName("attribute", a));
            }
        }
    }
}

PlainTree::PlainTree(PlainTree const & other) {
    fNodes.reserve(other.size());
    copyContents(other.root(), *add(nullptr, std::string(other.root().name)));
}

void PlainTree::copyContents(PlainNode const & source, PlainNode & target) {
    target.children.reserve(source.children.size());
    for (PlainNode const * const child : source.children) {
        copyContents(*child, *add(&target, std::string(child->name)));
    }
}

PlainNode * PlainTree::add(PlainNode * parent, std::string && name) {
    PlainNode * const node = fNodes.emplace_back(std::make_unique_for_overwrite<PlainNode>()).get();
    node->name = std::move(name);
    node->parent = parent;
    if (parent != nullptr) {
        parent->children.push_back(node);
    }
    return node;
}

} // namespace ZEL::bench
