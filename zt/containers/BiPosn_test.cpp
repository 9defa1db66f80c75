#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <zt/containers/BiPosn.h>

#include <cstddef>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZT {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Pairs = std::vector<std::pair<int, int>>;

struct Numbered : CObject {
    int number = 0;
};

// A list of the objects 0, 1, ...
class NumberedList {
public:
    explicit NumberedList(std::size_t count) : m_objects(count) {
        for (std::size_t i = 0; i < count; ++i) {
            m_objects[i].number = static_cast<int>(i);
            list.AddTail(&m_objects[i]);
        }
    }
    int At(POSITION pos) const { return static_cast<const Numbered*>(list.GetAt(pos))->number; }

    CObList list;

private:
    std::vector<Numbered> m_objects;
};

Pairs AllPairs(std::size_t size1, std::size_t size2) {
    NumberedList first(size1), second(size2);
    BiPosn pair(&first.list, &second.list);
    Pairs seen;
    pair.Init();
    for (bool more = pair.IsValid(); more; more = pair.Next()) {
        seen.emplace_back(first.At(pair.m_pos1), second.At(pair.m_pos2));
    }
    return seen;
}

TEST(BiPosnTest, FieldsStandInTheirOrder) {
    EXPECT_EQ(offsetof(BiPosn, m_pos1), 0u);
    EXPECT_EQ(offsetof(BiPosn, m_pos2), 8u);
    EXPECT_EQ(offsetof(BiPosn, m_pList1), 16u);
    EXPECT_EQ(offsetof(BiPosn, m_pList2), 24u);
    EXPECT_EQ(sizeof(BiPosn), 32u);
    static_assert(!std::is_polymorphic_v<BiPosn>);
    static_assert(std::is_same_v<decltype(BiPosn::m_pList1), CObList*>);
    static_assert(std::is_same_v<decltype(BiPosn::m_pos1), POSITION>);
}

TEST(BiPosnTest, StartsWithoutAPair) {
    const BiPosn none;
    EXPECT_EQ(none.m_pos1, nullptr);
    EXPECT_EQ(none.m_pos2, nullptr);
    EXPECT_EQ(none.m_pList1, nullptr);
    EXPECT_EQ(none.m_pList2, nullptr);
    NumberedList first(1), second(1);
    BiPosn pair(&first.list, &second.list);
    EXPECT_EQ(pair.m_pList1, &first.list);
    EXPECT_EQ(pair.m_pList2, &second.list);
    EXPECT_EQ(pair.m_pos1, nullptr);
    EXPECT_EQ(pair.m_pos2, nullptr);
    EXPECT_FALSE(pair.IsValid());
    EXPECT_FALSE(pair.Next());
    EXPECT_EQ(pair.m_pos1, nullptr);
}

TEST(BiPosnTest, InitGoesToBothHeads) {
    NumberedList first(2), second(3);
    BiPosn pair(&first.list, &second.list);
    pair.Init();
    EXPECT_EQ(pair.m_pos1, first.list.GetHeadPosition());
    EXPECT_EQ(pair.m_pos2, second.list.GetHeadPosition());
    EXPECT_TRUE(pair.IsValid());
    pair.Next();
    pair.Init();
    EXPECT_EQ(pair.m_pos2, second.list.GetHeadPosition());
}

TEST(BiPosnTest, InitWithoutBothListsChangesNothing) {
    NumberedList list(2);
    const POSITION head = list.list.GetHeadPosition();
    BiPosn left(&list.list, nullptr);
    left.m_pos2 = head;
    left.Init();
    EXPECT_EQ(left.m_pos1, nullptr);
    EXPECT_EQ(left.m_pos2, head);
    BiPosn right(nullptr, &list.list);
    right.m_pos1 = head;
    right.Init();
    EXPECT_EQ(right.m_pos1, head);
    EXPECT_EQ(right.m_pos2, nullptr);
}

TEST(BiPosnTest, IsValidWithBothPositionsOnly) {
    NumberedList list(1);
    BiPosn pair;
    pair.m_pos1 = list.list.GetHeadPosition();
    EXPECT_FALSE(pair.IsValid());
    EXPECT_FALSE(pair.Next());
    std::swap(pair.m_pos1, pair.m_pos2);
    EXPECT_FALSE(pair.IsValid());
    EXPECT_FALSE(pair.Next());
    pair.m_pos1 = pair.m_pos2;
    EXPECT_TRUE(pair.IsValid());
}

TEST(BiPosnTest, TwoAndThreeGiveSixPairs) {
    NumberedList first(2), second(3);
    BiPosn pair(&first.list, &second.list);
    pair.Init();
    for (int i = 0; i < 5; ++i) EXPECT_TRUE(pair.Next());
    EXPECT_FALSE(pair.Next());
    EXPECT_EQ(pair.m_pos1, nullptr);
    EXPECT_EQ(pair.m_pos2, nullptr);
    EXPECT_FALSE(pair.Next());
    using P = std::pair<int, int>;
    EXPECT_THAT(AllPairs(2, 3), ElementsAre(P(0, 0), P(0, 1), P(0, 2), P(1, 0), P(1, 1), P(1, 2)));
}

TEST(BiPosnTest, NoPairWithAnEmptyList) {
    EXPECT_THAT(AllPairs(0, 3), IsEmpty());
    EXPECT_THAT(AllPairs(3, 0), IsEmpty());
    EXPECT_THAT(AllPairs(0, 0), IsEmpty());
}

TEST(BiPosnTest, AssignmentCopiesAllFields) {
    NumberedList first(2), second(2);
    BiPosn pair(&first.list, &second.list);
    pair.Init();
    pair.Next();
    BiPosn copy;
    copy = pair;
    EXPECT_EQ(copy.m_pos1, pair.m_pos1);
    EXPECT_EQ(copy.m_pos2, pair.m_pos2);
    EXPECT_EQ(copy.m_pList1, &first.list);
    EXPECT_EQ(copy.m_pList2, &second.list);
}

TEST(BiPosnTest, EveryPairOnceInOrder) {
    EXPECT_TRUE(rc::check([] {
        const auto size1 = *rc::gen::inRange(0, 12);
        const auto size2 = *rc::gen::inRange(0, 12);
        Pairs expected;
        for (int a = 0; a < size1; ++a) {
            for (int b = 0; b < size2; ++b) expected.emplace_back(a, b);
        }
        RC_ASSERT(AllPairs(static_cast<std::size_t>(size1), static_cast<std::size_t>(size2)) ==
                  expected);
    }));
}

}  // namespace
}  // namespace ZT
