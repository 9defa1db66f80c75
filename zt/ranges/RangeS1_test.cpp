// The record of an arc, its states, its points and its tests of points.

#include <zt/ranges/RangeS1.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sibling/RangeS1.h>
#include <zt/ranges/RangeS1Family_test.h>

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZT {
namespace {

using namespace testing_support;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kWithin = 5e-11;
constexpr double kBeyond = 2e-10;

// Whether a second pass of the reduction changes the angle's bits, so that one pass and two
// are told apart.
bool SecondPassCounts(double angle) {
    return S1(angle).GetAngle() != S1::Factorize(angle);
}

// The record.

TEST(RangeS1, StateFollowsTheRecordOfARealInterval) {
    EXPECT_EQ(offsetof(RangeS1, m_min), 8u);
    EXPECT_EQ(offsetof(RangeS1, m_max), 16u);
    EXPECT_EQ(offsetof(RangeS1, m_bExternal), 24u);
    EXPECT_EQ(offsetof(RangeS1, m_eState), 28u);
    EXPECT_EQ(sizeof(RangeS1), 32u);
    EXPECT_TRUE((std::is_same_v<decltype(RangeS1::m_eState), RangeS1::EState>));
}

TEST(RangeS1, StatesHaveTheirValues) {
    EXPECT_EQ(sizeof(RangeS1::EState), 4u);
    EXPECT_EQ(RangeS1::eStateFull, 0);
    EXPECT_EQ(RangeS1::eStateEmpty, 1);
    EXPECT_EQ(RangeS1::eStatePartial, 2);
}

struct Recorder : RangeS1 {
    explicit Recorder(std::vector<std::string>* log) : m_log(log) {}
    ~Recorder() override { m_log->push_back("destructor"); }
    EClass GetClass() const override {
        m_log->push_back("GetClass");
        return eClassS1;
    }
    void Set(double, double) override { m_log->push_back("Set"); }
    std::vector<std::string>* m_log;
};

TEST(RangeS1, VirtualOperationsAreGetClassSetAndTheDestructorInOrder) {
    std::vector<std::string> log;
    alignas(Recorder) std::byte memory[sizeof(Recorder)];
    auto* const arc = new (memory) Recorder(&log);
    void** table = nullptr;
    std::memcpy(&table, memory, sizeof table);
    reinterpret_cast<RangeR1::EClass (*)(const RangeS1*)>(table[0])(arc);
    reinterpret_cast<void (*)(RangeS1*, double, double)>(table[1])(arc, 0.0, 1.0);
    reinterpret_cast<void (*)(RangeS1*)>(table[2])(arc);
    EXPECT_THAT(log, testing::ElementsAre("GetClass", "Set", "destructor"));
}

TEST(RangeS1, ClassIsS1) {
    const RangeS1 arc;
    EXPECT_EQ(arc.GetClass(), RangeR1::eClassS1);
    EXPECT_EQ(static_cast<const RangeR1&>(arc).GetClass(), 2);
}

// What is named in an arc hides what a real interval has by that name.

template <class T>
constexpr bool kHidesRealForms = !requires(T t) {
    t.In(1.0, 0.1);
}
&&!requires(T t) {
    t.In(1.0, 0.0, 2.0, 0.1);
}
&&!requires(T t) {
    t.InOpen(1.0, 0.1);
}
&&!requires(T t) {
    t.SetFull(true);
}
&&!requires(T t) {
    t.GetPoint(1, 4);
}
&&!requires(T t) {
    t.GetPoint(0.5, 0.0, 1.0);
}
&&!requires(T t) {
    t.GetRatio(0.5, 0.0, 1.0);
}
&&!requires(T t) {
    t.GetDiff(0.5, 0.25);
}
&&!requires(T t, RangeR1 r) {
    t.IsInsideOf(r);
}
&&!requires(T t, RangeR1 r) {
    t.Intersect(r);
}
&&!requires(T t, RangeR1 r) {
    t.Subtract(r);
}
&&!requires(T t, RangeR1 r) {
    t.IsEmptyIntersection(r, true);
}
&&!requires(T t, RangeR1 r) {
    t >= r;
}
&&!requires(T t, PW::Range* r) {
    t.CopyToPw(r);
}
&&!requires(T t, RangeR1 r) {
    t = r;
};

TEST(RangeS1, HidesTheNamesakesOfARealIntervalInAllTheirForms) {
    EXPECT_TRUE(kHidesRealForms<RangeS1>);
    EXPECT_FALSE(kHidesRealForms<RangeR1>);
}

TEST(RangeS1, HiddenNamesakesStayCallableOnTheLimits) {
    RangeS1 arc = EmptyArc(1.0, 2.0);
    EXPECT_FALSE(arc.RangeR1::IsEmpty());
    EXPECT_TRUE(RawArc(2.0, 1.0).RangeR1::IsEmpty());
    EXPECT_TRUE(arc.RangeR1::In(1.5, 0.1));
    EXPECT_THAT(arc.RangeR1::GetPoint(1, 4), Is(1.25));
    EXPECT_TRUE(arc.RangeR1::IsValid());
    arc.RangeR1::SetEmpty();
    EXPECT_THAT(arc, IsArc(1e307, -1e307, RangeS1::eStateEmpty));
}

TEST(RangeS1, InheritedOperationsWorkOnTheLimitsAndLeaveTheState) {
    RangeS1 arc = RawArc(1.0, 3.0, RangeS1::eStateFull);
    EXPECT_THAT(arc.GetLength(), Is(2.0));
    EXPECT_THAT(arc.GetCenter(), Is(2.0));
    EXPECT_FALSE(arc.IsSingleton());
    arc.Include(100.0);
    EXPECT_THAT(arc, IsArc(1.0, 100.0, RangeS1::eStateFull));
    arc.Swap();
    EXPECT_THAT(arc, IsArc(100.0, 1.0, RangeS1::eStateFull));
    arc.RangeR1::Translate(1.0);
    EXPECT_THAT(arc, IsArc(101.0, 2.0, RangeS1::eStateFull));
}

TEST(RangeS1, InheritedOperationsThatGoThroughSetArriveInCanonicalForm) {
    RangeS1 arc = RawArc(1.0, 2.0);
    arc.SetMinKeepLength(6.0);
    EXPECT_THAT(arc, IsPartial(S1::Factorize(6.0), S1::Factorize(7.0)));
    arc = RawArc(-2.0, 1.0);
    arc.MakeSymmetric();
    EXPECT_THAT(arc, IsPartial(S1::Factorize(-2.0), S1::Factorize(2.0)));
}

TEST(RangeS1, FullAngleOfARealIntervalIsTheWholeCircle) {
    RangeS1 arc(1.0, 2.0);
    arc.SetFullAngle();
    EXPECT_THAT(arc, IsCanonicallyFull());
    RangeS1 other(1.0, 2.0);
    other.RangeR1::SetFull(false);
    EXPECT_THAT(other, IsCanonicallyFull());
}

// Making and storing.

TEST(RangeS1, NewArcIsFullButNotWithTheCanonicalLimits) {
    const RangeS1 arc;
    EXPECT_THAT(arc, IsArc(0.0, 0.0, RangeS1::eStateFull));
    EXPECT_FALSE(arc.IsExternal());
}

TEST(RangeS1, MadeFromAnglesIsCanonicalAndPartial) {
    EXPECT_THAT(RangeS1(0.0, 0.0), IsPartial(0.0, 0.0));
    const RangeS1 arc(7.0, -4.0);
    EXPECT_THAT(arc, IsPartial(S1::Factorize(7.0), S1::Factorize(-4.0)));
    EXPECT_FALSE(arc.IsExternal());
    ASSERT_TRUE(SecondPassCounts(37.5) && SecondPassCounts(18.75));
    EXPECT_THAT(RangeS1(37.5, 18.75), IsPartial(-0.19911184307748012, -0.09955592153874006));
}

TEST(RangeS1, MadeFromAnglesDoesNotDetectTheFullCircle) {
    EXPECT_THAT(RangeS1(-zPi, zPi), IsPartial(zPi, zPi));
    EXPECT_THAT(RangeS1(-zPi + 5e-10, zPi), IsPartial(S1::Factorize(-zPi + 5e-10), zPi));
}

TEST(RangeS1, MadeFromPointsTakesTheirAnglesAsTheyAre) {
    S1 raw;
    raw.m_angle = 100.0;
    S1 minusPi;
    minusPi.m_angle = -zPi;
    const RangeS1 arc(raw, minusPi);
    EXPECT_THAT(arc, IsPartial(100.0, -zPi));
    EXPECT_FALSE(arc.IsExternal());
}

TEST(RangeS1, CopyConstructorTakesAllFields) {
    const RangeS1 copy(ExternalArc(100.0, -zPi, RangeS1::eStateEmpty));
    EXPECT_THAT(copy, IsArc(100.0, -zPi, RangeS1::eStateEmpty));
    EXPECT_TRUE(copy.IsExternal());
}

TEST(RangeS1, AssignmentStoresADifferentArc) {
    RangeS1 arc(1.0, 2.0);
    EXPECT_TRUE(arc = ExternalArc(2.0, 3.0, RangeS1::eStateFull));
    EXPECT_THAT(arc, IsArc(2.0, 3.0, RangeS1::eStateFull));
    EXPECT_TRUE(arc.IsExternal());
}

TEST(RangeS1, AssignmentWithinTheToleranceKeepsTheLimitsAndTakesTheState) {
    RangeS1 arc = RawArc(1.0, 2.0);
    EXPECT_FALSE(arc = EmptyArc(1.0 + kWithin, 2.0 - kWithin));
    EXPECT_THAT(arc, IsArc(1.0, 2.0, RangeS1::eStateEmpty));
}

TEST(RangeS1, AssignmentToItselfChangesNothing) {
    RangeS1 arc = EmptyArc(1.0, 2.0);
    const RangeS1& itself = arc;
    EXPECT_FALSE(arc = itself);
    EXPECT_THAT(arc, IsArc(1.0, 2.0, RangeS1::eStateEmpty));
}

// What a call stores in an arc that was empty and external before.
template <class Call>
RangeS1 After(Call call) {
    RangeS1 arc = ExternalArc(0.25, 0.5, RangeS1::eStateEmpty);
    call(arc);
    EXPECT_TRUE(arc.m_bExternal) << "the flag stays";
    return arc;
}

RangeS1 AfterSet(double a, double b) {
    return After([=](RangeS1& arc) { arc.Set(a, b); });
}

TEST(RangeS1, SetBringsAnglesIntoCanonicalForm) {
    EXPECT_THAT(AfterSet(7.0, -4.0), IsPartial(S1::Factorize(7.0), S1::Factorize(-4.0)));
    EXPECT_THAT(AfterSet(0.0, zPi), IsPartial(0.0, zPi));
    EXPECT_THAT(AfterSet(3 * zPi, -zPi), IsPartial(zPi, zPi));
    ASSERT_TRUE(SecondPassCounts(37.5) && SecondPassCounts(18.75));
    EXPECT_THAT(AfterSet(37.5, 18.75), IsPartial(-0.19911184307748012, -0.09955592153874006));
}

TEST(RangeS1, SetFindsTheFullCircle) {
    EXPECT_THAT(AfterSet(-zPi, zPi), IsCanonicallyFull());
    EXPECT_THAT(AfterSet(-3.14159265343979, zPi), IsCanonicallyFull());
    EXPECT_THAT(AfterSet(-zPi + 9e-10, zPi), IsCanonicallyFull());
    EXPECT_THAT(AfterSet(-zPi, zPi - kWithin), IsCanonicallyFull());
    EXPECT_THAT(AfterSet(-zPi, zPi + kWithin), IsCanonicallyFull());
}

TEST(RangeS1, SetTakesAnArcJustShortOfTheFullCircleAsPartial) {
    EXPECT_EQ(AfterSet(-zPi + 1.1e-9, zPi).m_eState, RangeS1::eStatePartial);
    EXPECT_EQ(AfterSet(-zPi + 5e-10, zPi - kBeyond).m_eState, RangeS1::eStatePartial);
}

TEST(RangeS1, SetTestsTheRawAnglesFirst) {
    // Any start below -pi is at -pi as it arrives, for an end at pi and for no other.
    EXPECT_THAT(AfterSet(-100.0, zPi), IsCanonicallyFull());
    EXPECT_THAT(AfterSet(-1e300, zPi), IsCanonicallyFull());
    EXPECT_THAT(AfterSet(-100.0, -zPi), IsPartial(S1::Factorize(-100.0), zPi));
    EXPECT_THAT(AfterSet(-100.0, 1.0), IsPartial(S1::Factorize(-100.0), S1::Factorize(1.0)));
    // An end above pi by more than the tolerance is not at pi.
    EXPECT_THAT(AfterSet(-zPi, zPi + kBeyond), IsPartial(zPi, S1::Factorize(zPi + kBeyond)));
}

TEST(RangeS1, SetTestsTheCanonicalAnglesToo) {
    EXPECT_THAT(AfterSet(zPi + 5e-10, 3 * zPi), IsCanonicallyFull());
    EXPECT_THAT(AfterSet(zPi + 5e-10, -zPi), IsCanonicallyFull());
    EXPECT_EQ(AfterSet(zPi + 1.1e-9, 3 * zPi).m_eState, RangeS1::eStatePartial);
    // In canonical form -pi is pi, and so this is the point at the seam.
    EXPECT_THAT(AfterSet(zPi, 3 * zPi), IsPartial(zPi, zPi));
}

TEST(RangeS1, SetNeverMakesAnEmptyArc) {
    EXPECT_THAT(AfterSet(1.0, 1.0), IsPartial(S1::Factorize(1.0), S1::Factorize(1.0)));
    EXPECT_EQ(AfterSet(2.0, 1.0).m_eState, RangeS1::eStatePartial);
    EXPECT_EQ(AfterSet(1e307, -1e307).m_eState, RangeS1::eStatePartial);
    EXPECT_EQ(AfterSet(kNaN, kNaN).m_eState, RangeS1::eStatePartial);
}

TEST(RangeS1, BandOfTheFullCircleIsTenTolerancesToTheBit) {
    EXPECT_THAT(zSeamBand, Is(std::pow(10.0, 1.0) * zToler));
    const double last = std::nextafter(zSeamBand - zPi, -4.0);
    EXPECT_THAT(AfterSet(last, zPi), IsCanonicallyFull());
}

RangeS1 AfterCopy(double a, double b) {
    return After([=](RangeS1& arc) { arc.Copy(RangeR1(a, b)); });
}

TEST(RangeS1, CopyOfDifferentLimitsIsPartial) {
    EXPECT_THAT(AfterCopy(7.0, -4.0), IsPartial(S1::Factorize(7.0), S1::Factorize(-4.0)));
}

TEST(RangeS1, CopyOfEqualLimitsIsTheFullCircleWhileSetMakesAPoint) {
    EXPECT_THAT(AfterCopy(1.0, 1.0), IsCanonicallyFull());
    EXPECT_THAT(AfterCopy(1.0, 1.0 + kWithin), IsCanonicallyFull());
    EXPECT_THAT(AfterSet(1.0, 1.0), IsPartial(S1::Factorize(1.0), S1::Factorize(1.0)));
}

TEST(RangeS1, CopyOfLimitsAtTheSeamIsTheFullCircle) {
    EXPECT_THAT(AfterCopy(-zPi, zPi), IsCanonicallyFull());
    EXPECT_THAT(AfterCopy(zPi - 9e-10, -zPi + 9e-10), IsCanonicallyFull());
}

TEST(RangeS1, CopyComparesTheRawLimits) {
    // A turn apart is not the same number, nor at the seam.
    EXPECT_THAT(AfterCopy(1.0, 1.0 + z2Pi),
                IsPartial(S1::Factorize(1.0), S1::Factorize(1.0 + z2Pi)));
}

TEST(RangeS1, CopyMakesAPartialPointOfAFullCircleThatSetFindsByTheRawLimits) {
    EXPECT_THAT(AfterCopy(-100.0, zPi), IsPartial(zPi, zPi));
}

TEST(RangeS1, CopyOfAnArcLooksAtItsLimitsAlone) {
    RangeS1 arc(1.0, 2.0);
    arc.Copy(ExternalArc(0.0, zPi, RangeS1::eStateEmpty));
    EXPECT_THAT(arc, IsPartial(0.0, zPi));
    EXPECT_FALSE(arc.m_bExternal);
    arc.Copy(RangeS1());
    EXPECT_THAT(arc, IsCanonicallyFull());
}

struct SiblingArc : PW::RangeS1 {
    std::vector<std::pair<double, double>> sets;
    void Set(double lo, double hi) override {
        sets.emplace_back(lo, hi);
        PW::RangeS1::Set(lo, hi);
    }
};

TEST(RangeS1, CopyToPwHandsOverLimitsFlagAndState) {
    SiblingArc target;
    ExternalArc(2.0, 1.0, RangeS1::eStatePartial).CopyToPw(&target);
    EXPECT_THAT(target.sets, testing::ElementsAre(std::pair(2.0, 1.0)));
    EXPECT_THAT(target.GetMin(), Is(2.0));
    EXPECT_THAT(target.GetMax(), Is(1.0));
    EXPECT_TRUE(target.IsExternal());
    EXPECT_EQ(target.GetState(), PW::RangeS1::eStatePartial);
    FullArc().CopyToPw(&target);
    EXPECT_FALSE(target.IsExternal());
    EXPECT_EQ(target.GetState(), PW::RangeS1::eStateFull);
    EmptyArc(1.0, 2.0).CopyToPw(&target);
    EXPECT_EQ(target.GetState(), PW::RangeS1::eStateEmpty);
    EXPECT_THAT(target.GetMin(), Is(1.0));
}

TEST(RangeS1, UpdateRepairsLimitsAndState) {
    RangeS1 arc = RawArc(1.0, 2.0);
    arc.RangeR1::Translate(6.0);
    arc.Update();
    EXPECT_THAT(arc, IsPartial(S1::Factorize(7.0), S1::Factorize(8.0)));
    RangeS1 empty = EmptyArc(0.0, zPi);
    empty.Update();
    EXPECT_THAT(empty, IsPartial(0.0, zPi));
    RangeS1 raw = RawArc(-zPi, zPi);
    raw.Update();
    EXPECT_THAT(raw, IsCanonicallyFull());
    // The limits of a full circle are the point at the seam to Set.
    raw.Update();
    EXPECT_THAT(raw, IsPartial(zPi, zPi));
}

TEST(RangeS1, SetEmptyKeepsTheLimits) {
    EXPECT_THAT(After([](RangeS1& arc) {
                    arc.m_eState = RangeS1::eStatePartial;
                    arc.SetEmpty();
                }),
                IsArc(0.25, 0.5, RangeS1::eStateEmpty));
}

TEST(RangeS1, SetFullStoresTheCanonicalLimits) {
    EXPECT_THAT(After([](RangeS1& arc) { arc.SetFull(); }), IsCanonicallyFull());
}

RangeS1 Complement(RangeS1 arc) {
    arc.SetComplimentary();
    return arc;
}

TEST(RangeS1, SetComplimentaryOfPartialExchangesTheLimitsThroughSet) {
    EXPECT_THAT(Complement(RawArc(1.0, 2.0)), IsPartial(S1::Factorize(2.0), S1::Factorize(1.0)));
    EXPECT_THAT(Complement(RawArc(7.0, -4.0)), IsPartial(S1::Factorize(-4.0), S1::Factorize(7.0)));
    EXPECT_TRUE(Complement(ExternalArc(1.0, 2.0)).m_bExternal);
}

TEST(RangeS1, SetComplimentaryOfEmptyIsFull) {
    EXPECT_THAT(Complement(EmptyArc(1.0, 2.0)), IsCanonicallyFull());
}

TEST(RangeS1, SetComplimentaryOfFullIsFullWhileGetComplimentaryGivesEmpty) {
    EXPECT_THAT(Complement(FullArc()), IsCanonicallyFull());
    EXPECT_THAT(Complement(RangeS1()), IsCanonicallyFull());
    RangeS1 out;
    EXPECT_FALSE(FullArc().GetComplimentary(out));
    EXPECT_TRUE(out.IsEmpty());
}

TEST(RangeS1, SetComplimentaryOfAPointIsFullWhileGetComplimentaryGivesThePoint) {
    EXPECT_THAT(Complement(RawArc(1.0, 1.0)), IsCanonicallyFull());
    RangeS1 out;
    EXPECT_TRUE(RawArc(1.0, 1.0).GetComplimentary(out));
    EXPECT_THAT(out, IsPartial(1.0, 1.0));
}

TEST(RangeS1, SetComplimentaryOfASliverAtTheSeamIsFull) {
    EXPECT_THAT(Complement(RawArc(zPi - 9e-10, -zPi + 9e-10)), IsCanonicallyFull());
}

TEST(RangeS1, SetComplimentaryOfRawLimitsCanBeThePointAtTheSeam) {
    EXPECT_THAT(Complement(RawArc(zPi, -100.0)), IsPartial(zPi, zPi));
}

TEST(RangeS1, TranslateReducesBothLimitsAndKeepsTheState) {
    RangeS1 arc = ExternalArc(1.0, 3.0);
    arc.Translate(0.5);
    EXPECT_THAT(arc, IsPartial(S1::Factorize(1.5), S1::Factorize(3.5)));
    EXPECT_TRUE(arc.m_bExternal);
    RangeS1 empty = EmptyArc(1.0, 3.0);
    empty.Translate(100.0);
    EXPECT_THAT(empty, IsArc(S1::Factorize(101.0), S1::Factorize(103.0), RangeS1::eStateEmpty));
}

TEST(RangeS1, TranslateReducesTwice) {
    ASSERT_TRUE(SecondPassCounts(2.29 + 3.0) && SecondPassCounts(2.22 + zPi));
    RangeS1 start = RawArc(2.29, 1.0);
    start.Translate(3.0);
    EXPECT_THAT(start, IsPartial(-0.9931853071795799, -2.2831853071795796));
    RangeS1 end = RawArc(1.0, 2.22);
    end.Translate(zPi);
    EXPECT_THAT(end.m_max, Is(-0.9215926535897899));
}

TEST(RangeS1, TranslateMovesTheLimitsOfAFullCircleToo) {
    RangeS1 arc = FullArc();
    arc.Translate(1.0);
    const double limit = S1::Factorize(zPi + 1.0);
    EXPECT_THAT(arc, IsArc(limit, limit, RangeS1::eStateFull));
}

TEST(RangeS1, TranslateDoesNotFindTheFullCircle) {
    RangeS1 arc = RawArc(-zPi + 5e-10 - 1.0, zPi - 1.0);
    arc.Translate(1.0);
    EXPECT_EQ(arc.m_eState, RangeS1::eStatePartial);
    EXPECT_THAT(arc.m_max, testing::DoubleNear(zPi, 1e-14));
}

// State.

TEST(RangeS1, EmptyAndFullAreTheStateAlone) {
    EXPECT_TRUE(EmptyArc(1.0, 2.0).IsEmpty());
    EXPECT_FALSE(EmptyArc(1.0, 2.0).IsFull());
    EXPECT_TRUE(RawArc(1.0, 2.0, RangeS1::eStateFull).IsFull());
    EXPECT_FALSE(RawArc(1.0, 2.0, RangeS1::eStateFull).IsEmpty());
    EXPECT_FALSE(RawArc(2.0, 1.0).IsEmpty());
    EXPECT_FALSE(RawArc(-1e307, 1e307).IsFull());
    EXPECT_FALSE(RawArc(zPi, zPi).IsFull());
}

TEST(RangeS1, FullCircleIsAnEmptyIntervalToo) {
    EXPECT_TRUE(FullArc().IsEmptyInterval());
    EXPECT_TRUE(RangeS1().IsEmptyInterval());
    EXPECT_TRUE(EmptyArc(1.0, 2.0).IsEmptyInterval());
    EXPECT_TRUE(RawArc(1.0, 1.0 + kWithin).IsEmptyInterval());
    EXPECT_FALSE(RawArc(1.0, 1.0 + kBeyond).IsEmptyInterval());
    EXPECT_FALSE(RawArc(2.0, 1.0).IsEmptyInterval());
    EXPECT_FALSE(RawArc(1.0, 2.0, RangeS1::eStateFull).IsEmptyInterval());
}

TEST(RangeS1, SingularArcHoldsTheSeamInItsInteriorOrAtItsStart) {
    EXPECT_TRUE(RawArc(2.0, -2.0).IsSingular());
    EXPECT_TRUE(RawArc(zPi, -2.0).IsSingular());
    EXPECT_TRUE(RawArc(2.0, 1.0).IsSingular());
    EXPECT_FALSE(RawArc(2.0, zPi).IsSingular());
    EXPECT_FALSE(RawArc(2.0, zPi - kWithin).IsSingular());
    EXPECT_FALSE(RawArc(1.0, 2.0).IsSingular());
    EXPECT_FALSE(RawArc(-2.0, 2.0).IsSingular());
    EXPECT_FALSE(RawArc(zPi, zPi).IsSingular());
}

TEST(RangeS1, SingularityFollowsTheFlag) {
    EXPECT_TRUE(ExternalArc(1.0, 2.0).IsSingular());
    EXPECT_FALSE(ExternalArc(2.0, -2.0).IsSingular());
    EXPECT_TRUE(ExternalArc(-2.0, 2.0).IsSingular());
    // The end that counts is m_max, also where that is the start.
    EXPECT_FALSE(ExternalArc(1.0, zPi).IsSingular());
}

TEST(RangeS1, FullCircleIsSingularAndAnEmptyArcIsNot) {
    EXPECT_TRUE(FullArc().IsSingular());
    EXPECT_TRUE(RawArc(1.0, 2.0, RangeS1::eStateFull).IsSingular());
    EXPECT_FALSE(EmptyArc(2.0, -2.0).IsSingular());
}

TEST(RangeS1, SingularityOfTwoAnglesReducesThem) {
    EXPECT_TRUE(RangeS1::IsSingular(2.0, -2.0));
    EXPECT_TRUE(RangeS1::IsSingular(2.0, z2Pi - 2.0));
    EXPECT_TRUE(RangeS1::IsSingular(-zPi, 0.0));
    EXPECT_FALSE(RangeS1::IsSingular(2.0, -zPi));
    EXPECT_FALSE(RangeS1::IsSingular(1.0, 2.0));
    EXPECT_FALSE(RangeS1::IsSingular(-zPi, zPi));
}

TEST(RangeS1, PartialArcIsValidUnlessItsLimitsAreEqualAtPi) {
    EXPECT_TRUE(RawArc(1.0, 2.0).IsValid());
    EXPECT_TRUE(RawArc(2.0, -2.0).IsValid());
    EXPECT_TRUE(RawArc(1.0, 1.0).IsValid());
    EXPECT_FALSE(RawArc(zPi, zPi).IsValid());
    EXPECT_FALSE(RawArc(zPi - kWithin, zPi).IsValid());
}

TEST(RangeS1, LimitsAtTheSeamAreAtPiByTheStartAlone) {
    // Both at the seam, but the start is not within the tolerance of pi.
    EXPECT_TRUE(RawArc(zPi - kBeyond, zPi).IsValid());
    EXPECT_TRUE(RawArc(-zPi + 5e-10, zPi).IsValid());
    EXPECT_FALSE(RawArc(zPi, -zPi + 5e-10).IsValid());
}

TEST(RangeS1, OtherStatesAreValidWithEqualLimitsOnly) {
    EXPECT_TRUE(FullArc().IsValid());
    EXPECT_TRUE(RangeS1().IsValid());
    EXPECT_FALSE(RawArc(1.0, 2.0, RangeS1::eStateFull).IsValid());
    EXPECT_FALSE(EmptyArc(1.0, 2.0).IsValid());
    EXPECT_TRUE(EmptyArc(1.0, 1.0).IsValid());
    EXPECT_TRUE(EmptyArc(zPi, zPi).IsValid());
}

TEST(RangeS1, LimitsAreValidByTheTighterBoundAtMinusPi) {
    EXPECT_FALSE(RawArc(-zPi, 1.0).IsValid());
    EXPECT_FALSE(RawArc(1.0, -zPi).IsValid());
    EXPECT_TRUE(RawArc(-zPiMinus, 1.0).IsValid());
    EXPECT_TRUE(RawArc(1.0, zPiPlus).IsValid());
    EXPECT_FALSE(RawArc(1.0, 4.0).IsValid());
    EXPECT_FALSE(RawArc(-zPi, zPi, RangeS1::eStateFull).IsValid());
}

// Measures and points.

TEST(RangeS1, FullCircleStartsAtTheLowerSideOfTheSeam) {
    EXPECT_THAT(FullArc().GetA(), Is(-3.14159265358979));
    EXPECT_THAT(RangeS1().GetA(), Is(-3.14159265358979));
    EXPECT_THAT(RawArc(1.0, 2.0).GetA(), Is(1.0));
    EXPECT_THAT(EmptyArc(1.0, 2.0).GetA(), Is(1.0));
    EXPECT_THAT(ExternalArc(1.0, 2.0).GetA(), Is(1.0));
}

TEST(RangeS1, DiffIsTheAngleOfTheLimits) {
    EXPECT_THAT(RawArc(1.0, 3.0).GetDiff(), Is(2.0));
    EXPECT_THAT(RawArc(3.0, 1.0).GetDiff(), Is((1.0 + z2Pi) - 3.0));
    EXPECT_THAT(RawArc(1.0, 1.0).GetDiff(), Is(0.0));
    EXPECT_THAT(ExternalArc(1.0, 3.0).GetDiff(), Is(2.0));
    EXPECT_THAT(EmptyArc(1.0, 3.0).GetDiff(), Is(2.0));
    EXPECT_THAT(RawArc(1.0, 1.0 - kWithin).GetDiff(), Is((1.0 - kWithin) - 1.0));
}

TEST(RangeS1, DiffOfTheFullCircleIsAFullTurn) {
    EXPECT_THAT(FullArc().GetDiff(), Is(z2Pi));
    EXPECT_THAT(RawArc(1.0, 3.0, RangeS1::eStateFull).GetDiff(), Is(z2Pi));
}

TEST(RangeS1, PointOfAnArcThatIsNotSingularIsThePlainBlend) {
    EXPECT_THAT(RawArc(1.0, 3.0).GetPoint(0.25), Is((1 - 0.25) * 1.0 + 0.25 * 3.0));
    EXPECT_THAT(RawArc(1.0, 3.0).GetPoint(0.0), Is(1.0));
    EXPECT_THAT(RawArc(1.0, 3.0).GetPoint(1.0), Is(3.0));
    EXPECT_THAT(RawArc(1.0, 3.0).GetPoint(10.0), Is((1 - 10.0) * 1.0 + 10.0 * 3.0));
    EXPECT_THAT(EmptyArc(2.0, -2.0).GetPoint(0.25), Is((1 - 0.25) * 2.0 + 0.25 * -2.0));
}

TEST(RangeS1, PointOfASingularArcRunsFromItsEnd) {
    const RangeS1 arc = RawArc(2.0, -2.0);
    EXPECT_THAT(arc.GetPoint(0.0), Is(S1::Factorize((1 - 0.0) * -2.0 + 0.0 * (2.0 + z2Pi))));
    EXPECT_THAT(arc.GetPoint(0.0), testing::DoubleNear(-2.0, 1e-14));
    EXPECT_THAT(arc.GetPoint(1.0), testing::DoubleNear(2.0, 1e-14));
    EXPECT_THAT(arc.GetPoint(0.25), Is(S1::Factorize((1 - 0.25) * -2.0 + 0.25 * (2.0 + z2Pi))));
}

TEST(RangeS1, PointOfASingularArcIsReducedTwice) {
    ASSERT_TRUE(SecondPassCounts((1 - 0.71) * -2.0 + 0.71 * (2.0 + z2Pi)));
    EXPECT_THAT(RawArc(2.0, -2.0).GetPoint(0.71), Is(-0.9821237390820797));
}

TEST(RangeS1, PointOfASingularArcMayLieOffIt) {
    const RangeS1 arc = RawArc(2.0, -2.0);
    EXPECT_FALSE(arc.In(arc.GetPoint(0.25)));
    EXPECT_FALSE(arc.In(arc.GetPoint(0.75)));
}

TEST(RangeS1, MiddleOfASingularArcIsItsMiddle) {
    EXPECT_THAT(RawArc(2.0, -2.0).GetPoint(0.5), testing::DoubleNear(zPi, 1e-14));
    EXPECT_THAT(RawArc(zPi, -2.0).GetPoint(0.5), testing::DoubleNear((-2.0 - zPi) / 2, 1e-14));
}

TEST(RangeS1, FullCircleRunsFromPiThroughZero) {
    EXPECT_THAT(FullArc().GetPoint(0.0), Is(zPi));
    EXPECT_THAT(FullArc().GetPoint(0.5), testing::DoubleNear(0.0, 1e-14));
    EXPECT_THAT(FullArc().GetPoint(0.25), testing::DoubleNear(-zPi / 2, 1e-14));
    EXPECT_THAT(FullArc().GetPoint(0.75), testing::DoubleNear(zPi / 2, 1e-14));
    EXPECT_THAT(FullArc().GetPoint(1.0), Is(zPi));
    // A new arc runs from 0.
    EXPECT_THAT(RangeS1().GetPoint(0.25), testing::DoubleNear(zPi / 2, 1e-14));
}

TEST(RangeS1, RatioIsTheShareOfTheAngle) {
    EXPECT_THAT(RawArc(1.0, 3.0).GetRatio(2.0), Is(0.5));
    EXPECT_THAT(RawArc(1.0, 3.0).GetRatio(1.0), Is(0.0));
    EXPECT_THAT(RawArc(1.0, 3.0).GetRatio(3.0), Is(1.0));
    EXPECT_THAT(RawArc(3.0, -3.0).GetRatio(zPi), testing::DoubleNear(0.5, 1e-13));
    EXPECT_THAT(RawArc(1.0, 3.0).GetRatio(-1.0), Is(((-1.0 + z2Pi) - 1.0) / 2.0));
    EXPECT_THAT(EmptyArc(1.0, 3.0).GetRatio(2.0), Is(0.5));
}

TEST(RangeS1, RatioOfTheFullCircleIsZero) {
    EXPECT_THAT(FullArc().GetRatio(1.0), Is(0.0));
    EXPECT_THAT(RawArc(1.0, 3.0, RangeS1::eStateFull).GetRatio(2.0), Is(0.0));
}

TEST(RangeS1, RatioOfAPointDividesByZero) {
    EXPECT_THAT(RawArc(1.0, 1.0).GetRatio(1.0), Is(kNaN));
    EXPECT_THAT(RawArc(1.0, 1.0).GetRatio(2.0), Is(std::numeric_limits<double>::infinity()));
}

double Outside(const RangeS1& arc) {
    double x = 77.0;
    EXPECT_TRUE(arc.GetAnyOutside(x));
    return x;
}

TEST(RangeS1, NothingIsOutsideOfTheFullCircle) {
    double x = 77.0;
    EXPECT_FALSE(FullArc().GetAnyOutside(x));
    EXPECT_FALSE(RawArc(1.0, 2.0, RangeS1::eStateFull).GetAnyOutside(x));
    EXPECT_THAT(x, Is(77.0));
}

TEST(RangeS1, ZeroIsOutsideOfAnEmptyArcWhateverItsLimits) {
    const double zero = S1::Factorize((1 - 0.5) * zPi + 0.5 * (zPi + z2Pi));
    EXPECT_THAT(zero, testing::DoubleNear(0.0, 1e-14));
    EXPECT_THAT(Outside(EmptyArc(-1.0, 1.0)), Is(zero));
    EXPECT_THAT(Outside(EmptyArc(2.0, -2.0)), Is(zero));
}

TEST(RangeS1, MiddleOfTheGapIsOutside) {
    EXPECT_THAT(Outside(RawArc(2.0, -2.0)), Is(0.0));
    EXPECT_THAT(Outside(RawArc(3.0, 1.0)), Is((1 - 0.5) * 1.0 + 0.5 * 3.0));
    EXPECT_THAT(Outside(RawArc(1.0, 2.0)), Is(S1::Factorize((1 - 0.5) * 1.0 + 0.5 * (2.0 + z2Pi))));
    EXPECT_THAT(Outside(RawArc(1.0, 2.0)), testing::DoubleNear(1.5 - zPi, 1e-14));
    EXPECT_THAT(Outside(RawArc(-2.0, 2.0)), testing::DoubleNear(zPi, 1e-14));
}

TEST(RangeS1, MiddleOfAGapAcrossTheSeamIsReducedTwice) {
    ASSERT_TRUE(SecondPassCounts((1 - 0.5) * 2.04 + 0.5 * (2.34 + z2Pi)));
    EXPECT_THAT(Outside(RawArc(2.04, 2.34)), Is(-0.9515926535897915));
}

TEST(RangeS1, GapThatEndsAtPiHasAPlainMiddle) {
    EXPECT_THAT(Outside(RawArc(zPi, 0.0)), Is(0.5 * zPi));
    EXPECT_THAT(Outside(RawArc(zPi - kWithin, 0.0)), Is((1 - 0.5) * 0.0 + 0.5 * (zPi - kWithin)));
    EXPECT_THAT(Outside(RawArc(0.0, zPi)), testing::DoubleNear(-0.5 * zPi, 1e-14));
}

TEST(RangeS1, OutsideDoesNotRegardTheFlag) {
    const double x = Outside(ExternalArc(1.0, 2.0));
    EXPECT_THAT(x, Is(Outside(RawArc(1.0, 2.0))));
    EXPECT_TRUE(ExternalArc(1.0, 2.0).In(x));
}

TEST(RangeS1, OutsideOfAPointIsThePointItself) {
    EXPECT_THAT(Outside(RawArc(0.0, 0.0)), Is(0.0));
    EXPECT_THAT(Outside(RawArc(zPi, zPi)), Is(zPi));
}

TEST(RangeS1, BringsAnAngleToTheNearerLimit) {
    const RangeS1 arc = RawArc(1.0, 2.0);
    EXPECT_THAT(arc.ToRangeS1(2.5), Is(2.0));
    EXPECT_THAT(arc.ToRangeS1(0.5), Is(1.0));
    EXPECT_THAT(arc.ToRangeS1(-1.0), Is(1.0));
    EXPECT_THAT(arc.ToRangeS1(-3.0), Is(2.0));
    EXPECT_THAT(RawArc(2.0, -2.0).ToRangeS1(1.0), Is(2.0));
    EXPECT_THAT(RawArc(2.0, -2.0).ToRangeS1(-1.0), Is(-2.0));
}

TEST(RangeS1, AngleAtATieGoesToTheEnd) {
    EXPECT_THAT(RawArc(1.0, -1.0).ToRangeS1(0.0), Is(-1.0));
}

TEST(RangeS1, AngleOnTheArcIsReturnedInCanonicalForm) {
    const RangeS1 arc = RawArc(1.0, 2.0);
    EXPECT_THAT(arc.ToRangeS1(1.5), Is(S1::Factorize(1.5)));
    EXPECT_THAT(arc.ToRangeS1(1.5 + 5 * z2Pi), Is(S1::Factorize(1.5 + 5 * z2Pi)));
    EXPECT_THAT(FullArc().ToRangeS1(4.0), Is(S1::Factorize(4.0)));
    EXPECT_THAT(ExternalArc(1.0, 2.0).ToRangeS1(4.0), Is(S1::Factorize(4.0)));
    ASSERT_TRUE(SecondPassCounts(37.5));
    EXPECT_THAT(FullArc().ToRangeS1(37.5), Is(-0.19911184307748012));
}

TEST(RangeS1, AngleOffAnExternalArcGoesToTheFartherLimit) {
    // The limits are compared by the way round the other sense.
    EXPECT_THAT(ExternalArc(1.0, 2.0).ToRangeS1(1.25), Is(2.0));
    EXPECT_THAT(ExternalArc(1.0, 2.0).ToRangeS1(1.75), Is(1.0));
}

TEST(RangeS1, EmptyArcTakesNoAngle) {
    EXPECT_THAT(EmptyArc(1.0, 2.0).ToRangeS1(1.5), Is(1e307));
}

// Tests of points.

TEST(RangeS1, InFollowsTheSenseOfTheFlag) {
    EXPECT_TRUE(RawArc(1.0, 2.0).In(1.5));
    EXPECT_FALSE(RawArc(1.0, 2.0).In(2.5));
    EXPECT_FALSE(ExternalArc(1.0, 2.0).In(1.5));
    EXPECT_TRUE(ExternalArc(1.0, 2.0).In(2.5));
    EXPECT_TRUE(ExternalArc(1.0, 2.0).In(1.0));
    EXPECT_TRUE(RawArc(2.0, -2.0).In(zPi));
    EXPECT_TRUE(RawArc(2.0, -2.0).In(-3.0));
    EXPECT_FALSE(RawArc(2.0, -2.0).In(0.0));
}

TEST(RangeS1, InRejectsTheRawMinusPiUnlessFull) {
    EXPECT_FALSE(RawArc(2.0, -2.0).In(-zPi));
    EXPECT_TRUE(FullArc().In(-zPi));
    EXPECT_TRUE(FullArc().In(1000.0));
    EXPECT_TRUE(RangeS1().In(kNaN));
}

TEST(RangeS1, EmptyArcHoldsWhatItsLimitsHold) {
    const RangeS1 arc = EmptyArc(1.0, 2.0);
    EXPECT_TRUE(arc.In(1.5));
    EXPECT_FALSE(arc.In(2.5));
    EXPECT_TRUE(arc.IsEmpty());
}

TEST(RangeS1, InOpenLeavesTheEndsOut) {
    const RangeS1 arc = RawArc(1.0, 2.0);
    EXPECT_TRUE(arc.InOpen(1.5));
    EXPECT_FALSE(arc.InOpen(1.0));
    EXPECT_FALSE(arc.InOpen(2.0));
    EXPECT_FALSE(arc.InOpen(1.0 + kWithin));
    EXPECT_FALSE(arc.InOpen(2.0 + kWithin));
    EXPECT_TRUE(arc.InOpen(1.0 + kBeyond));
    EXPECT_FALSE(arc.InOpen(2.5));
    EXPECT_TRUE(RawArc(2.0, -2.0).InOpen(zPi));
}

TEST(RangeS1, InOpenIgnoresFlagAndState) {
    EXPECT_TRUE(ExternalArc(1.0, 2.0).InOpen(1.5));
    EXPECT_FALSE(ExternalArc(1.0, 2.0).InOpen(2.5));
    EXPECT_TRUE(EmptyArc(1.0, 2.0).InOpen(1.5));
    EXPECT_FALSE(FullArc().InOpen(1.0));
    EXPECT_FALSE(RangeS1().InOpen(1.0));
}

TEST(RangeS1, LocationOnTheFullCircleIsInAndOnAnEmptyArcOut) {
    EXPECT_EQ(FullArc().GetPointLocation(zPi, 0.01), RangeR1::eLocnIn);
    EXPECT_EQ(FullArc().GetPointLocation(100.0, 0.01), RangeR1::eLocnIn);
    EXPECT_EQ(EmptyArc(1.0, 2.0).GetPointLocation(1.5, 0.01), RangeR1::eLocnOut);
}

TEST(RangeS1, LocationOnAnArcThatIsNotSingular) {
    const RangeS1 arc = RawArc(1.0, 2.0);
    EXPECT_EQ(arc.GetPointLocation(0.5, 0.01), RangeR1::eLocnOut);
    EXPECT_EQ(arc.GetPointLocation(0.995, 0.01), RangeR1::eLocnAtMin);
    EXPECT_EQ(arc.GetPointLocation(1.0, 0.01), RangeR1::eLocnAtMin);
    EXPECT_EQ(arc.GetPointLocation(1.5, 0.01), RangeR1::eLocnIn);
    EXPECT_EQ(arc.GetPointLocation(2.0, 0.01), RangeR1::eLocnAtMax);
    EXPECT_EQ(arc.GetPointLocation(2.005, 0.01), RangeR1::eLocnAtMax);
    EXPECT_EQ(arc.GetPointLocation(2.5, 0.01), RangeR1::eLocnOut);
}

TEST(RangeS1, LocationOnASingularArcBeginsAtZeroAndNotAtItsStart) {
    const RangeS1 arc = RawArc(2.0, -2.0);
    // Off the arc, both.
    EXPECT_EQ(arc.GetPointLocation(0.0, 0.01), RangeR1::eLocnAtMin);
    EXPECT_EQ(arc.GetPointLocation(1.0, 0.01), RangeR1::eLocnIn);
    EXPECT_EQ(arc.GetPointLocation(-0.005, 0.01), RangeR1::eLocnAtMin);
    // The start is nothing in particular.
    EXPECT_EQ(arc.GetPointLocation(2.0, 0.01), RangeR1::eLocnIn);
}

TEST(RangeS1, LocationOnASingularArcAtTheSeamIsIn) {
    const RangeS1 arc = RawArc(2.0, -2.0);
    EXPECT_EQ(arc.GetPointLocation(3.0, 0.01), RangeR1::eLocnIn);
    EXPECT_EQ(arc.GetPointLocation(zPi, 0.01), RangeR1::eLocnIn);
    EXPECT_EQ(arc.GetPointLocation(-zPi, 0.01), RangeR1::eLocnIn);
    EXPECT_EQ(arc.GetPointLocation(-3.0, 0.01), RangeR1::eLocnIn);
}

TEST(RangeS1, LocationOnASingularArcAtItsEnd) {
    const RangeS1 arc = RawArc(2.0, -2.0);
    EXPECT_EQ(arc.GetPointLocation(-2.0, 0.01), RangeR1::eLocnAtMax);
    EXPECT_EQ(arc.GetPointLocation(-1.0, 0.01), RangeR1::eLocnOut);
    EXPECT_EQ(arc.GetPointLocation(4.0, 0.01), RangeR1::eLocnOut);
    EXPECT_EQ(arc.GetPointLocation(-4.0, 0.01), RangeR1::eLocnOut);
}

TEST(RangeS1, LocationOnASingularArcThatEndsRightAfterTheSeam) {
    const RangeS1 arc = RawArc(2.0, 0.005 - zPi);
    EXPECT_EQ(arc.GetPointLocation(-zPi, 0.01), RangeR1::eLocnAtMax);
    EXPECT_EQ(arc.GetPointLocation(-zPi, 0.001), RangeR1::eLocnIn);
}

TEST(RangeS1, LocationOnAnExternalArcIsTakenFromItsLimits) {
    // Singular, since the seam lies on it, and so from -pi to 2.
    const RangeS1 arc = ExternalArc(1.0, 2.0);
    EXPECT_EQ(arc.GetPointLocation(-1.0, 0.01), RangeR1::eLocnIn);
    EXPECT_EQ(arc.GetPointLocation(1.5, 0.01), RangeR1::eLocnIn);
}

}  // namespace
}  // namespace ZT
