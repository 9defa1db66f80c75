#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <platform/files/CArchive.h>
#include <platform/files/CMemFile.h>
#include <platform/object/CInvalidArgException.h>
#include <platform/time/CTime.h>
#include <platform/files/Archived_test.hpp>
#include <platform/files/TestDirectory_test.hpp>

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

std::string Bytes(std::initializer_list<int> bytes) {
    std::string text;
    for (const int byte : bytes) text += static_cast<char>(byte);
    return text;
}

template <class T>
T Load(const std::string& bytes) {
    T number{};
    Loaded(bytes, [&](CArchive& ar) { ar >> number; });
    return number;
}

template <class T>
std::string Store(T number) {
    return Stored([&](CArchive& ar) { ar << number; });
}

// Gives at most three bytes at a time, as a slow pipe does.
class Trickle : public CMemFile {
public:
    UINT Read(void* buffer, UINT count) override {
        return CMemFile::Read(buffer, std::min(count, 3U));
    }
};

// Refuses to be written.
class Refusing : public CMemFile {
public:
    int refused = 0;
    void Write(const void* /*buffer*/, UINT /*count*/) override {
        ++refused;
        AfxThrowFileException(CFileException::diskFull);
    }
};

class Counting : public CMemFile {
public:
    int writes = 0;
    void Write(const void* buffer, UINT count) override {
        ++writes;
        CMemFile::Write(buffer, count);
    }
};

}  // namespace

TEST(CArchive, NumbersAreLittleEndianWithoutTags) {
    EXPECT_EQ(Store(BYTE{0xFE}), Bytes({0xFE}));
    EXPECT_EQ(Store(char{'A'}), "A");
    EXPECT_EQ(Store(SHORT{-2}), Bytes({0xFE, 0xFF}));
    EXPECT_EQ(Store(WORD{0x0102}), Bytes({2, 1}));
    EXPECT_EQ(Store(char16_t{0x0102}), Bytes({2, 1}));
    EXPECT_EQ(Store(LONG{-2}), Bytes({0xFE, 0xFF, 0xFF, 0xFF}));
    EXPECT_EQ(Store(DWORD{0x01020304}), Bytes({4, 3, 2, 1}));
    EXPECT_EQ(Store(LONGLONG{-2}), Bytes({0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}));
    EXPECT_EQ(Store(ULONGLONG{0x0102030405060708}), Bytes({8, 7, 6, 5, 4, 3, 2, 1}));
    EXPECT_EQ(Store(1.0F), Bytes({0, 0, 0x80, 0x3F}));
    EXPECT_EQ(Store(-2.0), Bytes({0, 0, 0, 0, 0, 0, 0, 0xC0}));
    EXPECT_EQ(Store(true), Bytes({1}));
    EXPECT_EQ(Store(false), Bytes({0}));
}

TEST(CArchive, NumbersAreReadAgain) {
    EXPECT_EQ(Load<BYTE>(Bytes({0xFE})), 0xFE);
    EXPECT_EQ(Load<signed char>(Bytes({0xFE})), -2);
    EXPECT_EQ(Load<SHORT>(Bytes({0xFE, 0xFF})), -2);
    EXPECT_EQ(Load<DWORD>(Bytes({4, 3, 2, 1})), 0x01020304u);
    EXPECT_EQ(Load<LONGLONG>(Bytes({0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF})), -2);
    EXPECT_EQ(Load<long long>(Bytes({7, 0, 0, 0, 0, 0, 0, 0})), 7);
    EXPECT_EQ(Load<double>(Bytes({0, 0, 0, 0, 0, 0, 0, 0xC0})), -2.0);
    EXPECT_EQ(Load<float>(Bytes({0, 0, 0x80, 0x3F})), 1.0F);
}

TEST(CArchive, AnyByteButZeroIsTrue) {
    EXPECT_TRUE(Load<bool>(Bytes({1})));
    EXPECT_TRUE(Load<bool>(Bytes({0x80})));
    EXPECT_FALSE(Load<bool>(Bytes({0})));
}

