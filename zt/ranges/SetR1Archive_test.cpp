// The archive record of sets of intervals.

#include <zt/ranges/SetR1.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zt/ranges/SetFamily_test.h>
#include <zt/ranges/SetR1Spaced.h>
#include <platform/files/Archived_test.hpp>
#include <zt/frame/VirtualTable_test.hpp>

#include <algorithm>
#include <string>

namespace ZT {
namespace {

using namespace testing_support;

std::string Bytes(std::initializer_list<int> bytes) {
    return {bytes.begin(), bytes.end()};
}

const std::string kZeros7(7, 0);
const std::string kZeros8(8, 0);

// [1, -2.5] and all but [2, 3].
const std::string kTwoMembers = Bytes({2, 0}) +                                    //
                                kZeros8 + Bytes({0, 0, 0, 0, 0, 0, 0xF0, 0x3F}) +  //
                                Bytes({0, 0, 0, 0, 0, 0, 4, 0xC0, 0}) + kZeros7 +  //
                                kZeros8 + Bytes({0, 0, 0, 0, 0, 0, 0, 0x40}) +     //
                                Bytes({0, 0, 0, 0, 0, 0, 8, 0x40, 1}) + kZeros7;

struct SetArchive : testing::Test {
    SetR1 two = SetOf({{1.0, -2.5}, External(2.0, 3.0)});
};

template <class Set>
std::string RecordOf(Set& set) {
    return Stored([&](CArchive& ar) { set.Serialize(ar); });
}

void Load(SetR1& set, const std::string& record) {
    Loaded(record, [&](CArchive& ar) { set.Serialize(ar); });
}

TEST_F(SetArchive, RecordIsTheCountAnd32BytesForEachMember) {
    EXPECT_EQ(RecordOf(two), kTwoMembers);
    SetR1 empty;
    EXPECT_EQ(RecordOf(empty), Bytes({0, 0}));
    SetR1Spaced items = SetOf<SetR1Spaced>({{1.0, -2.5}, External(2.0, 3.0)});
    EXPECT_EQ(RecordOf(items), kTwoMembers);
}

TEST_F(SetArchive, SerializeStandsInTheTableOfTheRoot) {
    EXPECT_EQ(Stored([&](CArchive& ar) { CallSlot<void>(&two, kSlotSerialize, &ar); }),
              kTwoMembers);
    SetR1Spaced items = SetOf<SetR1Spaced>({{1.0, -2.5}, External(2.0, 3.0)});
    EXPECT_EQ(Stored([&](CArchive& ar) { CallSlot<void>(&items, kSlotSerialize, &ar); }),
              kTwoMembers);
}

TEST_F(SetArchive, LoadingReplacesTheMembersWithTheirFlags) {
    SetR1 set = SetOf({External(8.0, 9.0), {8.0, 9.0}, {10.0, 11.0}});
    Load(set, kTwoMembers);
    EXPECT_THAT(set, IsSet(two));
    Load(set, Bytes({0, 0}));
    EXPECT_TRUE(set.IsEmpty());
    Load(set, kTwoMembers);
    EXPECT_THAT(set, IsSet(two));
}

TEST_F(SetArchive, LoadingTakesLimitsThatDifferByLessThanTheTolerance) {
    SetR1 set = SetOf({{1.0 + 5e-11, -2.5}, {0.0, 0.0}});
    Load(set, kTwoMembers);
    EXPECT_THAT(set, IsSet(two));
}

TEST_F(SetArchive, HeaderAndFillerOfTheFileAreNotTaken) {
    std::string record = kTwoMembers;
    for (const std::size_t member : {2u, 34u}) {
        for (std::size_t i = 0; i < 8; ++i) record[member + i] = static_cast<char>(0xA5);
        for (std::size_t i = 25; i < 32; ++i) record[member + i] = static_cast<char>(0xA5);
    }
    SetR1 set;
    Load(set, record);
    EXPECT_THAT(set, IsSet(two));
    // The members are objects as before.
    EXPECT_EQ(set[0].GetClass(), RangeR1::eClassR1);
    static_cast<RangeR1&>(set[1]).Set(4.0, 5.0);
    EXPECT_THAT(set[1], HasLimits(4.0, 5.0));
}

TEST_F(SetArchive, AnyByteButZeroIsAFlag) {
    std::string record = kTwoMembers;
    record[2 + 24] = static_cast<char>(0x80);
    SetR1 set;
    Load(set, record);
    EXPECT_TRUE(set[0].m_bExternal);
}

TEST_F(SetArchive, EndAtEveryByteRaisesTheArchivesExceptionAndLeavesTheNewSize) {
    for (std::size_t length = 0; length < kTwoMembers.size(); ++length) {
        SetR1 set = SetOf({{8.0, 9.0}});
        const auto load = [&](CArchive& ar) { set.Serialize(ar); };
        EXPECT_EQ(LoadingCause(kTwoMembers.substr(0, length), load), 3) << length;
        if (length < 2) {
            EXPECT_THAT(set, Is({{8.0, 9.0}})) << length;
        } else if (length < 34) {
            EXPECT_THAT(set, Is({{8.0, 9.0}, {1e307, -1e307}})) << length;
        } else {
            EXPECT_THAT(set, Is({{1.0, -2.5}, {1e307, -1e307}})) << length;
        }
    }
}

TEST_F(SetArchive, AFalseCountIsBelievedNoFurtherThanOnePart) {
    constexpr INT_PTR kClaimed = 600000;
    const std::string record = Bytes({0xFF, 0xFF, 0xC0, 0x27, 9, 0}) +            //
                               kZeros8 + Bytes({0, 0, 0, 0, 0, 0, 0xF0, 0x3F}) +  //
                               Bytes({0, 0, 0, 0, 0, 0, 0, 0x40, 0}) + kZeros7;
    SetR1 set;
    EXPECT_EQ(LoadingCause(record, [&](CArchive& ar) { set.Serialize(ar); }), 3);
    const INT_PTR part = Collections::ElementsAtATime(sizeof(RangeR1));
    ASSERT_EQ(set.GetSize(), std::min(kClaimed, part));
    EXPECT_THAT(set[0], HasLimits(1.0, 2.0));
    EXPECT_THAT(set[1], HasLimits(1e307, -1e307));
}

TEST_F(SetArchive, EveryMemberComesBackToTheBit) {
    SetR1 set;
    for (const double limit : {0.0, -0.0, 0.1, 1e307, 5e-324, zPi}) set.AddRange(limit, -limit);
    SetR1 loaded;
    Load(loaded, RecordOf(set));
    EXPECT_THAT(loaded, IsSet(set));
}

TEST_F(SetArchive, ManyMembersComeBack) {
    // More than are transferred at a time.
    SetR1 set;
    set.SetSize(600000);
    for (int i = 0; i < 600000; ++i) set.SetRange(i, i, i + 0.5);
    const std::string record = RecordOf(set);
    EXPECT_EQ(record.size(), 6u + 600000u * 32u);
    EXPECT_EQ(record.substr(0, 2), Bytes({0xFF, 0xFF}));
    SetR1 loaded;
    Load(loaded, record);
    ASSERT_EQ(loaded.GetSize(), 600000);
    for (int i = 0; i < 600000; i += 599) {
        ASSERT_THAT(loaded[i], HasLimits(double(i), i + 0.5));
    }
    EXPECT_THAT(loaded[599999], HasLimits(599999.0, 599999.5));
}

}  // namespace
}  // namespace ZT
