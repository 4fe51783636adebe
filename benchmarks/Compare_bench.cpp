#include "support/Items.h"
#include "support/SampleModel.h"
#include "support/XmiSample.h"

#include <ZEL/compare/Check.h>
#include <ZEL/compare/Merge.h>
#include <ZEL/deviants/Transaction.h>
#include <ZEL/metamodel/NamedElement.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/serializer/reader/XmiReader.h>
#include <ZEL/tools/Comparator.h>
#include <ZEL/tools/ObjectsIn.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>

// Models as files hold them: compared, merged, checked. Times are per object.

namespace {

using benchmark::State;
using ZEL::MetaModel;
using ZEL::bench::forSizes;
using ZEL::bench::reportItems;
using ZEL::bench::SampleModel;
using ZEL::bench::XmiSample;

constexpr std::size_t kEach = 100; ///< of so many objects one is changed

MetaModel readSample(State const & state) {
    SampleModel::dropShared();
    return MetaModel(
        ZEL::Serializer::XmiReader().read(XmiSample::shared(SampleModel::packagesFor(state.range(0))).path()));
}

/// Renames one object of a hundred, from the given one on.
void change(MetaModel const & model, std::size_t first) {
    ZEL::Transaction transaction(model.getRootDeviant());
    auto const objects = ZEL::objectsIn(model);
    for (std::size_t i = first; i < objects.size(); i += kEach) {
        ZEL::NamedElement const element(
            ZEL::ClassObject(ZEL::Object(objects[i].getImplementation(), model.getRootDeviant())));
        if (element.isValid()) {
            element.setName("changed " + std::to_string(i));
        }
    }
    transaction.commit();
}

/// What the differences are held against.
void compareFiles(State & state) {
    MetaModel const model = readSample(state);
    MetaModel const other = readSample(state);
    for (auto _ : state) {
        if (!ZEL::compare(model.getTopPackage(), other.getTopPackage())) {
            state.SkipWithError("the two are different");
        }
    }
    reportItems(state, ZEL::objectsIn(model).size());
}
BENCHMARK(compareFiles)->Apply(forSizes);

void diffEqual(State & state) {
    MetaModel const model = readSample(state);
    MetaModel const other = readSample(state);
    for (auto _ : state) {
        if (!ZEL::Compare::diff(model, other).empty()) {
            state.SkipWithError("the two are different");
        }
    }
    reportItems(state, ZEL::objectsIn(model).size());
}
BENCHMARK(diffEqual)->Apply(forSizes);

void diffChanged(State & state) {
    MetaModel const model = readSample(state);
    MetaModel const other = readSample(state);
    change(other, 50);
    for (auto _ : state) {
        benchmark::DoNotOptimize(ZEL::Compare::diff(model, other).size());
    }
    reportItems(state, ZEL::objectsIn(model).size());
}
BENCHMARK(diffChanged)->Apply(forSizes);

/// Two sides that have changed one object of a hundred each; the result is taken back.
void mergeChanged(State & state) {
    MetaModel const base = readSample(state);
    MetaModel const ours = readSample(state);
    MetaModel const theirs = readSample(state);
    change(ours, 30);
    change(theirs, 60);
    for (auto _ : state) {
        ZEL::Compare::Merge const merge(base, ours, theirs);
        if (!merge.conflicts().empty() || !merge.apply(ours)) {
            state.SkipWithError("in conflict");
        }
        state.PauseTiming();
        ours.getRootDeviant().undo();
        state.ResumeTiming();
    }
    reportItems(state, ZEL::objectsIn(base).size());
}
BENCHMARK(mergeChanged)->Apply(forSizes);

/// By the rules of the metamodel.
void checkModel(State & state) {
    MetaModel const model = readSample(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(ZEL::Compare::check(model).size());
    }
    reportItems(state, ZEL::objectsIn(model).size());
}
BENCHMARK(checkModel)->Apply(forSizes);

} // namespace
