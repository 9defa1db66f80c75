// Parameters by name against standard and open hash tables of variants.

#include <benchmark/benchmark.h>
#include <zt/dictionary/DictionaryZT.h>

#if ZT_PEER_ABSEIL
#include <absl/container/flat_hash_map.h>
#endif

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <variant>
#include <vector>

namespace {

using Value = std::variant<int, double, bool, ZT::ETri, std::string, void*>;

// Lets the standard map be asked without making a string.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
        return std::hash<std::string_view>()(text);
    }
};
using StdMap = std::unordered_map<std::string, Value, TextHash, std::equal_to<>>;

// Names such as parameters have, in no order.
std::vector<std::string> Names(std::int64_t count) {
    std::vector<std::string> names;
    for (std::int64_t i = 0; i < count; ++i) names.push_back("param" + std::to_string(i));
    std::shuffle(names.begin(), names.end(), std::mt19937_64(1));
    return names;
}

// The same four operations on each contestant; an entry is made first.
struct Ours {
    void Declare(const char* name) { bag.AddItem(name, eDictDouble, ""); }
    void DeclareText(const char* name) {
        bag.AddItem(name, eDictString, "");
        bag.SetString(name, "a short text");
    }
    bool Get(const char* name, double& value) const { return bag.GetDouble(name, value); }
    bool Set(const char* name, double value) { return bag.SetDouble(name, value); }
    bool GetText(const char* name, CString& value) const { return bag.GetString(name, value); }
    using Text = CString;

    ZT::DictionaryZT bag{true, true};
};

// `View` is the form in which the map is asked.
template <class Map, class View>
struct Peer {
    void Declare(const char* name) { map.emplace(name, 0.0); }
    void DeclareText(const char* name) { map.emplace(name, std::string("a short text")); }
    bool Get(const char* name, double& value) const { return Copy(name, value); }
    bool Set(const char* name, double value) {
        const auto found = map.find(View(name));
        if (found == map.end()) return false;
        double* const stored = std::get_if<double>(&found->second);
        if (stored != nullptr) *stored = value;
        return stored != nullptr;
    }
    bool GetText(const char* name, std::string& value) const { return Copy(name, value); }
    using Text = std::string;

    template <class T>
    bool Copy(const char* name, T& value) const {
        const auto found = map.find(View(name));
        if (found == map.end()) return false;
        const T* const stored = std::get_if<T>(&found->second);
        if (stored != nullptr) value = *stored;
        return stored != nullptr;
    }

    Map map;
};

// Runs `operation` on every name of the contestant's entries.
template <class Operation>
void OnNames(benchmark::State& state, const std::vector<std::string>& names, Operation operation) {
    for (auto _ : state) {
        for (const std::string& name : names) operation(name.c_str());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <class Table>
void GetDouble(benchmark::State& state) {
    const auto names = Names(state.range(0));
    Table table;
    for (const std::string& name : names) table.Declare(name.c_str());
    OnNames(state, names, [&](const char* name) {
        double value = 0;
        benchmark::DoNotOptimize(table.Get(name, value));
        benchmark::DoNotOptimize(value);
    });
}

template <class Table>
void SetDouble(benchmark::State& state) {
    const auto names = Names(state.range(0));
    Table table;
    for (const std::string& name : names) table.Declare(name.c_str());
    double value = 0;
    OnNames(state, names, [&](const char* name) {
        value += 1;
        benchmark::DoNotOptimize(table.Set(name, value));
    });
}

template <class Table>
void GetText(benchmark::State& state) {
    const auto names = Names(state.range(0));
    Table table;
    for (const std::string& name : names) table.DeclareText(name.c_str());
    typename Table::Text value;
    OnNames(state, names, [&](const char* name) {
        benchmark::DoNotOptimize(table.GetText(name, value));
        benchmark::DoNotOptimize(value);
    });
}

void Sizes(benchmark::internal::Benchmark* work) {
    for (const int size : {8, 64, 10000}) work->Arg(size);
}

BENCHMARK(GetDouble<Ours>)->Name("DictionaryZT_GetDouble/ours")->Apply(Sizes);
BENCHMARK(GetDouble<Peer<StdMap, std::string_view>>)
    ->Name("DictionaryZT_GetDouble/std")
    ->Apply(Sizes);
BENCHMARK(SetDouble<Ours>)->Name("DictionaryZT_SetDouble/ours")->Apply(Sizes);
BENCHMARK(SetDouble<Peer<StdMap, std::string_view>>)
    ->Name("DictionaryZT_SetDouble/std")
    ->Apply(Sizes);
BENCHMARK(GetText<Ours>)->Name("DictionaryZT_GetString/ours")->Apply(Sizes);
BENCHMARK(GetText<Peer<StdMap, std::string_view>>)
    ->Name("DictionaryZT_GetString/std")
    ->Apply(Sizes);
#if ZT_PEER_ABSEIL
using AbslMap = absl::flat_hash_map<std::string, Value>;
BENCHMARK(GetDouble<Peer<AbslMap, absl::string_view>>)
    ->Name("DictionaryZT_GetDouble/absl")
    ->Apply(Sizes);
BENCHMARK(SetDouble<Peer<AbslMap, absl::string_view>>)
    ->Name("DictionaryZT_SetDouble/absl")
    ->Apply(Sizes);
BENCHMARK(GetText<Peer<AbslMap, absl::string_view>>)
    ->Name("DictionaryZT_GetString/absl")
    ->Apply(Sizes);
#endif

}  // namespace
