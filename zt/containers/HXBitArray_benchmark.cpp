// Numbered bits against the standard vector of bits and against plain loops.

#include <benchmark/benchmark.h>
#include <zt/containers/HXBitArray.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace {

// The bit that is looked for stands near the end.
constexpr int kBits = 1 << 20;
constexpr int kPlace = kBits - 5;

std::vector<unsigned char> Bytes() {
    std::vector<unsigned char> bytes(kBits / 8);
    bytes[kPlace / 8] = 1 << (kPlace % 8);
    return bytes;
}

void FindOurs(benchmark::State& state) {
    std::vector<unsigned char> bytes = Bytes();
    const ZT::HXBitArray bits(bytes.data(), kBits);
    for (auto _ : state) {
        benchmark::DoNotOptimize(bits.FindFirstBit(true));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(FindOurs)->Name("FindFirstBit/ours");

void FindVector(benchmark::State& state) {
    std::vector<bool> bits(kBits);
    bits[kPlace] = true;
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::find(bits.begin(), bits.end(), true) - bits.begin());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(FindVector)->Name("FindFirstBit/std_vector_bool");

void FindLoop(benchmark::State& state) {
    std::vector<unsigned char> bytes = Bytes();
    for (auto _ : state) {
        int i = 0;
        while (i < kBits && !(bytes[static_cast<std::size_t>(i / 8)] & (1 << (i % 8)))) ++i;
        benchmark::DoNotOptimize(i);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(FindLoop)->Name("FindFirstBit/loop");

void SetAllOurs(benchmark::State& state) {
    std::vector<unsigned char> bytes = Bytes();
    ZT::HXBitArray bits(bytes.data(), kBits);
    for (auto _ : state) {
        bits.SetAll(true);
        benchmark::DoNotOptimize(bytes.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(SetAllOurs)->Name("SetAll/ours");

void SetAllVector(benchmark::State& state) {
    std::vector<bool> bits(kBits);
    for (auto _ : state) {
        std::fill(bits.begin(), bits.end(), true);
        benchmark::DoNotOptimize(bits);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(SetAllVector)->Name("SetAll/std_vector_bool");

void SetAllLoop(benchmark::State& state) {
    std::vector<unsigned char> bytes = Bytes();
    for (auto _ : state) {
        for (unsigned char& byte : bytes) byte = 0xFF;
        benchmark::DoNotOptimize(bytes.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(SetAllLoop)->Name("SetAll/loop");

void SetOurs(benchmark::State& state) {
    std::vector<unsigned char> bytes = Bytes();
    ZT::HXBitArray bits(bytes.data(), kBits);
    for (auto _ : state) {
        for (int i = 0; i < kBits; ++i) bits.Set(i, (i & 4) != 0);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(SetOurs)->Name("SetEachBit/ours");

void SetVector(benchmark::State& state) {
    std::vector<bool> bits(kBits);
    for (auto _ : state) {
        for (std::size_t i = 0; i < kBits; ++i) bits[i] = (i & 4) != 0;
        benchmark::DoNotOptimize(bits);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(SetVector)->Name("SetEachBit/std_vector_bool");

void GetOurs(benchmark::State& state) {
    std::vector<unsigned char> bytes = Bytes();
    const ZT::HXBitArray bits(bytes.data(), kBits);
    for (auto _ : state) {
        int count = 0;
        for (int i = 0; i < kBits; ++i) count += bits.Get(i);
        benchmark::DoNotOptimize(count);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(GetOurs)->Name("GetEachBit/ours");

void GetVector(benchmark::State& state) {
    std::vector<bool> bits(kBits);
    for (auto _ : state) {
        int count = 0;
        for (std::size_t i = 0; i < kBits; ++i) count += bits[i];
        benchmark::DoNotOptimize(count);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(GetVector)->Name("GetEachBit/std_vector_bool");

}  // namespace
