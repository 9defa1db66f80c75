#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <platform/files/CFileStatus.h>
#include <platform/files/CMemFile.h>
#include <platform/object/CInvalidArgException.h>
#include <platform/object/CMemoryException.h>
#include <platform/object/CNotSupportedException.h>
#include <platform/files/TestDirectory_test.hpp>

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

// Shows the block and its requests.
class Watched : public CMemFile {
public:
    using CMemFile::CMemFile;
    SIZE_T Room() const { return m_nBufferSize; }
    int requests = 0;
    int freed = 0;
    bool refuse = false;
    ~Watched() override { Close(); }

protected:
    BYTE* Alloc(SIZE_T bytes) override {
        ++requests;
        return refuse ? nullptr : CMemFile::Alloc(bytes);
    }
    BYTE* Realloc(BYTE* block, SIZE_T bytes) override {
        ++requests;
        return refuse ? nullptr : CMemFile::Realloc(block, bytes);
    }
    void Free(BYTE* block) override {
        ++freed;
        CMemFile::Free(block);
    }
};

std::string ReadAll(CFile& file) {
    std::string bytes(file.GetLength() + 1, '#');
    bytes.resize(file.Read(bytes.data(), static_cast<UINT>(bytes.size())));
    return bytes;
}

std::string ContentOf(CFile& file) {
    file.SeekToBegin();
    return ReadAll(file);
}

}  // namespace

TEST(CMemFile, BeginsEmpty) {
    CMemFile file;
    EXPECT_EQ(file.GetLength(), 0u);
    EXPECT_EQ(file.GetPosition(), 0u);
    EXPECT_EQ(ReadAll(file), "");
    EXPECT_EQ(file.Detach(), nullptr);
}

TEST(CMemFile, WhatIsWrittenIsReadAgain) {
    CMemFile file;
    file.Write("hello", 5);
    EXPECT_EQ(file.GetPosition(), 5u);
    EXPECT_EQ(ContentOf(file), "hello");
}

TEST(CMemFile, WritingInTheMiddleKeepsTheRest) {
    CMemFile file;
    file.Write("0123456789", 10);
    file.Seek(3, CFile::begin);
    file.Write("ab", 2);
    EXPECT_EQ(file.GetLength(), 10u);
    EXPECT_EQ(ContentOf(file), "012ab56789");
}

TEST(CMemFile, GrowsByMultiplesOfTheStep) {
    Watched file(100);
    file.Write("x", 1);
    EXPECT_EQ(file.Room(), 100u);
    const std::string more(150, 'y');
    file.Write(more.data(), 150);
    EXPECT_EQ(file.Room(), 200u);
    EXPECT_EQ(ContentOf(file), "x" + more);
}

TEST(CMemFile, LongFileInSmallPiecesAsksForMemoryRarely) {
    Watched file(16);
    for (int i = 0; i < 100000; ++i) file.Write("z", 1);
    EXPECT_EQ(file.GetLength(), 100000u);
    EXPECT_LT(file.requests, 40);
}

TEST(CMemFile, WithoutAStepCannotGrow) {
    CMemFile file(0U);
    EXPECT_THROW(file.Write("x", 1), CMemoryException*);
    EXPECT_EQ(file.GetLength(), 0u);
}

TEST(CMemFile, RefusedMemoryRaisesTheMemoryExceptionAndKeepsTheContent) {
    Watched file(8);
    file.Write("12345678", 8);
    file.refuse = true;
    EXPECT_THROW(file.Write("9", 1), CMemoryException*);
    EXPECT_EQ(file.GetPosition(), 8u);
    EXPECT_EQ(ContentOf(file), "12345678");
}

TEST(CMemFile, HugeLengthRaisesTheMemoryException) {
    CMemFile file;
    EXPECT_THROW(file.SetLength(~ULONGLONG{0}), CMemoryException*);
    EXPECT_EQ(file.GetLength(), 0u);
}

TEST(CMemFile, SeekCountsFromStartPositionAndEnd) {
    CMemFile file;
    file.Write("0123456789", 10);
    EXPECT_EQ(file.Seek(4, CFile::begin), 4u);
    EXPECT_EQ(file.Seek(-1, CFile::current), 3u);
    EXPECT_EQ(file.Seek(-2, CFile::end), 8u);
    EXPECT_EQ(ReadAll(file), "89");
}

TEST(CMemFile, SeekBeforeTheStartIsRefusedAndMovesNothing) {
    CMemFile file;
    file.Write("01234", 5);
    EXPECT_EQ(CauseOf([&] { file.Seek(-6, CFile::current); }), CFileException::badSeek);
    EXPECT_EQ(CauseOf([&] { file.Seek(-1, CFile::begin); }), CFileException::badSeek);
    EXPECT_EQ(CauseOf([&] { file.Seek(INT64_MAX, CFile::end); }), CFileException::badSeek);
    EXPECT_EQ(CauseOf([&] { file.Seek(0, 3); }), CFileException::badSeek);
    EXPECT_EQ(file.GetPosition(), 5u);
}

