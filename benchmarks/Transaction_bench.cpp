#include "support/SampleModel.h"

#include <ZEL/deviants/Transaction.h>

#include <benchmark/benchmark.h>

// Whole transactions without a listener, without a named deviant. The undo stack is full most of the time.

namespace {

using benchmark::State;
using ZEL::Comment;
using ZEL::Deviant;
using ZEL::Property;
using ZEL::String;
using ZEL::bench::SampleModel;

/// Begin, one typed set, commit; on 900 objects in turn, spread over a model of the given size.
void oneProperty(State & state) {
    constexpr std::size_t kObjects = 900;
    SampleModel & sample = SampleModel::sharedOf(state.range(0));
    std::vector<Property> properties;
    for (std::size_t i = 0; i < kObjects; ++i) {
        properties.push_back(sample.properties[i * (sample.properties.size() / kObjects)]);
    }
    String const texts[] = {"newname_a", "newname_b"};
    bool odd = false;
    std::size_t next = 0;
    for (auto _ : state) {
        sample.root.beginTransaction("rename");
        properties[next].setName(texts[odd]);
        sample.root.commitTransaction();
        if (++next == kObjects) {
            next = 0;
            odd = !odd;
        }
    }
    sample.root.clearUndoStack();
}
BENCHMARK(oneProperty)->Arg(1000)->Arg(100000)->Arg(1000000);

void empty(State & state) {
    SampleModel & sample = SampleModel::shared(1);
    for (auto _ : state) {
        sample.root.beginTransaction("nothing");
        sample.root.commitTransaction();
    }
}
BENCHMARK(empty);

/// Begin, one write to the list of objects without a container, commit. Each round of 50 is undone.
void oneUnparented(State & state) {
    constexpr int kRound = 50;
    SampleModel sample(1);
    sample.root.beginTransaction();
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        static_cast<void>(sample.factory.createProperty());
    }
    sample.root.commitTransaction();
    sample.root.clearUndoStack();
    for (auto _ : state) {
        for (int i = 0; i < kRound; ++i) {
            sample.root.beginTransaction("create");
            static_cast<void>(sample.factory.createProperty());
            sample.root.commitTransaction();
        }
        state.PauseTiming();
        sample.root.undoToChangeLevel(sample.root.getUndoChangeLevelAt(sample.root.getUndoStackLength() - 1));
        sample.root.clearRedoStack();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kRound);
}
BENCHMARK(oneUnparented)->Arg(100)->Arg(1000000)->Iterations(200);

} // namespace
