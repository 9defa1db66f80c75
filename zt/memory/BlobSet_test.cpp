// Blobs as one sequence of bytes.

#include <zt/memory/BlobSet.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <tests/Raises.h>
#include <zt/frame/VirtualTable_test.hpp>
#include <zt/memory/Blob_test.hpp>

#include <cstddef>
#include <type_traits>
#include <vector>

namespace ZT {
namespace {

using testing_support::Raises;

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
TEST(BlobSetPtr, FieldsStandInOrder) {
    EXPECT_EQ(offsetof(BlobSetPtr, m_pPos), 8u);
    EXPECT_EQ(offsetof(BlobSetPtr, m_nBlob), 16u);
    EXPECT_EQ(sizeof(BlobSetPtr), 24u);
    EXPECT_TRUE((std::is_same_v<decltype(BlobSetPtr::m_nBlob), std::int32_t>));
    EXPECT_TRUE(std::has_virtual_destructor_v<BlobSetPtr>);
}
#pragma GCC diagnostic pop

TEST(BlobSetPtr, HoldsWhatItWasGiven) {
    std::string bytes = "a";
    const BlobSetPtr none;
    EXPECT_EQ(none.m_pPos, nullptr);
    EXPECT_EQ(none.m_nBlob, 0);
    const BlobSetPtr some(AddressIn(bytes), 7);
    const BlobSetPtr copy = some;
    EXPECT_EQ(copy.m_pPos, AddressIn(bytes));
    EXPECT_EQ(copy.m_nBlob, 7);
    BlobSetPtr assigned;
    assigned = some;
    EXPECT_EQ(assigned.m_pPos, AddressIn(bytes));
    EXPECT_EQ(assigned.m_nBlob, 7);
}

TEST(BlobSet, IsAnArrayWithoutFieldsOfItsOwn) {
    EXPECT_TRUE((std::is_base_of_v<CArray<HXBlob, HXBlob>, BlobSet>));
    EXPECT_EQ(sizeof(BlobSet), sizeof(CArray<HXBlob, HXBlob>));
}

// Pieces of one text, each with a byte between it and the next that belongs to no blob.
struct Pieces : BlobSet {
    explicit Pieces(const std::vector<std::size_t>& sizes) {
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            starts.push_back(room.size());
            for (std::size_t k = 0; k < sizes[i]; ++k) room += letter++;
            room += '.';
        }
        for (std::size_t i = 0; i < sizes.size(); ++i)
            Add(HXBlob(static_cast<ulong>(sizes[i]), At(static_cast<int>(i))));
    }
    unsigned char* At(int blob, std::size_t offset = 0) {
        return AddressIn(room, starts[static_cast<std::size_t>(blob)] + offset);
    }
    BlobSetPtr Ptr(int blob, std::size_t offset = 0) { return {At(blob, offset), blob}; }

    std::string room;
    std::vector<std::size_t> starts;
    char letter = 'a';
};

TEST(BlobSet, EmptyHasNothing) {
    BlobSet set;
    std::string byte = "x";
    EXPECT_EQ(set.GetLength(), 0u);
    EXPECT_EQ(set.GetData(), nullptr);
    EXPECT_TRUE(set.IsValid());
    EXPECT_EQ(set.GetPointer(0), nullptr);
    EXPECT_EQ(set.GetPosition(AddressIn(byte)), 0xFFFFFFFFu);
    EXPECT_EQ(set.GetPosition(nullptr), 0xFFFFFFFFu);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { set.GetHead(); }));
    EXPECT_FALSE(set.InRange(0));
    EXPECT_EQ(set.FindBlob(AddressIn(byte), 0), -1);
    EXPECT_EQ(set.GetMergedBlob().m_pData, nullptr);
    set.Reset();
    BlobSetPtr p(AddressIn(byte), 0);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { set.Increment(p, 0); }));
    EXPECT_FALSE(set.GetNextBlob(p));
    EXPECT_EQ(p.m_nBlob, -1);
    EXPECT_FALSE(set.GetNextBlob(p));
}

