// Which operations reach a derived class's Set, and which write the limits directly.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/files/CArchive.h>
#include <platform/files/CMemFile.h>
#include <tests/RangeMatchers.h>
#include <zt/ranges/RangeR1.h>

#include <functional>

namespace ZT {
namespace {

using testing_support::HasLimits;

// A range that counts the calls of its Set.
struct Watched : RangeR1 {
    using RangeR1::RangeR1;
    void Set(double lo, double hi) override {
        ++sets;
        RangeR1::Set(lo, hi);
    }
    int sets = 0;
};

// An operation on a range, and how often it calls the Set of that range and of its
// argument. The range is (0, 10) at the start and the argument (3, 4).
struct SetCase {
    const char* name;
    std::function<void(Watched&, Watched&)> operation;
    int sets;
    int argumentSets;
};

struct RangeR1Set : testing::TestWithParam<SetCase> {};

TEST_P(RangeR1Set, IsCalled) {
    Watched range(0.0, 10.0);
    Watched argument(3.0, 4.0);
    GetParam().operation(range, argument);
    EXPECT_EQ(range.sets, GetParam().sets);
    EXPECT_EQ(argument.sets, GetParam().argumentSets);
}

// Calls an operation of RangeR1, whatever a derived class hides.
#define OPERATION(call)                  \
    [](RangeR1& range, RangeR1& other) { \
        (void)other;                     \
        range.call;                      \
    }

INSTANTIATE_TEST_SUITE_P(
    Through, RangeR1Set,
    testing::Values(SetCase{"Set", OPERATION(Set(1.0, 2.0)), 1, 0},
                    SetCase{"SetFullAngle", OPERATION(SetFullAngle()), 1, 0},
                    SetCase{"SetFullNotInfinite", OPERATION(SetFull(false)), 1, 0},
                    SetCase{"Scale", OPERATION(Scale(2.0)), 1, 0},
                    SetCase{"Inflate", OPERATION(Inflate(2.0)), 1, 0},
                    SetCase{"SetLengthKeepCenter", OPERATION(SetLengthKeepCenter(2.0)), 1, 0},
                    SetCase{"SetLimitKeepLengthLower", OPERATION(SetLimitKeepLength(0, 2.0)), 1, 0},
                    SetCase{"SetLimitKeepLengthUpper", OPERATION(SetLimitKeepLength(1, 2.0)), 1, 0},
                    SetCase{"SetMaxKeepLength", OPERATION(SetMaxKeepLength(2.0)), 1, 0},
                    SetCase{"SetMinKeepLength", OPERATION(SetMinKeepLength(2.0)), 1, 0},
                    SetCase{"Center", OPERATION(Center(RangeR1(0.0, 30.0))), 1, 0},
                    SetCase{"CenterInAShorterRangeDoesNot", OPERATION(Center(other)), 0, 0},
                    SetCase{"MakeSymmetric", OPERATION(MakeSymmetric()), 1, 0},
                    SetCase{"MakeValidForAValue", OPERATION(MakeValid(2.0)), 1, 0},
                    SetCase{"MakeValidForANegativeValue", OPERATION(MakeValid(-2.0)), 1, 0},
                    SetCase{"MakeValidForZero", OPERATION(MakeValid(0.0)), 1, 0},
                    SetCase{"MapOfARange", OPERATION(Map(other, RangeR1(0.0, 1.0))), 0, 1},
                    SetCase{"SubtractTwoPieces", OPERATION(Subtract(other)), 0, 1},
                    SetCase{"SubtractUpperPiece",
                            [](RangeR1& range, RangeR1& other) {
                                other.m_min = -1.0;
                                range.Subtract(other);
                            },
                            1, 0}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    PastIt, RangeR1Set,
    testing::Values(SetCase{"Assignment", OPERATION(operator=(other)), 0, 0},
                    SetCase{"Copy", OPERATION(Copy(other)), 0, 0},
                    SetCase{"Reset", OPERATION(Reset()), 0, 0},
                    SetCase{"Invalidate", OPERATION(Invalidate()), 0, 0},
                    SetCase{"SetEmpty", OPERATION(SetEmpty()), 0, 0},
                    SetCase{"SetFullInfinite", OPERATION(SetFull(true)), 0, 0},
                    SetCase{"SetUnordered", OPERATION(SetUnordered(2.0, 1.0)), 0, 0},
                    SetCase{"SetUnorderedInOrder", OPERATION(SetUnordered(1.0, 2.0)), 0, 0},
                    SetCase{"SetEx", OPERATION(SetEx(1.0, 2.0)), 0, 0},
                    SetCase{"SetExternal", OPERATION(SetExternal(true)), 0, 0},
                    SetCase{"SetExternalOfAFullRange",
                            [](RangeR1& range, RangeR1&) {
                                range.SetFull(true);
                                range.SetExternal(true);
                            },
                            0, 0},
                    SetCase{"Intersect", OPERATION(Intersect(other)), 0, 0},
                    SetCase{"IsAfterClosed", OPERATION(IsAfterClosed(other)), 0, 0},
                    SetCase{"GetSegmentByIndex", OPERATION(GetSegment(1, 4, other)), 0, 0},
                    SetCase{"Setup",
                            [](RangeR1& range, RangeR1&) {
                                int n = 0;
                                const double origin = -0.5;
                                range.Setup(1.0, n, &origin);
                            },
                            0, 0},
                    SetCase{"Align", OPERATION(Align(2.0, -1.0)), 0, 0},
                    SetCase{"Combine", OPERATION(Combine(other, other, 0.5)), 0, 0},
                    SetCase{"IncludePoint", OPERATION(Include(20.0)), 0, 0},
                    SetCase{"IncludeRange", OPERATION(Include(RangeR1(-5.0, 20.0))), 0, 0},
                    SetCase{"Unite", OPERATION(Unite(RangeR1(-5.0, 20.0))), 0, 0},
                    SetCase{"PlusAssign", OPERATION(operator+=(RangeR1(-5.0, 20.0))), 0, 0},
                    SetCase{"PlusAssignToEmpty",
                            [](RangeR1& range, RangeR1& other) {
                                range.SetEmpty();
                                range += other;
                            },
                            0, 0},
                    SetCase{"SubtractLowerPiece",
                            [](RangeR1& range, RangeR1& other) {
                                other.m_max = 11.0;
                                range.Subtract(other);
                            },
                            0, 0},
                    SetCase{"SubtractAll",
                            [](RangeR1& range, RangeR1& other) {
                                other.SetEx(-1.0, 11.0);
                                range.Subtract(other);
                            },
                            0, 0},
                    SetCase{"Translate", OPERATION(Translate(1.0)), 0, 0},
                    SetCase{"Swap", OPERATION(Swap()), 0, 0},
                    SetCase{"Expand", OPERATION(Expand(1.0)), 0, 0},
                    SetCase{"Spread", OPERATION(Spread(1.0)), 0, 0},
                    SetCase{"InflateAboutAPivot", OPERATION(Inflate(2.0, 1.0)), 0, 0},
                    SetCase{"Inflate2", OPERATION(Inflate2(2.0, 0.5)), 0, 0},
                    SetCase{"TimesAssign", OPERATION(operator*=(-2.0)), 0, 0},
                    SetCase{"ToDegrees", OPERATION(ToDegrees()), 0, 0},
                    SetCase{"ToRadians", OPERATION(ToRadians()), 0, 0},
                    SetCase{"SetCenter", OPERATION(SetCenter(1.0)), 0, 0},
                    SetCase{"SetLength", OPERATION(SetLength(1.0)), 0, 0},
                    SetCase{"SetLengthKeepLimit", OPERATION(SetLengthKeepLimit(1.0, 1)), 0, 0},
                    SetCase{"AddMargin", OPERATION(AddMargin(other, 20.0)), 0, 0},
                    SetCase{"AdjustCentral", OPERATION(AdjustCentral(other)), 0, 0},
                    SetCase{"MakeValid",
                            [](RangeR1& range, RangeR1&) {
                                range.Swap();
                                range.MakeValid();
                            },
                            0, 0},
                    SetCase{"MoveAwayFrom", OPERATION(MoveAwayFrom(other)), 0, 0},
                    SetCase{"SnapOfARange", OPERATION(Snap(other, 20.0)), 0, 0},
                    SetCase{"Invert", OPERATION(Invert()), 0, 0},
                    SetCase{"InvertAtZero",
                            [](RangeR1& range, RangeR1&) {
                                range.m_max = 0.0;
                                range.Invert();
                            },
                            0, 0},
                    SetCase{"SerializeFromAnArchive",
                            [](RangeR1& range, RangeR1& other) {
                                CMemFile file;
                                {
                                    CArchive archive(&file, CArchive::store);
                                    other.Serialize(archive);
                                }
                                file.SeekToBegin();
                                CArchive archive(&file, CArchive::load);
                                range.Serialize(archive);
                            },
                            0, 0}),
    [](const auto& test) { return test.param.name; });

#undef OPERATION

TEST(RangeR1Set, SubtractGivesTheUpperPieceToTheArgumentsSet) {
    // An argument that turns its limits round when they are set.
    struct Turning : RangeR1 {
        using RangeR1::RangeR1;
        void Set(double lo, double hi) override { RangeR1::Set(hi, lo); }
    };
    RangeR1 range(0.0, 10.0);
    Turning other(3.0, 4.0);
    EXPECT_EQ(range.Subtract(other), 2);
    EXPECT_THAT(range, HasLimits(0.0, 3.0));
    EXPECT_THAT(other, HasLimits(10.0, 4.0));
}

}  // namespace
}  // namespace ZT
