#include <gtest/gtest.h>
#include <zt/frame/RefObj.h>
#include <zt/interfaces/InterfacePart.h>

#include <cstddef>
#include <zt/frame/VirtualTable_test.hpp>

namespace ZT {
namespace {

constexpr IID kLampId = {0x11111111, 0x1111, 0x1111, {1, 1, 1, 1, 1, 1, 1, 1}};
constexpr IID kClockId = {0x22222222, 0x2222, 0x2222, {2, 2, 2, 2, 2, 2, 2, 2}};
constexpr IID kStrangeId = {0x33333333, 0x3333, 0x3333, {3, 3, 3, 3, 3, 3, 3, 3}};

class ILamp : public IUnknown {
public:
    virtual int Light() = 0;

protected:
    ~ILamp() = default;
};

class IClock : public IUnknown {
public:
    virtual int Hour() = 0;

protected:
    ~IClock() = default;
};

}  // namespace
}  // namespace ZT

template <>
struct InterfaceIdOf<ZT::ILamp> {
    static constexpr IID value = ZT::kLampId;
};
template <>
struct InterfaceIdOf<ZT::IClock> {
    static constexpr IID value = ZT::kClockId;
};

namespace ZT {
namespace {

int destroyed = 0;

// Shows two interfaces, with a field before, between and behind its parts.
class Station : public RefObj {
public:
    ~Station() override { ++destroyed; }

    HRESULT QueryInterface(const GUID& iid, void** ppv) override {
        ++queries;
        if (answersNative) return QueryPartsOrNative(*this, iid, ppv, m_xLamp, m_xClock);
        return QueryParts(*this, iid, ppv, m_xLamp, m_xClock);
    }
    ulong AddRef() override {
        ++added;
        return RefObj::AddRef();
    }
    ulong Release() override {
        ++released;
        return RefObj::Release();
    }

    class XLamp final : public InterfacePart<XLamp, Station, ILamp> {
    public:
        static auto Place() { return &Station::m_xLamp; }
        int Light() override { return Owner().light; }
    };
    class XClock final : public InterfacePart<XClock, Station, IClock> {
    public:
        static auto Place() { return &Station::m_xClock; }
        int Hour() override { return Owner().hour; }
    };

    int light = 40;
    XLamp m_xLamp;
    int hour = 12;
    XClock m_xClock;
    bool answersNative = false;
    int queries = 0;
    int added = 0;
    int released = 0;
};

struct InterfacePartTest : testing::Test {
    InterfacePartTest() { station.SetByVal(true, false); }