TEST(CArchive, DoublesKeepAllTheirBits) {
    EXPECT_TRUE(std::isnan(Load<double>(Store(std::numeric_limits<double>::quiet_NaN()))));
    EXPECT_TRUE(std::signbit(Load<double>(Store(-0.0))));
    EXPECT_EQ(Load<double>(Store(9e306)), 9e306);
}

TEST(CArchive, NumbersTravelThroughABufferOfAnySize) {
    EXPECT_TRUE(rc::check([](const std::vector<std::uint64_t>& numbers, std::uint8_t size) {
        const std::string bytes = Stored(
            [&](CArchive& ar) {
                for (const std::uint64_t number : numbers)
                    ar << static_cast<BYTE>(number) << number << static_cast<WORD>(number);
            },
            size);
        RC_ASSERT(bytes.size() == 11 * numbers.size());
        CMemFile file;
        Fill(file, bytes);
        CArchive ar(&file, CArchive::load, 2 * size);
        for (const std::uint64_t number : numbers) {
            BYTE low = 0;
            std::uint64_t read = 0;
            WORD word = 0;
            ar >> low >> read >> word;
            RC_ASSERT(low == static_cast<BYTE>(number));
            RC_ASSERT(read == number);
            RC_ASSERT(word == static_cast<WORD>(number));
        }
    }));
}

TEST(CArchive, BytesTravelInPiecesOfAnySize) {
    EXPECT_TRUE(rc::check([](const std::string& piece, std::uint8_t repeats) {
        std::string all;
        const std::string bytes = Stored(
            [&](CArchive& ar) {
                for (int i = 0; i < repeats; ++i) {
                    ar.Write(piece.data(), static_cast<UINT>(piece.size()));
                    all += piece;
                }
            },
            128);
        RC_ASSERT(bytes == all);
        std::string read(all.size() + 10, 0);
        Loaded(
            bytes,
            [&](CArchive& ar) {
                const UINT first = ar.Read(read.data(), static_cast<UINT>(all.size() / 3));
                const UINT second =
                    ar.Read(read.data() + first, static_cast<UINT>(read.size()) - first);
                read.resize(first + second);
            },
            128);
        RC_ASSERT(read == all);
    }));
}

TEST(CArchive, DirectionIsWhatItWasMadeWith) {
    CMemFile file;
    const CArchive storing(&file, CArchive::store);
    EXPECT_TRUE(storing.IsStoring());
    EXPECT_FALSE(storing.IsLoading());
    const CArchive loading(&file, CArchive::load);
    EXPECT_TRUE(loading.IsLoading());
    EXPECT_FALSE(loading.IsStoring());
    EXPECT_EQ(loading.GetFile(), &file);
}

TEST(CArchive, ReadingFromAStoringArchiveRaisesWriteOnly) {
    CMemFile file;
    CArchive ar(&file, CArchive::store);
    double number = 0;
    CString text;
    CObject* object = nullptr;
    char bytes[4];
    EXPECT_EQ(ArchiveCauseOf([&] { ar >> number; }), CArchiveException::writeOnly);
    EXPECT_EQ(ArchiveCauseOf([&] { ar >> text; }), CArchiveException::writeOnly);
    EXPECT_EQ(ArchiveCauseOf([&] { ar >> object; }), CArchiveException::writeOnly);
    EXPECT_EQ(ArchiveCauseOf([&] { ar.Read(bytes, 4); }), CArchiveException::writeOnly);
    EXPECT_EQ(ArchiveCauseOf([&] { ar.Read(bytes, 0); }), CArchiveException::writeOnly);
    EXPECT_EQ(ArchiveCauseOf([&] { ar.EnsureRead(bytes, 4); }), CArchiveException::writeOnly);
    EXPECT_EQ(ArchiveCauseOf([&] { ar.ReadCount(); }), CArchiveException::writeOnly);
    EXPECT_EQ(ArchiveCauseOf([&] { ar.ReadString(text); }), CArchiveException::writeOnly);
    EXPECT_EQ(ArchiveCauseOf([&] { ar.ReadString(bytes, 3); }), CArchiveException::writeOnly);
    EXPECT_EQ(ArchiveCauseOf([&] { ar.ReadClass(); }), CArchiveException::writeOnly);
    EXPECT_EQ(ArchiveCauseOf([&] { ar.FillBuffer(1); }), CArchiveException::writeOnly);
}

