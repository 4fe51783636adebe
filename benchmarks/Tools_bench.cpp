#include "support/SampleModel.h"

#include <ZEL/deviants/Transaction.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/tools/Comparator.h>
#include <ZEL/tools/RandomModelGenerator.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>

// Whole models compared, copied and made at random. Times are per object.

namespace {

using benchmark::State;
using ZEL::Factory;
using ZEL::MetaModel;
using ZEL::Package;
using ZEL::bench::SampleModel;

void reportObjects(State & state, std::size_t objects) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(objects));
}

void forSizes(benchmark::internal::Benchmark * benchmark) {
    benchmark->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
}

/// A copy of the whole tree in a model of its own.
void cloneModel(State & state) {
    SampleModel const & sample = SampleModel::sharedOf(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        {
            MetaModel const target = Factory::createNewModel();
            ZEL::Transaction const cancelledAtEnd(target.getRootDeviant());
            state.ResumeTiming();
            benchmark::DoNotOptimize(sample.model.getTopPackage().clone(target));
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    reportObjects(state, sample.objectCount());
}
BENCHMARK(cloneModel)->Apply(forSizes);

/// Two equal trees in two models, so that both passes go to their ends.
void compareModels(State & state) {
    SampleModel const & sample = SampleModel::sharedOf(state.range(0));
    MetaModel const target = Factory::createNewModel();
    ZEL::Transaction transaction(target.getRootDeviant());
    Package const copy(sample.model.getTopPackage().clone(target));
    for (auto _ : state) {
        if (!ZEL::compare(sample.model.getTopPackage(), copy)) {
            state.SkipWithError("the copy is different");
        }
    }
    reportObjects(state, sample.objectCount());
}
BENCHMARK(compareModels)->Apply(forSizes);

/// Three levels of children; a link or value for each second object.
void generateModel(State & state) {
    SampleModel::dropShared();
    // About nine in ten of the children have children of their own.
    int const breadth = static_cast<int>(std::lround(std::cbrt(static_cast<double>(state.range(0)) * 1.06)));
    std::size_t objects = 0;
    for (auto _ : state) {
        state.PauseTiming();
        {
            MetaModel const model = Factory::createNewModel();
            ZEL::Transaction const cancelledAtEnd(model.getRootDeviant());
            Package const top = Factory(model.getFactory()).createPackage();
            model.setTopPackage(top);
            state.ResumeTiming();
            ZEL::createRandomModel(top, 3, breadth, static_cast<int>(state.range(0) / 2), 1);
            state.PauseTiming();
            objects = static_cast<std::size_t>(static_cast<std::int32_t>(model.getNextIdValue()));
        }
        state.ResumeTiming();
    }
    reportObjects(state, objects);
}
BENCHMARK(generateModel)->Apply(forSizes);

} // namespace
