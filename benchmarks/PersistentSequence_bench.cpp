#include <ZEL/sequences/PersistentSequence.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

// `PersistentSequence` beside a plain vector of pointers.

namespace {

using ZEL::internal::PersistentSequence;
using Vector = std::vector<void *>;

// Addresses of imaginary objects of 64 bytes, shuffled.
Vector elements(std::size_t count) {
    Vector vector;
    for (std::size_t i = 0; i < count; ++i) {
        vector.push_back(reinterpret_cast<void *>(std::uintptr_t{0x10000} + i * 64));
    }
    std::shuffle(vector.begin(), vector.end(), std::mt19937(1));
    return vector;
}

template <class Sequence> Sequence make(std::size_t count) {
    Vector const vector = elements(count);
    Sequence sequence;
    sequence.assign(vector.begin(), vector.end());
    return sequence;
}

bool contains(PersistentSequence const & sequence, void * element) { return sequence.contains(element); }

bool contains(Vector const & sequence, void * element) {
    return std::find(sequence.begin(), sequence.end(), element) != sequence.end();
}

bool pushUnique(PersistentSequence & sequence, void * element) { return sequence.push_back(element); }

bool pushUnique(Vector & sequence, void * element) {
    bool const absent = !contains(sequence, element);
    if (absent) {
        sequence.push_back(element);
    }
    return absent;
}

template <class Sequence> void copy(benchmark::State & state) {
    auto const sequence = make<Sequence>(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        Sequence copied = sequence;
        benchmark::DoNotOptimize(copied);
    }
}

// The cost of the first write to a field in a transaction, which keeps the old value.
template <class Sequence> void copyAndPush(benchmark::State & state) {
    auto const sequence = make<Sequence>(static_cast<std::size_t>(state.range(0)));
    void * element = reinterpret_cast<void *>(std::uintptr_t{0x8000});
    for (auto _ : state) {
        Sequence copied = sequence;
        benchmark::DoNotOptimize(pushUnique(copied, element));
    }
}

// An unshared sequence, built element by element; times are per element.
template <class Sequence> void push(benchmark::State & state) {
    Vector const vector = elements(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        Sequence sequence;
        for (void * element : vector) {
            pushUnique(sequence, element);
        }
        benchmark::DoNotOptimize(sequence);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <class Sequence> void find(benchmark::State & state) {
    auto const count = static_cast<std::size_t>(state.range(0));
    auto const sequence = make<Sequence>(count);
    Vector asked = count > 0 ? elements(count) : elements(1);
    std::shuffle(asked.begin(), asked.end(), std::mt19937(2));
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(contains(sequence, asked[i]));
        i = i + 1 < asked.size() ? i + 1 : 0;
    }
}

// A walk over the whole sequence; times are per element.
template <class Sequence> void iterate(benchmark::State & state) {
    auto const sequence = make<Sequence>(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        std::uintptr_t sum = 0;
        for (void * element : sequence) {
            sum += reinterpret_cast<std::uintptr_t>(element);
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void forEach(benchmark::State & state) {
    auto const sequence = make<PersistentSequence>(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        std::uintptr_t sum = 0;
        sequence.forEach([&sum](void * element) { sum += reinterpret_cast<std::uintptr_t>(element); });
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// An element moves from the front to the middle, time and again.
void moveToMiddle(benchmark::State & state) {
    auto sequence = make<PersistentSequence>(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        void * element = sequence.at(0);
        sequence.eraseAt(0);
        sequence.insert(sequence.size() / 2, element);
    }
}

void sizes(benchmark::internal::Benchmark * benchmark) {
    for (std::int64_t size : {0, 5, 100, 100000}) {
        benchmark->Arg(size);
    }
}

BENCHMARK_TEMPLATE(copy, PersistentSequence)->Apply(sizes);
BENCHMARK_TEMPLATE(copy, Vector)->Apply(sizes);
BENCHMARK_TEMPLATE(copyAndPush, PersistentSequence)->Apply(sizes);
BENCHMARK_TEMPLATE(copyAndPush, Vector)->Apply(sizes);
BENCHMARK_TEMPLATE(push, PersistentSequence)->Arg(5)->Arg(100)->Arg(100000);
BENCHMARK_TEMPLATE(push, Vector)->Arg(5)->Arg(100);
BENCHMARK_TEMPLATE(find, PersistentSequence)->Apply(sizes);
BENCHMARK_TEMPLATE(find, Vector)->Apply(sizes);
BENCHMARK_TEMPLATE(iterate, PersistentSequence)->Apply(sizes);
BENCHMARK_TEMPLATE(iterate, Vector)->Apply(sizes);
BENCHMARK(forEach)->Apply(sizes);
BENCHMARK(moveToMiddle)->Arg(5)->Arg(100)->Arg(100000);

} // namespace
