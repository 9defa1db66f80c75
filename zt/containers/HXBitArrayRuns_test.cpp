// Runs of numbered bits, flags in a word, and laws of both.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <tests/Evenly.h>
#include <zt/containers/Bits_test.hpp>

#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <string>
#include <vector>

namespace ZT {
namespace {

using testing::Each;
using testing::ElementsAre;

// Runs of bits.

TEST(HXBitArray, GetBitsValueShiftsTheRunDown) {
    const Bits bits({0x1C, 0x81, 0xF0});
    EXPECT_EQ(bits.array.GetBitsValue(2, 4), 7);
    EXPECT_EQ(bits.array.GetBitsValue(2, 2), 1);
    EXPECT_EQ(bits.array.GetBitsValue(3, 8), 0x23);
    EXPECT_EQ(bits.array.GetBitsValue(16, 23), 0xF0);
    EXPECT_EQ(bits.array.GetBitsValue(5, 4), 0);
    EXPECT_EQ(bits.array.GetBitsValue(23, 0), 0);
}

TEST(HXBitArray, GetBitsValueCountsTheFirstEightBitsOfTheRun) {
    const Bits bits({0x10, 0xFF, 0xFF});
    EXPECT_EQ(bits.array.GetBitsValue(0, 23), 0x10);
    EXPECT_EQ(bits.array.GetBitsValue(4, 23), 0xF1);
}

TEST(HXBitArray, GetBitsValueReachesBit254) {
    Bits bits(std::vector<unsigned char>(32));
    bits.array.Set(254, true);
    EXPECT_EQ(bits.array.GetBitsValue(250, 254), 0x10);
}

void WaitForBit255(const Bits& bits) {
    alarm(1);
    volatile int value = bits.array.GetBitsValue(0, 255);
    static_cast<void>(value);
}

TEST(HXBitArrayDeathTest, GetBitsValueNeverPassesBit255) {
    const Bits bits(std::vector<unsigned char>(32));
    EXPECT_EXIT(WaitForBit255(bits), testing::KilledBySignal(SIGALRM), "");
}

TEST(HXBitArray, GetValKeepsEachBitAtItsPlace) {
    const Bits bits({0x1C});
    EXPECT_EQ(bits.array.GetVal(2, 4), 0x1Cu);
    EXPECT_EQ(bits.array.GetVal(3, 3), 0x08u);
    EXPECT_EQ(bits.array.GetVal(5, 7), 0u);
    EXPECT_EQ(bits.array.GetVal(4, 3), 0u);
    ulong word = 0x80000001;
    EXPECT_EQ(HXBitArray(word).GetVal(0, 31), 0x80000001u);
}

TEST(HXBitArray, GetValAddsBitsAbove31ToTheLowPlaces) {
    const Bits bits({0x01, 0, 0, 0x80, 0x03, 0, 0, 0x80});
    EXPECT_EQ(bits.array.GetVal(32, 33), 3u);
    EXPECT_EQ(bits.array.GetVal(0, 32), 0x80000002u);
    EXPECT_EQ(bits.array.GetVal(0, 33), 0x80000004u);
    // The two highest bits add up to 2^32, which is lost.
    EXPECT_EQ(bits.array.GetVal(0, 63), 4u);
}

TEST(HXBitArray, SetBitsWritesTheBitsOfTheMask) {
    Bits bits({0xF0, 0xFF, 0x00, 0x00, 0x55});
    bits.array.SetBits(0x80000105, true);
    EXPECT_THAT(bits.bytes, ElementsAre(0xF5, 0xFF, 0x00, 0x80, 0x55));
    bits.array.SetBits(0x80000118, false);
    EXPECT_THAT(bits.bytes, ElementsAre(0xE5, 0xFE, 0x00, 0x00, 0x55));
    bits.array.SetBits(0, true);
    EXPECT_THAT(bits.bytes, ElementsAre(0xE5, 0xFE, 0x00, 0x00, 0x55));
}

TEST(HXBitArray, SetBitsValueWritesTheRunAlone) {
    Bits bits({0xFF, 0x00, 0xFF});
    bits.array.SetBitsValue(4, 11, 0xFFA5);
    EXPECT_THAT(bits.bytes, ElementsAre(0x5F, 0x0A, 0xFF));
    bits.array.SetBitsValue(8, 23, 0xBEEF);
    EXPECT_THAT(bits.bytes, ElementsAre(0x5F, 0xEF, 0xBE));
    bits.array.SetBitsValue(5, 4, 0xFFFF);
    EXPECT_THAT(bits.bytes, ElementsAre(0x5F, 0xEF, 0xBE));
}

TEST(HXBitArray, SetBitsValueHasZerosBehindSixteenBits) {
    Bits bits(std::vector<unsigned char>(6, 0xFF));
    bits.array.SetBitsValue(0, 46, 0x8001);
    EXPECT_THAT(bits.bytes, ElementsAre(0x01, 0x80, 0x00, 0x00, 0x00, 0x80));
}

TEST(HXBitArray, SetBitsValueEndsAtBit255) {
    Bits bits(std::vector<unsigned char>(32));
    bits.array.SetBitsValue(248, 255, 0xA5);
    EXPECT_EQ(bits.bytes[31], 0xA5);
    bits.bytes[31] = 0;
    EXPECT_TRUE(bits.array.IsClear());
    bits.array.SetBitsValue(255, 255, 1);
    EXPECT_EQ(bits.bytes[31], 0x80);
}

// Flags in a word.

TEST(HXBitArray, FlagAndHoleBytesAreEachOthersNegation) {
    const unsigned char flags[] = {0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80};
    for (int i = 0; i < 40; ++i) {
        EXPECT_EQ(HXBitArray::ConstructFlagByte(i), flags[i % 8]);
        EXPECT_EQ(HXBitArray::ConstructHoleByte(i), 0xFF - flags[i % 8]);
    }
}

TEST(HXBitArray, FlagsOfAWordAreItsBits) {
    ulong word = 0x80000100;
    uint64 wide = 0x8000000000000100;
    EXPECT_TRUE(HXBitArray::GetFlag(31, word));
    EXPECT_TRUE(HXBitArray::GetFlag(8, word));
    EXPECT_FALSE(HXBitArray::GetFlag(0, word));
    EXPECT_TRUE(HXBitArray::GetFlag2(63, wide));
    EXPECT_TRUE(HXBitArray::GetFlag2(8, wide));
    EXPECT_FALSE(HXBitArray::GetFlag2(31, wide));
    HXBitArray::SetFlag(31, false, word);
    HXBitArray::SetFlag(9, true, word);
    HXBitArray::SetFlag(8, true, word);
    EXPECT_EQ(word, 0x00000300u);
    HXBitArray::SetFlag2(63, false, wide);
    HXBitArray::SetFlag2(40, true, wide);
    EXPECT_EQ(wide, 0x0000010000000100u);
}

TEST(HXBitArray, BothFormsOfFlagsReachIntoTheMemoryBehindTheWord) {
    ulong words[4] = {};
    HXBitArray::SetFlag(33, true, words[0]);
    EXPECT_THAT(words, ElementsAre(0u, 2u, 0u, 0u));
    EXPECT_TRUE(HXBitArray::GetFlag(33, words[0]));
    uint64 wides[2] = {};
    HXBitArray::SetFlag2(66, true, wides[0]);
    EXPECT_THAT(wides, ElementsAre(0u, 4u));
    EXPECT_TRUE(HXBitArray::GetFlag2(66, wides[0]));
}

TEST(HXBitArray, FlagsAreWrittenInSinglePrecisionToo) {
    constexpr int word = kRounded / 32;
    std::vector<ulong> words(word + 2);
    HXBitArray::SetFlag(kRounded, true, words[0]);
    EXPECT_EQ(words[word], 0x00008000u);
    EXPECT_FALSE(HXBitArray::GetFlag(kRounded, words[0]));
    words[word] = 0x00000080u;
    EXPECT_TRUE(HXBitArray::GetFlag(kRounded, words[0]));
    std::vector<uint64> wides(word + 2);
    HXBitArray::SetFlag2(kRounded, true, wides[0]);
    EXPECT_FALSE(HXBitArray::GetFlag2(kRounded, wides[0]));
    EXPECT_EQ(wides[word / 2], 0x00008000u);
}

TEST(HXBitArray, GetFlagByteSeesNothingBeyondTheByte) {
    const unsigned char byte = 0x82;
    for (int i = 0; i <= 255; ++i) {
        const bool set = i % 32 == 1 || i % 32 == 7;
        EXPECT_EQ(HXBitArray::GetFlagByte(static_cast<unsigned char>(i), byte), set) << i;
    }
}

TEST(HXBitArray, SetFlagByteWritesTheLowBitsBothWays) {
    unsigned char byte = 0x0F;
    HXBitArray::SetFlagByte(7, true, byte);
    HXBitArray::SetFlagByte(0, false, byte);
    HXBitArray::SetFlagByte(1, true, byte);
    EXPECT_EQ(byte, 0x8E);
}

TEST(HXBitArray, SetFlagByteSetsInTheByteItself) {
    unsigned char bytes[8] = {};
    for (unsigned char i = 8; i < 32; ++i) HXBitArray::SetFlagByte(i, true, bytes[0]);
    EXPECT_THAT(bytes, Each(0));
    HXBitArray::SetFlagByte(35, true, bytes[0]);
    EXPECT_THAT(bytes, ElementsAre(0x08, 0, 0, 0, 0, 0, 0, 0));
}

TEST(HXBitArray, SetFlagByteClearsInTheBytesBehind) {
    unsigned char bytes[8] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    HXBitArray::SetFlagByte(9, false, bytes[0]);
    HXBitArray::SetFlagByte(35, false, bytes[0]);
    EXPECT_THAT(bytes, ElementsAre(0xFF, 0xFD, 0xFF, 0xFF, 0xF7, 0xFF, 0xFF, 0xFF));
}

TEST(HXBitArray, SetFlagFromValueTakesTheLowestBitOfTheMask) {
    ulong word = 0;
    HXBitArray::SetFlagFromValue(0x0C, true, word);
    EXPECT_EQ(word, 0x04u);
    word = 0xFFFFFFFF;
    HXBitArray::SetFlagFromValue(0x0C, false, word);
    EXPECT_EQ(word, 0xFFFFFFFBu);
    HXBitArray::SetFlagFromValue(0x80000000, false, word);
    EXPECT_EQ(word, 0x7FFFFFFBu);
    HXBitArray::SetFlagFromValue(0, true, word);
    HXBitArray::SetFlagFromValue(0, false, word);
    EXPECT_EQ(word, 0x7FFFFFFBu);
}

// Laws.

TEST(HXBitArray, TheTextTheFirstBitAndEachBitTellTheSame) {
    EXPECT_TRUE(rc::check([](const std::vector<unsigned char>& bytes, unsigned char less) {
        Bits bits(bytes);
        if (bits.array.m_nBits > 0) bits.array.m_nBits -= less % 8;
        const std::string text(bits.array.GetString().View());
        RC_ASSERT(text.size() == static_cast<std::size_t>(bits.array.m_nBits));
        const std::string backward(text.rbegin(), text.rend());
        for (const bool b : {false, true}) {
            const std::size_t place = backward.find(b ? '1' : '0');
            const int expected = place == std::string::npos ? -1 : static_cast<int>(place);
            RC_ASSERT(bits.array.FindFirstBit(b) == expected);
        }
        for (int i = 0; i < bits.array.m_nBits; ++i) {
            const bool set = backward[static_cast<std::size_t>(i)] == '1';
            RC_ASSERT(bits.array.Get(i) == set);
            RC_ASSERT(bits.array.GetVal(i, i) == (set ? ulong{1} << (i % 32) : 0));
        }
    }));
}

TEST(HXBitArray, AWrittenRunIsReadBackAndAloneChanged) {
    EXPECT_TRUE(rc::check([](unsigned char value) {
        Bits bits(std::vector<unsigned char>(32, 0xA5));
        const int first = *rc::gen::inRange(0, 240);
        const int last = testing_support::Evenly(first, first + 8);
        const auto low = static_cast<unsigned char>(first);
        const auto high = static_cast<unsigned char>(last);
        bits.array.SetBitsValue(low, high, value);
        RC_ASSERT(bits.array.GetBitsValue(low, high) == (value & (0xFF >> (7 - (last - first)))));
        for (int i = 0; i < 256; ++i) {
            if (i < first || i > last) RC_ASSERT(bits.array.Get(i) == ((0xA5 >> (i % 8)) & 1));
        }
    }));
}

}  // namespace
}  // namespace ZT
