// Copies of blobs, shallow and deep.

#include <gtest/gtest.h>
#include <platform/com/SafeArray.h>
#include <zt/containers/HXBitArray.h>
#include <zt/memory/HXBlob.h>
#include <zt/memory/Blob_test.hpp>

namespace ZT {
namespace {

TEST(HXBlobCopy, Copy2MakesRoom) {
    std::string bytes = "abcdef";
    Own small("xy"s);
    small.Copy2(Naming(bytes));
    EXPECT_EQ(Bytes(small), "abcdef");
    EXPECT_NE(small.m_pData, AddressIn(bytes));
    Own none;
    none.Copy2(Naming(bytes));
    EXPECT_EQ(Bytes(none), "abcdef");
}

TEST(HXBlobCopy, Copy2KeepsALargerBlock) {
    std::string room = "ABCDEFGH";
    std::string bytes = "xyz";
    HXBlob blob = Naming(room);
    blob.Copy2(Naming(bytes));
    EXPECT_EQ(blob.m_pData, AddressIn(room));
    EXPECT_EQ(blob.m_nSize, 3u);
    EXPECT_EQ(room, "xyzDEFGH");
}

TEST(HXBlobCopy, SizeWithoutABlockIsTakenWithZeros) {
    Own none;
    none.Copy2(Blockless(5));
    EXPECT_EQ(Bytes(none), "\0\0\0\0\0"s);
    Own grown("xy"s);
    grown.Copy2(Blockless(5));
    EXPECT_EQ(Bytes(grown), "\0\0\0\0\0"s);
    Own virtually;
    virtually.Copy(Blockless(5));
    EXPECT_EQ(Bytes(virtually), "\0\0\0\0\0"s);
    Own bits;
    bits.Copy(HXBitArray(nullptr, 17));
    EXPECT_EQ(Bytes(bits), "\0\0\0"s);
    Own itself(Blockless(3));
    itself.Copy(itself);
    EXPECT_EQ(Bytes(itself), "\0\0\0"s);
}

TEST(HXBlobCopy, SizeWithoutABlockLeavesTheBytesOfABlockThatStays) {
    Own first("abcdef"s);
    first.Copy2(Blockless(5));
    EXPECT_EQ(Bytes(first), "abcde");
    Own second("abcdef"s);
    second.Copy(Blockless(5));
    EXPECT_EQ(Bytes(second), "abcde");
    Own third("abcdef"s);
    third.Copy(HXBitArray(nullptr, 17));
    EXPECT_EQ(Bytes(third), "abc");
}

TEST(HXBlobCopy, Copy2OfItselfChangesNothing) {
    Own blob("abc"s);
    unsigned char* const block = blob.m_pData;
    blob.Copy2(blob);
    EXPECT_EQ(blob.m_pData, block);
    EXPECT_EQ(Bytes(blob), "abc");
}

TEST(HXBlobCopy, CopyIntoABlockDoesNotMakeRoom) {
    std::string room = "ABCDEFGH";
    std::string bytes = "uvwxyz";
    HXBlob blob(2u, AddressIn(room));
    blob.Copy(Naming(bytes));
    EXPECT_EQ(blob.m_pData, AddressIn(room));
    EXPECT_EQ(blob.m_nSize, 6u);
    EXPECT_EQ(room, "uvwxyzGH");
}

TEST(HXBlobCopy, CopyWithoutABlockTakesOne) {
    std::string bytes = "uvwxyz";
    for (HXBlob blob : {HXBlob(), Blockless(2)}) {
        blob.Copy(Naming(bytes));
        EXPECT_EQ(Bytes(blob), "uvwxyz");
        EXPECT_NE(blob.m_pData, AddressIn(bytes));
        blob.Delete();
    }
}

TEST(HXBlobCopy, CopyOfNothingTakesAnEmptyBlock) {
    HXBlob blob;
    blob.Copy(HXBlob());
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_NE(blob.m_pData, nullptr);
    delete[] blob.Reset();
}

TEST(HXBlobCopy, BitsByTheGrowthRule) {
    std::string bytes = "\x01\x02\x03";
    const HXBitArray bits(AddressIn(bytes), 17);
    Own small("x"s);
    small.Copy(bits);
    EXPECT_EQ(Bytes(small), bytes);
    std::string room = "ABCDE";
    HXBlob large = Naming(room);
    large.Copy(bits);
    EXPECT_EQ(large.m_nSize, 3u);
    EXPECT_EQ(room,
              "\x01\x02\x03"
              "DE");
}

TEST(HXBlobCopy, ImageIsAttached) {
    std::string image =
        "\x03\x00\x00\x00"
        "abcdef"s;
    std::string old = "old";
    HXBlob blob = Naming(old);
    blob.Copy(AddressIn(image));
    EXPECT_EQ(blob.m_nSize, 3u);
    EXPECT_EQ(blob.m_pData, AddressIn(image, 4));
    blob.Copy(static_cast<unsigned char*>(nullptr));
    EXPECT_EQ(blob.m_pData, AddressIn(image, 4));
    EXPECT_EQ(old, "old");
}

TEST(HXBlobCopy, ImageIsSizeAndBytes) {
    std::string bytes = "abc";
    std::string image(8, '.');
    Naming(bytes).CopyTo(AddressIn(image));
    EXPECT_EQ(image,
              "\x03\0\0\0"
              "abc."s);
    Naming(bytes).CopyTo(static_cast<unsigned char*>(nullptr));
    std::string untouched(8, '.');
    HXBlob(0u, AddressIn(bytes)).CopyTo(AddressIn(untouched));
    Blockless(3).CopyTo(AddressIn(untouched));
    EXPECT_EQ(untouched, "........");
}

TEST(HXBlobCopy, ShallowLeavesTheFlag) {
    std::string bytes = "abc";
    for (const bool flag : {false, true}) {
        HXBlob blob(flag);
        HXBlob source = Naming(bytes);
        source.m_bAutoDelete = !flag;
        blob.CopyShallow(source);
        EXPECT_EQ(blob.m_pData, AddressIn(bytes));
        EXPECT_EQ(blob.m_nSize, 3u);
        EXPECT_EQ(blob.m_bAutoDelete, flag);
        blob.Reset();
        source.Reset();
    }
}

TEST(HXBlobCopy, DataOfABlobIsTheSmallerSize) {
    std::string room = "ABCD";
    std::string shorter = "xy";
    HXBlob blob = Naming(room);
    blob.CopyData(Naming(shorter));
    EXPECT_EQ(room, "xyCD");
    EXPECT_EQ(blob.m_nSize, 4u);
    std::string longer = "uvwxyz";
    blob.CopyData(Naming(longer));
    EXPECT_EQ(room, "uvwx");
    EXPECT_EQ(blob.m_nSize, 4u);
    blob.CopyData(Blockless(4));
    EXPECT_EQ(room, "uvwx");
}

TEST(HXBlobCopy, DataOfABlobIntoABlocklessOneTakesABlockOfItsSize) {
    std::string shorter = "xy";
    HXBlob blob = Blockless(4);
    blob.m_bAutoDelete = true;
    blob.CopyData(Naming(shorter));
    EXPECT_EQ(Bytes(blob), "xy\0\0"s);
    EXPECT_TRUE(blob.m_bAutoDelete);
    HXBlob none;
    none.CopyData(Naming(shorter));
    EXPECT_EQ(none.m_pData, nullptr);
}

TEST(HXBlobCopy, DataOfAnAddress) {
    std::string room = "ABCD";
    std::string bytes = "wxyz";
    HXBlob blob(2u, AddressIn(room));
    blob.CopyData(AddressIn(bytes));
    EXPECT_EQ(room, "wxCD");
    // The count is not compared with the size.
    blob.CopyData(AddressIn(bytes), 3);
    EXPECT_EQ(room, "wxyD");
    EXPECT_EQ(blob.m_nSize, 2u);
    blob.CopyData(nullptr);
    blob.CopyData(nullptr, 3);
    blob.CopyData(AddressIn(bytes), 0);
    EXPECT_EQ(room, "wxyD");
    HXBlob blockless = Blockless(2);
    blockless.CopyData(AddressIn(bytes));
    blockless.CopyData(AddressIn(bytes), 2);
    EXPECT_EQ(blockless.m_pData, nullptr);
}

TEST(HXBlobCopy, DataToAnAddress) {
    std::string bytes = "abc";
    std::string target = "....";
    Naming(bytes).CopyDataTo(AddressIn(target));
    EXPECT_EQ(target, "abc.");
    Naming(bytes).CopyDataTo(nullptr);
    HXBlob().CopyDataTo(AddressIn(target));
    Blockless(3).CopyDataTo(AddressIn(target));
    EXPECT_EQ(target, "abc.");
}

// Arrays that end with the test.
struct Array {
    explicit Array(SAFEARRAY* made = nullptr) : array(made) {}
    Array(const Array&) = delete;
    Array& operator=(const Array&) = delete;
    ~Array() { SafeArrayDestroy(array); }
    SAFEARRAY* array;
};

SAFEARRAY* BytesArray(const std::string& bytes) {
    SAFEARRAY* const array = SafeArrayCreateVector(VT_UI1, -3, static_cast<ULONG>(bytes.size()));
    std::memcpy(array->pvData, bytes.data(), bytes.size());
    return array;
}

TEST(HXBlobArray, FromBytes) {
    Array bytes(BytesArray("abc"));
    Own blob;
    EXPECT_TRUE(blob.Copy(&bytes.array));
    EXPECT_EQ(Bytes(blob), "abc");
    EXPECT_NE(blob.m_pData, bytes.array->pvData);
    EXPECT_EQ(bytes.array->cLocks, 0u);
}

TEST(HXBlobArray, FromSignedBytes) {
    Array bytes(SafeArrayCreateVector(VT_I1, 0, 2));
    Own blob;
    EXPECT_TRUE(blob.Copy(&bytes.array));
    EXPECT_EQ(Bytes(blob), "\0\0"s);
}

TEST(HXBlobArray, NothingFromNullOrFromOtherArrays) {
    std::string room = "ABCD";
    HXBlob blob = Naming(room);
    Array words(SafeArrayCreateVector(VT_I2, 0, 2));
    const SAFEARRAYBOUND bounds[] = {{2, 0}, {1, 0}};
    Array plane(SafeArrayCreate(VT_UI1, 2, bounds));
    Array none;
    EXPECT_FALSE(blob.Copy(&words.array));
    EXPECT_FALSE(blob.Copy(&plane.array));
    EXPECT_FALSE(blob.Copy(&none.array));
    EXPECT_FALSE(blob.Copy(static_cast<tagSAFEARRAY**>(nullptr)));
    EXPECT_EQ(room, "ABCD");
    EXPECT_EQ(blob.m_nSize, 4u);
}

TEST(HXBlobArray, NothingFromAnArrayThatCannotBeLocked) {
    std::string room = "ABCD";
    HXBlob blob = Naming(room);
    Array bytes(BytesArray("xy"));
    bytes.array->cLocks = 65535;
    EXPECT_FALSE(blob.Copy(&bytes.array));
    EXPECT_EQ(bytes.array->cLocks, 65535u);
    bytes.array->cLocks = 0;
    EXPECT_EQ(room, "ABCD");
}

TEST(HXBlobArray, ArrivesThroughTheVirtualCopy) {
    struct Counting : HXBlob {
        using HXBlob::Copy;
        void Copy(const HXBlob& o) override {
            seen = Bytes(o);
            locks = array->cLocks;
        }
        std::string seen;
        ULONG locks = 0;
        SAFEARRAY* array = nullptr;
    };
    Array bytes(BytesArray("xyz"));
    Counting blob;
    blob.array = bytes.array;
    EXPECT_TRUE(static_cast<HXBlob&>(blob).Copy(&bytes.array));
    EXPECT_EQ(blob.seen, "xyz");
    EXPECT_EQ(blob.locks, 1u);
}

TEST(HXBlobArray, FalseWhenTheArrayCannotBeUnlockedAfterwards) {
    struct Unlocking : HXBlob {
        using HXBlob::Copy;
        void Copy(const HXBlob&) override { SafeArrayUnlock(array); }
        SAFEARRAY* array = nullptr;
    };
    Array bytes(BytesArray("xyz"));
    Unlocking blob;
    blob.array = bytes.array;
    EXPECT_FALSE(static_cast<HXBlob&>(blob).Copy(&bytes.array));
}

TEST(HXBlobArray, ExceptionLeavesNoLock) {
    struct Throwing : HXBlob {
        using HXBlob::Copy;
        void Copy(const HXBlob&) override { throw 1; }
        void CopyDataTo(unsigned char*) const override { throw 1; }
    };
    Array bytes(BytesArray("xyz"));
    Throwing blob;
    EXPECT_THROW(static_cast<HXBlob&>(blob).Copy(&bytes.array), int);
    EXPECT_EQ(bytes.array->cLocks, 0u);
    Array made;
    EXPECT_THROW(blob.CopyTo(&made.array), int);
    EXPECT_EQ(made.array->cLocks, 0u);
}

TEST(HXBlobArray, ToBytesFromZero) {
    std::string bytes = "abc";
    Array made;
    EXPECT_TRUE(Naming(bytes).CopyTo(&made.array));
    VARTYPE type = VT_EMPTY;
    SafeArrayGetVartype(made.array, &type);
    EXPECT_EQ(type, VT_UI1);
    EXPECT_EQ(made.array->cDims, 1);
    EXPECT_EQ(made.array->rgsabound[0].cElements, 3u);
    EXPECT_EQ(made.array->rgsabound[0].lLbound, 0);
    EXPECT_EQ(made.array->cLocks, 0u);
    EXPECT_EQ(std::memcmp(made.array->pvData, "abc", 3), 0);
}

TEST(HXBlobArray, ToAnEmptyArray) {
    Array made;
    EXPECT_TRUE(HXBlob().CopyTo(&made.array));
    EXPECT_EQ(made.array->rgsabound[0].cElements, 0u);
    EXPECT_FALSE(HXBlob().CopyTo(static_cast<tagSAFEARRAY**>(nullptr)));
}

TEST(HXBlobArray, ToZerosWithoutABlock) {
    Array made;
    EXPECT_TRUE(Blockless(3).CopyTo(&made.array));
    ASSERT_EQ(made.array->rgsabound[0].cElements, 3u);
    EXPECT_EQ(std::memcmp(made.array->pvData, "\0\0\0", 3), 0);
}

TEST(HXBlobArray, NoneWhereThereCannotBeOne) {
    Array made(BytesArray("old"));
    SAFEARRAY* target = made.array;
    EXPECT_FALSE(Blockless(0xFFFFFFFF).CopyTo(&target));
    EXPECT_EQ(target, nullptr);
}

TEST(HXBlobArray, WithoutElementsHasNoRoomForTheVirtualOperation) {
    struct Recording : HXBlob {
        void CopyDataTo(unsigned char* p) const override { seen = p; }
        mutable unsigned char byte = 0;
        mutable unsigned char* seen = &byte;
    };
    struct WithMoreElsewhere : Recording {
        ulong GetSize() override { return 4; }
    };
    Recording blob;
    WithMoreElsewhere larger;
    for (const Recording* each : {&blob, static_cast<Recording*>(&larger)}) {
        Array made;
        EXPECT_TRUE(each->CopyTo(&made.array));
        EXPECT_EQ(each->seen, nullptr);
    }
}

TEST(HXBlobArray, IsFilledFromMemoryByABlobWithMoreElsewhere) {
    struct Larger : HXBlob {
        ulong GetSize() override { return 4; }
        void CopyDataTo(unsigned char* p) const override { std::memset(p, 'k', 4); }
    };
    std::string bytes = "abc";
    Larger blob;
    blob.CopyShallow(Naming(bytes));
    Array made;
    EXPECT_TRUE(blob.CopyTo(&made.array));
    ASSERT_EQ(made.array->rgsabound[0].cElements, 3u);
    EXPECT_EQ(std::memcmp(made.array->pvData, "abc", 3), 0);
}

TEST(HXBlobArray, IsFilledByTheVirtualOperation) {
    struct Constant : HXBlob {
        void CopyDataTo(unsigned char* p) const override { std::memset(p, 'k', m_nSize); }
    };
    Constant blob;
    blob.m_nSize = 2;
    Array made;
    EXPECT_TRUE(blob.CopyTo(&made.array));
    EXPECT_EQ(std::memcmp(made.array->pvData, "kk", 2), 0);
}

}  // namespace
}  // namespace ZT
