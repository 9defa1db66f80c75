// The archive record of a real interval, over memory and over a file.

#include <zt/ranges/RangeR1.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/files/CFile.h>
#include <tests/Raises.h>
#include <tests/RangeMatchers.h>
#include <platform/files/Archived_test.hpp>
#include <platform/files/TestDirectory_test.hpp>

#include <string>

namespace ZT {
namespace {

using namespace testing_support;

const std::string kRecord("\0\0\0\0\0\0\xF0\x3F\0\0\0\0\0\0\x04\xC0", 16);

TEST(RangeR1Archive, RecordIsTheTwoLimitsInLittleEndianOrder) {
    RangeR1 range = External(1.0, -2.5);
    EXPECT_EQ(Stored([&](CArchive& ar) { range.Serialize(ar); }), kRecord);
}

TEST(RangeR1Archive, StoringLeavesTheRange) {
    RangeR1 range = External(1.0, -2.5);
    Stored([&](CArchive& ar) { range.Serialize(ar); });
    EXPECT_THAT(range, HasLimits(1.0, -2.5));
    EXPECT_TRUE(range.IsExternal());
}

TEST(RangeR1Archive, LoadingKeepsTheFlag) {
    for (const bool external : {false, true}) {
        RangeR1 range(5.0, 6.0);
        range.m_bExternal = external;
        Loaded(kRecord, [&](CArchive& ar) { range.Serialize(ar); });
        EXPECT_THAT(range, HasLimits(1.0, -2.5));
        EXPECT_EQ(range.IsExternal(), external);
    }
}

TEST(RangeR1Archive, LoadingTakesLimitsThatDifferByLessThanTheTolerance) {
    RangeR1 range(1.0 + 5e-11, -2.5);
    Loaded(kRecord, [&](CArchive& ar) { range.Serialize(ar); });
    EXPECT_THAT(range, HasLimits(1.0, -2.5));
}

TEST(RangeR1Archive, EveryLimitComesBackToTheBit) {
    for (const double limit : {0.0, -0.0, 0.1, 1e307, -1e307, 5e-324, zPi}) {
        RangeR1 range(limit, -limit);
        RangeR1 loaded;
        Loaded(Stored([&](CArchive& ar) { range.Serialize(ar); }),
               [&](CArchive& ar) { loaded.Serialize(ar); });
        EXPECT_THAT(loaded, HasLimits(limit, -limit));
    }
}

TEST(RangeR1Archive, EndAtEveryByteRaisesTheArchivesException) {
    for (std::size_t length = 0; length < kRecord.size(); ++length) {
        RangeR1 range(5.0, 6.0);
        const auto load = [&](CArchive& ar) { range.Serialize(ar); };
        EXPECT_EQ(LoadingCause(kRecord.substr(0, length), load), CArchiveException::endOfFile);
        // A limit is loaded whole or not at all.
        EXPECT_THAT(range, HasLimits(length < 8 ? 5.0 : 1.0, 6.0)) << length;
    }
}

TEST(RangeR1Archive, TravelsThroughAFile) {
    const TestDirectory directory;
    const std::string path = directory / "range";
    {
        CFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
        CArchive archive(&file, CArchive::store);
        RangeR1(1.0, -2.5).Serialize(archive);
        RangeR1(3.0, 4.0).Serialize(archive);
        archive.Close();
    }
    EXPECT_EQ(BytesOf(path).substr(0, 16), kRecord);
    EXPECT_EQ(BytesOf(path).size(), 32u);
    CFile file(path.c_str(), CFile::modeRead);
    CArchive archive(&file, CArchive::load);
    RangeR1 range;
    range.Serialize(archive);
    EXPECT_THAT(range, HasLimits(1.0, -2.5));
    range.Serialize(archive);
    EXPECT_THAT(range, HasLimits(3.0, 4.0));
}

TEST(RangeR1Archive, FileThatEndsEarlyRaisesTheArchivesException) {
    const TestDirectory directory;
    for (std::size_t length = 0; length < kRecord.size(); ++length) {
        MakeFile(directory / "range", kRecord.substr(0, length));
        CFile file((directory / "range").c_str(), CFile::modeRead);
        CArchive archive(&file, CArchive::load);
        RangeR1 range;
        EXPECT_EQ(ArchiveCauseOf([&] { range.Serialize(archive); }), CArchiveException::endOfFile);
    }
}

TEST(RangeR1Archive, FileOpenInTheOtherDirectionRaisesItsOwnException) {
    const TestDirectory directory;
    const std::string path = directory / "range";
    MakeFile(path, kRecord);
    RangeR1 range(5.0, 6.0);
    CFile forReading(path.c_str(), CFile::modeRead);
    CArchive storing(&forReading, CArchive::store);
    range.Serialize(storing);
    EXPECT_TRUE(Raises<CFileException>([&] { storing.Close(); }));
    storing.Abort();
    forReading.Close();
    CFile forWriting(path.c_str(), CFile::modeWrite);
    CArchive loading(&forWriting, CArchive::load);
    EXPECT_TRUE(Raises<CFileException>([&] { range.Serialize(loading); }));
    EXPECT_THAT(range, HasLimits(5.0, 6.0));
}

TEST(RangeR1Archive, ClosedArchiveRaisesTheInvalidArgumentException) {
    for (const UINT mode : {CArchive::store, CArchive::load}) {
        CMemFile memory;
        CArchive archive(&memory, mode);
        archive.Close();
        RangeR1 range(5.0, 6.0);
        EXPECT_TRUE(Raises<CInvalidArgException>([&] { range.Serialize(archive); }));
        EXPECT_THAT(range, HasLimits(5.0, 6.0));
    }
}

}  // namespace
}  // namespace ZT
