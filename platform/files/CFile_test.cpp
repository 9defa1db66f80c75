#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <platform/files/CFile.h>
#include <platform/files/CFileStatus.h>
#include <platform/files/TestDirectory_test.hpp>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr UINT writing = CFile::modeCreate | CFile::modeWrite;

struct Files : testing::Test {
    TestDirectory directory;
    std::string path = directory / "a.bin";

    // Opens and tells the cause of a failure, 0 for success.
    static int OpenCause(CFile& file, const std::string& name, UINT flags) {
        CFileException error;
        return file.Open(name.c_str(), flags, &error) ? 0 : error.m_cause;
    }
};

std::string ReadAll(CFile& file) {
    std::string bytes(100, '#');
    bytes.resize(file.Read(bytes.data(), 100));
    return bytes;
}

bool IsRoot() {
    return geteuid() == 0;
}

}  // namespace

TEST(CFile, FlagsHaveTheirNumbers) {
    EXPECT_EQ(CFile::modeRead, 0u);
    EXPECT_EQ(CFile::modeWrite, 1u);
    EXPECT_EQ(CFile::modeReadWrite, 2u);
    EXPECT_EQ(CFile::shareExclusive, 0x10u);
    EXPECT_EQ(CFile::shareDenyWrite, 0x20u);
    EXPECT_EQ(CFile::shareDenyRead, 0x30u);
    EXPECT_EQ(CFile::shareDenyNone, 0x40u);
    EXPECT_EQ(CFile::modeCreate, 0x1000u);
    EXPECT_EQ(CFile::modeNoTruncate, 0x2000u);
    EXPECT_EQ(CFile::typeBinary, 0x8000u);
    EXPECT_EQ(CFile::begin, 0u);
    EXPECT_EQ(CFile::current, 1u);
    EXPECT_EQ(CFile::end, 2u);
}

TEST_F(Files, WhatIsWrittenIsReadAgain) {
    CFile file;
    ASSERT_TRUE(file.Open(path.c_str(), writing));
    file.Write("hello", 5);
    file.Close();
    ASSERT_TRUE(file.Open(path.c_str(), CFile::modeRead));
    EXPECT_EQ(file.GetLength(), 5u);
    EXPECT_EQ(ReadAll(file), "hello");
    EXPECT_EQ(ReadAll(file), "");
}

TEST_F(Files, CreateEmptiesAFileThatExists) {
    MakeFile(path, "old content");
    CFile(path.c_str(), writing).Write("new", 3);
    EXPECT_EQ(BytesOf(path), "new");
}

TEST_F(Files, CreateWithNoTruncateKeepsTheContent) {
    MakeFile(path, "old content");
    CFile(path.c_str(), writing | CFile::modeNoTruncate).Write("new", 3);
    EXPECT_EQ(BytesOf(path), "new content");
    const std::string fresh = directory / "fresh";
    CFile(fresh.c_str(), writing | CFile::modeNoTruncate).Write("x", 1);
    EXPECT_EQ(BytesOf(fresh), "x");
}

TEST_F(Files, WriteWithoutCreateNeedsAFileAndKeepsItsTail) {
    CFile file;
    EXPECT_EQ(OpenCause(file, path, CFile::modeWrite), CFileException::fileNotFound);
    EXPECT_FALSE(std::filesystem::exists(path));
    MakeFile(path, "old content");
    EXPECT_EQ(OpenCause(file, path, CFile::modeWrite | CFile::shareDenyWrite), 0);
    file.Write("new", 3);
    file.Close();
    EXPECT_EQ(BytesOf(path), "new content");
}

TEST_F(Files, ReadWriteDoesBoth) {
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeReadWrite);
    file.Write("abc", 3);
    file.SeekToBegin();
    EXPECT_EQ(ReadAll(file), "abc");
}