TEST(BlobSet, SharesBlocksAndFreesNone) {
    Own blob("abc"s);
    {
        BlobSet set;
        set.Add(blob);
        EXPECT_EQ(set[0].m_pData, blob.m_pData);
        EXPECT_FALSE(set[0].m_bAutoDelete);
    }
    EXPECT_EQ(Bytes(blob), "abc");
}

TEST(BlobSet, LengthIsTheSumOfTheSizesIn32Bits) {
    EXPECT_EQ(Pieces({3, 0, 5}).GetLength(), 8u);
    std::string byte = "x";
    BlobSet set;
    set.Add(HXBlob(0xFFFFFFFFu, AddressIn(byte)));
    set.Add(HXBlob(3u, AddressIn(byte)));
    EXPECT_EQ(set.GetLength(), 2u);
}

TEST(BlobSet, DataIsTheFirstBlobs) {
    Pieces set({3, 5});
    EXPECT_EQ(set.GetData(), set.At(0));
    EXPECT_EQ(static_cast<const BlobSet&>(set).GetData(), set.At(0));
}

TEST(BlobSet, RangeOfIndices) {
    const Pieces set({3, 5});
    EXPECT_FALSE(set.InRange(-1));
    EXPECT_TRUE(set.InRange(0));
    EXPECT_TRUE(set.InRange(1));
    EXPECT_FALSE(set.InRange(2));
}

TEST(BlobSet, ValidNeedsEveryBlob) {
    EXPECT_TRUE(Pieces({3, 5}).IsValid());
    EXPECT_FALSE(Pieces({3, 0, 5}).IsValid());
    Pieces set({3});
    set.Add(Blockless(1));
    EXPECT_FALSE(set.IsValid());
}

TEST(BlobSet, ValidPosition) {
    Pieces set({3, 5});
    EXPECT_TRUE(set.IsValid(set.Ptr(0)));
    EXPECT_TRUE(set.IsValid(set.Ptr(1, 4)));
    EXPECT_FALSE(set.IsValid(set.Ptr(0, 3)));
    EXPECT_FALSE(set.IsValid(BlobSetPtr(set.At(0), 1)));
    for (const int index : {-1, 2}) {
        EXPECT_FALSE(set.IsValid(BlobSetPtr(nullptr, index)));
        EXPECT_TRUE(
            Raises<CInvalidArgException>([&] { set.IsValid(BlobSetPtr(set.At(0), index)); }));
    }
}

TEST(BlobSet, PointerOfAPosition) {
    Pieces set({3, 0, 5});
    EXPECT_EQ(set.GetPointer(0), set.At(0));
    EXPECT_EQ(set.GetPointer(2), set.At(0, 2));
    EXPECT_EQ(set.GetPointer(3), set.At(2));
    EXPECT_EQ(set.GetPointer(7), set.At(2, 4));
    EXPECT_EQ(set.GetPointer(8), nullptr);
    EXPECT_EQ(set.GetPointer(0xFFFFFFFF), nullptr);
}

TEST(BlobSet, BlocklessBlobMakesPositionsWrap) {
    Pieces set({3});
    set.InsertAt(0, Blockless(2));
    // 4 - 2 is 2 in the blob behind; 1 - 2 wraps and finds nothing.
    EXPECT_EQ(set.GetPointer(4), set.At(0, 2));
    EXPECT_EQ(set.GetPointer(1), nullptr);
}

TEST(BlobSet, PositionOfAPointer) {
    Pieces set({3, 0, 5});
    EXPECT_EQ(set.GetPosition(set.At(0)), 0u);
    EXPECT_EQ(set.GetPosition(set.At(0, 2)), 2u);
    EXPECT_EQ(set.GetPosition(set.At(2)), 3u);
    EXPECT_EQ(set.GetPosition(set.At(2, 4)), 7u);
    EXPECT_EQ(set.GetPosition(set.At(0, 3)), 0xFFFFFFFFu);
    EXPECT_EQ(set.GetPosition(set.At(1)), 0xFFFFFFFFu);
    EXPECT_EQ(set.GetPosition(set.At(2, 5)), 0xFFFFFFFFu);
    EXPECT_EQ(set.GetPosition(nullptr), 0xFFFFFFFFu);
}

