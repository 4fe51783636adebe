#include "limits/PlainTree.h"
#include "support/Names.h"
#include "support/SampleModel.h"

#include <ZEL/deviants/Transaction.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/PackageableElement.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

// How objects come and how models go. Times are per object.

namespace {

using benchmark::State;
using ZEL::Class;
using ZEL::Deviant;
using ZEL::Factory;
using ZEL::MetaModel;
using ZEL::Package;
using ZEL::Property;
using ZEL::String;
using ZEL::bench::numberedName;
using ZEL::bench::PlainTree;
using ZEL::bench::SampleModel;

constexpr int kPackages = 100;
auto const kObjects = static_cast<std::int64_t>(SampleModel::objectCountOf(kPackages));

/// Objects with a name in a tree, and nothing else, as the plain tree has them.
void makeTree(MetaModel const & model) {
    Factory const factory(model.getFactory());
    Package const top = factory.createPackage();
    top.setName("model");
    model.setTopPackage(top);
    for (int p = 0; p < kPackages; ++p) {
        Package const package = factory.createPackage();
        package.setName(numberedName("package", p));
        top.getPackagedElements().push_back(package);
        for (int c = 0; c < SampleModel::kClasses; ++c) {
            Class const added = factory.createClass();
            added.setName(numberedName("Class", c));
            package.getPackagedElements().push_back(added);
            for (int a = 0; a < SampleModel::kProperties; ++a) {
                Property const property = factory.createProperty();
                property.setName(numberedName("attribute", a));
                added.getOwnedAttributes().push_back(property);
            }
        }
    }
}

void createTree(State & state) {
    for (auto _ : state) {
        state.PauseTiming();
        {
            MetaModel const model = Factory::createNewModel();
            ZEL::Transaction const cancelledAtEnd(model.getRootDeviant());
            state.ResumeTiming();
            makeTree(model);
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kObjects);
}
BENCHMARK(createTree)->Unit(benchmark::kMillisecond);

void createTreeLimit(State & state) {
    for (auto _ : state) {
        auto tree = std::make_unique<PlainTree>(kPackages);
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kObjects);
}
BENCHMARK(createTreeLimit)->Unit(benchmark::kMillisecond);

/// `range(0)` objects without a container in transactions of `range(1)` each.
void createInTransactions(State & state) {
    for (auto _ : state) {
        state.PauseTiming();
        {
            MetaModel const model = Factory::createNewModel();
            Factory const factory(model.getFactory());
            Deviant const root = model.getRootDeviant();
            state.ResumeTiming();
            for (std::int64_t made = 0; made < state.range(0);) {
                root.beginTransaction("create");
                for (std::int64_t end = made + state.range(1); made < end; ++made) {
                    static_cast<void>(factory.createProperty());
                }
                root.commitTransaction();
            }
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(createInTransactions)
    ->Args({1000000, 1})
    ->Args({1000000, 1000000})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

/// The end of a model of `range(0)` objects with `range(1)` deviants that have not written.
void endModel(State & state) {
    int const packages = SampleModel::packagesFor(state.range(0));
    std::int64_t objects = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto sample = std::make_unique<SampleModel>(packages);
        for (std::int64_t i = 0; i < state.range(1); ++i) {
            static_cast<void>(sample->model.createDeviantWithName("deviant" + std::to_string(i)));
        }
        sample->classes.clear();
        sample->properties.clear();
        objects += static_cast<std::int64_t>(sample->objectCount());
        state.ResumeTiming();
        sample.reset();
    }
    state.SetItemsProcessed(objects);
}
BENCHMARK(endModel)
    ->Args({100000, 0})
    ->Args({100000, 100})
    ->Args({1000000, 0})
    ->Iterations(2)
    ->Unit(benchmark::kMillisecond);

} // namespace
