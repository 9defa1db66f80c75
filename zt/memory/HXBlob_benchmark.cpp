// Blobs against what does the same work without them.

#include <benchmark/benchmark.h>
#include <zt/containers/HXBitArray.h>
#include <zt/containers/HexText.h>
#include <zt/memory/BlobCached.h>
#include <zt/memory/HXBlob.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

using ZT::BlobCached;
using ZT::HXBlob;
using ZT::ulong;

constexpr ulong kBytes = ulong{1} << 20;

// Bytes without a pattern that a processor could learn.
std::vector<unsigned char> RandomBytes(std::size_t size) {
    std::vector<unsigned char> bytes(size);
    std::uint64_t state = 1;
    for (unsigned char& byte : bytes) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        byte = static_cast<unsigned char>(state >> 56);
    }
    return bytes;
}

HXBlob Naming(std::vector<unsigned char>& bytes) {
    return HXBlob(static_cast<ulong>(bytes.size()), bytes.data());
}

void CountBytes(benchmark::State& state, std::int64_t bytes) {
    state.SetBytesProcessed(state.iterations() * bytes);
}

// ---- Text.

void ToText(benchmark::State& state) {
    auto bytes = RandomBytes(kBytes);
    const HXBlob blob = Naming(bytes);
    for (auto _ : state) benchmark::DoNotOptimize(blob.ToCString());
    CountBytes(state, kBytes);
}
BENCHMARK(ToText)->Name("BlobToText/ours");

void ToText_functions(benchmark::State& state) {
    const auto bytes = RandomBytes(kBytes);
    for (auto _ : state) benchmark::DoNotOptimize(ZT::hxBinaryToString(bytes.data(), kBytes));
    CountBytes(state, kBytes);
}
BENCHMARK(ToText_functions)->Name("BlobToText/functions");

void FromText(benchmark::State& state) {
    auto bytes = RandomBytes(kBytes);
    const CString digits = Naming(bytes).ToCString();
    HXBlob blob(true);
    for (auto _ : state) benchmark::DoNotOptimize(blob.StringToBinary(digits));
    CountBytes(state, kBytes);
}
BENCHMARK(FromText)->Name("BlobFromText/ours");

void FromText_functions(benchmark::State& state) {
    auto bytes = RandomBytes(kBytes);
    const CString digits = Naming(bytes).ToCString();
    for (auto _ : state)
        benchmark::DoNotOptimize(ZT::hxStringToBinary(digits.GetString(), kBytes, bytes.data()));
    CountBytes(state, kBytes);
}
BENCHMARK(FromText_functions)->Name("BlobFromText/functions");

// ---- Searching: a pattern that stands at the end alone, in bytes without a pattern and in ones
// where its first byte stands everywhere.

struct Haystack {
    explicit Haystack(bool alike)
        : bytes(alike ? std::vector<unsigned char>(kBytes, 'a') : RandomBytes(kBytes)) {
        std::memcpy(bytes.data() + kBytes - pattern.size(), pattern.data(), pattern.size());
    }
    std::vector<unsigned char> pattern{'a', 'a', 'a', 'x', 'y', 'z', 'a', 'b'};
    std::vector<unsigned char> bytes;
};

void FindData(benchmark::State& state) {
    Haystack hay(state.range(0) != 0);
    const HXBlob blob = Naming(hay.bytes);
    const HXBlob pattern = Naming(hay.pattern);
    for (auto _ : state) benchmark::DoNotOptimize(blob.FindData(pattern));
    CountBytes(state, kBytes);
}
BENCHMARK(FindData)->Name("BlobFindData/ours")->Arg(0)->Arg(1);

void FindData_memmem(benchmark::State& state) {
    const Haystack hay(state.range(0) != 0);
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            memmem(hay.bytes.data(), hay.bytes.size(), hay.pattern.data(), hay.pattern.size()));
    }
    CountBytes(state, kBytes);
}
BENCHMARK(FindData_memmem)->Name("BlobFindData/memmem")->Arg(0)->Arg(1);

// ---- Bits of a smaller blob spread over 1 MiB; the argument is the size of the smaller one.