TEST(BlobSet, FirstOfBlobsThatOverlapHasThePosition) {
    std::string bytes = "abcd";
    BlobSet set;
    set.Add(HXBlob(2u, AddressIn(bytes)));
    set.Add(Naming(bytes));
    EXPECT_EQ(set.GetPosition(AddressIn(bytes, 1)), 1u);
    EXPECT_EQ(set.GetPosition(AddressIn(bytes, 2)), 4u);
    EXPECT_EQ(set.FindBlob(AddressIn(bytes, 1), 0), 0);
    EXPECT_EQ(set.FindBlob(AddressIn(bytes, 1), 1), 1);
}

TEST(BlobSet, IncrementedPointer) {
    Pieces set({3, 0, 5});
    EXPECT_EQ(set.IncrementPointer(set.At(0, 1), 0), set.At(0, 1));
    EXPECT_EQ(set.IncrementPointer(set.At(0, 1), 4), set.At(2, 2));
    EXPECT_EQ(set.IncrementPointer(set.At(0, 1), 7), nullptr);
    // Nowhere is 0xFFFFFFFF, and the sum wraps.
    EXPECT_EQ(set.IncrementPointer(nullptr, 0), nullptr);
    EXPECT_EQ(set.IncrementPointer(nullptr, 1), set.At(0));
    EXPECT_EQ(set.IncrementPointer(set.At(0, 3), 4), set.At(2));
}

TEST(BlobSet, FindsTheBlobOfAPointer) {
    Pieces set({3, 0, 5});
    EXPECT_EQ(set.FindBlob(set.At(0), 0), 0);
    EXPECT_EQ(set.FindBlob(set.At(0), 1), -1);
    EXPECT_EQ(set.FindBlob(set.At(2, 4), 0), 2);
    EXPECT_EQ(set.FindBlob(set.At(2, 4), 2), 2);
    EXPECT_EQ(set.FindBlob(set.At(2, 4), 3), -1);
    EXPECT_EQ(set.FindBlob(set.At(0, 3), 0), -1);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { set.FindBlob(set.At(0), -1); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { BlobSet().FindBlob(nullptr, -1); }));
}

TEST(BlobSet, HeadIsTheStartOfTheFirstBlob) {
    Pieces set({3, 5});
    EXPECT_EQ(set.GetHead().m_pPos, set.At(0));
    EXPECT_EQ(set.GetHead().m_nBlob, 0);
}

TEST(BlobSetWalk, NextBlobAlsoAnEmptyOne) {
    Pieces set({3, 0, 5});
    BlobSetPtr p = set.Ptr(0, 2);
    EXPECT_TRUE(set.GetNextBlob(p));
    EXPECT_EQ(p.m_pPos, set.At(1));
    EXPECT_EQ(p.m_nBlob, 1);
    EXPECT_TRUE(set.GetNextBlob(p));
    EXPECT_EQ(p.m_pPos, set.At(2));
    EXPECT_EQ(p.m_nBlob, 2);
    EXPECT_FALSE(set.GetNextBlob(p));
    EXPECT_EQ(p.m_pPos, nullptr);
    EXPECT_EQ(p.m_nBlob, -1);
    EXPECT_TRUE(set.GetNextBlob(p));
    EXPECT_EQ(p.m_pPos, set.At(0));
    EXPECT_EQ(p.m_nBlob, 0);
}

TEST(BlobSetWalk, NextBlobOfAnIndexOutOfRange) {
    Pieces set({3, 5});
    BlobSetPtr behind(set.At(0), 7);
    EXPECT_FALSE(set.GetNextBlob(behind));
    EXPECT_EQ(behind.m_pPos, nullptr);
    EXPECT_EQ(behind.m_nBlob, -1);
    BlobSetPtr before(set.At(0), -2);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { set.GetNextBlob(before); }));
    EXPECT_EQ(before.m_nBlob, -2);
}

TEST(BlobSetWalk, StepInsideABlob) {
    Pieces set({3, 5});
    BlobSetPtr p = set.GetHead();
    EXPECT_TRUE(set.Increment(p, 2));
    EXPECT_EQ(p.m_pPos, set.At(0, 2));
    EXPECT_EQ(p.m_nBlob, 0);
    EXPECT_TRUE(set.Increment(p, 0));
    EXPECT_EQ(p.m_pPos, set.At(0, 2));
}