TEST(CArchive, ReadingWhatIsStillBufferedRaisesWriteOnlyToo) {
    CMemFile file;
    CArchive ar(&file, CArchive::store);
    ar << 1.0 << 2.0;
    double number = 0;
    EXPECT_EQ(ArchiveCauseOf([&] { ar >> number; }), CArchiveException::writeOnly);
    ar.Close();
    EXPECT_EQ(file.GetLength(), 16u);
}

TEST(CArchive, WritingToALoadingArchiveRaisesReadOnly) {
    CMemFile file;
    Fill(file, std::string(100, 'x'));
    CArchive ar(&file, CArchive::load);
    BYTE first = 0;
    ar >> first;
    EXPECT_EQ(ArchiveCauseOf([&] { ar << 1.0; }), CArchiveException::readOnly);
    EXPECT_EQ(ArchiveCauseOf([&] { ar << CString("text"); }), CArchiveException::readOnly);
    EXPECT_EQ(ArchiveCauseOf([&] { ar << static_cast<const CObject*>(nullptr); }),
              CArchiveException::readOnly);
    EXPECT_EQ(ArchiveCauseOf([&] { ar.Write("x", 1); }), CArchiveException::readOnly);
    EXPECT_EQ(ArchiveCauseOf([&] { ar.Write("x", 0); }), CArchiveException::readOnly);
    EXPECT_EQ(ArchiveCauseOf([&] { ar.WriteCount(1); }), CArchiveException::readOnly);
    EXPECT_EQ(ArchiveCauseOf([&] { ar.WriteString("x"); }), CArchiveException::readOnly);
    EXPECT_EQ(ArchiveCauseOf([&] { ar.WriteClass(RUNTIME_CLASS(CFile)); }),
              CArchiveException::readOnly);
    ar.Close();
    EXPECT_EQ(BytesIn(file), std::string(100, 'x'));
}

TEST(CArchive, ExceptionsTellTheNameOfTheFile) {
    CMemFile file;
    file.SetFilePath("/models/a.bin");
    CArchive ar(&file, CArchive::load);
    EXPECT_STREQ(ar.m_strFileName, "/models/a.bin");
    try {
        ar << 1;
        FAIL() << "nothing was raised";
    } catch (CArchiveException* exception) {
        EXPECT_STREQ(exception->m_strFileName, "/models/a.bin");
        exception->Delete();
    }
}

TEST(CArchive, FileThatEndsWithinANumberRaisesEndOfFile) {
    EXPECT_EQ(LoadingCause(std::string(7, 'x'),
                           [](CArchive& ar) {
                               double number = 0;
                               ar >> number;
                           }),
              CArchiveException::endOfFile);
    EXPECT_EQ(LoadingCause("",
                           [](CArchive& ar) {
                               BYTE number = 0;
                               ar >> number;
                           }),
              CArchiveException::endOfFile);
}

TEST(CArchive, NumberThatCannotBeReadKeepsItsValue) {
    double number = 5;
    LoadingCause("1234567", [&](CArchive& ar) { ar >> number; });
    EXPECT_EQ(number, 5);
}

TEST(CArchive, ReadTellsHowManyBytesThereWere) {
    Loaded("12345", [](CArchive& ar) {
        char bytes[10];
        EXPECT_EQ(ar.Read(bytes, 0), 0u);
        EXPECT_EQ(ar.Read(bytes, 3), 3u);
        EXPECT_EQ(std::string(bytes, 3), "123");
        EXPECT_EQ(ar.Read(bytes, 10), 2u);
        EXPECT_EQ(std::string(bytes, 2), "45");
        EXPECT_EQ(ar.Read(bytes, 10), 0u);
    });
}

