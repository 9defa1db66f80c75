#include <gtest/gtest.h>
#include <zt/modules/MessageZt.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace ZT {
namespace {

constexpr auto event = static_cast<MessageZt::EEvent>(3);

struct MessageZtTest : testing::Test {
    int object = 0;
    MessageZt message{event, &object, OW::eTypeSceneItem};
};

void ExpectSame(const MessageZt& a, const MessageZt& b) {
    EXPECT_EQ(a.m_event, b.m_event);
    EXPECT_EQ(a.m_ow.m_pObj, b.m_ow.m_pObj);
    EXPECT_EQ(a.m_ow.m_eType, b.m_ow.m_eType);
    EXPECT_EQ(a.m_pData, b.m_pData);
}

TEST_F(MessageZtTest, FieldsStandInTheirOrderBehindTheTable) {
    EXPECT_EQ(offsetof(MessageZt, m_event), 8u);
    EXPECT_EQ(offsetof(MessageZt, m_ow), 16u);
    EXPECT_EQ(offsetof(MessageZt, m_pData), 32u);
    EXPECT_EQ(sizeof(MessageZt), 40u);
    EXPECT_EQ(sizeof(MessageZt::EEvent), 4u);
    EXPECT_TRUE((std::is_same_v<decltype(MessageZt::m_ow), OW>));
    EXPECT_TRUE((std::is_same_v<decltype(MessageZt::m_pData), std::uint64_t>));
    EXPECT_TRUE(std::has_virtual_destructor_v<MessageZt>);
}

TEST_F(MessageZtTest, StartsWithItsDefaults) {
    const MessageZt none;
    EXPECT_EQ(none.m_event, 0);
    EXPECT_EQ(none.m_ow.m_pObj, nullptr);
    EXPECT_EQ(none.m_ow.m_eType, OW::eTypeUnknown);
    EXPECT_EQ(none.m_pData, 0u);
}

TEST_F(MessageZtTest, EventOfTheConstructorIsNotStored) {
    EXPECT_EQ(message.m_event, 0);
    EXPECT_EQ(message.m_ow.m_pObj, &object);
    EXPECT_EQ(message.m_ow.m_eType, OW::eTypeSceneItem);
    EXPECT_EQ(message.m_pData, 0u);
}

TEST_F(MessageZtTest, CopiesTakeAllFields) {
    message.m_event = event;
    message.m_pData = 0x123456789;
    const MessageZt constructed(message);
    MessageZt assigned;
    assigned = message;
    ExpectSame(constructed, message);
    ExpectSame(assigned, message);
}

TEST_F(MessageZtTest, ConstructLeavesTheObject) {
    message.m_event = event;
    message.m_pData = 5;
    message.Construct();
    EXPECT_EQ(message.m_event, 0);
    EXPECT_EQ(message.m_pData, 0u);
    EXPECT_EQ(message.m_ow.m_pObj, &object);
    EXPECT_EQ(message.m_ow.m_eType, OW::eTypeSceneItem);
}

}  // namespace
}  // namespace ZT