TEST(BlobSetWalk, StepToTheNextBlob) {
    Pieces set({3, 5, 2});
    BlobSetPtr p = set.GetHead();
    EXPECT_TRUE(set.Increment(p, 3));
    EXPECT_EQ(p.m_pPos, set.At(1));
    EXPECT_EQ(p.m_nBlob, 1);
    p = set.Ptr(0, 1);
    EXPECT_TRUE(set.Increment(p, 8));
    EXPECT_EQ(p.m_pPos, set.At(2, 1));
    EXPECT_EQ(p.m_nBlob, 2);
}

TEST(BlobSetWalk, RunningOutKeepsTheIndexOnlyInTheLastBlob) {
    Pieces set({3, 5});
    BlobSetPtr p = set.GetHead();
    EXPECT_FALSE(set.Increment(p, 8));
    EXPECT_EQ(p.m_pPos, nullptr);
    EXPECT_EQ(p.m_nBlob, -1);
    BlobSetPtr last = set.Ptr(1, 1);
    EXPECT_FALSE(set.Increment(last, 4));
    EXPECT_EQ(last.m_pPos, nullptr);
    EXPECT_EQ(last.m_nBlob, 1);
    Pieces three({1, 1, 1});
    BlobSetPtr far = three.GetHead();
    EXPECT_FALSE(three.Increment(far, 3));
    EXPECT_EQ(far.m_pPos, nullptr);
    EXPECT_EQ(far.m_nBlob, -1);
}

TEST(BlobSetWalk, EmptyBlobMovesTheAddressPastItself) {
    Pieces set({3, 0, 5});
    BlobSetPtr p = set.GetHead();
    EXPECT_TRUE(set.Increment(p, 5));
    EXPECT_EQ(p.m_pPos, set.At(1) + 2);
    EXPECT_EQ(p.m_nBlob, 1);
}

TEST(BlobSetWalk, AddressOutsideItsBlobMovesAllTheSame) {
    Pieces set({3, 5});
    BlobSetPtr p(set.At(1), 0);
    EXPECT_TRUE(set.Increment(p, 2));
    EXPECT_EQ(p.m_pPos, set.At(1, 2));
    EXPECT_EQ(p.m_nBlob, 0);
    // Only a step of 0xFFFFFFFF does not stay: nothing of it is left in the next blob.
    p = BlobSetPtr(set.At(1), 0);
    EXPECT_TRUE(set.Increment(p, 0xFFFFFFFF));
    EXPECT_EQ(p.m_pPos, set.At(1));
    EXPECT_EQ(p.m_nBlob, 1);
}

TEST(BlobSetWalk, IndexOutOfRangeRaisesTheInvalidArgumentException) {
    Pieces set({3, 5});
    for (const int index : {-1, 2}) {
        BlobSetPtr p(set.At(0), index);
        EXPECT_TRUE(Raises<CInvalidArgException>([&] { set.Increment(p, 1); }));
        EXPECT_EQ(p.m_pPos, set.At(0));
        EXPECT_EQ(p.m_nBlob, index);
    }
}

TEST(BlobSetWalk, ManyBlobsNeedNoDepth) {
    std::string byte = "x";
    BlobSet set;
    for (int i = 0; i < 1000000; ++i) set.Add(Naming(byte));
    BlobSetPtr p = set.GetHead();
    EXPECT_TRUE(set.Increment(p, 999999));
    EXPECT_EQ(p.m_nBlob, 999999);
}

RC_GTEST_PROP(BlobSetWalk, StepAndPositionAgree, ()) {
    const auto sizes = *rc::gen::nonEmpty(
        rc::gen::container<std::vector<std::size_t>>(rc::gen::inRange<std::size_t>(1, 5)));
    Pieces set(sizes);
    const auto length = set.GetLength();
    const auto from = *rc::gen::inRange<ulong>(0, length);
    const auto step = *rc::gen::inRange<ulong>(0, length + 2);
    unsigned char* const start = set.GetPointer(from);
    BlobSetPtr p(start, set.FindBlob(start, 0));
    RC_ASSERT(set.GetPosition(start) == from);
    RC_ASSERT(set.Increment(p, step) == (from + step < length));
    RC_ASSERT(p.m_pPos == set.GetPointer(from + step));
    RC_ASSERT(set.IncrementPointer(start, step) == p.m_pPos);
}

