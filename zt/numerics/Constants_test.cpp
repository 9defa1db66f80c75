#include <zt/numerics/Constants.h>

#include <gtest/gtest.h>
#include <tests/ExactNumbers.h>

namespace ZT {
namespace {

using testing_support::Is;

std::uint64_t Bits(double x) {
    return std::bit_cast<std::uint64_t>(x);
}

TEST(Constants, HaveTheirBits) {
    EXPECT_EQ(Bits(zToler), 0x3DDB7CDFD9D7BDBBu);
    EXPECT_EQ(Bits(zFinite), 0x7F76C8E5CA239029u);
    EXPECT_EQ(Bits(zFullBound), 0x7FA9A2028368022Eu);
    EXPECT_EQ(Bits(zInfinity), 0x7FAC7B1F3CAC7433u);
    EXPECT_EQ(Bits(zPi), 0x400921FB54442D11u);
    EXPECT_EQ(Bits(z2Pi), 0x401921FB54442D11u);
    EXPECT_EQ(Bits(zDegPerRad), 0x404CA5DC1A63C200u);
    EXPECT_EQ(Bits(zRadPerDeg), 0x3F91DF46A2529D34u);
}

TEST(Constants, NearPiHaveTheirBits) {
    EXPECT_EQ(Bits(zPiPlus), 0x400921FB54479CADu);
    EXPECT_EQ(Bits(zPiMinus), 0x400921FB5440BD75u);
    EXPECT_EQ(Bits(zFullAngleStart), 0xC00921FB543F05A7u);
}

TEST(Constants, UnitFactorsAreQuotientsOfTheLibrarysPi) {
    EXPECT_THAT(zDegPerRad, Is(180 / zPi));
    EXPECT_THAT(zRadPerDeg, Is(zPi / 180));
    EXPECT_THAT(z2Pi, Is(2 * zPi));
}

TEST(Constants, PiIsNotTheClosestDouble) {
    EXPECT_NE(zPi, 3.14159265358979323846);
}

TEST(Constants, HugeNumbersFormALadder) {
    EXPECT_LT(zFinite, zFullBound);
    EXPECT_LT(zFullBound, zInfinity);
}

}  // namespace
}  // namespace ZT
