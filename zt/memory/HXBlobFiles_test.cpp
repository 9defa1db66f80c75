// Blobs in files.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/files/CFile.h>
#include <platform/files/CMemFile.h>
#include <tests/Raises.h>
#include <zt/memory/HXBlob.h>
#include <zt/memory/detail/BlobFiles.h>
#include <zt/memory/Blob_test.hpp>
#include <zt/memory/TempDirectory_test.hpp>

#include <cstdint>
#include <filesystem>
#include <memory>

namespace ZT {
namespace {

using testing::EndsWith;
using testing::StartsWith;
using testing_support::Raises;

struct HXBlobFile : testing::Test {
    TestDirectory directory;
    const std::string path = directory / "bytes";
    const CString name{path.c_str()};

    /// The file, open for reading at `position`.
    std::unique_ptr<CFile> Open(const std::string& bytes, LONGLONG position = 0) {
        MakeFile(path, bytes);
        auto file = std::make_unique<CFile>(path.c_str(), CFile::modeRead);
        file->Seek(position, CFile::begin);
        return file;
    }
};

// Tells in which order it was asked to read and write.
struct Watching : HXBlob {
    using HXBlob::Read;
    using HXBlob::Write;
    int Read(CFile&) override { return ++reads; }
    bool Write(CFile& f) override {
        ++writes;
        f.Write("watched", 7);
        return result;
    }
    int reads = 0;
    int writes = 0;
    bool result = true;
};

TEST_F(HXBlobFile, ReadTakesTheWholeFileIntoANewBlock) {
    Own blob("old"s);
    EXPECT_EQ(blob.Read(*Open("abcdef")), 6);
    EXPECT_EQ(Bytes(blob), "abcdef");
    EXPECT_TRUE(blob.m_bAutoDelete);
}

TEST_F(HXBlobFile, ReadBeginsAtTheFilesPosition) {
    Own blob;
    EXPECT_EQ(blob.Read(*Open("abcdef", 4)), 2);
    EXPECT_EQ(Bytes(blob), "ef");
}

TEST_F(HXBlobFile, NothingToReadGivesNothing) {
    Own blob("old"s);
    EXPECT_EQ(blob.Read(*Open("")), 0);
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
    Own behind("old"s);
    EXPECT_EQ(behind.Read(*Open("abc", 3)), 0);
    EXPECT_EQ(behind.m_nSize, 0u);
    EXPECT_EQ(behind.m_pData, nullptr);
}

TEST_F(HXBlobFile, ReadFailureRaisesTheFilesExceptionAndFreesNothingTwice) {
    Own blob("old"s);
    MakeFile(path, "abc");
    CFile forWriting(path.c_str(), CFile::modeWrite);
    EXPECT_TRUE(Raises<CFileException>([&] { blob.Read(forWriting); }));
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
    CFile closed;
    Own kept("old"s);
    EXPECT_TRUE(Raises<CFileException>([&] { kept.Read(closed); }));
    EXPECT_EQ(Bytes(kept), "old");
}

TEST_F(HXBlobFile, LengthCountsWithItsLow32Bits) {
    MakeFile(path, "abcdef");
    std::filesystem::resize_file(path, (std::uintmax_t{1} << 32) + 3);
    Own blob;
    EXPECT_TRUE(blob.Read(name));
    EXPECT_EQ(Bytes(blob), "abc");
}

TEST_F(HXBlobFile, IsReadAndWrittenInOnePiece) {
    struct Counting : CMemFile {
        UINT Read(void* to, UINT n) override { return ++reads, CMemFile::Read(to, n); }
        void Write(const void* from, UINT n) override { ++writes, CMemFile::Write(from, n); }
        int reads = 0;
        int writes = 0;
    };
    std::string bytes = Pattern(100000);
    Counting file;
    EXPECT_TRUE(Naming(bytes).Write(file));
    EXPECT_EQ(file.writes, 1);
    file.SeekToBegin();
    Own blob;
    EXPECT_EQ(blob.Read(file), 100000);
    EXPECT_EQ(file.reads, 1);
    EXPECT_TRUE(Bytes(blob) == bytes);
}

TEST_F(HXBlobFile, CountReplacesTheLengthOfTheFile) {
    Own blob;
    EXPECT_EQ(blob.ReadNonVirt(*Open("abcdef", 1), 0, 3), 3);
    EXPECT_EQ(Bytes(blob), "bcd");
    EXPECT_EQ(blob.ReadNonVirt(*Open("abcdef"), 0, 100), 6);
    EXPECT_EQ(Bytes(blob), "abcdef");
    EXPECT_EQ(blob.ReadNonVirt(*Open("abcdef"), 0, 0), 6);
    EXPECT_EQ(Bytes(blob), "abcdef");
}

TEST_F(HXBlobFile, OffsetIsOneInTheBlockNotInTheFile) {
    Own blob;
    // A file that is shorter than the count leaves the room.
    EXPECT_EQ(blob.ReadNonVirt(*Open("abcdef"), 2, 8), 6);
    EXPECT_EQ(blob.m_nSize, 6u);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(blob.m_pData + 2), 6), "abcdef");
}

