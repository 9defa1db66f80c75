#include <gtest/gtest.h>

#include <zt/frame/OWC.h>
#include <cstddef>

namespace ZT {
namespace {

int object = 0;
int other = 0;

// An object with a type and flags that differ from the defaults.
OWC Flagged() {
    OWC wrapper(&object, TypeZT(1, 2, 3, 4));
    wrapper.m_nFlags = 0xBEEF;
    return wrapper;
}

TEST(OWC, FieldsStandInTheirOrder) {
    EXPECT_EQ(offsetof(OWC, m_pObj), 0u);
    EXPECT_EQ(offsetof(OWC, m_type2), 8u);
    EXPECT_EQ(offsetof(OWC, m_nFlags), 12u);
    EXPECT_EQ(sizeof(OWC::m_nFlags), 2u);
    EXPECT_EQ(sizeof(OWC), 16u);
}

TEST(OWC, BeginsWithDefaults) {
    const OWC wrapper;
    EXPECT_EQ(wrapper.m_pObj, nullptr);
    EXPECT_EQ(wrapper.m_type2, TypeZT());
    EXPECT_EQ(wrapper.m_nFlags, 0);
}

TEST(OWC, ConstructorTakesACopyOfTheTypeAndClearsTheFlags) {
    TypeZT type(1, 2, 3, 4);
    OWC wrapper = Flagged();
    wrapper = OWC(&other, type);
    type.Construct();
    EXPECT_EQ(wrapper.m_pObj, &other);
    EXPECT_EQ(wrapper.m_type2, TypeZT(1, 2, 3, 4));
    EXPECT_EQ(wrapper.m_nFlags, 0);
}

TEST(OWC, SetKeepsTheFlags) {
    OWC wrapper = Flagged();
    wrapper.Set(&other, TypeZT(9, 9, 9, 9));
    EXPECT_EQ(wrapper.m_pObj, &other);
    EXPECT_EQ(wrapper.m_type2, TypeZT(9, 9, 9, 9));
    EXPECT_EQ(wrapper.m_nFlags, 0xBEEF);
}

TEST(OWC, CopiesAllFields) {
    const OWC source = Flagged();
    const OWC constructed(source);
    OWC assigned;
    assigned = source;
    OWC copied;
    copied.Copy(source);
    for (const OWC& wrapper : {constructed, assigned, copied}) {
        EXPECT_EQ(wrapper.m_pObj, &object);
        EXPECT_EQ(wrapper.m_type2, TypeZT(1, 2, 3, 4));
        EXPECT_EQ(wrapper.m_nFlags, 0xBEEF);
    }
}

}  // namespace
}  // namespace ZT
