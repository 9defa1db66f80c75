#include <zt/interfaces/RangeR1OI.h>

#include <gtest/gtest.h>
#include <tests/CountedObject.h>

#include <cstddef>
#include <zt/frame/VirtualTable_test.hpp>

namespace ZT {
namespace {

using testing_support::CountedObject;

int destroyed = 0;

struct Open : RangeR1OI {
    using RangeR1OI::m_nRef;
    using RangeR1OI::m_pRange;
    using RangeR1OI::m_pUnknown;
    using RangeR1OI::m_xRange;
    ~Open() override { ++destroyed; }
    Open() = default;
    Open(const Open&) = default;

    static constexpr std::size_t PartOffset() { return offsetof(Open, m_xRange); }
    static constexpr std::size_t RangeOffset() { return offsetof(Open, m_pRange); }
    static constexpr std::size_t UnknownOffset() { return offsetof(Open, m_pUnknown); }
    static constexpr std::size_t RefOffset() { return offsetof(Open, m_nRef); }
    static constexpr std::size_t ReadOnlyOffset() { return offsetof(Open, m_bReadOnly); }
};

struct RangeR1OITest : testing::Test {
    RangeR1OITest() {
        destroyed = 0;
        object.AttachRange(&range);
    }
    IRange* Shown() { return &object.m_xRange; }