TEST_F(Files, FailedOpenTellsCauseCodeAndPath) {
    CFile file;
    CFileException error;
    EXPECT_FALSE(file.Open(path.c_str(), CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
    EXPECT_EQ(error.m_lOsError, ENOENT);
    EXPECT_EQ(error.m_strFileName.GetString(), path);
    EXPECT_EQ(file.m_hFile, CFile::hFileNull);
    EXPECT_STREQ(file.GetFilePath(), "");
}

TEST_F(Files, FailedOpenWithoutAnExceptionIsQuiet) {
    CFile file;
    EXPECT_FALSE(file.Open(path.c_str(), CFile::modeRead));
    EXPECT_FALSE(file.Open(nullptr, CFile::modeRead));
}

TEST_F(Files, MissingDirectoryIsABadPath) {
    CFile file;
    EXPECT_EQ(OpenCause(file, directory / "no/a.bin", CFile::modeRead), CFileException::badPath);
    EXPECT_EQ(OpenCause(file, directory / "no/a.bin", writing), CFileException::badPath);
    EXPECT_EQ(OpenCause(file, "", CFile::modeRead), CFileException::badPath);
}

TEST_F(Files, FileInThePlaceOfADirectoryIsABadPath) {
    MakeFile(path, "x");
    CFile file;
    EXPECT_EQ(OpenCause(file, path + "/b", CFile::modeRead), CFileException::badPath);
}

TEST_F(Files, DirectoryCannotBeOpened) {
    CFile file;
    EXPECT_EQ(OpenCause(file, directory.Path(), CFile::modeRead), CFileException::accessDenied);
    EXPECT_EQ(OpenCause(file, directory.Path(), CFile::modeWrite), CFileException::accessDenied);
}

// Permissions do not bind the superuser, so the check runs as somebody else.
TEST_F(Files, UnreadableFileIsDenied) {
    MakeFile(path, "x");
    chmod(path.c_str(), 0);
    chmod(directory.Path().c_str(), 0755);
    const auto openAsAnother = [this] {
        if (IsRoot() && setuid(65534) != 0) std::_Exit(100);
        CFile file;
        std::_Exit(OpenCause(file, path, CFile::modeRead));
    };
    EXPECT_EXIT(openAsAnother(), testing::ExitedWithCode(CFileException::accessDenied), "");
}

TEST_F(Files, ConstructorRaisesWhatOpenTells) {
    const Raised raised = RaisedBy([this] { CFile file(path.c_str(), CFile::modeRead); });
    EXPECT_EQ(raised.cause, CFileException::fileNotFound);
    EXPECT_EQ(raised.osError, ENOENT);
    EXPECT_EQ(raised.path, path);
}

TEST_F(Files, NamesOfAnOpenFile) {
    const std::string name = directory / "model.v2.bin";
    const CFile file(name.c_str(), writing);
    EXPECT_EQ(file.GetFilePath().GetString(), name);
    EXPECT_STREQ(file.GetFileName(), "model.v2.bin");
    EXPECT_STREQ(file.GetFileTitle(), "model.v2");
}

TEST_F(Files, NameWithoutAnEndingIsItsOwnTitle) {
    CFile file;
    file.SetFilePath("/x/model");
    EXPECT_STREQ(file.GetFileTitle(), "model");
    file.SetFilePath("/x/.hidden");
    EXPECT_STREQ(file.GetFileTitle(), ".hidden");
    file.SetFilePath("plain.txt");
    EXPECT_STREQ(file.GetFileName(), "plain.txt");
}

TEST_F(Files, RelativePathIsCompletedWhenOpened) {
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(directory.Path());
    const CFile file("rel.bin", writing);
    const std::string full = std::filesystem::current_path() / "rel.bin";
    std::filesystem::current_path(before);
    EXPECT_EQ(file.GetFilePath().GetString(), full);
}

TEST_F(Files, PathsAreUtf8) {
    const std::string name = directory / "\xE6\xA8\xA1\xE5\x9E\x8B \xC3\xA9.bin";
    CFile(name.c_str(), writing).Write("x", 1);
    EXPECT_EQ(BytesOf(name), "x");
    CFileStatus status;
    ASSERT_TRUE(CFile::GetStatus(name.c_str(), status));
    EXPECT_EQ(status.m_szFullName.GetString(), name);
    CFile::Remove(name.c_str());
    EXPECT_FALSE(std::filesystem::exists(name));
}

TEST_F(Files, SeekCountsFromStartPositionAndEnd) {
    MakeFile(path, "0123456789");
    CFile file(path.c_str(), CFile::modeRead);
    EXPECT_EQ(file.Seek(4, CFile::begin), 4u);
    EXPECT_EQ(file.Seek(3, CFile::current), 7u);
    EXPECT_EQ(file.Seek(-2, CFile::current), 5u);
    EXPECT_EQ(file.GetPosition(), 5u);
    EXPECT_EQ(ReadAll(file), "56789");
    EXPECT_EQ(file.Seek(-3, CFile::end), 7u);
    EXPECT_EQ(file.SeekToEnd(), 10u);
    file.SeekToBegin();
    EXPECT_EQ(file.GetPosition(), 0u);
}

TEST_F(Files, SeekBeforeTheStartIsRefusedAndMovesNothing) {
    MakeFile(path, "0123456789");
    CFile file(path.c_str(), CFile::modeRead);
    file.Seek(4, CFile::begin);
    EXPECT_EQ(CauseOf([&] { file.Seek(-5, CFile::current); }), CFileException::badSeek);
    EXPECT_EQ(CauseOf([&] { file.Seek(0, 3); }), CFileException::badSeek);
    EXPECT_EQ(file.GetPosition(), 4u);
}

TEST_F(Files, PositionsHave64Bits) {
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeReadWrite);
    const LONGLONG far = LONGLONG{5} << 32;
    EXPECT_EQ(file.Seek(far, CFile::begin), static_cast<ULONGLONG>(far));
    file.Write("x", 1);
    EXPECT_EQ(file.GetLength(), static_cast<ULONGLONG>(far) + 1);
    file.Seek(-2, CFile::end);
    EXPECT_EQ(ReadAll(file), std::string("\0x", 2));
    CFileStatus status;
    ASSERT_TRUE(CFile::GetStatus(path.c_str(), status));
    EXPECT_EQ(status.m_size, static_cast<ULONGLONG>(far) + 1);
}

TEST_F(Files, SetLengthCutsAndExtends) {
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeReadWrite);
    file.Write("abcdef", 6);
    file.SetLength(3);
    EXPECT_EQ(file.GetLength(), 3u);
    EXPECT_EQ(file.GetPosition(), 3u);
    file.SetLength(5);
    EXPECT_EQ(file.GetPosition(), 5u);
    file.Close();
    EXPECT_EQ(BytesOf(path), std::string("abc\0\0", 5));
}