TEST(CMemFile, WriteBehindTheEndFillsTheGapWithZeros) {
    CMemFile file;
    file.Write("a", 1);
    file.Seek(3, CFile::begin);
    EXPECT_EQ(ReadAll(file), "");
    file.Write("b", 1);
    EXPECT_EQ(ContentOf(file), std::string("a\0\0b", 4));
}

TEST(CMemFile, SetLengthCutsAndExtendsByZeros) {
    CMemFile file;
    file.Write("abcdef", 6);
    file.SetLength(2);
    EXPECT_EQ(file.GetPosition(), 2u);
    file.SetLength(4);
    EXPECT_EQ(file.GetPosition(), 2u);
    EXPECT_EQ(ContentOf(file), std::string("ab\0\0", 4));
}

TEST(CMemFile, AttachedBytesAreTheContent) {
    char bytes[] = "attached";
    CMemFile file(reinterpret_cast<BYTE*>(bytes), 8);
    EXPECT_EQ(file.GetLength(), 8u);
    EXPECT_EQ(ReadAll(file), "attached");
}

TEST(CMemFile, WritingIntoAttachedBytesChangesThem) {
    char bytes[] = "attached";
    CMemFile file(reinterpret_cast<BYTE*>(bytes), 8);
    file.Write("detA", 4);
    EXPECT_STREQ(bytes, "detAched");
}

TEST(CMemFile, AttachedBytesDoNotGrow) {
    char bytes[] = "1234";
    CMemFile file(reinterpret_cast<BYTE*>(bytes), 4);
    file.SeekToEnd();
    EXPECT_THROW(file.Write("5", 1), CMemoryException*);
    EXPECT_EQ(ContentOf(file), "1234");
}

TEST(CMemFile, AttachedBytesAreNotFreed) {
    Watched file;
    BYTE bytes[4] = {1, 2, 3, 4};
    file.Attach(bytes, 4);
    file.Close();
    EXPECT_EQ(file.freed, 0);
}

TEST(CMemFile, AttachFreesTheBlockBefore) {
    Watched file;
    file.Write("x", 1);
    BYTE bytes[4] = {1, 2, 3, 4};
    file.Attach(bytes, 4);
    EXPECT_EQ(file.freed, 1);
    EXPECT_EQ(file.GetPosition(), 0u);
    EXPECT_EQ(file.GetLength(), 4u);
}

TEST(CMemFile, AttachedWithAStepBeginsEmptyAndGrows) {
    auto* block = static_cast<BYTE*>(std::malloc(4));
    CMemFile file(block, 4, 8);
    EXPECT_EQ(file.GetLength(), 0u);
    file.Write("0123456789", 10);
    EXPECT_EQ(ContentOf(file), "0123456789");
    std::free(file.Detach());
}

TEST(CMemFile, AttachOfNoBytesWithASizeRaisesInvalidArgument) {
    CMemFile file;
    EXPECT_THROW(file.Attach(nullptr, 4), CInvalidArgException*);
    file.Attach(nullptr, 0);
    EXPECT_EQ(file.GetLength(), 0u);
}

TEST(CMemFile, DetachHandsOverTheBlock) {
    CMemFile file;
    file.Write("bytes", 5);
    BYTE* block = file.Detach();
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::memcmp(block, "bytes", 5), 0);
    std::free(block);
    EXPECT_EQ(file.GetLength(), 0u);
    EXPECT_THROW(file.Write("x", 1), CMemoryException*);
}

TEST(CMemFile, CloseEmptiesAndFrees) {
    Watched file;
    file.Write("x", 1);
    file.Flush();
    file.Close();
    EXPECT_EQ(file.freed, 1);
    EXPECT_EQ(file.GetLength(), 0u);
}

TEST(CMemFile, AbortEmptiesAndFrees) {
    Watched file;
    file.Write("x", 1);
    file.Abort();
    EXPECT_EQ(file.freed, 1);
    EXPECT_EQ(file.GetLength(), 0u);
}

TEST(CMemFile, DuplicatingAndLockingAreNotSupported) {
    CMemFile file;
    EXPECT_THROW(file.Duplicate(), CNotSupportedException*);
    EXPECT_THROW(file.LockRange(0, 1), CNotSupportedException*);
    EXPECT_THROW(file.UnlockRange(0, 1), CNotSupportedException*);
}

TEST(CMemFile, StatusTellsTheSize) {
    CMemFile file;
    file.Write("abc", 3);
    CFileStatus status;
    status.m_attribute = CFile::directory;
    EXPECT_TRUE(file.GetStatus(status));
    EXPECT_EQ(status.m_size, 3u);
    EXPECT_EQ(status.m_attribute, CFile::normal);
    EXPECT_EQ(status.m_mtime, CTime());
}

TEST(CMemFile, IsAFile) {
    CMemFile file;
    EXPECT_TRUE(file.IsKindOf(RUNTIME_CLASS(CFile)));
    EXPECT_EQ(file.m_hFile, CFile::hFileNull);
    EXPECT_STREQ(file.GetFilePath(), "");
}
