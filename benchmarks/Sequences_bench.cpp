#include "support/SampleModel.h"

#include <ZEL/deviants/Transaction.h>

#include <benchmark/benchmark.h>

// Children of one class, few and many. No listener, no named deviant.

namespace {

using benchmark::State;
using ZEL::Class;
using ZEL::Property;
using ZEL::bench::SampleModel;

/// A class of a small model that gets the given number of children.
class Family {
public:
    explicit Family(std::int64_t childCount) : sample(1), parent(sample.classes[1]) {
        sample.root.beginTransaction();
        for (std::int64_t i = 0; i < childCount; ++i) {
            children.push_back(add());
        }
        sample.root.commitTransaction();
        sample.root.clearUndoStack();
    }

    Property add() const {
        Property const child = sample.factory.createProperty();
        parent.getOwnedAttributes().push_back(child);
        return child;
    }

    SampleModel sample;
    Class parent;
    std::vector<Property> children;
};

/// Begin, create, put under the parent, commit. Each round of 50 is undone, so that the number of siblings stays.
void addChild(State & state) {
    constexpr int kRound = 50;
    Family const family(state.range(0));
    ZEL::Deviant const root = family.sample.root;
    for (auto _ : state) {
        for (int i = 0; i < kRound; ++i) {
            root.beginTransaction("add");
            family.add();
            root.commitTransaction();
        }
        state.PauseTiming();
        root.undoToChangeLevel(root.getUndoChangeLevelAt(root.getUndoStackLength() - 1));
        root.clearRedoStack();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kRound);
}
BENCHMARK(addChild)->Arg(100)->Arg(100000)->Iterations(200);

/// All children one by one, in one transaction, from the first to the last.
void destroyChildren(State & state) {
    Family const family(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        {
            ZEL::Transaction const cancelledAtEnd(family.sample.root);
            state.ResumeTiming();
            for (Property const & child : family.children) {
                child.destroy();
            }
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(destroyChildren)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

/// A typed walk over the children, reading a flag of each.
void walkChildren(State & state) {
    Family const family(state.range(0));
    for (auto _ : state) {
        int count = 0;
        for (Property const & child : family.parent.getOwnedAttributes()) {
            count += child.isReadOnly() ? 1 : 0;
        }
        benchmark::DoNotOptimize(count);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(walkChildren)->Arg(10)->Arg(10000);

} // namespace
