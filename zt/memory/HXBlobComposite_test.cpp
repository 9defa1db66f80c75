// Blobs joined, nested, and mixed bit by bit.

#include <gtest/gtest.h>
#include <platform/object/CMemoryException.h>
#include <tests/Raises.h>
#include <zt/containers/HXBitArray.h>
#include <zt/memory/HXBlob.h>
#include <zt/memory/Blob_test.hpp>

#include <cstddef>
#include <cstring>

namespace ZT {
namespace {

TEST(HXBlobSum, IsANewBlockOfBoth) {
    std::string a = "abc";
    std::string b = "de";
    HXBlob left = Naming(a);
    left.m_bAutoDelete = true;
    HXBlob sum = left + Naming(b);
    left.Reset();
    EXPECT_EQ(Bytes(sum), "abcde");
    EXPECT_FALSE(sum.m_bAutoDelete);
    EXPECT_EQ(a + b, "abcde");
    sum.Delete();
}

TEST(HXBlobSum, EmptyAndBlocklessOperandsHaveNoBytes) {
    std::string a = "abc";
    for (const HXBlob& none : {HXBlob(), Blockless(4), HXBlob(0u, AddressIn(a))}) {
        EXPECT_EQ(Bytes(Own(Naming(a) + none)), "abc");
        EXPECT_EQ(Bytes(Own(none + Naming(a))), "abc");
        const HXBlob sum = none + none;
        EXPECT_EQ(sum.m_nSize, 0u);
        EXPECT_EQ(sum.m_pData, nullptr);
    }
}

TEST(HXBlobAppend, PutsTheBytesBehindInANewBlock) {
    std::string b = "de";
    Own blob("abc"s);
    blob.Append(Naming(b));
    EXPECT_EQ(Bytes(blob), "abcde");
    EXPECT_EQ(&(blob += Naming(b)), &blob);
    EXPECT_EQ(Bytes(blob), "abcdede");
    EXPECT_TRUE(blob.m_bAutoDelete);
}

TEST(HXBlobAppend, ItselfDoubles) {
    Own blob("abc"s);
    blob += blob;
    EXPECT_EQ(Bytes(blob), "abcabc");
}

TEST(HXBlobAppend, NothingChangesNothing) {
    std::string a = "abc";
    HXBlob blob = Naming(a);
    for (const HXBlob& none : {HXBlob(), Blockless(4), HXBlob(0u, AddressIn(a))}) {
        blob.Append(none);
        EXPECT_EQ(blob.m_pData, AddressIn(a));
        EXPECT_EQ(blob.m_nSize, 3u);
    }
}

TEST(HXBlobAppend, EmptyAndBlocklessBlobsTakeANewBlock) {
    std::string b = "de";
    for (HXBlob blob : {HXBlob(), Blockless(1), Blockless(9)}) {
        blob.Append(Naming(b));
        EXPECT_EQ(Bytes(blob), "de");
        EXPECT_NE(blob.m_pData, AddressIn(b));
        blob.Delete();
    }
}

TEST(HXBlobAppend, BlockOfSizeZeroStays) {
    std::string room = "ABCDE";
    std::string b = "xy";
    HXBlob blob(0u, AddressIn(room));
    blob.Append(Naming(b));
    EXPECT_EQ(blob.m_pData, AddressIn(room));
    EXPECT_EQ(blob.m_nSize, 2u);
    EXPECT_EQ(room, "xyCDE");
}

TEST(HXBlobComposite, IsSizeInnerAndOuter) {
    std::string a = "abc";
    std::string b = "de";
    HXBlob composite = Naming(a) * Naming(b);
    EXPECT_EQ(Bytes(composite), "\x03\0\0\0abcde"s);
    EXPECT_FALSE(composite.m_bAutoDelete);
    EXPECT_EQ(Bytes(composite.GetInnerBlob()), "abc");
    EXPECT_EQ(composite.GetInnerBlob().m_pData, composite.m_pData + 4);
    EXPECT_EQ(Bytes(composite.GetOuterBlob()), "de");
    EXPECT_EQ(composite.GetOuterBlob().m_pData, composite.m_pData + 7);
    EXPECT_FALSE(composite.GetInnerBlob().m_bAutoDelete);
    EXPECT_FALSE(composite.GetOuterBlob().m_bAutoDelete);
    composite.Delete();
}

TEST(HXBlobComposite, WithoutInnerBytes) {
    std::string b = "de";
    for (const HXBlob& inner : {HXBlob(), Blockless(4), HXBlob(0u, AddressIn(b))}) {
        const Own composite(inner * Naming(b));
        EXPECT_EQ(Bytes(composite), "\0\0\0\0de"s);
        EXPECT_EQ(composite.GetInnerBlob().m_pData, nullptr);
        EXPECT_EQ(composite.GetInnerBlob().m_nSize, 0u);
        EXPECT_EQ(Bytes(composite.GetOuterBlob()), "de");
    }
}

TEST(HXBlobComposite, WithoutOuterBytes) {
    std::string a = "abc";
    for (const HXBlob& outer : {HXBlob(), Blockless(4)}) {
        const Own composite(Naming(a) * outer);
        EXPECT_EQ(Bytes(composite), "\x03\0\0\0abc"s);
        EXPECT_EQ(Bytes(composite.GetInnerBlob()), "abc");
        EXPECT_EQ(composite.GetOuterBlob().m_nSize, 0u);
        EXPECT_EQ(composite.GetOuterBlob().m_pData, composite.GetEnd());
    }
}

TEST(HXBlobComposite, OfNothingIsAPrefix) {
    const Own composite(HXBlob() * HXBlob());
    EXPECT_EQ(Bytes(composite), "\0\0\0\0"s);
    EXPECT_EQ(composite.GetInnerBlob().m_pData, nullptr);
    EXPECT_EQ(composite.GetOuterBlob().m_nSize, 0u);
    EXPECT_EQ(composite.GetOuterBlob().m_pData, composite.GetEnd());
}

TEST(HXBlobComposite, InnerSizeMustBeBelowTheWholeSize) {
    // The whole has 8 bytes and room for 4 more behind them.
    std::string bytes = "\x07\0\0\0abcdefgh"s;
    const HXBlob composite(8u, AddressIn(bytes));
    EXPECT_EQ(Bytes(composite.GetInnerBlob()), "abcdefg");
    bytes[0] = 8;
    EXPECT_EQ(composite.GetInnerBlob().m_pData, nullptr);
    bytes[0] = 0;
    EXPECT_EQ(composite.GetInnerBlob().m_pData, nullptr);
    bytes[3] = 0x7F;
    EXPECT_EQ(composite.GetInnerBlob().m_pData, nullptr);
}

TEST(HXBlobComposite, OuterBelievesTheInnerSize) {
    std::string bytes = "\x06\0\0\0abcdefgh"s;
    const HXBlob composite(8u, AddressIn(bytes));
    EXPECT_EQ(composite.GetOuterBlob().m_pData, AddressIn(bytes, 10));
    EXPECT_EQ(composite.GetOuterBlob().m_nSize, 0xFFFFFFFEu);
}

TEST(HXBlobComposite, InnerThatIsLetThroughDoesNotMakeTheOuterSound) {
    std::string bytes = "\x07\0\0\0abcdefgh"s;
    const HXBlob composite(8u, AddressIn(bytes));
    EXPECT_EQ(composite.GetInnerBlob().m_nSize, 7u);
    EXPECT_EQ(composite.GetOuterBlob().m_pData, AddressIn(bytes, 11));
    EXPECT_EQ(composite.GetOuterBlob().m_nSize, 0xFFFFFFFDu);
}

TEST(HXBlobComposite, OuterSizeTellsWhetherTheViewsAreSound) {
    std::string bytes(8, '\0');
    const HXBlob composite = Naming(bytes);
    for (const ulong inner : {0u, 3u, 4u, 5u, 7u, 8u, 9u, 0x7FFFFFFFu, 0xFFFFFFFCu, 0xFFFFFFFFu}) {
        std::memcpy(bytes.data(), &inner, sizeof inner);
        EXPECT_EQ(composite.GetOuterBlob().m_nSize <= composite.m_nSize - 4, inner <= 4) << inner;
    }
}

TEST(HXBlobComposite, MoreThanABlobCanHoldRaisesTheMemoryException) {
    std::string byte = "x";
    const HXBlob large(0xFFFFFFFCu, AddressIn(byte));
    EXPECT_TRUE(testing_support::Raises<CMemoryException>([&] { large* HXBlob(); }));
    EXPECT_TRUE(testing_support::Raises<CMemoryException>([&] { HXBlob() * large; }));
    HXBlob blob = Naming(byte);
    EXPECT_TRUE(testing_support::Raises<CMemoryException>([&] { blob.Embed(large); }));
    EXPECT_EQ(blob.m_pData, AddressIn(byte));
    EXPECT_EQ(blob.m_nSize, 1u);
}

TEST(HXBlobComposite, TooShortForASizeOrBlocklessGivesNothing) {
    std::string bytes = "\x01\0\0"s;
    for (const HXBlob& blob :
         {Naming(bytes), HXBlob(0u, AddressIn(bytes)), Blockless(9), HXBlob()}) {
        EXPECT_EQ(blob.GetInnerBlob().m_pData, nullptr);
        EXPECT_EQ(blob.GetInnerBlob().m_nSize, 0u);
        EXPECT_EQ(blob.GetOuterBlob().m_pData, nullptr);
        EXPECT_EQ(blob.GetOuterBlob().m_nSize, 0u);
    }
}

TEST(HXBlobComposite, EmbeddingLeavesTheOldBlockAndTheFlag) {
    std::string inner = "abc";
    std::string outer = "de";
    for (const bool flag : {false, true}) {
        HXBlob blob = Naming(outer);
        const HXBlob view = blob;
        blob.m_bAutoDelete = flag;
        blob.Embed(Naming(inner));
        EXPECT_EQ(Bytes(blob), "\x03\0\0\0abcde"s);
        EXPECT_EQ(blob.m_bAutoDelete, flag);
        EXPECT_EQ(Bytes(view), "de");
        blob.Delete();
    }
}

TEST(HXBlobComposite, EmbeddedInItself) {
    std::string bytes = "ab";
    HXBlob blob = Naming(bytes);
    blob.Embed(blob);
    EXPECT_EQ(Bytes(blob), "\x02\0\0\0abab"s);
    blob.Delete();
}

TEST(HXBlobBits, AreTheBlocks) {
    std::string bytes = "\x02\x00"s;
    HXBlob blob = Naming(bytes);
    HXBitArray bits = blob.GetBits();
    EXPECT_EQ(bits.m_nBits, 16);
    EXPECT_TRUE(bits.Get(1));
    bits.Set(15, true);
    EXPECT_EQ(bytes, "\x02\x80");
    EXPECT_EQ(HXBlob().GetBits().m_nBits, 0);
    EXPECT_EQ(HXBlob().GetBits().m_pBits, nullptr);
    EXPECT_EQ(Blockless(5).GetBits().m_nBits, 0);
    EXPECT_EQ(Blockless(5).GetBits().m_pBits, nullptr);
}

TEST(HXBlobBits, AreAsManyAsCanBeCounted) {
    std::string byte = "x";
    EXPECT_EQ(HXBlob(0x0FFFFFFFu, AddressIn(byte)).GetBits().m_nBits, 0x7FFFFFF8);
    EXPECT_EQ(HXBlob(0x10000000u, AddressIn(byte)).GetBits().m_nBits, 0x7FFFFFF8);
    EXPECT_EQ(HXBlob(0xFFFFFFFFu, AddressIn(byte)).GetBits().m_nBits, 0x7FFFFFF8);
}

std::string Injected(std::string into, std::string bits) {
    Naming(into).Inject(Naming(bits));
    return into;
}

TEST(HXBlobInject, EqualSizesOverwriteEveryBit) {
    EXPECT_EQ(Injected("\xFF\x00\x5A"s, "\x12\x34\x56"s), "\x12\x34\x56"s);
}

TEST(HXBlobInject, TwiceTheSizeTakesEverySecondBit) {
    EXPECT_EQ(Injected("\x00\x00"s, "\xFF"s), "\x55\x55"s);
    EXPECT_EQ(Injected("\xFF\xFF"s, "\x0F"s), "\xFF\xAA"s);
}

TEST(HXBlobInject, BrokenRatioRoundsThePlacesDown) {
    // 16 bits in 24: 0 1 3 4 6 7 9 10 12 13 15 16 18 19 21 22.
    EXPECT_EQ(Injected("\x00\x00\x00"s, "\xFF\xFF"s), "\xDB\xB6\x6D"s);
    EXPECT_EQ(Injected("\xFF\xFF\xFF"s, "\x00\x00"s), "\x24\x49\x92"s);
    // The last bit alone, at place 22.
    EXPECT_EQ(Injected("\x00\x00\x00"s, "\x00\x80"s), "\x00\x00\x40"s);
}

TEST(HXBlobInject, PlacesAreCountedInSinglePrecision) {
    // The ratio 5/3 is a little less than that, but three times as much rounds to 5 again.
    EXPECT_EQ(Injected("\0\0\0\0\0"s, "\x08\0\0"s), "\x20\0\0\0\0"s);
    // So is 7/3, and 27 times as much rounds to less than 63.
    EXPECT_EQ(Injected(std::string(14, '\0'), "\0\0\0\x08\0\0"s),
              std::string(7, '\0') + "\x40" + std::string(6, '\0'));
}

TEST(HXBlobInject, BlobsThatOverlapSeeEachOthersBits) {
    // Bit by bit, the first byte goes on and on.
    std::string bytes = "abcd";
    HXBlob(3u, AddressIn(bytes, 1)).Inject(HXBlob(3u, AddressIn(bytes)));
    EXPECT_EQ(bytes, "aaaa");
    bytes = "abcd";
    HXBlob(3u, AddressIn(bytes)).Inject(HXBlob(3u, AddressIn(bytes, 1)));
    EXPECT_EQ(bytes, "bcdd");
}

TEST(HXBlobInject, NothingFromAnEmptyOrALargerBlob) {
    EXPECT_EQ(Injected("\xAB"s, ""s), "\xAB"s);
    EXPECT_EQ(Injected("\xAB"s, "\x00\x00"s), "\xAB"s);
    std::string bytes = "\xAB";
    Naming(bytes).Inject(Blockless(1));
    EXPECT_EQ(bytes, "\xAB");
    HXBlob blockless = Blockless(2);
    blockless.Inject(Naming(bytes));
    EXPECT_EQ(blockless.m_pData, nullptr);
}

// From bit 2^24 on, odd places are no singles: with equal sizes, the bits of the byte behind
// 2 MiB go, first to last, to the places 0 1 2 4 5 4 6 of the byte, and the eighth behind it.
TEST(HXBlobInject, PlacesBehindTwoMebibytesCollideAndNoneIsOutside) {
    constexpr std::size_t kSize = (std::size_t{1} << 21) + 1;
    std::string bits(kSize, '\0');
    for (const auto& [from, to] : {std::pair(0x99, 0xA9), std::pair(0x66, 0xDE)}) {
        std::string room(kSize + 1, '\0');
        room[kSize - 1] = '\xFF';
        room[kSize] = 'x';
        bits[kSize - 1] = static_cast<char>(from);
        HXBlob(static_cast<ulong>(kSize), AddressIn(room)).Inject(Naming(bits));
        EXPECT_EQ(static_cast<unsigned char>(room[kSize - 1]), to);
        EXPECT_EQ(room[kSize], 'x');
    }
}

}  // namespace
}  // namespace ZT
