#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <sys/mman.h>
#include <unistd.h>

#include <platform/object/CMemoryException.h>
#include <tests/Raises.h>
#include <zt/containers/HexText.h>
#include <zt/containers/detail/HexKernels.h>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace ZT {
namespace {

using Bytes = std::vector<std::uint8_t>;
using testing::Each;
using testing::ElementsAre;

constexpr std::uint8_t kUntouched = 0xA5;

std::string TextOf(const Bytes& bytes) {
    const CString text = hxBinaryToString(bytes.data(), static_cast<ulong>(bytes.size()));
    return std::string(text.View());
}

// What decoding leaves in a buffer that held a pattern before.
struct Decoded {
    bool done;
    Bytes out;
};

Decoded Decode(const char* text, ulong n) {
    Decoded result{false, Bytes(n, kUntouched)};
    result.done = hxStringToBinary(text, n, result.out.data());
    return result;
}

// Bytes of every length round the blocks of all kernels.
rc::Gen<Bytes> SomeBytes() {
    return rc::gen::mapcat(rc::gen::inRange<std::size_t>(0, 200), [](std::size_t size) {
        return rc::gen::container<Bytes>(size, rc::gen::arbitrary<std::uint8_t>());
    });
}

// Memory whose last byte is followed by a page that cannot be read.
class Guarded {
public:
    explicit Guarded(const std::string& text)
        : m_page(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))),
          m_size((text.size() / m_page + 1) * m_page),
          m_memory(static_cast<char*>(mmap(nullptr, m_size + m_page, PROT_READ | PROT_WRITE,
                                           MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {
        mprotect(m_memory + m_size, m_page, PROT_NONE);
        std::copy(text.begin(), text.end(), m_memory + m_size - text.size());
        m_text = m_memory + m_size - text.size();
    }
    ~Guarded() { munmap(m_memory, m_size + m_page); }
    Guarded(const Guarded&) = delete;
    Guarded& operator=(const Guarded&) = delete;

    const char* Text() const { return m_text; }

private:
    std::size_t m_page;
    std::size_t m_size;
    char* m_memory;
    const char* m_text;
};

TEST(BinaryToString, TextTooLongForAStringRaisesAndReadsNothing) {
    const unsigned char byte = 0;
    // 2^31 and 2^33 - 2 digits, where 2^31 - 1 have room.
    for (const ulong n : {ulong{0x40000000}, ulong{0x80000000}, ulong{0xFFFFFFFF}}) {
        EXPECT_TRUE(testing_support::Raises<CMemoryException>([&] {
            static_cast<void>(hxBinaryToString(&byte, n));
        })) << n;
    }
}

TEST(BinaryToString, GivesTwoUpperCaseDigitsAByteHighHalfFirst) {
    EXPECT_EQ(TextOf({0x0A, 0xFF, 0x12, 0xB0, 0x00}), "0AFF12B000");
}

TEST(BinaryToString, NothingGivesTheEmptyText) {
    const unsigned char byte = 1;
    EXPECT_EQ(hxBinaryToString(&byte, 0), "");
    EXPECT_EQ(hxBinaryToString(nullptr, 0), "");
    EXPECT_EQ(hxBinaryToString(nullptr, 7), "");
}

TEST(BinaryToString, WritesEveryByteValue) {
    Bytes all(256);
    for (unsigned i = 0; i < 256; ++i) all[i] = static_cast<std::uint8_t>(i);
    const std::string text = TextOf(all);
    ASSERT_EQ(text.size(), 512u);
    for (unsigned i = 0; i < 256; ++i) {
        char expected[3];
        std::snprintf(expected, sizeof expected, "%02X", i);
        EXPECT_EQ(text.substr(2 * i, 2), expected);
    }
}

TEST(BinaryToString, RunsOverManyChunks) {
    Bytes bytes(3 * 4096 + 17);
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(i * 37);
    const Decoded back = Decode(TextOf(bytes).c_str(), static_cast<ulong>(bytes.size()));
    EXPECT_TRUE(back.done);
    EXPECT_EQ(back.out, bytes);
}

TEST(StringToBinary, TakesDigitsOfEitherCase) {
    const Decoded result = Decode("aFAf09", 3);
    EXPECT_TRUE(result.done);
    EXPECT_THAT(result.out, ElementsAre(0xAF, 0xAF, 0x09));
}

TEST(StringToBinary, NoBytesAreAlwaysThere) {
    EXPECT_TRUE(hxStringToBinary("zz", 0, nullptr));
    EXPECT_TRUE(hxStringToBinary(nullptr, 0, nullptr));
}

TEST(StringToBinary, NullTextOrRoomFails) {
    unsigned char out = kUntouched;
    EXPECT_FALSE(hxStringToBinary(nullptr, 1, &out));
    EXPECT_EQ(out, kUntouched);
    EXPECT_FALSE(hxStringToBinary("00", 1, nullptr));
}

TEST(StringToBinary, DoesNotLookBehindThePairsThatItWasAskedFor) {
    const Decoded result = Decode("01zz", 1);
    EXPECT_TRUE(result.done);
    EXPECT_THAT(result.out, ElementsAre(0x01));
}

TEST(StringToBinary, EveryOtherCharacterIsNoDigit) {
    for (int c = 0; c < 256; ++c) {
        if (c < 128 && std::isxdigit(c) != 0) continue;
        for (const int place : {0, 1}) {
            std::string text = "00";
            text[static_cast<std::size_t>(place)] = static_cast<char>(c);
            const Decoded result = Decode(text.c_str(), 1);
            EXPECT_FALSE(result.done) << c << " at " << place;
            EXPECT_THAT(result.out, ElementsAre(kUntouched));
        }
    }
}

TEST(StringToBinary, BadDigitLeavesTheBytesBeforeItAndTouchesNoOthers) {
    for (const std::size_t size : {1u, 15u, 16u, 17u, 32u, 33u, 64u, 100u, 4096u, 5000u}) {
        for (const std::size_t bad : {std::size_t{0}, size / 2, size - 1}) {
            std::string text(2 * size, '7');
            text[2 * bad + 1] = 'g';
            const Decoded result = Decode(text.c_str(), static_cast<ulong>(size));
            EXPECT_FALSE(result.done);
            const auto failed = result.out.begin() + static_cast<std::ptrdiff_t>(bad);
            EXPECT_THAT(Bytes(result.out.begin(), failed), Each(0x77));
            EXPECT_THAT(Bytes(failed, result.out.end()), Each(kUntouched));
        }
    }
}

TEST(StringToBinary, ShorterTextEndsAtItsZeroAndIsNotReadPastIt) {
    for (const std::size_t digits : {0u, 1u, 2u, 31u, 32u, 33u, 64u, 127u, 8192u, 8193u}) {
        const Guarded text(std::string(digits, '1') + '\0');
        const Decoded result = Decode(text.Text(), 10000);
        EXPECT_FALSE(result.done);
        const auto end = result.out.begin() + static_cast<std::ptrdiff_t>(digits / 2);
        EXPECT_THAT(Bytes(result.out.begin(), end), Each(0x11));
        EXPECT_THAT(Bytes(end, result.out.end()), Each(kUntouched));
    }
}

TEST(StringToBinary, NothingIsReadPastTheLastDigit) {
    for (const std::size_t size : {1u, 8u, 16u, 31u, 32u, 33u, 4095u, 4096u, 4097u}) {
        const Guarded text(std::string(2 * size, 'e'));
        const Decoded result = Decode(text.Text(), static_cast<ulong>(size));
        EXPECT_TRUE(result.done);
        EXPECT_THAT(result.out, Each(0xEE));
    }
}

TEST(StringToBinary, WholeTextComesAsANewArray) {
    ulong n = 77;
    const std::unique_ptr<unsigned char[]> bytes(hxStringToBinary(CString("0aFF10"), n));
    ASSERT_EQ(n, 3u);
    EXPECT_THAT(Bytes(bytes.get(), bytes.get() + n), ElementsAre(0x0A, 0xFF, 0x10));
}

TEST(StringToBinary, EmptyTextComesAsAnEmptyArray) {
    ulong n = 77;
    const std::unique_ptr<unsigned char[]> bytes(hxStringToBinary(CString(), n));
    EXPECT_NE(bytes, nullptr);
    EXPECT_EQ(n, 0u);
}

TEST(StringToBinary, TextOfOddLengthGivesNullAndAllBitsInTheSize) {
    ulong n = 0;
    EXPECT_EQ(hxStringToBinary(CString("123"), n), nullptr);
    EXPECT_EQ(n, 0xFFFFFFFFu);
}

TEST(StringToBinary, BadDigitInAWholeTextIsNoFailureAndTheRestIsZero) {
    ulong n = 0;
    const std::unique_ptr<unsigned char[]> bytes(hxStringToBinary(CString("11x23344"), n));
    ASSERT_EQ(n, 4u);
    EXPECT_THAT(Bytes(bytes.get(), bytes.get() + n), ElementsAre(0x11, 0, 0, 0));
}

TEST(StringToBinary, UndoesBinaryToString) {
    EXPECT_TRUE(rc::check([] {
        const Bytes bytes = *SomeBytes();
        const Decoded back = Decode(TextOf(bytes).c_str(), static_cast<ulong>(bytes.size()));
        RC_ASSERT(back.done);
        RC_ASSERT(back.out == bytes);
    }));
}

TEST(IsHex, TakesUpperCaseDigitsOnly) {
    const std::string digits = "0123456789ABCDEF";
    for (int c = 1; c < 256; ++c) {
        const char character = static_cast<char>(c);
        EXPECT_EQ(hxIsHex(character), digits.find(character) != std::string::npos) << c;
    }
    EXPECT_FALSE(hxIsHex('a'));
    EXPECT_FALSE(hxIsHex('\0'));
}

TEST(HexKernels, PlainOneIsFirstAndAllDifferInName) {
    const auto kernels = hex::Kernels();
    ASSERT_GE(kernels.size(), 2u);
    EXPECT_STREQ(kernels[0].name, "plain");
    EXPECT_STREQ(kernels[1].name, "sse2");
}

TEST(HexKernels, AllEncodeAlike) {
    EXPECT_TRUE(rc::check([] {
        const Bytes bytes = *SomeBytes();
        std::string expected(2 * bytes.size() + 1, '#');
        hex::Kernels()[0].encode(bytes.data(), bytes.size(), expected.data());
        RC_ASSERT(expected.back() == '#');
        for (const hex::Kernel& kernel : hex::Kernels()) {
            std::string text(2 * bytes.size() + 1, '#');
            kernel.encode(bytes.data(), bytes.size(), text.data());
            RC_ASSERT(text == expected);
        }
    }));
}

TEST(HexKernels, AllDecodeAlikeAndStopAtTheSameBadDigit) {
    EXPECT_TRUE(rc::check([] {
        const Bytes bytes = *SomeBytes();
        std::string text = TextOf(bytes);
        for (char& c : text) {
            if (*rc::gen::arbitrary<bool>()) c = static_cast<char>(std::tolower(c));
        }
        const bool spoil = !text.empty() && *rc::gen::arbitrary<bool>();
        if (spoil)
            text[*rc::gen::inRange<std::size_t>(0, text.size())] = *rc::gen::arbitrary<char>();

        Bytes expected(bytes.size() + 1, kUntouched);
        const std::size_t count =
            hex::Kernels()[0].decode(text.data(), bytes.size(), expected.data());
        RC_ASSERT(spoil || count == bytes.size());
        for (const hex::Kernel& kernel : hex::Kernels()) {
            Bytes out(bytes.size() + 1, kUntouched);
            RC_ASSERT(kernel.decode(text.data(), bytes.size(), out.data()) == count);
            RC_ASSERT(out == expected);
        }
    }));
}

TEST(HexKernels, AllTellDigitsFromOthersAtEveryPlace) {
    constexpr std::size_t kSize = 48;
    for (const hex::Kernel& kernel : hex::Kernels()) {
        for (int c = 0; c < 256; ++c) {
            const bool digit = c < 128 && std::isxdigit(c) != 0;
            for (std::size_t place = 0; place < 2 * kSize; ++place) {
                std::string text(2 * kSize, '5');
                text[place] = static_cast<char>(c);
                Bytes out(kSize);
                const std::size_t expected = digit ? kSize : place / 2;
                ASSERT_EQ(kernel.decode(text.data(), kSize, out.data()), expected)
                    << kernel.name << ", character " << c << " at " << place;
            }
        }
    }
}

TEST(HexKernels, AllDecodeInPlace) {
    for (const hex::Kernel& kernel : hex::Kernels()) {
        Bytes bytes(77);
        for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(i * 5);
        std::string text = TextOf(bytes);
        auto* const out = reinterpret_cast<std::uint8_t*>(text.data());
        EXPECT_EQ(kernel.decode(text.data(), bytes.size(), out), bytes.size());
        EXPECT_EQ(Bytes(out, out + bytes.size()), bytes) << kernel.name;
    }
}

}  // namespace
}  // namespace ZT
