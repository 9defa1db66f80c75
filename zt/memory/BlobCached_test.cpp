// Blobs that go to a temporary file.

#include <zt/memory/BlobCached.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/com/SafeArray.h>
#include <platform/files/CFile.h>
#include <platform/files/CMemFile.h>
#include <tests/Raises.h>
#include <platform/files/Archived_test.hpp>
#include <zt/frame/VirtualTable_test.hpp>
#include <zt/memory/Blob_test.hpp>
#include <zt/memory/TempDirectory_test.hpp>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <type_traits>

namespace ZT {
namespace {

using testing::StartsWith;

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
TEST(BlobCached, FieldsFollowThoseOfTheBlobInOrder) {
    EXPECT_EQ(offsetof(BlobCached, m_strCacheFile), sizeof(HXBlob));
    EXPECT_EQ(offsetof(BlobCached, m_bCaching), sizeof(HXBlob) + sizeof(CString));
    EXPECT_EQ(offsetof(BlobCached, m_bInMemory), sizeof(HXBlob) + sizeof(CString) + 1);
    EXPECT_TRUE((std::is_base_of_v<HXBlob, BlobCached>));
}
#pragma GCC diagnostic pop

TEST(BlobCached, StartsSmallAndEmpty) {
    BlobCached blob;
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
    EXPECT_FALSE(blob.m_bAutoDelete);
    EXPECT_TRUE(blob.m_strCacheFile.IsEmpty());
    EXPECT_FALSE(blob.m_bCaching);
    EXPECT_TRUE(blob.m_bInMemory);
    EXPECT_EQ(blob.GetSize(), 0u);
}

struct Cached : testing::Test {
    TempDirectory temporary;
    std::string large = Pattern(10001);
    std::string small = Pattern(10000);

    /// The bytes that `CopyDataTo` gives, for which there is room.
    static std::string Read(const BlobCached& blob, std::size_t size) {
        std::string bytes(size, '.');
        blob.CopyDataTo(AddressIn(bytes));
        return bytes;
    }

    static void ExpectNothingInMemory(const BlobCached& blob) {
        EXPECT_EQ(blob.m_nSize, 0u);
        EXPECT_EQ(blob.m_pData, nullptr);
    }

