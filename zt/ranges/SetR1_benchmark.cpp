// Sets of intervals against Boost's, which keeps them in a search tree.

#include <benchmark/benchmark.h>
#include <zt/ranges/SetR1.h>

#if ZT_PEER_BOOST_ICL
#include <boost/icl/interval_set.hpp>
#endif

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace {

// So many that no branch predictor learns the sequence by heart.
constexpr std::size_t kPoints = 8192;

struct Limits {
    double lo;
    double hi;
};

// `count` intervals that lie apart, in ascending order: as much of the line is in as out.
std::vector<Limits> Apart(std::size_t count) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> part(0.25, 0.75);
    std::vector<Limits> intervals;
    for (std::size_t i = 0; i < count; ++i) {
        const double start = static_cast<double>(i);
        intervals.push_back({start, start + part(random)});
    }
    return intervals;
}

// The same in random order.
std::vector<Limits> Shuffled(std::size_t count) {
    std::vector<Limits> intervals = Apart(count);
    std::shuffle(intervals.begin(), intervals.end(), std::mt19937(2));
    return intervals;
}

std::vector<double> PointsAmong(std::size_t count) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> place(0.0, static_cast<double>(count));
    std::vector<double> points(kPoints);
    for (double& x : points) x = place(random);
    return points;
}

std::size_t Members(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

// Builds a set from intervals that come in random order, one union each.
template <class Set, class Unite>
void Build(benchmark::State& state, Unite unite) {
    const std::vector<Limits> intervals = Shuffled(Members(state));
    for (auto _ : state) {
        Set set;
        for (const Limits& limits : intervals) unite(set, limits);
        benchmark::DoNotOptimize(set);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Looks for the member that holds a point.
template <class Set, class Unite, class Find>
void Search(benchmark::State& state, Unite unite, Find find) {
    Set set;
    for (const Limits& limits : Apart(Members(state))) unite(set, limits);
    const std::vector<double> points = PointsAmong(Members(state));
    for (auto _ : state) {
        for (const double x : points) {
            bool isIn = find(set, x);
            benchmark::DoNotOptimize(isIn);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPoints));
}

void UniteOurs(ZT::SetR1& set, const Limits& limits) {
    set.Unite(ZT::RangeR1(limits.lo, limits.hi));
}

void BuildOurs(benchmark::State& state) {
    Build<ZT::SetR1>(state, UniteOurs);
}
BENCHMARK(BuildOurs)->Name("SetR1_Unite/ours")->RangeMultiplier(10)->Range(10, 1000);

void SearchOurs(benchmark::State& state) {
    Search<ZT::SetR1>(state, UniteOurs,
                      [](const ZT::SetR1& set, double x) { return set.FindRange(x) >= 0; });
}
BENCHMARK(SearchOurs)->Name("SetR1_FindRange/ours")->RangeMultiplier(10)->Range(10, 1000);

#if ZT_PEER_BOOST_ICL

using IclSet = boost::icl::interval_set<double>;

void UniteIcl(IclSet& set, const Limits& limits) {
    set.add(boost::icl::continuous_interval<double>::closed(limits.lo, limits.hi));
}

void BuildIcl(benchmark::State& state) {
    Build<IclSet>(state, UniteIcl);
}
BENCHMARK(BuildIcl)->Name("SetR1_Unite/icl")->RangeMultiplier(10)->Range(10, 1000);

void SearchIcl(benchmark::State& state) {
    Search<IclSet>(state, UniteIcl,
                   [](const IclSet& set, double x) { return set.find(x) != set.end(); });
}
BENCHMARK(SearchIcl)->Name("SetR1_FindRange/icl")->RangeMultiplier(10)->Range(10, 1000);

#endif

}  // namespace
