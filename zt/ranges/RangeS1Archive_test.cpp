// The archive record of an arc, over memory and over a file.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/files/CFile.h>
#include <tests/Raises.h>
#include <zt/ranges/RangeS1.h>
#include <zt/ranges/RangeS1Family_test.h>
#include <platform/files/Archived_test.hpp>
#include <platform/files/TestDirectory_test.hpp>

#include <string>

namespace ZT {
namespace {

using namespace testing_support;

const std::string kLimits("\0\0\0\0\0\0\xF0\x3F\0\0\0\0\0\0\x04\xC0", 16);
const std::string kRecord = kLimits + '\1';

std::string StoredArc(RangeS1 arc) {
    return Stored([&](CArchive& ar) { arc.Serialize(ar); });
}

TEST(RangeS1Archive, RecordIsTheLimitsAndOneByteForTheState) {
    EXPECT_EQ(StoredArc(ExternalArc(1.0, -2.5, RangeS1::eStateFull)), kLimits + '\0');
    EXPECT_EQ(StoredArc(RawArc(1.0, -2.5, RangeS1::eStateEmpty)), kLimits + '\1');
    EXPECT_EQ(StoredArc(RawArc(1.0, -2.5, RangeS1::eStatePartial)), kLimits + '\2');
}

TEST(RangeS1Archive, ByteOfNoOtherStateIsPartial) {
    EXPECT_EQ(RangeS1::ByteToState(0), RangeS1::eStateFull);
    EXPECT_EQ(RangeS1::ByteToState(1), RangeS1::eStateEmpty);
    EXPECT_EQ(RangeS1::ByteToState(2), RangeS1::eStatePartial);
    EXPECT_EQ(RangeS1::ByteToState(7), RangeS1::eStatePartial);
    EXPECT_EQ(RangeS1::ByteToState(255), RangeS1::eStatePartial);
}

TEST(RangeS1Archive, LoadingTakesLimitsAndStateAsTheyStand) {
    for (int byte = 0; byte < 256; ++byte) {
        RangeS1 arc = FullArc();
        Loaded(kLimits + static_cast<char>(byte), [&](CArchive& ar) { arc.Serialize(ar); });
        const auto state = byte == 0   ? RangeS1::eStateFull
                           : byte == 1 ? RangeS1::eStateEmpty
                                       : RangeS1::eStatePartial;
        ASSERT_THAT(arc, IsArc(1.0, -2.5, state)) << byte;
    }
}

TEST(RangeS1Archive, LoadingDoesNotReduceAndFindsNoFullCircle) {
    RangeS1 loaded;
    Loaded(StoredArc(RawArc(-zPi, zPi)), [&](CArchive& ar) { loaded.Serialize(ar); });
    EXPECT_THAT(loaded, IsPartial(-zPi, zPi));
    Loaded(StoredArc(RawArc(100.0, -100.0)), [&](CArchive& ar) { loaded.Serialize(ar); });
    EXPECT_THAT(loaded, IsPartial(100.0, -100.0));
}

TEST(RangeS1Archive, LoadingKeepsTheFlag) {
    for (const bool external : {false, true}) {
        RangeS1 arc;
        arc.m_bExternal = external;
        Loaded(kRecord, [&](CArchive& ar) { arc.Serialize(ar); });
        EXPECT_EQ(arc.IsExternal(), external);
    }
}

TEST(RangeS1Archive, WholeFamilyComesBackToTheBit) {
    for (const GridArc& member : AllArcs()) {
        const RangeS1 arc = member.Arc();
        RangeS1 loaded;
        Loaded(StoredArc(arc), [&](CArchive& ar) { loaded.Serialize(ar); });
        EXPECT_THAT(loaded, IsArc(arc.m_min, arc.m_max, arc.m_eState)) << member.name;
    }
}

TEST(RangeS1Archive, EndAtEveryByteRaisesTheArchivesException) {
    for (std::size_t length = 0; length < kRecord.size(); ++length) {
        RangeS1 arc = RawArc(1.5, 2.0);
        const auto load = [&](CArchive& ar) { arc.Serialize(ar); };
        EXPECT_EQ(LoadingCause(kRecord.substr(0, length), load), CArchiveException::endOfFile);
        // What was there is loaded, limit by limit; the state stays.
        EXPECT_THAT(arc, IsPartial(length < 8 ? 1.5 : 1.0, length < 16 ? 2.0 : -2.5)) << length;
    }
}

TEST(RangeS1Archive, TravelsThroughAFile) {
    const TestDirectory directory;
    const std::string path = directory / "arc";
    {
        CFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
        CArchive archive(&file, CArchive::store);
        EmptyArc(1.0, -2.5).Serialize(archive);
        FullArc().Serialize(archive);
        archive.Close();
    }
    EXPECT_EQ(BytesOf(path).substr(0, 17), kRecord);
    EXPECT_EQ(BytesOf(path).size(), 34u);
    CFile file(path.c_str(), CFile::modeRead);
    CArchive archive(&file, CArchive::load);
    RangeS1 arc;
    arc.Serialize(archive);
    EXPECT_THAT(arc, IsArc(1.0, -2.5, RangeS1::eStateEmpty));
    arc.Serialize(archive);
    EXPECT_THAT(arc, IsCanonicallyFull());
}

TEST(RangeS1Archive, FileThatEndsEarlyRaisesTheArchivesException) {
    const TestDirectory directory;
    for (std::size_t length = 0; length < kRecord.size(); ++length) {
        MakeFile(directory / "arc", kRecord.substr(0, length));
        CFile file((directory / "arc").c_str(), CFile::modeRead);
        CArchive archive(&file, CArchive::load);
        RangeS1 arc;
        EXPECT_EQ(ArchiveCauseOf([&] { arc.Serialize(archive); }), CArchiveException::endOfFile);
    }
}

TEST(RangeS1Archive, FileOpenInTheOtherDirectionRaisesItsOwnException) {
    const TestDirectory directory;
    const std::string path = directory / "arc";
    MakeFile(path, kRecord);
    RangeS1 arc = RawArc(1.5, 2.0);
    CFile forReading(path.c_str(), CFile::modeRead);
    CArchive storing(&forReading, CArchive::store);
    arc.Serialize(storing);
    EXPECT_TRUE(Raises<CFileException>([&] { storing.Close(); }));
    storing.Abort();
    forReading.Close();
    CFile forWriting(path.c_str(), CFile::modeWrite);
    CArchive loading(&forWriting, CArchive::load);
    EXPECT_TRUE(Raises<CFileException>([&] { arc.Serialize(loading); }));
    EXPECT_THAT(arc, IsPartial(1.5, 2.0));
}

TEST(RangeS1Archive, ClosedArchiveRaisesTheInvalidArgumentException) {
    for (const UINT mode : {CArchive::store, CArchive::load}) {
        CMemFile memory;
        CArchive archive(&memory, mode);
        archive.Close();
        RangeS1 arc = RawArc(1.5, 2.0);
        EXPECT_TRUE(Raises<CInvalidArgException>([&] { arc.Serialize(archive); }));
        EXPECT_THAT(arc, IsPartial(1.5, 2.0));
    }
}

TEST(RangeS1Archive, RecordOfTheRealIntervalAloneLeavesTheState) {
    RangeS1 arc;
    Loaded(kLimits, [&](CArchive& ar) { arc.RangeR1::Serialize(ar); });
    EXPECT_THAT(arc, IsArc(1.0, -2.5, RangeS1::eStateFull));
}

}  // namespace
}  // namespace ZT