TEST(CArchive, EnsureReadOfTooFewBytesRaisesEndOfFile) {
    char bytes[5000] = "";
    EXPECT_EQ(LoadingCause("1234", [&](CArchive& ar) { ar.EnsureRead(bytes, 5); }),
              CArchiveException::endOfFile);
    EXPECT_EQ(LoadingCause("1234", [&](CArchive& ar) { ar.EnsureRead(bytes, 5000); }),
              CArchiveException::endOfFile);
    EXPECT_EQ(LoadingCause("1234", [&](CArchive& ar) { ar.EnsureRead(bytes, 4); }), 0);
}

TEST(CArchive, SlowFileIsReadToItsEnd) {
    Trickle file;
    std::string bytes(1000, 0);
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i);
    Fill(file, bytes);
    CArchive ar(&file, CArchive::load, 128);
    ULONGLONG number = 0;
    ar >> number;
    EXPECT_EQ(number, 0x0706050403020100u);
    std::string rest(2000, 0);
    rest.resize(ar.Read(rest.data(), 2000));
    EXPECT_EQ(rest, bytes.substr(8));
}

TEST(CArchive, LargeBlockGoesPastTheBufferInOrder) {
    Counting file;
    const std::string block(10000, 'b');
    CArchive ar(&file, CArchive::store, 256);
    ar << BYTE{1};
    ar.Write(block.data(), 10000);
    ar << BYTE{2};
    EXPECT_EQ(file.writes, 2);
    ar.Close();
    EXPECT_EQ(BytesIn(file), "\x01" + block + "\x02");
}

TEST(CArchive, SmallWritesAreGathered) {
    Counting file;
    CArchive ar(&file, CArchive::store);
    for (int i = 0; i < 512; ++i) ar << 1.0;
    EXPECT_EQ(file.writes, 0);
    ar << 1.0;
    EXPECT_EQ(file.writes, 1);
    ar.Close();
    EXPECT_EQ(file.writes, 2);
    EXPECT_EQ(file.GetLength(), 513u * 8);
}

TEST(CArchive, FlushWhileStoringHandsOverWhatIsBuffered) {
    CMemFile file;
    CArchive ar(&file, CArchive::store);
    EXPECT_TRUE(ar.IsBufferEmpty());
    ar << 1;
    EXPECT_FALSE(ar.IsBufferEmpty());
    EXPECT_EQ(file.GetLength(), 0u);
    ar.Flush();
    EXPECT_TRUE(ar.IsBufferEmpty());
    EXPECT_EQ(file.GetLength(), 4u);
}

TEST(CArchive, FlushWhileLoadingBringsTheFileToThePositionOfTheArchive) {
    CMemFile file;
    Fill(file, "0123456789");
    CArchive ar(&file, CArchive::load);
    WORD number = 0;
    ar >> number;
    EXPECT_EQ(file.GetPosition(), 10u);
    EXPECT_FALSE(ar.IsBufferEmpty());
    ar.Flush();
    EXPECT_TRUE(ar.IsBufferEmpty());
    EXPECT_EQ(file.GetPosition(), 2u);
    BYTE next = 0;
    ar >> next;
    EXPECT_EQ(next, '2');
}

TEST(CArchive, BeginsAtThePositionOfTheFileAndLeavesItWhereItEnds) {
    CMemFile file;
    Fill(file, "0123456789");
    file.Seek(4, CFile::begin);
    CArchive ar(&file, CArchive::load);
    BYTE number = 0;
    ar >> number;
    EXPECT_EQ(number, '4');
    ar.Close();
    EXPECT_EQ(file.GetPosition(), 5u);
}

TEST(CArchive, CloseLetsGoOfTheFile) {
    CMemFile file;
    CArchive ar(&file, CArchive::store);
    ar << 7;
    ar.Close();
    EXPECT_EQ(ar.GetFile(), nullptr);
    EXPECT_EQ(file.GetLength(), 4u);
    ar.Close();
}

TEST(CArchive, DestructorClosesTheArchive) {
    CMemFile file;
    { CArchive(&file, CArchive::store) << 7; }
    EXPECT_EQ(file.GetLength(), 4u);
}