void Inject(benchmark::State& state) {
    auto room = RandomBytes(kBytes);
    auto bits = RandomBytes(static_cast<std::size_t>(state.range(0)));
    HXBlob blob = Naming(room);
    const HXBlob source = Naming(bits);
    for (auto _ : state) {
        blob.Inject(source);
        benchmark::ClobberMemory();
    }
    CountBytes(state, state.range(0));
}
BENCHMARK(Inject)->Name("BlobInject/ours")->Arg(kBytes)->Arg(kBytes / 2)->Arg(700000);

// The same places, bit by bit through the views.
void Inject_loop(benchmark::State& state) {
    auto room = RandomBytes(kBytes);
    auto bits = RandomBytes(static_cast<std::size_t>(state.range(0)));
    ZT::HXBitArray to = Naming(room).GetBits();
    const ZT::HXBitArray from = Naming(bits).GetBits();
    const float ratio = static_cast<float>(room.size()) / static_cast<float>(bits.size());
    for (auto _ : state) {
        int last = -1;
        for (int i = 0; i < from.m_nBits; ++i) {
            int place = static_cast<int>(static_cast<float>(i) * ratio);
            if (place == last) ++place;
            last = place;
            to.Set(place, from.Get(i));
        }
        benchmark::ClobberMemory();
    }
    CountBytes(state, state.range(0));
}
BENCHMARK(Inject_loop)->Name("BlobInject/loop")->Arg(kBytes)->Arg(kBytes / 2)->Arg(700000);

// ---- A large blob goes to its file, comes back, and is freed. The counter is what that took
// more than the program had.

std::size_t PeakMemory() {
    std::FILE* const status = std::fopen("/proc/self/status", "r");
    char line[256];
    unsigned long kilobytes = 0;
    while (std::fgets(line, sizeof line, status) &&
           std::sscanf(line, "VmHWM: %lu", &kilobytes) != 1) {
    }
    std::fclose(status);
    return std::size_t{kilobytes} << 10;
}

void ResetPeakMemory() {
    std::FILE* const file = std::fopen("/proc/self/clear_refs", "w");
    std::fputs("5", file);
    std::fclose(file);
}

void CachedRoundTrip(benchmark::State& state) {
    const auto size = static_cast<ulong>(state.range(0));
    for (auto _ : state) {
        ResetPeakMemory();
        const std::size_t before = PeakMemory();
        BlobCached blob;
        blob.SetSize(size);
        std::memset(blob.m_pData, 'x', size);
        blob.UpdateCachingFlag();
        blob.Cache();
        blob.LoadCache();
        if (blob.m_nSize != size) state.SkipWithError("not read back");
        blob.Delete();
        state.counters["bytes"] = static_cast<double>(PeakMemory() - before);
    }
    CountBytes(state, state.range(0));
}
BENCHMARK(CachedRoundTrip)
    ->Name("BlobCachedRoundTrip/ours")
    ->Arg(std::int64_t{1} << 30)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

// The same with plain files and one block.
void CachedRoundTrip_plain(benchmark::State& state) {
    const auto size = static_cast<std::size_t>(state.range(0));
    for (auto _ : state) {
        ResetPeakMemory();
        const std::size_t before = PeakMemory();
        std::FILE* const file = std::tmpfile();
        std::setvbuf(file, nullptr, _IONBF, 0);
        unsigned char* block = new unsigned char[size];
        std::memset(block, 'x', size);
        bool done = std::fwrite(block, 1, size, file) == size;
        delete[] block;
        block = new unsigned char[size];
        std::rewind(file);
        done = std::fread(block, 1, size, file) == size && done;
        delete[] block;
        std::fclose(file);
        if (!done) state.SkipWithError("not read back");
        state.counters["bytes"] = static_cast<double>(PeakMemory() - before);
    }
    CountBytes(state, state.range(0));
}
BENCHMARK(CachedRoundTrip_plain)
    ->Name("BlobCachedRoundTrip/plain")
    ->Arg(std::int64_t{1} << 30)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

}  // namespace
