// The archive record of a set of blobs.

#include <gtest/gtest.h>
#include <platform/files/CArchive.h>
#include <zt/memory/BlobSet.h>
#include <platform/files/Archived_test.hpp>
#include <zt/frame/VirtualTable_test.hpp>
#include <zt/memory/Blob_test.hpp>

#include <cstddef>
#include <cstdint>

#include <sys/mman.h>

namespace ZT {
namespace {

// A count of two, then the records of a blob of 0x01020304 bytes with the flag and of one of 5
// bytes without it.
const std::string kCount = "\x02\0"s;
const std::string kFirst =
    "\0\0\0\0\0\0\0\0"
    "\x04\x03\x02\x01\0\0\0\0"
    "\0\0\0\0\0\0\0\0"
    "\x01\0\0\0\0\0\0\0"s;
const std::string kSecond =
    "\0\0\0\0\0\0\0\0"
    "\x05\0\0\0\0\0\0\0"
    "\0\0\0\0\0\0\0\0"
    "\0\0\0\0\0\0\0\0"s;
const std::string kRecord = kCount + kFirst + kSecond;

struct BlobSetArchive : testing::Test {
    std::string bytes = "abcde";

    /// A set of the two blobs, which name `bytes`.
    void Fill(BlobSet& set) {
        set.SetSize(2);
        set[0].CopyShallow(HXBlob(0x01020304u, AddressIn(bytes)));
        set[1].CopyShallow(Naming(bytes));
        set[0].m_bAutoDelete = true;
    }
    static std::string StoredSet(BlobSet& set) {
        return Stored([&](CArchive& ar) { set.Serialize(ar); });
    }
    static void Load(BlobSet& set, const std::string& record) {
        Loaded(record, [&](CArchive& ar) { set.Serialize(ar); });
    }
};

TEST_F(BlobSetArchive, RecordHasSizesAndFlagsAndNothingOfTheProcess) {
    BlobSet set;
    Fill(set);
    EXPECT_EQ(StoredSet(set), kRecord);
    EXPECT_EQ(set[0].m_pData, AddressIn(bytes));
    set.Reset();
}

TEST_F(BlobSetArchive, EmptySetIsACount) {
    BlobSet set;
    EXPECT_EQ(StoredSet(set), "\0\0"s);
}

TEST_F(BlobSetArchive, LoadingGivesAsManyEmptyBlobs) {
    BlobSet set;
    Load(set, kRecord);
    ASSERT_EQ(set.GetSize(), 2);
    for (const HXBlob& blob : set) {
        EXPECT_EQ(blob.m_nSize, 0u);
        EXPECT_EQ(blob.m_pData, nullptr);
        EXPECT_FALSE(blob.m_bAutoDelete);
    }
    EXPECT_EQ(set.GetLength(), 0u);
    EXPECT_FALSE(set.IsValid());
    EXPECT_EQ(set.GetPointer(0), nullptr);
}

TEST_F(BlobSetArchive, NothingInARecordIsBelieved) {
    const std::string hostile = "\x01\0"s + std::string(32, '\xFF');
    BlobSet set;
    Load(set, hostile);
    ASSERT_EQ(set.GetSize(), 1);
    EXPECT_EQ(set[0].m_nSize, 0u);
    EXPECT_EQ(set[0].m_pData, nullptr);
    EXPECT_FALSE(set[0].m_bAutoDelete);
    // The table of virtual operations is the blob's own.
    EXPECT_EQ(CallSlot<ulong>(&set[0], 0), 0u);
}

TEST_F(BlobSetArchive, LoadingFreesNoBlockThatWasThere) {
    BlobSet set;
    Fill(set);
    Load(set, kRecord);
    EXPECT_EQ(bytes, "abcde");
    EXPECT_EQ(set[0].m_pData, nullptr);
    EXPECT_FALSE(set[0].m_bAutoDelete);
    Load(set, "\0\0"s);
    EXPECT_EQ(set.GetSize(), 0);
}

TEST_F(BlobSetArchive, EndAtEveryByteRaisesTheArchivesException) {
    for (std::size_t length = 0; length < kRecord.size(); ++length) {
        BlobSet set;
        const auto load = [&](CArchive& ar) { set.Serialize(ar); };
        EXPECT_EQ(LoadingCause(kRecord.substr(0, length), load), CArchiveException::endOfFile)
            << length;
        EXPECT_EQ(set.GetLength(), 0u);
    }
}

TEST_F(BlobSetArchive, EndInTheRecordLeavesTheBlobsThatWereThere) {
    for (std::size_t length = 0; length < kRecord.size(); ++length) {
        BlobSet set;
        Fill(set);
        const auto load = [&](CArchive& ar) { set.Serialize(ar); };
        EXPECT_EQ(LoadingCause(kRecord.substr(0, length), load), CArchiveException::endOfFile);
        ASSERT_EQ(set.GetSize(), 2) << length;
        EXPECT_EQ(set[0].m_pData, AddressIn(bytes));
        EXPECT_EQ(set[0].m_nSize, 0x01020304u);
        EXPECT_TRUE(set[0].m_bAutoDelete);
        EXPECT_EQ(Bytes(set[1]), "abcde");
        EXPECT_FALSE(set[1].m_bAutoDelete);
        set.Reset();
    }
    EXPECT_EQ(bytes, "abcde");
}

TEST_F(BlobSetArchive, EndBehindASmallerCountHasEndedTheBlobsBehindIt) {
    BlobSet set;
    Fill(set);
    const auto load = [&](CArchive& ar) { set.Serialize(ar); };
    EXPECT_EQ(LoadingCause("\x01\0"s + kFirst.substr(1), load), CArchiveException::endOfFile);
    ASSERT_EQ(set.GetSize(), 1);
    EXPECT_EQ(set[0].m_pData, AddressIn(bytes));
    EXPECT_TRUE(set[0].m_bAutoDelete);
    set.Reset();
}

TEST_F(BlobSetArchive, SmallerCountFreesABlockThatABlobBehindItOwns) {
    // Large enough for memory of its own, which goes back to the system at once.
    constexpr ulong kLarge = ulong{64} << 20;
    BlobSet set;
    Fill(set);
    set[1].CopyShallow(HXBlob(kLarge));
    set[1].m_bAutoDelete = true;
    const auto block = reinterpret_cast<std::uintptr_t>(set[1].m_pData);
    Load(set, "\x01\0"s + kFirst);
    ASSERT_EQ(set.GetSize(), 1);
    EXPECT_EQ(set[0].m_pData, nullptr);
#if defined(__linux__) && !defined(__SANITIZE_ADDRESS__)
    // The second of its pages is gone; a leak checker tells otherwise.
    constexpr std::uintptr_t kPage = 4096;
    unsigned char inMemory = 0;
    EXPECT_NE(mincore(reinterpret_cast<void*>((block / kPage + 1) * kPage), 1, &inMemory), 0);
#else
    EXPECT_NE(block, 0u);
#endif
    EXPECT_EQ(bytes, "abcde");
}

TEST_F(BlobSetArchive, FalseCountRaisesTheArchivesException) {
    const std::string counts[] = {"\xFE\xFF"s, "\xFF\xFF\xFE\xFF\xFF\xFF"s,
                                  "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s};
    for (const std::string& count : counts) {
        BlobSet set;
        const auto load = [&](CArchive& ar) { set.Serialize(ar); };
        EXPECT_EQ(LoadingCause(count + kFirst, load), CArchiveException::endOfFile);
    }
}

TEST_F(BlobSetArchive, ManyBlobsComeInParts) {
    BlobSet set;
    set.SetSize(1000);
    for (int i = 0; i < 1000; ++i) set[i].m_nSize = static_cast<ulong>(i);
    const std::string record = StoredSet(set);
    ASSERT_EQ(record.size(), 2 + 32 * 1000u);
    EXPECT_EQ(record.substr(0, 2), "\xE8\x03");
    EXPECT_EQ(record.substr(2 + 32 * 999 + 8, 4), "\xE7\x03\0\0"s);
    EXPECT_EQ(record.substr(2 + 32 * 128 + 8, 4), "\x80\0\0\0"s);
    BlobSet loaded;
    Load(loaded, record);
    EXPECT_EQ(loaded.GetSize(), 1000);
}

TEST_F(BlobSetArchive, IsTheArraysOwn) {
    BlobSet set;
    Fill(set);
    CArray<HXBlob, HXBlob>& array = set;
    CObject& object = set;
    EXPECT_EQ(Stored([&](CArchive& ar) { array.Serialize(ar); }), kRecord);
    EXPECT_EQ(Stored([&](CArchive& ar) { object.Serialize(ar); }), kRecord);
    set.Reset();
}

}  // namespace
}  // namespace ZT
