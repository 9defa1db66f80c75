// Repeated linear interpolation against the plain triangular loop.

#include <benchmark/benchmark.h>
#include <zt/numerics/Interpolator.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace {

constexpr int kLast = ZT::Interpolator::kCapacity - 1;
constexpr std::size_t kCount = 64;

double PlainLoop(const double* y, double t, int n) {
    double w[ZT::Interpolator::kCapacity];
    for (int i = 0; i <= n; ++i) w[i] = y[i];
    for (int j = 1; j <= n; ++j) {
        for (int i = 0; i <= n - j; ++i) {
            const double r = (t - i) / j;
            w[i] = (1 - r) * w[i] + r * w[i + 1];
        }
    }
    return w[0];
}

// Runs `value` on thirty samples at random places between the nodes.
template <class Value>
void AtRandomPlaces(benchmark::State& state, Value value) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> sample(-100.0, 100.0);
    std::uniform_real_distribution<double> place(0.0, kLast);
    ZT::Interpolator samples;
    for (double& y : samples.m_y) y = sample(random);
    std::vector<double> places(kCount);
    for (double& t : places) t = place(random);
    for (auto _ : state) {
        for (const double t : places) {
            double result = value(samples, t);
            benchmark::DoNotOptimize(result);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

void AitkenOurs(benchmark::State& state) {
    AtRandomPlaces(state, [](const ZT::Interpolator& f, double t) { return f.aitken(t, kLast); });
}
BENCHMARK(AitkenOurs)->Name("Aitken/ours");

void AitkenPlain(benchmark::State& state) {
    AtRandomPlaces(state,
                   [](const ZT::Interpolator& f, double t) { return PlainLoop(f.m_y, t, kLast); });
}
BENCHMARK(AitkenPlain)->Name("Aitken/plain");

}  // namespace