TEST(CArchive, DestructorDropsWhatIsBufferedIfToldSo) {
    CMemFile file;
    { CArchive(&file, CArchive::store | CArchive::bNoFlushOnDelete) << 7; }
    EXPECT_EQ(file.GetLength(), 0u);
}

TEST(CArchive, AbortDropsWhatIsBuffered) {
    CMemFile file;
    CArchive ar(&file, CArchive::store);
    ar << 7;
    ar.Abort();
    EXPECT_EQ(ar.GetFile(), nullptr);
    EXPECT_EQ(file.GetLength(), 0u);
}

TEST(CArchive, TransfersAfterTheEndRaiseInvalidArgument) {
    CMemFile file;
    CArchive storing(&file, CArchive::store);
    storing.Close();
    EXPECT_THROW(storing << 1, CInvalidArgException*);
    EXPECT_THROW(storing.Write("x", 1), CInvalidArgException*);
    EXPECT_THROW(storing.Flush(), CInvalidArgException*);
    Fill(file, "0123456789");
    CArchive loading(&file, CArchive::load);
    BYTE number = 0;
    loading >> number;
    loading.Abort();
    EXPECT_THROW(loading >> number, CInvalidArgException*);
    EXPECT_THROW(loading.Read(&number, 1), CInvalidArgException*);
}

TEST(CArchive, NullFileRaisesInvalidArgument) {
    EXPECT_THROW(CArchive(nullptr, CArchive::store), CInvalidArgException*);
}

TEST(CArchive, RefusedWriteIsRaisedOnceAndDropped) {
    Refusing file;
    {
        CArchive ar(&file, CArchive::store);
        ar << 1;
        EXPECT_EQ(CauseOf([&] { ar.Close(); }), CFileException::diskFull);
    }
    EXPECT_EQ(file.refused, 1);
}

TEST(CArchive, DestructorRaisesNothing) {
    Refusing file;
    { CArchive(&file, CArchive::store) << 1; }
    EXPECT_EQ(file.refused, 1);
}

TEST(CArchive, FullDiskIsToldByClose) {
    CFile file("/dev/full", CFile::modeWrite);
    CArchive ar(&file, CArchive::store);
    ar << 1.0;
    EXPECT_EQ(CauseOf([&] { ar.Close(); }), CFileException::diskFull);
}

TEST(CArchive, FullDiskIsToldByALargeWrite) {
    CFile file("/dev/full", CFile::modeWrite);
    CArchive ar(&file, CArchive::store);
    const std::string block(10000, 'x');
    EXPECT_EQ(CauseOf([&] { ar.Write(block.data(), 10000); }), CFileException::diskFull);
}

TEST(CArchive, TravelsThroughAFile) {
    const TestDirectory directory;
    const std::string path = directory / "model \xC3\xA9.bin";
    {
        CFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
        CArchive ar(&file, CArchive::store);
        EXPECT_EQ(ar.m_strFileName.GetString(), path);
        for (int i = 0; i < 3000; ++i) ar << i << 0.5 * i;
        ar.Close();
    }
    EXPECT_EQ(BytesOf(path).size(), 36000u);
    CFile file(path.c_str(), CFile::modeRead);
    CArchive ar(&file, CArchive::load);
    int number = 0;
    double half = 0;
    for (int i = 0; i < 3000; ++i) {
        ar >> number >> half;
        ASSERT_EQ(number, i);
        ASSERT_EQ(half, 0.5 * i);
    }
    EXPECT_EQ(ArchiveCauseOf([&] { ar >> number; }), CArchiveException::endOfFile);
}

TEST(CArchive, FileOfTheWrongAccessRaisesTheExceptionOfTheFile) {
    const TestDirectory directory;
    const std::string path = directory / "a.bin";
    MakeFile(path, "12345678");
    CFile reading(path.c_str(), CFile::modeRead);
    CArchive storing(&reading, CArchive::store);
    storing << 1.0;
    EXPECT_EQ(CauseOf([&] { storing.Flush(); }), CFileException::accessDenied);
    reading.Close();
    CFile writing(path.c_str(), CFile::modeWrite);
    CArchive loading(&writing, CArchive::load);
    double number = 0;
    EXPECT_EQ(CauseOf([&] { loading >> number; }), CFileException::accessDenied);
}

