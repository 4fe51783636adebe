#include "support/SampleModel.h"
#include "support/XmiSample.h"

#include <ZEL/logging/LogLevel.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/tools/HTMLPrinter.h>

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <string>

namespace {

using ZEL::bench::SampleModel;

/// The page of a sample model of the given number of objects. It goes nowhere: a model of 1M objects makes one of
/// several gigabytes, and the disk is not what is measured.
void printReport(benchmark::State & state) {
    SampleModel & sample = SampleModel::sharedOf(state.range(0));
    ZEL::Logger::instance()->setDefaultHandlerLevel(ZEL::LogLevel::off);
    std::string const name = ZEL::bench::temporaryPath("report");
    std::string const path = name + ".html";
    if (::symlink("/dev/null", path.c_str()) != 0) {
        state.SkipWithError("the page cannot be led to nowhere");
        return;
    }
    for (auto _ : state) {
        ZEL::util::HTMLPrinter().print(sample.model, name);
    }
    std::remove(path.c_str());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(printReport)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(printReport)->Arg(1000000)->Repetitions(1)->Unit(benchmark::kMillisecond); // takes a minute

} // namespace
