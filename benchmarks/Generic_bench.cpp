#include "limits/PlainTree.h"
#include "limits/VirtualObject.h"
#include "support/Items.h"
#include "support/SampleModel.h"

#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/tools/ContentsWalk.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <vector>

// The roads to values and contents that know nothing of their class, over whole models, beside plain objects and trees.
// Times are per object.

namespace {

using benchmark::State;
using ZEL::ImmutableClassObject;
using ZEL::ImmutableProperty;
using ZEL::String;
using ZEL::bench::forSizes;
using ZEL::bench::forSizesAndOthers;
using ZEL::bench::PlainNode;
using ZEL::bench::PlainTree;
using ZEL::bench::reportItems;
using ZEL::bench::SampleModel;

/// Calls `read` with each property of a model of the given number of objects, in the order of their making, after the
/// second argument's number of models of the same size have come and gone.
template <class Read> void readInTurn(State & state, Read read) {
    auto const & properties = SampleModel::sharedOf(state.range(0), state.range(1)).properties;
    for (auto _ : state) {
        for (ImmutableProperty const & property : properties) {
            read(property);
        }
    }
    reportItems(state, properties.size());
}

/// One virtual call for each of as many plain objects.
void readInTurnLimit(State & state) {
    auto const objects = ZEL::bench::makeVirtualObjects(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        for (auto const & object : objects) {
            benchmark::DoNotOptimize(object->nameByValue());
        }
    }
    reportItems(state, objects.size());
}

void getInTurn(State & state) {
    readInTurn(state, [](ImmutableProperty const & object) { benchmark::DoNotOptimize(object.getName()); });
}

void getByProperty(State & state) {
    ImmutableProperty const name = ZEL::Property::MetaClass().getProperty("name");
    readInTurn(state, [&](ImmutableProperty const & object) { benchmark::DoNotOptimize(object.getOne(name)); });
}

void getByName(State & state) {
    String const name("name");
    readInTurn(state, [&](ImmutableProperty const & object) { benchmark::DoNotOptimize(object.getOne(name)); });
}

void viewInTurn(State & state) {
    readInTurn(state, [](ImmutableProperty const & object) { benchmark::DoNotOptimize(object.getNameView()); });
}

void readByProperty(State & state) {
    auto const view = ZEL::MetaClassView::of(ZEL::Property::MetaClass());
    ZEL::PropertyView const & name = *view->find("name");
    readInTurn(state, [&](ImmutableProperty const & object) { benchmark::DoNotOptimize(name.textOf(object)); });
}

void readByName(State & state) {
    readInTurn(state, [](ImmutableProperty const & object) {
        benchmark::DoNotOptimize(ZEL::MetaClassView::ofInstance(object).find("name")->textOf(object));
    });
}

BENCHMARK(getInTurn)->Apply(forSizesAndOthers);
BENCHMARK(viewInTurn)->Apply(forSizesAndOthers);
BENCHMARK(getByProperty)->Apply(forSizesAndOthers);
BENCHMARK(getByName)->Apply(forSizesAndOthers);
BENCHMARK(readByProperty)->Apply(forSizesAndOthers);
BENCHMARK(readByName)->Apply(forSizesAndOthers);
BENCHMARK(readInTurnLimit)->Apply(forSizes);

/// Every object of a tree once.
void walkTree(State & state) {
    SampleModel const & sample = SampleModel::sharedOf(state.range(0), state.range(1));
    std::size_t met = 0;
    for (auto _ : state) {
        met = 0;
        for (ImmutableClassObject const & object : ZEL::ContentsWalk(sample.model.getTopPackage())) {
            benchmark::DoNotOptimize(object.getImplementationWithoutAssert());
            ++met;
        }
    }
    reportItems(state, met);
}

/// The same through the contents of each.
void walkContents(State & state) {
    SampleModel const & sample = SampleModel::sharedOf(state.range(0), state.range(1));
    std::size_t met = 0;
    for (auto _ : state) {
        met = 0;
        std::vector<ImmutableClassObject> waiting{sample.model.getTopPackage()};
        while (!waiting.empty()) {
            ImmutableClassObject const object = waiting.back();
            waiting.pop_back();
            ++met;
            for (ImmutableClassObject const & each : object.getContaineeZELs()) {
                waiting.push_back(each);
            }
        }
    }
    reportItems(state, met);
}

void walkContentsLimit(State & state) {
    PlainTree const tree(SampleModel::packagesFor(state.range(0)));
    for (auto _ : state) {
        std::vector<PlainNode const *> waiting{&tree.root()};
        while (!waiting.empty()) {
            PlainNode const * const node = waiting.back();
            waiting.pop_back();
            benchmark::DoNotOptimize(node->kind());
            waiting.insert(waiting.end(), node->children.begin(), node->children.end());
        }
    }
    reportItems(state, tree.size());
}

BENCHMARK(walkTree)->Apply(forSizesAndOthers);
BENCHMARK(walkContents)->Apply(forSizesAndOthers);
BENCHMARK(walkContentsLimit)->Apply(forSizes);

} // namespace