    /// A blob with `large` in its file.
    void Fill(BlobCached& blob) {
        blob.Copy(Naming(large));
        ASSERT_TRUE(blob.m_bCaching);
        ASSERT_FALSE(blob.m_bInMemory);
    }
};

TEST_F(Cached, TenThousandBytesStayInMemory) {
    BlobCached blob;
    blob.Copy(Naming(small));
    EXPECT_EQ(Bytes(blob), small);
    EXPECT_FALSE(blob.m_bCaching);
    EXPECT_TRUE(blob.m_bInMemory);
    EXPECT_EQ(blob.GetSize(), 10000u);
    EXPECT_EQ(temporary.FileCount(), 0u);
    EXPECT_EQ(Read(blob, 10000), small);
    EXPECT_EQ(Bytes(blob), small);
    blob.Delete();
}

TEST_F(Cached, OneMoreGoesToTheFile) {
    BlobCached blob;
    blob.Copy(Naming(large));
    ExpectNothingInMemory(blob);
    EXPECT_TRUE(blob.m_bCaching);
    EXPECT_FALSE(blob.m_bInMemory);
    EXPECT_EQ(blob.GetSize(), 10001u);
    EXPECT_EQ(temporary.OnlyFile(), blob.m_strCacheFile.GetString());
    EXPECT_THAT(std::filesystem::path(temporary.OnlyFile()).filename().string(),
                StartsWith("ztBlob"));
    EXPECT_EQ(BytesOf(temporary.OnlyFile()), large);
}

TEST_F(Cached, OperationsAreReachedThroughTheTable) {
    BlobCached blob;
    HXBlob& base = blob;
    base.Copy(Naming(large));
    EXPECT_EQ(CallSlot<ulong>(&blob, 0), 10001u);
    CMemFile file;
    EXPECT_TRUE(CallSlot<bool>(&blob, 3, static_cast<CFile*>(&file)));
    EXPECT_EQ(BytesIn(file), large);
    std::string bytes(10001, '.');
    CallSlot<void>(&blob, 4, AddressIn(bytes));
    EXPECT_EQ(bytes, large);
    BlobCached other;
    file.SeekToBegin();
    EXPECT_EQ(CallSlot<int>(&other, 2, static_cast<CFile*>(&file)), 10001);
    EXPECT_EQ(other.GetSize(), 10001u);
    std::unique_ptr<HXBlob> owned = std::make_unique<BlobCached>();
    owned->Copy(Naming(large));
    EXPECT_EQ(temporary.FileCount(), 3u);
    owned.reset();
    EXPECT_EQ(temporary.FileCount(), 2u);
}

TEST_F(Cached, CopyingOutFreesTheMemoryAgain) {
    BlobCached blob;
    Fill(blob);
    EXPECT_EQ(Read(blob, 10001), large);
    ExpectNothingInMemory(blob);
    EXPECT_EQ(Read(blob, 10001), large);
    blob.CopyDataTo(nullptr);
    ExpectNothingInMemory(blob);
}

TEST_F(Cached, WritingFreesTheMemoryAgain) {
    BlobCached blob;
    Fill(blob);
    for (int i = 0; i < 2; ++i) {
        CMemFile file;
        EXPECT_TRUE(blob.Write(file));
        EXPECT_EQ(BytesIn(file), large);
        ExpectNothingInMemory(blob);
    }
    const std::string path = temporary.Directory() / "copy";
    EXPECT_TRUE(blob.Write(CString(path.c_str())));
    EXPECT_EQ(BytesOf(path), large);
}

TEST_F(Cached, WriteThatFailsTellsSoAndFreesTheMemory) {
    BlobCached blob;
    Fill(blob);
    const CString path((temporary.Directory() / "read").c_str());
    MakeFile(path.GetString(), "abc");
    CFile forReading(path, CFile::modeRead);
    EXPECT_FALSE(blob.Write(forReading));
    ExpectNothingInMemory(blob);
    EXPECT_EQ(Read(blob, 10001), large);
}

TEST_F(Cached, SmallBlobStaysInMemoryWhenWritten) {
    BlobCached blob;
    blob.Copy(Naming(small));
    CMemFile file;
    EXPECT_TRUE(blob.Write(file));
    EXPECT_EQ(BytesIn(file), small);
    EXPECT_EQ(Bytes(blob), small);
    blob.Delete();
}

TEST_F(Cached, ReadingAFileCachesItsBytes) {
    const CString path((temporary.Directory() / "source").c_str());
    MakeFile(path.GetString(), large);
    BlobCached blob;
    EXPECT_TRUE(blob.HXBlob::Read(path));
    ExpectNothingInMemory(blob);
    EXPECT_EQ(blob.GetSize(), 10001u);
    BlobCached counted;
    CFile file(path, CFile::modeRead);
    EXPECT_EQ(counted.Read(file), 10001);
    MakeFile((temporary.Directory() / "small"), small);
    BlobCached other;
    EXPECT_TRUE(other.Read(CString((temporary.Directory() / "small").c_str())));
    EXPECT_FALSE(other.m_bCaching);
    EXPECT_EQ(Bytes(other), small);
    other.Delete();
}

TEST_F(Cached, LoadingBackKeepsTheBlobCached) {
    BlobCached blob;
    Fill(blob);
    blob.LoadCache();
    EXPECT_EQ(Bytes(blob), large);
    EXPECT_FALSE(blob.m_bInMemory);
    EXPECT_TRUE(blob.m_bCaching);
    std::filesystem::resize_file(temporary.OnlyFile(), 10005);
    EXPECT_EQ(blob.m_nSize, 10001u);
    EXPECT_EQ(blob.GetSize(), 10005u);
    blob.LoadCache();
    EXPECT_EQ(blob.m_nSize, 10005u);
    EXPECT_EQ(Read(blob, 10005), large + "\0\0\0\0"s);
    ExpectNothingInMemory(blob);
}

TEST_F(Cached, SizeIsTheLow32BitsOfTheFiles) {
    BlobCached blob;
    Fill(blob);
    std::filesystem::resize_file(temporary.OnlyFile(), (std::uintmax_t{1} << 32) + 3);
    EXPECT_EQ(blob.GetSize(), 3u);
    EXPECT_EQ(Read(blob, 3), large.substr(0, 3));
}

TEST_F(Cached, LoadingBackWhatIsNotCachedDoesNothing) {
    BlobCached blob;
    blob.Copy(Naming(small));
    unsigned char* const block = blob.m_pData;
    blob.LoadCache();
    EXPECT_EQ(blob.m_pData, block);
    blob.Delete();
}

TEST_F(Cached, BaseOperationsSeeWhatIsInMemory) {
    BlobCached blob;
    Fill(blob);
    EXPECT_TRUE(blob.ToCString().IsEmpty());
    EXPECT_FALSE(blob.IsValid());
    EXPECT_EQ(Stored([&](CArchive& ar) { blob.Serialize(ar); }), "\0\0\0\0"s);
}

TEST_F(Cached, ArrayOfBytesNeedsThemInMemory) {
    BlobCached blob;
    Fill(blob);
    SAFEARRAY* without = nullptr;
    EXPECT_TRUE(blob.CopyTo(&without));
    EXPECT_EQ(without->rgsabound[0].cElements, 0u);
    SafeArrayDestroy(without);
    blob.LoadCache();
    SAFEARRAY* with = nullptr;
    EXPECT_TRUE(blob.CopyTo(&with));
    ASSERT_EQ(with->rgsabound[0].cElements, 10001u);
    EXPECT_EQ(std::memcmp(with->pvData, large.data(), 10001), 0);
    SafeArrayDestroy(with);
    ExpectNothingInMemory(blob);
}

// Arrays that end with the test.
struct ArrayOf {
    explicit ArrayOf(const HXBlob& blob) { EXPECT_TRUE(blob.CopyTo(&array)); }
    ArrayOf(const ArrayOf&) = delete;
    ArrayOf& operator=(const ArrayOf&) = delete;
    ~ArrayOf() { SafeArrayDestroy(array); }
    std::string Content() const {
        return {static_cast<const char*>(array->pvData), array->rgsabound[0].cElements};
    }
    SAFEARRAY* array = nullptr;
};

TEST_F(Cached, ArrayTakesNothingFromAFileThatGrew) {
    BlobCached blob;
    Fill(blob);
    blob.LoadCache();
    std::filesystem::resize_file(temporary.OnlyFile(), 20000);
    EXPECT_EQ(ArrayOf(blob).Content(), large);
    EXPECT_EQ(Bytes(blob), large);
    blob.Delete();
}

TEST_F(Cached, ArrayTakesNothingFromALongerOldFile) {
    std::string old(20000, 'x');
    std::string other = Pattern(10500);
    BlobCached blob;
    blob.Copy(Naming(old));
    blob.Copy(Naming(other));
    ASSERT_EQ(blob.GetSize(), 20000u);
    EXPECT_EQ(ArrayOf(blob).Content(), other);
    EXPECT_EQ(Bytes(blob), other);
    blob.Delete();
}

TEST_F(Cached, ArrayIsZeroWhereAFileShrank) {
    BlobCached blob;
    Fill(blob);
    blob.LoadCache();
    std::filesystem::resize_file(temporary.OnlyFile(), 5);
    EXPECT_EQ(ArrayOf(blob).Content(), large.substr(0, 5) + std::string(9996, '\0'));
    ExpectNothingInMemory(blob);
}

TEST_F(Cached, DestructorRemovesTheFile) {
    {
        BlobCached blob;
        Fill(blob);
        EXPECT_EQ(temporary.FileCount(), 1u);
    }
    EXPECT_EQ(temporary.FileCount(), 0u);
}

TEST_F(Cached, DestructorOfASmallBlobTouchesNeitherFileNorBlock) {
    const std::string path = temporary.Directory() / "mine";
    MakeFile(path, "abc");
    std::string bytes = "abc";
    {
        BlobCached blob;
        blob.m_strCacheFile = path.c_str();
        blob.CopyShallow(Naming(bytes));
    }
    EXPECT_EQ(BytesOf(path), "abc");
    EXPECT_EQ(bytes, "abc");
    // A leak checker tells if this block is not freed.
    BlobCached freed;
    freed.Copy(Naming(small));
    freed.m_bAutoDelete = true;
}

TEST_F(Cached, CopyNamesBlockAndFile) {
    std::optional<BlobCached> first(std::in_place);
    Fill(*first);
    first->LoadCache();
    first->m_bAutoDelete = true;
    BlobCached second = *first;
    EXPECT_EQ(second.m_pData, first->m_pData);
    EXPECT_EQ(second.m_nSize, 10001u);
    EXPECT_FALSE(second.m_bAutoDelete);
    EXPECT_STREQ(second.m_strCacheFile, first->m_strCacheFile);
    EXPECT_TRUE(second.m_bCaching);
    EXPECT_FALSE(second.m_bInMemory);
    second.Reset();
    first.reset();
    EXPECT_EQ(temporary.FileCount(), 0u);
    EXPECT_EQ(second.GetSize(), 0u);
    EXPECT_EQ(Read(second, 3), "...");
}

TEST_F(Cached, AssignmentCopiesEverythingAndReleasesNothing) {
    BlobCached first;
    Fill(first);
    BlobCached second;
    Fill(second);
    const std::string left = second.m_strCacheFile.GetString();
    first.m_bAutoDelete = true;
    EXPECT_EQ(&(second = first), &second);
    EXPECT_TRUE(second.m_bAutoDelete);
    EXPECT_STREQ(second.m_strCacheFile, first.m_strCacheFile);
    EXPECT_EQ(temporary.FileCount(), 2u);
    EXPECT_EQ(BytesOf(left), large);
    second = BlobCached();
    EXPECT_FALSE(second.m_bCaching);
    EXPECT_TRUE(second.m_bInMemory);
    EXPECT_FALSE(second.m_bAutoDelete);
}

TEST_F(Cached, SmallBytesAfterLargeOnesRemoveTheFileForGood) {
    BlobCached blob;
    Fill(blob);
    blob.Copy(Naming(small));
    EXPECT_EQ(temporary.FileCount(), 0u);
    EXPECT_TRUE(blob.m_strCacheFile.IsEmpty());
    EXPECT_FALSE(blob.m_bCaching);
    EXPECT_FALSE(blob.m_bInMemory);
    EXPECT_EQ(blob.GetSize(), 10000u);
    EXPECT_EQ(Bytes(blob), small);
    // Once cached, it never is again: large bytes stay, and there is no file to ask.
    delete[] blob.Reset();
    blob.Copy(Naming(large));
    EXPECT_EQ(Bytes(blob), large);
    EXPECT_TRUE(blob.m_bCaching);
    EXPECT_EQ(blob.GetSize(), 0u);
    EXPECT_EQ(temporary.FileCount(), 0u);
    EXPECT_EQ(Read(blob, 10001), large);
    ExpectNothingInMemory(blob);
}

TEST_F(Cached, LargeBytesAfterLargeOnesStayInMemoryBesideTheOldFile) {
    BlobCached blob;
    Fill(blob);
    std::string other(20000, 'x');
    blob.Copy(Naming(other));
    EXPECT_EQ(Bytes(blob), other);
    EXPECT_EQ(blob.GetSize(), 10001u);
    EXPECT_EQ(BytesOf(temporary.OnlyFile()), large);
    EXPECT_EQ(Read(blob, 10001), large);
}

TEST_F(Cached, UpdateOfACachedBlobLooksAtMemoryAlone) {
    BlobCached blob;
    Fill(blob);
    blob.LoadCache();
    blob.UpdateCachingFlag();
    EXPECT_TRUE(blob.m_bCaching);
    EXPECT_EQ(temporary.FileCount(), 1u);
    blob.Delete();
    blob.UpdateCachingFlag();
    EXPECT_FALSE(blob.m_bCaching);
    EXPECT_EQ(temporary.FileCount(), 0u);
}

TEST_F(Cached, CacheTakesABlobThatWasMadeLarge) {
    BlobCached blob;
    static_cast<HXBlob&>(blob).Copy2(Naming(large));
    blob.Cache();
    EXPECT_EQ(Bytes(blob), large);
    EXPECT_EQ(temporary.FileCount(), 0u);
    blob.UpdateCachingFlag();
    EXPECT_TRUE(blob.m_bCaching);
    blob.Cache();
    ExpectNothingInMemory(blob);
    EXPECT_EQ(BytesOf(temporary.OnlyFile()), large);
}

TEST_F(Cached, CacheUsesAFileThatIsThere) {
    BlobCached blob;
    blob.m_strCacheFile = (temporary.Directory() / "mine").c_str();
    blob.Copy(Naming(large));
    EXPECT_EQ(temporary.OnlyFile(), temporary.Directory() / "mine");
    EXPECT_EQ(BytesOf(temporary.OnlyFile()), large);
}

TEST_F(Cached, WithoutAFileTheBytesStayInMemory) {
    TempDirectory::Name(temporary.Directory() / "missing");
    BlobCached blob;
    blob.Copy(Naming(large));
    EXPECT_EQ(Bytes(blob), large);
    EXPECT_TRUE(blob.m_bCaching);
    EXPECT_TRUE(blob.m_bInMemory);
    EXPECT_EQ(blob.GetSize(), 10001u);
    blob.LoadCache();
    EXPECT_EQ(Bytes(blob), large);
    // The next time that it succeeds, they go.
    TempDirectory::Name(temporary.Directory().Path());
    blob.Cache();
    ExpectNothingInMemory(blob);
    EXPECT_EQ(Read(blob, 10001), large);
}

TEST_F(Cached, WithoutAFileReadingOnceLosesTheBytes) {
    TempDirectory::Name(temporary.Directory() / "missing");
    BlobCached blob;
    blob.Copy(Naming(large));
    EXPECT_EQ(Read(blob, 10001), large);
    ExpectNothingInMemory(blob);
    EXPECT_EQ(blob.GetSize(), 0u);
}

TEST_F(Cached, WithoutAFileWritingOnceLosesTheBytes) {
    TempDirectory::Name(temporary.Directory() / "missing");
    BlobCached blob;
    blob.Copy(Naming(large));
    CMemFile file;
    EXPECT_TRUE(blob.Write(file));
    EXPECT_EQ(BytesIn(file), large);
    ExpectNothingInMemory(blob);
    EXPECT_EQ(blob.GetSize(), 0u);
}

TEST_F(Cached, SizeWithoutABlockGoesToTheFileAsZeros) {
    BlobCached blob;
    blob.Copy(Blockless(20000));
    ExpectNothingInMemory(blob);
    EXPECT_EQ(blob.GetSize(), 20000u);
    EXPECT_EQ(BytesOf(temporary.OnlyFile()), std::string(20000, '\0'));
}

TEST_F(Cached, FullDiskLosesTheBytesSilently) {
    BlobCached blob;
    {
        const FileSizeLimit full(4096);
        blob.Copy(Naming(large));
    }
    ExpectNothingInMemory(blob);
    EXPECT_FALSE(blob.m_bInMemory);
    EXPECT_EQ(BytesOf(temporary.OnlyFile()), large.substr(0, blob.GetSize()));
    EXPECT_LT(blob.GetSize(), 10001u);
}

TEST_F(Cached, FileThatDisappearedLeavesWhatIsInMemory) {
    BlobCached blob;
    Fill(blob);
    blob.LoadCache();
    std::filesystem::remove(temporary.OnlyFile());
    EXPECT_EQ(blob.GetSize(), 0u);
    blob.LoadCache();
    EXPECT_EQ(Bytes(blob), large);
    CMemFile file;
    EXPECT_TRUE(blob.Write(file));
    EXPECT_EQ(BytesIn(file), large);
    ExpectNothingInMemory(blob);
    CMemFile nothing;
    EXPECT_TRUE(blob.Write(nothing));
    EXPECT_EQ(nothing.GetLength(), 0u);
    EXPECT_EQ(Read(blob, 3), "...");
    EXPECT_TRUE(blob.m_bCaching);
}

TEST_F(Cached, DirectoryInThePlaceOfTheFileIsLikeNoFile) {
    BlobCached blob;
    Fill(blob);
    const std::string path = temporary.OnlyFile();
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_EQ(Read(blob, 3), "...");
    blob.DeleteCache();
    EXPECT_TRUE(blob.m_strCacheFile.IsEmpty());
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(Cached, DeletingTheCacheKeepsTheFlags) {
    BlobCached blob;
    Fill(blob);
    blob.DeleteCache();
    EXPECT_EQ(temporary.FileCount(), 0u);
    EXPECT_TRUE(blob.m_strCacheFile.IsEmpty());
    EXPECT_TRUE(blob.m_bCaching);
    EXPECT_FALSE(blob.m_bInMemory);
    EXPECT_EQ(blob.GetSize(), 0u);
    blob.DeleteCache();
    EXPECT_TRUE(blob.m_bCaching);
}

}  // namespace
}  // namespace ZT
