#include "limits/PlainTree.h"
#include "support/Heap.h"
#include "support/SampleModel.h"

#include <benchmark/benchmark.h>

// Bytes on the heap, as the counter `bytes`, per object; the times say nothing.

namespace {

using benchmark::State;
using ZEL::Property;
using ZEL::bench::heapInUse;
using ZEL::bench::SampleModel;

void report(State & state, std::size_t before, std::size_t after, std::size_t objects) {
    state.counters["bytes"] = static_cast<double>(after - before) / static_cast<double>(objects);
}

/// A whole model, without handles and without history.
void bytesOfSample(State & state) {
    SampleModel::dropShared();
    for (auto _ : state) {
        std::size_t const before = heapInUse();
        SampleModel sample(100);
        sample.classes = {};
        sample.properties = {};
        report(state, before, heapInUse(), sample.objectCount());
    }
}
BENCHMARK(bytesOfSample)->Iterations(1)->Unit(benchmark::kMillisecond);

void bytesOfSampleLimit(State & state) {
    for (auto _ : state) {
        std::size_t const before = heapInUse();
        ZEL::bench::PlainTree const tree(100);
        report(state, before, heapInUse() - tree.overhead(), tree.size());
    }
}
BENCHMARK(bytesOfSampleLimit)->Iterations(1)->Unit(benchmark::kMillisecond);

/// A property with a name and a type in a class, all that it adds to the model.
void bytesOfProperty(State & state) {
    constexpr std::size_t kCount = 100000;
    SampleModel::dropShared();
    for (auto _ : state) {
        SampleModel const sample(1);
        std::size_t const before = heapInUse();
        sample.root.beginTransaction();
        for (std::size_t i = 0; i < kCount; ++i) {
            Property const property = sample.factory.createProperty();
            property.setName("attribute");
            property.setType(sample.classes[0]);
            sample.classes[1 + i % 90].getOwnedAttributes().push_back(property);
        }
        sample.root.commitTransaction();
        sample.root.clearUndoStack();
        report(state, before, heapInUse(), kCount);
    }
}
BENCHMARK(bytesOfProperty)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
