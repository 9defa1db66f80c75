// Tables of rows against the standard vector and against the copying and comparing of plain
// memory.

#include <benchmark/benchmark.h>
#include <zt/memory/BufferBase.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

namespace {

constexpr ZT::ulong kRows = 1'000'000;

struct Point {
    double x, y, z;
};

Point PointOf(ZT::ulong i) {
    const double at = i;
    return {at, at + 1, at + 2};
}

void AddRowOurs(benchmark::State& state) {
    for (auto _ : state) {
        ZT::BufferBase rows;
        rows.SetRowSize(sizeof(Point));
        for (ZT::ulong i = 0; i < kRows; ++i) {
            const Point point = PointOf(i);
            std::memcpy(rows.AddNewRow(), &point, sizeof point);
        }
        benchmark::DoNotOptimize(rows.m_pData);
    }
}
BENCHMARK(AddRowOurs)->Name("AddRow/ours")->Unit(benchmark::kMillisecond);

void AddRowVector(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<Point> rows;
        for (ZT::ulong i = 0; i < kRows; ++i) rows.push_back(PointOf(i));
        benchmark::DoNotOptimize(rows.data());
    }
}
BENCHMARK(AddRowVector)->Name("AddRow/std_vector")->Unit(benchmark::kMillisecond);

// A table of `bytes` bytes, all defined.
std::unique_ptr<ZT::BufferBase> Table(std::int64_t bytes) {
    auto table = std::make_unique<ZT::BufferBase>();
    table->SetRowSize(16);
    table->Allocate(static_cast<ZT::ulong>(bytes / 16));
    std::memset(table->m_pData, 7, static_cast<std::size_t>(bytes));
    return table;
}

std::size_t BytesOf(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

void CountBytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void CopyOurs(benchmark::State& state) {
    const auto source = Table(state.range(0));
    for (auto _ : state) {
        ZT::BufferBase copy;
        copy.Copy(*source, 0);
        benchmark::DoNotOptimize(copy.m_pData);
        benchmark::ClobberMemory();
    }
    CountBytes(state);
}

// A new block each time, as a deep copy has it.
void CopyMemory(benchmark::State& state) {
    const auto source = Table(state.range(0));
    for (auto _ : state) {
        const std::unique_ptr<unsigned char[]> copy(new unsigned char[BytesOf(state)]);
        std::memcpy(copy.get(), source->m_pData, BytesOf(state));
        benchmark::DoNotOptimize(copy.get());
        benchmark::ClobberMemory();
    }
    CountBytes(state);
}

void MergeOurs(benchmark::State& state) {
    const auto half = Table(state.range(0) / 2);
    for (auto _ : state) {
        ZT::BufferBase joined;
        joined.Copy(*half, 0);
        benchmark::DoNotOptimize(joined.Merge(*half));
        benchmark::DoNotOptimize(joined.m_pData);
        benchmark::ClobberMemory();
    }
    CountBytes(state);
}

// The two blocks that a copy and a merge have.
void MergeMemory(benchmark::State& state) {
    const auto half = Table(state.range(0) / 2);
    const std::size_t size = BytesOf(state) / 2;
    for (auto _ : state) {
        std::unique_ptr<unsigned char[]> copy(new unsigned char[size]);
        std::memcpy(copy.get(), half->m_pData, size);
        benchmark::DoNotOptimize(copy.get());
        const std::unique_ptr<unsigned char[]> joined(new unsigned char[2 * size]);
        std::memcpy(joined.get(), copy.get(), size);
        std::memcpy(joined.get() + size, half->m_pData, size);
        copy.reset();
        benchmark::DoNotOptimize(joined.get());
        benchmark::ClobberMemory();
    }
    CountBytes(state);
}

void IsSameOurs(benchmark::State& state) {
    const auto a = Table(state.range(0));
    const auto b = Table(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(a->IsSame(*b));
        benchmark::ClobberMemory();
    }
    CountBytes(state);
}

void IsSameMemory(benchmark::State& state) {
    const auto a = Table(state.range(0));
    const auto b = Table(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::memcmp(a->m_pData, b->m_pData, BytesOf(state)));
        benchmark::ClobberMemory();
    }
    CountBytes(state);
}

// Within the nearest caches, and beyond them.
void Sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(4 << 10)->Arg(1 << 20);
}

BENCHMARK(CopyOurs)->Name("CopyRows/ours")->Apply(Sizes);
BENCHMARK(CopyMemory)->Name("CopyRows/memcpy")->Apply(Sizes);
BENCHMARK(MergeOurs)->Name("MergeRows/ours")->Apply(Sizes);
BENCHMARK(MergeMemory)->Name("MergeRows/memcpy")->Apply(Sizes);
BENCHMARK(IsSameOurs)->Name("SameRows/ours")->Apply(Sizes);
BENCHMARK(IsSameMemory)->Name("SameRows/memcmp")->Apply(Sizes);

}  // namespace
