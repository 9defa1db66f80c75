#include <gtest/gtest.h>

#include <zt/frame/OW.h>
#include <cstddef>

namespace ZT {
namespace {

int object = 0;

TEST(OW, FieldsStandInTheirOrder) {
    EXPECT_EQ(offsetof(OW, m_pObj), 0u);
    EXPECT_EQ(offsetof(OW, m_eType), 8u);
    EXPECT_EQ(sizeof(OW), 16u);
    EXPECT_EQ(sizeof(OW::EType), 4u);
}

TEST(OW, BeginsWithNothingKnown) {
    const OW wrapper;
    EXPECT_EQ(wrapper.m_pObj, nullptr);
    EXPECT_EQ(static_cast<int>(wrapper.m_eType), 0);
    EXPECT_FALSE(wrapper.IsSceneItem());
}

TEST(OW, TakesBothFields) {
    const OW constructed(&object, static_cast<OW::EType>(1));
    OW set;
    set.Set(&object, OW::eTypeSceneItem);
    for (const OW& wrapper : {constructed, set}) {
        EXPECT_EQ(wrapper.m_pObj, &object);
        EXPECT_EQ(static_cast<int>(wrapper.m_eType), 1);
    }
}

TEST(OW, OnlyKindOneIsASceneItem) {
    EXPECT_TRUE(OW(nullptr, static_cast<OW::EType>(1)).IsSceneItem());
    EXPECT_FALSE(OW(&object, static_cast<OW::EType>(0)).IsSceneItem());
    EXPECT_FALSE(OW(&object, static_cast<OW::EType>(2)).IsSceneItem());
    EXPECT_FALSE(OW(&object, static_cast<OW::EType>(-1)).IsSceneItem());
}

TEST(OW, CopiesBothFieldsAndResetForgetsThem) {
    const OW source(&object, static_cast<OW::EType>(77));
    OW copied;
    copied.Copy(source);
    OW assigned;
    assigned = source;
    for (OW wrapper : {copied, assigned}) {
        EXPECT_EQ(wrapper.m_pObj, &object);
        EXPECT_EQ(static_cast<int>(wrapper.m_eType), 77);
        wrapper.Reset();
        EXPECT_EQ(wrapper.m_pObj, nullptr);
        EXPECT_EQ(static_cast<int>(wrapper.m_eType), 0);
    }
}

}  // namespace
}  // namespace ZT