TEST_F(Files, SetLengthOfAFileOpenForReadingIsDenied) {
    MakeFile(path, "abc");
    CFile file(path.c_str(), CFile::modeRead);
    EXPECT_EQ(CauseOf([&] { file.SetLength(1); }), CFileException::accessDenied);
    EXPECT_EQ(BytesOf(path), "abc");
}

TEST_F(Files, SetLengthBeyondAllFilesIsRefused) {
    CFile file(path.c_str(), writing);
    EXPECT_EQ(CauseOf([&] { file.SetLength(~ULONGLONG{0}); }), CFileException::diskFull);
}

TEST_F(Files, ReadingAFileOpenForWritingIsDenied) {
    CFile file(path.c_str(), writing);
    char byte = 0;
    EXPECT_EQ(CauseOf([&] { file.Read(&byte, 1); }), CFileException::accessDenied);
}

TEST_F(Files, WritingAFileOpenForReadingIsDenied) {
    MakeFile(path, "abc");
    CFile file(path.c_str(), CFile::modeRead);
    const Raised raised = RaisedBy([&] { file.Write("x", 1); });
    EXPECT_EQ(raised.cause, CFileException::accessDenied);
    EXPECT_EQ(raised.path, path);
    EXPECT_EQ(BytesOf(path), "abc");
}

TEST_F(Files, NothingToTransferIsNoFailure) {
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeReadWrite);
    file.Write(nullptr, 0);
    EXPECT_EQ(file.Read(nullptr, 0), 0u);
}

TEST(CFile, OperationsOnAClosedFileRaiseInvalidFile) {
    CFile file;
    char byte = 0;
    EXPECT_EQ(CauseOf([&] { file.Read(&byte, 1); }), CFileException::invalidFile);
    EXPECT_EQ(CauseOf([&] { file.Write(&byte, 1); }), CFileException::invalidFile);
    EXPECT_EQ(CauseOf([&] { file.Seek(0, CFile::begin); }), CFileException::invalidFile);
    EXPECT_EQ(CauseOf([&] { file.GetPosition(); }), CFileException::invalidFile);
    EXPECT_EQ(CauseOf([&] { file.GetLength(); }), CFileException::invalidFile);
    EXPECT_EQ(CauseOf([&] { file.SetLength(0); }), CFileException::invalidFile);
    EXPECT_EQ(CauseOf([&] { delete file.Duplicate(); }), CFileException::invalidFile);
    EXPECT_EQ(CauseOf([&] { file.LockRange(0, 1); }), CFileException::invalidFile);
    CFileStatus status;
    EXPECT_FALSE(file.GetStatus(status));
}

