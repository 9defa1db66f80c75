// Text forms of blobs.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <zt/memory/HXBlob.h>
#include <zt/memory/Blob_test.hpp>

#include <cstddef>
#include <memory>
#include <vector>

namespace ZT {
namespace {

TEST(HXBlobText, HexadecimalIsTwoUpperCaseDigitsAByte) {
    std::string bytes = "\x00\x0A\xFF"s;
    EXPECT_STREQ(Naming(bytes).ToCString(), "000AFF");
    EXPECT_TRUE(HXBlob().ToCString().IsEmpty());
    EXPECT_TRUE(Blockless(3).ToCString().IsEmpty());
    EXPECT_TRUE(HXBlob(0u, AddressIn(bytes)).ToCString().IsEmpty());
}

TEST(HXBlobText, PlainEndsAtTheFirstZeroOrAtTheEnd) {
    std::string bytes = "ab\0cd"s;
    EXPECT_STREQ(Naming(bytes).ToString(), "ab");
    EXPECT_STREQ(HXBlob(1u, AddressIn(bytes)).ToString(), "a");
    EXPECT_STREQ(HXBlob(2u, AddressIn(bytes, 3)).ToString(), "cd");
    EXPECT_TRUE(HXBlob(1u, AddressIn(bytes, 2)).ToString().IsEmpty());
    EXPECT_TRUE(HXBlob().ToString().IsEmpty());
    EXPECT_TRUE(Blockless(3).ToString().IsEmpty());
}

TEST(HXBlobText, HexadecimalInAnArray) {
    std::string bytes = "\x00\x0A\xFF"s;
    int length = -5;
    const std::unique_ptr<char[]> text(Naming(bytes).ToString(length));
    EXPECT_STREQ(text.get(), "000AFF");
    EXPECT_EQ(length, 6);
}

TEST(HXBlobText, NoArrayWithoutBytes) {
    int length = -5;
    EXPECT_EQ(HXBlob().ToString(length), nullptr);
    EXPECT_EQ(Blockless(3).ToString(length), nullptr);
    EXPECT_EQ(length, -5);
}

TEST(HXBlobFromText, EitherCase) {
    Own blob;
    EXPECT_TRUE(blob.StringToBinary("0aFFc"));
    EXPECT_EQ(Bytes(blob), "\x0A\xFF");
}

TEST(HXBlobFromText, NullChangesNothing) {
    std::string bytes = "abc";
    HXBlob blob = Naming(bytes);
    EXPECT_FALSE(blob.StringToBinary(nullptr));
    EXPECT_EQ(blob.m_pData, AddressIn(bytes));
    EXPECT_EQ(blob.m_nSize, 3u);
}

TEST(HXBlobFromText, NoDigitsMakeAnEmptyBlock) {
    for (const char* text : {"", "A", "x"}) {
        HXBlob blob;
        EXPECT_TRUE(blob.StringToBinary(text));
        EXPECT_EQ(blob.m_nSize, 0u);
        EXPECT_NE(blob.m_pData, nullptr);
        delete[] blob.Reset();
    }
}

TEST(HXBlobFromText, UsesALargerBlock) {
    std::string room = "ABCDE";
    HXBlob blob = Naming(room);
    EXPECT_TRUE(blob.StringToBinary("7879"));
    EXPECT_EQ(blob.m_pData, AddressIn(room));
    EXPECT_EQ(blob.m_nSize, 2u);
    EXPECT_EQ(room, "xyCDE");
}

TEST(HXBlobFromText, ReplacesASmallerBlock) {
    Own blob("a"s);
    EXPECT_TRUE(blob.StringToBinary("787980"));
    EXPECT_EQ(Bytes(blob), "xy\x80");
}

TEST(HXBlobFromText, BadTextLeavesAnEmptyBlob) {
    for (const char* text : {"000G", "00ZZ00", "0 12", "\xFF\xFF\xFF\xFF"}) {
        Own small("a"s);
        EXPECT_FALSE(small.StringToBinary(text));
        EXPECT_EQ(small.m_nSize, 0u);
        EXPECT_EQ(small.m_pData, nullptr);
        EXPECT_TRUE(small.m_bAutoDelete);
    }
}

TEST(HXBlobFromText, BadTextDoesNotFreeABlockThatStayed) {
    std::string room = "ABCDE";
    HXBlob blob = Naming(room);
    const HXBlob view = blob;
    EXPECT_FALSE(blob.StringToBinary("78ZZ"));
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
    EXPECT_EQ(Bytes(view), "xBCDE");
}

// From 2^25 characters on, single precision counts in fours.
TEST(HXBlobFromText, LengthIsCountedInSinglePrecision) {
    constexpr std::size_t kExact = std::size_t{1} << 25;
    Own blob;
    EXPECT_TRUE(blob.StringToBinary(std::string(kExact + 2, 'A').c_str()));
    EXPECT_EQ(blob.m_nSize, kExact / 2);
    // Six more count as eight, which are not there.
    EXPECT_FALSE(blob.StringToBinary(std::string(kExact + 6, 'A').c_str()));
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
}

RC_GTEST_PROP(HXBlobFromText, ComesBackFromItsText, ()) {
    const auto bytes = *rc::gen::arbitrary<std::string>();
    std::string copy = bytes;
    Own blob;
    RC_ASSERT(blob.StringToBinary(Naming(copy).ToCString()));
    RC_ASSERT(Bytes(blob) == bytes);
}

}  // namespace
}  // namespace ZT
