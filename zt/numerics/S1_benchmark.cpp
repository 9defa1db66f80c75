// The reduction of angles against the C library's remainder.

#include <benchmark/benchmark.h>
#include <zt/numerics/S1.h>

#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

namespace {

constexpr std::size_t kCount = 8192;

// Angles of up to a thousand turns in either sense.
std::vector<double> RandomAngles() {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> turns(-1000.0, 1000.0);
    std::vector<double> angles(kCount);
    for (double& angle : angles) angle = turns(random) * ZT::z2Pi;
    return angles;
}

template <class Reduction>
void OnAngles(benchmark::State& state, Reduction reduce) {
    const auto angles = RandomAngles();
    for (auto _ : state) {
        for (const double angle : angles) benchmark::DoNotOptimize(reduce(angle));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

void FactorizeOurs(benchmark::State& state) {
    OnAngles(state, [](double angle) { return ZT::S1::Factorize(angle); });
}
BENCHMARK(FactorizeOurs)->Name("S1_Factorize/ours");

void FactorizeStd(benchmark::State& state) {
    OnAngles(state, [](double angle) { return std::remainder(angle, ZT::z2Pi); });
}
BENCHMARK(FactorizeStd)->Name("S1_Factorize/std");

}  // namespace
