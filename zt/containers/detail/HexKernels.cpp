#include <immintrin.h>

#include <zt/containers/detail/HexKernels.h>
#include <array>

namespace ZT::hex {

namespace {

constexpr char kDigits[] = "0123456789ABCDEF";
constexpr std::uint8_t kNoDigit = 0xFF;

constexpr std::array<std::uint8_t, 256> MakeDigitValues() {
    std::array<std::uint8_t, 256> values{};
    values.fill(kNoDigit);
    for (unsigned v = 0; v < 16; ++v) {
        const auto value = static_cast<std::uint8_t>(v);
        values[static_cast<unsigned char>(kDigits[v])] = value;
        if (v > 9) values[static_cast<unsigned char>(kDigits[v] + ('a' - 'A'))] = value;
    }
    return values;
}

constexpr std::array<std::uint8_t, 256> kDigitValues = MakeDigitValues();

void EncodePlain(const std::uint8_t* bytes, std::size_t count, char* digits) {
    for (std::size_t i = 0; i < count; ++i) {
        digits[2 * i] = kDigits[bytes[i] >> 4];
        digits[2 * i + 1] = kDigits[bytes[i] & 0xF];
    }
}

std::size_t DecodePlain(const char* digits, std::size_t count, std::uint8_t* bytes) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t high = kDigitValues[static_cast<unsigned char>(digits[2 * i])];
        const std::uint8_t low = kDigitValues[static_cast<unsigned char>(digits[2 * i + 1])];
        if ((high | low) == kNoDigit) return i;
        bytes[i] = static_cast<std::uint8_t>(high << 4 | low);
    }
    return count;
}

// Sixteen bytes at a time, on every processor of this architecture.

__m128i Load128(const void* p) {
    return _mm_loadu_si128(static_cast<const __m128i*>(p));
}
void Store128(void* p, __m128i v) {
    _mm_storeu_si128(static_cast<__m128i*>(p), v);
}

__m128i DigitsOfNibbles128(__m128i nibbles) {
    const __m128i letters = _mm_cmpgt_epi8(nibbles, _mm_set1_epi8(9));
    const __m128i base = _mm_add_epi8(nibbles, _mm_set1_epi8('0'));
    return _mm_add_epi8(base, _mm_and_si128(letters, _mm_set1_epi8('A' - '9' - 1)));
}

void EncodeSse2(const std::uint8_t* bytes, std::size_t count, char* digits) {
    const __m128i nibble = _mm_set1_epi8(0xF);
    std::size_t i = 0;
    for (; i + 16 <= count; i += 16) {
        const __m128i block = Load128(bytes + i);
        const __m128i high = DigitsOfNibbles128(_mm_and_si128(_mm_srli_epi16(block, 4), nibble));
        const __m128i low = DigitsOfNibbles128(_mm_and_si128(block, nibble));
        Store128(digits + 2 * i, _mm_unpacklo_epi8(high, low));
        Store128(digits + 2 * i + 16, _mm_unpackhi_epi8(high, low));
    }
    EncodePlain(bytes + i, count - i, digits + 2 * i);
}

// Eight bytes in the low halves of the words; `valid` loses the places that hold
// no digit.
__m128i BytesOfDigits128(__m128i digits, __m128i& valid) {
    const __m128i decimal = _mm_sub_epi8(digits, _mm_set1_epi8('0'));
    const __m128i isDecimal = _mm_cmpeq_epi8(_mm_min_epu8(decimal, _mm_set1_epi8(9)), decimal);
    const __m128i letter =
        _mm_sub_epi8(_mm_or_si128(digits, _mm_set1_epi8(0x20)), _mm_set1_epi8('a'));
    const __m128i isLetter = _mm_cmpeq_epi8(_mm_min_epu8(letter, _mm_set1_epi8(5)), letter);
    valid = _mm_and_si128(valid, _mm_or_si128(isDecimal, isLetter));

    const __m128i fromLetter = _mm_add_epi8(letter, _mm_set1_epi8(10));
    const __m128i nibbles =
        _mm_or_si128(_mm_and_si128(isDecimal, decimal), _mm_and_si128(isLetter, fromLetter));
    const __m128i high = _mm_slli_epi16(_mm_and_si128(nibbles, _mm_set1_epi16(0xFF)), 4);
    return _mm_or_si128(high, _mm_srli_epi16(nibbles, 8));
}

