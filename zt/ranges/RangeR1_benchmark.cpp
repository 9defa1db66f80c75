// Real intervals against S2's and against the same comparisons written out by hand.

#include <benchmark/benchmark.h>
#include <zt/ranges/RangeR1.h>

#if ZT_PEER_S2
#include <s2/r1interval.h>
#endif

#include <cstddef>
#include <random>
#include <vector>

namespace {

// So many that no branch predictor learns the sequence by heart.
constexpr std::size_t kCount = 8192;

// Two limits and nothing else, for the code written by hand.
struct Limits {
    double lo;
    double hi;
};

Limits LimitsOf(std::mt19937& random) {
    std::uniform_real_distribution<double> place(-100.0, 100.0);
    std::uniform_real_distribution<double> length(0.0, 60.0);
    const double lo = place(random);
    return {lo, lo + length(random)};
}

// The same random ranges in the form of each contestant.
template <class Range>
std::vector<Range> RandomRanges(unsigned seed) {
    std::mt19937 random(seed);
    std::vector<Range> ranges;
    for (std::size_t i = 0; i < kCount; ++i) {
        const Limits limits = LimitsOf(random);
        ranges.push_back(Range{limits.lo, limits.hi});
    }
    return ranges;
}

std::vector<double> RandomPoints() {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> place(-120.0, 180.0);
    std::vector<double> points(kCount);
    for (double& x : points) x = place(random);
    return points;
}

// Runs `operation` on each range and the point of the same index.
template <class Range, class Operation>
void OnPoints(benchmark::State& state, Operation operation) {
    const auto ranges = RandomRanges<Range>(1);
    const auto points = RandomPoints();
    for (auto _ : state) {
        int count = 0;
        for (std::size_t i = 0; i < kCount; ++i) {
            const bool result = operation(ranges[i], points[i]);
            count += result;
            benchmark::DoNotOptimize(count);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

// Runs `operation` on each range and its partner, and stores the result over the range of
// a fresh copy.
template <class Range, class Operation>
void OnPairs(benchmark::State& state, Operation operation) {
    const auto ranges = RandomRanges<Range>(1);
    const auto partners = RandomRanges<Range>(2);
    std::vector<Range> results(ranges);
    for (auto _ : state) {
        int count = 0;
        for (std::size_t i = 0; i < kCount; ++i) {
            Range range(ranges[i]);
            count += operation(range, partners[i]);
            benchmark::DoNotOptimize(range);
        }
        benchmark::DoNotOptimize(count);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

using ZT::RangeR1;
using ZT::zToler;

void InOurs(benchmark::State& state) {
    OnPoints<RangeR1>(state, [](const RangeR1& r, double x) { return r.In(x, zToler); });
}
BENCHMARK(InOurs)->Name("RangeR1_In/ours");

void InPlain(benchmark::State& state) {
    OnPoints<Limits>(
        state, [](const Limits& r, double x) { return x >= r.lo - zToler && r.hi + zToler >= x; });
}
BENCHMARK(InPlain)->Name("RangeR1_In/plain");

void IntersectOurs(benchmark::State& state) {
    OnPairs<RangeR1>(state, [](RangeR1& a, const RangeR1& b) { return a.Intersect(b); });
}
BENCHMARK(IntersectOurs)->Name("RangeR1_Intersect/ours");

void IntersectPlain(benchmark::State& state) {
    OnPairs<Limits>(state, [](Limits& a, const Limits& b) {
        if (b.lo > a.lo) a.lo = b.lo;
        if (a.hi > b.hi) a.hi = b.hi;
        return !(a.lo > a.hi + zToler);
    });
}
BENCHMARK(IntersectPlain)->Name("RangeR1_Intersect/plain");

void UniteOurs(benchmark::State& state) {
    OnPairs<RangeR1>(state, [](RangeR1& a, const RangeR1& b) { return a.Unite(b); });
}
BENCHMARK(UniteOurs)->Name("RangeR1_Unite/ours");

void UnitePlain(benchmark::State& state) {
    OnPairs<Limits>(state, [](Limits& a, const Limits& b) {
        const bool changed = a.lo > b.lo || b.hi > a.hi;
        if (a.lo > b.lo) a.lo = b.lo;
        if (b.hi > a.hi) a.hi = b.hi;
        return changed;
    });
}
BENCHMARK(UnitePlain)->Name("RangeR1_Unite/plain");

#if ZT_PEER_S2

void InS2(benchmark::State& state) {
    OnPoints<R1Interval>(state, [](const R1Interval& r, double x) { return r.Contains(x); });
}
BENCHMARK(InS2)->Name("RangeR1_In/s2");

void IntersectS2(benchmark::State& state) {
    OnPairs<R1Interval>(state, [](R1Interval& a, const R1Interval& b) {
        a = a.Intersection(b);
        return !a.is_empty();
    });
}
BENCHMARK(IntersectS2)->Name("RangeR1_Intersect/s2");

void UniteS2(benchmark::State& state) {
    OnPairs<R1Interval>(state, [](R1Interval& a, const R1Interval& b) {
        const R1Interval before = a;
        a = a.Union(b);
        return a != before;
    });
}
BENCHMARK(UniteS2)->Name("RangeR1_Unite/s2");

#endif

}  // namespace
