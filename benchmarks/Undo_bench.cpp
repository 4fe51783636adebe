#include "support/Items.h"
#include "support/SampleModel.h"

#include <ZEL/deviants/Transaction.h>

#include <benchmark/benchmark.h>

// Undo and redo of one transaction, again and again; times are per change. No listener, no named deviant.

namespace {

using benchmark::State;
using ZEL::bench::SampleModel;

/// The first set of each object of a model in one transaction, which saves its old state.
void setFirst(State & state) {
    SampleModel & sample = SampleModel::sharedOf(state.range(0), state.range(1));
    for (auto _ : state) {
        state.PauseTiming();
        {
            ZEL::Transaction const cancelledAtEnd(sample.root);
            state.ResumeTiming();
            for (auto const & property : sample.properties) {
                property.setName("renamed");
            }
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    ZEL::bench::reportItems(state, sample.properties.size());
}
BENCHMARK(setFirst)->Apply(ZEL::bench::forSizesAndOthers);

/// Renames of `range(0)` objects that were made one after the other, in a model of `range(1)` objects, after `range(2)`
/// other models.
void undoRenames(State & state) {
    auto const changes = static_cast<std::size_t>(state.range(0));
    SampleModel & sample = SampleModel::sharedOf(state.range(1), state.range(2));
    sample.root.beginTransaction("renames");
    for (std::size_t i = 0; i < changes; ++i) {
        sample.properties[i].setName("renamed");
    }
    sample.root.commitTransaction();
    for (auto _ : state) {
        sample.root.undo();
        sample.root.redo();
    }
    sample.root.undo();
    sample.root.clearRedoStack();
    state.SetItemsProcessed(state.iterations() * 2 * state.range(0));
}
BENCHMARK(undoRenames)
    ->Args({900, 1000, 0})
    ->Args({900, 1000000, 0})
    ->Args({1, 100000, 0})
    ->Args({100, 100000, 0})
    ->Args({10000, 100000, 0})
    ->Args({80000, 100000, 0})
    ->Args({80000, 100000, 10});

/// Creation of `range(0)` objects in one class.
void undoCreations(State & state) {
    SampleModel sample(1);
    sample.root.beginTransaction("creations");
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        sample.classes[0].getOwnedAttributes().push_back(sample.factory.createProperty());
    }
    sample.root.commitTransaction();
    for (auto _ : state) {
        sample.root.undo();
        sample.root.redo();
    }
    state.SetItemsProcessed(state.iterations() * 2 * state.range(0));
}
BENCHMARK(undoCreations)->Arg(100)->Arg(10000);

} // namespace