TEST_F(HXBlobFile, ReadNonVirtDoesNotAskTheVirtualOne) {
    MakeFile(path, "abcdef");
    Watching blob;
    blob.m_bAutoDelete = true;
    EXPECT_TRUE(blob.ReadNonVirt(name, 0, 2));
    EXPECT_EQ(Bytes(blob), "ab");
    EXPECT_EQ(blob.reads, 0);
    EXPECT_TRUE(blob.Read(name));
    EXPECT_EQ(blob.reads, 1);
}

TEST_F(HXBlobFile, ReadOfAPathTellsOnlyWhetherItOpened) {
    Own blob("old"s);
    MakeFile(path, "");
    EXPECT_TRUE(blob.Read(name));
    EXPECT_EQ(blob.m_nSize, 0u);
}

TEST_F(HXBlobFile, PathThatCannotBeOpenedLeavesTheBlob) {
    Own blob("old"s);
    for (const std::string& bad : {directory / "missing", directory.Path().string()}) {
        EXPECT_FALSE(blob.Read(CString(bad.c_str())));
        EXPECT_FALSE(blob.ReadNonVirt(CString(bad.c_str()), 0, 0));
        EXPECT_EQ(Bytes(blob), "old");
    }
}

TEST_F(HXBlobFile, WriteMakesTheFile) {
    std::string bytes = "abc";
    HXBlob blob = Naming(bytes);
    EXPECT_TRUE(blob.Write(name));
    EXPECT_EQ(BytesOf(path), "abc");
    std::filesystem::remove(path);
    EXPECT_TRUE(blob.WriteNonVirt(name));
    EXPECT_EQ(BytesOf(path), "abc");
    std::filesystem::remove(path);
    EXPECT_TRUE(blob.Write(name, true));
    EXPECT_EQ(BytesOf(path), "abc");
}

TEST_F(HXBlobFile, WriteOverALongerFileKeepsItsTail) {
    std::string bytes = "abc";
    HXBlob blob = Naming(bytes);
    MakeFile(path, "ABCDEF");
    EXPECT_TRUE(blob.Write(name));
    EXPECT_EQ(BytesOf(path), "abcDEF");
    MakeFile(path, "ABCDEF");
    EXPECT_TRUE(blob.Write(name, false));
    EXPECT_EQ(BytesOf(path), "abcDEF");
    MakeFile(path, "ABCDEF");
    EXPECT_TRUE(blob.WriteNonVirt(name));
    EXPECT_EQ(BytesOf(path), "abcDEF");
    EXPECT_TRUE(blob.Write(name, true));
    EXPECT_EQ(BytesOf(path), "abc");
}

TEST_F(HXBlobFile, NothingIsWrittenWithoutBytes) {
    for (HXBlob blob : {HXBlob(), Blockless(3)}) {
        MakeFile(path, "ABC");
        EXPECT_TRUE(blob.Write(name));
        EXPECT_EQ(BytesOf(path), "ABC");
        EXPECT_TRUE(blob.Write(name, true));
        EXPECT_EQ(BytesOf(path), "");
    }
}

