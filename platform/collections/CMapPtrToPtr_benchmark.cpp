#include <platform/collections/CMapPtrToPtr.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <random>
#include <unordered_map>
#include <vector>

namespace {

/// Addresses of small objects from the heap, in the order of their making or in none.
class Keys {
public:
    Keys(std::int64_t count, bool shuffled) {
        for (std::int64_t i = 0; i < count; ++i) {
            m_objects.push_back(std::make_unique<std::int64_t[]>(4));
            m_keys.push_back(m_objects.back().get());
        }
        if (shuffled) std::shuffle(m_keys.begin(), m_keys.end(), std::mt19937_64(1));
    }
    const std::vector<void*>& All() const { return m_keys; }

private:
    std::vector<std::unique_ptr<std::int64_t[]>> m_objects;
    std::vector<void*> m_keys;
};

template <bool SHUFFLED>
void Lookup(benchmark::State& state) {
    const Keys keys(state.range(0), SHUFFLED);
    CMapPtrToPtr map;
    for (void* key : keys.All()) map.SetAt(key, key);
    for (auto _ : state) {
        for (void* key : keys.All()) {
            void* value = nullptr;
            map.Lookup(key, value);
            benchmark::DoNotOptimize(value);
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <bool SHUFFLED>
void Lookup_StdUnorderedMap(benchmark::State& state) {
    const Keys keys(state.range(0), SHUFFLED);
    std::unordered_map<void*, void*> map;
    for (void* key : keys.All()) map[key] = key;
    for (auto _ : state) {
        for (void* key : keys.All()) {
            void* value = nullptr;
            if (const auto it = map.find(key); it != map.end()) value = it->second;
            benchmark::DoNotOptimize(value);
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void FillAndRemove(benchmark::State& state) {
    const Keys keys(state.range(0), true);
    for (auto _ : state) {
        CMapPtrToPtr map;
        for (void* key : keys.All()) map.SetAt(key, key);
        for (void* key : keys.All()) map.RemoveKey(key);
        benchmark::DoNotOptimize(map.GetCount());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void FillAndRemove_StdUnorderedMap(benchmark::State& state) {
    const Keys keys(state.range(0), true);
    for (auto _ : state) {
        std::unordered_map<void*, void*> map;
        for (void* key : keys.All()) map[key] = key;
        for (void* key : keys.All()) map.erase(key);
        benchmark::DoNotOptimize(map.size());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(Lookup<true>)->Name("CMapPtrToPtr_LookupShuffled/ours")->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(Lookup_StdUnorderedMap<true>)
    ->Name("CMapPtrToPtr_LookupShuffled/std")
    ->Arg(10)
    ->Arg(1000)
    ->Arg(100000);
BENCHMARK(Lookup<false>)->Name("CMapPtrToPtr_LookupInOrder/ours")->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(Lookup_StdUnorderedMap<false>)
    ->Name("CMapPtrToPtr_LookupInOrder/std")
    ->Arg(10)
    ->Arg(1000)
    ->Arg(100000);
BENCHMARK(FillAndRemove)->Name("CMapPtrToPtr_FillAndRemove/ours")->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(FillAndRemove_StdUnorderedMap)
    ->Name("CMapPtrToPtr_FillAndRemove/std")
    ->Arg(10)
    ->Arg(1000)
    ->Arg(100000);

}  // namespace
