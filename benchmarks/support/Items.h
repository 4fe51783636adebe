#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>

namespace ZEL::bench {

/// Reports the number of items that each iteration goes through, so that the results are per item.
inline void reportItems(benchmark::State & state, std::size_t items) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(items));
}

/// Models of the three sizes that are measured throughout, in objects.
inline void forSizes(benchmark::internal::Benchmark * benchmark) {
    benchmark->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
}

/// The same as the first argument; the second is the number of models that came and went before.
inline void forSizesAndOthers(benchmark::internal::Benchmark * benchmark) {
    benchmark->ArgsProduct({{10'000, 100'000, 1'000'000}, {0}})->Args({100'000, 10})->Unit(benchmark::kMillisecond);
}

} // namespace ZEL::bench
