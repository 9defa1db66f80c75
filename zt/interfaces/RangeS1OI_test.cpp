#include <zt/interfaces/RangeS1OI.h>

#include <gtest/gtest.h>
#include <tests/CountedObject.h>

#include <cmath>
#include <cstddef>
#include <zt/frame/VirtualTable_test.hpp>

namespace ZT {
namespace {

using testing_support::CountedObject;

int destroyed = 0;

struct Open : RangeS1OI {
    using RangeS1OI::m_nRef;
    using RangeS1OI::m_pRange;
    using RangeS1OI::m_pUnknown;
    using RangeS1OI::m_xRange;
    ~Open() override { ++destroyed; }
    Open() = default;
    Open(const Open&) = default;

    static constexpr std::size_t PartOffset() { return offsetof(Open, m_xRange); }
    static constexpr std::size_t RangeOffset() { return offsetof(Open, m_pRange); }
    static constexpr std::size_t UnknownOffset() { return offsetof(Open, m_pUnknown); }
    static constexpr std::size_t RefOffset() { return offsetof(Open, m_nRef); }
};

struct RangeS1OITest : testing::Test {
    RangeS1OITest() {
        destroyed = 0;
        object.AttachRange(&arc);
    }
    IRange* Shown() { return &object.m_xRange; }

