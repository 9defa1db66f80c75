// What a blob is, and how its block lives.

#include <zt/memory/HXBlob.h>

#include <gtest/gtest.h>
#include <platform/collections/CArray.h>
#include <platform/files/CMemFile.h>
#include <tests/Raises.h>
#include <zt/frame/VirtualTable_test.hpp>
#include <zt/memory/Blob_test.hpp>

#include <cstddef>
#include <new>
#include <type_traits>

namespace ZT {
namespace {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
TEST(HXBlob, FieldsStandInOrder) {
    EXPECT_EQ(offsetof(HXBlob, m_nSize), 8u);
    EXPECT_EQ(offsetof(HXBlob, m_pData), 16u);
    EXPECT_EQ(offsetof(HXBlob, m_bAutoDelete), 24u);
    EXPECT_EQ(sizeof(HXBlob), 32u);
    EXPECT_TRUE((std::is_same_v<decltype(HXBlob::m_nSize), ulong>));
    EXPECT_TRUE((std::is_same_v<decltype(HXBlob::m_pData), unsigned char*>));
    EXPECT_TRUE((std::is_same_v<decltype(HXBlob::m_bAutoDelete), bool>));
}
#pragma GCC diagnostic pop

// Tells which of its operations was called.
struct Telling : HXBlob {
    ulong GetSize() override { return 77; }
    void Copy(const HXBlob&) override { called = "Copy"; }
    int Read(CFile&) override { return 78; }
    bool Write(CFile&) override { return called = "Write", true; }
    void CopyDataTo(unsigned char* p) const override { *p = 79; }
    ~Telling() override {
        if (destroyed) *destroyed = true;
    }
    const char* called = "";
    bool* destroyed = nullptr;
};

TEST(HXBlob, VirtualOperationsStandInOrder) {
    Telling blob;
    HXBlob other;
    CMemFile file;
    unsigned char byte = 0;
    EXPECT_EQ(CallSlot<ulong>(&blob, 0), 77u);
    CallSlot<void>(&blob, 1, &other);
    EXPECT_STREQ(blob.called, "Copy");
    EXPECT_EQ(CallSlot<int>(&blob, 2, static_cast<CFile*>(&file)), 78);
    EXPECT_TRUE(CallSlot<bool>(&blob, 3, static_cast<CFile*>(&file)));
    EXPECT_STREQ(blob.called, "Write");
    CallSlot<void>(&blob, 4, &byte);
    EXPECT_EQ(byte, 79);
    bool destroyed = false;
    auto* const doomed = new Telling;
    doomed->destroyed = &destroyed;
    CallSlot<void>(doomed, 6);
    EXPECT_TRUE(destroyed);
}

TEST(HXBlobMaking, DefaultIsNothing) {
    const HXBlob blob;
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
    EXPECT_FALSE(blob.m_bAutoDelete);
}

TEST(HXBlobMaking, FlagAlone) {
    for (const bool flag : {false, true}) {
        const HXBlob blob(flag);
        EXPECT_EQ(blob.m_nSize, 0u);
        EXPECT_EQ(blob.m_pData, nullptr);
        EXPECT_EQ(blob.m_bAutoDelete, flag);
    }
}

TEST(HXBlobMaking, CopyNamesTheSameBlockWithoutTheFlag) {
    Own blob("abc"s);
    ASSERT_TRUE(blob.m_bAutoDelete);
    {
        const HXBlob copy = blob;
        EXPECT_EQ(copy.m_nSize, 3u);
        EXPECT_EQ(copy.m_pData, blob.m_pData);
        EXPECT_FALSE(copy.m_bAutoDelete);
        copy.m_pData[0] = 'x';
    }
    EXPECT_EQ(Bytes(blob), "xbc");
}

TEST(HXBlobMaking, SizeAloneGivesZeros) {
    HXBlob blob(100u);
    EXPECT_EQ(Bytes(blob), std::string(100, '\0'));
    EXPECT_FALSE(blob.m_bAutoDelete);
    blob.Delete();
}

TEST(HXBlobMaking, SizeZeroGivesNoBlock) {
    const HXBlob blob(0u);
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
}

TEST(HXBlobMaking, AddressAttaches) {
    std::string bytes = "abcd";
    const HXBlob blob(3u, AddressIn(bytes));
    EXPECT_EQ(blob.m_nSize, 3u);
    EXPECT_EQ(blob.m_pData, AddressIn(bytes));
    EXPECT_FALSE(blob.m_bAutoDelete);
}

TEST(HXBlobMaking, AddressFirstCopiesAndIgnoresTheLastArgument) {
    std::string bytes = "abcd";
    for (const bool last : {false, true}) {
        HXBlob blob(AddressIn(bytes), 3u, last);
        EXPECT_EQ(Bytes(blob), "abc");
        EXPECT_NE(blob.m_pData, AddressIn(bytes));
        EXPECT_FALSE(blob.m_bAutoDelete);
        blob.Delete();
    }
}

TEST(HXBlobMaking, NullAddressFirstGivesABlockOfThatSize) {
    HXBlob blob(nullptr, 3u, true);
    EXPECT_EQ(blob.m_nSize, 3u);
    ASSERT_NE(blob.m_pData, nullptr);
    blob.m_pData[2] = 1;
    EXPECT_FALSE(blob.m_bAutoDelete);
    blob.Delete();
}

TEST(HXBlobMaking, AddressFirstWithSizeZeroGivesNoBlock) {
    std::string bytes = "abcd";
    const HXBlob blob(AddressIn(bytes), 0u, false);
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
}

TEST(HXBlobMaking, HexadecimalText) {
    HXBlob blob("00aFfF");
    EXPECT_EQ(Bytes(blob), "\x00\xAF\xFF"s);
    EXPECT_FALSE(blob.m_bAutoDelete);
    blob.Delete();
}

TEST(HXBlobMaking, HexadecimalTextOfThreeDigitsGivesOneByte) {
    HXBlob blob("1F2");
    EXPECT_EQ(Bytes(blob), "\x1F");
    blob.Delete();
}

TEST(HXBlobMaking, BadAndNullHexadecimalTextGiveNothing) {
    for (const char* text : {"0G", "00 1", static_cast<const char*>(nullptr)}) {
        const HXBlob blob(text);
        EXPECT_EQ(blob.m_nSize, 0u);
        EXPECT_EQ(blob.m_pData, nullptr);
        EXPECT_FALSE(blob.m_bAutoDelete);
    }
}

TEST(HXBlobMaking, StringComesWithItsZero) {
    HXBlob blob(CString("ab"));
    EXPECT_EQ(Bytes(blob), "ab\0"s);
    EXPECT_FALSE(blob.m_bAutoDelete);
    blob.Delete();
    HXBlob empty{CString()};
    EXPECT_EQ(Bytes(empty), "\0"s);
    empty.Delete();
}

TEST(HXBlobMaking, AssignmentTakesSizePointerAndFlagAndFreesNothing) {
    std::string old = "old";
    std::string bytes = "abcd";
    HXBlob source = Naming(bytes);
    HXBlob blob = Naming(old);
    source.m_bAutoDelete = true;
    EXPECT_EQ(&(blob = source), &blob);
    EXPECT_EQ(blob.m_nSize, 4u);
    EXPECT_EQ(blob.m_pData, AddressIn(bytes));
    EXPECT_TRUE(blob.m_bAutoDelete);
    blob = HXBlob();
    EXPECT_FALSE(blob.m_bAutoDelete);
    source.Reset();
    EXPECT_EQ(old, "old");
}

TEST(HXBlobMaking, DestructorFreesTheBlockOnlyWithTheFlag) {
    // Memory of one's own in an attached block: the destructor must not touch it.
    std::string bytes = "abcd";
    { const HXBlob blob = Naming(bytes); }
    EXPECT_EQ(bytes, "abcd");
    // A leak checker tells if this one is not freed.
    HXBlob freed(true);
    freed.m_nSize = 10;
    freed.Allocate();
    EXPECT_NE(freed.m_pData, nullptr);
}

TEST(HXBlobMaking, ConstructMakesNothingOutOfRawMemory) {
    HXBlob blob(7u, reinterpret_cast<unsigned char*>(0x1234));
    blob.m_bAutoDelete = true;
    blob.Construct();
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
    EXPECT_FALSE(blob.m_bAutoDelete);
}

TEST(HXBlobPosition, SizeIsTheField) {
    HXBlob blob = Blockless(5);
    EXPECT_EQ(blob.GetSize(), 5u);
}

TEST(HXBlobPosition, ValidNeedsSizeAndBlock) {
    std::string bytes = "a";
    EXPECT_TRUE(Naming(bytes).IsValid());
    EXPECT_FALSE(HXBlob(0u, AddressIn(bytes)).IsValid());
    EXPECT_FALSE(Blockless(1).IsValid());
    EXPECT_FALSE(HXBlob().IsValid());
}

TEST(HXBlobPosition, PointerIsInsideOrNull) {
    std::string bytes = "abc";
    const HXBlob blob = Naming(bytes);
    EXPECT_EQ(blob.GetPointer(0), AddressIn(bytes));
    EXPECT_EQ(blob.GetPointer(2), AddressIn(bytes, 2));
    EXPECT_EQ(blob.GetPointer(3), nullptr);
    EXPECT_EQ(blob.GetPointer(0xFFFFFFFF), nullptr);
    EXPECT_EQ(Blockless(5).GetPointer(0), nullptr);
}

TEST(HXBlobPosition, EndIsBehindTheLastByteOrNull) {
    std::string bytes = "abc";
    EXPECT_EQ(Naming(bytes).GetEnd(), AddressIn(bytes, 3));
    EXPECT_EQ(HXBlob(0u, AddressIn(bytes)).GetEnd(), AddressIn(bytes));
    EXPECT_EQ(Blockless(5).GetEnd(), nullptr);
}

TEST(HXBlobPosition, InOffsetAndLengthOfAddresses) {
    std::string bytes = "abcdef";
    const HXBlob blob(3u, AddressIn(bytes, 1));
    const unsigned char* const outside[] = {AddressIn(bytes, 0), AddressIn(bytes, 4),
                                            AddressIn(bytes, 5), nullptr};
    for (const unsigned char* p : outside) {
        EXPECT_FALSE(blob.In(p));
        EXPECT_EQ(blob.GetOffset(p), 0xFFFFFFFFu);
        EXPECT_EQ(blob.GetLength(p), 0xFFFFFFFFu);
    }
    for (ulong i = 0; i < 3; ++i) {
        const unsigned char* const p = AddressIn(bytes, 1 + i);
        EXPECT_TRUE(blob.In(p));
        EXPECT_EQ(blob.GetOffset(p), i);
        EXPECT_EQ(blob.GetLength(p), 3 - i);
    }
    EXPECT_FALSE(HXBlob(0u, AddressIn(bytes)).In(AddressIn(bytes)));
}

TEST(HXBlobPosition, BlocklessCountsFromAddressZero) {
    EXPECT_TRUE(Blockless(5).In(nullptr));
    EXPECT_FALSE(HXBlob().In(nullptr));
}

TEST(HXBlobPosition, ResetDetaches) {
    std::string bytes = "abc";
    HXBlob blob = Naming(bytes);
    blob.m_bAutoDelete = true;
    EXPECT_EQ(blob.Reset(), AddressIn(bytes));
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
    EXPECT_TRUE(blob.m_bAutoDelete);
    EXPECT_EQ(blob.Reset(), nullptr);
    EXPECT_EQ(bytes, "abc");
}

TEST(HXBlobBlock, AllocateTakesABlockOfTheSize) {
    HXBlob blob(4u);
    blob.m_nSize = 1000;
    blob.Allocate();
    EXPECT_EQ(blob.m_nSize, 1000u);
    ASSERT_NE(blob.m_pData, nullptr);
    std::memset(blob.m_pData, 1, 1000);
    blob.m_nSize = 0;
    blob.Allocate();
    EXPECT_EQ(blob.m_pData, nullptr);
}

TEST(HXBlobBlock, SetSizeGrowsByANewBlockAndShrinksInPlace) {
    HXBlob blob;
    blob.SetSize(10);
    EXPECT_EQ(blob.m_nSize, 10u);
    ASSERT_NE(blob.m_pData, nullptr);
    std::memcpy(blob.m_pData, "0123456789", 10);
    unsigned char* const first = blob.m_pData;
    blob.SetSize(5);
    EXPECT_EQ(blob.m_pData, first);
    EXPECT_EQ(Bytes(blob), "01234");
    blob.SetSize(5);
    EXPECT_EQ(blob.m_pData, first);
    blob.SetSize(1u << 20);
    EXPECT_EQ(blob.m_nSize, 1u << 20);
    std::memset(blob.m_pData, 1, 1u << 20);
    blob.Delete();
}

TEST(HXBlobBlock, BlockOfSizeZeroStaysWhateverTheNewSize) {
    std::string bytes = "abcdef";
    HXBlob blob(0u, AddressIn(bytes));
    blob.SetSize(6);
    EXPECT_EQ(blob.m_pData, AddressIn(bytes));
    EXPECT_EQ(Bytes(blob), "abcdef");
}

TEST(HXBlobBlock, SizeZeroWithoutABlockTakesAnEmptyOne) {
    HXBlob blob;
    blob.SetSize(0);
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_NE(blob.m_pData, nullptr);
    delete[] blob.Reset();
}

TEST(HXBlobBlock, BlocklessTakesABlockAlsoForASmallerSize) {
    HXBlob blob = Blockless(10);
    blob.SetSize(4);
    EXPECT_EQ(blob.m_nSize, 4u);
    ASSERT_NE(blob.m_pData, nullptr);
    blob.Delete();
}

TEST(HXBlobBlock, DeleteFreesAndEmpties) {
    HXBlob blob(100u);
    HXBlob copy = blob;
    blob.m_bAutoDelete = true;
    blob.Delete();
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
    EXPECT_TRUE(blob.m_bAutoDelete);
    // The copy dangles.
    EXPECT_EQ(copy.m_nSize, 100u);
    EXPECT_NE(copy.m_pData, nullptr);
}

TEST(HXBlobBlock, DeleteDropsABlockOfSizeZeroWithoutFreeingIt) {
    std::string bytes = "abc";
    HXBlob blob(0u, AddressIn(bytes));
    blob.Delete();
    EXPECT_EQ(blob.m_pData, nullptr);
    EXPECT_EQ(bytes, "abc");
    HXBlob blockless = Blockless(3);
    blockless.Delete();
    EXPECT_EQ(blockless.m_nSize, 0u);
}

TEST(HXBlobBlock, DeleteDataWritesNothing) {
    HXBlob blob(100u);
    unsigned char* const block = blob.m_pData;
    blob.DeleteData();
    EXPECT_EQ(blob.m_nSize, 100u);
    EXPECT_EQ(blob.m_pData, block);
    blob.Reset();
    blob.DeleteData();
    EXPECT_EQ(blob.m_pData, nullptr);
}

TEST(HXBlobBlock, SetTakesATextWithItsZero) {
    HXBlob blob(2u);
    blob.Set("hello");
    EXPECT_EQ(Bytes(blob), "hello\0"s);
    blob.Set(reinterpret_cast<const char*>(blob.m_pData + 1));
    EXPECT_EQ(Bytes(blob), "ello\0"s);
    blob.Set(nullptr);
    EXPECT_EQ(Bytes(blob), "ello\0"s);
    blob.Set("");
    EXPECT_EQ(Bytes(blob), "\0"s);
    blob.Delete();
}

// In an array, blobs stay what they are.

using BlobArray = CArray<HXBlob, HXBlob>;

TEST(HXBlobInArray, MovesWithItsFlagAndFreesNothingOnTheWay) {
    BlobArray array;
    array.SetSize(1);
    array[0].m_bAutoDelete = true;
    array[0].SetSize(3);
    std::memcpy(array[0].m_pData, "abc", 3);
    for (int i = 0; i < 100; ++i) array.InsertAt(0, HXBlob());
    EXPECT_TRUE(array[100].m_bAutoDelete);
    EXPECT_EQ(Bytes(array[100]), "abc");
    array.RemoveAt(0, 50);
    EXPECT_EQ(Bytes(array[50]), "abc");
    array.FreeExtra();
    EXPECT_EQ(Bytes(array[50]), "abc");
}

TEST(HXBlobInArray, AddedBlobsShareTheirBlocks) {
    Own blob("abc"s);
    BlobArray array;
    array.Add(blob);
    EXPECT_EQ(array[0].m_pData, blob.m_pData);
    EXPECT_FALSE(array[0].m_bAutoDelete);
    array.RemoveAll();
    EXPECT_EQ(Bytes(blob), "abc");
}

TEST(HXBlobBlock, MoreThanASizeCanTellIsNoMemory) {
    std::string byte = "x";
    const HXBlob large(0xFFFFFFFFu, AddressIn(byte));
    HXBlob one = Naming(byte);
    EXPECT_TRUE(testing_support::Raises<CMemoryException>([&] { one + large; }));
    EXPECT_TRUE(testing_support::Raises<CMemoryException>([&] { one.Append(large); }));
    EXPECT_EQ(one.m_pData, AddressIn(byte));
    EXPECT_EQ(one.m_nSize, 1u);
}

}  // namespace
}  // namespace ZT