TEST(CFile, CloseAndAbortOfAClosedFileDoNothing) {
    CFile file;
    file.Close();
    file.Abort();
    EXPECT_EQ(file.m_hFile, CFile::hFileNull);
}

TEST_F(Files, ClosedFileHasNoHandleAndNoPath) {
    CFile file(path.c_str(), writing);
    EXPECT_NE(static_cast<HFILE>(file), CFile::hFileNull);
    file.Close();
    EXPECT_EQ(file.m_hFile, CFile::hFileNull);
    EXPECT_STREQ(file.GetFilePath(), "");
}

TEST_F(Files, CloseOfALostHandleRaisesInvalidFile) {
    CFile file(path.c_str(), writing);
    close(file.m_hFile);
    const Raised raised = RaisedBy([&] { file.Close(); });
    EXPECT_EQ(raised.cause, CFileException::invalidFile);
    EXPECT_EQ(raised.path, path);
    EXPECT_EQ(file.m_hFile, CFile::hFileNull);
}

TEST_F(Files, DestructorClosesTheHandle) {
    HFILE handle = CFile::hFileNull;
    {
        const CFile file(path.c_str(), writing);
        handle = file.m_hFile;
        EXPECT_NE(lseek(handle, 0, SEEK_CUR), -1);
    }
    EXPECT_EQ(lseek(handle, 0, SEEK_CUR), -1);
}

TEST_F(Files, OpeningAgainClosesTheFileBefore) {
    CFile file(path.c_str(), writing);
    const std::string other = directory / "b.bin";
    ASSERT_TRUE(file.Open(other.c_str(), writing));
    file.Write("b", 1);
    EXPECT_EQ(BytesOf(path), "");
    EXPECT_EQ(BytesOf(other), "b");
}

TEST_F(Files, FileOverAHandleTransfersThroughIt) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    CFile reader(ends[0]);
    {
        CFile writer(ends[1]);
        writer.Write("through", 7);
    }
    EXPECT_EQ(ReadAll(reader), "through");
    EXPECT_STREQ(reader.GetFilePath(), "");
    EXPECT_EQ(CauseOf([&] { reader.SeekToBegin(); }), CFileException::badSeek);
}

TEST_F(Files, LargeWriteIntoASlowPipeIsWhole) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const std::string sent(1 << 20, 'p');
    std::string received;
    std::thread slow([&] {
        CFile reader(ends[0]);
        std::string part(4096, 0);
        while (const UINT got = reader.Read(part.data(), 4096)) received.append(part, 0, got);
    });
    {
        CFile writer(ends[1]);
        writer.Write(sent.data(), static_cast<UINT>(sent.size()));
    }
    slow.join();
    EXPECT_EQ(received.size(), sent.size());
}

TEST_F(Files, DuplicateSharesThePosition) {
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeReadWrite);
    const std::unique_ptr<CFile> second(file.Duplicate());
    second->Write("abc", 3);
    EXPECT_EQ(file.GetPosition(), 3u);
    EXPECT_EQ(second->GetFilePath().GetString(), path);
    file.Close();
    second->SeekToBegin();
    EXPECT_EQ(ReadAll(*second), "abc");
}

TEST_F(Files, FullDiskIsTold) {
    CFile file;
    ASSERT_TRUE(file.Open("/dev/full", CFile::modeWrite));
    const Raised raised = RaisedBy([&] { file.Write("x", 1); });
    EXPECT_EQ(raised.cause, CFileException::diskFull);
    EXPECT_EQ(raised.osError, ENOSPC);
    EXPECT_EQ(raised.path, "/dev/full");
}

TEST_F(Files, LimitOnTheSizeIsAFullDisk) {
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = before;
    small.rlim_cur = 1000;
    setrlimit(RLIMIT_FSIZE, &small);
    const std::string bytes(1500, 'x');
    CFile file(path.c_str(), writing);
    const int cause = CauseOf([&] { file.Write(bytes.data(), 1500); });
    const ULONGLONG written = file.GetLength();
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_EQ(cause, CFileException::diskFull);
    EXPECT_EQ(written, 1000u);
}

TEST_F(Files, TooManyOpenFilesIsTold) {
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    rlimit none = before;
    none.rlim_cur = 0;
    setrlimit(RLIMIT_NOFILE, &none);
    CFile file;
    const int cause = OpenCause(file, path, writing);
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(cause, CFileException::tooManyOpenFiles);
}