    Station station;
    void* found = &station;
};

TEST_F(InterfacePartTest, HoldsNoState) {
    EXPECT_EQ(sizeof(Station::XLamp), sizeof(void*));
}

TEST_F(InterfacePartTest, FindsTheObjectByItsPlace) {
    Station other;
    other.light = 60;
    other.hour = 7;
    EXPECT_EQ(station.m_xLamp.Light(), 40);
    EXPECT_EQ(station.m_xClock.Hour(), 12);
    EXPECT_EQ(other.m_xLamp.Light(), 60);
    EXPECT_EQ(other.m_xClock.Hour(), 7);
}

TEST_F(InterfacePartTest, KeepsTheOrderOfIUnknown) {
    ILamp* const lamp = &station.m_xLamp;
    EXPECT_EQ((CallSlot<HRESULT, const IID*, void**>(lamp, 0, &kLampId, &found)), S_OK);
    EXPECT_EQ(found, lamp);
    EXPECT_EQ(CallSlot<ULONG>(lamp, 1), 3u);
    EXPECT_EQ(CallSlot<ULONG>(lamp, 2), 2u);
    EXPECT_EQ(CallSlot<int>(lamp, 3), 40);
}

TEST_F(InterfacePartTest, CountsWithTheObjectsVirtualOperations) {
    EXPECT_EQ(station.m_xLamp.AddRef(), 2u);
    EXPECT_EQ(station.m_xClock.AddRef(), 3u);
    EXPECT_EQ(station.m_xLamp.Release(), 2u);
    EXPECT_EQ(station.added, 2);
    EXPECT_EQ(station.released, 1);
    EXPECT_EQ(station.GetRef(), 2u);
}

TEST_F(InterfacePartTest, LastReleaseOfAPartEndsTheObject) {
    destroyed = 0;
    auto* object = new Station;
    EXPECT_EQ(object->m_xClock.Release(), 0u);
    EXPECT_EQ(destroyed, 1);
}

TEST_F(InterfacePartTest, AnswersItsOwnIdentifierAndIUnknownItself) {
    IClock* const clock = &station.m_xClock;
    for (const IID& id : {kClockId, IID_IUnknown}) {
        found = nullptr;
        EXPECT_EQ(clock->QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, clock);
    }
    EXPECT_EQ(station.queries, 0);
    EXPECT_EQ(station.added, 2);
}

TEST_F(InterfacePartTest, SendsOtherIdentifiersToTheObject) {
    EXPECT_EQ(station.m_xClock.QueryInterface(kLampId, &found), S_OK);
    EXPECT_EQ(found, static_cast<ILamp*>(&station.m_xLamp));
    EXPECT_EQ(station.queries, 1);
    EXPECT_EQ(station.GetRef(), 2u);
    EXPECT_EQ(station.m_xClock.QueryInterface(kStrangeId, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(station.queries, 2);
    EXPECT_EQ(station.GetRef(), 2u);
}

TEST_F(InterfacePartTest, NullOutPointerIsRefused) {
    EXPECT_EQ(station.m_xLamp.QueryInterface(kLampId, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(station.m_xLamp.QueryInterface(kStrangeId, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(station.QueryInterface(kLampId, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(station.QueryInterface(IID_NativeObject, nullptr), DISP_E_PARAMNOTOPTIONAL);
    station.answersNative = true;
    EXPECT_EQ(station.QueryInterface(IID_NativeObject, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(station.GetRef(), 1u);
}

TEST_F(InterfacePartTest, ObjectAnswersWithItsParts) {
    EXPECT_EQ(station.QueryInterface(kLampId, &found), S_OK);
    EXPECT_EQ(found, static_cast<ILamp*>(&station.m_xLamp));
    EXPECT_EQ(station.QueryInterface(kClockId, &found), S_OK);
    EXPECT_EQ(found, static_cast<IClock*>(&station.m_xClock));
    EXPECT_EQ(station.QueryInterface(IID_IUnknown, &found), S_OK);
    EXPECT_EQ(found, static_cast<ILamp*>(&station.m_xLamp)) << "the first part";
    EXPECT_EQ(station.added, 3);
}

TEST_F(InterfacePartTest, ObjectGivesNullForAnUnknownIdentifier) {
    EXPECT_EQ(station.QueryInterface(kStrangeId, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(station.added, 0);
}

TEST_F(InterfacePartTest, NativeObjectIsThePlainPointerWithoutReference) {
    EXPECT_EQ(station.QueryInterface(IID_NativeObject, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    station.answersNative = true;
    EXPECT_EQ(station.m_xLamp.QueryInterface(IID_NativeObject, &found), S_OK);
    EXPECT_EQ(found, &station);
    EXPECT_EQ(station.added, 0);
    EXPECT_EQ(station.QueryInterface(kClockId, &found), S_OK);
    EXPECT_EQ(found, static_cast<IClock*>(&station.m_xClock));
    EXPECT_EQ(station.QueryInterface(kStrangeId, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
}

TEST_F(InterfacePartTest, NamedPartsLeaveOutIUnknown) {
    EXPECT_EQ(QueryNamedParts(station, IID_IUnknown, &found, station.m_xLamp), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(QueryNamedParts(station, kLampId, &found, station.m_xLamp), S_OK);
    EXPECT_EQ(found, static_cast<ILamp*>(&station.m_xLamp));
    EXPECT_EQ(station.GetRef(), 2u);
    EXPECT_EQ(QueryNamedParts(station, kLampId, nullptr, station.m_xLamp), DISP_E_PARAMNOTOPTIONAL);
}

TEST_F(InterfacePartTest, ObjectOfCountZeroEndsWithItsFirstReference) {
    destroyed = 0;
    auto* counted = new Station;
    counted->SetByVal(false, true);
    ASSERT_EQ(counted->GetRef(), 0u);
    counted->QueryInterface(kLampId, &found);
    EXPECT_EQ(static_cast<ILamp*>(found)->Release(), 0u);
    EXPECT_EQ(destroyed, 1);

    counted = new Station;
    counted->QueryInterface(kLampId, &found);
    EXPECT_EQ(static_cast<ILamp*>(found)->Release(), 1u);
    EXPECT_EQ(destroyed, 1) << "made with a reference of its maker";
    counted->Release();
    EXPECT_EQ(destroyed, 2);
}

}  // namespace
}  // namespace ZT
