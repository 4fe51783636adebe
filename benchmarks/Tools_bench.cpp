#include "limits/PlainTree.h"
#include "support/Items.h"
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
using ZEL::bench::forSizes;
using ZEL::bench::forSizesAndOthers;
using ZEL::bench::PlainNode;
using ZEL::bench::PlainTree;
using ZEL::bench::reportItems;
using ZEL::bench::SampleModel;

/// A copy of the whole tree in a model of its own.
void cloneModel(State & state) {
    SampleModel const & sample = SampleModel::sharedOf(state.range(0), state.range(1));
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
    reportItems(state, sample.objectCount());
}
BENCHMARK(cloneModel)->Apply(forSizesAndOthers);

void cloneModelLimit(State & state) {
    PlainTree const tree(SampleModel::packagesFor(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        {
            state.ResumeTiming();
            PlainTree const copy(tree);
            benchmark::DoNotOptimize(copy.size());
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    reportItems(state, tree.size());
}
BENCHMARK(cloneModelLimit)->Apply(forSizes);

/// Two equal trees in two models, so that both passes go to their ends.
void compareModels(State & state) {
    SampleModel const & sample = SampleModel::sharedOf(state.range(0), state.range(1));
    MetaModel const target = Factory::createNewModel();
    ZEL::Transaction transaction(target.getRootDeviant());
    Package const copy(sample.model.getTopPackage().clone(target));
    for (auto _ : state) {
        if (!ZEL::compare(sample.model.getTopPackage(), copy)) {
            state.SkipWithError("the copy is different");
        }
    }
    reportItems(state, sample.objectCount());
}
BENCHMARK(compareModels)->Apply(forSizesAndOthers);

/// Names and children of two plain trees in step.
void compareModelsLimit(State & state) {
    int const packages = SampleModel::packagesFor(state.range(0));
    PlainTree const tree(packages);
    PlainTree const copy(packages);
    for (auto _ : state) {
        std::vector<std::pair<PlainNode const *, PlainNode const *>> waiting{{&tree.root(), &copy.root()}};
        while (!waiting.empty()) {
            auto const [a, b] = waiting.back();
            waiting.pop_back();
            if (a->kind() != b->kind() || a->name != b->name || a->children.size() != b->children.size()) {
                state.SkipWithError("the copy is different");
                break;
            }
            for (std::size_t i = 0; i < a->children.size(); ++i) {
                waiting.emplace_back(a->children[i], b->children[i]);
            }
        }
    }
    reportItems(state, tree.size());
}
BENCHMARK(compareModelsLimit)->Apply(forSizes);

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
    reportItems(state, objects);
}
BENCHMARK(generateModel)->Apply(forSizes);

} // namespace