    RangeR1 range{2.0, 5.0};
    Open object;
    Open fresh;
    CountedObject outer;
    void* found = this;
    double x = 99.0;
};

TEST_F(RangeR1OITest, FieldsFollowThoseOfTheInterval) {
    EXPECT_EQ(Open::PartOffset(), sizeof(RangeR1));
    EXPECT_EQ(Open::RangeOffset(), sizeof(RangeR1) + 8);
    EXPECT_EQ(Open::UnknownOffset(), sizeof(RangeR1) + 16);
    EXPECT_EQ(Open::RefOffset(), sizeof(RangeR1) + 24);
    EXPECT_EQ(Open::ReadOnlyOffset(), sizeof(RangeR1) + 28);
    EXPECT_EQ(sizeof(RangeR1OI), sizeof(RangeR1) + 32);
}

TEST_F(RangeR1OITest, DefaultIsTheEmptyIntervalThatShowsItself) {
    EXPECT_EQ(fresh.m_min, 1e307);
    EXPECT_EQ(fresh.m_max, -1e307);
    EXPECT_FALSE(fresh.m_bExternal);
    EXPECT_EQ(fresh.m_pRange, &fresh);
    EXPECT_EQ(fresh.m_pUnknown, nullptr);
    EXPECT_EQ(fresh.m_nRef, 0u);
    EXPECT_FALSE(fresh.m_bReadOnly);
    EXPECT_EQ(fresh.m_xRange.Set(1.0, 3.0), S_OK);
    EXPECT_EQ(fresh.m_min, 1.0);
    EXPECT_EQ(fresh.m_max, 3.0);
    EXPECT_EQ(fresh.m_xRange.GetA(&x), S_OK);
    EXPECT_EQ(x, 1.0);
}

TEST_F(RangeR1OITest, CopyTakesAllFieldsAndGoesOnShowingTheOther) {
    fresh.Set(1.0, 3.0);
    fresh.m_bExternal = true;
    fresh.AddRef();
    fresh.AddRef();
    fresh.AttachUnknown(&outer);
    fresh.m_bReadOnly = true;
    const Open copy(fresh);
    EXPECT_EQ(copy.m_min, 1.0);
    EXPECT_EQ(copy.m_max, 3.0);
    EXPECT_TRUE(copy.m_bExternal);
    EXPECT_EQ(copy.m_pRange, &fresh);
    EXPECT_EQ(copy.m_pUnknown, &outer);
    EXPECT_EQ(copy.m_nRef, 2u);
    EXPECT_TRUE(copy.m_bReadOnly);
    EXPECT_EQ(outer.count, 1u);
}

TEST_F(RangeR1OITest, AssignmentTakesAllFields) {
    fresh.Set(1.0, 3.0);
    fresh.m_bExternal = true;
    fresh.AddRef();
    fresh.AttachUnknown(&outer);
    fresh.m_bReadOnly = true;
    EXPECT_TRUE(object.RangeR1OI::operator=(fresh));
    EXPECT_EQ(object.m_min, 1.0);
    EXPECT_EQ(object.m_max, 3.0);
    EXPECT_TRUE(object.m_bExternal);
    EXPECT_EQ(object.m_pRange, &fresh);
    EXPECT_EQ(object.m_pUnknown, &outer);
    EXPECT_EQ(object.m_nRef, 1u);
    EXPECT_TRUE(object.m_bReadOnly);
    EXPECT_EQ(outer.count, 1u);
    EXPECT_EQ(range.m_min, 2.0) << "what was shown before stays";
}

TEST_F(RangeR1OITest, AssignmentKeepsLimitsWithinTheToleranceAndTakesTheRest) {
    object.Set(1.0, 3.0);
    fresh.Set(1.0 + 5e-11, 3.0 - 5e-11);
    fresh.AddRef();
    fresh.m_bReadOnly = true;
    EXPECT_FALSE(object.RangeR1OI::operator=(fresh));
    EXPECT_EQ(object.m_min, 1.0);
    EXPECT_EQ(object.m_max, 3.0);
    EXPECT_EQ(object.m_pRange, &fresh);
    EXPECT_EQ(object.m_nRef, 1u);
    EXPECT_TRUE(object.m_bReadOnly);
}

TEST_F(RangeR1OITest, CountsFromZeroAndEndsAtZero) {
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

TEST_F(RangeR1OITest, OuterReleaseEndsTheObjectAsWell) {
    auto* const counted = new Open;
    EXPECT_EQ(counted->AddRef(), 1u);
    EXPECT_EQ(counted->Release(), 0u);
    EXPECT_EQ(destroyed, 1);
}

// The part calls the class's own operations, whatever a derived class declares.
TEST_F(RangeR1OITest, OuterOperationsAreNotVirtual) {
    struct Hiding : RangeR1OI {
        ulong AddRef() { return 99; }
        ulong Release() { return 98; }
        HRESULT QueryInterface(const GUID&, void**) { return 97; }
    };
    Hiding hiding;
    EXPECT_EQ(hiding.RangeR1OI::QueryInterface(IID_IRange, &found), S_OK);
    auto* const shown = static_cast<IRange*>(found);
    EXPECT_EQ(shown->AddRef(), 2u);
    EXPECT_EQ(shown->QueryInterface(IID_IRange, &found), S_OK);
    EXPECT_EQ(shown->Release(), 2u);
    RangeR1OI& plain = hiding;
    EXPECT_EQ(plain.AddRef(), 3u);
    EXPECT_EQ(plain.Release(), 2u);
    EXPECT_EQ(plain.QueryInterface(IID_IRange, &found), S_OK);
}

TEST_F(RangeR1OITest, ReleaseBelowZeroWrapsAndDeletesNothing) {
    EXPECT_EQ(object.Release(), 0xFFFFFFFFu);
    EXPECT_EQ(destroyed, 0);
}

TEST_F(RangeR1OITest, OuterObjectCountsForIt) {
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

TEST_F(RangeR1OITest, AnswersItsInterfaceAndTheRootOfAll) {
    for (const IID& id : {IID_IRange, IID_IUnknown}) {
        found = nullptr;
        EXPECT_EQ(object.QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, Shown());
        found = nullptr;
        EXPECT_EQ(Shown()->QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, Shown());
    }
    EXPECT_EQ(object.m_nRef, 4u);
}

TEST_F(RangeR1OITest, FailedQueryWritesNothingAndLooksAtNoPointer) {
    for (const IID& id : {IID_NativeObject, IID_IBlob}) {
        EXPECT_EQ(object.QueryInterface(id, &found), E_NOINTERFACE);
        EXPECT_EQ(Shown()->QueryInterface(id, &found), E_NOINTERFACE);
        EXPECT_EQ(found, this);
        EXPECT_EQ(object.QueryInterface(id, nullptr), E_NOINTERFACE);
        EXPECT_EQ(Shown()->QueryInterface(id, nullptr), E_NOINTERFACE);
    }
    EXPECT_EQ(object.m_nRef, 0u);
}

TEST_F(RangeR1OITest, GivesTheStoredLimitsAsTheyStand) {
    range.Set(7.0, -4.0);
    EXPECT_EQ(Shown()->GetA(&x), S_OK);
    EXPECT_EQ(x, 7.0);
    EXPECT_EQ(Shown()->GetB(&x), S_OK);
    EXPECT_EQ(x, -4.0);
}

TEST_F(RangeR1OITest, SetsTheAttachedIntervalInAnyOrder) {
    range.m_bExternal = true;
    EXPECT_EQ(Shown()->Set(9.0, -9.0), S_OK);
    EXPECT_EQ(range.m_min, 9.0);
    EXPECT_EQ(range.m_max, -9.0);
    EXPECT_TRUE(range.m_bExternal);
    EXPECT_EQ(object.m_min, 1e307) << "its own limits stay";
}

TEST_F(RangeR1OITest, SetIsTheVirtualOne) {
    struct Doubling : RangeR1 {
        void Set(double lo, double hi) override { RangeR1::Set(2 * lo, 2 * hi); }
    };
    Doubling doubling;
    object.AttachRange(&doubling);
    EXPECT_EQ(Shown()->Set(1.0, 4.0), S_OK);
    EXPECT_EQ(doubling.m_min, 2.0);
    EXPECT_EQ(doubling.m_max, 8.0);
}

TEST_F(RangeR1OITest, TheTwoTestsComeInOppositeOrders) {
    EXPECT_EQ(Shown()->GetA(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(Shown()->GetB(nullptr), DISP_E_PARAMNOTOPTIONAL);
    object.AttachRange(nullptr);
    EXPECT_EQ(Shown()->GetA(&x), E_UNEXPECTED);
    EXPECT_EQ(Shown()->GetB(&x), E_UNEXPECTED);
    EXPECT_EQ(Shown()->GetA(nullptr), E_UNEXPECTED);
    EXPECT_EQ(Shown()->GetB(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(x, 99.0);
}

TEST_F(RangeR1OITest, SetNeedsARange) {
    object.AttachRange(nullptr);
    EXPECT_EQ(Shown()->Set(1.0, 2.0), E_UNEXPECTED);
}

TEST_F(RangeR1OITest, ReadOnlyRefusesFirstOfAllWithAPositiveAnswer) {
    object.m_bReadOnly = true;
    const HRESULT answer = Shown()->Set(1.0, 2.0);
    EXPECT_EQ(answer, 120);
    EXPECT_TRUE(SUCCEEDED(answer));
    EXPECT_EQ(range.m_min, 2.0);
    EXPECT_EQ(range.m_max, 5.0);
    EXPECT_EQ(Shown()->GetA(&x), S_OK);
    EXPECT_EQ(x, 2.0);
    object.AttachRange(nullptr);
    EXPECT_EQ(Shown()->Set(1.0, 2.0), 120);
}

TEST_F(RangeR1OITest, TableOfThePartIsInOrder) {
    IRange* const shown = Shown();
    EXPECT_EQ((CallSlot<HRESULT, const IID*, void**>(shown, 0, &IID_IRange, &found)), S_OK);
    EXPECT_EQ(found, shown);
    EXPECT_EQ(CallSlot<ULONG>(shown, 1), 2u);
    EXPECT_EQ(CallSlot<ULONG>(shown, 2), 1u);
    EXPECT_EQ((CallSlot<HRESULT, double*>(shown, 3, &x)), S_OK);
    EXPECT_EQ(x, 2.0);
    EXPECT_EQ((CallSlot<HRESULT, double*>(shown, 4, &x)), S_OK);
    EXPECT_EQ(x, 5.0);
    EXPECT_EQ((CallSlot<HRESULT, double, double>(shown, 5, 6.0, 8.0)), S_OK);
    EXPECT_EQ(range.m_min, 6.0);
    EXPECT_EQ(range.m_max, 8.0);
}

TEST_F(RangeR1OITest, TableOfTheObjectIsThatOfTheInterval) {
    EXPECT_EQ(CallSlot<std::int32_t>(&object, 0), RangeR1::eClassR1);
    CallSlot<void, double, double>(&object, 1, 6.0, 8.0);
    EXPECT_EQ(object.m_min, 6.0);
    EXPECT_EQ(object.m_max, 8.0);
    auto* const counted = new Open;
    CallSlot<void>(counted, 3);
    EXPECT_EQ(destroyed, 1);
}

// Answers each operation of its own with the place in the table.
struct Numbered final : IRange {
    HRESULT QueryInterface(REFIID, void**) override { return 0; }
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 2; }
    HRESULT GetA(double*) override { return 3; }
    HRESULT GetB(double*) override { return 4; }
    HRESULT Set(double, double) override { return 5; }
};

TEST(IRangeTable, OperationsStandInOrder) {
    Numbered object;
    IRange* const shown = &object;
    EXPECT_EQ((CallSlot<HRESULT, const IID*, void**>(shown, 0, nullptr, nullptr)), 0);
    EXPECT_EQ(CallSlot<ULONG>(shown, 1), 1u);
    EXPECT_EQ(CallSlot<ULONG>(shown, 2), 2u);
    EXPECT_EQ((CallSlot<HRESULT, double*>(shown, 3, nullptr)), 3);
    EXPECT_EQ((CallSlot<HRESULT, double*>(shown, 4, nullptr)), 4);
    EXPECT_EQ((CallSlot<HRESULT, double, double>(shown, 5, 0.0, 0.0)), 5);
    EXPECT_EQ(InterfaceIdOf<IRange>::value, IID_IRange);
}

}  // namespace
}  // namespace ZT
