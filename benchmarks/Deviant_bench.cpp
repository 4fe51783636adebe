#include "support/SampleModel.h"

#include <ZEL/deviants/Transaction.h>

#include <benchmark/benchmark.h>

#include <string>

namespace {

using benchmark::State;
using ZEL::Deviant;
using ZEL::Property;
using ZEL::String;
using ZEL::bench::SampleModel;

/// Ten new deviants of a model of the given size that has none; they are removed outside of the measured time.
void createDeviant(State & state) {
    constexpr int kRound = 10;
    SampleModel & sample = SampleModel::sharedOf(state.range(0));
    String names[kRound];
    for (int i = 0; i < kRound; ++i) {
        names[i] = "deviant" + std::to_string(i);
    }
    for (auto _ : state) {
        for (String const & name : names) {
            benchmark::DoNotOptimize(sample.model.createDeviantWithName(name));
        }
        state.PauseTiming();
        for (String const & name : names) {
            sample.model.removeDeviantWithName(name);
        }
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kRound);
}
BENCHMARK(createDeviant)->Arg(1000)->Arg(1000000)->Iterations(2000);

/// A one-property transaction of the root with the given number of deviants that have not written: each is kept from
/// seeing the new value.
void oneProperty(State & state) {
    SampleModel sample(2);
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        static_cast<void>(sample.model.createDeviantWithName("deviant" + std::to_string(i)));
    }
    String const texts[] = {"newname_a", "newname_b"};
    bool odd = false;
    std::size_t next = 0;
    for (auto _ : state) {
        sample.root.beginTransaction("rename");
        sample.properties[next].setName(texts[odd]);
        sample.root.commitTransaction();
        if (++next == 1000) {
            next = 0;
            odd = !odd;
        }
    }
}
BENCHMARK(oneProperty)->Name("onePropertyBesideDeviants")->Arg(0)->Arg(1)->Arg(10);

} // namespace
