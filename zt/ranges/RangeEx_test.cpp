// Real intervals with open and closed ends.

#include <zt/ranges/RangeEx.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tests/RangeMatchers.h>

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

namespace ZT {

void PrintTo(const RangeEx& r, std::ostream* os) {
    using testing_support::InFull;
    *os << (r.m_bExternal ? "all but " : "") << (r.m_bClosed[0] ? '[' : '(') << InFull(r.m_min)
        << ", " << InFull(r.m_max) << (r.m_bClosed[1] ? ']' : ')');
}

namespace {

using testing_support::HasLimits;
using testing_support::SameDouble;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// A range as "[0,1)"; the canonical empty limits as "[empty]".
std::string Text(const RangeEx& r) {
    std::ostringstream text;
    text << (r.m_bClosed[0] ? '[' : '(');
    if (r.m_min == zInfinity && r.m_max == -zInfinity) {
        text << "empty";
    } else {
        text << r.m_min << ',' << r.m_max;
    }
    text << (r.m_bClosed[1] ? ']' : ')');
    return text.str();
}

// The range of such a text, but for the empty one.
RangeEx Range(const char* text) {
    char start = '\0';
    char end = '\0';
    double lo = 0.0;
    double hi = 0.0;
    EXPECT_EQ(std::sscanf(text, "%c%lf,%lf%c", &start, &lo, &hi, &end), 4) << text;
    return {lo, hi, start == '[', end == ']'};
}

RangeEx External(const char* text) {
    RangeEx range = Range(text);
    range.m_bExternal = true;
    return range;
}

// The record.

TEST(RangeEx, EndsFollowTheRecordOfTheRealInterval) {
    EXPECT_EQ(offsetof(RangeEx, m_min), 8u);
    EXPECT_EQ(offsetof(RangeEx, m_max), 16u);
    EXPECT_EQ(offsetof(RangeEx, m_bExternal), 24u);
    EXPECT_EQ(offsetof(RangeEx, m_bClosed), 25u);
    EXPECT_EQ(sizeof(RangeEx::m_bClosed), 2u);
    EXPECT_EQ(sizeof(RangeEx), 32u);
    EXPECT_TRUE((std::is_base_of_v<RangeR1, RangeEx>));
}

struct Recorder : RangeEx {
    explicit Recorder(std::vector<std::string>* log) : m_log(log) {}
    ~Recorder() override { m_log->push_back("destructor"); }
    EClass GetClass() const override {
        m_log->push_back("GetClass");
        return eClassR1;
    }
    void Set(double, double) override { m_log->push_back("Set"); }
    std::vector<std::string>* m_log;
};

TEST(RangeEx, VirtualOperationsAreThoseOfTheRealInterval) {
    std::vector<std::string> log;
    alignas(Recorder) std::byte memory[sizeof(Recorder)];
    auto* const range = new (memory) Recorder(&log);
    void** table = nullptr;
    std::memcpy(&table, memory, sizeof table);
    reinterpret_cast<RangeR1::EClass (*)(const RangeR1*)>(table[0])(range);
    reinterpret_cast<void (*)(RangeR1*, double, double)>(table[1])(range, 0.0, 1.0);
    reinterpret_cast<void (*)(RangeR1*)>(table[2])(range);
    EXPECT_THAT(log, testing::ElementsAre("GetClass", "Set", "destructor"));
}

TEST(RangeEx, ClassIsR1) {
    const RangeEx range;
    const RangeR1& base = range;
    EXPECT_EQ(base.GetClass(), RangeR1::eClassR1);
}

TEST(RangeEx, SetStoresTheLimitsAndLeavesTheEnds) {
    RangeEx range = Range("(0,1]");
    RangeR1& base = range;
    base.Set(5.0, 2.0);
    EXPECT_EQ(Text(range), "(5,2]");
}

// Making and storing.

TEST(RangeEx, NewRangeIsCanonicallyEmptyWithClosedEnds) {
    EXPECT_EQ(Text(RangeEx()), "[empty]");
    EXPECT_FALSE(RangeEx().IsExternal());
    EXPECT_TRUE(RangeEx().IsEmpty());
}

TEST(RangeEx, MadeFromLimitsAndEnds) {
    for (const bool closedMin : {false, true}) {
        for (const bool closedMax : {false, true}) {
            const RangeEx range(2.0, 1.0, closedMin, closedMax);
            EXPECT_THAT(range, HasLimits(2.0, 1.0));
            EXPECT_FALSE(range.IsExternal());
            EXPECT_EQ(range.m_bClosed[0], closedMin);
            EXPECT_EQ(range.m_bClosed[1], closedMax);

            const bool ends[] = {closedMin, closedMax};
            const RangeEx same(2.0, 1.0, ends);
            EXPECT_EQ(Text(same), Text(range));
        }
    }
}

TEST(RangeEx, CopyConstructorTakesAllFields) {
    const RangeEx copy(External("(2,1]"));
    EXPECT_EQ(Text(copy), "(2,1]");
    EXPECT_TRUE(copy.IsExternal());
    EXPECT_EQ(Text(RangeEx(Range("(1e307,-1e307)"))), "(empty)");
}

// Assignment and Copy are one operation under two names.
struct RangeExCopy : testing::TestWithParam<bool> {
    static bool Copy(RangeEx& range, const RangeEx& r) {
        return GetParam() ? range.Copy(r) : range = r;
    }
};

INSTANTIATE_TEST_SUITE_P(BothNames, RangeExCopy, testing::Bool(),
                         [](const auto& test) { return test.param ? "Copy" : "Assignment"; });

TEST_P(RangeExCopy, TakesLimitsFlagAndEnds) {
    RangeEx range = Range("[0,1]");
    EXPECT_TRUE(Copy(range, External("(2,3)")));
    EXPECT_EQ(Text(range), "(2,3)");
    EXPECT_TRUE(range.IsExternal());
}

TEST_P(RangeExCopy, KeepsLimitsWithinTheToleranceButTakesTheEnds) {
    RangeEx range = Range("[0,1]");
    EXPECT_FALSE(Copy(range, RangeEx(5e-11, 1.0 - 5e-11, false, true)));
    EXPECT_THAT(range, HasLimits(0.0, 1.0));
    EXPECT_EQ(Text(range), "(0,1]");
}

TEST_P(RangeExCopy, ResultDoesNotCountTheEnds) {
    RangeEx range = Range("[0,1]");
    EXPECT_FALSE(Copy(range, Range("(0,1)")));
    EXPECT_EQ(Text(range), "(0,1)");
}

TEST_P(RangeExCopy, OfItselfChangesNothing) {
    RangeEx range = Range("(0,1]");
    EXPECT_FALSE(Copy(range, range));
    EXPECT_EQ(Text(range), "(0,1]");
}

// Points.

TEST(RangeEx, OpenEndIsOutAndClosedEndIsIn) {
    const RangeEx range(0, 1, false, true);
    EXPECT_FALSE(range.In(0.0, zToler));
    EXPECT_TRUE(range.In(1.0, zToler));
    EXPECT_TRUE(range.In(0.5, zToler));
    EXPECT_FALSE(range.In(2.0, zToler));
    const RangeEx mirrored(0, 1, true, false);
    EXPECT_TRUE(mirrored.In(0.0, zToler));
    EXPECT_FALSE(mirrored.In(1.0, zToler));
}

TEST(RangeEx, OpenEndIsAHoleAsWideAsTheToleranceToBothSides) {
    const RangeEx range(0, 1, false, false);
    EXPECT_FALSE(range.In(5e-11, zToler));
    EXPECT_FALSE(range.In(-5e-11, zToler));
    EXPECT_TRUE(range.In(2e-10, zToler));
    EXPECT_FALSE(range.In(1.0 - 5e-11, zToler));
    EXPECT_TRUE(range.In(1.0 - 2e-10, zToler));
    EXPECT_FALSE(range.In(0.25, 0.5));
    EXPECT_TRUE(range.In(0.25, 0.25));
}

TEST(RangeEx, PointExactlyTheToleranceOutsideOfAnOpenEndIsIn) {
    // Not within the tolerance of the limit, and in by the closed test: as the tests have it.
    EXPECT_TRUE(RangeEx(0, 1, false, false).In(-zToler, zToler));
    EXPECT_TRUE(RangeEx(0, 1, false, false).In(zToler, zToler));
}

TEST(RangeEx, ClosedRangeHasInWhatTheRealIntervalHas) {
    const RangeEx range(0, 1, true, true);
    for (const double x : {-1.0, -zToler, -5e-11, 0.0, 0.5, 1.0, 1.0 + 5e-11, 2.0, kNaN}) {
        EXPECT_EQ(range.In(x, zToler), RangeR1(0, 1).In(x, zToler)) << x;
    }
}

TEST(RangeEx, OpenEndOfAnExternalRangeIsOutToo) {
    EXPECT_TRUE(External("[0,1]").In(0.0, zToler));
    EXPECT_FALSE(External("(0,1]").In(0.0, zToler));
    EXPECT_TRUE(External("(0,1]").In(1.0, zToler));
    EXPECT_FALSE(External("(0,1]").In(0.5, zToler));
    EXPECT_TRUE(External("(0,1]").In(-3.0, zToler));
}

TEST(RangeEx, OtherFormsOfTheTestsOfPointsStayCallable) {
    EXPECT_TRUE(RangeEx::In(0.0, 0.0, 1.0, zToler));
    EXPECT_TRUE(RangeEx::IsIn(0.0, 0.0, 1.0));
    EXPECT_FALSE(RangeEx::IsIn(0.0, 0.0, 1.0, false, true));
    EXPECT_TRUE(Range("(3,3)").IsSingleton(3.0, zToler));
    RangeEx range = Range("(0,1)");
    EXPECT_TRUE(range.Include(RangeR1(0.0, 2.0)));
    EXPECT_EQ(Text(range), "(0,2)");
}

// States.

TEST(RangeEx, RangeWithoutLengthIsASingletonWithBothEndsClosedAndEmptyWithBothOpen) {
    const struct {
        const char* range;
        bool empty, singleton;
    } rows[] = {
        {"[1,1]", false, true}, {"[1,1)", false, false}, {"(1,1]", false, false},
        {"(1,1)", true, false}, {"[1,2]", false, false}, {"(1,2)", false, false},
        {"[2,1]", true, false}, {"(2,1]", true, false},  {"(2,1)", true, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.range);
        EXPECT_EQ(Range(row.range).IsEmpty(), row.empty);
        EXPECT_EQ(Range(row.range).IsSingleton(), row.singleton);
    }
}

TEST(RangeEx, LengthBelowTheToleranceIsNone) {
    EXPECT_TRUE(RangeEx(1, 1 + 5e-11, false, false).IsEmpty());
    EXPECT_TRUE(RangeEx(1 + 5e-11, 1, true, true).IsSingleton());
    EXPECT_FALSE(RangeEx(1, 1 + 2e-10, false, false).IsEmpty());
    EXPECT_FALSE(RangeEx(1, 1 + 2e-10, true, true).IsSingleton());
}

TEST(RangeEx, BaseDoesNotLookAtTheEnds) {
    const RangeEx range = Range("(1,1)");
    const RangeR1& base = range;
    EXPECT_FALSE(base.IsEmpty());
    EXPECT_TRUE(base.IsSingleton());
    EXPECT_TRUE(base.In(1.0, zToler));
    EXPECT_TRUE(base == RangeEx(1, 1, true, true));
}

// Ranges against ranges.

TEST(RangeEx, InsideDoesNotLookAtTheEndsOfEither) {
    EXPECT_TRUE(Range("[0,1]").IsInsideOf(Range("(0,1)")));
    EXPECT_TRUE(Range("(0,1)").IsInsideOf(Range("[0,1]")));
    EXPECT_TRUE(Range("[0,1]").IsInsideOf(RangeR1(0.0, 1.0)));
    EXPECT_FALSE(Range("[0,2]").IsInsideOf(Range("[0,1]")));
    EXPECT_FALSE(Range("[-1,1]").IsInsideOf(Range("[0,1]")));
}

TEST(RangeEx, EverythingIsInsideOfTheCanonicalEmptyRange) {
    EXPECT_TRUE(Range("[0,1]").IsInsideOf(RangeEx()));
    EXPECT_TRUE(Range("(-5,3]").IsInsideOf(RangeEx()));
}

TEST(RangeEx, AnEmptyRangeIsInsideOfEverything) {
    EXPECT_TRUE(RangeEx().IsInsideOf(Range("[0,1]")));
    EXPECT_TRUE(Range("(5,5)").IsInsideOf(Range("[0,1]")));
    EXPECT_FALSE(Range("(5,5]").IsInsideOf(Range("[0,1]")));
}

TEST(RangeEx, IsInAsksWhetherTheOtherLiesInThis) {
    EXPECT_TRUE(Range("(0,1)").IsIn(Range("[0,1]")));
    EXPECT_TRUE(Range("[0,2]").IsIn(Range("[0,1]")));
    EXPECT_FALSE(Range("[0,1]").IsIn(Range("[0,2]")));
    EXPECT_TRUE(Range("[0,1]").IsIn(Range("(5,5)")));
}

// Including a point.

struct Inclusion {
    const char* range;
    double x;
    const char* result;
};

const Inclusion kInclusions[] = {
    {"(0,1)", 0.5, "(0,1)"},
    {"[0,1]", 1.0, "[0,1]"},
    {"(0,1)", 0.0, "[0,1)"},  // An open end is filled.
    {"(0,1)", 1.0, "(0,1]"},
    {"(0,1)", -2.0, "[-2,1)"},  // The end that moves becomes closed.
    {"(0,1)", 3.0, "(0,3]"},
    {"[0,1]", 3.0, "[0,3]"},
    {"(1,1)", 1.0, "[1,1)"},  // Of an open point only the lower end.
    {"(1,1)", 2.0, "(1,2]"},
    {"(2,1)", 1.5, "(2,1)"},  // Between the limits, in whichever order, is in.
    {"(2,1)", 5.0, "[2,5]"},  // Empty by its limits: both ends.
    {"(2,1)", -5.0, "[-5,1]"},
    {"(2,1)", 2.0, "[2,2]"},
};

TEST(RangeEx, IncludeFollowsTheTable) {
    for (const Inclusion& row : kInclusions) {
        SCOPED_TRACE(testing::Message() << row.x << " into " << row.range);
        RangeEx range = Range(row.range);
        range.Include(row.x);
        EXPECT_EQ(Text(range), row.result);
    }
}

TEST(RangeEx, IncludeIntoTheCanonicalEmptyRangeChangesNothing) {
    for (const double x : {-1e306, -1.0, 0.0, 3.0, 1e306}) {
        RangeEx range;
        range.Include(x);
        EXPECT_EQ(Text(range), "[empty]");
    }
}

TEST(RangeEx, IncludeIntoTheCanonicalEmptyRangeWithOpenEndsChangesNothing) {
    RangeEx range(zInfinity, -zInfinity, false, false);
    range.Include(3.0);
    EXPECT_EQ(Text(range), "(empty)");
}

TEST(RangeEx, IncludeWithinTheToleranceOfAnOpenEndClosesIt) {
    RangeEx range = Range("(0,1)");
    range.Include(5e-11);
    EXPECT_THAT(range, HasLimits(0.0, 1.0));
    EXPECT_EQ(Text(range), "[0,1)");
    range.Include(1.0 + 5e-11);
    EXPECT_THAT(range, HasLimits(0.0, 1.0 + 5e-11));
    EXPECT_TRUE(range.m_bClosed[1]);
}

TEST(RangeEx, IncludeIntoTheHoleOfAnExternalRangeClosesItsUpperEnd) {
    RangeEx range = External("(0,1)");
    range.Include(0.5);
    EXPECT_EQ(Text(range), "(0,1]");
}

TEST(RangeEx, IncludeExactlyTheToleranceFromTheLowerLimitClosesTheUpperEnd) {
    RangeEx range = External("(0,1)");
    range.Include(1e-10);
    EXPECT_EQ(Text(range), "(0,1]");
    range = External("(0,1)");
    range.Include(5e-11);
    EXPECT_EQ(Text(range), "[0,1)");
}

TEST(RangeEx, IncludeOfNaNClosesTheUpperEndAndMovesNothing) {
    RangeEx range = Range("(0,1)");
    range.Include(kNaN);
    EXPECT_EQ(Text(range), "(0,1]");
}

// Set operations. The family: a closed range and an open one, two inside them, two that touch
// them and one that lies apart. The limits that touch decide; each row tells the outcome for a
// pair:
//   whether they share nothing; Intersect: its result and the range; Unite: likewise;
//   Subtract: the pieces, the range, the argument, whether the start changed.

struct Pair {
    const char* range;
    const char* other;
    bool apart;
    bool intersect;
    const char* intersection;
    bool unite;
    const char* united;
    int pieces;
    const char* rest;
    const char* upper;
    bool startChanged;
};

const Pair kPairs[] = {
    {"[0,10]", "[0,10]", false, true, "[0,10]", false, "[0,10]", 0, "[empty]", "[0,10]", false},
    {"[0,10]", "(0,10)", false, true, "(0,10)", false, "[0,10]", 0, "[empty]", "(0,10)", false},
    {"[0,10]", "[3,4]", false, true, "[3,4]", false, "[0,10]", 2, "[0,3)", "(4,10]", false},
    {"[0,10]", "(3,4)", false, true, "(3,4)", false, "[0,10]", 2, "[0,3]", "[4,10]", false},
    {"[0,10]", "[10,12]", false, true, "[10,10]", true, "[0,12]", 1, "[0,10)", "[10,12]", false},
    {"[0,10]", "(10,12]", true, false, "(10,10)", true, "[0,12]", 1, "[0,10]", "(10,12]", false},
    {"[0,10]", "[20,30]", true, false, "[0,10]", true, "[0,30]", 1, "[0,10]", "[20,30]", false},

    {"(0,10)", "[0,10]", false, true, "(0,10)", true, "[0,10]", 0, "(empty)", "[0,10]", false},
    {"(0,10)", "(0,10)", false, true, "(0,10)", false, "(0,10)", 0, "(empty)", "(0,10)", false},
    {"(0,10)", "[3,4]", false, true, "[3,4]", false, "(0,10)", 2, "(0,3)", "(4,10)", false},
    {"(0,10)", "(3,4)", false, true, "(3,4)", false, "(0,10)", 2, "(0,3]", "[4,10)", false},
    {"(0,10)", "[10,12]", true, false, "(10,10)", true, "(0,12]", 1, "(0,10)", "[10,12]", false},
    {"(0,10)", "(10,12]", true, false, "(10,10)", true, "(0,12)", 1, "(0,10)", "(10,12]", false},
    {"(0,10)", "[20,30]", true, false, "(0,10)", true, "(0,30)", 1, "(0,10)", "[20,30]", false},

    {"[3,4]", "[0,10]", false, true, "[3,4]", true, "[0,10]", 0, "[empty]", "[0,10]", false},
    {"[3,4]", "(0,10)", false, true, "[3,4]", true, "(0,10)", 0, "[empty]", "(0,10)", false},
    {"[3,4]", "[3,4]", false, true, "[3,4]", false, "[3,4]", 0, "[empty]", "[3,4]", false},
    {"[3,4]", "(3,4)", false, true, "(3,4)", false, "[3,4]", 0, "[empty]", "(3,4)", false},
    {"[3,4]", "[10,12]", true, false, "[3,4]", true, "[3,12]", 1, "[3,4]", "[10,12]", false},
    {"[3,4]", "(10,12]", true, false, "[3,4]", true, "[3,12]", 1, "[3,4]", "(10,12]", false},
    {"[3,4]", "[20,30]", true, false, "[3,4]", true, "[3,30]", 1, "[3,4]", "[20,30]", false},

    {"(3,4)", "[0,10]", false, true, "(3,4)", true, "[0,10]", 0, "(empty)", "[0,10]", false},
    {"(3,4)", "(0,10)", false, true, "(3,4)", true, "(0,10)", 0, "(empty)", "(0,10)", false},
    {"(3,4)", "[3,4]", false, true, "(3,4)", true, "[3,4]", 0, "(empty)", "[3,4]", false},
    {"(3,4)", "(3,4)", false, true, "(3,4)", false, "(3,4)", 0, "(empty)", "(3,4)", false},
    {"(3,4)", "[10,12]", true, false, "(3,4)", true, "(3,12)", 1, "(3,4)", "[10,12]", false},
    {"(3,4)", "(10,12]", true, false, "(3,4)", true, "(3,12)", 1, "(3,4)", "(10,12]", false},
    {"(3,4)", "[20,30]", true, false, "(3,4)", true, "(3,30)", 1, "(3,4)", "[20,30]", false},

    {"[10,12]", "[0,10]", false, true, "[10,10]", true, "[0,12]", 1, "[10,12)", "[0,10]", true},
    {"[10,12]", "(0,10)", true, false, "(10,10)", true, "[0,12]", 1, "[10,12]", "(0,10)", false},
    {"[10,12]", "[3,4]", true, false, "[10,12]", true, "[3,12]", 1, "[10,12]", "[3,4]", false},
    {"[10,12]", "(3,4)", true, false, "[10,12]", true, "[3,12]", 1, "[10,12]", "(3,4)", false},
    {"[10,12]", "[10,12]", false, true, "[10,12]", false, "[10,12]", 0, "[empty]", "[10,12]",
     false},
    {"[10,12]", "(10,12]", false, true, "(10,12]", false, "[10,12]", 0, "[empty]", "(10,12]",
     false},
    {"[10,12]", "[20,30]", true, false, "[10,12]", true, "[10,30]", 1, "[10,12]", "[20,30]", false},

    {"(10,12]", "[0,10]", true, false, "(10,10)", true, "[0,12]", 1, "(10,12]", "[0,10]", false},
    {"(10,12]", "(0,10)", true, false, "(10,10)", true, "(0,12]", 1, "(10,12]", "(0,10)", false},
    {"(10,12]", "[3,4]", true, false, "(10,12]", true, "(3,12]", 1, "(10,12]", "[3,4]", false},
    {"(10,12]", "(3,4)", true, false, "(10,12]", true, "(3,12]", 1, "(10,12]", "(3,4)", false},
    {"(10,12]", "[10,12]", false, true, "(10,12]", false, "[10,12]", 0, "(empty]", "[10,12]",
     false},
    {"(10,12]", "(10,12]", false, true, "(10,12]", false, "(10,12]", 0, "(empty]", "(10,12]",
     false},
    {"(10,12]", "[20,30]", true, false, "(10,12]", true, "(10,30]", 1, "(10,12]", "[20,30]", false},

    {"[20,30]", "[0,10]", true, false, "[20,30]", true, "[0,30]", 1, "[20,30]", "[0,10]", false},
    {"[20,30]", "(0,10)", true, false, "[20,30]", true, "[0,30]", 1, "[20,30]", "(0,10)", false},
    {"[20,30]", "[3,4]", true, false, "[20,30]", true, "[3,30]", 1, "[20,30]", "[3,4]", false},
    {"[20,30]", "(3,4)", true, false, "[20,30]", true, "[3,30]", 1, "[20,30]", "(3,4)", false},
    {"[20,30]", "[10,12]", true, false, "[20,30]", true, "[10,30]", 1, "[20,30]", "[10,12]", false},
    {"[20,30]", "(10,12]", true, false, "[20,30]", true, "[10,30]", 1, "[20,30]", "(10,12]", false},
    {"[20,30]", "[20,30]", false, true, "[20,30]", false, "[20,30]", 0, "[empty]", "[20,30]",
     false},
};

std::string Name(const Pair& pair) {
    return std::string(pair.range) + " and " + pair.other;
}

TEST(RangeEx, TableHasEveryPair) {
    EXPECT_EQ(std::size(kPairs), 7u * 7u);
}

TEST(RangeEx, IsEmptyIntersectionFollowsTheTable) {
    for (const Pair& pair : kPairs) {
        SCOPED_TRACE(Name(pair));
        EXPECT_EQ(Range(pair.range).IsEmptyIntersection(Range(pair.other)), pair.apart);
    }
}

TEST(RangeEx, IntersectFollowsTheTable) {
    for (const Pair& pair : kPairs) {
        SCOPED_TRACE(Name(pair));
        RangeEx range = Range(pair.range);
        EXPECT_EQ(range.Intersect(Range(pair.other)), pair.intersect);
        EXPECT_EQ(Text(range), pair.intersection);
    }
}

TEST(RangeEx, UniteFollowsTheTable) {
    for (const Pair& pair : kPairs) {
        SCOPED_TRACE(Name(pair));
        RangeEx range = Range(pair.range);
        EXPECT_EQ(range.Unite(Range(pair.other)), pair.unite);
        EXPECT_EQ(Text(range), pair.united);
    }
}

TEST(RangeEx, SubtractFollowsTheTable) {
    for (const Pair& pair : kPairs) {
        SCOPED_TRACE(Name(pair));
        RangeEx range = Range(pair.range);
        RangeEx other = Range(pair.other);
        bool startChanged = !pair.startChanged;
        EXPECT_EQ(range.Subtract(other, &startChanged), pair.pieces);
        EXPECT_EQ(Text(range), pair.rest);
        EXPECT_EQ(Text(other), pair.upper);
        EXPECT_EQ(startChanged, pair.startChanged);
    }
}

TEST(RangeEx, SubtractTakesNoPointerToTheFlag) {
    for (const Pair& pair : kPairs) {
        SCOPED_TRACE(Name(pair));
        RangeEx range = Range(pair.range);
        RangeEx other = Range(pair.other);
        EXPECT_EQ(range.Subtract(other, nullptr), pair.pieces);
        EXPECT_EQ(Text(range), pair.rest);
        EXPECT_EQ(Text(other), pair.upper);
    }
}

// What touches.

TEST(RangeEx, TouchingRangesShareAPointOnlyWithBothEndsClosed) {
    for (const bool above : {false, true}) {
        for (const bool below : {false, true}) {
            const RangeEx lower(0, 1, true, below);
            const RangeEx upper(1, 2, above, true);
            EXPECT_EQ(lower.IsEmptyIntersection(upper), !(above && below));
            EXPECT_EQ(upper.IsEmptyIntersection(lower), !(above && below));
        }
    }
}

TEST(RangeEx, RangesThatTouchWithinTheToleranceTouch) {
    EXPECT_FALSE(Range("[0,1]").IsEmptyIntersection(RangeEx(1 + 5e-11, 2, true, true)));
    EXPECT_TRUE(Range("[0,1]").IsEmptyIntersection(RangeEx(1 + 5e-11, 2, false, true)));
    EXPECT_TRUE(Range("[0,1]").IsEmptyIntersection(RangeEx(1 - 5e-11, 2, false, true)));
    EXPECT_FALSE(Range("[0,1]").IsEmptyIntersection(RangeEx(1 - 2e-10, 2, false, true)));
}

TEST(RangeEx, RangesExactlyTheToleranceApartDoNotTouchAndAreNotApart) {
    const RangeEx below(-1, 0, true, false);
    const RangeEx above(1e-10, 2, false, true);
    EXPECT_FALSE(below.IsEmptyIntersection(above));
    EXPECT_FALSE(above.IsEmptyIntersection(below));
}

TEST(RangeEx, EmptyIntersectionOfPointsAsksForAllFourEnds) {
    EXPECT_FALSE(Range("[1,1]").IsEmptyIntersection(Range("[1,1]")));
    EXPECT_TRUE(Range("[1,1)").IsEmptyIntersection(Range("[1,1]")));
    EXPECT_TRUE(Range("(1,1]").IsEmptyIntersection(Range("[1,1]")));
    EXPECT_TRUE(Range("[1,1]").IsEmptyIntersection(Range("(1,1]")));
    EXPECT_TRUE(Range("[1,1]").IsEmptyIntersection(Range("[1,1)")));
    EXPECT_FALSE(Range("[1,1]").IsEmptyIntersection(Range("[0,2]")));
}

TEST(RangeEx, EmptyIntersectionWithLimitsOutOfOrderIsEmpty) {
    EXPECT_TRUE(Range("[2,1]").IsEmptyIntersection(Range("[0,5]")));
    EXPECT_TRUE(Range("[0,5]").IsEmptyIntersection(Range("[2,1]")));
    EXPECT_TRUE(RangeEx().IsEmptyIntersection(RangeEx()));
}

TEST(RangeEx, OpenPointInsideOfARangeIsNotFoundEmpty) {
    // Only the limits are asked whether they are empty.
    EXPECT_FALSE(Range("(1,1)").IsEmptyIntersection(Range("[0,5]")));
}

// Intersect.

TEST(RangeEx, IntersectOfDisjointRangesLeavesLimitsAndEnds) {
    RangeEx range = Range("(0,1]");
    EXPECT_FALSE(range.Intersect(Range("[5,6)")));
    EXPECT_EQ(Text(range), "(0,1]");
    RangeR1 real(0.0, 1.0);
    EXPECT_FALSE(real.Intersect(RangeR1(5.0, 6.0)));
    EXPECT_THAT(real, HasLimits(1e307, -1e307));  // Unlike this.
}

TEST(RangeEx, IntersectThatLeavesAnOpenPointStoresIt) {
    RangeEx range = Range("[0,1)");
    EXPECT_FALSE(range.Intersect(Range("[1,2]")));
    EXPECT_EQ(Text(range), "(1,1)");
    EXPECT_TRUE(range.IsEmpty());
}

TEST(RangeEx, IntersectOfOverlappingRangesTakesTheEndOfEach) {
    RangeEx range = Range("[0,5)");
    EXPECT_TRUE(range.Intersect(Range("(3,8]")));
    EXPECT_EQ(Text(range), "(3,5)");
    range = Range("(3,8]");
    EXPECT_TRUE(range.Intersect(Range("[0,5)")));
    EXPECT_EQ(Text(range), "(3,5)");
}

TEST(RangeEx, IntersectTestsTheUpperEndWithTheNewLowerEnd) {
    // The lower end of the other is open, so the lower end becomes open too. The upper limit of
    // the other lies within the tolerance of the old lower limit, where the closed end had it in.
    RangeEx range = Range("[0,10]");
    const RangeEx other(-8e-11, 5e-11, false, true);
    EXPECT_TRUE(range.In(5e-11, zToler));
    EXPECT_TRUE(other.In(5e-11, zToler));
    EXPECT_TRUE(range.Intersect(other));
    EXPECT_THAT(range, HasLimits(-8e-11, 5e-11));
    EXPECT_FALSE(range.m_bClosed[0]);
    EXPECT_FALSE(range.m_bClosed[1]);
}

TEST(RangeEx, IntersectWithinTheToleranceKeepsItsOwnLimits) {
    RangeEx range = Range("[0,1]");
    EXPECT_TRUE(range.Intersect(RangeEx(5e-11, 1, false, true)));
    EXPECT_THAT(range, HasLimits(0.0, 1.0));
    EXPECT_EQ(Text(range), "(0,1]");
}

TEST(RangeEx, IntersectWithItself) {
    RangeEx range = Range("(0,1]");
    EXPECT_TRUE(range.Intersect(range));
    EXPECT_EQ(Text(range), "(0,1]");
}

TEST(RangeEx, IntersectTakesTheFlagOfAnExternalRangeInside) {
    RangeEx range = Range("[0,10]");
    EXPECT_TRUE(range.Intersect(External("[3,4]")));
    EXPECT_EQ(Text(range), "[3,4]");
    EXPECT_TRUE(range.IsExternal());
}

// Unite.

TEST(RangeEx, UniteTakesTheEndsOfARangeThatCoversThis) {
    for (const char* cover : {"[0,10]", "[0,10)", "(0,10]", "(0,10)"}) {
        RangeEx range = Range("[3,4)");
        EXPECT_TRUE(range.Unite(Range(cover)));
        EXPECT_EQ(Text(range), cover);
    }
}

TEST(RangeEx, UniteFillsAnOpenEndAtAClosedLimit) {
    RangeEx range = Range("(0,1)");
    EXPECT_TRUE(range.Unite(Range("[1,2)")));
    EXPECT_EQ(Text(range), "(0,2]");  // The end at 1 was closed, and it is the end that moved.
}

TEST(RangeEx, UniteOfRangesThatLieApartKeepsTheOwnEndWhereTheLimitMoves) {
    RangeEx range = Range("[0,1)");
    EXPECT_TRUE(range.Unite(Range("[5,6]")));
    EXPECT_EQ(Text(range), "[0,6)");
}

TEST(RangeEx, UniteReportsOnlyTheChangeOfTheLastEndThatItLooksAt) {
    RangeEx both = Range("(0,1)");
    EXPECT_TRUE(both.Unite(Range("[0,1]")));
    EXPECT_EQ(Text(both), "[0,1]");
    RangeEx lower = Range("(0,1]");
    EXPECT_FALSE(lower.Unite(Range("[0,1]")));  // The lower end changed all the same.
    EXPECT_EQ(Text(lower), "[0,1]");
    RangeEx upper = Range("[0,1)");
    EXPECT_TRUE(upper.Unite(Range("[0,1]")));
    EXPECT_EQ(Text(upper), "[0,1]");
    RangeEx lowerAlone = Range("(0,1]");
    EXPECT_TRUE(lowerAlone.Unite(Range("[0,0.5]")));  // The upper end was not looked at.
    EXPECT_EQ(Text(lowerAlone), "[0,1]");
}

TEST(RangeEx, UniteWithTheCanonicalEmptyRangeClosesBothEnds) {
    // It has every number in, and its own ends are closed.
    RangeEx range = Range("(0,1)");
    EXPECT_TRUE(range.Unite(RangeEx()));
    EXPECT_EQ(Text(range), "[0,1]");
}

TEST(RangeEx, UniteOfTheCanonicalEmptyRangeTakesTheLimitsAndKeepsItsEnds) {
    RangeEx range;
    EXPECT_TRUE(range.Unite(Range("(0,1)")));
    EXPECT_EQ(Text(range), "[0,1]");
}

TEST(RangeEx, UniteKeepsItsExternalFlag) {
    RangeEx range = Range("[0,1]");
    range.Unite(External("[0,5]"));
    EXPECT_FALSE(range.IsExternal());
}

// Subtract.

TEST(RangeEx, SubtractAtTheEndLeavesTheLowerPiece) {
    RangeEx range = Range("[0,10]");
    RangeEx other = Range("[4,20]");
    bool startChanged = true;
    EXPECT_EQ(range.Subtract(other, &startChanged), 1);
    EXPECT_EQ(Text(range), "[0,4)");
    EXPECT_EQ(Text(other), "[4,20]");
    EXPECT_FALSE(startChanged);
    RangeEx open = Range("(4,20]");
    range = Range("(0,10]");
    EXPECT_EQ(range.Subtract(open, nullptr), 1);
    EXPECT_EQ(Text(range), "(0,4]");
}

TEST(RangeEx, SubtractAtTheStartChangesTheUpperEndByTheStartOfTheOther) {
    const struct {
        const char* range;
        const char* other;
        const char* rest;
    } rows[] = {
        {"[0,10]", "[-5,4]", "[4,10)"}, {"[0,10]", "(-5,4]", "[4,10]"},
        {"[0,10]", "[-5,4)", "[4,10)"}, {"(0,10)", "(-5,4)", "(4,10]"},
        {"(0,10]", "[0,4]", "(4,10)"},  {"[0,10)", "(0,4)", "[4,10]"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.range << " without " << row.other);
        RangeEx range = Range(row.range);
        RangeEx other = Range(row.other);
        bool startChanged = false;
        EXPECT_EQ(range.Subtract(other, &startChanged), 1);
        EXPECT_EQ(Text(range), row.rest);
        EXPECT_EQ(Text(other), row.other);
        EXPECT_TRUE(startChanged);
    }
}

TEST(RangeEx, SubtractFromTheMiddleReturnsTheUpperPieceInTheArgument) {
    const struct {
        const char* range;
        const char* other;
        const char* below;
        const char* above;
    } rows[] = {
        {"[0,10]", "[3,4]", "[0,3)", "(4,10]"}, {"[0,10]", "(3,4]", "[0,3]", "(4,10]"},
        {"[0,10]", "[3,4)", "[0,3)", "[4,10]"}, {"(0,10)", "(3,4)", "(0,3]", "[4,10)"},
        {"[0,10)", "[3,4]", "[0,3)", "(4,10)"}, {"[0,10]", "[3,3]", "[0,3)", "(3,10]"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.range << " without " << row.other);
        RangeEx range = Range(row.range);
        RangeEx other = Range(row.other);
        bool startChanged = true;
        EXPECT_EQ(range.Subtract(other, &startChanged), 2);
        EXPECT_EQ(Text(range), row.below);
        EXPECT_EQ(Text(other), row.above);
        EXPECT_FALSE(startChanged);
    }
}

TEST(RangeEx, SubtractOfAPointCutsWhereTheRealIntervalStaysWhole) {
    RangeEx range = Range("[0,10]");
    RangeEx point = Range("[3,3]");
    EXPECT_EQ(range.Subtract(point, nullptr), 2);
    RangeR1 real(0.0, 10.0);
    RangeR1 realPoint(3.0, 3.0);
    EXPECT_EQ(real.Subtract(realPoint), 1);
}

TEST(RangeEx, SubtractOfAnOpenPointTakesNothingAway) {
    RangeEx range = Range("[0,10]");
    RangeEx point = Range("(3,3)");
    EXPECT_EQ(range.Subtract(point, nullptr), 1);
    EXPECT_EQ(Text(range), "[0,10]");
}

struct SetCounter : RangeEx {
    using RangeEx::RangeEx;
    void Set(double lo, double hi) override {
        ++sets;
        RangeEx::Set(lo, hi);
    }
    int sets = 0;
};

TEST(RangeEx, SubtractStoresAnUpperPieceAloneThroughSet) {
    SetCounter range(0, 10, true, true);
    SetCounter other(-5, 4, true, true);
    EXPECT_EQ(range.Subtract(other, nullptr), 1);
    EXPECT_EQ(range.sets, 1);
    EXPECT_EQ(other.sets, 0);
}

TEST(RangeEx, SubtractStoresTheUpperPieceOfTwoThroughTheSetOfTheArgument) {
    SetCounter range(0, 10, true, true);
    SetCounter other(3, 4, true, true);
    EXPECT_EQ(range.Subtract(other, nullptr), 2);
    EXPECT_EQ(range.sets, 0);
    EXPECT_EQ(other.sets, 1);
}

TEST(RangeEx, SubtractLeavesALowerPieceShorterThanTheTolerance) {
    RangeEx range = Range("[0,10]");
    RangeEx other(5e-11, 4, true, true);
    bool startChanged = true;
    EXPECT_EQ(range.Subtract(other, &startChanged), 2);
    EXPECT_THAT(range, HasLimits(0.0, 5e-11));
    EXPECT_TRUE(range.m_bClosed[0]);
    EXPECT_FALSE(range.m_bClosed[1]);
    EXPECT_EQ(Text(other), "(4,10]");
    EXPECT_FALSE(startChanged);
}

TEST(RangeEx, SubtractOfTheCanonicalEmptyRangeLeavesNothing) {
    RangeEx range = Range("[0,1)");
    RangeEx other;
    bool startChanged = true;
    EXPECT_EQ(range.Subtract(other, &startChanged), 0);
    EXPECT_EQ(Text(range), "[empty)");
    EXPECT_EQ(Text(other), "[empty]");
    EXPECT_FALSE(startChanged);
}

TEST(RangeEx, SubtractFromItselfLeavesNothing) {
    RangeEx range = Range("(0,1]");
    EXPECT_EQ(range.Subtract(range, nullptr), 0);
    EXPECT_EQ(Text(range), "(empty]");
}

TEST(RangeEx, SubtractFromAnOpenPointMakesItCanonicallyEmpty) {
    RangeEx range = Range("(5,5)");
    RangeEx other = Range("[20,30]");
    EXPECT_EQ(range.Subtract(other, nullptr), 0);
    EXPECT_EQ(Text(range), "(empty)");
}

TEST(RangeEx, SubtractThatCoversThisWithoutHavingItInsideAnswersNoneAndKeepsTheLimits) {
    // The limits of an external range cover this one, but its hole does not hold the limits.
    RangeEx range = Range("[0,1]");
    RangeEx other = External("[-5,5]");
    bool startChanged = false;
    EXPECT_EQ(range.Subtract(other, &startChanged), 0);
    EXPECT_EQ(Text(range), "[0,1)");
    EXPECT_TRUE(startChanged);

    range = Range("(0,1)");
    RangeEx atTheEnd = External("[-5,1]");  // It has its own border in.
    EXPECT_EQ(range.Subtract(atTheEnd, nullptr), 0);
    EXPECT_EQ(Text(range), "(0,1]");
}

TEST(RangeEx, SubtractKeepsTheExternalFlagOfThePieces) {
    RangeEx range = External("[0,10]");
    RangeEx other = External("[3,4]");
    ASSERT_EQ(range.Subtract(other, nullptr), 0);  // Outside of each other's holes is inside.
    RangeEx plain = Range("[3,4]");
    range = External("[0,10]");
    EXPECT_EQ(range.Subtract(plain, nullptr), 2);
    EXPECT_TRUE(range.IsExternal());
    EXPECT_FALSE(plain.IsExternal());
}

}  // namespace
}  // namespace ZT
