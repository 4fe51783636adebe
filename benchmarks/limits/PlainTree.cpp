#include "limits/PlainTree.h"

#include "support/Names.h"

namespace ZEL::bench {

PlainTree::PlainTree(int packages) {
    fNodes.reserve(SampleModel::objectCountOf(packages));
    PlainNode * const root = add(nullptr, "model", 0);
    for (int p = 0; p < packages; ++p) {
        PlainNode * const package = add(root, "package", p);
        for (int c = 0; c < SampleModel::kClasses; ++c) {
            PlainNode * const added = add(package, "Class", c);
            for (int a = 0; a < SampleModel::kProperties; ++a) {
                add(added, "attribute", a);
            }
        }
    }
}

PlainNode * PlainTree::add(PlainNode * parent, char const * kind, int number) {
    PlainNode * const node = fNodes.emplace_back(std::make_unique_for_overwrite<PlainNode>()).get();
    node->name = numberedName(kind, number);
    node->parent = parent;
    if (parent != nullptr) {
        parent->children.push_back(node);
    }
    return node;
}

} // namespace ZEL::bench
