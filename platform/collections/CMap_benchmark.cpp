#include <platform/collections/CMap.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <unordered_map>
#include <vector>

namespace {

std::vector<std::int64_t> Numbers(std::int64_t count) {
    std::mt19937_64 random(1);
    std::vector<std::int64_t> numbers;
    for (std::int64_t i = 0; i < count; ++i) {
        numbers.push_back(static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(count)));
    }
    return numbers;
}

/// Counts how often each number occurs, among as many numbers as there may be.
void CountNumbers(benchmark::State& state) {
    const auto numbers = Numbers(state.range(0));
    for (auto _ : state) {
        CMap<std::int64_t, std::int64_t, std::int64_t, std::int64_t> map;
        for (std::int64_t number : numbers) ++map[number];
        benchmark::DoNotOptimize(map.GetCount());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void CountNumbers_StdUnorderedMap(benchmark::State& state) {
    const auto numbers = Numbers(state.range(0));
    for (auto _ : state) {
        std::unordered_map<std::int64_t, std::int64_t> map;
        for (std::int64_t number : numbers) ++map[number];
        benchmark::DoNotOptimize(map.size());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void Lookup(benchmark::State& state) {
    const auto numbers = Numbers(state.range(0));
    CMap<std::int64_t, std::int64_t, std::int64_t, std::int64_t> map;
    for (std::int64_t number : numbers) map[number] = number;
    for (auto _ : state) {
        for (std::int64_t number : numbers) {
            std::int64_t value = 0;
            map.Lookup(number, value);
            benchmark::DoNotOptimize(value);
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void Lookup_StdUnorderedMap(benchmark::State& state) {
    const auto numbers = Numbers(state.range(0));
    std::unordered_map<std::int64_t, std::int64_t> map;
    for (std::int64_t number : numbers) map[number] = number;
    for (auto _ : state) {
        for (std::int64_t number : numbers) {
            std::int64_t value = 0;
            if (const auto it = map.find(number); it != map.end()) value = it->second;
            benchmark::DoNotOptimize(value);
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(CountNumbers)->Name("CMap_CountNumbers/ours")->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(CountNumbers_StdUnorderedMap)
    ->Name("CMap_CountNumbers/std")
    ->Arg(10)
    ->Arg(1000)
    ->Arg(100000);
BENCHMARK(Lookup)->Name("CMap_Lookup/ours")->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(Lookup_StdUnorderedMap)->Name("CMap_Lookup/std")->Arg(10)->Arg(1000)->Arg(100000);

}  // namespace
