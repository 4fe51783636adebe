#include "limits/TextWriterPass.h"
#include "support/SampleModel.h"
#include "support/XmiSample.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

namespace {

/// The size without the first line, which names the encoding. Elsewhere only the order of attributes may differ.
std::size_t bodySize(std::string const & document) { return document.size() - document.find('\n'); }

using ZEL::bench::SampleModel;
using ZEL::bench::XmiSample;

/// The same bytes as `save` writes.
void saveLimit(benchmark::State & state) {
    XmiSample const & file = XmiSample::shared(SampleModel::packagesFor(state.range(0)));
    ZEL::bench::TextWriterPass const pass(file.text());
    std::string const path = ZEL::bench::temporaryPath("limit.xmi");
    for (auto _ : state) {
        pass.write(path);
    }
    if (bodySize(ZEL::bench::fileText(path)) != bodySize(file.text())) {
        state.SkipWithError("the limit has written other bytes");
    }
    std::remove(path.c_str());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(file.text().size()));
}
BENCHMARK(saveLimit)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace
