// Memory seen as numbered bits.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/object/CMemoryException.h>
#include <tests/FailingNew.h>
#include <tests/NoMemory.h>
#include <tests/Raises.h>
#include <zt/containers/Bits_test.hpp>
#include <zt/frame/VirtualTable_test.hpp>

#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <vector>

namespace ZT {
namespace {

using testing::ElementsAre;

// The block of an array that has come to own it.
struct Owned {
    ~Owned() { delete[] array.GetByte(0); }
    HXBitArray array;
};

// The layout.

TEST(HXBitArray, FieldsStandInOrderBehindTheTable) {
    EXPECT_EQ(offsetof(HXBitArray, m_pBits), 8u);
    EXPECT_EQ(offsetof(HXBitArray, m_nBits), 16u);
    EXPECT_EQ(sizeof(HXBitArray), 24u);
    EXPECT_TRUE((std::is_same_v<decltype(HXBitArray::m_pBits), unsigned char*>));
    EXPECT_TRUE((std::is_same_v<decltype(HXBitArray::m_nBits), std::int32_t>));
}

struct Counted : HXBitArray {
    explicit Counted(int* ended) : m_ended(ended) {}
    ~Counted() override { ++*m_ended; }
    int* m_ended;
};

TEST(HXBitArray, DestructorIsTheFirstVirtualOperation) {
    int ended = 0;
    alignas(Counted) std::byte memory[sizeof(Counted)];
    CallSlot<void>(new (memory) Counted(&ended), 0);
    EXPECT_EQ(ended, 1);
}

// Making and naming.

TEST(HXBitArray, BeginsWithoutBufferAndBits) {
    const HXBitArray array;
    EXPECT_EQ(array.m_pBits, nullptr);
    EXPECT_EQ(array.m_nBits, 0);
}

TEST(HXBitArray, AnAddressAloneStandsFor32Bits) {
    unsigned char bytes[4] = {};
    const HXBitArray array(bytes);
    EXPECT_EQ(array.m_pBits, bytes);
    EXPECT_EQ(array.m_nBits, 32);
}

TEST(HXBitArray, AWordStandsForIts32Bits) {
    ulong word = 0;
    HXBitArray array(word);
    EXPECT_EQ(array.m_nBits, 32);
    array.Set(31, true);
    array.Set(8, true);
    EXPECT_EQ(word, 0x80000100u);
}

TEST(HXBitArray, AViewHasTheBitsItIsGiven) {
    unsigned char bytes[2] = {0x12, 0x34};
    const HXBitArray array(bytes, 13);
    EXPECT_EQ(array.m_pBits, bytes);
    EXPECT_EQ(array.m_nBits, 13);
    EXPECT_THAT(bytes, ElementsAre(0x12, 0x34));
}

TEST(HXBitArray, AViewCanBeginWithAllBytesSetOrClear) {
    unsigned char bytes[3] = {0x12, 0x34, 0x56};
    HXBitArray set(bytes, 9, true);
    EXPECT_THAT(bytes, ElementsAre(0xFF, 0xFF, 0x56));
    HXBitArray clear(bytes, 8, false);
    EXPECT_THAT(bytes, ElementsAre(0, 0xFF, 0x56));
    const HXBitArray none(nullptr, 9, true);
    EXPECT_EQ(none.m_pBits, nullptr);
    EXPECT_EQ(none.m_nBits, 9);
}

TEST(HXBitArray, ACopySharesTheBytes) {
    Bits bits({0, 0});
    HXBitArray assigned;
    assigned = bits.array;
    HXBitArray copy(bits.array);
    assigned.Set(3, true);
    copy.Set(9, true);
    EXPECT_THAT(bits.bytes, ElementsAre(0x08, 0x02));
    EXPECT_EQ(assigned.m_nBits, 16);
    EXPECT_EQ(copy.m_nBits, 16);
}

TEST(HXBitArray, SetDataNamesOtherBytesAndLeavesTheOld) {
    unsigned char first[2] = {1, 2};
    unsigned char second[2] = {3, 4};
    HXBitArray array(first, 16);
    array.SetData(second, 11);
    EXPECT_EQ(array.m_pBits, second);
    EXPECT_EQ(array.m_nBits, 11);
    EXPECT_THAT(first, ElementsAre(1, 2));
    EXPECT_THAT(second, ElementsAre(3, 4));
}

TEST(HXBitArray, DestructorFreesNothing) {
    const std::unique_ptr<unsigned char[]> bytes(new unsigned char[2]{5, 6});
    { const HXBitArray array(bytes.get(), 16); }
    EXPECT_EQ(bytes[1], 6);
}

// Sizes and copies.

TEST(HXBitArray, ByteCountIsRoundedUp) {
    const struct {
        int bits, bytes;
    } rows[] = {{0, 0},  {1, 1},  {7, 1},  {8, 1},           {9, 2},
                {16, 2}, {17, 3}, {-5, 0}, {-2147483647, 0}, {2147483647, 268435456}};
    for (const auto& row : rows) {
        EXPECT_EQ(HXBitArray::GetByteCount(row.bits), row.bytes) << row.bits;
        EXPECT_EQ(HXBitArray(nullptr, row.bits).GetByteCount(), row.bytes) << row.bits;
    }
}

TEST(HXBitArray, SetSizeWithinTheBytesKeepsTheBuffer) {
    Bits bits({0x12, 0x34, 0x56});
    bits.array.SetSize(9);
    EXPECT_EQ(bits.array.m_pBits, bits.bytes.data());
    EXPECT_EQ(bits.array.m_nBits, 9);
    bits.array.SetSize(16);
    EXPECT_EQ(bits.array.m_pBits, bits.bytes.data());
    EXPECT_EQ(bits.array.m_nBits, 16);
    EXPECT_THAT(bits.bytes, ElementsAre(0x12, 0x34, 0x56));
    bits.array.SetSize(-3);
    EXPECT_EQ(bits.array.m_pBits, bits.bytes.data());
    EXPECT_EQ(bits.array.m_nBits, -3);
}

// A sanitizer sees the old block leak if it is not freed.
TEST(HXBitArray, SetSizeToMoreBytesReplacesTheBuffer) {
    Owned owned;
    owned.array.SetSize(8);
    unsigned char* const first = owned.array.m_pBits;
    ASSERT_NE(first, nullptr);
    owned.array.SetAll(true);
    owned.array.SetSize(8000);
    EXPECT_NE(owned.array.m_pBits, nullptr);
    EXPECT_EQ(owned.array.m_nBits, 8000);
    owned.array.SetAll(true);
    EXPECT_EQ(owned.array.m_pBits[999], 0xFF);
    // Shrinking forgets what the block could hold.
    owned.array.SetSize(8);
    owned.array.SetSize(16);
    owned.array.SetAll(false);
    EXPECT_TRUE(owned.array.IsClear());
}

TEST(HXBitArray, CopyOfAnArrayHasBytesOfItsOwn) {
    const Bits source({0x12, 0x34});
    Owned owned;
    owned.array.Copy(source.array);
    EXPECT_NE(owned.array.m_pBits, source.array.m_pBits);
    EXPECT_TRUE(owned.array == source.array);
    owned.array.Set(0, true);
    EXPECT_THAT(source.bytes, ElementsAre(0x12, 0x34));
}

TEST(HXBitArray, CopyOfAShorterArrayStaysInTheBuffer) {
    Bits source({0x12, 0x34});
    source.array.m_nBits = 9;
    Bits target({0xAA, 0xBB, 0xCC});
    target.array.Copy(source.array);
    EXPECT_EQ(target.array.m_pBits, target.bytes.data());
    EXPECT_EQ(target.array.m_nBits, 9);
    EXPECT_THAT(target.bytes, ElementsAre(0x12, 0x34, 0xCC));
}

TEST(HXBitArray, CopyOfAnArrayWithoutBufferDoesNothing) {
    Bits target({0xAA});
    target.array.Copy(HXBitArray(nullptr, 400));
    EXPECT_EQ(target.array.m_nBits, 8);
    EXPECT_THAT(target.bytes, ElementsAre(0xAA));
}

TEST(HXBitArray, CopyOntoItselfChangesNothing) {
    Bits bits({0x12, 0x34});
    bits.array.Copy(bits.array);
    EXPECT_EQ(bits.array.m_nBits, 16);
    EXPECT_THAT(bits.bytes, ElementsAre(0x12, 0x34));
}

TEST(HXBitArray, CopyOfALongerViewOfTheSameBlockTakesItsBytesFirst) {
    auto* const block = new unsigned char[2]{1, 2};
    const HXBitArray longer(block, 16);
    Owned owned;
    owned.array.SetData(block, 8);
    owned.array.Copy(longer);
    EXPECT_EQ(owned.array.m_nBits, 16);
    EXPECT_EQ(owned.array.GetHexString(), "0102");
    EXPECT_NE(owned.array.m_pBits, block);
}

TEST(HXBitArray, WithoutMemoryForMoreBytesTheArrayStaysAsItWas) {
    using testing_support::Raises;
    Bits big(std::vector<unsigned char>(10000, 0xFF));
    Owned owned;
    owned.array.SetSize(8);
    owned.array.SetBits(0xA5, true);
    owned.array.SetBits(0x5A, false);
    unsigned char* const block = owned.array.m_pBits;
    HXBitArray none(nullptr, 80000);
    const testing_support::NoMemory limit(1000);
    EXPECT_TRUE(Raises<CMemoryException>([&] { owned.array.SetSize(80000); }));
    EXPECT_TRUE(Raises<CMemoryException>([&] { owned.array.Copy(big.array); }));
    EXPECT_EQ(owned.array.m_pBits, block);
    EXPECT_EQ(owned.array.m_nBits, 8);
    EXPECT_EQ(owned.array.GetHexString(), "A5");
    EXPECT_TRUE(Raises<CMemoryException>([&] { none.Copy(big.bytes.data()); }));
    EXPECT_EQ(none.m_pBits, nullptr);
    EXPECT_EQ(none.m_nBits, 80000);
}

TEST(HXBitArray, CopyOfBytesTakesAsManyAsTheArrayHas) {
    const unsigned char from[] = {1, 2, 3};
    Bits target({7, 8, 9});
    target.array.m_nBits = 9;
    target.array.Copy(from);
    EXPECT_THAT(target.bytes, ElementsAre(1, 2, 9));
    EXPECT_EQ(target.array.m_nBits, 9);
    target.array.Copy(static_cast<const unsigned char*>(nullptr));
    EXPECT_THAT(target.bytes, ElementsAre(1, 2, 9));
}

TEST(HXBitArray, CopyOfBytesTakesABlockWhereThereIsNone) {
    const unsigned char from[] = {1, 2, 3};
    Owned owned;
    owned.array.m_nBits = 17;
    owned.array.Copy(from);
    ASSERT_NE(owned.array.m_pBits, nullptr);
    EXPECT_NE(owned.array.m_pBits, from);
    EXPECT_EQ(owned.array.m_nBits, 17);
    EXPECT_EQ(owned.array.GetHexString(), "010203");
}

TEST(HXBitArray, CopyToWritesTheBytes) {
    Bits bits({1, 2, 3});
    bits.array.m_nBits = 15;
    unsigned char to[] = {7, 8, 9};
    bits.array.CopyTo(to);
    EXPECT_THAT(to, ElementsAre(1, 2, 9));
    bits.array.CopyTo(nullptr);
    EXPECT_THAT(bits.bytes, ElementsAre(1, 2, 3));
    HXBitArray().CopyTo(to);
    EXPECT_THAT(to, ElementsAre(1, 2, 9));
}

// Single bits.

TEST(HXBitArray, BitZeroIsTheLowestOfTheFirstByte) {
    Bits bits({0, 0});
    bits.array.Set(9, true);
    EXPECT_EQ(bits.bytes[1], 0x02);
    EXPECT_EQ(bits.array.GetHexString(), "0002");
    bits.array.Set(0, true);
    bits.array.Set(7, true);
    EXPECT_THAT(bits.bytes, ElementsAre(0x81, 0x02));
    EXPECT_TRUE(bits.array.Get(0));
    EXPECT_FALSE(bits.array.Get(1));
    EXPECT_TRUE(bits.array.Get(7));
    EXPECT_FALSE(bits.array.Get(8));
    EXPECT_TRUE(bits.array.Get(9));
}

TEST(HXBitArray, SetAndClearLeaveTheOtherBits) {
    Bits bits({0xFF, 0x00});
    bits.array.Set(2, false);
    bits.array.Set(3, true);
    bits.array.Clear(4);
    bits.array.Set(8, true);
    bits.array.Clear(9);
    EXPECT_THAT(bits.bytes, ElementsAre(0xEB, 0x01));
}

TEST(HXBitArray, WrittenBitsAreReadAsWrittenUpToTheLastExactIndex) {
    Bits bits(std::vector<unsigned char>(kLastExact / 8 + 3));
    bits.array.Set(kLastExact, true);
    bits.array.Set(kLastExact - 1, true);
    EXPECT_TRUE(bits.array.Get(kLastExact));
    EXPECT_TRUE(bits.array.Get(kLastExact - 1));
    EXPECT_EQ(bits.bytes[kLastExact / 8 - 1], 0x80);
    EXPECT_EQ(bits.bytes[kLastExact / 8], 0x01);
    EXPECT_EQ(bits.array.GetByte(kLastExact), &bits.bytes[kLastExact / 8]);
}

TEST(HXBitArray, AboveItAWrittenBitCanLandInTheNextByte) {
    constexpr int byte = kRounded / 8;
    Bits bits(std::vector<unsigned char>(byte + 2));
    bits.array.Set(kRounded, true);
    EXPECT_FALSE(bits.array.Get(kRounded));
    EXPECT_EQ(bits.bytes[byte], 0x00);
    EXPECT_EQ(bits.bytes[byte + 1], 0x80);
    EXPECT_EQ(bits.array.GetByte(kRounded), &bits.bytes[byte + 1]);
    bits.bytes[byte] = bits.bytes[byte + 1] = 0xFF;
    bits.array.Clear(kRounded);
    EXPECT_EQ(bits.bytes[byte], 0xFF);
    EXPECT_EQ(bits.bytes[byte + 1], 0x7F);
    EXPECT_TRUE(bits.array.Get(kRounded));
    bits.bytes[byte] = 0x7F;
    bits.bytes[byte + 1] = 0xFF;
    EXPECT_EQ(bits.array.FindFirstBit(true), 8 * byte);
    EXPECT_FALSE(bits.array.Get(kRounded));
    int place = kRounded;
    EXPECT_EQ(bits.array.GetByteValFactor(place), 0x7F);
    EXPECT_EQ(place, 7);
    EXPECT_EQ(bits.array.GetVal(kRounded, kRounded), 0u);
}

// All bits.

TEST(HXBitArray, SetAllAndClearAllWriteWholeBytes) {
    Bits bits({0x12, 0x34, 0x56});
    bits.array.m_nBits = 9;
    bits.array.SetAll(true);
    EXPECT_THAT(bits.bytes, ElementsAre(0xFF, 0xFF, 0x56));
    bits.array.SetAll(false);
    EXPECT_THAT(bits.bytes, ElementsAre(0, 0, 0x56));
    bits.array.SetAll(true);
    bits.array.ClearAll();
    EXPECT_THAT(bits.bytes, ElementsAre(0, 0, 0x56));
}

TEST(HXBitArray, ANullBufferIsLeftAlone) {
    HXBitArray none(nullptr, 40);
    none.SetAll(true);
    none.ClearAll();
    EXPECT_EQ(none.m_pBits, nullptr);
    EXPECT_EQ(none.GetHexString(), "");
}

TEST(HXBitArray, IsClearLooksAtEveryBitOfEveryByte) {
    for (int size = 1; size <= 19; ++size) {
        Bits bits(std::vector<unsigned char>(static_cast<std::size_t>(size)));
        bits.array.m_nBits = 8 * size - 7;
        EXPECT_TRUE(bits.array.IsClear()) << size;
        for (int i = 0; i < 8 * size; ++i) {
            bits.array.Set(i, true);
            EXPECT_FALSE(bits.array.IsClear()) << i << " of " << size << " bytes";
            bits.array.Clear(i);
        }
    }
    EXPECT_TRUE(HXBitArray().IsClear());
}

TEST(HXBitArray, IsClearDoesNotLookBeyondTheBytes) {
    Bits bits({0, 0, 1});
    bits.array.m_nBits = 16;
    EXPECT_TRUE(bits.array.IsClear());
    bits.array.m_nBits = 17;
    EXPECT_FALSE(bits.array.IsClear());
}

TEST(HXBitArray, FindFirstBitGivesTheLowestOfEitherKind) {
    for (const bool wanted : {false, true}) {
        for (int count = 1; count <= 150; ++count) {
            Bits bits(std::vector<unsigned char>(19, wanted ? 0x00 : 0xFF));
            bits.array.m_nBits = count;
            EXPECT_EQ(bits.array.FindFirstBit(wanted), -1) << count;
            EXPECT_EQ(bits.array.FindFirstBit(!wanted), 0) << count;
            bits.array.Set(count, wanted);
            EXPECT_EQ(bits.array.FindFirstBit(wanted), -1) << "stray bit " << count;
            bits.array.Set(count - 1, wanted);
            EXPECT_EQ(bits.array.FindFirstBit(wanted), count - 1);
            bits.array.Set(count / 2, wanted);
            EXPECT_EQ(bits.array.FindFirstBit(wanted), count / 2);
        }
    }
}

TEST(HXBitArray, FindFirstBitFindsNothingWithoutBits) {
    EXPECT_EQ(HXBitArray().FindFirstBit(true), -1);
    EXPECT_EQ(HXBitArray().FindFirstBit(false), -1);
    unsigned char byte = 0xFF;
    EXPECT_EQ(HXBitArray(&byte, -4).FindFirstBit(true), -1);
}

TEST(HXBitArray, EqualArraysHaveEqualCountsAndBytes) {
    Bits a({0x12, 0x34});
    Bits b({0x12, 0x34});
    EXPECT_TRUE(a.array == b.array);
    EXPECT_FALSE(a.array != b.array);
    b.array.m_nBits = 15;
    EXPECT_FALSE(a.array == b.array);
    EXPECT_TRUE(a.array != b.array);
    b.array.m_nBits = 16;
    b.bytes[1] = 0x35;
    EXPECT_FALSE(a.array == b.array);
    EXPECT_TRUE(a.array != b.array);
    EXPECT_TRUE(HXBitArray() == HXBitArray());
}

TEST(HXBitArray, StrayBitsAreADifference) {
    Bits a({0x12, 0x00});
    Bits b({0x12, 0x80});
    a.array.m_nBits = b.array.m_nBits = 15;
    EXPECT_FALSE(a.array == b.array);
    a.array.m_nBits = b.array.m_nBits = 8;
    EXPECT_TRUE(a.array == b.array);
}

// Bytes.

TEST(HXBitArray, GetByteIsTheAddressOfTheByteOfABit) {
    Bits bits({1, 2, 3});
    EXPECT_EQ(bits.array.GetByte(0), &bits.bytes[0]);
    EXPECT_EQ(bits.array.GetByte(7), &bits.bytes[0]);
    EXPECT_EQ(bits.array.GetByte(8), &bits.bytes[1]);
    EXPECT_EQ(bits.array.GetByte(23), &bits.bytes[2]);
}

TEST(HXBitArray, GetByteValFactorSplitsAnIndex) {
    const Bits bits({1, 2, 3});
    int i = 21;
    EXPECT_EQ(bits.array.GetByteValFactor(i), 3);
    EXPECT_EQ(i, 5);
    EXPECT_EQ(bits.array.GetByteValFactor(i), 1);
    EXPECT_EQ(i, 5);
}

// Text.

TEST(HXBitArray, HexStringHasTheFirstByteFirst) {
    Bits bits({0x0A, 0xFF, 0x12});
    EXPECT_EQ(bits.array.GetHexString(), "0AFF12");
    bits.array.m_nBits = 9;
    EXPECT_EQ(bits.array.GetHexString(), "0AFF");
    bits.array.m_nBits = 0;
    EXPECT_EQ(bits.array.GetHexString(), "");
}

TEST(HXBitArray, StringHasBitZeroAtTheRightEnd) {
    Bits bits({0x01, 0x02});
    bits.array.m_nBits = 4;
    EXPECT_EQ(bits.array.GetString(), "0001");
    bits.array.m_nBits = 11;
    EXPECT_EQ(bits.array.GetString(), "01000000001");
    bits.array.m_nBits = -1;
    EXPECT_EQ(bits.array.GetString(), "");
    EXPECT_EQ(HXBitArray().GetString(), "");
}

}  // namespace
}  // namespace ZT