    RangeS1 arc{0.5, 2.0};
    Open object;
    Open fresh;
    CountedObject outer;
    void* found = this;
    double x = 99.0;
};

TEST_F(RangeS1OITest, FieldsFollowThoseOfTheArc) {
    EXPECT_EQ(Open::PartOffset(), sizeof(RangeS1));
    EXPECT_EQ(Open::RangeOffset(), sizeof(RangeS1) + 8);
    EXPECT_EQ(Open::UnknownOffset(), sizeof(RangeS1) + 16);
    EXPECT_EQ(Open::RefOffset(), sizeof(RangeS1) + 24);
    EXPECT_EQ(sizeof(RangeS1OI), sizeof(RangeS1) + 32);
}

TEST_F(RangeS1OITest, DefaultIsTheWholeCircleAndShowsNothing) {
    EXPECT_EQ(fresh.m_min, 0.0);
    EXPECT_EQ(fresh.m_max, 0.0);
    EXPECT_EQ(fresh.m_eState, RangeS1::eStateFull);
    EXPECT_EQ(fresh.m_pRange, nullptr);
    EXPECT_EQ(fresh.m_pUnknown, nullptr);
    EXPECT_EQ(fresh.m_nRef, 0u);
    EXPECT_EQ(fresh.m_xRange.GetA(&x), E_UNEXPECTED);
    EXPECT_EQ(fresh.m_xRange.GetB(&x), E_UNEXPECTED);
    EXPECT_EQ(fresh.m_xRange.Set(1.0, 2.0), E_UNEXPECTED);
    EXPECT_EQ(x, 99.0);
    EXPECT_EQ(fresh.m_min, 0.0);
}

TEST_F(RangeS1OITest, ShowsItselfWhenAttachedToItself) {
    fresh.AttachRange(&fresh);
    EXPECT_EQ(fresh.m_xRange.Set(1.0, 2.0), S_OK);
    EXPECT_EQ(fresh.m_min, 1.0);
    EXPECT_EQ(fresh.m_max, 2.0);
    EXPECT_EQ(fresh.m_eState, RangeS1::eStatePartial);
}

TEST_F(RangeS1OITest, CopyTakesAllFieldsAndGoesOnShowingTheOther) {
    fresh.Set(1.0, 2.0);
    fresh.m_bExternal = true;
    fresh.AttachRange(&fresh);
    fresh.AddRef();
    fresh.AddRef();
    fresh.AttachUnknown(&outer);
    const Open copy(fresh);
    EXPECT_EQ(copy.m_min, 1.0);
    EXPECT_EQ(copy.m_max, 2.0);
    EXPECT_TRUE(copy.m_bExternal);
    EXPECT_EQ(copy.m_eState, RangeS1::eStatePartial);
    EXPECT_EQ(copy.m_pRange, &fresh);
    EXPECT_EQ(copy.m_pUnknown, &outer);
    EXPECT_EQ(copy.m_nRef, 2u);
    EXPECT_EQ(outer.count, 1u);
}

TEST_F(RangeS1OITest, AssignmentTakesAllFields) {
    fresh.Set(1.0, 2.0);
    fresh.m_bExternal = true;
    fresh.AddRef();
    fresh.AttachUnknown(&outer);
    EXPECT_TRUE(object.RangeS1OI::operator=(fresh));
    EXPECT_EQ(object.m_min, 1.0);
    EXPECT_EQ(object.m_max, 2.0);
    EXPECT_TRUE(object.m_bExternal);
    EXPECT_EQ(object.m_eState, RangeS1::eStatePartial);
    EXPECT_EQ(object.m_pRange, nullptr);
    EXPECT_EQ(object.m_pUnknown, &outer);
    EXPECT_EQ(object.m_nRef, 1u);
    EXPECT_EQ(outer.count, 1u);
    EXPECT_EQ(arc.m_min, 0.5) << "what was shown before stays";
}

TEST_F(RangeS1OITest, AssignmentKeepsLimitsWithinTheToleranceAndTakesTheRest) {
    object.Set(1.0, 2.0);
    fresh.Set(1.0 + 5e-11, 2.0 - 5e-11);
    fresh.SetEmpty();
    fresh.AddRef();
    EXPECT_FALSE(object.RangeS1OI::operator=(fresh));
    EXPECT_EQ(object.m_min, 1.0);
    EXPECT_EQ(object.m_max, 2.0);
    EXPECT_EQ(object.m_eState, RangeS1::eStateEmpty);
    EXPECT_EQ(object.m_pRange, nullptr);
    EXPECT_EQ(object.m_nRef, 1u);
}

TEST_F(RangeS1OITest, CountsFromZeroAndEndsAtZero) {
    auto* const counted = new Open;
    EXPECT_EQ(counted->QueryInterface(IID_IRange, &found), S_OK);
    auto* const shown = static_cast<IRange*>(found);
    EXPECT_EQ(shown, &counted->m_xRange);
    EXPECT_EQ(counted->m_nRef, 1u);
    EXPECT_EQ(counted->AddRef(), 2u);
    EXPECT_EQ(shown->AddRef(), 3u);
    EXPECT_EQ(counted->Release(), 2u);
    EXPECT_EQ(shown->Release(), 1u);
    EXPECT_EQ(destroyed, 0);
    EXPECT_EQ(shown->Release(), 0u);
    EXPECT_EQ(destroyed, 1);
}

TEST_F(RangeS1OITest, OuterReleaseEndsTheObjectAsWell) {
    auto* const counted = new Open;
    EXPECT_EQ(counted->AddRef(), 1u);
    EXPECT_EQ(counted->Release(), 0u);
    EXPECT_EQ(destroyed, 1);
}

// The part calls the class's own operations, whatever a derived class declares.
TEST_F(RangeS1OITest, OuterOperationsAreNotVirtual) {
    struct Hiding : RangeS1OI {
        ulong AddRef() { return 99; }
        ulong Release() { return 98; }
        HRESULT QueryInterface(const GUID&, void**) { return 97; }
    };
    Hiding hiding;
    EXPECT_EQ(hiding.RangeS1OI::QueryInterface(IID_IRange, &found), S_OK);
    auto* const shown = static_cast<IRange*>(found);
    EXPECT_EQ(shown->AddRef(), 2u);
    EXPECT_EQ(shown->QueryInterface(IID_IRange, &found), S_OK);
    EXPECT_EQ(shown->Release(), 2u);
    RangeS1OI& plain = hiding;
    EXPECT_EQ(plain.AddRef(), 3u);
    EXPECT_EQ(plain.Release(), 2u);
    EXPECT_EQ(plain.QueryInterface(IID_IRange, &found), S_OK);
}

TEST_F(RangeS1OITest, ReleaseBelowZeroWrapsAndDeletesNothing) {
    EXPECT_EQ(object.Release(), 0xFFFFFFFFu);
    EXPECT_EQ(destroyed, 0);
}

TEST_F(RangeS1OITest, OuterObjectCountsForIt) {
    object.AttachUnknown(&outer);
    EXPECT_EQ(outer.count, 1u) << "no reference is added";
    EXPECT_EQ(object.AddRef(), 2u);
    EXPECT_EQ(Shown()->AddRef(), 3u);
    EXPECT_EQ(object.QueryInterface(IID_IRange, &found), S_OK);
    EXPECT_EQ(outer.count, 4u);
    EXPECT_EQ(object.m_nRef, 0u);
    EXPECT_EQ(Shown()->Release(), 3u);
    EXPECT_EQ(object.Release(), 2u);
    EXPECT_EQ(Shown()->Release(), 1u);
    EXPECT_EQ(Shown()->Release(), 0u);
    EXPECT_EQ(object.m_nRef, 0u);
    EXPECT_EQ(destroyed, 0) << "the client ends it";
    EXPECT_EQ(outer.queries, 0);
}

TEST_F(RangeS1OITest, AnswersItsInterface) {
    EXPECT_EQ(object.QueryInterface(IID_IRange, &found), S_OK);
    EXPECT_EQ(found, Shown());
    found = nullptr;
    EXPECT_EQ(Shown()->QueryInterface(IID_IRange, &found), S_OK);
    EXPECT_EQ(found, Shown());
    EXPECT_EQ(object.m_nRef, 2u);
}

TEST_F(RangeS1OITest, HasNoOtherInterfaceNotEvenTheRootOfAll) {
    for (const IID& id : {IID_IUnknown, IID_NativeObject, IID_IBlob}) {
        EXPECT_EQ(object.QueryInterface(id, &found), E_NOINTERFACE);
        EXPECT_EQ(Shown()->QueryInterface(id, &found), E_NOINTERFACE);
        EXPECT_EQ(found, this) << "nothing is written";
        EXPECT_EQ(object.QueryInterface(id, nullptr), E_NOINTERFACE);
        EXPECT_EQ(Shown()->QueryInterface(id, nullptr), E_NOINTERFACE);
    }
    EXPECT_EQ(object.m_nRef, 0u);
}

TEST_F(RangeS1OITest, GivesStartAndEnd) {
    EXPECT_EQ(Shown()->GetA(&x), S_OK);
    EXPECT_EQ(x, 0.5);
    EXPECT_EQ(Shown()->GetB(&x), S_OK);
    EXPECT_EQ(x, 2.0);
}

TEST_F(RangeS1OITest, WholeCircleStartsAtMinusPi) {
    arc.SetFull();
    EXPECT_EQ(Shown()->GetA(&x), S_OK);
    EXPECT_EQ(x, -3.14159265358979);
    EXPECT_EQ(Shown()->GetB(&x), S_OK);
    EXPECT_EQ(x, 3.14159265358979);
    RangeS1 newArc;
    object.AttachRange(&newArc);
    EXPECT_EQ(Shown()->GetA(&x), S_OK);
    EXPECT_EQ(x, -3.14159265358979);
    EXPECT_EQ(Shown()->GetB(&x), S_OK);
    EXPECT_EQ(x, 0.0) << "the end as it is stored";
}

TEST_F(RangeS1OITest, TheTwoTestsComeInOppositeOrders) {
    EXPECT_EQ(Shown()->GetA(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(Shown()->GetB(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(fresh.m_xRange.GetA(nullptr), E_UNEXPECTED);
    EXPECT_EQ(fresh.m_xRange.GetB(nullptr), DISP_E_PARAMNOTOPTIONAL);
}

TEST_F(RangeS1OITest, SetsTheAttachedArc) {
    EXPECT_EQ(Shown()->Set(3.0, -3.0), S_OK);
    EXPECT_EQ(arc.m_min, 3.0);
    EXPECT_EQ(arc.m_max, -3.0);
    EXPECT_EQ(arc.m_eState, RangeS1::eStatePartial);
    EXPECT_EQ(object.m_eState, RangeS1::eStateFull) << "its own arc stays";
}

TEST_F(RangeS1OITest, SetIsTheVirtualOne) {
    struct Halving : RangeS1 {
        void Set(double lo, double hi) override { RangeS1::Set(lo / 2, hi / 2); }
    };
    Halving halving;
    object.AttachRange(&halving);
    EXPECT_EQ(Shown()->Set(1.0, 3.0), S_OK);
    EXPECT_EQ(halving.m_min, 0.5);
    EXPECT_EQ(halving.m_max, 1.5);
}

TEST_F(RangeS1OITest, RefusesAnglesThatAreNotValid) {
    const double refused[] = {-3.14159265358979, -4.0, 3.5};
    for (const double angle : refused) {
        EXPECT_EQ(Shown()->Set(angle, 1.0), DISP_E_PARAMNOTOPTIONAL) << angle;
        EXPECT_EQ(Shown()->Set(1.0, angle), DISP_E_PARAMNOTOPTIONAL) << angle;
        EXPECT_EQ(fresh.m_xRange.Set(angle, 1.0), E_UNEXPECTED) << "the range is asked for first";
    }
    EXPECT_EQ(arc.m_min, 0.5);
    EXPECT_EQ(arc.m_max, 2.0);
    EXPECT_EQ(Shown()->Set(1.0, 3.14159265358979), S_OK);
    EXPECT_EQ(arc.m_max, 3.14159265358979);
}

// The last doubles that are valid, and the first ones of 14 digits that are not.
TEST_F(RangeS1OITest, AnglesAreValidUpToTheToleranceInsideMinusPiAndOutsidePi) {
    EXPECT_EQ(Shown()->Set(1.0, 3.14159265368979), S_OK);
    EXPECT_EQ(arc.m_min, 1.0);
    EXPECT_EQ(Shown()->Set(-3.14159265348979, 1.5), S_OK);
    EXPECT_EQ(arc.m_min, -3.14159265348979);
    EXPECT_EQ(arc.m_max, 1.5);
    EXPECT_EQ(Shown()->Set(1.0, 3.1415926536898), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(Shown()->Set(-3.1415926534898, 1.0), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(arc.m_min, -3.14159265348979);
    EXPECT_EQ(arc.m_max, 1.5);
}

TEST_F(RangeS1OITest, NanIsNotRefused) {
    EXPECT_EQ(Shown()->Set(std::nan(""), 1.0), S_OK);
    EXPECT_TRUE(std::isnan(arc.m_min));
    EXPECT_EQ(arc.m_max, 1.0);
    EXPECT_EQ(Shown()->Set(1.0, std::nan("")), S_OK);
    EXPECT_EQ(arc.m_min, 1.0);
    EXPECT_TRUE(std::isnan(arc.m_max));
}

TEST_F(RangeS1OITest, SetFromSeamToSeamMakesTheWholeCircle) {
    EXPECT_EQ(Shown()->Set(-3.14159265348979, 3.14159265358979), S_OK);
    EXPECT_EQ(arc.m_eState, RangeS1::eStateFull);
    EXPECT_EQ(arc.m_min, 3.14159265358979);
    EXPECT_EQ(arc.m_max, 3.14159265358979);
    EXPECT_EQ(Shown()->GetA(&x), S_OK);
    EXPECT_EQ(x, -3.14159265358979);
    EXPECT_EQ(Shown()->GetB(&x), S_OK);
    EXPECT_EQ(x, 3.14159265358979);
}

TEST_F(RangeS1OITest, TableOfThePartIsInOrder) {
    IRange* const shown = Shown();
    EXPECT_EQ((CallSlot<HRESULT, const IID*, void**>(shown, 0, &IID_IRange, &found)), S_OK);
    EXPECT_EQ(found, shown);
    EXPECT_EQ(CallSlot<ULONG>(shown, 1), 2u);
    EXPECT_EQ(CallSlot<ULONG>(shown, 2), 1u);
    EXPECT_EQ((CallSlot<HRESULT, double*>(shown, 3, &x)), S_OK);
    EXPECT_EQ(x, 0.5);
    EXPECT_EQ((CallSlot<HRESULT, double*>(shown, 4, &x)), S_OK);
    EXPECT_EQ(x, 2.0);
    EXPECT_EQ((CallSlot<HRESULT, double, double>(shown, 5, 1.0, 1.5)), S_OK);
    EXPECT_EQ(arc.m_min, 1.0);
    EXPECT_EQ(arc.m_max, 1.5);
}

TEST_F(RangeS1OITest, TableOfTheObjectIsThatOfTheArc) {
    EXPECT_EQ(CallSlot<std::int32_t>(&object, 0), RangeR1::eClassS1);
    CallSlot<void, double, double>(&object, 1, 1.0, 1.5);
    EXPECT_EQ(object.m_min, 1.0);
    EXPECT_EQ(object.m_max, 1.5);
    auto* const counted = new Open;
    CallSlot<void>(counted, 3);
    EXPECT_EQ(destroyed, 1);
}

}  // namespace
}  // namespace ZT
