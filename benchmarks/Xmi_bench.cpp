#include "limits/ExpatPass.h"
#include "support/SampleModel.h"
#include "support/XmiSample.h"

#include <ZEL/serializer/reader/XmiReader.h>
#include <ZEL/serializer/writer/XmiWriter.h>
#include <ZEL/values/Object.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <optional>
#include <string>

// Reading and writing files of sample models of the given number of objects.

namespace {

using benchmark::State;
using ZEL::bench::SampleModel;
using ZEL::bench::XmiSample;

int packagesOf(State const & state) { return SampleModel::packagesFor(state.range(0)); }

void report(State & state, XmiSample const & file) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(file.text().size()));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void load(State & state) {
    XmiSample const & file = XmiSample::shared(packagesOf(state));
    SampleModel::dropShared();
    for (auto _ : state) {
        std::optional<ZEL::Serializer::XmiReader> reader(std::in_place);
        std::optional<ZEL::Object> model(reader->read(file.path()));
        state.PauseTiming();
        if (!model->isValid() || !reader->report().isEmpty()) {
            state.SkipWithError("the file was not read whole");
        }
        model.reset();
        reader.reset();
        state.ResumeTiming();
    }
    report(state, file);
}
BENCHMARK(load)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void loadLimit(State & state) {
    XmiSample const & file = XmiSample::shared(packagesOf(state));
    for (auto _ : state) {
        benchmark::DoNotOptimize(ZEL::bench::expatPass(file.text()));
    }
    report(state, file);
}
BENCHMARK(loadLimit)->Arg(100000)->Unit(benchmark::kMillisecond);

void save(State & state) {
    XmiSample const & file = XmiSample::shared(packagesOf(state));
    SampleModel & sample = SampleModel::shared(packagesOf(state));
    std::string const path = ZEL::bench::temporaryPath("second.xmi");
    for (auto _ : state) {
        if (!ZEL::Serializer::XmiWriter().write(path, sample.model)) {
            state.SkipWithError("the file was not written");
        }
    }
    if (ZEL::bench::fileText(path).size() != file.text().size()) {
        state.SkipWithError("the file written is not the one read");
    }
    std::remove(path.c_str());
    report(state, file);
}
BENCHMARK(save)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

} // namespace
