// A place on a uniform grid.

#include <gtest/gtest.h>
#include <zt/ranges/Grid1DLocation.h>

#include <cstddef>
#include <type_traits>

namespace ZT {
namespace {

TEST(Grid1DLocation, FieldsFollowTheTableInOrder) {
    EXPECT_TRUE((std::is_base_of_v<CObject, Grid1DLocation>));
    EXPECT_EQ(offsetof(Grid1DLocation, m_nIndex), 8u);
    EXPECT_EQ(offsetof(Grid1DLocation, m_bKnot), 12u);
    EXPECT_EQ(sizeof(Grid1DLocation), 16u);
}

TEST(Grid1DLocation, NewOneIsNotSet) {
    const Grid1DLocation place;
    EXPECT_EQ(place.m_nIndex, -1);
    EXPECT_FALSE(place.m_bKnot);
}

TEST(Grid1DLocation, CopyTakesBothFields) {
    Grid1DLocation from;
    from.m_nIndex = 7;
    from.m_bKnot = true;
    Grid1DLocation to;
    to.Copy(from);
    EXPECT_EQ(to.m_nIndex, 7);
    EXPECT_TRUE(to.m_bKnot);
}

TEST(Grid1DLocation, IsSameOnlyIfBothFieldsAgree) {
    Grid1DLocation a;
    Grid1DLocation b;
    EXPECT_TRUE(a.IsSame(b));
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a != b);
    b.m_nIndex = 0;
    EXPECT_FALSE(a.IsSame(b));
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(a != b);
    b.m_nIndex = -1;
    b.m_bKnot = true;
    EXPECT_FALSE(a.IsSame(b));
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(a != b);
}

}  // namespace
}  // namespace ZT