std::size_t DecodeSse2(const char* digits, std::size_t count, std::uint8_t* bytes) {
    std::size_t i = 0;
    for (; i + 16 <= count; i += 16) {
        __m128i valid = _mm_set1_epi8(-1);
        const __m128i first = BytesOfDigits128(Load128(digits + 2 * i), valid);
        const __m128i second = BytesOfDigits128(Load128(digits + 2 * i + 16), valid);
        if (_mm_movemask_epi8(valid) != 0xFFFF) break;
        Store128(bytes + i, _mm_packus_epi16(first, second));
    }
    return i + DecodePlain(digits + 2 * i, count - i, bytes + i);
}

// Thirty-two bytes at a time, where the processor has them.

#define ZT_AVX2 __attribute__((target("avx2")))

ZT_AVX2 __m256i Load256(const void* p) {
    return _mm256_loadu_si256(static_cast<const __m256i*>(p));
}
ZT_AVX2 void Store256(void* p, __m256i v) {
    _mm256_storeu_si256(static_cast<__m256i*>(p), v);
}

ZT_AVX2 __m256i DigitsOfBytes256(__m128i bytes, __m256i table) {
    const __m256i words = _mm256_cvtepu8_epi16(bytes);
    const __m256i low = _mm256_slli_epi16(_mm256_and_si256(words, _mm256_set1_epi16(0xF)), 8);
    return _mm256_shuffle_epi8(table, _mm256_or_si256(_mm256_srli_epi16(words, 4), low));
}

ZT_AVX2 void EncodeAvx2(const std::uint8_t* bytes, std::size_t count, char* digits) {
    const __m256i table = _mm256_broadcastsi128_si256(Load128(kDigits));
    std::size_t i = 0;
    for (; i + 32 <= count; i += 32) {
        Store256(digits + 2 * i, DigitsOfBytes256(Load128(bytes + i), table));
        Store256(digits + 2 * i + 32, DigitsOfBytes256(Load128(bytes + i + 16), table));
    }
    EncodeSse2(bytes + i, count - i, digits + 2 * i);
}

ZT_AVX2 __m256i BytesOfDigits256(__m256i digits, __m256i& valid) {
    const __m256i decimal = _mm256_sub_epi8(digits, _mm256_set1_epi8('0'));
    const __m256i isDecimal =
        _mm256_cmpeq_epi8(_mm256_min_epu8(decimal, _mm256_set1_epi8(9)), decimal);
    const __m256i letter =
        _mm256_sub_epi8(_mm256_or_si256(digits, _mm256_set1_epi8(0x20)), _mm256_set1_epi8('a'));
    const __m256i isLetter =
        _mm256_cmpeq_epi8(_mm256_min_epu8(letter, _mm256_set1_epi8(5)), letter);
    valid = _mm256_and_si256(valid, _mm256_or_si256(isDecimal, isLetter));

    const __m256i fromLetter = _mm256_add_epi8(letter, _mm256_set1_epi8(10));
    const __m256i nibbles = _mm256_blendv_epi8(fromLetter, decimal, isDecimal);
    return _mm256_maddubs_epi16(nibbles, _mm256_set1_epi16(0x0110));
}

ZT_AVX2 std::size_t DecodeAvx2(const char* digits, std::size_t count, std::uint8_t* bytes) {
    std::size_t i = 0;
    for (; i + 32 <= count; i += 32) {
        __m256i valid = _mm256_set1_epi8(-1);
        const __m256i first = BytesOfDigits256(Load256(digits + 2 * i), valid);
        const __m256i second = BytesOfDigits256(Load256(digits + 2 * i + 32), valid);
        if (_mm256_movemask_epi8(valid) != -1) break;
        const __m256i packed = _mm256_packus_epi16(first, second);
        Store256(bytes + i, _mm256_permute4x64_epi64(packed, _MM_SHUFFLE(3, 1, 2, 0)));
    }
    return i + DecodeSse2(digits + 2 * i, count - i, bytes + i);
}

constexpr Kernel kKernels[] = {
    {"plain", EncodePlain, DecodePlain},
    {"sse2", EncodeSse2, DecodeSse2},
    {"avx2", EncodeAvx2, DecodeAvx2},
};

}  // namespace

std::span<const Kernel> Kernels() {
    static const std::size_t count = [] {
        __builtin_cpu_init();
        return __builtin_cpu_supports("avx2") ? std::size(kKernels) : std::size(kKernels) - 1;
    }();
    return std::span(kKernels).first(count);
}

}  // namespace ZT::hex
