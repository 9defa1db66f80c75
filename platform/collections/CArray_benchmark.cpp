#include <platform/collections/CArray.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <numeric>
#include <vector>

namespace {

void AddAndSum(benchmark::State& state) {
    for (auto _ : state) {
        CArray<double, double> array;
        for (std::int64_t i = 0; i < state.range(0); ++i) array.Add(static_cast<double>(i));
        double sum = 0;
        for (INT_PTR i = 0; i < array.GetSize(); ++i) sum += array[i];
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void AddAndSum_StdVector(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<double> array;
        for (std::int64_t i = 0; i < state.range(0); ++i) array.push_back(static_cast<double>(i));
        double sum = 0;
        for (std::size_t i = 0; i < array.size(); ++i) sum += array.at(i);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(AddAndSum)->Name("CArray_AddAndSum/ours")->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(AddAndSum_StdVector)->Name("CArray_AddAndSum/std")->Arg(10)->Arg(1000)->Arg(100000);

}  // namespace
