#include <benchmark/benchmark.h>

#include <zt/containers/HexText.h>
#include <string>
#include <vector>

#if ZT_PEER_ABSEIL
#include <absl/strings/escaping.h>
#endif

namespace {

constexpr std::size_t kBytes = std::size_t{16} << 20;

// Bytes without a pattern that a processor could learn.
const std::vector<unsigned char>& Block() {
    static const std::vector<unsigned char> block = [] {
        std::vector<unsigned char> bytes(kBytes);
        std::uint64_t state = 1;
        for (unsigned char& byte : bytes) {
            state = state * 6364136223846793005u + 1442695040888963407u;
            byte = static_cast<unsigned char>(state >> 56);
        }
        return bytes;
    }();
    return block;
}

const CString& Digits() {
    static const CString digits = ZT::hxBinaryToString(Block().data(), kBytes);
    return digits;
}

void CountBytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kBytes));
}

void EncodeOurs(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(ZT::hxBinaryToString(Block().data(), kBytes));
    }
    CountBytes(state);
}
BENCHMARK(EncodeOurs)->Name("HexEncode/ours");

void DecodeOurs(benchmark::State& state) {
    for (auto _ : state) {
        ZT::ulong n = 0;
        unsigned char* const bytes = ZT::hxStringToBinary(Digits(), n);
        benchmark::DoNotOptimize(bytes);
        delete[] bytes;
    }
    CountBytes(state);
}
BENCHMARK(DecodeOurs)->Name("HexDecode/ours");

void DecodeOursIntoRoom(benchmark::State& state) {
    std::vector<unsigned char> room(kBytes);
    for (auto _ : state) {
        benchmark::DoNotOptimize(ZT::hxStringToBinary(Digits().GetString(), kBytes, room.data()));
    }
    CountBytes(state);
}
BENCHMARK(DecodeOursIntoRoom)->Name("HexDecodeIntoRoom/ours");

#if ZT_PEER_ABSEIL
void EncodeAbseil(benchmark::State& state) {
    const absl::string_view block(reinterpret_cast<const char*>(Block().data()), kBytes);
    for (auto _ : state) benchmark::DoNotOptimize(absl::BytesToHexString(block));
    CountBytes(state);
}
BENCHMARK(EncodeAbseil)->Name("HexEncode/abseil");

void DecodeAbseil(benchmark::State& state) {
    const absl::string_view digits(Digits().GetString(), 2 * kBytes);
    for (auto _ : state) benchmark::DoNotOptimize(absl::HexStringToBytes(digits));
    CountBytes(state);
}
BENCHMARK(DecodeAbseil)->Name("HexDecode/abseil");
#endif

}  // namespace