TEST(BlobSet, LengthGrowsByABlobOfZeros) {
    Pieces set({3, 5});
    EXPECT_FALSE(set.SetLength(8));
    EXPECT_FALSE(set.SetLength(0));
    EXPECT_EQ(set.GetSize(), 2);
    EXPECT_TRUE(set.SetLength(9));
    EXPECT_EQ(set.GetSize(), 3);
    EXPECT_EQ(Bytes(set[2]), "\0"s);
    EXPECT_FALSE(set[2].m_bAutoDelete);
    EXPECT_EQ(set.GetLength(), 9u);
    set[2].Delete();
    BlobSet empty;
    EXPECT_TRUE(empty.SetLength(4));
    EXPECT_EQ(Bytes(empty[0]), "\0\0\0\0"s);
    empty[0].Delete();
}

TEST(BlobSet, MergedIsANewBlobOfAllBytes) {
    Pieces set({3, 0, 5});
    HXBlob merged = set.GetMergedBlob();
    EXPECT_EQ(Bytes(merged), "abcdefgh");
    EXPECT_FALSE(merged.m_bAutoDelete);
    merged.Delete();
    EXPECT_EQ(set.room, "abc..defgh.");
}

TEST(BlobSet, CopyGoesToTheStartOfTheBlockWithoutALook) {
    Pieces set({2, 1});
    std::string room = "ABCDE";
    HXBlob target(1u, AddressIn(room));
    set.CopyTo(target);
    EXPECT_EQ(room, "abcDE");
    EXPECT_EQ(target.m_nSize, 1u);
    HXBlob none = Blockless(3);
    set.CopyTo(none);
    EXPECT_EQ(none.m_pData, nullptr);
}

TEST(BlobSet, BlocklessBlobKeepsItsPlaceInACopy) {
    Pieces set({2, 1});
    set.InsertAt(1, Blockless(2));
    EXPECT_EQ(Bytes(Own(set.GetMergedBlob())), "ab\0\0c"s);
    std::string room = "ABCDEF";
    HXBlob target = Naming(room);
    set.CopyTo(target);
    EXPECT_EQ(room, "abCDcF");
}

TEST(BlobSet, MoreThanABlobCanHoldIsNotMerged) {
    std::string byte = "x";
    BlobSet set;
    set.Add(HXBlob(0xFFFFFFFFu, AddressIn(byte)));
    set.Add(HXBlob(3u, AddressIn(byte)));
    EXPECT_TRUE(Raises<CMemoryException>([&] { set.GetMergedBlob(); }));
}

TEST(BlobSet, ResetEmptiesTheBlobsAndKeepsTheirNumber) {
    Pieces set({3, 5});
    set[0].m_bAutoDelete = true;
    set.Reset();
    EXPECT_EQ(set.GetSize(), 2);
    EXPECT_EQ(set.GetLength(), 0u);
    EXPECT_FALSE(set.IsValid());
    EXPECT_EQ(set[0].m_pData, nullptr);
    EXPECT_FALSE(set[0].m_bAutoDelete);
    EXPECT_EQ(set.room, "abc.defgh.");
}

TEST(BlobSet, NegativeCountRaisesTheInvalidArgumentException) {
    struct Damaged : Pieces {
        Damaged() : Pieces({3, 5}) { m_nSize = -1; }
        ~Damaged() override { m_nSize = 2; }
    };
    Damaged set;
    BlobSetPtr p(set.At(0), 0);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { set.GetData(); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { set.GetLength(); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { set.GetHead(); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { set.GetPointer(0); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { set.GetPosition(set.At(0)); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { set.Increment(p, 1); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { set.GetNextBlob(p); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { set.FindBlob(set.At(0), 0); }));
}

}  // namespace
}  // namespace ZT