TEST_F(HXBlobFile, WriteToAFileGoesToItsPosition) {
    std::string bytes = "xy";
    CMemFile file;
    file.Write("abcdef", 6);
    file.Seek(1, CFile::begin);
    EXPECT_TRUE(Naming(bytes).Write(file));
    EXPECT_TRUE(Naming(bytes).WriteNonVirt(file));
    std::string content(6, '.');
    file.SeekToBegin();
    file.Read(content.data(), 6);
    EXPECT_EQ(content, "axyxyf");
}

TEST_F(HXBlobFile, WriteByPathIsTheVirtualOneAndItsResult) {
    Watching blob;
    EXPECT_TRUE(blob.Write(name));
    EXPECT_EQ(BytesOf(path), "watched");
    blob.result = false;
    EXPECT_FALSE(blob.Write(name));
    EXPECT_FALSE(blob.Write(name, true));
    EXPECT_EQ(blob.writes, 3);
    EXPECT_TRUE(blob.WriteNonVirt(name));
    EXPECT_EQ(blob.writes, 3);
}

TEST_F(HXBlobFile, FileThatTakesNothingGivesFalse) {
    std::string bytes = "abc";
    MakeFile(path, "ABC");
    CFile forReading(path.c_str(), CFile::modeRead);
    EXPECT_FALSE(Naming(bytes).Write(forReading));
    EXPECT_FALSE(Naming(bytes).WriteNonVirt(forReading));
}

TEST_F(HXBlobFile, OnlyFileExceptionsAreCaught) {
    struct Refusing : CMemFile {
        void Write(const void*, UINT) override { AfxThrowMemoryException(); }
    };
    std::string bytes = "abc";
    Refusing file;
    EXPECT_TRUE(Raises<CMemoryException>([&] { Naming(bytes).WriteNonVirt(file); }));
}

TEST_F(HXBlobFile, FullDiskGivesFalse) {
    std::string bytes = Pattern(5000);
    HXBlob blob = Naming(bytes);
    {
        const FileSizeLimit full(4096);
        EXPECT_FALSE(blob.Write(name));
        EXPECT_FALSE(blob.Write(name, true));
        EXPECT_FALSE(blob.WriteNonVirt(name));
    }
    EXPECT_TRUE(blob.Write(name));
    EXPECT_EQ(BytesOf(path), bytes);
}

TEST_F(HXBlobFile, FullDiskLeavesTheTailOfALongerFile) {
    MakeFile(path, std::string(10000, 'Z'));
    std::string bytes(5000, 'x');
    {
        const FileSizeLimit full(4096);
        EXPECT_FALSE(Naming(bytes).Write(name));
    }
    const std::string content = BytesOf(path);
    ASSERT_EQ(content.size(), 10000u);
    EXPECT_EQ(content.substr(4096), std::string(10000 - 4096, 'Z'));
}

TEST_F(HXBlobFile, FileThatAnotherWriterHoldsGivesFalse) {
    MakeFile(path, "ABCDEF");
    std::string bytes = "abc";
    HXBlob blob = Naming(bytes);
    const CFile other(name, CFile::modeWrite | CFile::shareDenyWrite);
    EXPECT_FALSE(blob.Write(name));
    EXPECT_FALSE(blob.Write(name, true));
    EXPECT_FALSE(blob.WriteNonVirt(name));
    EXPECT_EQ(BytesOf(path), "ABCDEF");
}

TEST_F(HXBlobFile, PathThatCannotBeWrittenGivesFalse) {
    std::string bytes = "abc";
    HXBlob blob = Naming(bytes);
    for (const std::string& bad : {directory.Path().string(), directory / "missing/file"}) {
        const CString badName(bad.c_str());
        EXPECT_FALSE(blob.Write(badName));
        EXPECT_FALSE(blob.Write(badName, true));
        EXPECT_FALSE(blob.WriteNonVirt(badName));
    }
}