TEST_F(Files, StatusOfAPath) {
    MakeFile(path, "12345");
    CFileStatus status;
    ASSERT_TRUE(CFile::GetStatus(path.c_str(), status));
    EXPECT_EQ(status.m_size, 5u);
    EXPECT_EQ(status.m_attribute, CFile::normal);
    EXPECT_EQ(status.m_szFullName.GetString(), path);
    const LONGLONG age = (CTime::GetCurrentTime() - status.m_mtime).GetTotalSeconds();
    EXPECT_GE(age, 0);
    EXPECT_LT(age, 60);
}

TEST_F(Files, StatusOfNoFileIsFalse) {
    CFileStatus status;
    EXPECT_FALSE(CFile::GetStatus(path.c_str(), status));
    EXPECT_FALSE(CFile::GetStatus("", status));
    EXPECT_FALSE(CFile::GetStatus(nullptr, status));
}

TEST_F(Files, StatusOfADirectoryADeviceAndAHiddenFile) {
    CFileStatus status;
    ASSERT_TRUE(CFile::GetStatus(directory.Path().c_str(), status));
    EXPECT_TRUE(status.m_attribute & CFile::directory);
    ASSERT_TRUE(CFile::GetStatus("/dev/null", status));
    EXPECT_TRUE(status.m_attribute & CFile::system);
    MakeFile(directory / ".h", "");
    ASSERT_TRUE(CFile::GetStatus((directory / ".h").c_str(), status));
    EXPECT_EQ(status.m_attribute, CFile::hidden);
}

TEST_F(Files, StatusOfAnOpenFile) {
    CFile file(path.c_str(), writing);
    file.Write("1234", 4);
    CFileStatus status;
    ASSERT_TRUE(file.GetStatus(status));
    EXPECT_EQ(status.m_size, 4u);
    EXPECT_EQ(status.m_szFullName.GetString(), path);
}

TEST_F(Files, SetStatusSetsTimesAndReadOnly) {
    MakeFile(path, "x");
    CFileStatus status;
    status.m_mtime = CTime(1000000000);
    status.m_atime = CTime(1100000000);
    status.m_attribute = CFile::readOnly;
    CFile::SetStatus(path.c_str(), status);
    CFileStatus now;
    ASSERT_TRUE(CFile::GetStatus(path.c_str(), now));
    EXPECT_EQ(now.m_mtime, status.m_mtime);
    EXPECT_EQ(now.m_atime, status.m_atime);
    EXPECT_EQ(now.m_attribute, CFile::readOnly);
    CFile::SetStatus(path.c_str(), CFileStatus());
    ASSERT_TRUE(CFile::GetStatus(path.c_str(), now));
    EXPECT_EQ(now.m_mtime, status.m_mtime);
    EXPECT_EQ(now.m_attribute, CFile::normal);
}

TEST_F(Files, SetStatusOfNoFileIsTold) {
    EXPECT_EQ(CauseOf([&] { CFile::SetStatus(path.c_str(), CFileStatus()); }),
              CFileException::fileNotFound);
}