TEST(CArchive, CallersBufferIsUsedIfItIsLargeEnough) {
    CMemFile file;
    BYTE buffer[128] = {};
    {
        CArchive ar(&file, CArchive::store, 128, buffer);
        ar << BYTE{0x77};
        EXPECT_EQ(buffer[0], 0x77);
    }
    BYTE small[64] = {};
    CArchive ar(&file, CArchive::store, 64, small);
    for (int i = 0; i < 128; ++i) ar << BYTE{1};
    EXPECT_EQ(small[0], 0);
}

TEST(CArchive, FillBufferBringsBytesIntoTheBuffer) {
    CMemFile file;
    Fill(file, std::string(1000, 'x'));
    CArchive ar(&file, CArchive::load, 128);
    ar.FillBuffer(100);
    EXPECT_FALSE(ar.IsBufferEmpty());
    EXPECT_EQ(ArchiveCauseOf([&] { ar.FillBuffer(129); }), CArchiveException::bufferFull);
    std::string rest(1000, 0);
    EXPECT_EQ(ar.Read(rest.data(), 1000), 1000u);
    EXPECT_EQ(ArchiveCauseOf([&] { ar.FillBuffer(1); }), CArchiveException::endOfFile);
}

TEST(CArchive, CountTakesAsManyBytesAsItNeeds) {
    const auto stored = [](DWORD_PTR count) {
        return Stored([count](CArchive& ar) { ar.WriteCount(count); });
    };
    EXPECT_EQ(stored(0), Bytes({0, 0}));
    EXPECT_EQ(stored(0xFFFE), Bytes({0xFE, 0xFF}));
    EXPECT_EQ(stored(0xFFFF), Bytes({0xFF, 0xFF, 0xFF, 0xFF, 0, 0}));
    EXPECT_EQ(stored(0x10000), Bytes({0xFF, 0xFF, 0, 0, 1, 0}));
    EXPECT_EQ(stored(0xFFFFFFFE), Bytes({0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF}));
    EXPECT_EQ(stored(0xFFFFFFFF),
              Bytes({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0}));
    EXPECT_EQ(stored(DWORD_PTR{1} << 32),
              Bytes({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 1, 0, 0, 0}));
}

TEST(CArchive, CountsAreReadAgain) {
    for (const DWORD_PTR count :
         {DWORD_PTR{0}, DWORD_PTR{0xFFFE}, DWORD_PTR{0xFFFF}, DWORD_PTR{0x10000},
          DWORD_PTR{0xFFFFFFFE}, DWORD_PTR{0xFFFFFFFF}, DWORD_PTR{1} << 32, ~DWORD_PTR{0}}) {
        const std::string bytes = Stored([count](CArchive& ar) { ar.WriteCount(count); });
        Loaded(bytes, [count](CArchive& ar) { EXPECT_EQ(ar.ReadCount(), count); });
    }
}

TEST(CArchive, CutCountRaisesEndOfFile) {
    const auto readCount = [](CArchive& ar) { ar.ReadCount(); };
    EXPECT_EQ(LoadingCause(Bytes({1}), readCount), CArchiveException::endOfFile);
    EXPECT_EQ(LoadingCause(Bytes({0xFF, 0xFF, 1, 2, 3}), readCount), CArchiveException::endOfFile);
    EXPECT_EQ(LoadingCause(std::string(13, '\xFF'), readCount), CArchiveException::endOfFile);
}

TEST(CArchive, TimesTravelAsTheirSeconds) {
    const CTime time(LONGLONG{5000000000});
    const CTimeSpan span(-7);
    const std::string bytes = Stored([&](CArchive& ar) { ar << time << span; });
    EXPECT_EQ(bytes.size(), 16u);
    Loaded(bytes, [&](CArchive& ar) {
        CTime readTime;
        CTimeSpan readSpan;
        ar >> readTime >> readSpan;
        EXPECT_EQ(readTime, time);
        EXPECT_EQ(readSpan, span);
    });
}
