// Sets of arcs against a sorted vector of intervals.

#include <benchmark/benchmark.h>
#include <zt/ranges/SetS1.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <utility>
#include <vector>

namespace {

using ZT::RangeS1;
using ZT::SetS1;
using ZT::z2Pi;
using ZT::zPi;

// As many arcs as asked for, apart from one another, in random order.
std::vector<std::pair<double, double>> ScatteredArcs(std::size_t count) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> part(0.1, 0.4);
    const double slot = z2Pi / static_cast<double>(count);
    std::vector<std::pair<double, double>> arcs;
    for (std::size_t i = 0; i < count; ++i) {
        const double start = static_cast<double>(i) * slot - zPi;
        arcs.emplace_back(start + part(random) * slot, start + (1 - part(random)) * slot);
    }
    std::shuffle(arcs.begin(), arcs.end(), random);
    return arcs;
}

void SubtractOurs(benchmark::State& state) {
    std::vector<RangeS1> taken;
    for (const auto& [start, end] : ScatteredArcs(static_cast<std::size_t>(state.range(0)))) {
        taken.emplace_back(start, end);
    }
    SetS1 set;
    for (auto _ : state) {
        set.SetFull();
        for (const RangeS1& arc : taken) set.Subtract(arc);
        benchmark::DoNotOptimize(set.GetCount());
    }
    if (set.GetCount() != state.range(0)) state.SkipWithError("not the arcs that remain");
    set.Clear();
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(SubtractOurs)->Name("SetS1_Subtract/ours")->Arg(1000)->Unit(benchmark::kMicrosecond);

// The circle cut open at the seam, as disjoint intervals in order.
class Intervals {
public:
    void SetFull() { m_pieces.assign(1, {-zPi, zPi}); }
    std::size_t Size() const { return m_pieces.size(); }

    // Takes away the arc from `start` counter-clockwise to `end`.
    void Subtract(double start, double end) {
        if (start > end) {
            Cut(start, zPi);
            Cut(-zPi, end);
        } else {
            Cut(start, end);
        }
    }

private:
    using Piece = std::pair<double, double>;

    void Cut(double start, double end) {
        const auto first = std::lower_bound(m_pieces.begin(), m_pieces.end(), start,
                                            [](const Piece& p, double x) { return p.second <= x; });
        auto last = first;
        while (last != m_pieces.end() && last->first < end) ++last;
        if (first == last) return;
        const Piece left{first->first, start};
        const Piece right{end, std::prev(last)->second};
        auto place = m_pieces.erase(first, last);
        if (right.first < right.second) place = m_pieces.insert(place, right);
        if (left.first < left.second) m_pieces.insert(place, left);
    }

    std::vector<Piece> m_pieces;
};

void SubtractVector(benchmark::State& state) {
    const auto taken = ScatteredArcs(static_cast<std::size_t>(state.range(0)));
    Intervals set;
    for (auto _ : state) {
        set.SetFull();
        for (const auto& [start, end] : taken) set.Subtract(start, end);
        benchmark::DoNotOptimize(set.Size());
    }
    // One more than ours, cut open at the seam.
    if (std::ssize(taken) + 1 != static_cast<std::ptrdiff_t>(set.Size())) {
        state.SkipWithError("not the intervals that remain");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(SubtractVector)->Name("SetS1_Subtract/vector")->Arg(1000)->Unit(benchmark::kMicrosecond);

}  // namespace
