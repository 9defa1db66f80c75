// Cyclic indices against the same steps written out by hand.

#include <benchmark/benchmark.h>
#include <zt/numerics/CyclSegment.h>
#include <zt/numerics/ZGroup.h>

#include <cstddef>
#include <random>
#include <vector>

namespace {

using ZT::CyclSegment;
using ZT::ZGroup;

// So many that no branch predictor learns the sequence by heart.
constexpr std::size_t kCount = 8192;
constexpr int kRank = 100;

std::vector<int> RandomIndices(unsigned seed, int from, int to) {
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> index(from, to);
    std::vector<int> indices(kCount);
    for (int& i : indices) i = index(random);
    return indices;
}

void CountItems(benchmark::State& state, std::int64_t perIteration) {
    state.SetItemsProcessed(state.iterations() * perIteration);
}

void StepOurs(benchmark::State& state) {
    int rank = kRank;
    benchmark::DoNotOptimize(rank);
    ZGroup g(rank);
    for (auto _ : state) {
        ++g;
        benchmark::DoNotOptimize(g);
    }
    CountItems(state, 1);
}
BENCHMARK(StepOurs)->Name("ZGroup_Step/ours");

void StepPlain(benchmark::State& state) {
    int rank = kRank;
    benchmark::DoNotOptimize(rank);
    int value = 0;
    for (auto _ : state) {
        value = (value + 1) % rank;
        benchmark::DoNotOptimize(value);
    }
    CountItems(state, 1);
}
BENCHMARK(StepPlain)->Name("ZGroup_Step/plain");

// Runs `operation` on each of the indices.
template <class Operation>
void OnIndices(benchmark::State& state, Operation operation) {
    // From one turn below the loop to one above it.
    const std::vector<int> indices = RandomIndices(1, -kRank, 2 * kRank - 1);
    int rank = kRank;
    benchmark::DoNotOptimize(rank);
    for (auto _ : state) {
        int sum = 0;
        for (const int i : indices) {
            sum += operation(rank, i);
            benchmark::DoNotOptimize(sum);
        }
    }
    CountItems(state, kCount);
}

void FactorizeOurs(benchmark::State& state) {
    OnIndices(state, [](int rank, int i) { return ZGroup::Factorize(rank, i); });
}
BENCHMARK(FactorizeOurs)->Name("ZGroup_Factorize/ours");

void FactorizePlain(benchmark::State& state) {
    OnIndices(state, [](int rank, int i) { return (i < 0 ? i + rank : i) % rank; });
}
BENCHMARK(FactorizePlain)->Name("ZGroup_Factorize/plain");

// Runs `operation` on an element, and the ends of a run, all of them in the loop.
template <class Operation>
void OnRuns(benchmark::State& state, Operation operation) {
    const std::vector<int> elements = RandomIndices(1, 0, kRank - 1);
    const std::vector<int> firsts = RandomIndices(2, 0, kRank - 1);
    const std::vector<int> lasts = RandomIndices(3, 0, kRank - 1);
    int rank = kRank;
    benchmark::DoNotOptimize(rank);
    for (auto _ : state) {
        int count = 0;
        for (std::size_t i = 0; i < kCount; ++i) {
            count += operation(rank, elements[i], firsts[i], lasts[i]);
            benchmark::DoNotOptimize(count);
        }
    }
    CountItems(state, kCount);
}

void InRangeOurs(benchmark::State& state) {
    OnRuns(state, [](int rank, int i, int first, int last) {
        return ZGroup(rank, i).InRange(first, last);
    });
}
BENCHMARK(InRangeOurs)->Name("ZGroup_InRange/ours");

bool IsOnRun(int i, int first, int last) {
    return first <= last ? first <= i && i <= last : i >= first || i <= last;
}

void InRangePlain(benchmark::State& state) {
    OnRuns(state, [](int, int i, int first, int last) { return IsOnRun(i, first, last); });
}
BENCHMARK(InRangePlain)->Name("ZGroup_InRange/plain");

// A walk of a full turn, element by element.
void WalkOurs(benchmark::State& state) {
    int rank = kRank;
    benchmark::DoNotOptimize(rank);
    CyclSegment full(rank);
    full.SetFull();
    for (auto _ : state) {
        int sum = 0;
        for (ZGroup g(rank); full.Contains(g); ++g) sum += g;
        benchmark::DoNotOptimize(sum);
    }
    CountItems(state, kRank);
}
BENCHMARK(WalkOurs)->Name("CyclSegment_Walk/ours");

void WalkPlain(benchmark::State& state) {
    int rank = kRank;
    benchmark::DoNotOptimize(rank);
    for (auto _ : state) {
        int sum = 0;
        int i = 0;
        do {
            sum += i;
            i = i + 1 == rank ? 0 : i + 1;
            benchmark::DoNotOptimize(i);
        } while (i != 0);
        benchmark::DoNotOptimize(sum);
    }
    CountItems(state, kRank);
}
BENCHMARK(WalkPlain)->Name("CyclSegment_Walk/plain");

}  // namespace
