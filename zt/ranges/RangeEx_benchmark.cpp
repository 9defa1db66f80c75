// Ranges with open ends, ranges of integers and cyclic runs against the same comparisons
// written out by hand.

#include <benchmark/benchmark.h>
#include <zt/ranges/RangeEx.h>
#include <zt/ranges/RangeInt.h>
#include <zt/ranges/RangeZGroup.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

namespace {

using ZT::RangeEx;
using ZT::RangeInt;
using ZT::RangeZGroup;
using ZT::zToler;

// So many that no branch predictor learns the sequence by heart.
constexpr std::size_t kCount = 8192;
constexpr int kRank = 100;

// Makes a range of each two whole numbers, and of the bits of a third. The numbers lie in the
// loop of the cyclic runs.
template <class Range, class Make>
std::vector<Range> RandomRanges(unsigned seed, Make make) {
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> number(0, kRank - 1);
    std::vector<Range> ranges;
    for (std::size_t i = 0; i < kCount; ++i) {
        const int a = number(random);
        const int b = number(random);
        ranges.push_back(make(a, b, number(random)));
    }
    return ranges;
}

std::vector<int> RandomNumbers() {
    std::mt19937 random(3);
    std::uniform_int_distribution<int> number(0, kRank - 1);
    std::vector<int> numbers(kCount);
    for (int& x : numbers) x = number(random);
    return numbers;
}

// Runs `operation` on each range and the number of the same index.
template <class Range, class Make, class Operation>
void OnNumbers(benchmark::State& state, Make make, Operation operation) {
    const auto ranges = RandomRanges<Range>(1, make);
    const auto numbers = RandomNumbers();
    for (auto _ : state) {
        int count = 0;
        for (std::size_t i = 0; i < kCount; ++i) {
            count += operation(ranges[i], numbers[i]);
            benchmark::DoNotOptimize(count);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

// Runs `operation` on a fresh copy of each range and its partner.
template <class Range, class Make, class Operation>
void OnPairs(benchmark::State& state, Make make, Operation operation) {
    const auto ranges = RandomRanges<Range>(1, make);
    const auto partners = RandomRanges<Range>(2, make);
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

// Ranges with open ends.

struct Ends {
    double lo;
    double hi;
    bool closedLo;
    bool closedHi;
};

RangeEx MakeEx(int a, int b, int bits) {
    return RangeEx(std::min(a, b), std::max(a, b), (bits & 1) != 0, (bits & 2) != 0);
}

Ends MakeEnds(int a, int b, int bits) {
    return {static_cast<double>(std::min(a, b)), static_cast<double>(std::max(a, b)),
            (bits & 1) != 0, (bits & 2) != 0};
}

bool IsIn(const Ends& r, double x) {
    if (x < r.lo - zToler || x > r.hi + zToler) return false;
    return (r.closedLo || std::fabs(x - r.lo) >= zToler) &&
           (r.closedHi || std::fabs(x - r.hi) >= zToler);
}

bool Intersect(Ends& r, const Ends& other) {
    const double lo = std::max(r.lo, other.lo);
    const double hi = std::min(r.hi, other.hi);
    if (lo > hi + zToler) return false;
    const bool closedLo = IsIn(r, lo) && IsIn(other, lo);
    const bool closedHi = IsIn(r, hi) && IsIn(other, hi);
    r = {lo, hi, closedLo, closedHi};
    return hi - lo >= zToler || closedLo || closedHi;
}

void ExInOurs(benchmark::State& state) {
    OnNumbers<RangeEx>(state, MakeEx, [](const RangeEx& r, int x) { return r.In(x, zToler); });
}
BENCHMARK(ExInOurs)->Name("RangeEx_In/ours");

void ExInPlain(benchmark::State& state) {
    OnNumbers<Ends>(state, MakeEnds, [](const Ends& r, int x) { return IsIn(r, x); });
}
BENCHMARK(ExInPlain)->Name("RangeEx_In/plain");

void ExIntersectOurs(benchmark::State& state) {
    OnPairs<RangeEx>(state, MakeEx, [](RangeEx& a, const RangeEx& b) { return a.Intersect(b); });
}
BENCHMARK(ExIntersectOurs)->Name("RangeEx_Intersect/ours");

void ExIntersectPlain(benchmark::State& state) {
    OnPairs<Ends>(state, MakeEnds, [](Ends& a, const Ends& b) { return Intersect(a, b); });
}
BENCHMARK(ExIntersectPlain)->Name("RangeEx_Intersect/plain");

// Ranges of integers.

struct Limits {
    int lo;
    int hi;
};

template <class Range>
Range MakeLimits(int a, int b, int) {
    return {std::min(a, b), std::max(a, b)};
}

void IntIsInOurs(benchmark::State& state) {
    OnNumbers<RangeInt>(state, MakeLimits<RangeInt>,
                        [](const RangeInt& r, int x) { return r.IsIn(x); });
}
BENCHMARK(IntIsInOurs)->Name("RangeInt_IsIn/ours");

void IntIsInPlain(benchmark::State& state) {
    OnNumbers<Limits>(state, MakeLimits<Limits>,
                      [](const Limits& r, int x) { return r.lo <= x && x <= r.hi; });
}
BENCHMARK(IntIsInPlain)->Name("RangeInt_IsIn/plain");

void IntIntersectOurs(benchmark::State& state) {
    OnPairs<RangeInt>(state, MakeLimits<RangeInt>,
                      [](RangeInt& a, const RangeInt& b) { return a.Intersect(b); });
}
BENCHMARK(IntIntersectOurs)->Name("RangeInt_Intersect/ours");

void IntIntersectPlain(benchmark::State& state) {
    OnPairs<Limits>(state, MakeLimits<Limits>, [](Limits& a, const Limits& b) {
        a.lo = std::max(a.lo, b.lo);
        a.hi = std::min(a.hi, b.hi);
        return a.lo <= a.hi;
    });
}
BENCHMARK(IntIntersectPlain)->Name("RangeInt_Intersect/plain");

// Cyclic runs.

void RunInOurs(benchmark::State& state) {
    OnNumbers<RangeZGroup>(
        state, [](int a, int b, int) { return RangeZGroup(kRank, a, b); },
        [](const RangeZGroup& run, int x) { return run.In(x); });
}
BENCHMARK(RunInOurs)->Name("RangeZGroup_In/ours");

void RunInPlain(benchmark::State& state) {
    OnNumbers<Limits>(
        state,
        [](int a, int b, int) {
            return Limits{a, b};
        },
        [](const Limits& r, int x) {
            return r.lo <= r.hi ? r.lo <= x && x <= r.hi : x >= r.lo || x <= r.hi;
        });
}
BENCHMARK(RunInPlain)->Name("RangeZGroup_In/plain");

// Sums over all elements of runs.
void RunWalkOurs(benchmark::State& state) {
    OnNumbers<RangeZGroup>(
        state, [](int a, int b, int) { return RangeZGroup(kRank, a, b); },
        [](const RangeZGroup& run, int) {
            int sum = 0;
            for (int i = 0; i < run.GetCount(); ++i) sum += run.Get(i);
            return sum;
        });
}
BENCHMARK(RunWalkOurs)->Name("RangeZGroup_Walk/ours");

void RunWalkPlain(benchmark::State& state) {
    OnNumbers<Limits>(
        state,
        [](int a, int b, int) {
            return Limits{a, b};
        },
        [](const Limits& r, int) {
            int sum = r.lo;
            for (int i = r.lo; i != r.hi;) {
                i = i + 1 == kRank ? 0 : i + 1;
                sum += i;
            }
            return sum;
        });
}
BENCHMARK(RunWalkPlain)->Name("RangeZGroup_Walk/plain");

}  // namespace
