#include "limits/PlainTree.h"
#include "support/Items.h"
#include "support/SampleModel.h"

#include <ZEL/tools/ImmutableAccessVisitorTraversalContainment.h>
#include <ZEL/values/Object.h>

#include <benchmark/benchmark.h>

#include <vector>

// A walk over sample models of the given number of objects, to all values and references. Times are per object.

namespace {

using benchmark::State;
using ZEL::bench::forSizes;
using ZEL::bench::forSizesAndOthers;
using ZEL::bench::PlainNode;
using ZEL::bench::PlainTree;
using ZEL::bench::reportItems;
using ZEL::bench::SampleModel;

void traverse(State & state) {
    SampleModel const & sample = SampleModel::sharedOf(state.range(0), state.range(1));
    ZEL::ImmutableAccessVisitorEmpty nothing;
    for (auto _ : state) {
        ZEL::ImmutableAccessVisitorTraversalContainment walk(&nothing, &nothing);
        if (!walk.visitObject(sample.model)) {
            state.SkipWithError("the walk ended early");
        }
    }
    reportItems(state, sample.objectCount());
}
BENCHMARK(traverse)->Apply(forSizesAndOthers);

/// Each node of a plain tree, its name and its parent, each with one call through a function that is not known here.
void traverseLimit(State & state) {
    PlainTree const tree(SampleModel::packagesFor(state.range(0)));
    auto const event = [](void const * value) { benchmark::DoNotOptimize(value); };
    void (*visit)(void const *) = event;
    benchmark::DoNotOptimize(visit);
    for (auto _ : state) {
        std::vector<PlainNode const *> waiting{&tree.root()};
        while (!waiting.empty()) {
            PlainNode const * const node = waiting.back();
            waiting.pop_back();
            visit(node);
            visit(&node->name);
            visit(node->parent);
            waiting.insert(waiting.end(), node->children.begin(), node->children.end());
        }
    }
    reportItems(state, tree.size());
}
BENCHMARK(traverseLimit)->Apply(forSizes);

} // namespace