TEST_F(Files, RenameMovesAFile) {
    MakeFile(path, "moved");
    CFile::Rename(path.c_str(), (directory / "b.bin").c_str());
    EXPECT_EQ(BytesOf(directory / "b.bin"), "moved");
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(Files, RenameDoesNotReplace) {
    MakeFile(path, "one");
    MakeFile(directory / "b.bin", "two");
    EXPECT_EQ(CauseOf([&] { CFile::Rename(path.c_str(), (directory / "b.bin").c_str()); }),
              CFileException::accessDenied);
    EXPECT_EQ(BytesOf(path), "one");
    EXPECT_EQ(BytesOf(directory / "b.bin"), "two");
}

TEST_F(Files, RenameOfNoFileOrIntoNoDirectoryIsTold) {
    const Raised raised = RaisedBy([&] { CFile::Rename(path.c_str(), (directory / "b").c_str()); });
    EXPECT_EQ(raised.cause, CFileException::fileNotFound);
    EXPECT_EQ(raised.path, path);
    MakeFile(path, "x");
    EXPECT_EQ(CauseOf([&] { CFile::Rename(path.c_str(), (directory / "no/b").c_str()); }),
              CFileException::badPath);
}

TEST_F(Files, RemoveTakesAFileAway) {
    MakeFile(path, "x");
    CFile::Remove(path.c_str());
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_EQ(CauseOf([&] { CFile::Remove(path.c_str()); }), CFileException::fileNotFound);
    EXPECT_EQ(CauseOf([&] { CFile::Remove((directory / "no/b").c_str()); }),
              CFileException::badPath);
}

TEST_F(Files, RemoveDoesNotTakeADirectory) {
    EXPECT_EQ(CauseOf([&] { CFile::Remove(directory.Path().c_str()); }),
              CFileException::accessDenied);
    EXPECT_TRUE(std::filesystem::exists(directory.Path()));
}

// Whether a second one may open a file that is open with `first`.
struct SharingCase {
    UINT first;
    UINT second;
    bool allowed;
};

class Sharing : public Files, public testing::WithParamInterface<SharingCase> {};

TEST_P(Sharing, IsAsBothTell) {
    MakeFile(path, "shared");
    CFile first;
    CFile second;
    ASSERT_EQ(OpenCause(first, path, GetParam().first), 0);
    EXPECT_EQ(OpenCause(second, path, GetParam().second),
              GetParam().allowed ? 0 : CFileException::sharingViolation);
    first.Close();
    second.Close();
    EXPECT_EQ(OpenCause(second, path, GetParam().second), 0);
}

constexpr UINT readNone = CFile::modeRead | CFile::shareDenyNone;
constexpr UINT writeNone = CFile::modeWrite | CFile::shareDenyNone;
constexpr UINT readDenyWrite = CFile::modeRead | CFile::shareDenyWrite;
constexpr UINT writeDenyWrite = CFile::modeWrite | CFile::shareDenyWrite;
constexpr UINT readDenyRead = CFile::modeRead | CFile::shareDenyRead;
constexpr UINT writeDenyRead = CFile::modeWrite | CFile::shareDenyRead;
constexpr UINT readExclusive = CFile::modeRead | CFile::shareExclusive;
constexpr UINT bothNone = CFile::modeReadWrite | CFile::shareDenyNone;

INSTANTIATE_TEST_SUITE_P(
    Files, Sharing,
    testing::Values(
        SharingCase{readNone, readNone, true}, SharingCase{writeNone, writeNone, true},
        SharingCase{readNone, writeNone, true}, SharingCase{bothNone, bothNone, true},
        SharingCase{readDenyWrite, readNone, true}, SharingCase{readDenyWrite, readDenyWrite, true},
        SharingCase{readDenyWrite, writeNone, false}, SharingCase{readDenyWrite, bothNone, false},
        SharingCase{writeNone, readDenyWrite, false}, SharingCase{writeDenyWrite, readNone, true},
        SharingCase{writeDenyWrite, writeDenyWrite, false},
        SharingCase{writeDenyWrite, writeNone, false}, SharingCase{writeDenyRead, readNone, false},
        SharingCase{writeDenyRead, writeNone, true}, SharingCase{readNone, readDenyRead, false},
        SharingCase{readExclusive, readNone, false}, SharingCase{readNone, readExclusive, false},
        SharingCase{writeNone, CFile::modeRead, false},
        SharingCase{CFile::modeRead, CFile::modeRead, false}));

TEST_F(Files, RefusedSharingEmptiesNothing) {
    MakeFile(path, "kept");
    const CFile first(path.c_str(), readDenyWrite);
    CFile second;
    EXPECT_FALSE(second.Open(path.c_str(), writing | CFile::shareDenyNone));
    EXPECT_EQ(BytesOf(path), "kept");
}

TEST_F(Files, LockedRangeIsRefusedToOthers) {
    MakeFile(path, "0123456789");
    CFile first(path.c_str(), bothNone);
    CFile second(path.c_str(), bothNone);
    first.LockRange(2, 4);
    EXPECT_EQ(CauseOf([&] { second.LockRange(5, 1); }), CFileException::lockViolation);
    second.LockRange(6, 2);
    second.UnlockRange(6, 2);
    first.UnlockRange(2, 4);
    second.LockRange(5, 1);
}

TEST_F(Files, LockToTheEndLeavesTheSharingAlone) {
    MakeFile(path, "0123456789");
    CFile first(path.c_str(), bothNone);
    CFile second(path.c_str(), bothNone);
    first.LockRange(0, 0);
    EXPECT_EQ(CauseOf([&] { second.LockRange(1000000, 1); }), CFileException::lockViolation);
    first.UnlockRange(0, 0);
    second.LockRange(1000000, 1);
    CFile third;
    EXPECT_EQ(OpenCause(third, path, readDenyWrite), CFileException::sharingViolation);
}
