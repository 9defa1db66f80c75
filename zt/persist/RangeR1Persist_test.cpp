#include <zt/ranges/RangeEx.h>
#include <zt/ranges/RangeR1.h>
#include <zt/ranges/RangeS1.h>
#include <zt/persist/Cursor_test.hpp>

#include <type_traits>

namespace ZT {
namespace {

struct RangeR1Persist : CursorTest {};

TEST_F(RangeR1Persist, TheLimitsAreOneElementRg) {
    Store();
    RangeR1 range(0, 1.5);
    range.PersistXML(*cursor);
    EXPECT_EQ(Xml(), "<R><Rg>0 1.5</Rg></R>");
    EXPECT_EQ(range.m_min, 0);
    EXPECT_EQ(range.m_max, 1.5);
    EXPECT_EQ(cursor->GetStackPosn(), 1);
}

TEST_F(RangeR1Persist, TheLimitsLoadToSixDigits) {
    Store();
    RangeR1 range(-0.1234567891, 1e307);
    range.PersistXML(*cursor);
    Reload();
    RangeR1 loaded;
    loaded.PersistXML(*cursor);
    EXPECT_EQ(loaded.m_min, -0.123457);
    EXPECT_EQ(loaded.m_max, 1e307);
}

TEST_F(RangeR1Persist, TheFlagTakesNoPart) {
    Store();
    RangeR1 range(0, 1);
    range.m_bExternal = true;
    range.PersistXML(*cursor);
    EXPECT_EQ(Xml(), "<R><Rg>0 1</Rg></R>");
    Reload();
    RangeR1 plain, external;
    external.m_bExternal = true;
    plain.PersistXML(*cursor);
    external.PersistXML(*cursor);
    EXPECT_FALSE(plain.m_bExternal);
    EXPECT_TRUE(external.m_bExternal);
}

TEST_F(RangeR1Persist, AMissingElementLeavesTheLimits) {
    Load("<R/>");
    RangeR1 range(2, 3);
    range.PersistXML(*cursor);
    EXPECT_EQ(range.m_min, 2);
    EXPECT_EQ(range.m_max, 3);
}

TEST_F(RangeR1Persist, AnElementWithOneNumberChangesTheLowerLimitAlone) {
    for (const char* xml : {"<R><Rg>7</Rg></R>", "<R><Rg>7 x</Rg></R>"}) {
        Load(xml);
        RangeR1 range(2, 3);
        range.PersistXML(*cursor);
        EXPECT_EQ(range.m_min, 7);
        EXPECT_EQ(range.m_max, 3);
    }
}

TEST_F(RangeR1Persist, LimitsOutOfOrderComeBackOutOfOrder) {
    Store();
    RangeR1 empty;
    empty.PersistXML(*cursor);
    EXPECT_EQ(Xml(), "<R><Rg>1e+307 -1e+307</Rg></R>");
    Reload();
    RangeR1 loaded(0, 1);
    loaded.PersistXML(*cursor);
    EXPECT_EQ(loaded.m_min, 1e307);
    EXPECT_EQ(loaded.m_max, -1e307);
}

TEST_F(RangeR1Persist, TheChildIndexSelectsOneOfSeveral) {
    Store();
    for (int i = 0; i < 5; ++i) {
        RangeR1 range(i, i + 1);
        range.PersistXML(*cursor);
    }
    Reload();
    for (std::uint16_t i = 0; i < 5; ++i) {
        RangeR1 range;
        cursor->m_nChildIndex = i;
        range.PersistXML(*cursor);
        EXPECT_EQ(range.m_min, i);
        EXPECT_EQ(range.m_max, i + 1);
    }
}

TEST_F(RangeR1Persist, TheDerivedRangesHaveTheSameOperation) {
    EXPECT_TRUE((std::is_same_v<decltype(&RangeS1::PersistXML), void (RangeR1::*)(PCExBase&)>));
    EXPECT_TRUE((std::is_same_v<decltype(&RangeEx::PersistXML), void (RangeR1::*)(PCExBase&)>));
}

TEST_F(RangeR1Persist, TheNeitherStateReads) {
    Load("<R><Rg>4 5</Rg></R>", kNeither);
    RangeR1 range;
    range.PersistXML(*cursor);
    EXPECT_EQ(range.m_min, 4);
    EXPECT_EQ(range.m_max, 5);
}

}  // namespace
}  // namespace ZT