TEST_F(HXBlobFile, OthersMayReadButNotWriteMeanwhile) {
    struct Trying : HXBlob {
        using HXBlob::Write;
        bool Write(CFile& f) override {
            const CString itsPath = f.GetFilePath();
            CFile other;
            canRead = other.Open(itsPath, CFile::modeRead | CFile::shareDenyNone);
            canWrite = other.Open(itsPath, CFile::modeWrite | CFile::shareDenyNone);
            return true;
        }
        bool canRead = false;
        bool canWrite = true;
    };
    for (const bool create : {false, true}) {
        MakeFile(path, "abc");
        Trying blob;
        EXPECT_TRUE(static_cast<HXBlob&>(blob).Write(name, create));
        EXPECT_TRUE(blob.canRead);
        EXPECT_FALSE(blob.canWrite);
    }
}

TEST(HXBlobTempFile, HasTheBytesUnderANewName) {
    const TempDirectory temporary;
    std::string bytes = "abc";
    HXBlob blob = Naming(bytes);
    const std::string path = blob.WriteToTempFile(nullptr).GetString();
    EXPECT_EQ(temporary.OnlyFile(), path);
    const std::string file = std::filesystem::path(path).filename();
    EXPECT_THAT(file, StartsWith("ztxl"));
    EXPECT_THAT(file, EndsWith(".tmp"));
    EXPECT_EQ(BytesOf(path), "abc");
    EXPECT_NE(blob.WriteToTempFile(nullptr).GetString(), path);
    EXPECT_EQ(temporary.FileCount(), 2u);
}

TEST(HXBlobTempFile, TakesAnotherEnding) {
    const TempDirectory temporary;
    std::string bytes = "abc";
    const std::string path = Naming(bytes).WriteToTempFile("txt").GetString();
    EXPECT_EQ(temporary.OnlyFile(), path);
    EXPECT_THAT(path, EndsWith(".txt"));
    EXPECT_EQ(BytesOf(path), "abc");
}

TEST(HXBlobTempFile, EmptyEndingLeavesThePoint) {
    const TempDirectory temporary;
    std::string bytes = "abc";
    const std::string path = Naming(bytes).WriteToTempFile("").GetString();
    EXPECT_EQ(temporary.OnlyFile(), path);
    EXPECT_EQ(path.back(), '.');
}

TEST(HXBlobTempFile, NothingWhereNoFileCanBeMade) {
    const TempDirectory temporary;
    TempDirectory::Name(temporary.Directory() / "missing");
    std::string bytes = "abc";
    EXPECT_TRUE(Naming(bytes).WriteToTempFile(nullptr).IsEmpty());
    EXPECT_EQ(temporary.FileCount(), 0u);
}

TEST(HXBlobTempFile, WriteThatFailsLeavesNoFile) {
    const TempDirectory temporary;
    Watching blob;
    blob.result = false;
    EXPECT_TRUE(blob.WriteToTempFile(nullptr).IsEmpty());
    EXPECT_TRUE(blob.WriteToTempFile("txt").IsEmpty());
    EXPECT_EQ(blob.writes, 2);
    EXPECT_EQ(temporary.FileCount(), 0u);
    std::string bytes = Pattern(5000);
    const FileSizeLimit full(4096);
    EXPECT_TRUE(Naming(bytes).WriteToTempFile(nullptr).IsEmpty());
    EXPECT_EQ(temporary.FileCount(), 0u);
}

TEST(HXBlobTempFile, EndingThatNamesNoPlaceRaisesTheFilesException) {
    const TempDirectory temporary;
    std::string bytes = "abc";
    HXBlob blob = Naming(bytes);
    EXPECT_TRUE(Raises<CFileException>([&] { blob.WriteToTempFile("no/such"); }));
    EXPECT_EQ(BytesOf(temporary.OnlyFile()), "");
}

TEST(HXBlobTempFile, NameWithoutAPointTakesNoEnding) {
    CString name = "/tmp/name";
    EXPECT_FALSE(memory::ReplaceEnding(name, "txt"));
    EXPECT_STREQ(name, "/tmp/name");
    name = "/a.b/na.me.tmp";
    EXPECT_TRUE(memory::ReplaceEnding(name, "txt"));
    EXPECT_STREQ(name, "/a.b/na.me.txt");
}

}  // namespace
}  // namespace ZT
