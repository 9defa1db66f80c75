#include <gtest/gtest.h>
#include <zt/modules/QCObj.h>

#include <cstddef>
#include <type_traits>

namespace ZT {
namespace {

void ExpectDefaults(const QCObj& slot) {
    EXPECT_EQ(slot.m_eQuery, 0);
    EXPECT_EQ(slot.m_nIndex, -1);
    EXPECT_EQ(slot.m_pObject, nullptr);
    EXPECT_EQ(slot.m_nTag, 0u);
    EXPECT_EQ(slot.m_pExtra, nullptr);
}

QCObj Filled() {
    static int object, extra;
    QCObj slot(static_cast<QCObj::EQueryType>(5));
    slot.m_nIndex = 6;
    slot.m_pObject = &object;
    slot.m_nTag = 7;
    slot.m_pExtra = &extra;
    return slot;
}

TEST(QCObj, FieldsStandInTheirOrder) {
    EXPECT_EQ(offsetof(QCObj, m_eQuery), 0u);
    EXPECT_EQ(offsetof(QCObj, m_nIndex), 4u);
    EXPECT_EQ(offsetof(QCObj, m_pObject), 8u);
    EXPECT_EQ(offsetof(QCObj, m_nTag), 16u);
    EXPECT_EQ(offsetof(QCObj, m_pExtra), 24u);
    EXPECT_EQ(sizeof(QCObj), 32u);
    static_assert(!std::is_polymorphic_v<QCObj>);
    static_assert(sizeof(QCObj::EQueryType) == 4);
    static_assert(std::is_same_v<decltype(QCObj::m_eQuery), QCObj::EQueryType>);
    static_assert(std::is_same_v<decltype(QCObj::m_nIndex), std::int32_t>);
    static_assert(std::is_same_v<decltype(QCObj::m_pObject), void*>);
    static_assert(std::is_same_v<decltype(QCObj::m_nTag), std::uint32_t>);
    static_assert(std::is_same_v<decltype(QCObj::m_pExtra), void*>);
}

TEST(QCObj, StartsWithItsDefaults) {
    ExpectDefaults(QCObj());
}

TEST(QCObj, TakesItsKind) {
    QCObj slot(static_cast<QCObj::EQueryType>(5));
    EXPECT_EQ(slot.m_eQuery, 5);
    slot.m_eQuery = QCObj::eQueryNone;
    ExpectDefaults(slot);
}

TEST(QCObj, CopiesEveryField) {
    const QCObj from = Filled();
    QCObj to;
    to = from;
    EXPECT_EQ(to.m_eQuery, 5);
    EXPECT_EQ(to.m_nIndex, 6);
    EXPECT_EQ(to.m_pObject, from.m_pObject);
    EXPECT_NE(to.m_pObject, nullptr);
    EXPECT_EQ(to.m_nTag, 7u);
    EXPECT_EQ(to.m_pExtra, from.m_pExtra);
    EXPECT_NE(to.m_pExtra, nullptr);
}

TEST(QCObj, ConstructSetsItBack) {
    QCObj slot = Filled();
    slot.Construct();
    ExpectDefaults(slot);
}

}  // namespace
}  // namespace ZT
