// Arcs against S2's.

#include <benchmark/benchmark.h>
#include <zt/ranges/RangeS1.h>

#if ZT_PEER_S2
#include <s2/s1interval.h>
#endif

#include <cstddef>
#include <random>
#include <vector>

namespace {

constexpr std::size_t kCount = 8192;

// The same random arcs in the form of each contestant: any start, any end.
template <class Arc>
std::vector<Arc> RandomArcs(unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> angle(-3.14, 3.14);
    std::vector<Arc> arcs;
    for (std::size_t i = 0; i < kCount; ++i) {
        const double start = angle(random);
        arcs.push_back(Arc(start, angle(random)));
    }
    return arcs;
}

std::vector<double> RandomAngles() {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> angle(-3.14, 3.14);
    std::vector<double> angles(kCount);
    for (double& x : angles) x = angle(random);
    return angles;
}

// Runs `operation` on each arc and the angle of the same index.
template <class Arc, class Operation>
void OnAngles(benchmark::State& state, Operation operation) {
    const auto arcs = RandomArcs<Arc>(1);
    const auto angles = RandomAngles();
    for (auto _ : state) {
        int count = 0;
        for (std::size_t i = 0; i < kCount; ++i) {
            count += operation(arcs[i], angles[i]);
            benchmark::DoNotOptimize(count);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

// Runs `operation` on a fresh copy of each arc and its partner.
template <class Arc, class Operation>
void OnPairs(benchmark::State& state, Operation operation) {
    const auto arcs = RandomArcs<Arc>(1);
    const auto partners = RandomArcs<Arc>(2);
    for (auto _ : state) {
        int count = 0;
        for (std::size_t i = 0; i < kCount; ++i) {
            Arc arc(arcs[i]);
            Arc partner(partners[i]);
            count += operation(arc, partner);
            benchmark::DoNotOptimize(arc);
        }
        benchmark::DoNotOptimize(count);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

using ZT::RangeS1;

void InOurs(benchmark::State& state) {
    OnAngles<RangeS1>(state, [](const RangeS1& a, double x) { return a.In(x); });
}
BENCHMARK(InOurs)->Name("RangeS1_In/ours");

void ContainsOurs(benchmark::State& state) {
    OnPairs<RangeS1>(state, [](const RangeS1& a, const RangeS1& b) { return a >= b; });
}
BENCHMARK(ContainsOurs)->Name("RangeS1_Contains/ours");

void IntersectOurs(benchmark::State& state) {
    OnPairs<RangeS1>(state, [](RangeS1& a, RangeS1& b) { return a.Intersect(b); });
}
BENCHMARK(IntersectOurs)->Name("RangeS1_Intersect/ours");

#if ZT_PEER_S2

void InS2(benchmark::State& state) {
    OnAngles<S1Interval>(state, [](const S1Interval& a, double x) { return a.Contains(x); });
}
BENCHMARK(InS2)->Name("RangeS1_In/s2");

void ContainsS2(benchmark::State& state) {
    OnPairs<S1Interval>(state,
                        [](const S1Interval& a, const S1Interval& b) { return a.Contains(b); });
}
BENCHMARK(ContainsS2)->Name("RangeS1_Contains/s2");

void IntersectS2(benchmark::State& state) {
    OnPairs<S1Interval>(state, [](S1Interval& a, const S1Interval& b) {
        a = a.Intersection(b);
        return !a.is_empty();
    });
}
BENCHMARK(IntersectS2)->Name("RangeS1_Intersect/s2");

#endif

}  // namespace
