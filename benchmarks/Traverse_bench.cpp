#include "support/SampleModel.h"

#include <ZEL/tools/ImmutableAccessVisitorTraversalContainment.h>
#include <ZEL/values/Object.h>

#include <benchmark/benchmark.h>

#include <cstdint>

// A walk over sample models of the given number of objects, to all values and references. Times are per object.

namespace {

using benchmark::State;
using ZEL::bench::SampleModel;

void traverse(State & state) {
    SampleModel const & sample = SampleModel::sharedOf(state.range(0));
    ZEL::ImmutableAccessVisitorEmpty nothing;
    for (auto _ : state) {
        ZEL::ImmutableAccessVisitorTraversalContainment walk(&nothing, &nothing);
        if (!walk.visitObject(sample.model)) {
            state.SkipWithError("the walk ended early");
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(sample.objectCount()));
}
BENCHMARK(traverse)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

} // namespace
