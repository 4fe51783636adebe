#include "limits/VirtualObject.h"
#include "support/SampleModel.h"

#include <ZEL/deviants/Transaction.h>

#include <benchmark/benchmark.h>

#include <string>

// Reads and writes of single values of 1,000 objects, over and over, so that all is in the cache. Times are per operation.

namespace {

using benchmark::State;
using ZEL::Deviant;
using ZEL::ImmutableMetaModel;
using ZEL::ImmutableProperty;
using ZEL::Property;
using ZEL::String;
using ZEL::bench::SampleModel;
using ZEL::bench::VirtualObject;

constexpr std::size_t kHot = 1000;

template <class Objects, class Operation> void forEachHot(State & state, Objects const & objects, Operation operation) {
    for (auto _ : state) {
        for (auto const & object : objects) {
            operation(object);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(objects.size()));
}

// --- reads -----------------------------------------------------------------------------------------------------------

auto const readFlag = [](auto const & property) { benchmark::DoNotOptimize(bool(property.isReadOnly())); };
auto const readNumber = [](auto const & property) { benchmark::DoNotOptimize(std::int32_t(property.getLower())); };
auto const readReference = [](auto const & property) { benchmark::DoNotOptimize(property.getType()); };
auto const readText = [](auto const & property) { benchmark::DoNotOptimize(property.getName()); };

auto const readFlagVirtually = [](auto const & object) { benchmark::DoNotOptimize(object->flag()); };
auto const readNumberVirtually = [](auto const & object) { benchmark::DoNotOptimize(object->number()); };
auto const readReferenceVirtually = [](auto const & object) { benchmark::DoNotOptimize(object->type()); };
auto const readTextVirtually = [](auto const & object) { benchmark::DoNotOptimize(object->nameByValue()); };

template <class Read> void getInRoot(State & state, Read read) {
    auto const & properties = SampleModel::shared(2).properties;
    forEachHot(state, std::vector<ImmutableProperty>(properties.begin(), properties.begin() + kHot), read);
}

/// In a deviant that has not written; there is one.
template <class Read> void getInDeviant(State & state, Read read) {
    SampleModel & sample = SampleModel::shared(2);
    {
        ImmutableMetaModel const model = sample.model.createDeviantWithName("reader");
        std::vector<ImmutableProperty> properties;
        for (std::size_t i = 0; i < kHot; ++i) {
            properties.push_back(sample.properties[i].asDeviant(model));
        }
        forEachHot(state, properties, read);
    }
    sample.model.removeDeviantWithName("reader");
}

template <class Read> void getLimit(State & state, Read read) {
    forEachHot(state, ZEL::bench::makeVirtualObjects(kHot), read);
}

BENCHMARK_CAPTURE(getInRoot, flag, readFlag);
BENCHMARK_CAPTURE(getInDeviant, flag, readFlag);
BENCHMARK_CAPTURE(getLimit, flag, readFlagVirtually);
BENCHMARK_CAPTURE(getInRoot, number, readNumber);
BENCHMARK_CAPTURE(getInDeviant, number, readNumber);
BENCHMARK_CAPTURE(getLimit, number, readNumberVirtually);
BENCHMARK_CAPTURE(getInRoot, reference, readReference);
BENCHMARK_CAPTURE(getInDeviant, reference, readReference);
BENCHMARK_CAPTURE(getLimit, reference, readReferenceVirtually);
BENCHMARK_CAPTURE(getInRoot, text, readText);
BENCHMARK_CAPTURE(getInDeviant, text, readText);
BENCHMARK_CAPTURE(getLimit, text, readTextVirtually);

// --- writes ----------------------------------------------------------------------------------------------------------

auto const writeFlag = [](Property const & property, bool odd) { property.setIsReadOnly(odd); };
auto const writeText = [](Property const & property, bool odd) {
    static String const texts[] = {"newname_a", "newname_b"};
    property.setName(texts[odd]);
};
auto const writeFlagVirtually = [](VirtualObject & object, bool odd) { object.setFlag(odd); };
auto const writeTextVirtually = [](VirtualObject & object, bool odd) {
    static std::string const texts[] = {"newname_a", "newname_b"};
    object.setName(texts[odd]);
};

/// In an open transaction in which each object has been written before.
template <class Write> void setInTransaction(State & state, Write write) {
    SampleModel & sample = SampleModel::shared(2);
    std::vector<Property> const properties(sample.properties.begin(), sample.properties.begin() + kHot);
    ZEL::Transaction const cancelledAtEnd(sample.root);
    bool odd = false;
    for (Property const & property : properties) {
        write(property, odd);
    }
    for (auto _ : state) {
        odd = !odd;
        for (Property const & property : properties) {
            write(property, odd);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kHot));
}

template <class Write> void setLimit(State & state, Write write) {
    auto const objects = ZEL::bench::makeVirtualObjects(kHot);
    bool odd = false;
    for (auto _ : state) {
        odd = !odd;
        for (auto const & object : objects) {
            write(*object, odd);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kHot));
}

BENCHMARK_CAPTURE(setInTransaction, flag, writeFlag);
BENCHMARK_CAPTURE(setLimit, flag, writeFlagVirtually);
BENCHMARK_CAPTURE(setInTransaction, text, writeText);
BENCHMARK_CAPTURE(setLimit, text, writeTextVirtually);

} // namespace
