#include <platform/collections/CMapStringToPtr.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace {

/// Lets a standard map be asked without making a string.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
        return std::hash<std::string_view>()(text);
    }
};
using StdMap = std::unordered_map<std::string, void*, TextHash, std::equal_to<>>;

/// Names such as parameters have, in no order.
std::vector<std::string> Names(std::int64_t count, std::size_t padding) {
    std::vector<std::string> names;
    for (std::int64_t i = 0; i < count; ++i) {
        names.push_back("param" + std::string(padding, '_') + std::to_string(i));
    }
    std::shuffle(names.begin(), names.end(), std::mt19937_64(1));
    return names;
}

template <int PADDING>
void Lookup(benchmark::State& state) {
    const auto names = Names(state.range(0), PADDING);
    CMapStringToPtr map;
    for (const std::string& name : names) map.SetAt(name.c_str(), &map);
    for (auto _ : state) {
        for (const std::string& name : names) {
            void* value = nullptr;
            map.Lookup(name.c_str(), value);
            benchmark::DoNotOptimize(value);
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <int PADDING>
void Lookup_StdUnorderedMap(benchmark::State& state) {
    const auto names = Names(state.range(0), PADDING);
    StdMap map;
    for (const std::string& name : names) map[name] = &map;
    for (auto _ : state) {
        for (const std::string& name : names) {
            void* value = nullptr;
            if (const auto it = map.find(std::string_view(name.c_str())); it != map.end()) {
                value = it->second;
            }
            benchmark::DoNotOptimize(value);
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(Lookup<0>)->Name("CMapStringToPtr_LookupShort/ours")->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(Lookup_StdUnorderedMap<0>)
    ->Name("CMapStringToPtr_LookupShort/std")
    ->Arg(10)
    ->Arg(1000)
    ->Arg(100000);
BENCHMARK(Lookup<40>)->Name("CMapStringToPtr_LookupLong/ours")->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(Lookup_StdUnorderedMap<40>)
    ->Name("CMapStringToPtr_LookupLong/std")
    ->Arg(10)
    ->Arg(1000)
    ->Arg(100000);

}  // namespace
